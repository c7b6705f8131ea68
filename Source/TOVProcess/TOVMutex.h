// Declares CTOVMutex, a lock with an owning thread.
#pragma once

#include <Debug/TOVBase.h>

// Owns one system mutex, from the constructor to the destructor. The thread that has locked it may lock it again, and
// must unlock it as often.
//
// Copies share the handle: copy and original are one mutex. Each destructor closes the handle, and the second close
// fails without a report. operator= overwrites the old handle without closing it. Two live copies close the same handle
// twice; the caller must prevent that.
//
// Any thread may use it. Every operation throws unless "m_hMutex != NULL". The destructor does not throw: it reports
// that check to the listeners and continues.
class TOV_EXPORT CTOVMutex
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVMutex();

    // Creates a mutex that no thread has locked. If it cannot be created, that is logged; the object then has handle 0.
    CTOVMutex();
    CTOVMutex(const CTOVMutex& oOther);
    CTOVMutex& operator=(const CTOVMutex& oOther);

    // Lock waits until no other thread holds the mutex. Unlock must be called by the thread that holds it, once for
    // each Lock.
    TOV_CALLED_OFTEN void Lock() const;
    TOV_CALLED_OFTEN void Unlock() const;

    // Returns true if another thread holds the mutex. Settled: if the result is false, the calling thread now holds the
    // mutex and must call Unlock. The same applies if the result is true because the former owner has ended without
    // unlocking.
    bool IsLocked() const;

    // Returns the handle, for a wait for several objects.
    tHandle GetHandle() const;

private:
    tHandle m_hMutex;
    bool m_bMutexState; // Settled: it is copied and never read, but the layout of the object is given.
};
