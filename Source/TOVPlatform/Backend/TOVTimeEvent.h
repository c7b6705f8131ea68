#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
// What a port owes to the time events of Timer/TOVTimer.h. Nothing here is exported.
//
// Periods and delays are 1 to 65535 milliseconds. Threads: any, for all functions. A callback runs on a thread of the
// timer service, which all callbacks share, and may use these functions; the library stays in memory from the first
// event on.
namespace Backend
{
// A callback, in a plain form and in the system's; the two differ by the calling convention where the system has one of
// its own. It gets the event's identifier, a message, the caller's value and two values without meaning.
typedef void (*tTimeEvent)(unsigned int nEvent, unsigned int nMessage, unsigned long ulUser, unsigned long ulReserved1,
                           unsigned long ulReserved2);
typedef void(TOV_CALLBACK* tSystemTimeEvent)(unsigned int nEvent, unsigned int nMessage, unsigned long ulUser,
                                             unsigned long ulReserved1, unsigned long ulReserved2);

// Begins, or ends, a request for a timer resolution of 1 to 65535 milliseconds. Returns 0, or an error code if the
// period is out of range or was never begun.
unsigned int BeginTimerPeriod(unsigned int nMilliseconds);
unsigned int EndTimerPeriod(unsigned int nMilliseconds);

// Calls pCallback once after nDelay milliseconds, or periodically without drift. Returns the event's identifier, or 0
// for a delay out of range, for more than 16 events and for a lack of memory. The resolution is a wish. Calls that
// another callback holds up follow without a pause; at least the latest of them are made. A null callback is accepted
// and never called.
unsigned int SetTimeEvent(unsigned int nDelay, unsigned int nResolution, tTimeEvent pCallback, unsigned long ulUser,
                          bool bPeriodic);
unsigned int SetSystemTimeEvent(unsigned int nDelay, unsigned int nResolution, tSystemTimeEvent pCallback,
                                unsigned long ulUser, bool bPeriodic);

// Ends an event; a call that has begun goes on. Returns 0, or an error code if there is no such event, which is also so
// once the call of a single event has begun.
unsigned int KillTimeEvent(unsigned int nEvent);
} // namespace Backend
} // namespace TOVPlatform
