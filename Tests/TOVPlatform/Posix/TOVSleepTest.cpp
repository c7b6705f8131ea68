// Who waits sleeps: no polling, seen by how often the system has switched to the waiting thread.
#include "Support/TOVBlockableThread.h"
#include "Support/TOVWaitInstruments.h"

#include <TOVPlatform/TOVThread.h>

#include <sys/resource.h>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

namespace
{
// A poll each millisecond would come to 500 here, and each signal of many may wake a waiter.
constexpr long FEW = 200;

long SwitchesOfThisThread()
{
    rusage oUsage;
    return ::getrusage(RUSAGE_THREAD, &oUsage) == 0 ? oUsage.ru_nvcsw + oUsage.ru_nivcsw : 1000000;
}

class TOVPlatformSleepTest : public testing::Test
{
protected:
    // The action waits for half a second at least, until it is let go.
    static void ExpectSleep(const std::function<void()>& fnWait, const std::function<void()>& fnLetGo)
    {
        long lSwitches = 0;
        CBlockableThread oWaiter([&] {
            const long lBefore = SwitchesOfThisThread();
            fnWait();
            lSwitches = SwitchesOfThisThread() - lBefore;
        });
        for (int nTurn = 0; nTurn < 5; ++nTurn)
            EXPECT_TRUE(oWaiter.IsBlocked());

        fnLetGo();

        ASSERT_TRUE(oWaiter.Finishes());
        EXPECT_GT(FEW, lSwitches);
    }

    // 64 objects, the last of which is an event without a signal. With names only if so asked.
    static tHandles Objects(const std::string& sName)
    {
        tHandles aObjects;
        for (int nObject = 0; nObject < 64; ++nObject)
        {
            const std::string sObject = sName.empty() ? sName : sName + std::to_string(nObject);
            aObjects.push_back(Event::Create(true, false, sObject.c_str()));
        }
        return aObjects;
    }

    static void ExpectSleepForMany(const tHandles& aObjects)
    {
        ExpectSleep([&] { EXPECT_EQ(63, WaitForAny(aObjects)); }, [&] { Event::Signal(aObjects[63]); });
        Event::Reset(aObjects[63]);
        ExpectSleep([&] { EXPECT_LE(0, WaitForAll(aObjects)); },
                    [&] {
                        for (const unsigned long long hObject : aObjects)
                            Event::Signal(hObject);
                    });
        for (const unsigned long long hObject : aObjects)
            Event::Destroy(hObject);
    }
};
} // namespace

TEST_F(TOVPlatformSleepTest, WaitsForAnEventWithoutPolling)
{
    const COwnHandle hEvent(Event::Create(false, false, nullptr));
    const auto fnSignal = [&] { Event::Signal(hEvent); };

    ExpectSleep([&] { Event::Wait(hEvent); }, fnSignal);
    ExpectSleep([&] { EXPECT_TRUE(Event::TimedWait(hEvent, DEADLINE)); }, fnSignal);
}

TEST_F(TOVPlatformSleepTest, WaitsForAMutexWithoutPolling)
{
    for (const std::string& sName : {std::string(), UniqueName()})
    {
        const COwnHandle hMutex(Mutex::Create(true, sName.c_str()));
        ExpectSleep(
            [&] {
                Mutex::Lock(hMutex);
                Mutex::Unlock(hMutex);
            },
            [&] { Mutex::Unlock(hMutex); });
    }
}

TEST_F(TOVPlatformSleepTest, WaitsForASemaphoreWithoutPolling)
{
    for (const std::string& sName : {std::string(), UniqueName()})
    {
        const COwnHandle hSemaphore(Semaphore::Create(0, 1, sName.c_str()));
        ExpectSleep([&] { Semaphore::Lock(hSemaphore); }, [&] { Semaphore::Unlock(hSemaphore, 1); });
    }
}

TEST_F(TOVPlatformSleepTest, WaitsForACriticalSectionWithoutPolling)
{
    const unsigned long long hSection = CriticalSection::Create(2000);
    CriticalSection::Enter(hSection);

    ExpectSleep(
        [&] {
            CriticalSection::Enter(hSection);
            CriticalSection::Leave(hSection);
        },
        [&] { CriticalSection::Leave(hSection); });

    CriticalSection::Destroy(hSection);
}

TEST_F(TOVPlatformSleepTest, WaitsForManyObjectsWithoutPolling)
{
    ExpectSleepForMany(Objects(""));
}

TEST_F(TOVPlatformSleepTest, WaitsForManyNamedObjectsWithoutPolling)
{
    ExpectSleepForMany(Objects(UniqueName()));
}

TEST_F(TOVPlatformSleepTest, WaitsForObjectsWithAndWithoutNameWithoutPolling)
{
    tHandles aObjects = Objects(UniqueName());
    for (std::size_t nObject = 0; nObject < 64; nObject += 2)
    {
        Event::Destroy(aObjects[nObject]);
        aObjects[nObject] = Event::Create(true, false, nullptr);
    }

    ExpectSleepForMany(aObjects);
}
