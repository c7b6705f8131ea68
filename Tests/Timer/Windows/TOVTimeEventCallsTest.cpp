// What the timer asks of the system for its time events.
#include "Support/TOVExhaustedSystem.h"
#include "Support/Windows/TOVImportHook.h"
#include "Timer/TOVTimeEventInstruments.h"

#include <windows.h>

#include <mmsystem.h>

#include <string>

namespace
{
// What the system's stand-ins were asked, in its order, and what they answer.
std::string s_sCalls;
MMRESULT s_nBeginResult;
MMRESULT s_nEndResult;
MMRESULT s_nKillResult;
MMRESULT s_nSetResult;

// What the event was last set with.
LPTIMECALLBACK s_fnCallback;
DWORD_PTR s_ulUser;

template<class... TValues> void Note(const char* szCall, TValues... aValues)
{
    s_sCalls += szCall;
    s_sCalls += ' ';
    ((s_sCalls += std::to_string(aValues) + ' '), ...);
}

MMRESULT WINAPI Begin(UINT nPeriod)
{
    Note("begin", nPeriod);
    return s_nBeginResult;
}

MMRESULT WINAPI End(UINT nPeriod)
{
    Note("end", nPeriod);
    return s_nEndResult;
}

MMRESULT WINAPI Set(UINT nDelay, UINT nResolution, LPTIMECALLBACK fnCallback, DWORD_PTR ulUser, UINT nKind)
{
    Note("set", nDelay, nResolution, nKind);
    s_fnCallback = fnCallback;
    s_ulUser = ulUser;
    return s_nSetResult;
}

MMRESULT WINAPI Kill(UINT nEvent)
{
    Note("kill", nEvent);
    return s_nKillResult;
}

void CALLBACK OnSystemTimeEvent(UINT nEvent, UINT nMessage, unsigned long ulUser, unsigned long ulReserved1,
                                unsigned long ulReserved2)
{
    CTimeEvent::OnTimeEvent(nEvent, nMessage, ulUser, ulReserved1, ulReserved2);
}

class CTOVTimerTimeEventCallsTest : public testing::Test
{
protected:
    CTOVTimerTimeEventCallsTest()
    {
        s_sCalls.clear();
        s_sCalls.reserve(1000);
        s_nBeginResult = s_nEndResult = s_nKillResult = TIMERR_NOERROR;
        s_nSetResult = 77;
    }

private:
    CImportHook m_oBegin = {"timeBeginPeriod", &Begin};
    CImportHook m_oEnd = {"timeEndPeriod", &End};
    CImportHook m_oSet = {"timeSetEvent", &Set};
    CImportHook m_oKill = {"timeKillEvent", &Kill};
};
} // namespace

TEST_F(CTOVTimerTimeEventCallsTest, RaisesThePeriodAndSetsTheEvent)
{
    EXPECT_EQ(77, CTOVTimer::InstallTimeEvent(20, 3, &OnSystemTimeEvent, 0x89ABCDEF, PERIODIC));
    EXPECT_EQ("begin 20 set 20 3 1 ", s_sCalls);
    EXPECT_EQ(reinterpret_cast<void*>(&OnSystemTimeEvent), reinterpret_cast<void*>(s_fnCallback));
    EXPECT_EQ(0x89ABCDEFul, s_ulUser);
}

TEST_F(CTOVTimerTimeEventCallsTest, SetsThePlainFormWithTheSameValues)
{
    EXPECT_EQ(77, CTOVTimer::InstallTimeEvent(20, 3, &CTimeEvent::OnTimeEvent, 0x89ABCDEF, PERIODIC));
    EXPECT_EQ("begin 20 set 20 3 1 ", s_sCalls);
    CTOVTimer::UninstallTimeEvent(77, 20);
}

TEST_F(CTOVTimerTimeEventCallsTest, MapsTheKind)
{
    const struct
    {
        int nKind;
        const char* szCalls;
    } aCases[] = {
        {0, "begin 5 set 5 0 0 "},  {1, "begin 5 set 5 0 1 "},     {2, "begin 5 set 5 0 0 "},
        {-1, "begin 5 set 5 0 0 "}, {0x101, "begin 5 set 5 0 0 "},
    };
    for (const auto& oCase : aCases)
    {
        s_sCalls.clear();
        EXPECT_EQ(77, CTOVTimer::InstallTimeEvent(5, 0, &OnSystemTimeEvent, 0, oCase.nKind));
        EXPECT_EQ(oCase.szCalls, s_sCalls) << oCase.nKind;
    }
}

TEST_F(CTOVTimerTimeEventCallsTest, SetsNothingWhereThePeriodIsRefused)
{
    s_nBeginResult = TIMERR_NOCANDO;

    EXPECT_NO_CHECK(EXPECT_EQ(-1, CTOVTimer::InstallTimeEvent(20, 0, &OnSystemTimeEvent, 0, ONE_SHOT)));
    EXPECT_NO_CHECK(EXPECT_EQ(-1, CTOVTimer::InstallTimeEvent(20, 0, &CTimeEvent::OnTimeEvent, 0, ONE_SHOT)));

    EXPECT_EQ("begin 20 begin 20 ", s_sCalls);
}

TEST_F(CTOVTimerTimeEventCallsTest, LeavesThePeriodRaisedWhereTheEventIsRefused)
{
    s_nSetResult = 0;

    EXPECT_CHECK_AT("TOVTimer", SET_CHECK, CTOVTimer::InstallTimeEvent(20, 0, &OnSystemTimeEvent, 0, ONE_SHOT));
    EXPECT_CHECK_AT("TOVTimer", SET_CHECK, CTOVTimer::InstallTimeEvent(20, 0, &CTimeEvent::OnTimeEvent, 0, PERIODIC));

    EXPECT_EQ("begin 20 set 20 0 0 begin 20 set 20 0 1 ", s_sCalls);
}

TEST_F(CTOVTimerTimeEventCallsTest, KillsTheEventAndLowersThePeriod)
{
    EXPECT_NO_CHECK(CTOVTimer::UninstallTimeEvent(77, 20));

    EXPECT_EQ("kill 77 end 20 ", s_sCalls);
}

TEST_F(CTOVTimerTimeEventCallsTest, LeavesThePeriodRaisedWhereTheEventCannotBeKilled)
{
    s_nKillResult = MMSYSERR_INVALPARAM;

    EXPECT_CHECK_AT("TOVTimer", KILL_CHECK, CTOVTimer::UninstallTimeEvent(77, 20));

    EXPECT_EQ("kill 77 ", s_sCalls);
}

TEST_F(CTOVTimerTimeEventCallsTest, TellsOfAPeriodThatCannotBeLowered)
{
    s_nEndResult = TIMERR_NOCANDO;

    EXPECT_CHECK_AT("TOVTimer", KILL_CHECK, CTOVTimer::UninstallTimeEvent(77, 20));

    EXPECT_EQ("kill 77 end 20 ", s_sCalls);
}

TEST_F(CTOVTimerTimeEventCallsTest, HasNoPlainFormWithoutMemory)
{
    CQuietRecorder oRecorder;
    bool bThrew = false;
    {
        const CAllocationFailure oFailure;
        try
        {
            CTOVTimer::InstallTimeEvent(20, 0, &CTimeEvent::OnTimeEvent, 0, PERIODIC);
        }
        catch (const TOVDebug::CTOVAssertException&)
        {
            bThrew = true;
        }
    }

    EXPECT_TRUE(bThrew);
    EXPECT_STREQ(SET_CHECK, oRecorder.Text());
}

TEST(CTOVTimerSystemTimeEventTest, IsCalledInTheFormOfTheSystemsOwnTimer)
{
    for (const int nKind : {ONE_SHOT, PERIODIC})
    {
        CTimeEvent oEvent;
        const int nEvent = CTOVTimer::InstallTimeEvent(1, 0, &OnSystemTimeEvent, oEvent.User(), nKind);
        EXPECT_LT(0, nEvent);
        EXPECT_TRUE(oEvent.Reaches(nKind == PERIODIC ? 20 : 1));
        if (nKind == PERIODIC)
        {
            EXPECT_NO_CHECK(CTOVTimer::UninstallTimeEvent(nEvent, 1));
        }
        for (const sTimeEventCall& oCall : oEvent.Calls())
        {
            EXPECT_EQ(nEvent, oCall.nEvent);
            EXPECT_EQ(oEvent.User(), oCall.ulUser);
        }
    }
}
