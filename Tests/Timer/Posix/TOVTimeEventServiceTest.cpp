// The timer service that this system has from the library itself.
#include "Timer/Posix/TOVSharedClock.h"
#include "Timer/Posix/TOVThreadRefusal.h"
#include "Timer/TOVTimeEventInstruments.h"

#include <csignal>
#include <cstdio>

namespace
{
int InstallForNobody(int nPeriod)
{
    CTimeEvent oNobody;
    return CTOVTimer::InstallTimeEvent(static_cast<unsigned int>(nPeriod), 0, &CTimeEvent::OnTimeEvent, oNobody.User(),
                                       PERIODIC);
}

// For child processes, in which nobody has needed the service's thread yet.
TOV_CHILD(InstallsWithoutAThread)
{
    static_cast<void>(aArguments);
    CTimeEvent oEvent;
    {
        const CThreadRefusal oRefusal;
        EXPECT_CHECK_AT("TOVTimer", SET_CHECK, oEvent.Install(1, PERIODIC));
    }
    EXPECT_LT(0, oEvent.Install(1, PERIODIC));
    EXPECT_TRUE(oEvent.Reaches(3));
    std::printf("%s\n", testing::Test::HasFailure() ? "failed" : "installed then");
}

TOV_CHILD(InstallsTheFirstEvent)
{
    static_cast<void>(aArguments);
    sigset_t oBlocked;
    ::sigemptyset(&oBlocked);
    ::pthread_sigmask(SIG_SETMASK, &oBlocked, nullptr);
    CTimeEvent oEvent;
    oEvent.Install(1, PERIODIC);

    ::pthread_sigmask(SIG_SETMASK, nullptr, &oBlocked);
    std::printf("%s\n", ::sigisemptyset(&oBlocked) ? "takes all signals" : "takes some signals");
}
} // namespace

TEST(CTOVTimerTimeEventServiceTest, CallsAtTheMomentAndNotBefore)
{
    CSharedClock oClock;
    CTimeEvent oOneShot;
    CTimeEvent oPeriodic;
    oOneShot.Install(15, ONE_SHOT);
    oPeriodic.Install(10, PERIODIC);
    EXPECT_TRUE(oPeriodic.Stays(0));

    oClock.SetMs(9);
    EXPECT_TRUE(oPeriodic.Stays(0));
    oClock.SetMs(10);
    EXPECT_TRUE(oPeriodic.Reaches(1));
    oClock.SetMs(14);
    EXPECT_TRUE(oOneShot.Stays(0));
    oClock.SetMs(15);
    EXPECT_TRUE(oOneShot.Reaches(1));

    EXPECT_EQ(1, oPeriodic.Count());
}

TEST(CTOVTimerTimeEventServiceTest, KeepsThePeriodHoweverLateACallIs)
{
    CSharedClock oClock;
    CTimeEvent oEvent;
    oEvent.Install(10, PERIODIC);
    long long llMoment = 10;
    for (int nCall = 1; nCall <= 20; ++nCall, llMoment += 10)
    {
        oClock.SetMs(llMoment + nCall % 10); // up to 9 ms late
        ASSERT_TRUE(oEvent.Reaches(nCall)) << nCall;
        EXPECT_EQ(nCall, oEvent.Count());
    }
}

TEST(CTOVTimerTimeEventServiceTest, KeepsThePeriodAfterMomentsThatWereMissed)
{
    CSharedClock oClock;
    CTimeEvent oEvent;
    oEvent.Install(10, PERIODIC);
    oClock.SetMs(35);
    ASSERT_TRUE(oEvent.Reaches(1));
    int nCount = 0; // one for all that were missed, or one for each
    do
        nCount = oEvent.Count();
    while (!oEvent.Stays(nCount));
    EXPECT_GE(3, nCount);

    oClock.SetMs(39);
    EXPECT_TRUE(oEvent.Stays(nCount));
    oClock.SetMs(40);
    EXPECT_TRUE(oEvent.Reaches(nCount + 1));
    oClock.SetMs(49);
    EXPECT_TRUE(oEvent.Stays(nCount + 1));
    oClock.SetMs(50);
    EXPECT_TRUE(oEvent.Reaches(nCount + 2));
}

TEST(CTOVTimerTimeEventServiceTest, RefusesAPeriodBeyondItsRange)
{
    for (const int nPeriod : {65536, 2147483647, -1})
    {
        CTimeEvent oEvent;
        EXPECT_NO_CHECK(EXPECT_EQ(-1, oEvent.Install(nPeriod, PERIODIC)));
    }
}

TEST(CTOVTimerTimeEventServiceTest, RefusesToEndAPeriodThatWasNotBegun)
{
    const int nEvent = InstallForNobody(50001);

    EXPECT_CHECK_AT("TOVTimer", KILL_CHECK, CTOVTimer::UninstallTimeEvent(nEvent, 50002));

    // The event is gone, and its period is the one that is left.
    EXPECT_CHECK_AT("TOVTimer", KILL_CHECK, CTOVTimer::UninstallTimeEvent(nEvent, 50001));
    EXPECT_NO_CHECK(CTOVTimer::UninstallTimeEvent(InstallForNobody(50003), 50001));
    EXPECT_CHECK_AT("TOVTimer", KILL_CHECK, CTOVTimer::UninstallTimeEvent(InstallForNobody(50003), 50001));
}

TEST(CTOVTimerTimeEventServiceTest, LeavesThePeriodRaisedWhenTheEventIsUnknown)
{
    const int nEvent = InstallForNobody(50011);

    EXPECT_CHECK_AT("TOVTimer", KILL_CHECK, CTOVTimer::UninstallTimeEvent(0, 50011));

    EXPECT_NO_CHECK(CTOVTimer::UninstallTimeEvent(nEvent, 50011));
}

TEST(CTOVTimerTimeEventServiceTest, LeavesThePeriodRaisedWhenThereIsNoFurtherEvent)
{
    std::vector<CTimeEvent> aEvents(15);
    for (CTimeEvent& oEvent : aEvents)
        ASSERT_LT(0, oEvent.Install(50021, PERIODIC));
    const int nLast = InstallForNobody(50022);

    EXPECT_CHECK_AT("TOVTimer", SET_CHECK, InstallForNobody(50023));

    EXPECT_NO_CHECK(CTOVTimer::UninstallTimeEvent(nLast, 50023));
}

TEST(CTOVTimerTimeEventServiceTest, HasNoEventWithoutItsThread)
{
    const sChildResult oResult = RunChild("InstallsWithoutAThread");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("installed then\n", oResult.sOutput);
}

TEST(CTOVTimerTimeEventServiceTest, LeavesItsUserTheSignals)
{
    EXPECT_EQ("takes all signals\n", RunChild("InstallsTheFirstEvent").sOutput);
}

TEST(CTOVTimerTimeEventServiceTest, IsUnknownWhenItsOnlyCallHasBegun)
{
    CGate oDone;
    CTimeEvent oEvent;
    oEvent.m_fnAction = [&](int, const sTimeEventCall& oCall) {
        EXPECT_CHECK_AT("TOVTimer", KILL_CHECK, CTOVTimer::UninstallTimeEvent(oCall.nEvent, 1));
        oDone.Open();
    };

    oEvent.Install(1, ONE_SHOT);

    EXPECT_TRUE(oDone.Wait());
}
