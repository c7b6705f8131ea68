#include "Support/TOVBlockableThread.h"
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVWaitInstruments.h"

#include <TOVProcess/TOVEvent.h>

#include <memory>
#include <type_traits>

namespace Event = TOVPlatform::TOVSynchronization::Event;

namespace
{
TOV_PRIVATE_MEMBER(HandleOf, CTOVEvent, unsigned long long, m_hEvent)

static_assert(std::has_virtual_destructor<CTOVEvent>::value);
static_assert(std::is_same<decltype(&CTOVEvent::Signal), void (CTOVEvent::*)()>::value);
static_assert(std::is_same<decltype(&CTOVEvent::Reset), void (CTOVEvent::*)()>::value);
static_assert(std::is_same<decltype(&CTOVEvent::Wait), void (CTOVEvent::*)()>::value);
static_assert(std::is_same<decltype(&CTOVEvent::TimedWait), bool (CTOVEvent::*)(long)>::value);
} // namespace

TEST(CTOVEventTest, HasAutomaticResetAndNoSignalByDefault)
{
    CTOVEvent oEvent;
    EXPECT_FALSE(oEvent.TimedWait(0));

    oEvent.Signal();

    EXPECT_TRUE(oEvent.TimedWait(0));
    EXPECT_FALSE(oEvent.TimedWait(0));
}

TEST(CTOVEventTest, StaysSignalledUntilResetIfSoConstructed)
{
    CTOVEvent oEvent(true);
    EXPECT_FALSE(oEvent.TimedWait(0));

    oEvent.Signal();
    EXPECT_TRUE(oEvent.TimedWait(0));
    oEvent.Wait();
    EXPECT_TRUE(oEvent.TimedWait(0));

    oEvent.Reset();
    EXPECT_FALSE(oEvent.TimedWait(0));
}

TEST(CTOVEventTest, ForgetsItsSignalWhenReset)
{
    CTOVEvent oEvent;
    oEvent.Signal();

    oEvent.Reset();

    EXPECT_FALSE(oEvent.TimedWait(0));
}

TEST(CTOVEventTest, BlocksUntilTheSignal)
{
    CTOVEvent oEvent;
    CBlockableThread oWaiter([&] { oEvent.Wait(); });
    EXPECT_TRUE(oWaiter.IsBlocked());

    oEvent.Signal();

    EXPECT_TRUE(oWaiter.Finishes());
    EXPECT_FALSE(oEvent.TimedWait(0));
}

TEST(CTOVEventTest, TimedWaitIsFalseOnlyWhenTheTimeRanOut)
{
    CTOVEvent oEvent;
    EXPECT_FALSE(oEvent.TimedWait(20));
    for (const long lTime : {DEADLINE, -1l})
    {
        bool bSignalled = false;
        CBlockableThread oWaiter([&] { bSignalled = oEvent.TimedWait(lTime); });
        EXPECT_TRUE(oWaiter.IsBlocked()) << lTime;

        oEvent.Signal();

        ASSERT_TRUE(oWaiter.Finishes()) << lTime;
        EXPECT_TRUE(bSignalled) << lTime;
    }
}

TEST(CTOVEventTest, GivesItsHandleForWaitsForMany)
{
    const CTOVEvent oNever;
    CTOVEvent oEvent;
    oEvent.Signal();

    EXPECT_EQ(HandleOf(oEvent), oEvent.GetHandle());
    EXPECT_EQ(oEvent.GetHandle(), static_cast<unsigned long long>(oEvent));
    EXPECT_NE(0ull, oEvent.GetHandle());
    EXPECT_EQ(1, WaitForAny({oNever, oEvent}));
}

TEST(CTOVEventTest, SharesItsEventWithACopy)
{
    auto pEvent = std::make_unique<CTOVEvent>(true);
    const CTOVEvent oCopy(*pEvent);
    EXPECT_EQ(pEvent->GetHandle(), oCopy.GetHandle());

    pEvent->Signal();

    EXPECT_TRUE(TakesNow(oCopy));
}

TEST(CTOVEventTest, IsClosedByTheFirstDestructorOfTwoCopies)
{
    CLogRecorder oLog;
    CTOVEvent oEvent;
    {
        CTOVEvent oCopy(oEvent);
    }

    EXPECT_EQ(-1, WaitForAny({oEvent}, 0));
    EXPECT_TRUE(oEvent.TimedWait(0)) << "a wait that failed";
    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST(CTOVEventTest, SharesTheHandleThatIsAssignedAndLeavesItsOldOneOpen)
{
    CTOVEvent oTarget;
    const COwnHandle hOld(oTarget.GetHandle());
    CTOVEvent oSource(true);

    EXPECT_EQ(&oTarget, &(oTarget = oSource));

    EXPECT_EQ(oSource.GetHandle(), oTarget.GetHandle());
    EXPECT_EQ(-2, WaitForAny({hOld}, 0)) << "still there";
}

TEST(CTOVEventTest, ClosesItsHandleAtTheEnd)
{
    unsigned long long hEvent = 0;
    {
        const CTOVEvent oEvent;
        hEvent = oEvent.GetHandle();
        EXPECT_EQ(-2, WaitForAny({hEvent}, 0));
    }

    EXPECT_EQ(-1, WaitForAny({hEvent}, 0));
}

TEST(CTOVEventTest, DoesNothingWithoutAHandle)
{
    CLogRecorder oLog;
    {
        CTOVEvent oEvent;
        const COwnHandle hEvent(oEvent.GetHandle());
        HandleOf(oEvent) = 0;

        oEvent.Signal();
        oEvent.Reset();
        oEvent.Wait();
        EXPECT_TRUE(oEvent.TimedWait(0));
        EXPECT_TRUE(oEvent.TimedWait(-1));
        EXPECT_EQ(0ull, oEvent.GetHandle());
        EXPECT_EQ(0ull, CTOVEvent(oEvent).GetHandle());
    }
    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVEventTest, LogsThatItCouldNotBeCreatedAndGoesOn)
{
    for (const bool bManualReset : {false, true})
    {
        CQuietRecorder oLog;
        unsigned long long hEvent = 1;
        {
            CExhaustedSystem oNoMore;
            const CTOVEvent oEvent(bManualReset);
            hEvent = oEvent.GetHandle();
        }
        EXPECT_EQ(0ull, hEvent);
        EXPECT_EQ(1, oLog.Count());
        EXPECT_STREQ("CTOVEvent::CTOVEvent(): TOVPlatform::TOVSynchronization::Event_Create() failed!", oLog.Text());
        EXPECT_STREQ("%s", oLog.Format());
        EXPECT_EQ(600, oLog.Severity());
        EXPECT_NE(std::string::npos, std::string(oLog.File()).find("TOVProcess/TOVEvent"));
    }
}
#endif
