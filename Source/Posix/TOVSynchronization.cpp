#include <TOVPlatform/Backend/TOVSynchronization.h>

#include <Posix/Waits/TOVObjectEnd.h>
#include <Posix/Waits/TOVObjectRef.h>
#include <Posix/Waits/TOVSection.h>
#include <Posix/Waits/TOVUncontended.h>
#include <Posix/Waits/TOVWaiter.h>

namespace TOVPlatform
{
using namespace TOVPosix;

namespace TOVSynchronization
{
namespace
{
bool HasName(const char* szName)
{
    return szName != nullptr && *szName != '\0';
}

// What the uncontended operations leave. As these are calls, the operations themselves need no stack.

TOV_NOINLINE void EnterSection(tHandle hCriticalSection)
{
    if (const CSection oSection{hCriticalSection})
        oSection.Enter();
}

TOV_NOINLINE void LeaveSection(tHandle hCriticalSection)
{
    if (const CSection oSection{hCriticalSection})
        oSection.Leave();
}

TOV_NOINLINE void SignalEvent(tHandle hEvent)
{
    if (const CObjectRef oEvent = FindEvent(hEvent))
        oEvent.SetSignalled();
}

TOV_NOINLINE void ResetEvent(tHandle hEvent)
{
    if (const CObjectRef oEvent = FindEvent(hEvent))
        oEvent.ClearSignal();
}

TOV_NOINLINE void LeaveMutex(tHandle hMutex)
{
    if (const CObjectRef oMutex = FindMutex(hMutex))
        oMutex.LeaveMutex(ThisThread());
}

TOV_NOINLINE long ReleaseSemaphore(tHandle hSemaphore, tDword nCount)
{
    tDword nPrevious = 0;
    const CObjectRef oSemaphore = FindSemaphore(hSemaphore);
    if (!oSemaphore || !oSemaphore.ReleaseSemaphore(nCount, nPrevious))
        return 0;
    return static_cast<long>(nPrevious);
}
} // namespace

tHandle CriticalSection::Create(unsigned long)
{
    return CSection::Create();
}

void CriticalSection::Enter(tHandle hCriticalSection)
{
    if (!Uncontended::EnterSection(hCriticalSection))
        EnterSection(hCriticalSection);
}

void CriticalSection::Leave(tHandle hCriticalSection)
{
    if (!Uncontended::LeaveSection(hCriticalSection))
        LeaveSection(hCriticalSection);
}

void CriticalSection::Destroy(tHandle hCriticalSection)
{
    if (const CSection oSection{hCriticalSection})
        oSection.Destroy();
}

tHandle Event::Create(bool bManualReset, bool bInitiallySignalled, const char* szName)
{
    const tDword nValue = bInitiallySignalled ? VALUE_SIGNALLED : 0;
    if (HasName(szName))
        return CNamedObject::OpenHandle(szName, {eNamedEvent, nValue, 0, bManualReset});

    CWaitable* const pEvent = CHandleTable::Allocate();
    if (pEvent == nullptr)
        return 0;
    return CHandleTable::Publish(pEvent, bManualReset ? eKindManualEvent : eKindAutoEvent, nValue);
}

bool Event::Destroy(tHandle hEvent)
{
    return CloseObject(hEvent);
}

void Event::Signal(tHandle hEvent)
{
    if (!Uncontended::SetSignalled(hEvent))
        SignalEvent(hEvent);
}

void Event::SignalIfClear(tHandle hEvent)
{
    if (!Uncontended::ChangeSignal(hEvent, VALUE_SIGNALLED))
        SignalEvent(hEvent);
}

void Event::Reset(tHandle hEvent)
{
    if (!Uncontended::ChangeSignal(hEvent, 0))
        ResetEvent(hEvent);
}

tHandle Mutex::Create(bool bInitiallyOwned, const char* szName)
{
    if (HasName(szName))
        return CNamedObject::OpenHandle(szName, {eNamedMutex, bInitiallyOwned ? 1u : 0u, 0, false});

    CWaitable* const pMutex = CHandleTable::Allocate();
    if (pMutex == nullptr)
        return 0;
    if (!bInitiallyOwned)
        return CHandleTable::Publish(pMutex, eKindMutex, 0);

    sThreadRecord& oThread = ThisThread();
    ++oThread.nOwnedMutexes;
    return CHandleTable::Publish(pMutex, eKindMutex, oThread.nId);
}

bool Mutex::Destroy(tHandle hMutex)
{
    return CloseObject(hMutex);
}

void Mutex::Unlock(tHandle hMutex)
{
    if (!Uncontended::LeaveMutex(hMutex))
        LeaveMutex(hMutex);
}

tHandle Semaphore::Create(long lInitialCount, long lMaximumCount, const char* szName)
{
    const std::int32_t nInitial = static_cast<std::int32_t>(lInitialCount);
    const std::int32_t nMaximum = static_cast<std::int32_t>(lMaximumCount);
    if (nInitial < 0 || nMaximum <= 0 || nInitial > nMaximum)
        return 0;

    const tDword nValue = static_cast<tDword>(nInitial);
    if (HasName(szName))
        return CNamedObject::OpenHandle(szName, {eNamedSemaphore, nValue, static_cast<tDword>(nMaximum), false});

    CWaitable* const pSemaphore = CHandleTable::Allocate();
    if (pSemaphore == nullptr)
        return 0;
    pSemaphore->m_nMaximum.store(static_cast<tDword>(nMaximum), std::memory_order_relaxed);
    return CHandleTable::Publish(pSemaphore, eKindSemaphore, nValue);
}

bool Semaphore::Destroy(tHandle hSemaphore)
{
    return CloseObject(hSemaphore);
}

long Semaphore::Unlock(tHandle hSemaphore, long lReleaseCount)
{
    const std::int32_t nCount = static_cast<std::int32_t>(lReleaseCount);
    if (nCount <= 0)
        return 0;

    tDword nPrevious = 0;
    if (Uncontended::ReleaseSemaphore(hSemaphore, static_cast<tDword>(nCount), nPrevious))
        return static_cast<long>(nPrevious);
    return ReleaseSemaphore(hSemaphore, static_cast<tDword>(nCount));
}

long Variable::InterlockedIncrement(long& lVariable)
{
    const long lSum = __atomic_add_fetch(&lVariable, 1, __ATOMIC_SEQ_CST);
    const long lNew = static_cast<std::int32_t>(lSum);

    // The variable may have 64 bits here; it counts as if it had 32. Whoever has taken it past their limit takes it
    // back into them.
    long lSeen = lSum;
    while (lNew != lSum && lSeen != static_cast<std::int32_t>(lSeen) &&
           !__atomic_compare_exchange_n(&lVariable, &lSeen, static_cast<std::int32_t>(lSeen), true, __ATOMIC_SEQ_CST,
                                        __ATOMIC_RELAXED))
    {
    }
    return lNew;
}
} // namespace TOVSynchronization

namespace Backend
{
namespace
{
TOV_NOINLINE tDword WaitForOne(tHandle hObject, tDword dwMilliseconds)
{
    CWaitable* const pObject = CHandleTable::Find(hObject);
    if (pObject == nullptr)
        return Wait::RESULT_FAILED;

    bool bAbandoned = false;
    const eTry eResult = pObject->TryTake(CHandleTable::TagOf(hObject), ThisThread(), bAbandoned);
    if (eResult == eTryDone)
        return bAbandoned ? Wait::RESULT_ABANDONED : Wait::RESULT_SIGNALLED;
    if (eResult == eTryRefused && dwMilliseconds == 0)
        return Wait::RESULT_TIMEOUT;
    return Wait::ForMany(&hObject, 1, false, dwMilliseconds);
}
} // namespace

tDword Wait::ForOne(tHandle hObject, tDword dwMilliseconds)
{
    return Uncontended::Take(hObject) ? RESULT_SIGNALLED : WaitForOne(hObject, dwMilliseconds);
}

tDword Wait::ForMany(const tHandle* pHandles, int nCount, bool bWaitForAll, tDword dwMilliseconds)
{
    CWaiter oWaiter(ThisThread(), bWaitForAll);
    for (int nIndex = 0; nIndex < nCount; ++nIndex)
    {
        if (!oWaiter.Add(pHandles[nIndex]))
            return RESULT_FAILED;
    }
    return oWaiter.Wait(dwMilliseconds);
}
} // namespace Backend
} // namespace TOVPlatform
