// A counting lock.
#pragma once

#include <Debug/TOVBase.h>

// Owns one system semaphore, from the constructor to the destructor: a count that each lock takes down by one and that
// stops the next at 0.
//
// Copies share the handle: copy and original are one semaphore, and each destructor closes it, the second time in vain.
// operator= drops the old handle without closing it. Who keeps two live copies takes that risk.
//
// Threads: any. Every operation, the constructor included but not the destructor, throws unless m_hSemaphore != NULL.
class TOV_EXPORT CTOVSemaphore
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVSemaphore();

    // With a name the semaphore is shared with all others of that name, in other processes of this user too; one that
    // exists already keeps its counts. Impossible counts, and a name that another kind of object has, throw.
    CTOVSemaphore(long lInitialCount = 1, long lMaximumCount = 1, const char* szName = nullptr);
    CTOVSemaphore(const CTOVSemaphore& oOther);
    CTOVSemaphore& operator=(const CTOVSemaphore& oOther);

    void Lock() const;

    // Milliseconds; -1 waits for ever. False only when the time ran out.
    bool TryLock(long lMilliseconds) const;

    // Returns the count before the release, and 0 with nothing changed for a release beyond the maximum.
    long Unlock(long lCount) const;

private:
    long m_lSemaphoreState; // only carried along by copies
    tHandle m_hSemaphore;
};
