// Many threads on few objects: whatever the order, nothing is lost and nothing is given twice.
#include "TOVPlatform/TOVSynchronizationInstruments.h"

#include <TOVPlatform/TOVThread.h>

#include <atomic>
#include <memory>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
constexpr int THREADS = 8;
constexpr int TURNS = 1000; // of each thread

// Locks a mutex in the way of the turn.
void LockSomehow(unsigned long long hMutex, int nTurn)
{
    switch (nTurn % 6)
    {
    case 0:
        Mutex::Lock(hMutex);
        break;
    case 1:
        while (Mutex::IsLocked(hMutex))
            std::this_thread::yield();
        break;
    case 2:
        while (!Event::TimedWait(hMutex, 1))
        {
        }
        break;
    case 3:
        EXPECT_EQ(0, WaitForAny({hMutex}));
        break;
    case 4:
        EXPECT_EQ(0, WaitForAll({hMutex}));
        break;
    default:
        Event::Wait(hMutex);
        break;
    }
}

// Threads that raise a plain number under a lock: none of them gets in the way of another.
void ExpectCounted(const std::function<void(int nTurn)>& fnLock, const std::function<void()>& fnUnlock)
{
    int nCount = 0;
    CThreadGroup oThreads;
    oThreads.Start(THREADS, [&](int nThread) {
        for (int nTurn = 0; nTurn < TURNS; ++nTurn)
        {
            fnLock(nTurn + nThread);
            const int nBefore = nCount;
            if (nTurn % 8 == 0)
                std::this_thread::yield();
            nCount = nBefore + 1;
            fnUnlock();
        }
    });
    oThreads.Join();

    EXPECT_EQ(THREADS * TURNS, nCount);
}
} // namespace

TEST(TOVPlatformContentionTest, AMutexProtectsAPlainNumber)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));

    ExpectCounted([&](int nTurn) { LockSomehow(hMutex, nTurn); }, [&] { Mutex::Unlock(hMutex); });

    EXPECT_FALSE(IsLockedForOthers(hMutex));
}

TEST(TOVPlatformContentionTest, AMutexLockedRepeatedlyProtectsAPlainNumber)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    int nCount = 0;
    CThreadGroup oThreads;
    oThreads.Start(THREADS, [&](int nThread) {
        for (int nTurn = 0; nTurn < TURNS; ++nTurn)
        {
            const int nLevels = 1 + (nTurn + nThread) % 3;
            for (int nLevel = 0; nLevel < nLevels; ++nLevel)
            {
                LockSomehow(hMutex, nTurn + nLevel);
                ++nCount;
            }
            for (int nLevel = 0; nLevel < nLevels; ++nLevel)
            {
                --nCount;
                Mutex::Unlock(hMutex);
            }
        }
    });
    oThreads.Join();

    EXPECT_EQ(0, nCount);
    EXPECT_FALSE(IsLockedForOthers(hMutex));
}

TEST(TOVPlatformContentionTest, AnAutomaticEventServesAsALock)
{
    const COwnHandle hEvent(Event::Create(false, true, nullptr));

    ExpectCounted([&](int) { Event::Wait(hEvent); }, [&] { Event::Signal(hEvent); });

    EXPECT_EQ(1, Drain(hEvent));
}

TEST(TOVPlatformContentionTest, ASemaphoreAdmitsNoMoreThanItsCount)
{
    const int nBound = 3;
    const COwnHandle hSemaphore(Semaphore::Create(nBound, nBound, nullptr));
    std::atomic<int> nInside(0);
    std::atomic<int> nMost(0);
    CThreadGroup oThreads;
    oThreads.Start(THREADS, [&](int nThread) {
        for (int nTurn = 0; nTurn < TURNS; ++nTurn)
        {
            if ((nTurn + nThread) % 2 == 0)
                Semaphore::Lock(hSemaphore);
            else
                while (!Semaphore::TryLock(hSemaphore, nTurn % 3))
                    std::this_thread::yield();
            const int nNow = ++nInside;
            int nSeen = nMost;
            while (nNow > nSeen && !nMost.compare_exchange_weak(nSeen, nNow))
            {
            }
            if (nTurn % 4 == 0)
                std::this_thread::yield();
            --nInside;
            const long lBefore = Semaphore::Unlock(hSemaphore, 1);
            EXPECT_LE(0, lBefore);
            EXPECT_GT(nBound, lBefore);
        }
    });
    oThreads.Join();

    EXPECT_GE(nBound, nMost);
    EXPECT_EQ(nBound, Drain(hSemaphore));
}

TEST(TOVPlatformContentionTest, UnitsOfASemaphoreAreNeitherLostNorDoubled)
{
    const COwnHandle hSemaphore(Semaphore::Create(0, THREADS * TURNS, nullptr));
    std::atomic<int> nTaken(0);
    std::atomic<int> nRefused(0);
    CThreadGroup oThreads;
    oThreads.Start(THREADS, [&](int nThread) {
        for (int nTurn = 0; nTurn < TURNS; ++nTurn)
        {
            if (nThread % 2 == 0)
                Semaphore::Unlock(hSemaphore, 1);
            else if (Semaphore::TryLock(hSemaphore, nTurn % 2))
                ++nTaken;
            else
                ++nRefused;
        }
    });
    oThreads.Join();

    EXPECT_EQ(THREADS / 2 * TURNS, nTaken + nRefused);
    EXPECT_EQ(THREADS / 2 * TURNS, nTaken + Drain(hSemaphore));
}

TEST(TOVPlatformContentionTest, EachSignalReleasesAtMostOneWait)
{
    const COwnHandle hEvent(Event::Create(false, false, nullptr));
    std::atomic<int> nSignals(0);
    std::atomic<int> nReleases(0);
    std::atomic<bool> bOver(false);
    CThreadGroup oWaiters;
    oWaiters.Start(THREADS, [&](int nThread) {
        while (!bOver)
        {
            const bool bReleased =
                nThread % 2 == 0 ? Event::TimedWait(hEvent, nThread % 4) : WaitForAny({hEvent}, nThread % 4) == 0;
            if (bReleased)
            {
                // Counted before, so at each moment there are at least as many signals as releases.
                const int nSoFar = ++nReleases;
                EXPECT_GE(nSignals, nSoFar);
            }
        }
    });
    while (nReleases < TURNS)
    {
        ++nSignals;
        Event::Signal(hEvent);
        if (nSignals % 4 == 0)
            std::this_thread::yield();
    }
    bOver = true;
    oWaiters.Join();

    EXPECT_GE(nSignals, nReleases + Drain(hEvent));
}

TEST(TOVPlatformContentionTest, EachSignalOfManyEventsIsTakenOnce)
{
    // An event is signalled again only when its signal has been taken, so no two signals can merge.
    const int nEvents = 64;
    tHandles aEvents;
    std::vector<std::unique_ptr<std::atomic<int>>> aOutstanding;
    for (int nEvent = 0; nEvent < nEvents; ++nEvent)
    {
        aEvents.push_back(Event::Create(false, false, nullptr));
        aOutstanding.push_back(std::make_unique<std::atomic<int>>(0));
    }
    std::atomic<int> nTaken(0);
    std::atomic<int> nGiven(0);
    std::atomic<bool> bOver(false);
    CThreadGroup oWaiters;
    oWaiters.Start(4, [&](int) {
        for (;;)
        {
            const bool bLast = bOver;
            const int nIndex = WaitForAny(aEvents, 10);
            if (nIndex == -2 && bLast)
                return;
            if (nIndex == -2)
                continue;
            ++nTaken;
            EXPECT_EQ(0, --*aOutstanding[static_cast<std::size_t>(nIndex)]) << nIndex;
        }
    });
    for (int nTurn = 0; nTurn < TURNS * 4; ++nTurn)
    {
        const std::size_t nEvent = static_cast<std::size_t>(nTurn * 37 % nEvents);
        int nFree = 0;
        if (aOutstanding[nEvent]->compare_exchange_strong(nFree, 1))
        {
            ++nGiven;
            Event::Signal(aEvents[nEvent]);
        }
    }
    bOver = true;
    oWaiters.Join();

    EXPECT_EQ(nGiven, nTaken);
    for (const unsigned long long hEvent : aEvents)
    {
        EXPECT_EQ(0, Drain(hEvent));
        Event::Destroy(hEvent);
    }
}

TEST(TOVPlatformContentionTest, AManualEventLetsEveryWaiterOfARoundGo)
{
    const int nRounds = 50;
    const COwnHandle hOdd(Event::Create(true, false, nullptr));
    const COwnHandle hEven(Event::Create(true, false, nullptr));
    CTally oArrived;
    CThreadGroup oThreads;
    oThreads.Start(THREADS, [&](int nThread) {
        for (int nRound = 0; nRound < nRounds; ++nRound)
        {
            oArrived.Add();
            const unsigned long long hEvent = nRound % 2 == 0 ? hEven : hOdd;
            if (nThread % 2 == 0)
                Event::Wait(hEvent);
            else
                EXPECT_EQ(0, WaitForAll({hEvent}));
        }
    });
    for (int nRound = 0; nRound < nRounds; ++nRound)
    {
        ASSERT_TRUE(oArrived.Reaches((nRound + 1) * THREADS));
        Event::Reset(nRound % 2 == 0 ? hOdd : hEven);
        Event::Signal(nRound % 2 == 0 ? hEven : hOdd);
    }
    oThreads.Join();
}

namespace
{
// Forks between philosophers: mutexes and semaphores in turn. Each philosopher takes the two beside him at once.
class CTable
{
public:
    // Without a name the forks are unnamed; with one they are shared by all tables of that name.
    explicit CTable(const std::string& sName)
    {
        for (int nFork = 0; nFork < THREADS; ++nFork)
        {
            const std::string sFork = sName.empty() ? sName : sName + std::to_string(nFork);
            m_aForks.push_back(nFork % 2 == 0 ? Mutex::Create(false, sFork.c_str())
                                              : Semaphore::Create(1, 1, sFork.c_str()));
        }
    }

    ~CTable()
    {
        for (const unsigned long long hFork : m_aForks)
            Event::Destroy(hFork);
    }

    CTable(const CTable&) = delete;
    CTable& operator=(const CTable&) = delete;

    // Either fork may be named first.
    void Eat(int nPhilosopher, int nMeals, std::vector<int>& aUses)
    {
        const std::size_t nLeft = static_cast<std::size_t>(nPhilosopher);
        const std::size_t nRight = static_cast<std::size_t>((nPhilosopher + 1) % THREADS);
        for (int nMeal = 0; nMeal < nMeals; ++nMeal)
        {
            const bool bLeftFirst = nMeal % 4 < 2;
            const tHandles aBoth = {m_aForks[bLeftFirst ? nLeft : nRight], m_aForks[bLeftFirst ? nRight : nLeft]};
            int nResult = -2;
            while (nResult == -2)
                nResult = WaitForAll(aBoth, nMeal % 2 == 0 ? -1 : 1);
            EXPECT_LE(0, nResult);
            ++aUses[nLeft];
            std::this_thread::yield();
            ++aUses[nRight];
            PutBack(nLeft);
            PutBack(nRight);
        }
    }

    bool IsComplete() const { return WaitForAll(m_aForks, 0) >= 0; }

private:
    void PutBack(std::size_t nFork)
    {
        if (nFork % 2 == 0)
            Mutex::Unlock(m_aForks[nFork]);
        else
            EXPECT_EQ(0, Semaphore::Unlock(m_aForks[nFork], 1));
    }

    tHandles m_aForks;
};
} // namespace

TEST(TOVPlatformContentionTest, PhilosophersWhoTakeBothForksAtOnceAllEat)
{
    const int nMeals = TURNS / 5;
    for (const std::string& sName : {std::string(), UniqueName()})
    {
        CTable oTable(sName);
        std::vector<int> aUses(THREADS, 0); // each under its fork
        CThreadGroup oPhilosophers;
        oPhilosophers.Start(THREADS, [&](int nPhilosopher) { oTable.Eat(nPhilosopher, nMeals, aUses); });
        oPhilosophers.Join();

        EXPECT_EQ(std::vector<int>(THREADS, 2 * nMeals), aUses) << sName;
        EXPECT_TRUE(oTable.IsComplete()) << sName;
    }
}

TOV_CHILD(EatsAtNamedTable)
{
    CTable oTable(aArguments[0]);
    std::vector<int> aUses(THREADS, 0);
    CThreadGroup oPhilosophers;
    oPhilosophers.Start(THREADS, [&](int nPhilosopher) { oTable.Eat(nPhilosopher, TURNS / 20, aUses); });
}

TEST(TOVPlatformContentionTest, PhilosophersOfSeveralProcessesAllEat)
{
    const std::string sName = UniqueName();
    const CTable oTable(sName);
    CThreadGroup oThreads;
    oThreads.Start(3, [&](int) { EXPECT_EQ(0, RunChild("EatsAtNamedTable", {sName}).nExitCode); });
    oThreads.Join();

    EXPECT_TRUE(oTable.IsComplete());
}

TEST(TOVPlatformContentionTest, WaitsForAllAndForAnyShareTheirObjectsFairlyInSum)
{
    const int nUnits = 4;
    const tHandles aSemaphores = {Semaphore::Create(nUnits, nUnits, nullptr),
                                  Semaphore::Create(nUnits, nUnits, nullptr),
                                  Semaphore::Create(nUnits, nUnits, nullptr)};
    CThreadGroup oThreads;
    oThreads.Start(THREADS, [&](int nThread) {
        for (int nTurn = 0; nTurn < TURNS; ++nTurn)
        {
            const long lTime = nTurn % 3 - 1;
            const bool bAll = (nTurn + nThread) % 2 == 0;
            const int nResult = bAll ? WaitForAll(aSemaphores, lTime) : WaitForAny(aSemaphores, lTime);
            if (nResult == -2)
                continue;
            for (int nSemaphore = 0; nSemaphore < 3; ++nSemaphore)
            {
                if (bAll || nSemaphore == nResult)
                    Semaphore::Unlock(aSemaphores[static_cast<std::size_t>(nSemaphore)], 1);
            }
        }
    });
    oThreads.Join();

    for (const unsigned long long hSemaphore : aSemaphores)
    {
        EXPECT_EQ(nUnits, Drain(hSemaphore));
        Semaphore::Destroy(hSemaphore);
    }
}

TEST(TOVPlatformContentionTest, EveryDeathOfAnOwnerIsToldOnce)
{
    const int nOwners = 60;
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    int nTold = 0; // under the mutex
    CThreadGroup oOwners;
    oOwners.Start(nOwners, [&](int) {
        const int nResult = WaitForAny({hMutex});
        EXPECT_TRUE(nResult == 0 || nResult == 0x80) << nResult;
        nTold += nResult == 0x80 ? 1 : 0;
    });
    oOwners.Join();

    EXPECT_EQ(0x80, WaitForAny({hMutex}));
    EXPECT_EQ(nOwners - 1, nTold) << "all but the first";
    Mutex::Unlock(hMutex);
}

TEST(TOVPlatformContentionTest, ObjectsComeAndGoWhileOthersAreInUse)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    int nCount = 0;
    CThreadGroup oThreads;
    oThreads.Start(THREADS, [&](int nThread) {
        for (int nTurn = 0; nTurn < TURNS; ++nTurn)
        {
            const COwnHandle hOwn(Event::Create(nThread % 2 == 0, true, nullptr));
            EXPECT_LE(0, WaitForAll({hOwn, hMutex}));
            ++nCount;
            Mutex::Unlock(hMutex);
            EXPECT_EQ(nThread % 2 == 0, TakesNow(hOwn));
        }
    });
    oThreads.Join();

    EXPECT_EQ(THREADS * TURNS, nCount);
}

TEST(TOVPlatformContentionTest, NamedObjectsComeAndGoInManyThreads)
{
    const std::string sName = UniqueName();
    int nCount = 0;
    CThreadGroup oThreads;
    oThreads.Start(THREADS, [&](int) {
        for (int nTurn = 0; nTurn < TURNS / 4; ++nTurn)
        {
            const COwnHandle hMutex(Mutex::Create(false, sName.c_str()));
            Mutex::Lock(hMutex);
            ++nCount;
            Mutex::Unlock(hMutex);
        }
    });
    oThreads.Join();

    EXPECT_EQ(THREADS * (TURNS / 4), nCount);
}

TEST(TOVPlatformContentionTest, ACriticalSectionProtectsAPlainNumber)
{
    const unsigned long long hSection = CriticalSection::Create(2000);
    int nCount = 0;
    CThreadGroup oThreads;
    oThreads.Start(THREADS, [&](int nThread) {
        for (int nTurn = 0; nTurn < TURNS * 5; ++nTurn)
        {
            const int nLevels = 1 + (nTurn + nThread) % 3;
            for (int nLevel = 0; nLevel < nLevels; ++nLevel)
                CriticalSection::Enter(hSection);
            ++nCount;
            for (int nLevel = 0; nLevel < nLevels; ++nLevel)
                CriticalSection::Leave(hSection);
        }
    });
    oThreads.Join();

    EXPECT_EQ(THREADS * TURNS * 5, nCount);
    CriticalSection::Destroy(hSection);
}

TEST(TOVPlatformContentionTest, ThreadsStartAndEndInManyThreads)
{
    static std::atomic<int> s_nRun;
    s_nRun = 0;
    const Thread::tThreadEntry pEntry = [](unsigned long long) -> unsigned long {
        ++s_nRun;
        return 0;
    };
    CThreadGroup oStarters;
    oStarters.Start(THREADS, [&](int) {
        tHandles aThreads;
        for (int nThread = 0; nThread < 16; ++nThread)
            aThreads.push_back(Thread::Create(pEntry, nullptr, nullptr));
        EXPECT_LE(0, WaitForAll(aThreads));
    });
    oStarters.Join();

    EXPECT_EQ(THREADS * 16, s_nRun);
}
