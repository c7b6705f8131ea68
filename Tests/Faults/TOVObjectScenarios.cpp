// Shared ownership, handles and singletons; threads, locks and events; timers.
#include "Faults/TOVAllocationScenarios.h"
#include "TOVDesignPatterns/TOVHandleInstruments.h"

#include <TOVContainers/TOVArray.h>
#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVDesignPatterns/TOVSmartPointer.h>
#include <TOVPlatform/TOVMemory.h>
#include <TOVPlatform/TOVSynchronization.h>
#include <TOVProcess/TOVCriticalSection.h>
#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVEventCondition.h>
#include <TOVProcess/TOVMutex.h>
#include <TOVProcess/TOVSemaphore.h>
#include <TOVProcess/TOVThread.h>
#include <Timer/TOVTimer.h>

#include <memory>

namespace Synchronization = TOVPlatform::TOVSynchronization;

namespace
{
// A database of one object, which it makes when it is asked for.
class CLazyDatabase : public ITOVHandleDatabase
{
public:
    CTOVHandle GetHandle(long lHandle) override
    {
        m_pObject = new CMortal(m_nDeaths);
        struct sFirstReference
        {
            ~sFirstReference() { p->Release(); }
            CMortal* p;
        } const oFirst = {m_pObject};
        return NewHandle(lHandle, m_pObject);
    }
    CTOVHandle GetHandle(ITOVRefCount* pObject) override { return NewHandle(7, pObject); }
    void RemoveHandle(long) override { ++m_nRemoved; }

    CMortal* m_pObject = nullptr;
    int m_nDeaths = 0;
    int m_nRemoved = 0;
};

struct sSingle
{
    static sSingle& Instance() { return CTOVDynamicSingleton<sSingle>::GetInstance(); }
    int* const pNumber = new int(3);
    ~sSingle() { delete pNumber; }
    sSingle() = default;
    sSingle(const sSingle&) = delete;
    sSingle& operator=(const sSingle&) = delete;
};

class CCountingThread : public CTOVThread
{
public:
    unsigned long Run() override
    {
        m_nRuns = 1;
        return 0;
    }
    int m_nRuns = 0;
};

void OnTime(unsigned int, unsigned int, unsigned long, unsigned long, unsigned long)
{
}
} // namespace

tFaultScenarios PatternScenarios()
{
    return {
        {"SmartPointerTakesObject",
         [] {
             std::unique_ptr<int> pNumber(new int(5));
             CTOVSmartPointer<int> pShared;
             CTOVSmartPointer<int> pOther(pShared);
             const bool bDone = Completes([&] { pShared = pNumber.get(); });
             FAULT_EXPECT(pShared.IsValid() == bDone && pShared.GetRefCount() == (bDone ? 1 : 2));
             if (bDone)
                 pNumber.release();
             FAULT_EXPECT(!pOther.IsValid());
         }},
        {"SmartPointerOfObject",
         [] {
             std::unique_ptr<int> pNumber(new int(5));
             Completes([&] {
                 const CTOVSmartPointer<int> pShared(pNumber.get());
                 pNumber.release();
                 const CTOVSmartPointer<int> pCopy(pShared);
                 FAULT_EXPECT(*pCopy == 5 && pCopy.GetRefCount() == 2);
             });
         }},
        {"HandleFindsObject",
         [] {
             CLazyDatabase oDatabase;
             Completes([&] {
                 CTOVHandle hObject(oDatabase, 3L);
                 CTOVHandle hCopy(hObject);
                 FAULT_EXPECT(hCopy.IsValid() && oDatabase.m_nDeaths == 0);
             });
             FAULT_EXPECT(oDatabase.m_nDeaths == (oDatabase.m_pObject != nullptr ? 1 : 0));
         }},
        {"SingletonIsMade",
         [] {
             const CTOVDynamicSingleton<sSingle> oHolder;
             FAULT_EXPECT(*sSingle::Instance().pNumber == 3);
         }},
        {"SingletonIsMadeAtLast",
         [] {
             Completes([] {
                 const CTOVDynamicSingleton<sSingle> oHolder;
                 FAULT_EXPECT(*sSingle::Instance().pNumber == 3);
             });
             CFaultPause oPause;
             const CTOVDynamicSingleton<sSingle> oHolder; // the count of a failed one stays, and so does the object
             FAULT_EXPECT(*sSingle::Instance().pNumber == 3);
         }},
        {"MemoryIsAllocated",
         [] {
             void* const pBlock = TOVPlatform::TOVMemory::Alloc(100);
             if (pBlock == nullptr)
                 return;
             TOVPlatform::TOVMemory::Set(pBlock, 'x', 100);
             void* const pLarger = TOVPlatform::TOVMemory::Realloc(pBlock, 100000);
             const char* const pText = static_cast<const char*>(pLarger != nullptr ? pLarger : pBlock);
             FAULT_EXPECT(pText[0] == 'x' && pText[99] == 'x');
             TOVPlatform::TOVMemory::Free(pLarger != nullptr ? pLarger : pBlock);
         }},
    };
}

tFaultScenarios ProcessScenarios()
{
    return
    {
        {"EventIsSignalled",
         [] {
             CTOVEvent oEvent(true);
             oEvent.Signal();
             FAULT_EXPECT(oEvent.TimedWait(0)); // also without a handle
             oEvent.Reset();
             FAULT_EXPECT(oEvent.GetHandle() == 0 || !oEvent.TimedWait(0));
         }},
            {"NamedObjectsAreOpened",
             [] {
                 const tHandle hEvent = Synchronization::Event::Create(true, true, FaultName("event"));
                 const tHandle hSame = Synchronization::Event::Create(true, false, FaultName("event"));
                 const tHandle hMutex = Synchronization::Mutex::Create(true, FaultName("mutex"));
                 const tHandle hSemaphore = Synchronization::Semaphore::Create(1, 3, FaultName("semaphore"));
                 FAULT_EXPECT(hSame == 0 || hEvent == 0 || Synchronization::Event::TimedWait(hSame, 0));
                 FAULT_EXPECT(hMutex == 0 || !Synchronization::Mutex::IsLocked(hMutex));
                 FAULT_EXPECT(hSemaphore == 0 || Synchronization::Semaphore::Unlock(hSemaphore, 1) == 1);
                 Synchronization::Mutex::Unlock(hMutex);
                 Synchronization::Mutex::Unlock(hMutex);
                 FAULT_EXPECT(Synchronization::Event::Destroy(hEvent) == (hEvent != 0));
                 FAULT_EXPECT(Synchronization::Event::Destroy(hSame) == (hSame != 0));
                 FAULT_EXPECT(Synchronization::Mutex::Destroy(hMutex) == (hMutex != 0));
                 FAULT_EXPECT(Synchronization::Semaphore::Destroy(hSemaphore) == (hSemaphore != 0));
             }},
            {"LocksAreTaken",
             [] {
                 CompletesOrFailsACheck([] {
                     const CTOVMutex oMutex;
                     oMutex.Lock();
                     FAULT_EXPECT(!oMutex.IsLocked());
                     oMutex.Unlock();
                     oMutex.Unlock();
                 });
                 CompletesOrFailsACheck([] {
                     const CTOVSemaphore oSemaphore(1, 2);
                     oSemaphore.Lock();
                     FAULT_EXPECT(!oSemaphore.TryLock(0) && oSemaphore.Unlock(2) == 0);
                 });
                 CompletesOrFailsACheck([] {
                     const CTOVCriticalSection oSection;
                     oSection.Enter();
                     oSection.Leave();
                 });
             }},
            {"ConditionWaitsForEvents",
             [] {
                 CTOVEvent aEvents[3] = {CTOVEvent(true), CTOVEvent(true), CTOVEvent(true)};
                 for (CTOVEvent& oEvent : aEvents)
                     oEvent.Signal();
                 CompletesOrFailsACheck([&] {
                     CTOVEventCondition oCondition(CTOVEventCondition::eConditionTypeAll, aEvents, 3);
                     FAULT_EXPECT(oCondition.TimedWait(0) != -2);
                 });
             }},
            {"ConditionWaitsForManyEvents",
             [] {
                 CTOVEvent aEvents[40];
                 aEvents[39].Signal();
                 CompletesOrFailsACheck([&] {
                     CTOVEventCondition oCondition(CTOVEventCondition::eConditionTypeAny, aEvents, 40);
                     FAULT_EXPECT(oCondition.TimedWait(0) != 0);
                 });
             }},
#if !TOV_SYSTEM_WINDOWS // there, the release of a block by a new thread is not counted
            {"ThreadRuns", [] {
                 CCountingThread oThread;
                 const bool bStarted = oThread.Start(1, TOVPlatform::TOVThread::eThreadPriorityNormal);
                 oThread.Stop(true, 0xFFFFFFFF);
                 FAULT_EXPECT(oThread.m_nRuns == (bStarted ? 1 : 0) && oThread.IsRunning() == bStarted);
             }},
#endif
    };
}

tFaultScenarios TimerScenarios()
{
    return {
        {"TimerDefinesChannel",
         [] {
             CTOVTimer oTimer;
             const bool bDone = Completes([&] { oTimer.DefineChannel(1, "a channel with a long name, and longer"); });
             FAULT_EXPECT(oTimer.IsDefined(1));
             FAULT_EXPECT(CTOVStringA::Null().IsEmpty());
             oTimer.Start(1);
             FAULT_EXPECT(bDone == (oTimer.GetChannelByName("a channel with a long name, and longer") == 1));
         }},
        {"TimerIsCopied",
         [] {
             CTOVTimer oTimer;
             oTimer.DefineChannel(0, "zero");
             oTimer.DefineChannel(3, "three");
             oTimer.Start(3);
             CTOVTimer oCopy(oTimer);
             oCopy = oTimer;
             FAULT_EXPECT(oCopy.IsDefinedAndRunning(3));
             const bool bDone = Completes([&] { oCopy.UndefineChannel(3); });
             FAULT_EXPECT(oTimer.GetChannelByName("three") == 3);
             FAULT_EXPECT(!bDone || !oCopy.IsDefined(3));
         }},
        {"TimeEventIsInstalled",
         [] {
             int nEvent = -1;
             if (CompletesOrFailsACheck([&] { nEvent = CTOVTimer::InstallTimeEvent(60000, 0, OnTime, 0, 0); }))
                 CTOVTimer::UninstallTimeEvent(nEvent, 60000);
         }},
    };
}
