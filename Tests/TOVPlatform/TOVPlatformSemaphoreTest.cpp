#include "Support/TOVBlockableThread.h"
#include "TOVPlatform/TOVSynchronizationInstruments.h"

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

TEST(TOVPlatformSemaphoreTest, CanBeLockedAsOftenAsItsInitialCount)
{
    for (const long lInitial : {0l, 1l, 5l})
    {
        const COwnHandle hSemaphore(Semaphore::Create(lInitial, 5, nullptr));
        EXPECT_NE(0ull, hSemaphore);
        EXPECT_EQ(lInitial, Drain(hSemaphore));
    }
}

TEST(TOVPlatformSemaphoreTest, RefusesImpossibleCounts)
{
    const struct
    {
        long lInitial;
        long lMaximum;
    } aCases[] = {{2, 1}, {0, 0}, {1, 0}, {-1, 1}, {-1, -1}, {0, -1}, {-2147483647 - 1, 1}, {0x7FFFFFFF, 0x7FFFFFFE}};
    for (const auto& oCase : aCases)
        EXPECT_EQ(0ull, Semaphore::Create(oCase.lInitial, oCase.lMaximum, nullptr))
            << oCase.lInitial << " of " << oCase.lMaximum;
}

TEST(TOVPlatformSemaphoreTest, KeepsTheLow32BitsOfItsCounts)
{
    const COwnHandle hSemaphore(Semaphore::Create(ToLong(0x700000002), ToLong(0x100000003), nullptr));
    ASSERT_NE(0ull, hSemaphore);

    EXPECT_EQ(2, Semaphore::Unlock(hSemaphore, ToLong(0x900000001)));
    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, 1)) << "at its maximum";
    EXPECT_EQ(3, Drain(hSemaphore));
    EXPECT_EQ(0ull, Semaphore::Create(0, ToLong(0x80000000), nullptr)) << "negative";
}

TEST(TOVPlatformSemaphoreTest, UnlockGivesTheCountBefore)
{
    const COwnHandle hSemaphore(Semaphore::Create(3, 10, nullptr));

    EXPECT_EQ(3, Semaphore::Unlock(hSemaphore, 1));
    EXPECT_EQ(4, Semaphore::Unlock(hSemaphore, 6));
    EXPECT_EQ(10, Drain(hSemaphore));
    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, 2));
    EXPECT_EQ(2, Drain(hSemaphore));
}

TEST(TOVPlatformSemaphoreTest, RefusesAReleaseBeyondItsMaximum)
{
    const COwnHandle hSemaphore(Semaphore::Create(3, 5, nullptr));
    for (const long lCount : {3l, 4l, 0x7FFFFFFEl, 0x7FFFFFFFl})
        EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, lCount)) << lCount;

    EXPECT_EQ(3, Semaphore::Unlock(hSemaphore, 2));
    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, 1));
    EXPECT_EQ(5, Drain(hSemaphore));
}

TEST(TOVPlatformSemaphoreTest, RefusesAReleaseOfLessThanOne)
{
    const COwnHandle hSemaphore(Semaphore::Create(3, 5, nullptr));
    for (const long lCount : {0l, -1l, -3l, -2147483647l - 1})
        EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, lCount)) << lCount;

    EXPECT_EQ(3, Drain(hSemaphore));
}

TEST(TOVPlatformSemaphoreTest, CountsUpToTheLargestNumber)
{
    const COwnHandle hSemaphore(Semaphore::Create(0x7FFFFFFE, 0x7FFFFFFF, nullptr));

    EXPECT_EQ(0x7FFFFFFE, Semaphore::Unlock(hSemaphore, 1));
    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, 1));
    EXPECT_TRUE(Semaphore::TryLock(hSemaphore, 0));
    EXPECT_EQ(0x7FFFFFFE, Semaphore::Unlock(hSemaphore, 1));
}

TEST(TOVPlatformSemaphoreTest, LockBlocksAtZero)
{
    const COwnHandle hSemaphore(Semaphore::Create(1, 1, nullptr));
    Semaphore::Lock(hSemaphore);
    CBlockableThread oWaiter([&] { Semaphore::Lock(hSemaphore); });
    EXPECT_TRUE(oWaiter.IsBlocked());

    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, 1));

    EXPECT_TRUE(oWaiter.Finishes());
    EXPECT_FALSE(Semaphore::TryLock(hSemaphore, 0));
}

TEST(TOVPlatformSemaphoreTest, ReleasesAsManyWaitersAsItIsUnlockedBy)
{
    const int nWaiters = 6;
    const COwnHandle hSemaphore(Semaphore::Create(0, nWaiters, nullptr));
    CTally oReleased;
    CThreadGroup oWaiters;
    oWaiters.Start(nWaiters, [&](int) {
        Semaphore::Lock(hSemaphore);
        oReleased.Add();
    });
    EXPECT_TRUE(oReleased.Stays(0));

    Semaphore::Unlock(hSemaphore, 2);
    EXPECT_TRUE(oReleased.Reaches(2));
    EXPECT_TRUE(oReleased.Stays(2));
    Semaphore::Unlock(hSemaphore, 4);
    EXPECT_TRUE(oReleased.Reaches(6));
    EXPECT_EQ(0, Drain(hSemaphore));
}

TEST(TOVPlatformSemaphoreTest, HasNoOwner)
{
    const COwnHandle hSemaphore(Semaphore::Create(1, 1, nullptr));
    Semaphore::Lock(hSemaphore);
    EXPECT_FALSE(Semaphore::TryLock(hSemaphore, 0)) << "not even by the same thread";

    OnAnotherThread([&] { Semaphore::Unlock(hSemaphore, 1); });

    EXPECT_TRUE(Semaphore::TryLock(hSemaphore, 0));
}

TEST(TOVPlatformSemaphoreTest, KeepsWhatAnEndedThreadTook)
{
    const COwnHandle hSemaphore(Semaphore::Create(2, 2, nullptr));

    OnAnotherThread([&] { Semaphore::Lock(hSemaphore); });

    EXPECT_EQ(1, Drain(hSemaphore));
}

TEST(TOVPlatformSemaphoreTest, TryLockRunsOut)
{
    const COwnHandle hSemaphore(Semaphore::Create(0, 1, nullptr));

    EXPECT_FALSE(Semaphore::TryLock(hSemaphore, 0));
    EXPECT_FALSE(Semaphore::TryLock(hSemaphore, 20));
    EXPECT_FALSE(Semaphore::TryLock(hSemaphore, ToLong(0x100000000)));
    Semaphore::Unlock(hSemaphore, 1);
    EXPECT_TRUE(Semaphore::TryLock(hSemaphore, 20));
}

TEST(TOVPlatformSemaphoreTest, TryLockTakesUnsignedMilliseconds)
{
    const COwnHandle hSemaphore(Semaphore::Create(0, 1, nullptr));
    for (const long lTime : {60000l, -1l, ToLong(0xFFFFFFFF), ToLong(0x80000000)})
    {
        bool bLocked = false;
        CBlockableThread oWaiter([&] { bLocked = Semaphore::TryLock(hSemaphore, lTime); });
        EXPECT_TRUE(oWaiter.IsBlocked()) << lTime;

        Semaphore::Unlock(hSemaphore, 1);

        ASSERT_TRUE(oWaiter.Finishes()) << lTime;
        EXPECT_TRUE(bLocked) << lTime;
    }
}

TEST(TOVPlatformSemaphoreTest, IsLockedByWaitsForEvents)
{
    const COwnHandle hSemaphore(Semaphore::Create(4, 4, nullptr));

    Event::Wait(hSemaphore);
    EXPECT_TRUE(Event::TimedWait(hSemaphore, 0));
    EXPECT_EQ(0, WaitForAny({hSemaphore}, 0));
    EXPECT_EQ(0, WaitForAll({hSemaphore}, 0));

    EXPECT_EQ(0, Drain(hSemaphore));
}

TEST(TOVPlatformSemaphoreTest, IsNoEvent)
{
    const COwnHandle hSemaphore(Semaphore::Create(1, 2, nullptr));

    Event::Signal(hSemaphore);
    Event::Reset(hSemaphore);

    EXPECT_EQ(1, Drain(hSemaphore));
}

TEST(TOVPlatformSemaphoreTest, UnlockFailsOnOtherKinds)
{
    const COwnHandle hEvent(Event::Create(false, false, nullptr));

    EXPECT_EQ(0, Semaphore::Unlock(hEvent, 1));
    EXPECT_FALSE(Event::TimedWait(hEvent, 0));
}
