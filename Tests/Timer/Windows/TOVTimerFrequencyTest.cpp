// The time by counters of other frequencies.
#include "Timer/TOVTimerInstruments.h"

namespace
{
class CTOVTimerFrequencyTest : public CTimerFixture
{
protected:
    void SetFrequency(long long llTicksPerSecond) { FakeClockState().llTicksPerSecond = llTicksPerSecond; }
};
} // namespace

TEST_F(CTOVTimerFrequencyTest, IsCountedInTheTicksOfTheCounter)
{
    SetFrequency(3579545);
    StartChannel(0);

    m_oClock.Advance(3579545 * 3ll);

    EXPECT_EQ(3.0, m_oTimer.GetTime(0));
    EXPECT_EQ(3000ul, m_oTimer.GetTimeInMs(0));
    m_oClock.Advance(1);
    EXPECT_DOUBLE_EQ(3 + 1 / 3579545.0, m_oTimer.GetTime(0));
}

TEST_F(CTOVTimerFrequencyTest, CutsTheGivenTimeToWholeTicks)
{
    SetFrequency(3);
    StartChannel(0);

    m_oTimer.SetTime(0, 0.6);
    EXPECT_DOUBLE_EQ(1 / 3.0, m_oTimer.GetTime(0));
    EXPECT_EQ(333ul, m_oTimer.GetTimeInMs(0));
    m_oTimer.SetTime(0, -0.6);
    EXPECT_DOUBLE_EQ(-1 / 3.0, m_oTimer.GetTime(0));
    EXPECT_EQ(0xFFFFFFFFul - 332, m_oTimer.GetTimeInMs(0));
}

TEST_F(CTOVTimerFrequencyTest, IsAskedForWithEveryRead)
{
    StartChannel(0);
    m_oClock.Advance(1000);

    SetFrequency(2000);

    EXPECT_EQ(0.5, m_oTimer.GetTime(0));
}

TEST_F(CTOVTimerFrequencyTest, TakesACounterBelowZero)
{
    m_oClock.Set(-TICKS_PER_SECOND);
    EXPECT_EQ(-1.0, m_oTimer.GetTimeDirect());
    EXPECT_EQ(0xFFFFFFFFul - 999, m_oTimer.GetTimeInMsDirect());
    StartChannel(0);

    m_oClock.Set(TICKS_PER_SECOND);

    EXPECT_EQ(2.0, m_oTimer.GetTime(0));
}
