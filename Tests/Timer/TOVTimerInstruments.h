// What the tests of the timer share.
#pragma once

#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"
#include "Timer/TOVFakeClock.h"

#include <Timer/TOVTimer.h>

#include <string>

constexpr char RANGE_CHECK[] = "(0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS)";
constexpr char DEFINED_CHECK[] = "(0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS) && IsDefined(nChannel)";
constexpr char RUNNING_CHECK[] =
    "(0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS) && IsDefinedAndRunning(nChannel)";

constexpr char NO_TIME[] = "Can't retrieve time from highresolution timer";
constexpr char NO_FREQUENCY[] = "Can't retrieve frequency from highresolution timer";

namespace
{
TOV_PRIVATE_MEMBER(HighResolution, CTOVTimer, bool, m_bHighResolutionTimer)
} // namespace

// A timer on a counter that stands at 5 s until a test moves it.
class CTimerFixture : public testing::Test
{
protected:
    CFakeClock m_oClock;
    CTOVTimer m_oTimer;

    void StartChannel(int nChannel, const char* szName = "Channel")
    {
        ASSERT_TRUE(m_oTimer.DefineChannel(nChannel, szName));
        m_oTimer.Start(nChannel);
    }

    // Goes on in milliseconds, without the high-resolution counter.
    void UseMilliseconds() { HighResolution(m_oTimer) = false; }

    std::string NameOf(int nChannel) const
    {
        const char* szName = m_oTimer.GetChannelName(nChannel);
        return szName != nullptr ? szName : "";
    }
};
