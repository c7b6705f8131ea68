// The lock of a critical section.
#pragma once

#include <Posix/Waits/TOVHandleTable.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// The critical section that a handle names, if there is one. Its record's lock word holds its state (see
// TOVWaitable.h); only the owner uses the levels. Enter and Leave make no system call unless threads compete.
//
// Whoever runs when the section is left may enter it before the thread that has been woken comes. So a thread that has
// waited for long reserves the section: from then on it passes only to such threads, of which each Leave wakes one,
// until none of them sleeps any more.
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
} // namespace TOVPosix
} // namespace TOVPlatform
