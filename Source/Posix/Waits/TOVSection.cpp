#include <Posix/Waits/TOVSection.h>

#include <Posix/Waits/TOVObjectEnd.h>

namespace TOVPlatform
{
namespace TOVPosix
{
tHandle CSection::Create()
{
    CWaitable* const pRecord = CHandleTable::Allocate();
    if (pRecord == nullptr)
        return 0;
    pRecord->m_nLock.store(0, std::memory_order_relaxed);
    return CHandleTable::Publish(pRecord, eKindCriticalSection, 0);
}

void CSection::Destroy() const
{
    if (CloseRecord(*m_pRecord, m_nTag))
        FutexWake(&m_pRecord->m_nLock, INT_MAX, eFutexPrivate);
}

void CSection::Enter() const
{
    const tDword nThreadId = ThisThreadId();
    if ((m_pRecord->m_nLock.load(std::memory_order_relaxed) & ~SECTION_CONTENDED) == nThreadId)
    {
        m_pRecord->AddInnerLevel();
        return;
    }
    m_pRecord->MakeReadable();
    if (m_pRecord->ExchangeLock(0, nThreadId))
        return;
    m_pRecord->Share();
    SleepAndEnter(nThreadId);
}

void CSection::Leave() const
{
    const tDword nState = m_pRecord->m_nLock.load(std::memory_order_relaxed);
    if ((nState & ~SECTION_CONTENDED) != ThisThreadId() || m_pRecord->LeaveInnerLevel())
        return;
    m_pRecord->Share();
    if ((m_pRecord->m_nLock.exchange(0, std::memory_order_release) & SECTION_CONTENDED) != 0)
        FutexWake(&m_pRecord->m_nLock, 1, eFutexPrivate);
}

void CSection::SleepAndEnter(tDword nThreadId) const
{
    tFutex& nLock = m_pRecord->m_nLock;
    tDword nState = nLock.load(std::memory_order_relaxed);
    while (m_pRecord->GetTag() == m_nTag) // else the section was destroyed meanwhile
    {
        // Other threads may sleep as well, so this owner must wake the next one.
        if (nState == 0)
        {
            if (nLock.compare_exchange_weak(nState, nThreadId | SECTION_CONTENDED, std::memory_order_acquire,
                                            std::memory_order_relaxed))
                return;
            continue;
        }
        if ((nState & SECTION_CONTENDED) != 0 ||
            nLock.compare_exchange_weak(nState, nState | SECTION_CONTENDED, std::memory_order_relaxed))
        {
            FutexSleep(&nLock, nState | SECTION_CONTENDED, eFutexPrivate, CDeadline::Never());
            nState = nLock.load(std::memory_order_relaxed);
        }
    }
}
} // namespace TOVPosix
} // namespace TOVPlatform
