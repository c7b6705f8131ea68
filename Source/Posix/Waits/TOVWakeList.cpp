#include <Posix/Waits/TOVWakeList.h>

#include <Posix/Base/TOVProcessLocks.h>
#include <Posix/Waits/TOVWaiter.h>
#include <TOVPlatform/Backend/TOVSynchronization.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
using Backend::Wait::RESULT_FAILED;
using Backend::Wait::RESULT_TIMEOUT;

constexpr tDword NO_THREAD = 0; // owner id that only matches objects which anybody may take
} // namespace

CWakeList::CWakeList() : m_pFirst(nullptr), m_pLast(nullptr)
{
}

CWakeList::~CWakeList()
{
    for (CWaiter* pWaiter = m_pFirst; pWaiter != nullptr;)
    {
        // The waiter stands on the stack of its thread and ends once that thread reads the word.
        CWaiter* const pNext = pWaiter->m_pNextToWake;
        tFutex& nWake = pWaiter->m_oThread.nWake;
        nWake.store(pWaiter->m_nWake, std::memory_order_release);
        FutexWake(&nWake, 1, eFutexPrivate);
        pWaiter = pNext;
    }
}

void CWakeList::Serve(CWaitable& oObject)
{
    if (oObject.m_nFirmWaits != 0)
    {
        HandOver(oObject);
        return;
    }

    // One thread for each unit; a thread that is on its way already counts.
    tDword nFree = oObject.CountFree();
    for (sWaitNode* pNode = oObject.m_pFirstWait; pNode != nullptr && nFree != 0; pNode = pNode->pNext, --nFree)
    {
        if (pNode->bComing)
            continue;
        pNode->bComing = true;
        ++oObject.m_nComingWaits;
        Append(*pNode->pWaiter);
    }
}

void CWakeList::HandOver(CWaitable& oObject)
{
    for (sWaitNode* pNode = oObject.m_pFirstWait; pNode != nullptr && oObject.CanTakeHeld(NO_THREAD);)
    {
        CWaiter& oWaiter = *pNode->pWaiter;
        do // moves past all nodes of this waiter, which may be unlinked below
            pNode = pNode->pNext;
        while (pNode != nullptr && pNode->pWaiter == &oWaiter);

        // A wait for all that includes a named object needs the lock of that object as well, so its own thread has to
        // look.
        const bool bLooksItself = oWaiter.m_bAll && oWaiter.m_nNamed > 0;
        const tDword dwResult = bLooksItself ? RESULT_TIMEOUT : oWaiter.TakeNow(false);
        if (dwResult != RESULT_TIMEOUT)
        {
            oWaiter.m_dwResult = dwResult;
            oWaiter.m_bDone = true;
            oWaiter.Unlink();
            oWaiter.ReleaseObjects(oWaiter.m_nCount);
        }
        if (dwResult != RESULT_TIMEOUT || bLooksItself)
            Append(oWaiter);
    }
}

void CWakeList::Fail(CWaitable& oObject)
{
    while (oObject.m_pFirstWait != nullptr)
    {
        CWaiter& oWaiter = *oObject.m_pFirstWait->pWaiter;
        oWaiter.m_dwResult = RESULT_FAILED;
        oWaiter.m_bDone = true;
        oWaiter.Unlink();
        oWaiter.ReleaseObjects(oWaiter.m_nCount);
        Append(oWaiter);
    }
}

void CWakeList::Append(CWaiter& oWaiter)
{
    if (oWaiter.m_bWakeComing)
        return;
    oWaiter.m_bWakeComing = true;
    oWaiter.m_nWake = oWaiter.m_bDone ? WOKEN : LOOK_AGAIN;
    oWaiter.m_pNextToWake = nullptr;
    if (m_pLast != nullptr)
        m_pLast->m_pNextToWake = &oWaiter;
    else
        m_pFirst = &oWaiter;
    m_pLast = &oWaiter;
}

CWaitScope::CWaitScope()
{
    s_aProcessLocks[eLockWaits].Lock();
}

CWaitScope::~CWaitScope()
{
    s_aProcessLocks[eLockWaits].Unlock();
}

void CWaitable::SetValue(tDword nTag, tDword nNew)
{
    Change(*this, nTag, [nNew](tDword& nValue) {
        nValue = nNew;
        return true;
    });
}

bool CWaitable::ReleaseHeldSemaphore(tDword nTag, tDword nCount, tDword& nPrevious)
{
    {
        CWaitScope oScope;
        if (!Hold(nTag))
            return false;

        const tDword nMaximum = m_nMaximum.load(std::memory_order_relaxed);
        nPrevious = GetUnpromised();
        const bool bRefused = nCount > nMaximum - nPrevious;
        const bool bChanged = !bRefused && ChangeHeld([=](tDword& nValue) {
            nValue += nCount;
            return nCount <= nMaximum - (nValue - nCount);
        });
        if (bChanged)
            oScope.Serve(*this);
        else if (!bRefused)
            oScope.HandOver(*this);
        Release();
        if (bChanged || bRefused)
            return bChanged;
    }
    // The units for which threads are on their way left no room. They have been handed over.
    return ReleaseSemaphore(nTag, nCount, nPrevious);
}
} // namespace TOVPosix
} // namespace TOVPlatform
