// The porting manual for the source TOVTimeEvent.cpp of a backend.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
// This header declares what a port owes to the time events of Timer/TOVTimer.h. Nothing here is exported.
//
// Periods and delays are 1 to at least 65535 milliseconds. Any thread may call any function. A callback runs on a
// thread of the timer service, which all callbacks share, and may call these functions; the library stays in memory
// from the first event on.
namespace Backend
{
// These are the types of a callback, in the plain form and in the form of the system's own timer; they differ if the
// system has its own calling convention. A callback receives the event's identifier, a message, the caller's value and
// two values without a meaning.
typedef void (*tTimeEvent)(unsigned int nEvent, unsigned int nMessage, unsigned long ulUser, unsigned long ulReserved1,
                           unsigned long ulReserved2);
typedef void(TOV_CALLBACK* tSystemTimeEvent)(unsigned int nEvent, unsigned int nMessage, unsigned long ulUser,
                                             unsigned long ulReserved1, unsigned long ulReserved2);

// Begins, or ends, a request for a timer resolution in milliseconds. Returns 0, or an error code if the
// period is out of range or was never begun.
unsigned int BeginTimerPeriod(unsigned int nMilliseconds);
unsigned int EndTimerPeriod(unsigned int nMilliseconds);

// Calls pCallback once after nDelay milliseconds, or periodically without drift. Returns the event's identifier, or 0
// if the delay is out of range, if there are already 16 events, or if memory is exhausted. The system aims at the
// resolution. Calls that are late because of another callback follow without a pause; at least the latest of them are
// made. A null callback is accepted and never called.
unsigned int SetTimeEvent(unsigned int nDelay, unsigned int nResolution, tTimeEvent pCallback, unsigned long ulUser,
                          bool bPeriodic);
unsigned int SetSystemTimeEvent(unsigned int nDelay, unsigned int nResolution, tSystemTimeEvent pCallback,
                                unsigned long ulUser, bool bPeriodic);

// Ends an event; a call that has begun is completed. Returns 0, or an error code if there is no such event. Whether a
// single event still exists during its call is up to the port.
unsigned int KillTimeEvent(unsigned int nEvent);
} // namespace Backend
} // namespace TOVPlatform
