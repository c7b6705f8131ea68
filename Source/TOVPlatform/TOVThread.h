// The system's threads: start one, end the calling one, wait for one, priorities.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
// Free functions over handles, like those of TOVSynchronization. A thread's handle can be waited for there as well, and
// counts as signalled once the thread has ended. No function closes it: it stays open for the rest of the process.
//
// A program that unloads the library has to wait for the threads first. On Linux the library stays in memory until each
// of them has ended. In the child of a fork, all threads but the forking one count as ended.
//
// Threads: any, for all functions.
namespace TOVThread
{
enum eThreadPriority : int
{
    eThreadPriorityLow = 0,
    eThreadPriorityNormal = 1,
    eThreadPriorityHigh = 2,
    eThreadPriorityTimeCritical = 3
};

// A thread's entry. The argument carries a pointer in its low bits. On a 32-bit system the high half is undefined.
typedef unsigned long (*tThreadEntry)(unsigned long long ullParam);

// Starts a thread, which runs at once. The system's id of the thread stands in *pulThreadId, unless that is null,
// before the entry function begins. Returns 0 on failure.
TOV_EXPORT tHandle Create(tThreadEntry pEntry, void* pParam, unsigned long* pulThreadId);

// Ends the calling thread. Its stack is not unwound, so no local object is destroyed; its thread-local storage is
// released.
[[noreturn]] TOV_EXPORT void Exit(int nExitCode);

// Wait for a thread's end. They do not report whether it ended, the time ran out, or the handle was bad. The timeout is
// in unsigned 32-bit milliseconds; 0xFFFFFFFF waits for ever.
TOV_EXPORT void WaitForExit(tHandle hThread, unsigned long ulMilliseconds);
TOV_EXPORT void WaitForExitInfinite(tHandle hThread);

// Returns -1, which is no enumerator, for a bad handle and for a priority of the system that has no enumerator here,
// such as above normal and idle.
TOV_EXPORT eThreadPriority GetPriority(tHandle hThread);

// A value outside the enumerators sets normal priority. On Linux the priorities are nice values of the thread; one that
// the system refuses to this user still reads back as it was set.
TOV_EXPORT void SetPriority(tHandle hThread, eThreadPriority ePriority);
} // namespace TOVThread
} // namespace TOVPlatform
