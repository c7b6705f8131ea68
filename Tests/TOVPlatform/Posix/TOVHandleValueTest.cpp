// Handles are values of 64 bits here, all of which count: none names an object by chance.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVWaitInstruments.h"

#include <TOVPlatform/TOVThread.h>

#include <atomic>
#include <random>
#include <set>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
// Every function, with a handle that names nothing.
void ExpectFailures(unsigned long long hObject)
{
    EXPECT_EQ(-1, WaitForAny({hObject}, -1));
    EXPECT_EQ(-1, WaitForAll({hObject}, -1));
    EXPECT_TRUE(Event::TimedWait(hObject, -1));
    EXPECT_TRUE(Mutex::IsLocked(hObject));
    EXPECT_TRUE(Semaphore::TryLock(hObject, -1));
    EXPECT_EQ(0, Semaphore::Unlock(hObject, 1));
    EXPECT_EQ(-1, Thread::GetPriority(hObject));
    Event::Signal(hObject);
    Event::SignalIfClear(hObject);
    Event::Reset(hObject);
    Event::Wait(hObject);
    Mutex::Lock(hObject);
    Mutex::Unlock(hObject);
    Semaphore::Lock(hObject);
    Thread::WaitForExit(hObject, 0xFFFFFFFF);
    Thread::WaitForExitInfinite(hObject);
    Thread::SetPriority(hObject, Thread::eThreadPriorityLow);
    CriticalSection::Enter(hObject);
    CriticalSection::Leave(hObject);
    EXPECT_FALSE(Event::Destroy(hObject));
    EXPECT_FALSE(Mutex::Destroy(hObject));
    EXPECT_FALSE(Semaphore::Destroy(hObject));
    CriticalSection::Destroy(hObject);
}
} // namespace

TEST(TOVPlatformHandleValueTest, IsNotReachedByAHandleThatHadItsPlaceBefore)
{
    tHandles aStale;
    for (int nTurn = 0; nTurn < 1000; ++nTurn)
    {
        aStale.push_back(Event::Create(true, true, nullptr));
        EXPECT_TRUE(Event::Destroy(aStale.back()));
    }
    const COwnHandle hLive(Event::Create(true, true, nullptr));

    for (const unsigned long long hStale : aStale)
        ExpectFailures(hStale);

    EXPECT_TRUE(TakesNow(hLive));
}

TEST(TOVPlatformHandleValueTest, IsNotReachedByAHandleThatDiffersInOneBit)
{
    const COwnHandle hLive(Event::Create(true, true, nullptr));

    for (int nBit = 0; nBit < 64; ++nBit)
    {
        SCOPED_TRACE(nBit);
        ExpectFailures(hLive ^ 1ull << nBit);
    }

    EXPECT_TRUE(TakesNow(hLive));
}

TEST(TOVPlatformHandleValueTest, IsNotReachedByInventedHandles)
{
    std::mt19937_64 oRandom(20021);
    for (int nTurn = 0; nTurn < 20000; ++nTurn)
        ExpectFailures(oRandom() >> (nTurn % 64));
    for (const unsigned long long hEdge : {~0ull, ~0ull - 1, 1ull << 63, 0x100000000ull, 0xFFFFFFFFull})
        ExpectFailures(hEdge);
}

TEST(TOVPlatformHandleValueTest, FailsForAStaleCriticalSection)
{
    const unsigned long long hSection = CriticalSection::Create(2000);
    CriticalSection::Destroy(hSection);

    ExpectFailures(hSection);
}

TEST(TOVPlatformHandleValueTest, IsNoCriticalSectionUnlessItWasMadeAsOne)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    CriticalSection::Enter(hMutex);
    CriticalSection::Destroy(hMutex);

    EXPECT_FALSE(IsLockedForOthers(hMutex));
}

// Windows refuses it as well; its emulation, under which the tests run, takes two handles for two objects.
TEST(TOVPlatformNamedHandleTest, IsRefusedInAWaitForAllWithAnotherOfItsObject)
{
    const std::string sName = UniqueName();
    const COwnHandle hObject(Event::Create(false, true, sName.c_str()));
    const COwnHandle hSame(Event::Create(false, true, sName.c_str()));

    EXPECT_EQ(-1, WaitForAll({hObject, hSame}, 0));
    EXPECT_EQ(0, WaitForAny({hObject, hSame}, 0));
}

TEST(TOVPlatformHandleValueTest, LosesItsMeaningWhileThreadsCompeteForTheObject)
{
    for (int nRound = 0; nRound < 50; ++nRound)
    {
        const unsigned long long hMutex = Mutex::Create(false, nullptr);
        const unsigned long long hSemaphore = Semaphore::Create(1, 1, nullptr);
        std::atomic<int> nTurns(0);
        std::atomic<bool> bOver(false);
        CThreadGroup oThreads;
        oThreads.Start(4, [&](int nThread) {
            while (!bOver)
            {
                const unsigned long long hObject = nThread % 2 == 0 ? hMutex : hSemaphore;
                Event::Wait(hObject);
                ++nTurns;
                Mutex::Unlock(hObject);
                Semaphore::Unlock(hObject, 1);
            }
        });
        while (nTurns < 1000)
            std::this_thread::yield();

        EXPECT_TRUE(Event::Destroy(hMutex));
        EXPECT_TRUE(Event::Destroy(hSemaphore));
        bOver = true;
    }
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(TOVPlatformHandleValueTest, IsZeroForANamedObjectWhereverMemoryRunsOut)
{
    tHandles aPlaces;
    aPlaces.reserve(100000);
    {
        const CAllocationFailure oFailure;
        while (aPlaces.size() < aPlaces.capacity() && (aPlaces.empty() || aPlaces.back() != 0))
            aPlaces.push_back(Event::Create(false, false, nullptr));
    }
    ASSERT_EQ(0ull, aPlaces.back()) << "no place is left";

    const std::string sName = UniqueName();
    int nRefused = 0;
    unsigned long long hEvent = 0;
    for (unsigned long ulSuccesses = 0; hEvent == 0; ++ulSuccesses)
    {
        const CAllocationFailure oFailure(ulSuccesses);
        hEvent = Event::Create(false, true, sName.c_str());
        nRefused += hEvent == 0 ? 1 : 0;
    }
    EXPECT_LT(1, nRefused);
    EXPECT_TRUE(TakesNow(hEvent));
    EXPECT_TRUE(Event::Destroy(hEvent));
    for (const unsigned long long hPlace : aPlaces)
        Event::Destroy(hPlace);
}
#endif
