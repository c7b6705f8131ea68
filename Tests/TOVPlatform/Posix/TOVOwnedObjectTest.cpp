// Objects that one thread has had for itself: they do what shared ones do, and others may come at any step.
#include "Support/TOVRowName.h"
#include "Support/TOVWaitInstruments.h"
#include "TOVPlatform/TOVLockKinds.h"

#include <atomic>
#include <chrono>
#include <random>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

namespace
{
constexpr int TURNS = 1000;
constexpr int OWNERS_ROUNDS = 200;
constexpr int OTHERS_ROUNDS = 20;

typedef std::mt19937 tRandom;

struct sObjects
{
    const COwnHandle hAuto{Event::Create(false, false, nullptr)};
    const COwnHandle hManual{Event::Create(true, false, nullptr)};
    const COwnHandle hMutex{Mutex::Create(false, nullptr)};
    const COwnHandle hSemaphore{Semaphore::Create(1, 3, nullptr)};

    // Another thread uses each of them, and leaves it as it was.
    void Share() const
    {
        OnAnotherThread([this] {
            EXPECT_FALSE(TakesNow(hAuto));
            EXPECT_FALSE(TakesNow(hManual));
            EXPECT_FALSE(Mutex::IsLocked(hMutex));
            Mutex::Unlock(hMutex);
            EXPECT_TRUE(TakesNow(hSemaphore));
            Semaphore::Unlock(hSemaphore, 1);
        });
    }

    // One of the operations; its result, if it has one.
    long Do(tRandom::result_type nOperation) const
    {
        const unsigned long long hEvent = nOperation % 2 == 0 ? hAuto : hManual;
        switch (nOperation / 2 % 10)
        {
        case 0:
            Event::Signal(hEvent);
            return 0;
        case 1:
            Event::SignalIfClear(hEvent);
            return 0;
        case 2:
            Event::Reset(hEvent);
            return 0;
        case 3:
            return TakesNow(hEvent) ? 1 : 0;
        case 4:
            return Semaphore::Unlock(hSemaphore, nOperation % 2 == 0 ? 1 : 2);
        case 5:
            return Semaphore::TryLock(hSemaphore, 0) ? 1 : 0;
        case 6:
            return Mutex::IsLocked(hMutex) ? 1 : 0;
        case 7:
            Mutex::Unlock(hMutex);
            return 0;
        case 8:
            return TakesNow(hMutex) ? 1 : 0;
        default:
            return nOperation < 20 ? WaitForAny({hEvent, hSemaphore}, 0) : 0;
        }
    }
};

void WaitForSteps(tRandom::result_type nSteps)
{
    for (; nSteps > 0; --nSteps)
        std::atomic_signal_fence(std::memory_order_seq_cst);
}

// Raises a plain number under the lock, which may be entered again where it belongs to a thread.
void Count(const sLockKind& oLock, unsigned long long hLock, int nRounds, int& nNumber)
{
    const bool bAgain = oLock.fnLock == &Mutex::Lock || oLock.fnLock == &CriticalSection::Enter;
    for (int nRound = 0; nRound < nRounds; ++nRound)
    {
        const int nLevels = bAgain && nRound % 16 == 15 ? 2 : 1;
        for (int nLevel = 0; nLevel < nLevels; ++nLevel)
            oLock.fnLock(hLock);
        ++nNumber;
        for (int nLevel = 0; nLevel < nLevels; ++nLevel)
            oLock.fnUnlock(hLock);
    }
}

class TOVOwnedObjectTest : public testing::TestWithParam<sLockKind>
{
};

INSTANTIATE_TEST_SUITE_P(Lock, TOVOwnedObjectTest, testing::ValuesIn(LOCK_KINDS), sRowName());
} // namespace

TEST(TOVOwnedObjectsTest, DoWhatSharedOnesDo)
{
    tRandom oRandom(7);
    for (int nTurn = 0; nTurn < TURNS; ++nTurn)
    {
        const sObjects oOwned;
        const sObjects oShared;
        oShared.Share();
        for (int nStep = 0; nStep < 100; ++nStep)
        {
            const tRandom::result_type nOperation = oRandom() % 1000;
            ASSERT_EQ(oShared.Do(nOperation), oOwned.Do(nOperation)) << nOperation << " in turn " << nTurn;
        }
        ASSERT_EQ(IsLockedForOthers(oShared.hMutex), IsLockedForOthers(oOwned.hMutex));
    }
}

// Each object belongs to its first thread until the others come, at whichever step of it that happens.
TEST_P(TOVOwnedObjectTest, LetsOneThreadInThoughOthersCome)
{
    const sLockKind& oLock = GetParam();
    tRandom oRandom(8);
    for (int nTurn = 0; nTurn < TURNS; ++nTurn)
    {
        const unsigned long long hLock = oLock.fnCreate();
        int nNumber = 0;
        std::atomic<bool> bOwned(false);
        std::thread oOwner([&] {
            Count(oLock, hLock, 1, nNumber);
            bOwned = true;
            Count(oLock, hLock, OWNERS_ROUNDS, nNumber);
        });
        const auto Come = [&](tRandom::result_type nSteps) {
            while (!bOwned)
                continue;
            WaitForSteps(nSteps);
            Count(oLock, hLock, OTHERS_ROUNDS, nNumber);
        };
        std::thread oOther(Come, oRandom() % 4096);
        Come(oRandom() % 4096);
        oOther.join();
        oOwner.join();
        oLock.fnDestroy(hLock);

        ASSERT_EQ(1 + OWNERS_ROUNDS + 2 * OTHERS_ROUNDS, nNumber);
    }
}

// The owner and the thread that goes to sleep must not miss each other.
TEST(TOVOwnedObjectsTest, WakeAThreadThatComesToWait)
{
    tRandom oRandom(9);
    for (int nTurn = 0; nTurn < TURNS; ++nTurn)
    {
        const COwnHandle hEvent(Event::Create(nTurn % 2 == 0, false, nullptr));
        const COwnHandle hSemaphore(Semaphore::Create(0, 1, nullptr));
        Event::Signal(hEvent);
        Event::Reset(hEvent);
        EXPECT_FALSE(TakesNow(hSemaphore));

        std::atomic<bool> bComes(false);
        std::thread oWaiting([&, nSteps = oRandom() % 256] {
            bComes = true;
            WaitForSteps(nSteps);
            const auto oStart = std::chrono::steady_clock::now();
            EXPECT_GE(WaitForAll({hEvent, hSemaphore}), 0);
            EXPECT_LT(std::chrono::steady_clock::now() - oStart, std::chrono::milliseconds(DEADLINE)); // a late look
            EXPECT_EQ(nTurn % 2 == 0, TakesNow(hEvent));
            Semaphore::Unlock(hSemaphore, 1);
        });
        for (int nRounds = OTHERS_ROUNDS; nRounds > 0; nRounds -= bComes ? 1 : 0)
        {
            Event::SignalIfClear(hEvent);
            Event::Reset(hEvent);
        }
        Semaphore::Unlock(hSemaphore, 1);
        Event::Signal(hEvent);
        oWaiting.join();

        EXPECT_TRUE(TakesNow(hSemaphore));
    }
}

TEST(TOVOwnedObjectsTest, AreAbandonedWithTheirThread)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    OnAnotherThread([&] {
        for (int nRound = 0; nRound < OTHERS_ROUNDS; ++nRound)
        {
            Mutex::Lock(hMutex);
            Mutex::Unlock(hMutex);
        }
        Mutex::Lock(hMutex);
        Mutex::Lock(hMutex);
    });

    EXPECT_EQ(0x80, WaitForAny({hMutex}, 0));
    EXPECT_TRUE(IsLockedForOthers(hMutex));
    Mutex::Unlock(hMutex);
    EXPECT_FALSE(IsLockedForOthers(hMutex));
}
