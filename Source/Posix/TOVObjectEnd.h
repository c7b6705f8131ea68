// The end of objects and of the threads that own them.
#pragma once

#include <Posix/TOVWaitable.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// Closes the handle of anything that can be waited for, and fails the waits for it. False if there is none.
bool CloseObject(unsigned long long hObject);

// The same for a record without a name, critical sections included. False if the tag does not match any more.
bool CloseRecord(CWaitable& oRecord, tDword nTag);

// What a thread's end does: its mutexes without name go to the next waits as abandoned, its handle is signalled.
void AbandonMutexes(tDword nThreadId);
void EndThread(unsigned long long hThread);
} // namespace TOVPosix
} // namespace TOVPlatform
