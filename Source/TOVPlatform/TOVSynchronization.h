// Declares the system's synchronisation objects: critical section, event, mutex, semaphore, atomic counter.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
// The functions take handles. A handle is one unsigned 64-bit value, and 0 means that creation failed. No function
// checks its arguments or logs: a handle that identifies no object makes the call fail as described, without a crash.
//
// Any thread may call any function. The caller that destroys an object must make sure that no thread uses it any more.
// Locking or unlocking an uncontended critical section makes no system call on either platform; on Posix, the same is
// true of all other objects.
//
// In the child of a fork, the locks that other threads owned are free: critical sections as if they had never been
// entered, mutexes as abandoned ones. Of the objects without a name, the forking thread still owns in the child those
// that it owned.
//
// Timeouts are unsigned 32-bit milliseconds, passed on unchanged: -1 and 0xFFFFFFFF wait for ever, and 0 returns at
// once.
//
// An object with a name is shared, inside a process and between the processes of one user. If the name is in use,
// Create opens that object and ignores the other arguments; it fails if the object is of another kind. Null and "" mean
// that the object has no name. An object vanishes when its last handle is closed.
//
// On Posix, what killed processes leave of their objects is removed when a process creates its first object with a
// name. If a process that has been stopped keeps the lock under which they are created, Create fails after 10 seconds.
namespace TOVSynchronization
{
// A lock inside one process. The thread that owns it may enter it repeatedly, and must leave it as often. It works even
// before the first static object has been constructed.
namespace CriticalSection
{
// The spin count is accepted and has no effect. Returns 0 on failure.
TOV_EXPORT tHandle Create(unsigned long ulSpinCount);
TOV_EXPORT void Enter(tHandle hCriticalSection);
TOV_EXPORT void Leave(tHandle hCriticalSection);

// Call this only when no thread is inside. On Windows the handle is the address of the lock's record, which this call
// frees: never call it twice for the same handle. A handle of 0 is ignored.
TOV_EXPORT void Destroy(tHandle hCriticalSection);
} // namespace CriticalSection

// A signal. These waits accept the handle of any object that can be waited for: events, mutexes, semaphores and
// threads.
namespace Event
{
// With manual reset, the event stays signalled until Reset, and releases every waiter. Otherwise, it releases one
// waiter and is then no longer signalled. Returns 0 on failure.
TOV_EXPORT tHandle Create(bool bManualReset, bool bInitiallySignalled, const char* szName);

// Returns true if the handle was open.
TOV_EXPORT bool Destroy(tHandle hEvent);
TOV_EXPORT void Signal(tHandle hEvent);

// Does what Signal does, but need not do anything if the event is signalled already. This is for an event that tells of
// data under a lock: unlike Signal, it publishes nothing to the thread that the event releases, so that only the lock
// does. The calling thread must hold that lock, or have released it just before.
TOV_EXPORT TOV_CALLED_OFTEN void SignalIfClear(tHandle hEvent);
TOV_EXPORT TOV_CALLED_OFTEN void Reset(tHandle hEvent);

// Waits until the event is signalled; returns at once for a bad handle.
TOV_EXPORT void Wait(tHandle hEvent);

// Returns false only if the time has run out. It returns true for a signal, for a mutex whose owner has ended, and for
// a bad handle.
TOV_EXPORT bool TimedWait(tHandle hEvent, long lMilliseconds);

// These wait for 1 to 64 objects until any one of them can be taken, or until all can be taken at once; until then, a
// wait for all takes none. Results:
//    0 to nCount - 1   the object that released the wait, the lowest if several could; with bWaitForAll any such value
//    0x80 + index      a mutex released the wait because its owner has ended; the caller owns it now
//    -1                the wait failed: a bad handle, a count outside 1 to 64, or one object twice in a wait for all
//    -2                the time has run out (MultipleTimedWait only)
// On Posix, a wait for several objects fails if one of them has a name and the system call futex_waitv (Linux 5.16) is
// missing.
TOV_EXPORT int MultipleWait(tHandle* pHandles, int nCount, bool bWaitForAll);
TOV_EXPORT int MultipleTimedWait(tHandle* pHandles, int nCount, bool bWaitForAll, long lMilliseconds);
} // namespace Event

// A lock with an owner: the thread that owns it may lock it repeatedly, and must unlock it as often. If a thread ends
// while it owns the mutex, the mutex is abandoned: the next wait takes it, and a wait with a result reports that.
namespace Mutex
{
// bInitiallyOwned makes the calling thread the owner of a new mutex. Returns 0 on failure.
TOV_EXPORT tHandle Create(bool bInitiallyOwned, const char* szName);
TOV_EXPORT bool Destroy(tHandle hMutex);
TOV_EXPORT void Lock(tHandle hMutex);

// Does nothing unless the calling thread is the owner.
TOV_EXPORT void Unlock(tHandle hMutex);

// Returns true if another thread owns the mutex. Settled: this query takes a free mutex, and adds one level of
// ownership if the calling thread is the owner; after each false, call Unlock. If the mutex is abandoned, the query
// returns true and takes it too.
TOV_EXPORT bool IsLocked(tHandle hMutex);
} // namespace Mutex

// A count that each wait decrements. A wait blocks while the count is 0.
namespace Semaphore
{
// Returns 0 unless 0 <= lInitialCount <= lMaximumCount and 0 < lMaximumCount.
TOV_EXPORT tHandle Create(long lInitialCount, long lMaximumCount, const char* szName);
TOV_EXPORT bool Destroy(tHandle hSemaphore);
TOV_EXPORT void Lock(tHandle hSemaphore);

// Returns false only if the time has run out, as Event::TimedWait does.
TOV_EXPORT bool TryLock(tHandle hSemaphore, long lMilliseconds);

// Adds lReleaseCount to the count and returns the count before that. Returns 0 and changes nothing if lReleaseCount is
// less than 1, if the count would exceed the maximum, and for a bad handle.
TOV_EXPORT long Unlock(tHandle hSemaphore, long lReleaseCount);
} // namespace Semaphore

namespace Variable
{
// Atomically adds 1 and returns the new value, which wraps at 32 bits. <windows.h> defines a macro
// InterlockedIncrement: undefine it after including that header.
TOV_EXPORT long InterlockedIncrement(long& lVariable);
} // namespace Variable
} // namespace TOVSynchronization
} // namespace TOVPlatform
