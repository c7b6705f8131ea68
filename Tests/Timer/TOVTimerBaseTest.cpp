// The two time bases, and what comes of a counter that fails.
#include "Timer/TOVTimerInstruments.h"

#include <cmath>
#include <random>

// Reaches one of the timer's private operations.
#define TOV_PRIVATE_OPERATION(fnCall, TResult, mOperation)                                                             \
    struct s##fnCall                                                                                                   \
    {                                                                                                                  \
        typedef TResult (CTOVTimer::*tPointer)() const;                                                                \
        friend tPointer ReachOperation(s##fnCall);                                                                     \
    };                                                                                                                 \
    template<s##fnCall::tPointer pOperation> struct s##fnCall##Opener                                                  \
    {                                                                                                                  \
        friend s##fnCall::tPointer ReachOperation(s##fnCall) { return pOperation; }                                    \
    };                                                                                                                 \
    template struct s##fnCall##Opener<&CTOVTimer::mOperation>;                                                         \
    inline TResult fnCall(const CTOVTimer& oTimer)                                                                     \
    {                                                                                                                  \
        return (oTimer.*ReachOperation(s##fnCall()))();                                                                \
    }

namespace
{
TOV_PRIVATE_OPERATION(IsAvailable, bool, IsHighResolutionTimerAvailable)
TOV_PRIVATE_OPERATION(IsActive, bool, IsHighResolutionTimerActive)
TOV_PRIVATE_OPERATION(HardwareTime, long long, GetHardwareTime)
TOV_PRIVATE_OPERATION(HardwareFrequency, long long, GetHardwareTimerFrequency)

// The same for one that takes an argument.
struct sUseHighResolution
{
    typedef void (CTOVTimer::*tPointer)(bool);
    friend tPointer ReachOperation(sUseHighResolution);
};
template<sUseHighResolution::tPointer pOperation> struct sUseHighResolutionOpener
{
    friend sUseHighResolution::tPointer ReachOperation(sUseHighResolution) { return pOperation; }
};
template struct sUseHighResolutionOpener<&CTOVTimer::UseHighResolutionTimer>;

class CTOVTimerBaseTest : public CTimerFixture
{
protected:
    // What the log hears of the counter, in its order: T for the time, F for the frequency.
    class CCounterLog : public CLogRecorder
    {
    public:
        std::string Heard() const
        {
            std::string sHeard;
            for (const sLogLine& oLine : Lines())
            {
                EXPECT_EQ(eSeverityWarning, oLine.eSeverity);
                EXPECT_NE(std::string::npos, oLine.sFile.find("TOVTimer"));
                sHeard += oLine.sText == NO_TIME ? 'T' : oLine.sText == NO_FREQUENCY ? 'F' : '?';
            }
            return sHeard;
        }
    };

    void FailBoth()
    {
        m_oClock.FailCounter();
        m_oClock.FailFrequency();
    }

    // What the log hears of one action while both fail.
    template<class TAction> std::string Heard(TAction fnAction)
    {
        FailBoth();
        CCounterLog oLog;
        fnAction();
        return oLog.Heard();
    }
};
} // namespace

TEST_F(CTOVTimerBaseTest, IsTheHighResolutionCounterWhereThatAnswers)
{
    EXPECT_TRUE(IsActive(m_oTimer));
    EXPECT_TRUE(HighResolution(m_oTimer));
    EXPECT_EQ(5 * TICKS_PER_SECOND, HardwareTime(m_oTimer));
    EXPECT_EQ(TICKS_PER_SECOND, HardwareFrequency(m_oTimer));
}

TEST_F(CTOVTimerBaseTest, IsTheMillisecondCounterWhereTheOtherFails)
{
    CLogRecorder oLog;
    m_oClock.FailCounter();
    CTOVTimer oTimer;
    m_oClock.FailCounter(false);

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_FALSE(IsActive(oTimer));
    EXPECT_EQ(5000, HardwareTime(oTimer));
    EXPECT_EQ(1000, HardwareFrequency(oTimer));
    oTimer.DefineChannel(0, "World");
    oTimer.Start(0);
    m_oClock.Advance(1999999999);
    EXPECT_EQ(1999ul, oTimer.GetTimeInMs(0));
    EXPECT_DOUBLE_EQ(1.999, oTimer.GetTime(0));
}

TEST_F(CTOVTimerBaseTest, IsChosenByOneReadAtTheConstruction)
{
    m_oClock.TakeCounterReads();
    const CTOVTimer oTimer;
    EXPECT_EQ(1, m_oClock.TakeCounterReads());

    m_oClock.FailFrequency(); // does not matter for the choice
    const CTOVTimer oWithoutFrequency;

    EXPECT_TRUE(IsActive(oWithoutFrequency));
}

TEST_F(CTOVTimerBaseTest, IsAskedForAnewByTheQuestionWhetherItIsThere)
{
    EXPECT_TRUE(IsAvailable(m_oTimer));
    UseMilliseconds();
    EXPECT_TRUE(IsAvailable(m_oTimer));
    EXPECT_FALSE(IsActive(m_oTimer));

    m_oClock.FailCounter();

    CLogRecorder oLog;
    EXPECT_FALSE(IsAvailable(m_oTimer));
    EXPECT_TRUE(oLog.Lines().empty());
}

TEST_F(CTOVTimerBaseTest, CountsTheHighResolutionBaseToTheTick)
{
    m_oClock.Set(1234567890123456789);
    EXPECT_EQ(1234567890123456789, HardwareTime(m_oTimer));
    StartChannel(0);

    m_oClock.Advance(1);
    EXPECT_DOUBLE_EQ(1e-9, m_oTimer.GetTime(0));
    m_oClock.Advance(1999899999);

    EXPECT_DOUBLE_EQ(1.9999, m_oTimer.GetTime(0));
    EXPECT_EQ(1999ul, m_oTimer.GetTimeInMs(0));
}

TEST_F(CTOVTimerBaseTest, IsDividedExactlyHoweverOftenItIsRead)
{
    std::mt19937_64 oRandom(1);
    StartChannel(0);
    for (int nRead = 0; nRead < 20000; ++nRead)
    {
        const long long llTicks = static_cast<long long>(oRandom() >> (11 + nRead % 53));
        m_oClock.Set(llTicks);

        const volatile double dSeconds = static_cast<double>(llTicks) / TICKS_PER_SECOND;
        ASSERT_EQ(dSeconds, m_oTimer.GetTimeDirect()) << llTicks;
        const volatile double dSinceStart = static_cast<double>(llTicks - 5 * TICKS_PER_SECOND) / TICKS_PER_SECOND;
        ASSERT_EQ(dSinceStart, m_oTimer.GetTime(0)) << llTicks;
    }
}

TEST_F(CTOVTimerBaseTest, WidensTheMillisecondsWithoutASign)
{
    UseMilliseconds();
    m_oClock.Set(0xFFFFFFFF * TICKS_PER_MS);

    EXPECT_EQ(0xFFFFFFFF, HardwareTime(m_oTimer));
    EXPECT_DOUBLE_EQ(4294967.295, m_oTimer.GetTimeDirect());
}

TEST_F(CTOVTimerBaseTest, BeginsTheMillisecondsAnewAfter32Bits)
{
    UseMilliseconds();
    m_oClock.Set(0xFFFFFFFF * TICKS_PER_MS);
    StartChannel(0);

    m_oClock.AdvanceMs(1001);

    EXPECT_EQ(1000, HardwareTime(m_oTimer));
    EXPECT_DOUBLE_EQ((1000 - 4294967295.0) / 1000, m_oTimer.GetTime(0));
}

TEST_F(CTOVTimerBaseTest, WrapsTheMillisecondsOfTheBaseItself)
{
    m_oClock.Set((0x100000000 + 250) * TICKS_PER_MS);

    EXPECT_EQ(250ul, m_oTimer.GetTimeInMsDirect());
    EXPECT_DOUBLE_EQ(4294967.546, m_oTimer.GetTimeDirect());
}

TEST_F(CTOVTimerBaseTest, IsCopiedWithTheTimer)
{
    CTOVTimer oOther;
    UseMilliseconds();

    const CTOVTimer oCopy(m_oTimer);
    EXPECT_FALSE(IsActive(oCopy));
    oOther = m_oTimer;
    EXPECT_FALSE(IsActive(oOther));
}

TEST_F(CTOVTimerBaseTest, IsReadOnceForATimeAndOnceForItsFrequency)
{
    StartChannel(0);
    m_oClock.TakeCounterReads();
    m_oClock.TakeFrequencyReads();

    m_oTimer.GetTime(0);
    EXPECT_EQ(1, m_oClock.TakeCounterReads());
    EXPECT_EQ(1, m_oClock.TakeFrequencyReads());
    m_oTimer.GetTimeDirect();
    EXPECT_EQ(1, m_oClock.TakeCounterReads());
    m_oTimer.SetTime(0, 1.0);
    EXPECT_EQ(1, m_oClock.TakeCounterReads());
    m_oTimer.Update(0);
    EXPECT_EQ(1, m_oClock.TakeCounterReads());
}

TEST_F(CTOVTimerBaseTest, IsZeroAndLoggedWhereTheCounterFails)
{
    m_oClock.FailCounter();
    CCounterLog oLog;

    EXPECT_EQ(0, HardwareTime(m_oTimer));
    EXPECT_EQ("T", oLog.Heard());
    EXPECT_EQ(0.0, m_oTimer.GetTimeDirect());
    EXPECT_EQ("TT", oLog.Heard());
    EXPECT_EQ(0ul, m_oTimer.GetTimeInMsDirect());
    EXPECT_EQ("TTT", oLog.Heard());
}

TEST_F(CTOVTimerBaseTest, IsZeroAndLoggedWhereTheFrequencyFails)
{
    m_oClock.FailFrequency();
    CCounterLog oLog;

    EXPECT_EQ(0, HardwareFrequency(m_oTimer));
    EXPECT_EQ("F", oLog.Heard());
    EXPECT_EQ(INFINITY, m_oTimer.GetTimeDirect());
    EXPECT_EQ("FF", oLog.Heard());
}

TEST_F(CTOVTimerBaseTest, LogsEveryFailingReadInItsOrder)
{
    StartChannel(0);

    EXPECT_EQ("TF", Heard([&] { m_oTimer.GetTime(0); }));
    EXPECT_EQ("TF", Heard([&] { m_oTimer.GetTimeInMs(0); }));
    EXPECT_EQ("TF", Heard([&] { m_oTimer.GetTimeDirect(); }));
    EXPECT_EQ("TF", Heard([&] { m_oTimer.GetTimeInMsDirect(); }));
    EXPECT_EQ("T", Heard([&] { m_oTimer.Start(0); }));
    EXPECT_EQ("T", Heard([&] { m_oTimer.Reset(0); }));
    EXPECT_EQ("FT", Heard([&] { m_oTimer.SetTime(0, 5.0); }));
    EXPECT_EQ("TF", Heard([&] { m_oTimer.Update(0); }));
    EXPECT_EQ("TF", Heard([&] { m_oTimer.EnableFrameTime(0); }));
    EXPECT_EQ("T", Heard([&] { m_oTimer.Pause(0); }));
    EXPECT_EQ("TF", Heard([&] { m_oTimer.GetTime(0); }));
    EXPECT_EQ("T", Heard([&] { m_oTimer.Continue(0); }));
    EXPECT_EQ("", Heard([&] { m_oTimer.GetFrameTime(0); }));
    EXPECT_EQ("", Heard([&] { m_oTimer.Stop(0); }));
    EXPECT_EQ("", Heard([&] { m_oTimer.GetTime(0); }));
    EXPECT_EQ("", Heard([&] { m_oTimer.UpdateAll(); }));
}

TEST_F(CTOVTimerBaseTest, FallsBackToNothingWhenTheCounterFailsLater)
{
    StartChannel(0);
    m_oClock.AdvanceMs(500);
    m_oClock.FailCounter();

    EXPECT_EQ(-5.0, m_oTimer.GetTime(0));
    EXPECT_EQ(0xFFFFFFFFul - 4999, m_oTimer.GetTimeInMs(0));
    EXPECT_TRUE(IsActive(m_oTimer));
    m_oTimer.Start(0);
    EXPECT_EQ(0.0, m_oTimer.GetTime(0));

    m_oClock.FailCounter(false);

    EXPECT_TRUE(IsActive(m_oTimer));
    EXPECT_EQ(5.5, m_oTimer.GetTime(0));
}

TEST_F(CTOVTimerBaseTest, KeepsAPausedTimeWhenTheCounterFails)
{
    StartChannel(0);
    m_oClock.AdvanceMs(500);
    m_oTimer.Pause(0);

    m_oClock.FailCounter();

    EXPECT_EQ(0.5, m_oTimer.GetTime(0));
}

TEST_F(CTOVTimerBaseTest, ResetsAndPausesAtZeroWhenTheCounterFails)
{
    StartChannel(0);
    StartChannel(1);
    m_oClock.FailCounter();

    m_oTimer.Reset(0);
    m_oTimer.Pause(1);

    EXPECT_EQ(0.0, m_oTimer.GetTime(0));
    EXPECT_EQ(-5.0, m_oTimer.GetTime(1));
    m_oClock.FailCounter(false);
    EXPECT_EQ(5.0, m_oTimer.GetTime(0));
    m_oTimer.Continue(1); // loses 5 s more: from 0 to now
    EXPECT_EQ(-5.0, m_oTimer.GetTime(1));
}

TEST_F(CTOVTimerBaseTest, SetsTheTimeFromZeroWhenTheCounterFails)
{
    StartChannel(0);
    m_oClock.FailCounter();

    m_oTimer.SetTime(0, 2.5);

    EXPECT_EQ(2.5, m_oTimer.GetTime(0));
    m_oClock.FailCounter(false);
    EXPECT_EQ(7.5, m_oTimer.GetTime(0));
}

TEST_F(CTOVTimerBaseTest, DividesByZeroWhenTheFrequencyFails)
{
    StartChannel(0);
    m_oClock.FailFrequency();

    EXPECT_TRUE(std::isnan(m_oTimer.GetTime(0)));
    m_oClock.AdvanceMs(1);
    EXPECT_EQ(INFINITY, m_oTimer.GetTime(0));
    m_oClock.AdvanceMs(-2);
    EXPECT_EQ(-INFINITY, m_oTimer.GetTime(0));
    EXPECT_EQ(INFINITY, m_oTimer.GetTimeDirect());
    m_oClock.FailCounter();
    EXPECT_TRUE(std::isnan(m_oTimer.GetTimeDirect()));
}

TEST_F(CTOVTimerBaseTest, LosesTheGivenTimeWhenTheFrequencyFails)
{
    StartChannel(0);
    m_oClock.AdvanceMs(500);
    m_oClock.FailFrequency();

    m_oTimer.SetTime(0, 5.0);

    m_oClock.FailFrequency(false);
    EXPECT_EQ(0.0, m_oTimer.GetTime(0));
}

TEST_F(CTOVTimerBaseTest, HasNothingToFailInMilliseconds)
{
    StartChannel(0);
    UseMilliseconds();
    m_oClock.FailFrequency();
    CLogRecorder oLog;

    m_oTimer.Start(0);
    m_oClock.AdvanceMs(1250);

    EXPECT_EQ(1.25, m_oTimer.GetTime(0));
    EXPECT_EQ(6.25, m_oTimer.GetTimeDirect());
    EXPECT_TRUE(oLog.Lines().empty());
}

TEST_F(CTOVTimerBaseTest, HasNoRateWithoutATime)
{
    StartChannel(0);
    m_oTimer.EnableFrameTime(0);
    m_oClock.FailFrequency();

    m_oTimer.Update(0); // not a number

    EXPECT_TRUE(std::isnan(m_oTimer.GetFrameTime(0)));
    EXPECT_EQ(0.0, m_oTimer.GetFPS(0));
    m_oClock.FailFrequency(false);
    m_oClock.AdvanceMs(250);
    m_oTimer.Update(0);
    EXPECT_EQ(0.0, m_oTimer.GetFPS(0)); // measured from the one before
    m_oClock.AdvanceMs(250);
    m_oTimer.Update(0);
    EXPECT_EQ(4.0, m_oTimer.GetFPS(0));
}

TEST_F(CTOVTimerBaseTest, HasARateOfZeroAfterAnEndlessTime)
{
    StartChannel(0);
    m_oClock.AdvanceMs(250);
    m_oClock.FailFrequency();

    m_oTimer.EnableFrameTime(0);
    m_oTimer.Update(0);

    EXPECT_EQ(INFINITY, m_oTimer.GetFrameTime(0));
    EXPECT_EQ(0.0, m_oTimer.GetFPS(0)); // 1 divided by an infinity
}

TEST_F(CTOVTimerBaseTest, HasNoMillisecondsWhereTheTimeIsEndless)
{
    StartChannel(0);
    m_oClock.FailFrequency();
    for (const long long llAdvance : {0, 1, -2})
    {
        m_oClock.AdvanceMs(llAdvance);
        EXPECT_FALSE(std::isfinite(m_oTimer.GetTime(0)));
        EXPECT_EQ(0ul, m_oTimer.GetTimeInMs(0));
    }
    EXPECT_EQ(0ul, m_oTimer.GetTimeInMsDirect());
}

TEST_F(CTOVTimerBaseTest, TakesATimeBeyondItsTicksForTheLowestOne)
{
    StartChannel(0);
    const double aTimes[] = {9.3e9, -9.3e9, 1e300, -1e300, INFINITY, -INFINITY, NAN};
    for (const double dTime : aTimes)
    {
        m_oTimer.SetTime(0, dTime);
        EXPECT_DOUBLE_EQ(-9223372036.854775808, m_oTimer.GetTime(0)) << dTime;
    }
}

TEST_F(CTOVTimerBaseTest, IsChosenByAnOperationThatNothingCalls)
{
    for (const bool bHighResolution : {false, true})
    {
        (m_oTimer.*ReachOperation(sUseHighResolution()))(bHighResolution);
        EXPECT_EQ(bHighResolution, IsActive(m_oTimer));
    }
}
