#include "Support/TOVBlockableThread.h"
#include "TOVProcess/TOVLockInstruments.h"

#include <type_traits>

namespace Event = TOVPlatform::TOVSynchronization::Event;

namespace
{
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
