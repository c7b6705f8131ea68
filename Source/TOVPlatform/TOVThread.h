// Declares the system's threads: their start, their end, waits for their end, and their priorities.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
// The functions take handles, like those of TOVSynchronization, whose waits also accept a thread's handle: it is
// signalled once the thread has ended. No function closes the handle: it stays open for the rest of the process.
//
// Before a program unloads the library, it must wait for its threads. On Linux the library stays in memory until each
// of them has ended. In the child of a fork, all threads except the forking one count as ended.
//
// Any thread may call any function.
namespace TOVThread
{
// The priority of one thread among those of its process.
enum eThreadPriority : int
{
    eThreadPriorityLow = 0,
    eThreadPriorityNormal = 1,
    eThreadPriorityHigh = 2,
    eThreadPriorityTimeCritical = 3 // for short work that cannot wait
};

// The function that a new thread executes. Its argument contains the pParam of Create in its low bits; on a 32-bit
// system the high half is undefined.
typedef unsigned long (*tThreadEntry)(unsigned long long ullParam);

// Starts a thread, which runs at once. Unless pulThreadId is null, the system's id of the thread is stored there before
// the entry function begins. Returns 0 on failure.
TOV_EXPORT tHandle Create(tThreadEntry pEntry, void* pParam, unsigned long* pulThreadId);

// Ends the calling thread. Its stack is not unwound, so no local object is destroyed; its thread-local storage is
// released.
[[noreturn]] TOV_EXPORT void Exit(int nExitCode);

// These wait for a thread's end. They do not return whether it has ended, the time has run out, or the handle was bad.
// The timeout is in unsigned 32-bit milliseconds; 0xFFFFFFFF waits for ever.
TOV_EXPORT void WaitForExit(tHandle hThread, unsigned long ulMilliseconds);
TOV_EXPORT void WaitForExitInfinite(tHandle hThread);

// Returns -1, which is no enumerator, for a bad handle and for a priority of the system that has no enumerator here,
// such as above normal and idle.
TOV_EXPORT eThreadPriority GetPriority(tHandle hThread);

// A value that is not an enumerator sets normal priority. On Linux the priorities are nice values of the thread;
// GetPriority returns the priority that was set, even if the system refuses it to this user.
TOV_EXPORT void SetPriority(tHandle hThread, eThreadPriority ePriority);
} // namespace TOVThread
} // namespace TOVPlatform
