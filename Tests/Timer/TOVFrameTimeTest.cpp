// Frame time: a channel that holds still between two updates, and the rate of the updates.
#include "Timer/TOVTimerInstruments.h"

namespace
{
class CTOVTimerFrameTimeTest : public CTimerFixture
{
protected:
    void UpdateAfter(int nChannel, long long llMilliseconds)
    {
        m_oClock.AdvanceMs(llMilliseconds);
        m_oTimer.Update(nChannel);
    }
};
} // namespace

TEST_F(CTOVTimerFrameTimeTest, IsOffAtFirstAndAdvancesLikeTheTime)
{
    StartChannel(0);
    EXPECT_FALSE(m_oTimer.IsFrameTimeEnabled(0));

    m_oClock.AdvanceMs(250);
    EXPECT_EQ(0.25, m_oTimer.GetFrameTime(0));
    m_oTimer.Update(0);
    m_oClock.AdvanceMs(250);
    EXPECT_EQ(0.5, m_oTimer.GetFrameTime(0));
}

TEST_F(CTOVTimerFrameTimeTest, HoldsStillFromTheMomentItIsEnabled)
{
    StartChannel(0);
    m_oClock.AdvanceMs(250);

    m_oTimer.EnableFrameTime(0);

    EXPECT_TRUE(m_oTimer.IsFrameTimeEnabled(0));
    m_oClock.AdvanceMs(500);
    EXPECT_EQ(0.25, m_oTimer.GetFrameTime(0));
    EXPECT_EQ(0.25, m_oTimer.GetFrameTime(0));
    EXPECT_EQ(0.75, m_oTimer.GetTime(0));
}

TEST_F(CTOVTimerFrameTimeTest, GoesOnWithEachUpdate)
{
    StartChannel(0);
    m_oTimer.EnableFrameTime(0);

    UpdateAfter(0, 500);
    EXPECT_EQ(0.5, m_oTimer.GetFrameTime(0));
    m_oClock.AdvanceMs(250);
    EXPECT_EQ(0.5, m_oTimer.GetFrameTime(0));
    m_oTimer.Update(0);
    EXPECT_EQ(0.75, m_oTimer.GetFrameTime(0));
}

TEST_F(CTOVTimerFrameTimeTest, IsTakenAnewWhenEnabledAgain)
{
    StartChannel(0);
    m_oTimer.EnableFrameTime(0);
    m_oClock.AdvanceMs(250);

    m_oTimer.EnableFrameTime(0);

    EXPECT_EQ(0.25, m_oTimer.GetFrameTime(0));
}

TEST_F(CTOVTimerFrameTimeTest, IsLiveAgainOnceDisabled)
{
    StartChannel(0);
    m_oTimer.EnableFrameTime(0);
    UpdateAfter(0, 250);
    m_oClock.AdvanceMs(250);

    m_oTimer.DisableFrameTime(0);

    EXPECT_FALSE(m_oTimer.IsFrameTimeEnabled(0));
    EXPECT_EQ(0.5, m_oTimer.GetFrameTime(0));
    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
    m_oTimer.DisableFrameTime(0); // and once more without harm
    EXPECT_FALSE(m_oTimer.IsFrameTimeEnabled(0));
}

TEST_F(CTOVTimerFrameTimeTest, IsEachChannelsOwn)
{
    StartChannel(0);
    StartChannel(3);
    m_oTimer.EnableFrameTime(0);
    m_oTimer.EnableFrameTime(3);

    UpdateAfter(3, 250);

    EXPECT_EQ(0.0, m_oTimer.GetFrameTime(0));
    EXPECT_EQ(0.25, m_oTimer.GetFrameTime(3));
}

TEST_F(CTOVTimerFrameTimeTest, IsZeroWhileStoppedAndTheOldOneAfterTheStart)
{
    StartChannel(0);
    m_oTimer.EnableFrameTime(0);
    UpdateAfter(0, 250);

    m_oTimer.Stop(0);

    EXPECT_TRUE(m_oTimer.IsFrameTimeEnabled(0));
    EXPECT_EQ(0.0, m_oTimer.GetFrameTime(0));
    m_oClock.AdvanceMs(500);
    m_oTimer.Start(0);
    EXPECT_EQ(0.25, m_oTimer.GetFrameTime(0));
    m_oTimer.Update(0);
    EXPECT_EQ(0.0, m_oTimer.GetFrameTime(0));
}

TEST_F(CTOVTimerFrameTimeTest, IsZeroOnAChannelThatIsNotDefined)
{
    EXPECT_EQ(0.0, m_oTimer.GetFrameTime(0));
    StartChannel(1);
    m_oTimer.EnableFrameTime(1);
    UpdateAfter(1, 250);

    m_oTimer.UndefineChannel(1);

    EXPECT_EQ(0.0, m_oTimer.GetFrameTime(1));
    EXPECT_EQ(4.0, m_oTimer.GetFPS(1));
}

TEST_F(CTOVTimerFrameTimeTest, IsTheGivenTimeAfterSetTime)
{
    StartChannel(0);
    m_oTimer.EnableFrameTime(0);

    m_oTimer.SetTime(0, 7.00000000025); // not cut to ticks

    EXPECT_EQ(7.00000000025, m_oTimer.GetFrameTime(0));
    m_oClock.AdvanceMs(250);
    EXPECT_EQ(7.00000000025, m_oTimer.GetFrameTime(0));
    m_oTimer.Update(0);
    EXPECT_EQ(7.25, m_oTimer.GetFrameTime(0));
}

TEST_F(CTOVTimerFrameTimeTest, IsNotSetByTheTimeWhileOff)
{
    StartChannel(0);
    m_oTimer.EnableFrameTime(0);
    UpdateAfter(0, 250);
    m_oTimer.DisableFrameTime(0);
    m_oTimer.SetTime(0, 7.0);
    m_oTimer.Stop(0);
    m_oTimer.Start(0);
    m_oClock.AdvanceMs(1000);

    EXPECT_EQ(1.0, m_oTimer.GetFrameTime(0));
}

TEST_F(CTOVTimerFrameTimeTest, IsTheGivenTimeOnAPausedChannelThatItselfReadsZero)
{
    StartChannel(0);
    m_oTimer.EnableFrameTime(0);
    m_oTimer.Pause(0);

    m_oTimer.SetTime(0, 7.0);

    EXPECT_EQ(7.0, m_oTimer.GetFrameTime(0));
    EXPECT_EQ(0.0, m_oTimer.GetTime(0));
    m_oTimer.Update(0);
    EXPECT_EQ(0.0, m_oTimer.GetFrameTime(0));
}

TEST_F(CTOVTimerFrameTimeTest, RateIsOneDividedByTheLastInterval)
{
    StartChannel(0);
    UpdateAfter(0, 500);
    EXPECT_EQ(2.0, m_oTimer.GetFPS(0));
    UpdateAfter(0, 250);
    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
    UpdateAfter(0, 4000);
    EXPECT_EQ(0.25, m_oTimer.GetFPS(0));
    UpdateAfter(0, 125);
    EXPECT_EQ(8.0, m_oTimer.GetFPS(0));
    m_oClock.AdvanceMs(1000);
    EXPECT_EQ(8.0, m_oTimer.GetFPS(0));
}

TEST_F(CTOVTimerFrameTimeTest, RateIsTheSameWithFrameTimeEnabled)
{
    StartChannel(0);
    m_oClock.AdvanceMs(500);
    m_oTimer.EnableFrameTime(0);

    UpdateAfter(0, 500); // measured from 0: enabling is no update
    EXPECT_EQ(1.0, m_oTimer.GetFPS(0));
    UpdateAfter(0, 250);
    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
    m_oTimer.EnableFrameTime(0);
    UpdateAfter(0, 250);
    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
}

TEST_F(CTOVTimerFrameTimeTest, RateIsZeroBeforeTheFirstUpdate)
{
    EXPECT_EQ(0.0, m_oTimer.GetFPS(0));
    StartChannel(0);
    m_oClock.AdvanceMs(250);
    m_oTimer.EnableFrameTime(0);
    EXPECT_EQ(0.0, m_oTimer.GetFPS(0));
}

TEST_F(CTOVTimerFrameTimeTest, RateIsZeroWithoutAnInterval)
{
    StartChannel(0);
    m_oTimer.Update(0);
    EXPECT_EQ(0.0, m_oTimer.GetFPS(0));
    UpdateAfter(0, 250);
    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
    m_oTimer.Update(0);
    EXPECT_EQ(0.0, m_oTimer.GetFPS(0));
}

TEST_F(CTOVTimerFrameTimeTest, RateIsZeroFromThePausesSecondUpdateOn)
{
    StartChannel(0);
    m_oClock.AdvanceMs(250);
    m_oTimer.Pause(0);

    UpdateAfter(0, 500);
    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
    UpdateAfter(0, 500);
    EXPECT_EQ(0.0, m_oTimer.GetFPS(0));
    m_oTimer.Continue(0);
    UpdateAfter(0, 500);
    EXPECT_EQ(2.0, m_oTimer.GetFPS(0));
}

TEST_F(CTOVTimerFrameTimeTest, RateIsZeroWhereTimeWentBack)
{
    StartChannel(0);
    m_oTimer.EnableFrameTime(0);
    m_oTimer.SetTime(0, 10.0);
    m_oTimer.Update(0);

    m_oTimer.SetTime(0, 3.0);

    UpdateAfter(0, 250);
    EXPECT_EQ(0.0, m_oTimer.GetFPS(0));
    UpdateAfter(0, 250);
    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
}

TEST_F(CTOVTimerFrameTimeTest, RateMeasuresFromTheLastUpdateAcrossAStop)
{
    StartChannel(0);
    UpdateAfter(0, 250);
    m_oTimer.Stop(0);
    m_oTimer.Start(0);

    UpdateAfter(0, 500); // 0.5 less the 0.25 of then

    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
}

TEST_F(CTOVTimerFrameTimeTest, RateStaysWhileStopped)
{
    StartChannel(0);
    UpdateAfter(0, 250);
    m_oTimer.Stop(0);

    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
    m_oTimer.Start(0);
    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
}

TEST_F(CTOVTimerFrameTimeTest, RateStaysThroughANewDefinitionAndCountsFromZero)
{
    StartChannel(0);
    UpdateAfter(0, 250);
    m_oTimer.UndefineChannel(0);
    StartChannel(0);
    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));

    UpdateAfter(0, 500);

    EXPECT_EQ(2.0, m_oTimer.GetFPS(0));
}

TEST_F(CTOVTimerFrameTimeTest, RateIsMeasuredInMillisecondsToo)
{
    UseMilliseconds();
    StartChannel(0);
    m_oTimer.EnableFrameTime(0);

    UpdateAfter(0, 250);

    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
    EXPECT_EQ(0.25, m_oTimer.GetFrameTime(0));
}

TEST_F(CTOVTimerFrameTimeTest, UpdateLeavesAStoppedChannelAsItIs)
{
    StartChannel(0);
    m_oTimer.EnableFrameTime(0);
    UpdateAfter(0, 250);
    m_oTimer.Stop(0);

    UpdateAfter(0, 250);

    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
    m_oTimer.Start(0);
    EXPECT_EQ(0.25, m_oTimer.GetFrameTime(0));
    UpdateAfter(0, 500); // the update before was that at 0.25
    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
}

TEST_F(CTOVTimerFrameTimeTest, UpdateLeavesAnUndefinedChannelAsItIs)
{
    StartChannel(0);
    UpdateAfter(0, 250);
    m_oTimer.UndefineChannel(0);

    UpdateAfter(0, 250);

    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
}

TEST_F(CTOVTimerFrameTimeTest, UpdateAllUpdatesEachChannelThatRuns)
{
    for (const int nChannel : {0, 1, 3})
    {
        StartChannel(nChannel);
        m_oTimer.EnableFrameTime(nChannel);
    }
    m_oClock.AdvanceMs(250);
    m_oTimer.UpdateAll();
    m_oTimer.Stop(1);
    m_oClock.AdvanceMs(125);

    m_oTimer.UpdateAll();

    EXPECT_EQ(8.0, m_oTimer.GetFPS(0));
    EXPECT_EQ(4.0, m_oTimer.GetFPS(1));
    EXPECT_EQ(8.0, m_oTimer.GetFPS(3));
    EXPECT_EQ(0.375, m_oTimer.GetFrameTime(0));
    EXPECT_EQ(0.375, m_oTimer.GetFrameTime(3));
    m_oTimer.Start(1);
    EXPECT_EQ(0.25, m_oTimer.GetFrameTime(1));
}

TEST_F(CTOVTimerFrameTimeTest, UpdateAllGoesUpwards)
{
    for (const int nChannel : {3, 2, 1, 0})
        StartChannel(nChannel);
    m_oClock.TickWithEachRead(250 * TICKS_PER_MS);

    m_oTimer.UpdateAll();

    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
    EXPECT_EQ(2.0, m_oTimer.GetFPS(1));
    EXPECT_DOUBLE_EQ(1 / 0.75, m_oTimer.GetFPS(2));
    EXPECT_EQ(1.0, m_oTimer.GetFPS(3));
}

TEST_F(CTOVTimerFrameTimeTest, UpdateAllOfNothingDoesNothing)
{
    m_oTimer.DefineChannel(1, "Stopped");

    EXPECT_NO_CHECK(m_oTimer.UpdateAll());

    EXPECT_FALSE(m_oTimer.IsRunning(1));
}
