// The waits that are linked to an object, and what a change of the object does for them.
#pragma once

#include <Posix/Waits/TOVHandleTable.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// How a wait works. An object that can be had is taken by compare and swap, and the wait has not happened. Otherwise
// the waiter links itself to all its objects, under the one lock of the waits, and sleeps on its own thread's word.
// A thread that changes an object with linked waits takes that lock too, gives the object to the oldest wait that it
// satisfies, as a single step with all other objects of that wait, and wakes only threads whose wait is over.
//
// A mutex or a semaphore would pass from sleeper to sleeper in this way, with a switch of threads for each. So a wait
// for such an object alone does not get it handed over. It stays linked, its thread is woken, and until that comes, any
// running thread may take the object first. A wait that has lost this competition MAX_LOST_ROUNDS times, or once after
// PATIENCE, is handed the object: it is firm, as are all waits of the other sort. An object with a firm wait is handed
// over to all its waits.
//
// A wait for all takes nothing until it can take everything, however long that takes. To keep the free ones of its
// objects from others meanwhile would be wrong: whoever has another one may need a free one before giving that back,
// and both would wait for ever.
//
// Objects in shared memory cannot be given to waiters of other processes: a change wakes all threads that sleep on the
// object, and these look again (TOVNamedObject.h). A wait that mixes both kinds sleeps on its own word and on theirs.

class CWaiter;

// One object of a wait.
struct sWaitNode
{
    CWaiter* pWaiter;
    CWaitable* pObject;   // null for a named object
    CNamedObject* pNamed; // null for an object without a name
    tDword nTag;
    bool bFirm;           // the wait gets the object handed over; else its thread is woken and competes for it
    bool bComing;         // not firm: the thread has been woken and is on its way
    bool bSlept;          // named: whether nSeen counts
    tDword nSeen;         // named: the word's value that the thread sleeps on
    sWaitNode* pPrevious; // in the list of the object
    sWaitNode* pNext;
};

// The threads that are woken by a change. All functions but the destructor, which wakes them, need the lock of the
// waits.
class CWakeList
{
public:
    CWakeList();
    ~CWakeList();

    CWakeList(const CWakeList&) = delete;
    CWakeList& operator=(const CWakeList&) = delete;

    // Lets the waits for a held object that has changed have it, oldest first.
    void Serve(CWaitable& oObject);

    // Gives a held object to all waits that it satisfies, even to those that would compete for it.
    void HandOver(CWaitable& oObject);

    // Fails all waits for an object that is about to end.
    void Fail(CWaitable& oObject);

private:
    void Append(CWaiter& oWaiter);

    CWaiter* m_pFirst;
    CWaiter* m_pLast;
};

// Holds the lock of the waits. Its destructor unlocks, then wakes the threads.
class CWaitScope : public CWakeList
{
public:
    CWaitScope();
    ~CWaitScope();
};

// Applies bool fnChange(tDword& nValue) to an object that has waits, and serves them. False if the object is gone or
// the function refused.
template<class TChange> bool ChangeAndServe(CWaitable& oObject, tDword nTag, TChange fnChange)
{
    CWaitScope oScope;
    if (!oObject.Hold(nTag))
        return false;
    const bool bChanged = oObject.ChangeHeld(fnChange);
    if (bChanged)
        oScope.Serve(oObject);
    oObject.Release();
    return bChanged;
}

// The same for any object. One without waits costs no lock.
template<class TChange> bool Change(CWaitable& oObject, tDword nTag, TChange fnChange)
{
    const eTry eResult = oObject.TryChange(nTag, fnChange);
    return eResult == eTryHeld ? ChangeAndServe(oObject, nTag, fnChange) : eResult == eTryDone;
}

inline void CWaitable::LeaveMutex(tDword nTag, sThreadRecord& oThread)
{
    if (!IsOwnedBy(oThread.nId) || LeaveInnerLevel())
        return;
    --oThread.nOwnedMutexes;
    SetValue(nTag, 0);
}

inline bool CWaitable::ReleaseSemaphore(tDword nTag, tDword nCount, tDword& nPrevious)
{
    const eTry eResult = TryReleaseSemaphore(nTag, nCount, nPrevious);
    return eResult == eTryHeld ? ReleaseHeldSemaphore(nTag, nCount, nPrevious) : eResult == eTryDone;
}
} // namespace TOVPosix
} // namespace TOVPlatform
