// The end of objects and of the threads that own them.
#pragma once

#include <Posix/Waits/TOVWaitable.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// Closes the handle of anything that can be waited for, and fails the waits for it. False if there is none.
bool CloseObject(tHandle hObject);

// The same for a record without a name, critical sections included. False if the tag does not match any more.
bool CloseRecord(CWaitable& oRecord, tDword nTag);

// What a thread's end does: its mutexes without name go to the next waits as abandoned, its handle is signalled.
void AbandonMutexes(tDword nThreadId);
void EndThread(tHandle hThread);

// What a fork does in the child, where the calling thread is the only one, under a new id: all others count as ended.
// Their mutexes are abandoned, their critical sections free, their handles signalled, their waits over. What the
// calling thread owned under its former id, 0 for nothing, it goes on owning. Under all locks of the process.
void EndOtherThreads(const sThreadRecord& oThread, tDword nFormerId);
} // namespace TOVPosix
} // namespace TOVPlatform
