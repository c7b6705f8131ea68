#include <TOVPlatform/Backend/TOVTimeEvent.h>

#include <Posix/Waits/TOVTimeEventService.h>

namespace TOVPlatform
{
using TOVPosix::s_oTimeEventService;

namespace Backend
{
unsigned int BeginTimerPeriod(unsigned int nMilliseconds)
{
    return s_oTimeEventService.BeginPeriod(nMilliseconds);
}

unsigned int EndTimerPeriod(unsigned int nMilliseconds)
{
    return s_oTimeEventService.EndPeriod(nMilliseconds);
}

// The resolution is ignored: the clock is always as fine as the kernel can make it.
unsigned int SetTimeEvent(unsigned int nDelay, unsigned int, tTimeEvent pCallback, unsigned long ulUser, bool bPeriodic)
{
    return s_oTimeEventService.Set(nDelay, pCallback, ulUser, bPeriodic);
}

unsigned int SetSystemTimeEvent(unsigned int nDelay, unsigned int nResolution, tSystemTimeEvent pCallback,
                                unsigned long ulUser, bool bPeriodic)
{
    return SetTimeEvent(nDelay, nResolution, pCallback, ulUser, bPeriodic);
}

unsigned int KillTimeEvent(unsigned int nEvent)
{
    return s_oTimeEventService.Kill(nEvent);
}
} // namespace Backend
} // namespace TOVPlatform
