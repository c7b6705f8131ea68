// Time events, as they really come.
#include "Support/TOVPrivateMember.h"
#include "Timer/TOVTimeEventInstruments.h"

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <set>

namespace
{
TOV_PRIVATE_MEMBER(HighResolution, CTOVTimer, bool, m_bHighResolutionTimer)

// For an event that is handled by more than one thread: every millisecond, uninstalled by the test itself.
int Install(const CTimeEvent& oEvent, int nKind)
{
    return CTOVTimer::InstallTimeEvent(1, 0, &CTimeEvent::OnTimeEvent, oEvent.User(), nKind);
}

// Exactly: the timer's own milliseconds cut what the division by 1000 left a little too low.
long long Milliseconds(const CTOVTimer& oClock)
{
    return std::llround(oClock.GetTimeDirect() * 1000);
}

template<class TCallback> int InstallNothing(int nKind)
{
    return CTOVTimer::InstallTimeEvent(1, 0, static_cast<TCallback>(nullptr), 0, nKind);
}

// For a child process, which ends while its event comes.
TOV_CHILD(EndsWithAnEventInstalled)
{
    CTimeEvent* const pEvent = new CTimeEvent;
    pEvent->Install(1, PERIODIC);
    if (pEvent->Reaches(3))
        std::exit(7);
}

// The event's thread stops in one call until the test lets it go on.
struct sStop
{
    CGate oEntered;
    CGate oMayGoOn;

    void Pass()
    {
        oEntered.Open();
        oMayGoOn.Wait();
    }
};
} // namespace

TEST(CTOVTimerTimeEventTest, ComesOnceWithWhatItWasGiven)
{
    CTimeEvent oEvent;

    const int nEvent = oEvent.Install(5, ONE_SHOT);

    ASSERT_LT(0, nEvent);
    ASSERT_TRUE(oEvent.Reaches(1));
    LetEventsPass();
    ASSERT_EQ(1, oEvent.Count());
    const sTimeEventCall oCall = oEvent.Calls()[0];
    EXPECT_EQ(nEvent, oCall.nEvent);
    EXPECT_EQ(oEvent.User(), oCall.ulUser);
}

TEST(CTOVTimerTimeEventTest, ComesOnAThreadOfItsOwn)
{
    CTimeEvent oEvent;
    oEvent.Install(1, ONE_SHOT);

    ASSERT_TRUE(oEvent.Reaches(1));

    EXPECT_NE(std::this_thread::get_id(), oEvent.Calls()[0].oThread);
}

TEST(CTOVTimerTimeEventTest, ComesOnceForEveryKindButThePeriodic)
{
    for (const int nKind : {0, 2, 3, -1, 0x101, 2147483647})
    {
        SCOPED_TRACE(nKind);
        CTimeEvent oEvent;
        EXPECT_LT(0, oEvent.Install(1, nKind));
        EXPECT_TRUE(oEvent.Reaches(1));
        LetEventsPass();
        EXPECT_EQ(1, oEvent.Count());
    }
}

TEST(CTOVTimerTimeEventTest, ComesAgainAndAgainIfPeriodic)
{
    CTimeEvent oEvent;

    const int nEvent = oEvent.Install(2, PERIODIC);

    EXPECT_TRUE(oEvent.Reaches(50));
    for (const sTimeEventCall& oCall : oEvent.Calls())
    {
        EXPECT_EQ(nEvent, oCall.nEvent);
        EXPECT_EQ(oEvent.User(), oCall.ulUser);
        EXPECT_NE(std::this_thread::get_id(), oCall.oThread);
    }
}

TEST(CTOVTimerTimeEventTest, ComesNoMoreOnceUninstalled)
{
    sStop oStop;
    CTimeEvent oEvent;
    oEvent.m_fnAction = [&](int nCall, const sTimeEventCall&) {
        if (nCall == 3)
            oStop.Pass();
    };
    oEvent.Install(1, PERIODIC);
    ASSERT_TRUE(oStop.oEntered.Wait());

    EXPECT_NO_CHECK(oEvent.Uninstall()); // does not wait for the call that is under way
    oStop.oMayGoOn.Open();

    LetEventsPass();
    EXPECT_EQ(3, oEvent.Count());
}

TEST(CTOVTimerTimeEventTest, ComesNotAtAllIfUninstalledInTime)
{
    for (const int nKind : {ONE_SHOT, PERIODIC})
    {
        CTimeEvent oEvent;
        oEvent.Install(60000, nKind);

        EXPECT_NO_CHECK(oEvent.Uninstall());

        LetEventsPass();
        EXPECT_EQ(0, oEvent.Count());
    }
}

TEST(CTOVTimerTimeEventTest, MayUninstallItself)
{
    CGate oDone;
    CTimeEvent oEvent;
    oEvent.m_fnAction = [&](int nCall, const sTimeEventCall& oCall) {
        if (nCall == 3)
        {
            EXPECT_NO_CHECK(CTOVTimer::UninstallTimeEvent(oCall.nEvent, 1));
            oDone.Open();
        }
    };
    const int nEvent = Install(oEvent, PERIODIC);

    EXPECT_LT(0, nEvent);
    EXPECT_TRUE(oDone.Wait());

    LetEventsPass();
    EXPECT_EQ(3, oEvent.Count());
    EXPECT_CHECK(KILL_CHECK, CTOVTimer::UninstallTimeEvent(nEvent, 1));
}

TEST(CTOVTimerTimeEventTest, MayUninstallAnother)
{
    CGate oDone;
    CTimeEvent oOther;
    oOther.Install(60000, PERIODIC);
    CTimeEvent oEvent;
    oEvent.m_fnAction = [&](int, const sTimeEventCall&) {
        EXPECT_NO_CHECK(oOther.Uninstall());
        oDone.Open();
    };

    oEvent.Install(1, ONE_SHOT);

    EXPECT_TRUE(oDone.Wait());
    EXPECT_EQ(0, oOther.Count());
}

TEST(CTOVTimerTimeEventTest, MayInstallTheNextOne)
{
    CTimeEvent oEvent;
    oEvent.m_fnAction = [&](int nCall, const sTimeEventCall&) {
        if (nCall < 5)
        {
            EXPECT_LT(0, Install(oEvent, ONE_SHOT));
        }
    };

    Install(oEvent, ONE_SHOT);

    EXPECT_TRUE(oEvent.Reaches(5));
    LetEventsPass();
    EXPECT_EQ(5, oEvent.Count());
}

TEST(CTOVTimerTimeEventTest, GoesOnAfterACallThatTookLongerThanItsPeriod)
{
    sStop oStop;
    CTimeEvent oEvent;
    oEvent.m_fnAction = [&](int nCall, const sTimeEventCall&) {
        if (nCall == 2)
            oStop.Pass();
    };
    oEvent.Install(1, PERIODIC);
    ASSERT_TRUE(oStop.oEntered.Wait());
    EXPECT_TRUE(oEvent.Stays(2)); // for many periods

    oStop.oMayGoOn.Open();

    EXPECT_TRUE(oEvent.Reaches(20));
}

TEST(CTOVTimerTimeEventTest, HasOthersBesideIt)
{
    std::vector<CTimeEvent> aEvents(8);
    std::set<int> aIdentifiers;
    for (std::size_t nEvent = 0; nEvent < aEvents.size(); ++nEvent)
        aIdentifiers.insert(aEvents[nEvent].Install(static_cast<int>(nEvent) + 1, PERIODIC));
    EXPECT_EQ(8u, aIdentifiers.size());
    for (CTimeEvent& oEvent : aEvents)
        EXPECT_TRUE(oEvent.Reaches(5));

    aEvents[0].Uninstall();

    for (CTimeEvent& oEvent : aEvents)
        for (const sTimeEventCall& oCall : oEvent.Calls())
            EXPECT_EQ(oEvent.User(), oCall.ulUser);
    const int nCount = aEvents[7].Count();
    EXPECT_TRUE(aEvents[7].Reaches(nCount + 5));
}

TEST(CTOVTimerTimeEventTest, IsOvertakenByOneThatComesEarlier)
{
    CTimeEvent oLate;
    CTimeEvent oEarly;
    oLate.Install(60000, PERIODIC);

    oEarly.Install(1, ONE_SHOT);

    EXPECT_TRUE(oEarly.Reaches(1));
    EXPECT_EQ(0, oLate.Count());
}

TEST(CTOVTimerTimeEventTest, ComesNeverTooEarly)
{
    const long long llPeriod = 3;
    CTOVTimer oClock;
    HighResolution(oClock) = false; // the events' own milliseconds
    long long aTimes[20] = {};
    CTimeEvent oEvent;
    oEvent.m_fnAction = [&](int nCall, const sTimeEventCall&) {
        if (nCall <= 20)
            aTimes[nCall - 1] = Milliseconds(oClock);
    };
    const long long llStart = Milliseconds(oClock);

    oEvent.Install(static_cast<int>(llPeriod), PERIODIC);
    ASSERT_TRUE(oEvent.Reaches(21));
    oEvent.Uninstall();

    for (long long llCall = 1; llCall <= 20; ++llCall)
        EXPECT_LE(llCall * llPeriod, aTimes[llCall - 1] - llStart) << llCall;
}

TEST(CTOVTimerTimeEventTest, IsRefusedSilentlyWithoutAPeriod)
{
    for (const int nKind : {ONE_SHOT, PERIODIC})
    {
        CLogRecorder oLog;
        CTimeEvent oEvent;

        EXPECT_EQ(-1, oEvent.Install(0, nKind));

        EXPECT_TRUE(oLog.Checks().empty());
        EXPECT_TRUE(oLog.Lines().empty());
        LetEventsPass();
        EXPECT_EQ(0, oEvent.Count());
    }
}

TEST(CTOVTimerTimeEventTest, IsNotUninstalledIfUnknown)
{
    for (const int nEvent : {0, -1, 1234567, 2147483647})
    {
        SCOPED_TRACE(nEvent);
        EXPECT_CHECK_AT("TOVTimer", KILL_CHECK, CTOVTimer::UninstallTimeEvent(nEvent, 10));
    }
}

TEST(CTOVTimerTimeEventTest, IsUnknownOnceUninstalled)
{
    CTimeEvent oEvent;
    const int nEvent = oEvent.Install(60000, PERIODIC);
    oEvent.Uninstall();

    EXPECT_CHECK_AT("TOVTimer", KILL_CHECK, CTOVTimer::UninstallTimeEvent(nEvent, 60000));
}

TEST(CTOVTimerTimeEventTest, IsUnknownOnceItHasCome)
{
    CTimeEvent oEvent;
    const int nEvent = oEvent.Install(1, ONE_SHOT);
    ASSERT_TRUE(oEvent.Reaches(1));
    LetEventsPass();

    EXPECT_CHECK_AT("TOVTimer", KILL_CHECK, CTOVTimer::UninstallTimeEvent(nEvent, 1));
}

TEST(CTOVTimerTimeEventTest, IsGoneAlthoughItsPeriodIsRefusedThen)
{
    sStop oStop;
    CTimeEvent oEvent;
    oEvent.m_fnAction = [&](int nCall, const sTimeEventCall&) {
        if (nCall == 2)
            oStop.Pass();
    };
    const int nEvent = Install(oEvent, PERIODIC);
    ASSERT_TRUE(oStop.oEntered.Wait());

    EXPECT_CHECK_AT("TOVTimer", KILL_CHECK, CTOVTimer::UninstallTimeEvent(nEvent, 0));

    oStop.oMayGoOn.Open();
    LetEventsPass();
    EXPECT_EQ(2, oEvent.Count());
}

TEST(CTOVTimerTimeEventTest, NeedsNoTimer)
{
    // Both operations are static, and no channel takes part.
    int (*fnInstall)(unsigned int, unsigned int, CTOVTimer::tTimeEvent, unsigned long, int) =
        &CTOVTimer::InstallTimeEvent;
    void (*fnUninstall)(int, int) = &CTOVTimer::UninstallTimeEvent;
    CTimeEvent oEvent;

    const int nEvent = fnInstall(2, 5, &CTimeEvent::OnTimeEvent, oEvent.User(), PERIODIC);

    EXPECT_TRUE(oEvent.Reaches(3));
    EXPECT_NO_CHECK(fnUninstall(nEvent, 2));
}

TEST(CTOVTimerTimeEventTest, MayUseATimer)
{
    CLogRecorder oLog;
    CGate oDone;
    CTimeEvent oEvent;
    oEvent.m_fnAction = [&](int, const sTimeEventCall&) {
        CTOVTimer oTimer;
        oTimer.DefineChannel(2, "Event");
        oTimer.Start(2);
        oTimer.Continue(2);
        EXPECT_LE(0.0, oTimer.GetTime(2));
        oDone.Open();
    };

    oEvent.Install(1, ONE_SHOT);

    EXPECT_TRUE(oDone.Wait());
    EXPECT_EQ(1, oLog.CountLines("Time channel 2 (Event) is not paused!"));
}

TEST(CTOVTimerTimeEventTest, HasItsThreadForItselfDuringACall)
{
    std::atomic<int> nInside(0);
    std::vector<CTimeEvent> aEvents(3);
    for (CTimeEvent& oEvent : aEvents)
    {
        oEvent.m_fnAction = [&](int, const sTimeEventCall&) {
            EXPECT_EQ(1, ++nInside);
            std::this_thread::yield();
            --nInside;
        };
        oEvent.Install(1, PERIODIC);
    }

    for (CTimeEvent& oEvent : aEvents)
        EXPECT_TRUE(oEvent.Reaches(20));
}

TEST(CTOVTimerTimeEventTest, CallsNobodyWithoutACallback)
{
    const int nOneShot = InstallNothing<CTOVTimer::tTimeEvent>(ONE_SHOT);
    const int nPeriodic = InstallNothing<CTOVTimer::tTimeEvent>(PERIODIC);
    EXPECT_LT(0, nOneShot);
    EXPECT_LT(0, nPeriodic);

    LetEventsPass();

    EXPECT_NO_CHECK(CTOVTimer::UninstallTimeEvent(nPeriodic, 1));
}

TEST(CTOVTimerTimeEventTest, CallsNobodyWithoutACallbackOfTheSystemsForm)
{
    const int nOneShot = InstallNothing<CTOVTimer::tSystemTimeEvent>(ONE_SHOT);
    const int nPeriodic = InstallNothing<CTOVTimer::tSystemTimeEvent>(PERIODIC);
    EXPECT_LT(0, nOneShot);
    EXPECT_LT(0, nPeriodic);

    LetEventsPass();

    EXPECT_NO_CHECK(CTOVTimer::UninstallTimeEvent(nPeriodic, 1));
}

TEST(CTOVTimerTimeEventTest, IsOneOfSixteen)
{
    std::vector<CTimeEvent> aEvents(16);
    for (CTimeEvent& oEvent : aEvents)
        ASSERT_LT(0, oEvent.Install(60000, PERIODIC));
    CTimeEvent oOneMore;

    EXPECT_CHECK_AT("TOVTimer", SET_CHECK, oOneMore.Install(1, PERIODIC));

    aEvents[5].Uninstall();
    EXPECT_LT(0, oOneMore.Install(1, PERIODIC));
    EXPECT_TRUE(oOneMore.Reaches(3));
}

TEST(CTOVTimerTimeEventTest, GivesItsPlaceBackWhenItHasCome)
{
    for (int nRound = 0; nRound < 3; ++nRound)
    {
        std::vector<CTimeEvent> aEvents(15);
        for (CTimeEvent& oEvent : aEvents)
            ASSERT_LT(0, oEvent.Install(1, ONE_SHOT));
        for (CTimeEvent& oEvent : aEvents)
            EXPECT_TRUE(oEvent.Reaches(1));
        LetEventsPass();
    }
}

TEST(CTOVTimerTimeEventTest, MayWaitAsLongAs65535Milliseconds)
{
    CTimeEvent oEvent;

    EXPECT_LT(0, oEvent.Install(65535, ONE_SHOT));

    EXPECT_NO_CHECK(oEvent.Uninstall());
}

TEST(CTOVTimerTimeEventTest, ComesWhileOtherThreadsInstallAndUninstall)
{
    CThreadGroup oThreads;
    oThreads.Start(4, [](int) {
        for (int nRound = 0; nRound < 20; ++nRound)
        {
            CTimeEvent oEvent;
            oEvent.Install(1, PERIODIC);
            EXPECT_TRUE(oEvent.Reaches(1));
            oEvent.Uninstall();
        }
    });
}

TEST(CTOVTimerTimeEventTest, KeepsNoProcessFromItsEnd)
{
    EXPECT_EQ(7, RunChild("EndsWithAnEventInstalled").nExitCode);
}
