// Threads that compete for mutexes, semaphores and sections: which one is first is open, but none is left out, and what
// an object counts is exact.
#include "Support/TOVBlockableThread.h"
#include "Support/TOVRowName.h"
#include "TOVPlatform/TOVLockKinds.h"
#include "TOVPlatform/TOVSynchronizationInstruments.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <random>
#include <utility>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

namespace
{
constexpr int THREADS = 4;
constexpr int SHARE = 100;             // turns that each thread is to get
constexpr int MAX_ROUNDS = 1000000000; // turns of all threads until then

const sLockKind TIMED_MUTEX = {"TimedMutex", [] { return Mutex::Create(false, nullptr); },
                               [](unsigned long long hLock) { EXPECT_TRUE(Event::TimedWait(hLock, DEADLINE)); },
                               &Mutex::Unlock, &DestroyObject};

class TOVPlatformCompetitionTest : public testing::TestWithParam<sLockKind>
{
protected:
    TOVPlatformCompetitionTest() : m_hLock(GetParam().fnCreate()) {}
    ~TOVPlatformCompetitionTest() override { GetParam().fnDestroy(m_hLock); }

    void Lock() const { GetParam().fnLock(m_hLock); }
    void Unlock() const { GetParam().fnUnlock(m_hLock); }

    const unsigned long long m_hLock;
};

INSTANTIATE_TEST_SUITE_P(Lock, TOVPlatformCompetitionTest, testing::ValuesIn(LOCK_KINDS), sRowName());
INSTANTIATE_TEST_SUITE_P(TimedLock, TOVPlatformCompetitionTest, testing::Values(TIMED_MUTEX), sRowName());

// What a random operation did.
typedef std::pair<int, long> tOutcome;
} // namespace

TEST_P(TOVPlatformCompetitionTest, EachThreadOfATightLoopGetsItsShare)
{
    std::array<int, THREADS> aTurns = {}; // under the lock, as is the sum
    int nRounds = 0;
    CThreadGroup oThreads;
    oThreads.Start(THREADS, [&](int nThread) {
        for (bool bOver = false; !bOver;)
        {
            Lock();
            ++aTurns[static_cast<std::size_t>(nThread)];
            bOver = ++nRounds >= MAX_ROUNDS || *std::min_element(aTurns.begin(), aTurns.end()) >= SHARE;
            Unlock();
        }
    });
    oThreads.Join();

    EXPECT_LE(SHARE, *std::min_element(aTurns.begin(), aTurns.end()));
    EXPECT_EQ(nRounds, aTurns[0] + aTurns[1] + aTurns[2] + aTurns[3]);
}

TEST_P(TOVPlatformCompetitionTest, ASleeperGetsItsTurnThoughTheOwnerAlwaysComesBackAtOnce)
{
    std::atomic<int> nTurns(0);
    Lock();
    CThreadGroup oSleepers;
    oSleepers.Start(THREADS, [&](int) {
        for (int nTurn = 0; nTurn < SHARE / THREADS; ++nTurn)
        {
            Lock();
            ++nTurns;
            Unlock();
        }
    });
    for (int nRound = 0; nRound < MAX_ROUNDS && nTurns < SHARE; ++nRound)
    {
        Unlock();
        Lock();
    }

    EXPECT_EQ(SHARE, nTurns);
    Unlock();
}

TEST_P(TOVPlatformCompetitionTest, ProtectsAPlainNumberFromWaitsOfEachSort)
{
    int nCount = 0;
    CThreadGroup oThreads;
    oThreads.Start(THREADS, [&](int nThread) {
        for (int nTurn = 0; nTurn < 5000; ++nTurn)
        {
            Lock();
            const int nBefore = nCount;
            if ((nTurn + nThread) % 512 == 0)
                std::this_thread::yield();
            nCount = nBefore + 1;
            Unlock();
        }
    });
    oThreads.Join();

    EXPECT_EQ(THREADS * 5000, nCount);
}

TEST(TOVPlatformSemaphoreCompetitionTest, UnitsForWhichSleepersComeLeaveRoomForOthers)
{
    const int nSleepers = 8;
    const COwnHandle hSemaphore(Semaphore::Create(0, nSleepers, nullptr));
    CTally oReleased;
    CThreadGroup oSleepers;
    oSleepers.Start(nSleepers, [&](int) {
        Semaphore::Lock(hSemaphore);
        oReleased.Add();
    });
    EXPECT_TRUE(oReleased.Stays(0));

    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, nSleepers));
    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, nSleepers));

    EXPECT_TRUE(oReleased.Reaches(nSleepers));
    EXPECT_EQ(nSleepers, Drain(hSemaphore));
}

TEST(TOVPlatformSemaphoreCompetitionTest, UnitsForWhichSleepersComeAreNotCounted)
{
    const COwnHandle hSemaphore(Semaphore::Create(0, 2, nullptr));
    CTally oReleased;
    CThreadGroup oSleepers;
    oSleepers.Start(2, [&](int) {
        Semaphore::Lock(hSemaphore);
        oReleased.Add();
    });
    EXPECT_TRUE(oReleased.Stays(0));

    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, 1));
    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, 1));
    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, 1));
    EXPECT_EQ(1, Semaphore::Unlock(hSemaphore, 1));
    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, 1)) << "refused";

    EXPECT_TRUE(oReleased.Reaches(2));
    EXPECT_EQ(2, Drain(hSemaphore));
}

TEST(TOVPlatformSemaphoreCompetitionTest, ReachesItsLargestMaximumWithASleeper)
{
    const COwnHandle hSemaphore(Semaphore::Create(0, INT32_MAX, nullptr));
    CBlockableThread oSleeper([&] { Semaphore::Lock(hSemaphore); });
    EXPECT_TRUE(oSleeper.IsBlocked());

    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, INT32_MAX));
    EXPECT_EQ(INT32_MAX - 1, Semaphore::Unlock(hSemaphore, 1));

    EXPECT_TRUE(oSleeper.Finishes());
    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, 1)) << "refused";
    EXPECT_TRUE(TakesNow(hSemaphore));
    EXPECT_EQ(INT32_MAX - 1, Semaphore::Unlock(hSemaphore, 1));
}

TEST(TOVPlatformSemaphoreCompetitionTest, PostsThatRaceWithTimeoutsAreAllTaken)
{
    const int nPosts = 20000;
    const COwnHandle hSemaphore(Semaphore::Create(0, nPosts, nullptr));
    std::atomic<int> nTaken(0);
    std::atomic<bool> bOver(false);
    CThreadGroup oTakers;
    oTakers.Start(THREADS, [&](int nThread) {
        while (!bOver)
            nTaken += Semaphore::TryLock(hSemaphore, nThread % 3) ? 1 : 0;
    });
    for (int nPost = 0; nPost < nPosts; nPost += 2)
    {
        Semaphore::Unlock(hSemaphore, nPost % 4 == 0 ? 1 : 3);
        if (nPost % 64 == 0)
            std::this_thread::yield();
    }
    bOver = true;
    oTakers.Join();

    EXPECT_EQ(nPosts, nTaken + Drain(hSemaphore));
}

TEST(TOVPlatformMixedCompetitionTest, SingleWaitsAndWaitsForSeveralLoseNothing)
{
    const int nUnits = 2;
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    const COwnHandle hSemaphore(Semaphore::Create(nUnits, nUnits, nullptr));
    int nCount = 0; // under the mutex
    std::atomic<int> nLocked(0);
    CThreadGroup oThreads;
    oThreads.Start(2 * THREADS, [&](int nThread) {
        for (int nTurn = 0; nTurn < 3000; ++nTurn)
        {
            const int nSort = (nTurn + nThread) % 5;
            const long lTime = nTurn % 4 == 0 ? 0 : (nTurn % 4 == 1 ? 1 : DEADLINE);
            bool bMutex = nSort == 0 && Event::TimedWait(hMutex, lTime);
            bool bSemaphore = nSort == 1 && Event::TimedWait(hSemaphore, lTime);
            const int nFirst = nSort == 2   ? WaitForAll({hMutex, hSemaphore}, lTime)
                               : nSort == 3 ? WaitForAny({hSemaphore, hMutex}, lTime)
                               : nSort == 4 ? WaitForAny({hMutex}, lTime)
                                            : -2;
            ASSERT_GT(0x80, nFirst);
            bMutex = bMutex || (nFirst >= 0 && (nSort == 2 || nSort == 4 || nFirst == 1));
            bSemaphore = bSemaphore || (nFirst >= 0 && (nSort == 2 || (nSort == 3 && nFirst == 0)));
            if (bMutex)
            {
                ++nCount;
                ++nLocked;
                Mutex::Unlock(hMutex);
            }
            if (bSemaphore)
            {
                EXPECT_GT(nUnits, Semaphore::Unlock(hSemaphore, 1));
            }
        }
    });
    oThreads.Join();

    EXPECT_EQ(nLocked, nCount);
    EXPECT_FALSE(IsLockedForOthers(hMutex));
    EXPECT_EQ(nUnits, Drain(hSemaphore));
}

TEST(TOVPlatformMixedCompetitionTest, EachDeathOfAnOwnerIsToldOnceAmongCompetitors)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    std::atomic<int> nTold(0);
    std::atomic<int> nLeft(0);
    CThreadGroup oCompetitors;
    oCompetitors.Start(2, [&](int) {
        for (int nTurn = 0; nTurn < 2000; ++nTurn)
        {
            nTold += WaitForAny({hMutex}) == 0x80 ? 1 : 0;
            Mutex::Unlock(hMutex);
        }
    });
    for (int nOwner = 0; nOwner < 100; ++nOwner)
        OnAnotherThread([&] {
            nTold += WaitForAny({hMutex}) == 0x80 ? 1 : 0;
            ++nLeft;
        });
    oCompetitors.Join();
    nTold += WaitForAny({hMutex}) == 0x80 ? 1 : 0;

    EXPECT_EQ(nLeft, nTold);
    Mutex::Unlock(hMutex);
}

// An object for which some other wait goes on changes by other steps than one for which nobody waits.
TEST(TOVPlatformHeldObjectTest, AnswersEachOperationLikeAnObjectThatNobodyWaitsFor)
{
    struct sObjects
    {
        const COwnHandle hMutex{Mutex::Create(false, nullptr)};
        const COwnHandle hSemaphore{Semaphore::Create(2, 4, nullptr)};
        const COwnHandle hAuto{Event::Create(false, false, nullptr)};
        const COwnHandle hManual{Event::Create(true, false, nullptr)};

        tOutcome Do(unsigned int nOperation) const
        {
            const unsigned long long aEvents[] = {hAuto, hManual};
            const unsigned long long hEvent = aEvents[nOperation / 16 % 2];
            switch (nOperation % 12)
            {
            case 0:
                return {0, Mutex::IsLocked(hMutex)};
            case 1:
                return {1, Event::TimedWait(hMutex, 1)};
            case 2:
                Mutex::Lock(hMutex);
                return {2, 0};
            case 3:
            case 4:
            case 5:
                Mutex::Unlock(hMutex); // does nothing when there is no level left
                return {3, 0};
            case 6:
                return {6, Semaphore::TryLock(hSemaphore, 0)};
            case 7:
                return {7, Semaphore::Unlock(hSemaphore, static_cast<long>(nOperation / 16 % 6))};
            case 8:
                Event::Signal(hEvent);
                return {8, 0};
            case 9:
                Event::SignalIfClear(hEvent);
                return {9, 0};
            case 10:
                Event::Reset(hEvent);
                return {10, 0};
            default:
                return {11, Event::TimedWait(hEvent, 0)};
            }
        }

        tHandles All() const { return {hMutex, hSemaphore, hAuto, hManual}; }
    };
    const sObjects oPlain;
    const sObjects oHeld;
    const COwnHandle hNever(Event::Create(true, false, nullptr));
    CBlockableThread oWaiter([&] {
        tHandles aHandles = oHeld.All();
        aHandles.push_back(hNever);
        WaitForAll(aHandles);
    });
    ASSERT_TRUE(oWaiter.IsBlocked());

    std::mt19937 oRandom(7);
    for (int nStep = 0; nStep < 20000; ++nStep)
    {
        const unsigned int nOperation = static_cast<unsigned int>(oRandom());
        ASSERT_EQ(oPlain.Do(nOperation), oHeld.Do(nOperation)) << nStep;
    }

    while (IsLockedForOthers(oHeld.hMutex))
        Mutex::Unlock(oHeld.hMutex);
    Semaphore::Unlock(oHeld.hSemaphore, 1);
    Event::Signal(oHeld.hAuto);
    Event::Signal(oHeld.hManual);
    Event::Signal(hNever);
    EXPECT_TRUE(oWaiter.Finishes());
}
