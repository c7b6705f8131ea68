// A lock with an owning thread.
#pragma once

#include <Debug/TOVBase.h>

// Owns one system mutex, from the constructor to the destructor. Its owner may lock repeatedly, and unlocks as often.
//
// Copies share the handle: copy and original are one mutex, and each destructor closes it, the second time in vain.
// operator= drops the old handle without closing it. Who keeps two live copies takes that risk.
//
// Threads: any. Every operation throws unless m_hMutex != NULL. The destructor does not throw: it tells the listeners
// of that check and goes on.
class TOV_EXPORT CTOVMutex
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVMutex();

    // Not owned. A failure to create it is logged; the object then has handle 0.
    CTOVMutex();
    CTOVMutex(const CTOVMutex& oOther);
    CTOVMutex& operator=(const CTOVMutex& oOther);

    void Lock() const;
    void Unlock() const;

    // True if another thread holds the mutex. Settled: false leaves the caller as the owner, who has to call Unlock;
    // and so does true when the former owner has ended without one.
    bool IsLocked() const;

    // For waits for several objects.
    tHandle GetHandle() const;

private:
    tHandle m_hMutex;
    bool m_bMutexState; // only carried along by copies
};
