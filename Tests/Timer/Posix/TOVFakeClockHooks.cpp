// The program's clock functions stand before the C library's in every module of the process.
#include "Timer/Posix/TOVSharedClock.h"
#include "Timer/TOVFakeClock.h"

#include <atomic>
#include <cerrno>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

struct CFakeClock::sHooks
{
};

CFakeClock::CFakeClock(long long llTicks) : m_pHooks()
{
    FakeClockState() = {true, llTicks, 0, TICKS_PER_SECOND, false, false, 0, 0};
}

CFakeClock::~CFakeClock()
{
    FakeClockState().bArmed = false;
}

// Nanoseconds; 0 while nobody holds the clock. A second lies before the tests, however short a time the system is up.
static std::atomic<long long> s_llSharedTicks(0);

CSharedClock::CSharedClock()
{
    SetMs(0);
}

CSharedClock::~CSharedClock()
{
    s_llSharedTicks = 0;
}

void CSharedClock::SetMs(long long llMilliseconds)
{
    s_llSharedTicks = TICKS_PER_SECOND + llMilliseconds * TICKS_PER_MS;
}

static int Give(timespec& oTime, long long llTicks)
{
    oTime.tv_sec = static_cast<time_t>(llTicks / TICKS_PER_SECOND);
    oTime.tv_nsec = static_cast<long>(llTicks % TICKS_PER_SECOND);
    return 0;
}

#define TOV_HOOK extern "C" __attribute__((visibility("default")))

TOV_HOOK int clock_gettime(clockid_t nClock, timespec* pTime) noexcept
{
    sFakeClockState& oState = FakeClockState();
    if (!oState.bArmed)
    {
        const long long llShared = nClock == CLOCK_MONOTONIC ? s_llSharedTicks.load() : 0;
        return llShared != 0 ? Give(*pTime, llShared) : static_cast<int>(::syscall(SYS_clock_gettime, nClock, pTime));
    }

    if (!ReadFakeCounter(oState))
    {
        errno = EINVAL;
        return -1;
    }
    return Give(*pTime, oState.llTicks);
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
