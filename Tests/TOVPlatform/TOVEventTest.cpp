#include "Support/TOVAllocationCounter.h"
#include "Support/TOVBlockableThread.h"
#include "TOVPlatform/TOVSynchronizationInstruments.h"

#include <TOVPlatform/TOVThread.h>

#include <memory>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

namespace
{
unsigned long long CreateAuto()
{
    return Event::Create(false, false, nullptr);
}

unsigned long long CreateManual()
{
    return Event::Create(true, false, nullptr);
}
} // namespace

TEST(TOVPlatformEventTest, StartsAsAsked)
{
    for (const bool bManualReset : {false, true})
    {
        for (const bool bSignalled : {false, true})
        {
            const COwnHandle hEvent(Event::Create(bManualReset, bSignalled, nullptr));
            EXPECT_NE(0ull, hEvent);
            EXPECT_EQ(bSignalled, Event::TimedWait(hEvent, 0)) << bManualReset;
            EXPECT_EQ(bSignalled && bManualReset, Event::TimedWait(hEvent, 0)) << bManualReset;
        }
    }
}

TEST(TOVPlatformEventTest, IsIndependentOfOthers)
{
    const COwnHandle hFirst(CreateManual());
    const COwnHandle hSecond(CreateManual());

    Event::Signal(hFirst);

    EXPECT_FALSE(Event::TimedWait(hSecond, 0));
    EXPECT_TRUE(Event::TimedWait(hFirst, 0));
}

TEST(TOVPlatformEventTest, WithAutomaticResetIsClearedByTheFirstReleasedWait)
{
    const COwnHandle hEvent(CreateAuto());
    const std::function<void()> aWaits[] = {
        [&] { Event::Wait(hEvent); },
        [&] { EXPECT_TRUE(Event::TimedWait(hEvent, DEADLINE)); },
        [&] { EXPECT_EQ(0, WaitForAny({hEvent})); },
        [&] { EXPECT_EQ(0, WaitForAll({hEvent})); },
    };
    for (const std::function<void()>& fnWait : aWaits)
    {
        Event::Signal(hEvent);
        fnWait();
        EXPECT_FALSE(Event::TimedWait(hEvent, 0)) << "wait " << (&fnWait - aWaits);
    }
}

TEST(TOVPlatformEventTest, WithAutomaticResetRemembersOneSignalOnly)
{
    const COwnHandle hEvent(CreateAuto());

    Event::Signal(hEvent);
    Event::Signal(hEvent);
    Event::Signal(hEvent);

    EXPECT_TRUE(Event::TimedWait(hEvent, 0));
    EXPECT_FALSE(Event::TimedWait(hEvent, 0));
}

TEST(TOVPlatformEventTest, WithManualResetStaysSignalledUntilReset)
{
    const COwnHandle hEvent(CreateManual());

    Event::Signal(hEvent);
    Event::Wait(hEvent);
    EXPECT_TRUE(Event::TimedWait(hEvent, 0));
    EXPECT_EQ(0, WaitForAny({hEvent}));
    EXPECT_EQ(0, WaitForAll({hEvent}));

    Event::Reset(hEvent);
    EXPECT_FALSE(Event::TimedWait(hEvent, 0));
}

TEST(TOVPlatformEventTest, WithAutomaticResetForgetsItsSignalWhenReset)
{
    const COwnHandle hEvent(Event::Create(false, true, nullptr));

    Event::Reset(hEvent);

    EXPECT_FALSE(Event::TimedWait(hEvent, 0));
}

TEST(TOVPlatformEventTest, CanBeSignalledAgainAfterAReset)
{
    for (const bool bManualReset : {false, true})
    {
        const COwnHandle hEvent(Event::Create(bManualReset, false, nullptr));
        Event::Reset(hEvent);
        Event::Reset(hEvent);
        EXPECT_FALSE(Event::TimedWait(hEvent, 0)) << bManualReset;

        Event::Signal(hEvent);
        EXPECT_TRUE(Event::TimedWait(hEvent, 0)) << bManualReset;
    }
}

TEST(TOVPlatformEventTest, SignalIfClearSignalsAClearEventAndLeavesASignalledOne)
{
    for (const std::string& sName : {std::string(), UniqueName()})
    {
        const COwnHandle hEvent(Event::Create(false, false, sName.c_str()));
        for (const int nSignals : {1, 2})
        {
            for (int nSignal = 0; nSignal < nSignals; ++nSignal)
                Event::SignalIfClear(hEvent);
            EXPECT_EQ(1, Drain(hEvent)) << sName << nSignals;
        }
    }
    const COwnHandle hManual(CreateManual());
    Event::SignalIfClear(hManual);
    Event::SignalIfClear(hManual);
    EXPECT_TRUE(TakesNow(hManual) && TakesNow(hManual));
}

TEST(TOVPlatformEventTest, SignalIfClearReleasesOneWaiterAtATime)
{
    const int nWaiters = 3;
    const COwnHandle hEvent(CreateAuto());
    CTally oReleased;
    CThreadGroup oWaiters;
    oWaiters.Start(nWaiters, [&](int) {
        Event::Wait(hEvent);
        oReleased.Add();
    });

    for (int nSignal = 1; nSignal <= nWaiters; ++nSignal)
    {
        EXPECT_TRUE(oReleased.Stays(nSignal - 1));
        Event::SignalIfClear(hEvent);
        EXPECT_TRUE(oReleased.Reaches(nSignal));
    }
    EXPECT_EQ(0, Drain(hEvent));
}

TEST(TOVPlatformEventTest, WaitBlocksUntilTheSignal)
{
    for (const bool bManualReset : {false, true})
    {
        const COwnHandle hEvent(Event::Create(bManualReset, false, nullptr));
        CBlockableThread oWaiter([&] { Event::Wait(hEvent); });
        EXPECT_TRUE(oWaiter.IsBlocked()) << bManualReset;

        Event::Signal(hEvent);

        EXPECT_TRUE(oWaiter.Finishes()) << bManualReset;
    }
}

TEST(TOVPlatformEventTest, WithAutomaticResetReleasesExactlyOneWaiterASignal)
{
    const int nWaiters = 4;
    const COwnHandle hEvent(CreateAuto());
    CTally oReleased;
    CThreadGroup oWaiters;
    oWaiters.Start(nWaiters, [&](int) {
        Event::Wait(hEvent);
        oReleased.Add();
    });

    for (int nSignal = 1; nSignal <= nWaiters; ++nSignal)
    {
        EXPECT_TRUE(oReleased.Stays(nSignal - 1));
        Event::Signal(hEvent);
        EXPECT_TRUE(oReleased.Reaches(nSignal));
    }
    EXPECT_FALSE(Event::TimedWait(hEvent, 0)) << "no signal is left over";
}

TEST(TOVPlatformEventTest, WithManualResetReleasesEveryWaiter)
{
    const int nWaiters = 8;
    const COwnHandle hEvent(CreateManual());
    CTally oReleased;
    CThreadGroup oWaiters;
    oWaiters.Start(nWaiters, [&](int) {
        Event::Wait(hEvent);
        oReleased.Add();
    });
    EXPECT_TRUE(oReleased.Stays(0));

    Event::Signal(hEvent);

    EXPECT_TRUE(oReleased.Reaches(nWaiters));
    EXPECT_TRUE(Event::TimedWait(hEvent, 0));
}

TEST(TOVPlatformEventTest, WithManualResetReleasesWhoeverWaitsHoweverSoonItIsReset)
{
    const int nWaiters = 4;
    for (const bool bNamed : {false, true})
    {
        const COwnHandle hNever(CreateManual());
        const COwnHandle hEvent(Event::Create(true, false, bNamed ? UniqueName().c_str() : nullptr));
        CTally oReleased;
        CThreadGroup oWaiters;
        oWaiters.Start(nWaiters, [&](int nWaiter) {
            if (nWaiter % 2 == 0)
                Event::Wait(hEvent);
            else
                EXPECT_EQ(1, WaitForAny({hNever, hEvent}));
            oReleased.Add();
        });

        EXPECT_TRUE(oReleased.Stays(0));

        // A thread that is late waits for the next signal.
        for (int nSignals = 0; nSignals < 10 && oReleased.Count() < nWaiters; ++nSignals)
        {
            Event::Signal(hEvent);
            Event::Reset(hEvent);
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        EXPECT_EQ(nWaiters, oReleased.Count()) << bNamed;
        Event::Signal(hEvent);
    }
}

TEST(TOVPlatformEventTest, ThatWasResetAgainEndsNoWaitForAll)
{
    for (const bool bNamed : {false, true})
    {
        const COwnHandle hEvent(Event::Create(true, false, bNamed ? UniqueName().c_str() : nullptr));
        const COwnHandle hOther(CreateAuto());
        CBlockableThread oWaiter([&] { EXPECT_EQ(0, WaitForAll({hEvent, hOther})); });
        EXPECT_TRUE(oWaiter.IsBlocked()) << bNamed;

        Event::Signal(hEvent);
        Event::Reset(hEvent);
        Event::Signal(hOther);
        EXPECT_TRUE(oWaiter.IsBlocked()) << bNamed;

        Event::Signal(hEvent);
        EXPECT_TRUE(oWaiter.Finishes()) << bNamed;
    }
}

TEST(TOVPlatformEventTest, TimedWaitRunsOutAndLeavesTheEventUsable)
{
    for (const bool bManualReset : {false, true})
    {
        const COwnHandle hEvent(Event::Create(bManualReset, false, nullptr));
        EXPECT_FALSE(Event::TimedWait(hEvent, 20)) << bManualReset;
        EXPECT_FALSE(Event::TimedWait(hEvent, 1)) << bManualReset;

        Event::Signal(hEvent);
        EXPECT_TRUE(Event::TimedWait(hEvent, 20)) << bManualReset;
    }
}

TEST(TOVPlatformEventTest, TimedWaitTakesUnsignedMilliseconds)
{
    const COwnHandle hEvent(CreateAuto());
    for (const unsigned long long ullTime :
         {60000ull, 0x7FFFFFFFull, 0x80000000ull, 0xFFFFFFFEull, 0xFFFFFFFFull, ~0ull})
    {
        bool bSignalled = false;
        CBlockableThread oWaiter([&] { bSignalled = Event::TimedWait(hEvent, ToLong(ullTime)); });
        EXPECT_TRUE(oWaiter.IsBlocked()) << ullTime;

        Event::Signal(hEvent);

        ASSERT_TRUE(oWaiter.Finishes()) << ullTime;
        EXPECT_TRUE(bSignalled) << ullTime;
    }
}

TEST(TOVPlatformEventTest, TimedWaitKeepsTheLow32BitsOfTheTime)
{
    const COwnHandle hEvent(CreateAuto());

    EXPECT_FALSE(Event::TimedWait(hEvent, ToLong(0x100000000)));
    EXPECT_FALSE(Event::TimedWait(hEvent, ToLong(0x7FFFFFFF00000001)));
}

TEST(TOVPlatformEventTest, AWaitWhoseTimeRanOutDoesNotTakeALaterSignal)
{
    const COwnHandle hEvent(CreateAuto());
    OnAnotherThread([&] { EXPECT_FALSE(Event::TimedWait(hEvent, 5)); });

    Event::Signal(hEvent);

    EXPECT_TRUE(Event::TimedWait(hEvent, 0));
}

TEST(TOVPlatformEventTest, IsWaitedForByTheWaitsOfOtherKinds)
{
    const COwnHandle hEvent(CreateAuto());
    EXPECT_FALSE(Semaphore::TryLock(hEvent, 0));
    EXPECT_TRUE(Mutex::IsLocked(hEvent)) << "anything but signalled";

    Event::Signal(hEvent);
    Mutex::Lock(hEvent);
    EXPECT_FALSE(Event::TimedWait(hEvent, 0));
    Event::Signal(hEvent);
    Semaphore::Lock(hEvent);
    EXPECT_FALSE(Event::TimedWait(hEvent, 0));
    Event::Signal(hEvent);
    EXPECT_FALSE(Mutex::IsLocked(hEvent));
    EXPECT_FALSE(Event::TimedWait(hEvent, 0));
}

TEST(TOVPlatformEventTest, LeavesOthersAloneWhenDestroyed)
{
    const COwnHandle hFirst(Event::Create(true, true, nullptr));
    const unsigned long long hSecond = Event::Create(true, true, nullptr);
    const COwnHandle hThird(Event::Create(true, true, nullptr));

    Event::Destroy(hSecond);

    EXPECT_EQ(0, WaitForAll({hFirst}, 0));
    EXPECT_EQ(0, WaitForAll({hThird}, 0));
}

TEST(TOVPlatformEventTest, ManyCanLiveAtATime)
{
    std::vector<std::unique_ptr<COwnHandle>> aEvents;
    for (int nEvent = 0; nEvent < 5000; ++nEvent)
        aEvents.push_back(std::make_unique<COwnHandle>(Event::Create(true, nEvent % 3 == 0, nullptr)));

    for (int nEvent = 0; nEvent < 5000; ++nEvent)
        ASSERT_EQ(nEvent % 3 == 0, Event::TimedWait(*aEvents[static_cast<std::size_t>(nEvent)], 0)) << nEvent;
}

TEST(TOVPlatformEventTest, KeepsNoMemoryWhenDestroyed)
{
    Event::Destroy(CreateAuto());
    CAllocationCounter oCounter;

    for (int nEvent = 0; nEvent < 1000; ++nEvent)
        Event::Destroy(CreateAuto());

    EXPECT_GE(0, oCounter.Kept());
}
