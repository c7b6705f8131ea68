// The program's clock functions stand before the C library's in every module of the process.
#include "Timer/TOVFakeClock.h"

#include <cerrno>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

struct CFakeClock::sHooks
{
};

CFakeClock::CFakeClock(long long llTicks) : m_pHooks()
{
    FakeClockState() = {true, llTicks, 0, false, false, 0, 0};
}

CFakeClock::~CFakeClock()
{
    FakeClockState().bArmed = false;
}

#define TOV_HOOK extern "C" __attribute__((visibility("default")))

TOV_HOOK int clock_gettime(clockid_t nClock, timespec* pTime) noexcept
{
    sFakeClockState& oState = FakeClockState();
    if (!oState.bArmed)
        return static_cast<int>(::syscall(SYS_clock_gettime, nClock, pTime));

    if (!ReadFakeCounter(oState))
    {
        errno = EINVAL;
        return -1;
    }
    pTime->tv_sec = static_cast<time_t>(oState.llTicks / TICKS_PER_SECOND);
    pTime->tv_nsec = static_cast<long>(oState.llTicks % TICKS_PER_SECOND);
    return 0;
}

TOV_HOOK int clock_getres(clockid_t nClock, timespec* pResolution) noexcept
{
    sFakeClockState& oState = FakeClockState();
    if (!oState.bArmed)
        return static_cast<int>(::syscall(SYS_clock_getres, nClock, pResolution));

    ++oState.nFrequencyReads;
    if (oState.bFrequencyFails)
    {
        errno = EINVAL;
        return -1;
    }
    pResolution->tv_sec = 0;
    pResolution->tv_nsec = 1;
    return 0;
}
