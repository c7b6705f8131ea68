#include <TOVPlatform/Backend/TOVSynchronization.h>

#include <Posix/Waits/TOVNamedObject.h>
#include <Posix/Waits/TOVObjectEnd.h>
#include <Posix/Waits/TOVWaiter.h>

namespace TOVPlatform
{
namespace TOVSynchronization
{
namespace
{
using namespace TOVPosix;

CWaitable* FindEvent(tHandle hObject)
{
    CWaitable* const pEvent = CHandleTable::Find(hObject, eKindAutoEvent);
    return pEvent != nullptr ? pEvent : CHandleTable::Find(hObject, eKindManualEvent);
}

// Calls fnCall(CNamedObject&) if the handle means a named object of this kind, which stays open meanwhile.
template<class TCall> void WithNamed(tHandle hObject, eNamedKind eObject, TCall fnCall)
{
    CNamedObject* const pObject = CNamedObject::FromHandle(hObject);
    if (pObject == nullptr)
        return;
    if (pObject->GetKind() == eObject)
        fnCall(*pObject);
    pObject->Release();
}

bool HasName(const char* szName)
{
    return szName != nullptr && *szName != '\0';
}

tHandle CreateNamed(const char* szName, const CNamedObject::sInitial& oInitial)
{
    CNamedObject* const pNamed = CNamedObject::Open(szName, oInitial);
    if (pNamed == nullptr)
        return 0;
    CWaitable* const pObject = CHandleTable::Allocate();
    if (pObject == nullptr)
    {
        pNamed->Release();
        return 0;
    }
    pObject->m_pNamed.store(pNamed, std::memory_order_relaxed);
    return CHandleTable::Publish(pObject, eKindNamed, 0);
}

void SleepAndEnter(CWaitable& oSection, tDword nTag, tDword nThreadId)
{
    tDword nState = oSection.m_nLock.load(std::memory_order_relaxed);
    while (oSection.GetTag() == nTag) // else destroyed meanwhile
    {
        // Others may sleep as well, so this owner must wake the next.
        if (nState == 0)
        {
            if (oSection.m_nLock.compare_exchange_weak(nState, nThreadId | SECTION_CONTENDED, std::memory_order_acquire,
                                                       std::memory_order_relaxed))
            {
                oSection.m_nLevels.store(1, std::memory_order_relaxed);
                return;
            }
            continue;
        }
        if ((nState & SECTION_CONTENDED) != 0 ||
            oSection.m_nLock.compare_exchange_weak(nState, nState | SECTION_CONTENDED, std::memory_order_relaxed))
        {
            FutexSleep(&oSection.m_nLock, nState | SECTION_CONTENDED, eFutexPrivate, CDeadline::Never());
            nState = oSection.m_nLock.load(std::memory_order_relaxed);
        }
    }
}
} // namespace

tHandle CriticalSection::Create(unsigned long)
{
    CWaitable* const pSection = CHandleTable::Allocate();
    if (pSection == nullptr)
        return 0;
    pSection->m_nLock.store(0, std::memory_order_relaxed);
    return CHandleTable::Publish(pSection, eKindCriticalSection, 0);
}

void CriticalSection::Enter(tHandle hCriticalSection)
{
    CWaitable* const pSection = CHandleTable::Find(hCriticalSection, eKindCriticalSection);
    if (pSection == nullptr)
        return;

    const tDword nThreadId = ThisThread().nId;
    tDword nState = 0;
    if (pSection->m_nLock.compare_exchange_strong(nState, nThreadId, std::memory_order_acquire,
                                                  std::memory_order_relaxed))
        pSection->m_nLevels.store(1, std::memory_order_relaxed);
    else if ((nState & ~SECTION_CONTENDED) == nThreadId)
        pSection->m_nLevels.store(pSection->m_nLevels.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    else
        SleepAndEnter(*pSection, CHandleTable::TagOf(hCriticalSection), nThreadId);
}

void CriticalSection::Leave(tHandle hCriticalSection)
{
    CWaitable* const pSection = CHandleTable::Find(hCriticalSection, eKindCriticalSection);
    if (pSection == nullptr)
        return;

    const tDword nState = pSection->m_nLock.load(std::memory_order_relaxed);
    if ((nState & ~SECTION_CONTENDED) != ThisThread().nId || !pSection->LeaveLevel())
        return;
    if ((pSection->m_nLock.exchange(0, std::memory_order_release) & SECTION_CONTENDED) != 0)
        FutexWake(&pSection->m_nLock, 1, eFutexPrivate);
}

void CriticalSection::Destroy(tHandle hCriticalSection)
{
    CWaitable* const pSection = CHandleTable::Find(hCriticalSection, eKindCriticalSection);
    if (pSection == nullptr || !CloseRecord(*pSection, CHandleTable::TagOf(hCriticalSection)))
        return;
    FutexWake(&pSection->m_nLock, INT_MAX, eFutexPrivate);
}

tHandle Event::Create(bool bManualReset, bool bInitiallySignalled, const char* szName)
{
    const tDword nValue = bInitiallySignalled ? VALUE_SIGNALLED : 0;
    if (HasName(szName))
        return CreateNamed(szName, {eNamedEvent, nValue, 0, bManualReset});

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
    if (CWaitable* const pEvent = FindEvent(hEvent))
        Change(*pEvent, CHandleTable::TagOf(hEvent), [](tDword& nValue) {
            nValue = VALUE_SIGNALLED;
            return true;
        });
    else
        WithNamed(hEvent, eNamedEvent, [](CNamedObject& oNamed) { oNamed.Signal(); });
}

void Event::Reset(tHandle hEvent)
{
    if (CWaitable* const pEvent = FindEvent(hEvent))
        Change(*pEvent, CHandleTable::TagOf(hEvent), [](tDword& nValue) {
            nValue = 0;
            return true;
        });
    else
        WithNamed(hEvent, eNamedEvent, [](CNamedObject& oNamed) { oNamed.Reset(); });
}

tHandle Mutex::Create(bool bInitiallyOwned, const char* szName)
{
    if (HasName(szName))
        return CreateNamed(szName, {eNamedMutex, bInitiallyOwned ? 1u : 0u, 0, false});

    CWaitable* const pMutex = CHandleTable::Allocate();
    if (pMutex == nullptr)
        return 0;
    if (!bInitiallyOwned)
        return CHandleTable::Publish(pMutex, eKindMutex, 0);

    sThreadRecord& oThread = ThisThread();
    pMutex->CountOwnership(oThread);
    return CHandleTable::Publish(pMutex, eKindMutex, oThread.nId);
}

bool Mutex::Destroy(tHandle hMutex)
{
    return CloseObject(hMutex);
}

void Mutex::Unlock(tHandle hMutex)
{
    sThreadRecord& oThread = ThisThread();
    if (CWaitable* const pMutex = CHandleTable::Find(hMutex, eKindMutex))
    {
        if (!pMutex->IsOwnedBy(oThread.nId) || !pMutex->LeaveLevel())
            return;
        --oThread.nOwnedMutexes;
        Change(*pMutex, CHandleTable::TagOf(hMutex), [](tDword& nValue) {
            nValue = 0;
            return true;
        });
    }
    else
        WithNamed(hMutex, eNamedMutex, [&oThread](CNamedObject& oNamed) { oNamed.LeaveMutex(oThread); });
}

tHandle Semaphore::Create(long lInitialCount, long lMaximumCount, const char* szName)
{
    const std::int32_t nInitial = static_cast<std::int32_t>(lInitialCount);
    const std::int32_t nMaximum = static_cast<std::int32_t>(lMaximumCount);
    if (nInitial < 0 || nMaximum <= 0 || nInitial > nMaximum)
        return 0;

    const tDword nValue = static_cast<tDword>(nInitial);
    if (HasName(szName))
        return CreateNamed(szName, {eNamedSemaphore, nValue, static_cast<tDword>(nMaximum), false});

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
    const std::int32_t nRelease = static_cast<std::int32_t>(lReleaseCount);
    if (nRelease <= 0)
        return 0;

    const tDword nCount = static_cast<tDword>(nRelease);
    tDword nPrevious = 0;
    bool bReleased = false;
    if (CWaitable* const pSemaphore = CHandleTable::Find(hSemaphore, eKindSemaphore))
    {
        const tDword nMaximum = pSemaphore->m_nMaximum.load(std::memory_order_relaxed);
        bReleased = Change(*pSemaphore, CHandleTable::TagOf(hSemaphore), [&](tDword& nValue) {
            nPrevious = nValue;
            nValue += nCount;
            return nCount <= nMaximum - nPrevious;
        });
    }
    else
        WithNamed(hSemaphore, eNamedSemaphore,
                  [&](CNamedObject& oNamed) { bReleased = oNamed.ReleaseSemaphore(nCount, nPrevious); });
    return bReleased ? static_cast<long>(nPrevious) : 0;
}

long Variable::InterlockedIncrement(long& lVariable)
{
    // The variable may have 64 bits here; it counts as if it had 32.
    long lOld = __atomic_load_n(&lVariable, __ATOMIC_RELAXED);
    long lNew = 0;
    do
        lNew = static_cast<std::int32_t>(static_cast<tDword>(lOld) + 1);
    while (!__atomic_compare_exchange_n(&lVariable, &lOld, lNew, true, __ATOMIC_SEQ_CST, __ATOMIC_RELAXED));
    return lNew;
}
} // namespace TOVSynchronization

tDword Backend::Wait::ForOne(tHandle hObject, tDword dwMilliseconds)
{
    using namespace TOVPosix;

    const tDword nTag = CHandleTable::TagOf(hObject);
    CWaitable* const pObject = CHandleTable::Find(hObject);
    if (pObject == nullptr || KindOf(nTag) == eKindCriticalSection)
        return RESULT_FAILED;

    if (KindOf(nTag) != eKindNamed)
    {
        bool bAbandoned = false;
        const eTry eResult = pObject->TryTake(nTag, ThisThread(), bAbandoned);
        if (eResult == eTryDone)
            return bAbandoned ? RESULT_ABANDONED : RESULT_SIGNALLED;
        if (eResult == eTryStale)
            return RESULT_FAILED;
        if (eResult == eTryRefused && dwMilliseconds == 0)
            return RESULT_TIMEOUT;
    }
    return ForMany(&hObject, 1, false, dwMilliseconds);
}

tDword Backend::Wait::ForMany(const tHandle* pHandles, int nCount, bool bWaitForAll, tDword dwMilliseconds)
{
    TOVPosix::CWaiter oWaiter(TOVPosix::ThisThread(), bWaitForAll);
    for (int nIndex = 0; nIndex < nCount; ++nIndex)
    {
        if (!oWaiter.Add(pHandles[nIndex]))
            return RESULT_FAILED;
    }
    return oWaiter.Wait(dwMilliseconds);
}
} // namespace TOVPlatform
