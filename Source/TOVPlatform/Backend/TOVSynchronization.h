// The porting manual for the source TOVSynchronization.cpp of a backend.
#pragma once

#include <TOVPlatform/TOVSynchronization.h>

namespace TOVPlatform
{
// This header declares what a port owes to the synchronisation objects of TOVPlatform/TOVSynchronization.h, and to all
// waits.
//
// A using-declaration names a public function that the port defines itself, exactly as the public header describes it:
// there is no other function above it, so that a lock costs no additional call. The other functions are not exported.
//
// A handle that identifies no object makes a call fail without a crash. Timeouts are unsigned 32-bit milliseconds,
// measured with a monotonic clock and passed on unchanged. Any thread may call any function.
namespace Backend
{
namespace CriticalSection
{
using TOVSynchronization::CriticalSection::Create;
using TOVSynchronization::CriticalSection::Destroy;
using TOVSynchronization::CriticalSection::Enter;
using TOVSynchronization::CriticalSection::Leave;
} // namespace CriticalSection

namespace Event
{
using TOVSynchronization::Event::Create;
using TOVSynchronization::Event::Destroy;
using TOVSynchronization::Event::Reset;
using TOVSynchronization::Event::Signal;
using TOVSynchronization::Event::SignalIfClear;
} // namespace Event

namespace Mutex
{
using TOVSynchronization::Mutex::Create;
using TOVSynchronization::Mutex::Destroy;
using TOVSynchronization::Mutex::Unlock;
} // namespace Mutex

namespace Semaphore
{
using TOVSynchronization::Semaphore::Create;
using TOVSynchronization::Semaphore::Destroy;
using TOVSynchronization::Semaphore::Unlock;
} // namespace Semaphore

namespace Variable
{
using TOVSynchronization::Variable::InterlockedIncrement;
} // namespace Variable

namespace Wait
{
constexpr tDword INFINITE_TIMEOUT = 0xFFFFFFFF;
constexpr int MAX_OBJECTS = 64;

// These are the results of a wait, with the values of the Windows functions.
constexpr tDword RESULT_SIGNALLED = 0;       // plus the index of the object
constexpr tDword RESULT_ABANDONED = 0x80;    // plus the index: a mutex whose owner died; the caller owns it now
constexpr tDword RESULT_TIMEOUT = 0x102;     // nothing has been taken
constexpr tDword RESULT_FAILED = 0xFFFFFFFF; // a bad handle

// Waits for one object and takes it: a mutex gets the calling thread as its owner, a semaphore's count is decremented,
// an event with automatic reset is cleared. With a timeout of 0, it returns at once.
tDword ForOne(tHandle hObject, tDword dwMilliseconds);

// Waits for any or all of 1 to MAX_OBJECTS objects. A wait for all takes nothing before it can take every object; no
// handle occurs twice in its list.
tDword ForMany(const tHandle* pHandles, int nCount, bool bWaitForAll, tDword dwMilliseconds);
} // namespace Wait
} // namespace Backend
} // namespace TOVPlatform
