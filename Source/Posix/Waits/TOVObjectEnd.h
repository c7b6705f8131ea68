// The end of objects and of the threads that own them.
#pragma once

#include <Posix/Waits/TOVWaitable.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// Closes the handle of any object that can be waited for, and fails the waits for it. False if there is no such object.
bool CloseObject(tHandle hObject);

// Does the same for the record of an object without a name, critical sections included. False if the tag does not match
// any more.
bool CloseRecord(CWaitable& oRecord, tDword nTag);

// The steps of a thread's end: its mutexes without a name go to the next waits as abandoned; its handle is signalled.
void AbandonMutexes(tDword nThreadId);
void EndThread(tHandle hThread);

// Called in the child of a fork, under all locks of the process. The calling thread, which has a new id, is the only
// one there; all others count as ended: their mutexes are abandoned, their critical sections free, their handles
// signalled, their waits over. The calling thread still owns what it owned under its former id, which is NO_ID if it
// owned nothing.
void EndOtherThreads(const sThreadRecord& oThread, tDword nFormerId);
} // namespace TOVPosix
} // namespace TOVPlatform
