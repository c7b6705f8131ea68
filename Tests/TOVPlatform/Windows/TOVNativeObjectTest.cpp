// The native side of handles, priorities and exit codes.
#include "Support/TOVNativeThread.h"
#include "Support/TOVWaitInstruments.h"

#include <TOVPlatform/TOVThread.h>

#include <windows.h>

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
HANDLE ToNative(unsigned long long hObject)
{
    return reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(static_cast<LONG>(hObject)));
}

unsigned long long FromNative(HANDLE hObject)
{
    return static_cast<unsigned long long>(static_cast<long long>(reinterpret_cast<LONG_PTR>(hObject)));
}

unsigned long ReturnTwelve(unsigned long long)
{
    return 12;
}

unsigned long ExitAsTold(unsigned long long ullCode)
{
    Thread::Exit(static_cast<int>(ullCode));
}

unsigned long AwaitEvent(unsigned long long ullEvent)
{
    Event::TimedWait(*reinterpret_cast<const unsigned long long*>(static_cast<std::uintptr_t>(ullEvent)), DEADLINE);
    return 0;
}

DWORD ExitCodeOf(unsigned long long hThread)
{
    EXPECT_TRUE(Event::TimedWait(hThread, DEADLINE));
    DWORD dwCode = 0;
    EXPECT_TRUE(::GetExitCodeThread(ToNative(hThread), &dwCode));
    return dwCode;
}
} // namespace

TEST(TOVPlatformNativeObjectTest, IsReachedByTheLowHalfOfAHandle)
{
    const COwnHandle hEvent(Event::Create(true, true, nullptr));
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    const COwnHandle hSemaphore(Semaphore::Create(2, 2, nullptr));
    const unsigned long long ullHigh = 0xABCDEF0100000000;

    EXPECT_EQ(0, WaitForAny({(hEvent & 0xFFFFFFFF) | ullHigh}, 0));
    EXPECT_FALSE(Mutex::IsLocked((hMutex & 0xFFFFFFFF) | ullHigh));
    Mutex::Unlock((hMutex & 0xFFFFFFFF) | ullHigh);
    EXPECT_FALSE(IsLockedForOthers(hMutex));
    EXPECT_TRUE(Semaphore::TryLock((hSemaphore & 0xFFFFFFFF) | ullHigh, 0));
    EXPECT_EQ(1, Semaphore::Unlock((hSemaphore & 0xFFFFFFFF) | ullHigh, 1));
}

TEST(TOVPlatformNativeObjectTest, IsTheSystemsOwnUnderItsHandle)
{
    const COwnHandle hEvent(Event::Create(false, false, nullptr));

    EXPECT_TRUE(::SetEvent(ToNative(hEvent)));
    EXPECT_TRUE(Event::TimedWait(hEvent, 0));
    Event::Signal(hEvent);
    EXPECT_EQ(WAIT_OBJECT_0, ::WaitForSingleObject(ToNative(hEvent), 0));
}

TEST(TOVPlatformNativeObjectTest, MayBeMadeBySomebodyElse)
{
    const COwnHandle hEvent(FromNative(::CreateEventA(nullptr, TRUE, TRUE, nullptr)));

    EXPECT_EQ(0, WaitForAny({hEvent}, 0));
    Event::Reset(hEvent);
    EXPECT_EQ(-2, WaitForAny({hEvent}, 0));
}

TEST(TOVPlatformNativeObjectTest, HasTheNameThatItWasGiven)
{
    const std::string sName = UniqueName();
    const COwnHandle hEvent(Event::Create(true, false, sName.c_str()));
    const COwnHandle hSame(FromNative(::OpenEventA(EVENT_ALL_ACCESS, FALSE, sName.c_str())));

    Event::Signal(hSame);

    EXPECT_TRUE(TakesNow(hEvent));
}

TEST(TOVPlatformNativeThreadTest, HasThePrioritiesOfTheTable)
{
    const COwnHandle hMayEnd(Event::Create(true, false, nullptr));
    unsigned long long hPassed = hMayEnd;
    const unsigned long long hThread = Thread::Create(&AwaitEvent, &hPassed, nullptr);
    const struct
    {
        int nSet;
        int nNative;
    } aRows[] = {{0, -2}, {1, 0}, {2, 2}, {3, 15}, {7, 0}};
    for (const auto& oRow : aRows)
    {
        Thread::SetPriority(hThread, static_cast<Thread::eThreadPriority>(oRow.nSet));
        EXPECT_EQ(oRow.nNative, ::GetThreadPriority(ToNative(hThread))) << oRow.nSet;
    }

    Event::Signal(hMayEnd);
    EXPECT_TRUE(Event::TimedWait(hThread, DEADLINE));
}

TEST(TOVPlatformNativeThreadTest, ReadsThePrioritiesOfTheTable)
{
    const COwnHandle hMayEnd(Event::Create(true, false, nullptr));
    unsigned long long hPassed = hMayEnd;
    const unsigned long long hThread = Thread::Create(&AwaitEvent, &hPassed, nullptr);
    const struct
    {
        int nNative;
        int nRead;
    } aRows[] = {{-2, 0}, {0, 1}, {2, 2}, {15, 3}, {1, -1}, {-1, -1}, {-15, -1}};
    for (const auto& oRow : aRows)
    {
        EXPECT_TRUE(::SetThreadPriority(ToNative(hThread), oRow.nNative));
        EXPECT_EQ(oRow.nRead, Thread::GetPriority(hThread)) << oRow.nNative;
    }

    Event::Signal(hMayEnd);
    EXPECT_TRUE(Event::TimedWait(hThread, DEADLINE));
}

TEST(TOVPlatformNativeThreadTest, EndsWithTheExitCodeThatItWasGiven)
{
    EXPECT_EQ(12u, ExitCodeOf(Thread::Create(&ReturnTwelve, nullptr, nullptr)));
    for (const int nCode : {0, 7, -1, 0x7FFFFFFF})
        EXPECT_EQ(static_cast<DWORD>(nCode),
                  ExitCodeOf(Thread::Create(&ExitAsTold, reinterpret_cast<void*>(nCode), nullptr)));
}

TEST(TOVPlatformNativeThreadTest, LeavesItsMutexAbandonedWhenItIsTerminated)
{
    static const COwnHandle s_hMutex(Mutex::Create(false, nullptr));
    static const COwnHandle s_hOwned(Event::Create(false, false, nullptr));
    const COwnHandle hNever(Event::Create(true, false, nullptr));
    unsigned long long hPassed = hNever;
    const Thread::tThreadEntry pEntry = [](unsigned long long ullEvent) -> unsigned long {
        Mutex::Lock(s_hMutex);
        Event::Signal(s_hOwned);
        return AwaitEvent(ullEvent);
    };
    const unsigned long long hThread = Thread::Create(pEntry, &hPassed, nullptr);
    EXPECT_TRUE(Event::TimedWait(s_hOwned, DEADLINE));

    EXPECT_TRUE(::TerminateThread(ToNative(hThread), 1));

    EXPECT_EQ(0x80, WaitForAny({s_hMutex}));
    Mutex::Unlock(s_hMutex);
}
