// A thread that waits while another one gives a lock back and takes it again at once.
#include "Support/TOVBlockableThread.h"
#include "TOVPlatform/TOVSynchronizationInstruments.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

namespace
{
constexpr int MANY_TURNS = 40;
constexpr int FEW_TURNS = 6;
constexpr std::chrono::milliseconds TURN(100);

// How often the calling thread had the lock while another one waited for it, which would always come too late.
int CountTurnsDuringAWait(const std::function<void()>& fnLock, const std::function<void()>& fnUnlock)
{
    fnLock();
    std::atomic<bool> bOver(false);
    CBlockableThread oWaiter([&] {
        fnLock();
        bOver = true;
        fnUnlock();
    });
    EXPECT_TRUE(oWaiter.IsBlocked());

    int nTurns = 0;
    for (; !bOver && nTurns < MANY_TURNS; ++nTurns)
    {
        std::this_thread::sleep_for(TURN);
        fnUnlock();
        fnLock();
    }
    fnUnlock();
    EXPECT_TRUE(oWaiter.Finishes());
    return nTurns;
}

// How often of ten times the calling thread could take the lock again at once, though another thread slept for it.
int CountTakenBeforeASleeper(unsigned long long hLock, const std::function<void()>& fnUnlock)
{
    int nTaken = 0;
    for (int i = 0; i < 10; ++i)
    {
        EXPECT_TRUE(TakesNow(hLock));
        CBlockableThread oWaiter([&] {
            EXPECT_TRUE(TOVPlatform::TOVSynchronization::Event::TimedWait(hLock, DEADLINE));
            fnUnlock();
        });
        EXPECT_TRUE(oWaiter.IsBlocked());
        fnUnlock();
        if (TakesNow(hLock))
        {
            ++nTaken;
            fnUnlock();
        }
        EXPECT_TRUE(oWaiter.Finishes());
    }
    return nTaken;
}
} // namespace

TEST(TOVPlatformPatienceTest, ACriticalSectionDoesNotStarveAWaitingThread)
{
    const unsigned long long hSection = CriticalSection::Create(0);

    EXPECT_LE(
        CountTurnsDuringAWait([&] { CriticalSection::Enter(hSection); }, [&] { CriticalSection::Leave(hSection); }),
        FEW_TURNS);

    CriticalSection::Destroy(hSection);
}

TEST(TOVPlatformPatienceTest, AMutexDoesNotStarveAWaitingThread)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));

    EXPECT_LE(CountTurnsDuringAWait([&] { Mutex::Lock(hMutex); }, [&] { Mutex::Unlock(hMutex); }), FEW_TURNS);
}

TEST(TOVPlatformPatienceTest, ASemaphoreDoesNotStarveAWaitingThread)
{
    const COwnHandle hSemaphore(Semaphore::Create(1, 1, nullptr));

    EXPECT_LE(CountTurnsDuringAWait([&] { Semaphore::Lock(hSemaphore); }, [&] { Semaphore::Unlock(hSemaphore, 1); }),
              FEW_TURNS);
}

// A lock that is handed over to a thread which still sleeps serves nobody until that thread runs.
TEST(TOVPlatformPatienceTest, AMutexIsFreeForThreadsThatRunBeforeTheSleeperComes)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));

    EXPECT_GT(CountTakenBeforeASleeper(hMutex, [&] { Mutex::Unlock(hMutex); }), 0);
}

TEST(TOVPlatformPatienceTest, ASemaphoreIsFreeForThreadsThatRunBeforeTheSleeperComes)
{
    const COwnHandle hSemaphore(Semaphore::Create(1, 1, nullptr));

    EXPECT_GT(CountTakenBeforeASleeper(hSemaphore, [&] { Semaphore::Unlock(hSemaphore, 1); }), 0);
}

// The section is free for all again when nobody sleeps who reserved it.
TEST(TOVPlatformPatienceTest, ACriticalSectionThatWasReservedIsFreeAfterwards)
{
    const unsigned long long hSection = CriticalSection::Create(0);
    CriticalSection::Enter(hSection);
    std::vector<std::unique_ptr<CBlockableThread>> aWaiters;
    for (int i = 0; i < 4; ++i)
    {
        aWaiters.push_back(std::make_unique<CBlockableThread>([&] {
            CriticalSection::Enter(hSection);
            CriticalSection::Leave(hSection);
        }));
        EXPECT_TRUE(aWaiters.back()->IsBlocked());
    }
    std::this_thread::sleep_for(3 * TURN);
    CriticalSection::Leave(hSection);
    for (const std::unique_ptr<CBlockableThread>& pWaiter : aWaiters)
        EXPECT_TRUE(pWaiter->Finishes());

    for (int i = 0; i < 3; ++i)
    {
        CriticalSection::Enter(hSection);
        CBlockableThread oNext([&] {
            CriticalSection::Enter(hSection);
            CriticalSection::Leave(hSection);
        });
        EXPECT_TRUE(oNext.IsBlocked());
        CriticalSection::Leave(hSection);
        EXPECT_TRUE(oNext.Finishes());
    }
    CriticalSection::Destroy(hSection);
}
