// Threads, locks, waits and named objects whose system fails.
#include "Faults/Posix/TOVSystemScenarios.h"
#include "Support/TOVBlockableThread.h"

#include <TOVContainers/TOVSafeQueue.h>
#include <TOVPlatform/TOVSynchronization.h>
#include <TOVPlatform/TOVThread.h>
#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVSemaphore.h>
#include <TOVProcess/TOVThread.h>

#include <atomic>
#include <chrono>
#include <pthread.h>
#include <thread>

namespace Synchronization = TOVPlatform::TOVSynchronization;
namespace Thread = TOVPlatform::TOVThread;

using Synchronization::CriticalSection::Enter;
using Synchronization::CriticalSection::Leave;

namespace
{
std::atomic<int> s_nRuns(0);

unsigned long RunOnce(unsigned long long)
{
    ++s_nRuns;
    return 0;
}

unsigned long ExitEarly(unsigned long long)
{
    ++s_nRuns;
    Thread::Exit(0);
}

class CPlainThread : public CTOVThread
{
public:
    unsigned long Run() override
    {
        ++s_nRuns;
        return 0;
    }
};

// A thread of the program does the action, which may have to wait for the release. It is given a moment to fall asleep:
// whether it does changes which calls fail, and not what is expected.
template<class TAction, class TRelease> void BlockAndRelease(const TAction& fnAction, const TRelease& fnRelease)
{
    CBlockableThread oThread(fnAction);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    fnRelease();
    FAULT_EXPECT(oThread.Finishes());
}

void StartThread(Thread::tThreadEntry pfnEntry)
{
    s_nRuns = 0;
    const CStrikes oStrikes;
    unsigned long ulId = 0;
    const tHandle hThread = Thread::Create(pfnEntry, nullptr, &ulId);
    FAULT_EXPECT((hThread == 0) == oStrikes.Of({"pthread_create", "dlopen", "dladdr1", "pthread_key_create"}));
    FAULT_EXPECT((hThread != 0) == (ulId != 0));
    if (hThread == 0)
        return;
    Thread::WaitForExitInfinite(hThread); // may fail
    const CFaultPause oPause;
    Thread::WaitForExitInfinite(hThread);
    FAULT_EXPECT(s_nRuns == 1);
}

// An object with a name, or 0; whether all calls that open one have succeeded.
constexpr std::initializer_list<const char*> OPENING_CALLS = {"shm_open",
                                                              "fstat",
                                                              "flock",
                                                              "flock (EWOULDBLOCK)",
                                                              "ftruncate",
                                                              "posix_fallocate",
                                                              "mmap",
                                                              "pthread_mutexattr_init",
                                                              "pthread_mutexattr_setpshared",
                                                              "pthread_mutexattr_setrobust",
                                                              "pthread_mutex_init"};
} // namespace

tFaultScenarios SystemThreadScenarios()
{
    return {
        {"ThreadStarts", [] { StartThread(&RunOnce); }},
        {"ThreadExits", [] { StartThread(&ExitEarly); }},
        {"ThreadObjectStarts",
         [] {
             s_nRuns = 0;
             CPlainThread oThread;
             const CStrikes oStrikes;
             const bool bStarted = oThread.Start(1, Thread::eThreadPriorityNormal);
             FAULT_EXPECT(bStarted == !oStrikes.Of({"pthread_create", "dlopen", "dladdr1"}));
             const CFaultPause oPause;
             oThread.Stop(true, 0xFFFFFFFF);
             FAULT_EXPECT(s_nRuns == (bStarted ? 1 : 0) && oThread.IsRunning() == bStarted);
         }},
        {"ThreadOfTheProgramExits",
         [] {
             // The state of a std::thread would be lost, as the stack is not unwound.
             pthread_t oThread;
             ::pthread_create(
                 &oThread, nullptr, [](void*) -> void* { Thread::Exit(0); }, nullptr);
             ::pthread_join(oThread, nullptr);
         }},
        {"ThreadEndIsNoticedWithoutMemoryForItsKey",
         [] {
             tHandle hGate = 0;
             {
                 const CFaultPause oPause;
                 hGate = Synchronization::Event::Create(true, false, nullptr);
             }
             static tHandle s_hGate;
             s_hGate = hGate;
             const tHandle hThread = Thread::Create(
                 [](unsigned long long) -> unsigned long {
                     Synchronization::Event::Wait(s_hGate);
                     return 0;
                 },
                 nullptr, nullptr);
             Thread::WaitForExit(hThread, 1);
             Synchronization::Event::Signal(hGate);
             const CFaultPause oPause;
             Thread::WaitForExitInfinite(hThread);
             Synchronization::Event::Destroy(hGate);
         }},
        {"ThreadPriority",
         [] {
             tHandle hThread = 0;
             tHandle hGate = 0;
             {
                 const CFaultPause oPause;
                 hGate = Synchronization::Event::Create(true, false, nullptr);
                 static tHandle s_hGate;
                 s_hGate = hGate;
                 hThread = Thread::Create(
                     [](unsigned long long) -> unsigned long {
                         Synchronization::Event::Wait(s_hGate);
                         return 0;
                     },
                     nullptr, nullptr);
             }
             const CStrikes oStrikes;
             Thread::SetPriority(hThread, Thread::eThreadPriorityLow);
             const Thread::eThreadPriority ePriority = Thread::GetPriority(hThread);
             FAULT_EXPECT(ePriority == Thread::eThreadPriorityLow || oStrikes.Of({"getpriority"}));
             const CFaultPause oPause;
             Synchronization::Event::Signal(hGate);
             Thread::WaitForExitInfinite(hThread);
             Synchronization::Event::Destroy(hGate);
         }},
    };
}

tFaultScenarios SystemLockScenarios()
{
    return {
        {"SectionIsContended",
         [] {
             const tHandle hSection = Synchronization::CriticalSection::Create(0);
             int nEntered = 0;
             Enter(hSection);
             BlockAndRelease(
                 [&] {
                     Enter(hSection);
                     ++nEntered;
                     Leave(hSection);
                 },
                 [&] { Leave(hSection); });
             FAULT_EXPECT(nEntered == 1);
             Synchronization::CriticalSection::Destroy(hSection);
         }},
        {"MutexIsContended",
         [] {
             const tHandle hMutex = Synchronization::Mutex::Create(true, nullptr);
             const CStrikes oStrikes;
             bool bTook = false;
             BlockAndRelease(
                 [&] {
                     const int nResult = Synchronization::Event::MultipleWait(const_cast<tHandle*>(&hMutex), 1, false);
                     bTook = nResult == 0;
                     FAULT_EXPECT(bTook || (nResult == -1 && oStrikes.Of({"futex_wait"})));
                     if (bTook)
                         Synchronization::Mutex::Unlock(hMutex);
                 },
                 [&] { Synchronization::Mutex::Unlock(hMutex); });
             FAULT_EXPECT(!Synchronization::Mutex::IsLocked(hMutex));
             FAULT_EXPECT(Synchronization::Mutex::Destroy(hMutex));
         }},
        {"SemaphoreIsContended",
         [] {
             const tHandle hSemaphore = Synchronization::Semaphore::Create(0, 5, nullptr);
             BlockAndRelease([&] { Synchronization::Semaphore::Lock(hSemaphore); },
                             [&] { FAULT_EXPECT(Synchronization::Semaphore::Unlock(hSemaphore, 2) == 0); });
             FAULT_EXPECT(Synchronization::Semaphore::Destroy(hSemaphore));
         }},
        {"EventIsWaitedFor",
         [] {
             CTOVEvent oEvent;
             BlockAndRelease([&] { oEvent.Wait(); }, [&] { oEvent.Signal(); });
         }},
        {"EventTimesOut",
         [] {
             CTOVEvent oEvent;
             const CStrikes oStrikes;
             const bool bSignalled = oEvent.TimedWait(3);
             FAULT_EXPECT(!bSignalled || oStrikes.Of({"futex_wait"})); // a wait that fails returns true
             oEvent.Signal();
             FAULT_EXPECT(oEvent.TimedWait(0));
         }},
        {"EventsAreWaitedFor",
         [] {
             tHandle ahEvents[3];
             for (tHandle& hEvent : ahEvents)
                 hEvent = Synchronization::Event::Create(false, false, nullptr);
             const CStrikes oStrikes;
             const int nResult = Synchronization::Event::MultipleTimedWait(ahEvents, 3, false, 3);
             FAULT_EXPECT(nResult == -2 || (nResult == -1 && oStrikes.Of({"futex_wait"})));
             BlockAndRelease([&] { Synchronization::Event::MultipleWait(ahEvents, 3, false); },
                             [&] { Synchronization::Event::Signal(ahEvents[1]); });
             for (const tHandle hEvent : ahEvents)
                 FAULT_EXPECT(Synchronization::Event::Destroy(hEvent));
         }},
        {"SafeQueueWakesConsumer",
         [] {
             CTOVSafeQueue<int> oQueue;
             int nTaken = 0;
             BlockAndRelease([&] { nTaken = oQueue.Dequeue(); }, [&] { oQueue.Enqueue(5); });
             FAULT_EXPECT(nTaken == 5 && oQueue.IsEmpty());
         }},
        {"ObjectPassesToAnotherThread",
         [] {
             const tHandle hEvent = Synchronization::Event::Create(true, false, nullptr);
             Synchronization::Event::Signal(hEvent);
             Synchronization::Event::Reset(hEvent);
             BlockAndRelease([&] { Synchronization::Event::Signal(hEvent); }, [] {});
             FAULT_EXPECT(Synchronization::Event::TimedWait(hEvent, 0));
             FAULT_EXPECT(Synchronization::Event::Destroy(hEvent));
         }},
        {"MutexIsAbandoned",
         [] {
             tHandle hMutex = Synchronization::Mutex::Create(false, nullptr);
             const CStrikes oStrikes;
             std::thread([&] { Synchronization::Mutex::Lock(hMutex); }).join();
             const int nResult = Synchronization::Event::MultipleTimedWait(&hMutex, 1, false, 0);
             FAULT_EXPECT(nResult == 0x80 || oStrikes.Of({"pthread_setspecific"}));
             FAULT_EXPECT(Synchronization::Mutex::Destroy(hMutex));
         }},
    };
}

tFaultScenarios SystemNameScenarios()
{
    return {
        {"NamedEventIsOpened",
         [] {
             const CStrikes oStrikes;
             const tHandle hEvent = Synchronization::Event::Create(true, true, FaultName("event"));
             FAULT_EXPECT(hEvent != 0 || oStrikes.Of(OPENING_CALLS));
             const CStrikes oSecond;
             const tHandle hSame = Synchronization::Event::Create(true, false, FaultName("event"));
             FAULT_EXPECT(hSame != 0 || oSecond.Of(OPENING_CALLS));
             FAULT_EXPECT(hSame == 0 || hEvent == 0 || Synchronization::Event::TimedWait(hSame, 0));
             FAULT_EXPECT(Synchronization::Event::Destroy(hSame) == (hSame != 0));
             FAULT_EXPECT(Synchronization::Event::Destroy(hEvent) == (hEvent != 0));
         }},
        {"NamedEventIsForgotten",
         [] {
             Synchronization::Event::Destroy(Synchronization::Event::Create(true, true, FaultName("event")));
             const CFaultPause oPause; // an earlier failure to remove the name leaves nothing in the next object's way
             const tHandle hEvent = Synchronization::Event::Create(true, false, FaultName("event"));
             FAULT_EXPECT(hEvent != 0 && !Synchronization::Event::TimedWait(hEvent, 0));
             FAULT_EXPECT(Synchronization::Event::Destroy(hEvent));
         }},
        {"NamedMutexIsLocked",
         [] {
             const CStrikes oStrikes;
             const tHandle hMutex = Synchronization::Mutex::Create(true, FaultName("mutex"));
             FAULT_EXPECT(hMutex != 0 || oStrikes.Of(OPENING_CALLS));
             Synchronization::Mutex::Lock(hMutex);
             Synchronization::Mutex::Unlock(hMutex);
             Synchronization::Mutex::Unlock(hMutex);
             FAULT_EXPECT(Synchronization::Mutex::Destroy(hMutex) == (hMutex != 0));
         }},
        {"NamedMutexIsAbandoned",
         [] {
             tHandle hMutex = Synchronization::Mutex::Create(false, FaultName("mutex"));
             if (hMutex == 0)
                 return;
             static tHandle s_hMutex;
             s_hMutex = hMutex;
             const CStrikes oStrikes;
             const tHandle hThread = Thread::Create(
                 [](unsigned long long) -> unsigned long {
                     Synchronization::Mutex::Lock(s_hMutex);
                     return 0;
                 },
                 nullptr, nullptr);
             {
                 const CFaultPause oPause;
                 Thread::WaitForExitInfinite(hThread);
             }
             FAULT_EXPECT(Synchronization::Event::MultipleTimedWait(&hMutex, 1, false, 0) == 0x80 || oStrikes.Any());
             Synchronization::Mutex::Unlock(hMutex);
             FAULT_EXPECT(Synchronization::Mutex::Destroy(hMutex));
         }},
        {"NamedSemaphoreIsContended",
         [] {
             const tHandle hSemaphore = Synchronization::Semaphore::Create(0, 3, FaultName("semaphore"));
             if (hSemaphore == 0)
                 return;
             BlockAndRelease([&] { Synchronization::Semaphore::Lock(hSemaphore); },
                             [&] { Synchronization::Semaphore::Unlock(hSemaphore, 1); });
             FAULT_EXPECT(Synchronization::Semaphore::Destroy(hSemaphore));
         }},
        {"NamedAndUnnamedAreWaitedFor",
         [] {
             tHandle ahEvents[2] = {Synchronization::Event::Create(false, false, FaultName("event")),
                                    Synchronization::Event::Create(false, false, nullptr)};
             const CStrikes oStrikes;
             const int nResult = Synchronization::Event::MultipleTimedWait(ahEvents, 2, false, 3);
             FAULT_EXPECT(nResult == -2 ||
                          (nResult == -1 && (ahEvents[0] == 0 || oStrikes.Of({"futex_waitv", "futex_wait"}))));
             for (const tHandle hEvent : ahEvents)
                 FAULT_EXPECT(Synchronization::Event::Destroy(hEvent) == (hEvent != 0));
         }},
        {"NamedSemaphoreIsAnObject",
         [] {
             const CStrikes oStrikes;
             try
             {
                 const CTOVSemaphore oSemaphore(1, 2, FaultName("semaphore"));
                 oSemaphore.Lock();
                 FAULT_EXPECT(oSemaphore.Unlock(1) == 0);
             }
             catch (const TOVDebug::CTOVAssertException&)
             {
                 FAULT_EXPECT(oStrikes.Of(OPENING_CALLS));
             }
         }},
    };
}
