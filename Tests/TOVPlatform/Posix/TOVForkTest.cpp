// The child of a fork, which has one thread. What the other threads of the parent held comes up free in it.
#include "Support/Posix/TOVForkedChild.h"
#include "Support/TOVBlockableThread.h"
#include "Support/TOVNativeThread.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVWaitInstruments.h"
#include "TOVProcess/TOVScriptedThread.h"

#include <TOVPlatform/TOVFile.h>
#include <TOVProcess/TOVCriticalSection.h>
#include <Timer/TOVTimer.h>

#include <atomic>
#include <csignal>
#include <pthread.h>
#include <thread>

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace File = TOVPlatform::TOVFile;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
constexpr int FORKS = 100;
constexpr int ABANDONED = 0x80; // result of a wait for the first object, whose owner has ended

TOV_PRIVATE_MEMBER(LockOfFiles, File::CTOVHandleManager, CTOVCriticalSection, m_oLock)

bool SearchesTheRoot()
{
    File::sTOVFindData oRecord;
    const unsigned long long hFind = File::FindFirst("/*", &oRecord);
    const bool bNext = File::FindNext(hFind, &oRecord);
    File::FindClose(hFind);
    return bNext;
}

// Does nothing but that, so that the lock is nearly always taken.
void LooksForASearch()
{
    File::sTOVFindData oRecord;
    File::FindNext(0x7FFFFFFF, &oRecord);
}

bool CreatesAnEvent(const char* szName)
{
    const COwnHandle hEvent(Event::Create(true, true, szName));
    return TakesNow(hEvent);
}

bool LetsAWaitRunOut()
{
    const COwnHandle hFirst(Event::Create(false, false, nullptr));
    const COwnHandle hSecond(Event::Create(false, true, nullptr));
    return WaitForAll({hFirst, hSecond}, 1) == -2;
}

// Stays in the first line that it hears, under the debug server's lock, until it is let go.
class CSlowListener : public TOVDebug::ITOVLogListener
{
public:
    CSlowListener() { TOVDebug::CTOVDebugServer::Instance().Register(this); }
    virtual ~CSlowListener() { TOVDebug::CTOVDebugServer::Instance().Unregister(this); }
    CSlowListener(const CSlowListener&) = delete;
    CSlowListener& operator=(const CSlowListener&) = delete;

    void OnStartup() override {}
    void OnClosedown() override {}
    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char*, va_list) override
    {
        if (m_bHeard.exchange(true))
            return;
        m_oEntered.Open();
        m_oMayLeave.Wait();
    }
    void OnAssert(const char*, unsigned long, const char*) override {}
    void OnPanicV(const char*, unsigned long, const char*, va_list) override {}
    void SetApplicationName(const char*) override {}

    CGate m_oEntered;
    CGate m_oMayLeave;

private:
    std::atomic<bool> m_bHeard = {false};
};
} // namespace

TEST(TOVPlatformForkTest, TheTableOfHandlesIsFree)
{
    EXPECT_EQ(FORKS, CountForksAmid(
                         FORKS, [] { CreatesAnEvent(nullptr); }, [] { return CreatesAnEvent(nullptr); }));
}

TEST(TOVPlatformForkTest, TheLockOfTheWaitsIsFree)
{
    EXPECT_EQ(FORKS, CountForksAmid(FORKS, &LetsAWaitRunOut, &LetsAWaitRunOut));
}

namespace
{
// Where the child can start no thread, it is its own witness that no other one has the mutex.
bool IsFreeInChild(unsigned long long hMutex)
{
#if TOV_CAN_FORK_AND_THREAD
    return !IsLockedForOthers(hMutex);
#else
    return TakesNow(hMutex);
#endif
}
} // namespace

TEST(TOVPlatformForkTest, ObjectsForWhichThreadsCompeteAreFreeOrCanBeFreed)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    const COwnHandle hSemaphore(Semaphore::Create(1, 1, nullptr));
    const auto fnCompete = [&] {
        Mutex::Lock(hMutex);
        Mutex::Unlock(hMutex);
        Semaphore::Lock(hSemaphore);
        Semaphore::Unlock(hSemaphore, 1);
    };
    const auto fnInChild = [&] {
        Mutex::Lock(hMutex);
        Mutex::Lock(hMutex);
        Mutex::Unlock(hMutex);
        Mutex::Unlock(hMutex);
        Semaphore::Unlock(hSemaphore, 1); // a unit that another thread had taken does not come back
        return IsFreeInChild(hMutex) && TakesNow(hSemaphore) && !TakesNow(hSemaphore);
    };

    EXPECT_EQ(FORKS, CountForksAmid(FORKS, fnCompete, fnInChild));
}

#if TOV_CAN_FORK_AND_THREAD
namespace
{
std::atomic<bool> s_bStopped(false);
std::atomic<bool> s_bMayGoOn(false);

void StopThread(int)
{
    s_bStopped = true;
    while (!s_bMayGoOn)
        std::this_thread::yield();
}
} // namespace

// The other thread has been woken for the mutex, and is stopped on its way.
TEST(TOVPlatformForkTest, AThreadOnItsWayToAMutexIsForgotten)
{
    s_bStopped = false;
    s_bMayGoOn = false;
    const COwnHandle hMutex(Mutex::Create(true, nullptr));
    std::atomic<pthread_t> oSystemThread;
    const auto fnTakeInTurn = [&] {
        oSystemThread = ::pthread_self();
        Mutex::Lock(hMutex);
        Mutex::Unlock(hMutex);
    };
    CBlockableThread oOnItsWay(fnTakeInTurn);
    ASSERT_TRUE(oOnItsWay.IsBlocked());
    const auto pfBefore = std::signal(SIGUSR1, &StopThread);
    ::pthread_kill(oSystemThread, SIGUSR1);
    while (!s_bStopped)
        std::this_thread::yield();
    Mutex::Unlock(hMutex);

    EXPECT_TRUE(IsTrueInFork([&] {
        Mutex::Lock(hMutex);
        CBlockableThread oOther(fnTakeInTurn);
        const bool bBlocked = oOther.IsBlocked();
        Mutex::Unlock(hMutex);
        return bBlocked && oOther.Finishes();
    }));

    s_bMayGoOn = true;
    EXPECT_TRUE(oOnItsWay.Finishes());
    std::signal(SIGUSR1, pfBefore);
}
#endif

TEST(TOVPlatformForkTest, TheListOfNamedObjectsIsFree)
{
    const std::string sName = UniqueName();
    const COwnHandle hKept(Event::Create(true, true, sName.c_str())); // found by the others
    const auto fnOpen = [&] { return CreatesAnEvent(sName.c_str()); };

    EXPECT_EQ(FORKS, CountForksAmid(FORKS, fnOpen, fnOpen));
}

TEST(TOVPlatformForkTest, TheFileSearchesAreFree)
{
    EXPECT_EQ(FORKS, CountForksAmid(FORKS, &LooksForASearch, &SearchesTheRoot));
}

TEST(TOVPlatformForkTest, ALineCanBeLoggedWhileAListenerIsAtWork)
{
    CSlowListener oListener;
    CBlockableThread oLogger([] { TOVDebug::_Log("file", 1, 0x1, eSeverityInfo, "first"); });
    ASSERT_TRUE(oListener.m_oEntered.Wait());

    EXPECT_TRUE(IsTrueInFork([] { return TOVDebug::_Log("file", 1, 0x1, eSeverityInfo, "second"); }));

    oListener.m_oMayLeave.Open();
    EXPECT_TRUE(oLogger.Finishes());
}

TEST(TOVPlatformForkTest, AFileCanBeOpenedThoughTheTableWasLeftLocked)
{
    CTOVCriticalSection& oLock = LockOfFiles(File::CTOVHandleManager::Instance());
    CWorker oOther;
    oOther.Do([] { EXPECT_CHECK("hHandle != FILE_INVALID_HANDLE", File::Close(FILE_INVALID_HANDLE)); });

    EXPECT_TRUE(IsTrueInFork([] {
        const unsigned long long hFile = File::Open("/proc/self/exe", "rb");
        return hFile != FILE_INVALID_HANDLE && File::Close(hFile) == File::eFileSuccess;
    }));

    oOther.Do([&] { oLock.Leave(); });
}

TEST(TOVPlatformForkTest, ACriticalSectionOfAnotherThreadIsFree)
{
    CTOVCriticalSection oSection;
    CWorker oOwner;
    oOwner.Do([&] { oSection.Enter(); });

    EXPECT_TRUE(IsTrueInFork([&] {
        oSection.Enter();
        oSection.Leave();
        oSection.Enter();
        return true;
    }));

    oOwner.Do([&] { oSection.Leave(); });
}

TEST(TOVPlatformForkTest, AMutexOfAnotherThreadIsAbandoned)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    CWorker oOwner;
    oOwner.Do([&] { Mutex::Lock(hMutex); });

    EXPECT_TRUE(IsTrueInFork([&] {
        const bool bAbandoned = WaitForAny({hMutex}, 0) == ABANDONED;
        Mutex::Unlock(hMutex);
        return bAbandoned && WaitForAny({hMutex}, 0) == 0;
    }));

    EXPECT_EQ(-2, WaitForAny({hMutex}, 0)) << "nothing changes in the parent";
    oOwner.Do([&] { Mutex::Unlock(hMutex); });
}

TEST(TOVPlatformForkTest, AMutexThatNobodyHadIsNotAbandoned)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));

    EXPECT_TRUE(IsTrueInFork([&] { return WaitForAny({hMutex}, 0) == 0; }));
}

TEST(TOVPlatformForkTest, ASignalGoesToAWaitOfTheChild)
{
    const COwnHandle hEvent(Event::Create(false, false, nullptr));
    CBlockableThread oWaiting([&] { Event::Wait(hEvent); });
    ASSERT_TRUE(oWaiting.IsBlocked());

    EXPECT_TRUE(IsTrueInFork([&] {
        Event::Signal(hEvent);
        return TakesNow(hEvent);
    }));

    Event::Signal(hEvent);
    EXPECT_TRUE(oWaiting.Finishes());
}

TEST(TOVPlatformForkTest, ThreadsOfTheParentCountAsEnded)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.m_oEntered.Reaches(1));

    EXPECT_TRUE(IsTrueInFork([&] { return oThread.Stop(true, 0xFFFFFFFF) && oThread.HasEnded(); }));

    EXPECT_FALSE(oThread.HasEnded());
}

TEST(TOVPlatformForkTest, TheForkingThreadGoesOnUnderItsHandle)
{
    bool bGood = false;
    int nBefore = 0;
    int nAfter = 0;
    CScriptedThread oThread;
    oThread.m_fnRun = [&] {
        nBefore = NativePriority({oThread.Handle(), NativeThreadId()});
        bGood = IsTrueInFork([&] {
            oThread.SetPriority(Thread::eThreadPriorityLow);
            return !oThread.HasEnded() && NativePriority({oThread.Handle(), NativeThreadId()}) < nBefore;
        });
        nAfter = NativePriority({oThread.Handle(), NativeThreadId()});
    };
    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());

    EXPECT_TRUE(bGood);
    EXPECT_EQ(nBefore, nAfter) << "the parent's thread is another one";
}

TEST(TOVPlatformForkTest, AGrandchildIsLikeAChild)
{
    CTOVCriticalSection oSection;
    CWorker oOwner;
    oOwner.Do([&] { oSection.Enter(); });

    EXPECT_TRUE(IsTrueInFork([&] {
        return IsTrueInFork([&] {
            oSection.Enter();
            return SearchesTheRoot() && CreatesAnEvent(nullptr);
        });
    }));

    oOwner.Do([&] { oSection.Leave(); });
}

#if TOV_CAN_FORK_AND_THREAD
namespace
{
bool InstallsATimeEvent()
{
    CTally oCalls;
    const auto fnCall = [](unsigned int, unsigned int, unsigned long ulUser, unsigned long, unsigned long) {
        reinterpret_cast<CTally*>(ulUser)->Add();
    };
    CTOVTimer::InstallTimeEvent(1, 0, +fnCall, reinterpret_cast<unsigned long>(&oCalls), 0);
    return oCalls.Reaches(1);
}

void InstallsAndUninstallsATimeEvent()
{
    const auto fnCall = [](unsigned int, unsigned int, unsigned long, unsigned long, unsigned long) {};
    CTOVTimer::UninstallTimeEvent(CTOVTimer::InstallTimeEvent(60000, 0, +fnCall, 0, 0), 60000);
}

} // namespace

// The first call comes before the forks: a thread on its way into life has the locks of the sanitizers' run time.
TEST(TOVPlatformForkTest, TheTimeEventsAreFree)
{
    ASSERT_TRUE(InstallsATimeEvent());

    EXPECT_EQ(FORKS, CountForksAmid(FORKS, &InstallsAndUninstallsATimeEvent, &InstallsATimeEvent));
}

TEST(TOVPlatformForkTest, ACriticalSectionOfItsOwnIsStillItsOwn)
{
    CTOVCriticalSection oSection;
    oSection.Enter();

    EXPECT_TRUE(IsTrueInFork([&] {
        CBlockableThread oOther([&] { oSection.Enter(); });
        const bool bKeptOut = oOther.IsBlocked();
        oSection.Leave();
        return oOther.Finishes() && bKeptOut;
    }));

    oSection.Leave();
}

TEST(TOVPlatformForkTest, AMutexOfItsOwnIsStillItsOwn)
{
    const COwnHandle hMutex(Mutex::Create(true, nullptr));

    EXPECT_TRUE(IsTrueInFork([&] {
        const bool bKeptOut = IsLockedForOthers(hMutex);
        Mutex::Unlock(hMutex);
        return bKeptOut && !IsLockedForOthers(hMutex);
    }));

    Mutex::Unlock(hMutex);
}
#endif

#if TOV_CAN_FORK_AMID_ALLOCATIONS
namespace
{
// Starts an object that deletes itself, and waits for that.
bool RunsAnAutoDeletingThread()
{
    CTally oDeleted;
    CScriptedThread* const pThread = new CScriptedThread(true);
    pThread->m_fnDelete = [&oDeleted] { oDeleted.Add(); };
    return pThread->StartNormally() && oDeleted.Reaches(1);
}
} // namespace

TEST(TOVPlatformForkTest, AnAutoDeletingThreadCanBeStartedAmidOthers)
{
    EXPECT_EQ(FORKS, CountForksAmid(FORKS, &RunsAnAutoDeletingThread, &RunsAnAutoDeletingThread));
}
#endif
