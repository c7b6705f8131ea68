// The system's synchronisation objects: critical section, event, mutex, semaphore, atomic counter.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
// Free functions over handles. A handle is one unsigned 64-bit value, and 0 means that creation failed. No function
// checks its arguments or logs: a handle that names no object makes the call fail as described, without a crash.
//
// Threads: any, for all functions. The caller who destroys an object must make sure that no thread uses it any more. An
// uncontended lock or unlock of a critical section is no system call on either platform; on Posix this holds for all
// objects.
//
// In the child of a fork, what other threads owned is free: critical sections as if never entered, mutexes as
// abandoned. The forking thread still owns there what it owned of the objects without a name.
//
// Timeouts are unsigned 32-bit milliseconds, passed on unchanged: -1 and 0xFFFFFFFF wait for ever, 0 only looks.
//
// A name shares an object inside a process and between the processes of one user. A name in use opens its object and
// ignores the other arguments; it fails if the object is of another kind. Null and "" are no names. The object vanishes
// with its last handle.
namespace TOVSynchronization
{
// A lock inside one process, which its owner may enter repeatedly and leaves as often. It works before any static has
// been constructed.
namespace CriticalSection
{
// The spin count is accepted and not used. Returns 0 on failure.
TOV_EXPORT tHandle Create(unsigned long ulSpinCount);
TOV_EXPORT void Enter(tHandle hCriticalSection);
TOV_EXPORT void Leave(tHandle hCriticalSection);

// Allowed only when no thread is inside. On Windows the handle is the address of the lock's record, which is released
// here, so that a second call for the same handle is an error of the caller. A handle of 0 is ignored.
TOV_EXPORT void Destroy(tHandle hCriticalSection);
} // namespace CriticalSection

// A signal. The waits here take any handle that can be waited for: events, mutexes, semaphores and threads.
namespace Event
{
// With manual reset the event stays signalled until Reset, and releases every waiter. Otherwise it releases one wait,
// which clears it. Returns 0 on failure.
TOV_EXPORT tHandle Create(bool bManualReset, bool bInitiallySignalled, const char* szName);

// Returns true if the handle was open.
TOV_EXPORT bool Destroy(tHandle hEvent);
TOV_EXPORT void Signal(tHandle hEvent);
TOV_EXPORT void Reset(tHandle hEvent);

// Waits until signalled; returns at once for a bad handle.
TOV_EXPORT void Wait(tHandle hEvent);

// Returns false only when the time ran out: a signal, a mutex whose owner died and a bad handle all give true.
TOV_EXPORT bool TimedWait(tHandle hEvent, long lMilliseconds);

// Wait for 1 to 64 objects until any one of them can be taken, or all of them at once; "all" takes none before it can
// take every one. Results:
//    0 to nCount - 1   that object released the wait, the lowest if several could; with bWaitForAll any such value
//    0x80 + index      the same for a mutex whose owner died; the caller owns it now
//    -1                failed: a bad handle, a count outside 1 to 64, or one object twice in a wait for all
//    -2                the time ran out (MultipleTimedWait only)
// Posix: several objects of which at least one has a name need the system call futex_waitv (Linux 5.16), else -1.
TOV_EXPORT int MultipleWait(tHandle* pHandles, int nCount, bool bWaitForAll);
TOV_EXPORT int MultipleTimedWait(tHandle* pHandles, int nCount, bool bWaitForAll, long lMilliseconds);
} // namespace Event

// A lock that a thread owns, which may lock it repeatedly and unlocks it as often. A thread that ends as the owner
// leaves the mutex abandoned: the next wait takes it, and its result says so if it can.
namespace Mutex
{
// bInitiallyOwned makes the calling thread the owner of a new mutex. Returns 0 on failure.
TOV_EXPORT tHandle Create(bool bInitiallyOwned, const char* szName);
TOV_EXPORT bool Destroy(tHandle hMutex);
TOV_EXPORT void Lock(tHandle hMutex);

// Does nothing unless the calling thread is the owner.
TOV_EXPORT void Unlock(tHandle hMutex);

// Returns true if another thread owns the mutex. Settled: a free mutex is taken by this query, and one level of
// ownership is added for the owner itself; each false has to be undone with Unlock. An abandoned mutex gives true and
// is taken too.
TOV_EXPORT bool IsLocked(tHandle hMutex);
} // namespace Mutex

// A count that each wait takes down by one; at 0 a wait blocks.
namespace Semaphore
{
// Returns 0 unless 0 <= lInitialCount <= lMaximumCount and 0 < lMaximumCount.
TOV_EXPORT tHandle Create(long lInitialCount, long lMaximumCount, const char* szName);
TOV_EXPORT bool Destroy(tHandle hSemaphore);
TOV_EXPORT void Lock(tHandle hSemaphore);

// Returns false only when the time ran out, like Event::TimedWait.
TOV_EXPORT bool TryLock(tHandle hSemaphore, long lMilliseconds);

// Returns the count before the release. Fails with 0, and changes nothing, for a release of less than 1, for a release
// beyond the maximum and for a bad handle.
TOV_EXPORT long Unlock(tHandle hSemaphore, long lReleaseCount);
} // namespace Semaphore

namespace Variable
{
// Atomically adds 1 and returns the new value, which wraps at 32 bits. <windows.h> has a macro of this name, which has
// to be undefined after that header.
TOV_EXPORT long InterlockedIncrement(long& lVariable);
} // namespace Variable
} // namespace TOVSynchronization
} // namespace TOVPlatform
