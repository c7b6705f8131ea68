// Declares how the timer computes with ticks. Internal to its sources.
#pragma once

#include <Timer/TOVTimer.h>

#include <cfloat>

namespace TOVTimerTicks
{
inline bool IsChannel(int nChannel)
{
    return 0 <= nChannel && nChannel < TOV_TIMER_MAX_TIME_CHANNELS;
}

// Ticks wrap around.
inline long long Difference(long long nFirst, long long nSecond)
{
    return static_cast<long long>(static_cast<unsigned long long>(nFirst) - static_cast<unsigned long long>(nSecond));
}

// Rounds a value to a double. Where registers hold more digits, later results would differ between the targets.
inline double Rounded(double dValue)
{
    if (FLT_EVAL_METHOD == 0)
        return dValue;
    const volatile double dStored = dValue;
    return dStored;
}

// Logs that a read of the high-resolution counter failed. Returns 0.
long long WarnOfCounter(const char* szWarning);
} // namespace TOVTimerTicks
