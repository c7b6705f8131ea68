// The time of a channel, to the tick.
#include "Timer/TOVTimerInstruments.h"

#include <atomic>
#include <cmath>
#include <thread>

namespace
{
// The same facts on both time bases: the parameter tells whether the counter is the high-resolution one.
class CTOVTimerTest : public CTimerFixture, public testing::WithParamInterface<bool>
{
protected:
    CTOVTimerTest()
    {
        if (!GetParam())
            UseMilliseconds();
    }
};

std::string BaseName(const testing::TestParamInfo<bool>& oInfo)
{
    return oInfo.param ? "HighResolution" : "Milliseconds";
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Bases, CTOVTimerTest, testing::Bool(), BaseName);

TEST_P(CTOVTimerTest, CountsFromTheStart)
{
    m_oTimer.DefineChannel(0, "World");
    m_oClock.AdvanceMs(1000);
    m_oTimer.Start(0);
    EXPECT_EQ(0.0, m_oTimer.GetTime(0));

    m_oClock.AdvanceMs(2500);

    EXPECT_TRUE(m_oTimer.IsRunning(0));
    EXPECT_TRUE(m_oTimer.IsDefinedAndRunning(0));
    EXPECT_EQ(2.5, m_oTimer.GetTime(0));
    EXPECT_EQ(2500ul, m_oTimer.GetTimeInMs(0));
}

// On a system without 64-bit registers, half of a number could be the old one and half the new one.
TEST(CTOVTimerReaderTest, SeesWholeTimesWhileTheOwnerSetsThem)
{
    const double dFar = 1.0e6;
    std::atomic<bool> bDone(false);
    int nWrong = 0;
    CTOVTimer oTimer;
    oTimer.DefineChannel(0, "Shared");
    oTimer.Start(0);
    oTimer.EnableFrameTime(0);
    std::thread oReader([&] {
        while (!bDone)
        {
            for (const double dTime : {oTimer.GetFrameTime(0), oTimer.GetTime(0)})
                nWrong += std::fabs(dTime) < 1000.0 || std::fabs(dTime - dFar) < 1000.0 ? 0 : 1;
        }
    });
    for (int nTurn = 0; nTurn < 20000; ++nTurn)
        oTimer.SetTime(0, nTurn % 2 == 0 ? dFar : 0.0);
    bDone = true;
    oReader.join();

    EXPECT_EQ(0, nWrong);
}

TEST_P(CTOVTimerTest, CountsEachChannelByItself)
{
    for (int nChannel = 0; nChannel < 4; ++nChannel)
    {
        StartChannel(nChannel);
        m_oClock.AdvanceMs(250);
    }
    m_oTimer.Pause(1);
    m_oTimer.Stop(2);
    m_oClock.AdvanceMs(1000);

    EXPECT_EQ(2.0, m_oTimer.GetTime(0));
    EXPECT_EQ(0.75, m_oTimer.GetTime(1));
    EXPECT_EQ(0.0, m_oTimer.GetTime(2));
    EXPECT_EQ(1.25, m_oTimer.GetTime(3));
}

TEST_P(CTOVTimerTest, BeginsAnewWhenStartedAgain)
{
    StartChannel(0);
    m_oClock.AdvanceMs(1000);

    m_oTimer.Start(0);

    EXPECT_EQ(0.0, m_oTimer.GetTime(0));
    m_oClock.AdvanceMs(250);
    EXPECT_EQ(0.25, m_oTimer.GetTime(0));
}

TEST_P(CTOVTimerTest, IsZeroWhileStopped)
{
    StartChannel(0);
    m_oClock.AdvanceMs(1000);

    m_oTimer.Stop(0);

    EXPECT_FALSE(m_oTimer.IsRunning(0));
    EXPECT_EQ(0.0, m_oTimer.GetTime(0));
    EXPECT_EQ(0ul, m_oTimer.GetTimeInMs(0));
    m_oTimer.Stop(0); // and once more without harm
    m_oClock.AdvanceMs(1000);
    m_oTimer.Start(0);
    EXPECT_EQ(0.0, m_oTimer.GetTime(0));
}

TEST_P(CTOVTimerTest, StandsStillWhilePausedAndGoesOnFromThere)
{
    StartChannel(0);
    m_oClock.AdvanceMs(750);
    m_oTimer.Pause(0);
    EXPECT_TRUE(m_oTimer.IsPaused(0));
    EXPECT_TRUE(m_oTimer.IsRunning(0));
    m_oClock.AdvanceMs(10000);
    EXPECT_EQ(0.75, m_oTimer.GetTime(0));
    EXPECT_EQ(750ul, m_oTimer.GetTimeInMs(0));

    m_oTimer.Continue(0);

    EXPECT_FALSE(m_oTimer.IsPaused(0));
    EXPECT_EQ(0.75, m_oTimer.GetTime(0));
    m_oClock.AdvanceMs(500);
    EXPECT_EQ(1.25, m_oTimer.GetTime(0));
}

TEST_P(CTOVTimerTest, LosesEverySpanThatItWasPaused)
{
    StartChannel(0);
    for (int nPause = 0; nPause < 10; ++nPause)
    {
        m_oClock.AdvanceMs(250);
        m_oTimer.Pause(0);
        m_oClock.AdvanceMs(333);
        m_oTimer.Continue(0);
    }

    EXPECT_EQ(2.5, m_oTimer.GetTime(0));
}

TEST_P(CTOVTimerTest, KeepsTheFirstOfTwoPausesAndTellsTheLog)
{
    StartChannel(2, "World");
    m_oClock.AdvanceMs(500);
    m_oTimer.Pause(2);
    m_oClock.AdvanceMs(500);
    CLogRecorder oLog;

    m_oTimer.Pause(2);

    ASSERT_EQ(1u, oLog.Lines().size());
    EXPECT_EQ("Time channel 2 (World) is already paused!", oLog.Lines()[0].sText);
    EXPECT_EQ(eSeverityWarning, oLog.Lines()[0].eSeverity);
    EXPECT_NE(std::string::npos, oLog.Lines()[0].sFile.find("TOVTimer"));
    EXPECT_EQ(0.5, m_oTimer.GetTime(2));
    m_oTimer.Continue(2);
    EXPECT_EQ(0.5, m_oTimer.GetTime(2));
}

TEST_P(CTOVTimerTest, RunsOnWhenContinuedForNothingAndTellsTheLog)
{
    StartChannel(3, "World");
    m_oClock.AdvanceMs(500);
    CLogRecorder oLog;

    m_oTimer.Continue(3);

    ASSERT_EQ(1u, oLog.Lines().size());
    EXPECT_EQ("Time channel 3 (World) is not paused!", oLog.Lines()[0].sText);
    EXPECT_EQ(eSeverityWarning, oLog.Lines()[0].eSeverity);
    EXPECT_NE(std::string::npos, oLog.Lines()[0].sFile.find("TOVTimer"));
    EXPECT_TRUE(m_oTimer.IsRunning(3));
    EXPECT_FALSE(m_oTimer.IsPaused(3));
    EXPECT_EQ(0.5, m_oTimer.GetTime(3));
}

TEST_P(CTOVTimerTest, TellsTheLogNothingOtherwise)
{
    CLogRecorder oLog;
    StartChannel(0);
    m_oTimer.Pause(0);
    m_oTimer.Continue(0);
    m_oTimer.SetTime(0, 1.0);
    m_oTimer.Reset(0);
    m_oTimer.GetTime(0);
    m_oTimer.GetTimeDirect();
    m_oTimer.Stop(0);
    m_oTimer.UndefineChannel(0);

    EXPECT_TRUE(oLog.Lines().empty());
}

TEST_P(CTOVTimerTest, NamesANamelessChannelInTheLog)
{
    StartChannel(1, nullptr);
    CLogRecorder oLog;

    m_oTimer.Continue(1);
    m_oTimer.Pause(1);
    m_oTimer.Pause(1);

    EXPECT_EQ(1, oLog.CountLines("Time channel 1 () is not paused!"));
    EXPECT_EQ(1, oLog.CountLines("Time channel 1 () is already paused!"));
}

TEST_P(CTOVTimerTest, TakesPercentSignsInItsNameAsTheyAre)
{
    StartChannel(1, "100%s %d%n");
    CLogRecorder oLog;

    m_oTimer.Continue(1);

    EXPECT_EQ(1, oLog.CountLines("Time channel 1 (100%s %d%n) is not paused!"));
}

TEST_P(CTOVTimerTest, IsZeroAfterAReset)
{
    StartChannel(0);
    m_oClock.AdvanceMs(1000);

    m_oTimer.Reset(0);

    EXPECT_EQ(0.0, m_oTimer.GetTime(0));
    m_oClock.AdvanceMs(500);
    EXPECT_EQ(0.5, m_oTimer.GetTime(0));
}

TEST_P(CTOVTimerTest, IsBehindItsResetWhilePaused)
{
    StartChannel(0);
    m_oClock.AdvanceMs(1000);
    m_oTimer.Pause(0);
    m_oClock.AdvanceMs(500);

    m_oTimer.Reset(0);

    EXPECT_TRUE(m_oTimer.IsPaused(0));
    EXPECT_EQ(-0.5, m_oTimer.GetTime(0));
    m_oTimer.Continue(0);
    EXPECT_EQ(-0.5, m_oTimer.GetTime(0));
}

TEST_P(CTOVTimerTest, IsPausedAgainAndBehindWhenStoppedPausedAndStarted)
{
    StartChannel(0);
    m_oClock.AdvanceMs(1000);
    m_oTimer.Pause(0);
    m_oClock.AdvanceMs(250);
    m_oTimer.Stop(0);
    EXPECT_TRUE(m_oTimer.IsPaused(0));
    m_oClock.AdvanceMs(1250);

    m_oTimer.Start(0);

    EXPECT_TRUE(m_oTimer.IsPaused(0));
    EXPECT_EQ(-1.5, m_oTimer.GetTime(0));
    EXPECT_EQ(0xFFFFFFFFul - 1499, m_oTimer.GetTimeInMs(0));
    m_oClock.AdvanceMs(500);
    EXPECT_EQ(-1.5, m_oTimer.GetTime(0));
    m_oTimer.Continue(0);
    EXPECT_EQ(-1.5, m_oTimer.GetTime(0));
    m_oClock.AdvanceMs(2000);
    EXPECT_EQ(0.5, m_oTimer.GetTime(0));
}

TEST_P(CTOVTimerTest, GoesOnFromTheTimeThatItIsGiven)
{
    StartChannel(0);
    m_oClock.AdvanceMs(700);

    m_oTimer.SetTime(0, 5.0);

    EXPECT_EQ(5.0, m_oTimer.GetTime(0));
    m_oClock.AdvanceMs(250);
    EXPECT_EQ(5.25, m_oTimer.GetTime(0));
    m_oTimer.SetTime(0, -2.5);
    EXPECT_EQ(-2.5, m_oTimer.GetTime(0));
    m_oTimer.SetTime(0, 0.0);
    EXPECT_EQ(0.0, m_oTimer.GetTime(0));
}

TEST_P(CTOVTimerTest, LosesTheGivenTimeWhilePaused)
{
    StartChannel(0);
    m_oClock.AdvanceMs(1000);
    m_oTimer.Pause(0);
    m_oClock.AdvanceMs(500);

    m_oTimer.SetTime(0, 5.0);

    EXPECT_TRUE(m_oTimer.IsPaused(0));
    EXPECT_EQ(0.0, m_oTimer.GetTime(0));
    m_oClock.AdvanceMs(500);
    m_oTimer.Continue(0);
    EXPECT_EQ(0.0, m_oTimer.GetTime(0));
    m_oClock.AdvanceMs(250);
    EXPECT_EQ(0.25, m_oTimer.GetTime(0));
}

TEST_P(CTOVTimerTest, CutsTheGivenTimeToWholeTicksTowardZero)
{
    const double dTick = GetParam() ? 1e-9 : 1e-3;
    StartChannel(0);
    for (const double dSign : {1.0, -1.0})
    {
        m_oTimer.SetTime(0, dSign * 0.99 * dTick);
        EXPECT_EQ(0.0, m_oTimer.GetTime(0));
        m_oTimer.SetTime(0, dSign * 7.99 * dTick);
        EXPECT_DOUBLE_EQ(dSign * 7 * dTick, m_oTimer.GetTime(0));
    }
}

TEST_P(CTOVTimerTest, CountsWholeMillisecondsTowardZero)
{
    const struct
    {
        double dTime;
        unsigned long ulMilliseconds;
    } aCases[] = {
        {1.9999, 1999}, {0.0, 0}, {0.25, 250}, {86400.5, 86400500}, {-0.25, 4294967046}, {4294967.0, 4294967000},
    };
    StartChannel(0);
    for (const auto& oCase : aCases)
    {
        m_oTimer.SetTime(0, oCase.dTime);
        EXPECT_EQ(oCase.ulMilliseconds, m_oTimer.GetTimeInMs(0)) << oCase.dTime;
    }
}

TEST_P(CTOVTimerTest, WrapsItsMillisecondsAt32Bits)
{
    StartChannel(0);

    m_oTimer.SetTime(0, 4294967.5); // 2^32 ms and 204 more
    EXPECT_EQ(204ul, m_oTimer.GetTimeInMs(0));
    EXPECT_EQ(4294967.5, m_oTimer.GetTime(0));

    m_oTimer.SetTime(0, -4294967.5);
    EXPECT_EQ(0xFFFFFFFFul - 203, m_oTimer.GetTimeInMs(0));
    m_oTimer.SetTime(0, 8589934.75); // 2^33 ms and 158 more
    EXPECT_EQ(158ul, m_oTimer.GetTimeInMs(0));
}

TEST_P(CTOVTimerTest, GoesBackWithItsCounter)
{
    StartChannel(0);

    m_oClock.AdvanceMs(-1250);

    EXPECT_EQ(-1.25, m_oTimer.GetTime(0));
    EXPECT_EQ(0xFFFFFFFFul - 1249, m_oTimer.GetTimeInMs(0));
}

TEST_P(CTOVTimerTest, TellsTheTimeOfTheBaseItself)
{
    EXPECT_EQ(5.0, m_oTimer.GetTimeDirect());
    EXPECT_EQ(5000ul, m_oTimer.GetTimeInMsDirect());
    m_oClock.AdvanceMs(250);
    EXPECT_EQ(5.25, m_oTimer.GetTimeDirect());
    EXPECT_EQ(5250ul, m_oTimer.GetTimeInMsDirect());

    m_oTimer.DefineChannel(0, "World");
    m_oTimer.Start(0);
    m_oTimer.SetTime(0, 100.0);
    m_oTimer.Pause(0);

    EXPECT_EQ(5.25, m_oTimer.GetTimeDirect());
}

TEST_P(CTOVTimerTest, IsChangedByNoQuestion)
{
    StartChannel(0);
    m_oClock.AdvanceMs(500);
    const CTOVTimer& oTimer = m_oTimer;
    for (int nRead = 0; nRead < 3; ++nRead)
    {
        EXPECT_EQ(0.5, oTimer.GetTime(0));
        EXPECT_EQ(500ul, oTimer.GetTimeInMs(0));
        EXPECT_EQ(0.5, oTimer.GetFrameTime(0));
        EXPECT_EQ(5.5, oTimer.GetTimeDirect());
    }
}

TEST(CTOVTimerInstanceTest, IsOneForTheProcess)
{
    CTOVTimer& oTimer = CTOVTimer::Instance();

    EXPECT_EQ(&oTimer, &CTOVTimer::Instance());
    EXPECT_TRUE(oTimer.DefineChannel(3, "One"));
    EXPECT_EQ(3, CTOVTimer::Instance().GetChannelByName("one"));
    EXPECT_TRUE(oTimer.UndefineChannel(3));
}

TEST(CTOVTimerInstanceTest, RunsOnTheRealClock)
{
    CTOVTimer& oTimer = CTOVTimer::Instance();
    ASSERT_TRUE(oTimer.DefineChannel(0, "Real"));
    oTimer.Start(0);
    oTimer.SetTime(0, 5.0);
    const double dBefore = oTimer.GetTimeDirect();

    while (oTimer.GetTimeDirect() == dBefore || oTimer.GetTime(0) == 5.0)
    {
    }

    EXPECT_LT(5.0, oTimer.GetTime(0));
    EXPECT_LT(dBefore, oTimer.GetTimeDirect());
    EXPECT_TRUE(oTimer.UndefineChannel(0));
}
