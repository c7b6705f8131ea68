// The lock of a critical section.
#pragma once

#include <Posix/Waits/TOVHandleTable.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// The critical section that a handle names, if there is one. Its record's lock word holds the owner's id, or 0, and
// SECTION_CONTENDED while some thread may sleep on it; only the owner uses the levels. Enter and Leave make no system
// call unless threads compete.
class CSection
{
public:
    // Makes a section that nobody has entered. Returns 0 if there is no memory or no place.
    static tHandle Create();

    explicit CSection(tHandle hSection)
        : m_pRecord(CHandleTable::Find(hSection, eKindCriticalSection)), m_nTag(CHandleTable::TagOf(hSection))
    {
    }

    explicit operator bool() const { return m_pRecord != nullptr; }

    // Waits until the calling thread has entered, or the section is destroyed.
    void Enter() const;

    // Does nothing unless the calling thread is the owner.
    void Leave() const;

    // Makes the handle stale and wakes all threads that still wait.
    void Destroy() const;

private:
    void SleepAndEnter(tDword nThreadId) const;

    CWaitable* m_pRecord;
    tDword m_nTag;
};

inline void CSection::Enter() const
{
    const tDword nThreadId = ThisThread().nId;
    tDword nState = 0;
    if (m_pRecord->m_nLock.compare_exchange_strong(nState, nThreadId, std::memory_order_acquire,
                                                   std::memory_order_relaxed))
        return;
    if ((nState & ~SECTION_CONTENDED) == nThreadId)
        m_pRecord->AddInnerLevel();
    else
        SleepAndEnter(nThreadId);
}

inline void CSection::Leave() const
{
    const tDword nState = m_pRecord->m_nLock.load(std::memory_order_relaxed);
    if ((nState & ~SECTION_CONTENDED) != ThisThread().nId || m_pRecord->LeaveInnerLevel())
        return;
    if ((m_pRecord->m_nLock.exchange(0, std::memory_order_release) & SECTION_CONTENDED) != 0)
        FutexWake(&m_pRecord->m_nLock, 1, eFutexPrivate);
}
} // namespace TOVPosix
} // namespace TOVPlatform
