#include "Support/TOVBlockableThread.h"
#include "Support/TOVWaitInstruments.h"

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

namespace
{
unsigned long long CreateFree()
{
    return Mutex::Create(false, nullptr);
}

// Gives back all levels of ownership that the calling thread has, and counts them.
int GiveBack(unsigned long long hMutex)
{
    int nLevels = 0;
    while (IsLockedForOthers(hMutex) && nLevels < 100)
    {
        Mutex::Unlock(hMutex);
        ++nLevels;
    }
    return nLevels;
}
} // namespace

TEST(TOVPlatformMutexTest, StartsFreeOrOwnedByItsCreator)
{
    const COwnHandle hFree(Mutex::Create(false, nullptr));
    const COwnHandle hOwned(Mutex::Create(true, nullptr));

    EXPECT_NE(0ull, hFree);
    EXPECT_NE(0ull, hOwned);
    EXPECT_EQ(0, GiveBack(hFree));
    EXPECT_EQ(1, GiveBack(hOwned));
}

TEST(TOVPlatformMutexTest, KeepsAnotherThreadOutUntilItsOwnerUnlocks)
{
    const COwnHandle hMutex(CreateFree());
    Mutex::Lock(hMutex);
    CBlockableThread oOther([&] {
        Mutex::Lock(hMutex);
        Mutex::Unlock(hMutex);
    });
    EXPECT_TRUE(oOther.IsBlocked());

    Mutex::Unlock(hMutex);

    EXPECT_TRUE(oOther.Finishes());
}

TEST(TOVPlatformMutexTest, IsUnlockedAsOftenAsItWasLocked)
{
    const COwnHandle hMutex(CreateFree());

    Mutex::Lock(hMutex);
    Mutex::Lock(hMutex);
    Mutex::Lock(hMutex);

    EXPECT_EQ(3, GiveBack(hMutex));
}

TEST(TOVPlatformMutexTest, HasALevelForEachWaitOfAnyForm)
{
    const COwnHandle hMutex(CreateFree());

    Mutex::Lock(hMutex);
    Event::Wait(hMutex);
    EXPECT_TRUE(Event::TimedWait(hMutex, 0));
    EXPECT_TRUE(Event::TimedWait(hMutex, -1));
    Semaphore::Lock(hMutex);
    EXPECT_TRUE(Semaphore::TryLock(hMutex, 0));
    EXPECT_EQ(0, WaitForAny({hMutex}));
    EXPECT_EQ(0, WaitForAll({hMutex}));
    EXPECT_FALSE(Mutex::IsLocked(hMutex));

    EXPECT_EQ(9, GiveBack(hMutex));
}

TEST(TOVPlatformMutexTest, CanBeLockedManyTimesByItsOwner)
{
    const int nLevels = 10000;
    const COwnHandle hMutex(CreateFree());
    for (int nLevel = 0; nLevel < nLevels; ++nLevel)
        Mutex::Lock(hMutex);

    for (int nLevel = 1; nLevel < nLevels; ++nLevel)
        Mutex::Unlock(hMutex);

    EXPECT_EQ(1, GiveBack(hMutex));
}

TEST(TOVPlatformMutexTest, StaysLockedWhenAnotherThreadUnlocks)
{
    const COwnHandle hMutex(CreateFree());
    Mutex::Lock(hMutex);
    Mutex::Lock(hMutex);

    OnAnotherThread([&] {
        Mutex::Unlock(hMutex);
        Mutex::Unlock(hMutex);
        Mutex::Unlock(hMutex);
    });

    EXPECT_EQ(2, GiveBack(hMutex));
}

TEST(TOVPlatformMutexTest, StaysFreeWhenItIsUnlockedOnceTooOften)
{
    const COwnHandle hMutex(CreateFree());
    Mutex::Unlock(hMutex);
    Mutex::Unlock(hMutex);

    Mutex::Lock(hMutex);

    EXPECT_EQ(1, GiveBack(hMutex));
}

TEST(TOVPlatformMutexTest, IsTakenByAskingWhetherAFreeOneIsLocked)
{
    const COwnHandle hMutex(CreateFree());

    EXPECT_FALSE(Mutex::IsLocked(hMutex));
    EXPECT_FALSE(Mutex::IsLocked(hMutex));

    EXPECT_EQ(2, GiveBack(hMutex));
}

TEST(TOVPlatformMutexTest, IsNotLockedForItsOwnerWhoGetsALevelMore)
{
    const COwnHandle hMutex(Mutex::Create(true, nullptr));

    EXPECT_FALSE(Mutex::IsLocked(hMutex));

    EXPECT_EQ(2, GiveBack(hMutex));
}

TEST(TOVPlatformMutexTest, IsLockedForAnotherThreadWhoGetsNothing)
{
    const COwnHandle hMutex(CreateFree());
    Mutex::Lock(hMutex);
    CWorker oOther;
    oOther.Do([&] { EXPECT_TRUE(Mutex::IsLocked(hMutex)); });
    oOther.Do([&] { EXPECT_TRUE(Mutex::IsLocked(hMutex)); });

    Mutex::Unlock(hMutex);

    EXPECT_EQ(0, GiveBack(hMutex));
}

TEST(TOVPlatformMutexTest, IsOwnedByTheThreadThatAskedFirst)
{
    const COwnHandle hMutex(CreateFree());
    CWorker oOther;

    oOther.Do([&] { EXPECT_FALSE(Mutex::IsLocked(hMutex)); });

    EXPECT_TRUE(Mutex::IsLocked(hMutex));
    oOther.Do([&] { Mutex::Unlock(hMutex); });
    EXPECT_FALSE(Mutex::IsLocked(hMutex));
    Mutex::Unlock(hMutex);
}

TEST(TOVPlatformMutexTest, TimedWaitRunsOutWhileAnotherOwnsIt)
{
    const COwnHandle hMutex(CreateFree());
    CWorker oOwner;
    oOwner.Do([&] { Mutex::Lock(hMutex); });

    EXPECT_FALSE(Event::TimedWait(hMutex, 0));
    EXPECT_FALSE(Event::TimedWait(hMutex, 20));
    EXPECT_EQ(-2, WaitForAny({hMutex}, 20));
    EXPECT_EQ(-2, WaitForAll({hMutex}, 20));

    oOwner.Do([&] { Mutex::Unlock(hMutex); });
    EXPECT_EQ(0, GiveBack(hMutex));
}

TEST(TOVPlatformMutexTest, GoesToOneWaiterAtATime)
{
    const int nWaiters = 4;
    const COwnHandle hMutex(Mutex::Create(true, nullptr));
    const COwnHandle hNext(Event::Create(false, false, nullptr));
    CTally oOwners;
    CThreadGroup oWaiters;
    oWaiters.Start(nWaiters, [&](int) {
        Mutex::Lock(hMutex);
        oOwners.Add();
        Event::TimedWait(hNext, DEADLINE);
        Mutex::Unlock(hMutex);
    });
    EXPECT_TRUE(oOwners.Stays(0));

    Mutex::Unlock(hMutex);
    for (int nOwner = 1; nOwner <= nWaiters; ++nOwner)
    {
        EXPECT_TRUE(oOwners.Reaches(nOwner));
        EXPECT_TRUE(oOwners.Stays(nOwner));
        Event::Signal(hNext);
    }
    oWaiters.Join();
    EXPECT_EQ(0, GiveBack(hMutex));
}

TEST(TOVPlatformMutexTest, IsIndependentOfOthers)
{
    const COwnHandle hFirst(Mutex::Create(true, nullptr));
    const COwnHandle hSecond(CreateFree());

    EXPECT_FALSE(IsLockedForOthers(hSecond));
    Mutex::Unlock(hSecond);
    EXPECT_TRUE(IsLockedForOthers(hFirst));

    Mutex::Unlock(hFirst);
}

TEST(TOVPlatformMutexTest, IsNoEventAndNoSemaphore)
{
    const COwnHandle hMutex(Mutex::Create(true, nullptr));

    OnAnotherThread([&] {
        Event::Signal(hMutex);
        Event::Reset(hMutex);
        EXPECT_EQ(0, Semaphore::Unlock(hMutex, 1));
    });

    EXPECT_EQ(1, GiveBack(hMutex));
}

TEST(TOVPlatformMutexTest, UnlockLeavesOtherKindsAlone)
{
    const COwnHandle hEvent(Event::Create(false, false, nullptr));
    const COwnHandle hSemaphore(Semaphore::Create(0, 1, nullptr));

    Mutex::Unlock(hEvent);
    Mutex::Unlock(hSemaphore);

    EXPECT_EQ(-2, WaitForAny({hEvent, hSemaphore}, 0));
}

TEST(TOVPlatformMutexTest, CanBeDestroyedByItsOwner)
{
    const unsigned long long hMutex = Mutex::Create(true, nullptr);
    Mutex::Lock(hMutex);

    EXPECT_TRUE(Mutex::Destroy(hMutex));

    const COwnHandle hOther(CreateFree());
    EXPECT_EQ(0, GiveBack(hOther)) << "not owned like the one before it";
}

TEST(TOVPlatformMutexTest, CanBeDestroyedWhileAnotherThreadOwnsIt)
{
    const unsigned long long hMutex = CreateFree();
    CWorker oOwner;
    oOwner.Do([&] { Mutex::Lock(hMutex); });

    EXPECT_TRUE(Mutex::Destroy(hMutex));
    const COwnHandle hOther(CreateFree());
    oOwner.End();

    EXPECT_EQ(0, WaitForAny({hOther}, 0)) << "not abandoned like the one before it";
    Mutex::Unlock(hOther);
}
