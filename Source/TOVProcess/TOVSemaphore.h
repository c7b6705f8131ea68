// Declares CTOVSemaphore, a counting lock.
#pragma once

#include <Debug/TOVBase.h>

// Owns one system semaphore, from the constructor to the destructor: a count that each lock decrements. A lock waits
// while the count is 0.
//
// Copies share the handle: copy and original are one semaphore. Each destructor closes the handle, and the second close
// fails without a report. operator= overwrites the old handle without closing it. Two live copies close the same handle
// twice; the caller must prevent that.
//
// Any thread may use it. Every operation, the constructor included but not the destructor, throws unless
// "m_hSemaphore != NULL".
class TOV_EXPORT CTOVSemaphore
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVSemaphore();

    // A semaphore with a name is shared with all others of that name, in other processes of this user too; one that
    // already exists keeps its counts. Throws if the counts are impossible, or if an object of another kind has the
    // name.
    CTOVSemaphore(long lInitialCount = 1, long lMaximumCount = 1, const char* szName = nullptr);
    CTOVSemaphore(const CTOVSemaphore& oOther);
    CTOVSemaphore& operator=(const CTOVSemaphore& oOther);

    // Waits until the count is above 0, and decrements it.
    void Lock() const;

    // Waits for at most lMilliseconds; -1 waits without a limit. Returns false only if the time has run out.
    bool TryLock(long lMilliseconds) const;

    // Increments the count by lCount and returns the count before that. If it would exceed the maximum, returns 0 and
    // changes nothing.
    long Unlock(long lCount) const;

private:
    long m_lSemaphoreState; // Settled: it is copied and never read, but the layout of the object is given.
    tHandle m_hSemaphore;
};
