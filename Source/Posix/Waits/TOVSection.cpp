#include <Posix/Waits/TOVSection.h>

#include <Posix/Waits/TOVObjectEnd.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
// The groups of sleepers: those who have reserved the section are impatient.
constexpr tDword PATIENT_SLEEPERS = 1;
constexpr tDword IMPATIENT_SLEEPERS = 2;
} // namespace

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
    if ((m_pRecord->m_nLock.load(std::memory_order_relaxed) & SECTION_OWNER) == nThreadId)
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
    tFutex& nLock = m_pRecord->m_nLock;
    tDword nState = nLock.load(std::memory_order_relaxed);
    if ((nState & SECTION_OWNER) != ThisThreadId() || m_pRecord->LeaveInnerLevel())
        return;

    m_pRecord->Share();
    tDword nNext = 0;
    do
        nNext = (nState & SECTION_RESERVED) != 0 ? SECTION_RESERVED | SECTION_CONTENDED : 0;
    while (!nLock.compare_exchange_weak(nState, nNext, std::memory_order_release, std::memory_order_relaxed));

    if (nNext != 0)
    {
        // If no thread that has reserved it sleeps any more, it is free for all, unless such a thread was awake.
        const bool bPasses = FutexWake(&nLock, 1, eFutexPrivate, IMPATIENT_SLEEPERS);
        if (bPasses || !nLock.compare_exchange_strong(nNext, 0, std::memory_order_relaxed))
            return;
    }
    if ((nState & SECTION_CONTENDED) != 0)
        FutexWake(&nLock, 1, eFutexPrivate);
}

void CSection::SleepAndEnter(tDword nThreadId) const
{
    tFutex& nLock = m_pRecord->m_nLock;
    const CDeadline oPatience = CDeadline::At(Now() + PATIENCE);
    bool bPatient = true;
    tDword nState = nLock.load(std::memory_order_relaxed);
    while (m_pRecord->GetTag() == m_nTag) // else the section was destroyed meanwhile
    {
        // Other threads may sleep as well, so this owner must wake the next one.
        const tDword nFlags = (nState & SECTION_RESERVED) | SECTION_CONTENDED;
        if ((nState & SECTION_OWNER) == 0 && !(bPatient && (nState & SECTION_RESERVED) != 0))
        {
            if (nLock.compare_exchange_weak(nState, nThreadId | nFlags, std::memory_order_acquire,
                                            std::memory_order_relaxed))
                return;
            continue;
        }
        const tDword nAsleep = nState | (bPatient ? SECTION_CONTENDED : SECTION_CONTENDED | SECTION_RESERVED);
        if (nState == nAsleep || nLock.compare_exchange_weak(nState, nAsleep, std::memory_order_relaxed))
        {
            const eSleepResult eResult =
                bPatient ? FutexSleep(&nLock, nAsleep, eFutexPrivate, oPatience, PATIENT_SLEEPERS)
                         : FutexSleep(&nLock, nAsleep, eFutexPrivate, CDeadline::Never(), IMPATIENT_SLEEPERS);
            bPatient = bPatient && eResult != eSleepTimeout;
            nState = nLock.load(std::memory_order_relaxed);
        }
    }
}
} // namespace TOVPosix
} // namespace TOVPlatform
