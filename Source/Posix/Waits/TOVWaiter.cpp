#include <Posix/Waits/TOVWaiter.h>

#include <Posix/Base/TOVProcessLocks.h>
#include <Posix/Waits/TOVNamedObject.h>
#include <TOVPlatform/Backend/TOVSynchronization.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
using Backend::Wait::RESULT_ABANDONED;
using Backend::Wait::RESULT_FAILED;
using Backend::Wait::RESULT_SIGNALLED;
using Backend::Wait::RESULT_TIMEOUT;

// futex_waitv of Linux 5.16 as the kernel defines it; older system headers do not have it.
constexpr long FUTEX_WAITV_NUMBER = 449;
constexpr std::uint32_t FUTEX_WORD_32 = 2;

struct sFutexWait
{
    std::uint64_t nValue;
    std::uint64_t nAddress;
    std::uint32_t nFlags;
    std::uint32_t nReserved;
};

sFutexWait MakeFutexWait(const void* pWord, tDword nValue, eFutexScope eScope)
{
    return {nValue, reinterpret_cast<std::uintptr_t>(pWord), FUTEX_WORD_32 | static_cast<std::uint32_t>(eScope), 0};
}

eSleepResult FutexSleepOnAny(const sFutexWait* pWaits, int nCount, const CDeadline& oDeadline)
{
    return ToSleepResult(::syscall(FUTEX_WAITV_NUMBER, pWaits, nCount, 0, oDeadline.Get(), CLOCK_MONOTONIC));
}
} // namespace

CWaiter::CWaiter(sThreadRecord& oThread, bool bAll)
    : m_oThread(oThread), m_bAll(bAll), m_nCount(0), m_nUnnamed(0), m_nNamed(0), m_bDone(false), m_bWakeComing(false),
      m_nWake(WOKEN), m_nLostRounds(0), m_llImpatient(0), m_dwResult(RESULT_TIMEOUT), m_pNextToWake(nullptr)
{
}

CWaiter::~CWaiter()
{
    for (int nIndex = 0; nIndex < m_nCount; ++nIndex)
    {
        if (m_aNodes[nIndex].pNamed != nullptr)
            m_aNodes[nIndex].pNamed->Release();
    }
}

bool CWaiter::Add(tHandle hObject)
{
    const tDword nTag = CHandleTable::TagOf(hObject);
    sWaitNode oNode = {this, nullptr, nullptr, nTag, false, false, false, 0, nullptr, nullptr};
    if (KindOf(nTag) == eKindNamed)
        oNode.pNamed = CNamedObject::FromHandle(hObject);
    else if (KindOf(nTag) != eKindCriticalSection)
        oNode.pObject = CHandleTable::Find(hObject);
    if (oNode.pNamed == nullptr && oNode.pObject == nullptr)
        return false;

    m_aNodes[m_nCount++] = oNode;
    if (oNode.pNamed != nullptr)
        AddNamed(*oNode.pNamed);
    else
        ++m_nUnnamed;
    return true;
}

void CWaiter::AddNamed(CNamedObject& oNamed)
{
    int nPlace = m_nNamed;
    while (nPlace > 0 && oNamed.IsLockedBefore(*m_apNamed[nPlace - 1]))
        --nPlace;
    if (nPlace > 0 && m_apNamed[nPlace - 1] == &oNamed)
        return;
    for (int nMoved = m_nNamed++; nMoved > nPlace; --nMoved)
        m_apNamed[nMoved] = m_apNamed[nMoved - 1];
    m_apNamed[nPlace] = &oNamed;
}

tDword CWaiter::Wait(tDword dwMilliseconds)
{
    const CDeadline oDeadline(dwMilliseconds);
    if (m_bAll && HasTwins())
        return RESULT_FAILED;

    LockObjects();
    if (!HoldObjects())
    {
        UnlockObjects();
        return RESULT_FAILED;
    }

    const tDword dwResult = TakeNow(true);
    if (dwResult == RESULT_TIMEOUT && dwMilliseconds != 0)
        return SleepAndTake(oDeadline);

    ReleaseObjects(m_nCount);
    UnlockObjects();
    return dwResult;
}

// Called with the objects locked and held. On return they are neither.
tDword CWaiter::SleepAndTake(const CDeadline& oDeadline)
{
    m_oThread.nWake.store(ASLEEP, std::memory_order_relaxed);
    m_llImpatient = Now() + PATIENCE;
    Link();

    tDword dwResult = RESULT_TIMEOUT;
    eSleepResult eSleep = eSleepWoken;
    while (dwResult == RESULT_TIMEOUT && eSleep == eSleepWoken)
    {
        Arm();
        ReleaseObjects(m_nCount);
        UnlockObjects();
        eSleep = Sleep(oDeadline);
        if (m_nNamed == 0 && m_oThread.nWake.load(std::memory_order_acquire) == WOKEN)
            return m_dwResult; // the objects were handed over, and the nodes unlinked by the thread that did it

        LockObjects();
        Disarm();
        ForgetWake();
        if (m_bDone)
            dwResult = m_dwResult;
        else
            dwResult = TakeAgain(eSleep);
    }
    Leave();
    return dwResult;
}

// Whether two handles name one object. Callers have already rejected a repeated handle.
bool CWaiter::HasTwins() const
{
    return m_nNamed != m_nCount - m_nUnnamed;
}

// A wait for named objects alone does not take the lock that all other waits share.
void CWaiter::LockObjects()
{
    if (m_nUnnamed > 0)
        s_aProcessLocks[eLockWaits].Lock();
    for (int nIndex = 0; nIndex < m_nNamed; ++nIndex)
        m_apNamed[nIndex]->Lock();
}

void CWaiter::UnlockObjects()
{
    for (int nIndex = m_nNamed; nIndex-- > 0;)
        m_apNamed[nIndex]->Unlock();
    if (m_nUnnamed > 0)
        s_aProcessLocks[eLockWaits].Unlock();
}

bool CWaiter::HoldObjects()
{
    for (int nIndex = 0; nIndex < m_nCount; ++nIndex)
    {
        const sWaitNode& oNode = m_aNodes[nIndex];
        if (oNode.pNamed == nullptr && !oNode.pObject->Hold(oNode.nTag))
        {
            ReleaseObjects(nIndex);
            return false;
        }
    }
    return true;
}

void CWaiter::ReleaseObjects(int nHeld)
{
    for (int nIndex = 0; nIndex < nHeld; ++nIndex)
    {
        if (m_aNodes[nIndex].pNamed == nullptr)
            m_aNodes[nIndex].pObject->Release();
    }
}

void CWaiter::Link()
{
    const bool bCompetes = IsCompeting();
    for (int nIndex = 0; nIndex < m_nCount; ++nIndex)
    {
        sWaitNode& oNode = m_aNodes[nIndex];
        if (oNode.pNamed != nullptr)
            continue;
        CWaitable& oObject = *oNode.pObject;
        oNode.bFirm = !bCompetes;
        oObject.m_nFirmWaits += oNode.bFirm ? 1 : 0;
        oNode.pPrevious = oObject.m_pLastWait;
        oNode.pNext = nullptr;
        if (oNode.pPrevious != nullptr)
            oNode.pPrevious->pNext = &oNode;
        else
            oObject.m_pFirstWait = &oNode;
        oObject.m_pLastWait = &oNode;
    }
}

void CWaiter::Unlink()
{
    for (int nIndex = 0; nIndex < m_nCount; ++nIndex)
    {
        sWaitNode& oNode = m_aNodes[nIndex];
        if (oNode.pNamed != nullptr)
            continue;
        CWaitable& oObject = *oNode.pObject;
        if (oNode.pPrevious != nullptr)
            oNode.pPrevious->pNext = oNode.pNext;
        else
            oObject.m_pFirstWait = oNode.pNext;
        if (oNode.pNext != nullptr)
            oNode.pNext->pPrevious = oNode.pPrevious;
        else
            oObject.m_pLastWait = oNode.pPrevious;
        oObject.m_nFirmWaits -= oNode.bFirm ? 1 : 0;
        oObject.m_nComingWaits -= oNode.bComing ? 1 : 0;
    }
}

// Ends a wait after a sleep. Called with the objects locked, and held unless the wait has been ended by another thread.
void CWaiter::Leave()
{
    const bool bWakeComing = m_bWakeComing;
    {
        CWakeList oNext;
        if (!m_bDone)
        {
            Unlink();
            if (IsCompeting())
                oNext.Serve(*m_aNodes[0].pObject); // what this wait leaves of a semaphore
            ReleaseObjects(m_nCount);
        }
        UnlockObjects();
    }

    // This object must live until the last access of the thread that is about to wake it.
    if (bWakeComing)
        SleepOnOwnWord(CDeadline::Never());
}

// Whether this is a wait for a mutex or a semaphore without a name, alone.
bool CWaiter::IsCompeting() const
{
    const eKind eObject = KindOf(m_aNodes[0].nTag);
    return m_nCount == 1 && (eObject == eKindMutex || eObject == eKindSemaphore);
}

// Does what TakeNow does, after a sleep. The objects are held from here on.
tDword CWaiter::TakeAgain(eSleepResult eSleep)
{
    HoldObjects(); // as they are linked, they have not ended
    const tDword dwResult = eSleep == eSleepFailed ? RESULT_FAILED : TakeNow(true);

    sWaitNode& oNode = m_aNodes[0];
    if (!oNode.bComing)
        return dwResult;
    oNode.bComing = false;
    --oNode.pObject->m_nComingWaits;
    if (dwResult == RESULT_TIMEOUT && !oNode.bFirm && (++m_nLostRounds == MAX_LOST_ROUNDS || Now() > m_llImpatient))
    {
        oNode.bFirm = true;
        ++oNode.pObject->m_nFirmWaits;
    }
    return dwResult;
}

// RESULT_TIMEOUT stands for "not yet".
tDword CWaiter::TakeNow(bool bNamedToo)
{
    if (m_bAll)
        return TakeAll();

    for (int nIndex = 0; nIndex < m_nCount; ++nIndex)
    {
        const sWaitNode& oNode = m_aNodes[nIndex];
        if ((oNode.pNamed == nullptr || bNamedToo) && CanTake(oNode))
            return static_cast<tDword>(nIndex) + (Take(oNode) ? RESULT_ABANDONED : RESULT_SIGNALLED);
    }
    return RESULT_TIMEOUT;
}

tDword CWaiter::TakeAll()
{
    for (int nIndex = 0; nIndex < m_nCount; ++nIndex)
    {
        if (!CanTake(m_aNodes[nIndex]))
            return RESULT_TIMEOUT;
    }

    bool bAbandoned = false;
    for (int nIndex = 0; nIndex < m_nCount; ++nIndex)
        bAbandoned |= Take(m_aNodes[nIndex]);
    return bAbandoned ? RESULT_ABANDONED : RESULT_SIGNALLED;
}

bool CWaiter::CanTake(const sWaitNode& oNode) const
{
    if (oNode.pNamed == nullptr)
        return oNode.pObject->CanTakeHeld(m_oThread.nId);

    // Signalling a manual event releases all that wait at that moment, however soon it is reset.
    const bool bPulsed = !m_bAll && oNode.bSlept && oNode.pNamed->HasPulsed(oNode.nSeen);
    return bPulsed || oNode.pNamed->CanTake(m_oThread);
}

bool CWaiter::Take(const sWaitNode& oNode)
{
    return oNode.pNamed == nullptr ? oNode.pObject->TakeHeld(m_oThread) : oNode.pNamed->Take(m_oThread);
}

eSleepResult CWaiter::Sleep(const CDeadline& oDeadline)
{
    if (m_nNamed == 0)
        return SleepOnOwnWord(oDeadline);
    if (m_nCount == 1)
        return FutexSleep(m_aNodes[0].pNamed->GetWord(), m_aNodes[0].nSeen, eFutexShared, oDeadline);

    sFutexWait aWaits[MAX_OBJECTS + 1];
    int nWaits = 0;
    for (int nIndex = 0; nIndex < m_nCount; ++nIndex)
    {
        const sWaitNode& oNode = m_aNodes[nIndex];
        if (oNode.pNamed != nullptr)
            aWaits[nWaits++] = MakeFutexWait(oNode.pNamed->GetWord(), oNode.nSeen, eFutexShared);
    }
    if (m_nUnnamed > 0)
        aWaits[nWaits++] = MakeFutexWait(&m_oThread.nWake, ASLEEP, eFutexPrivate);
    return FutexSleepOnAny(aWaits, nWaits, oDeadline);
}

eSleepResult CWaiter::SleepOnOwnWord(const CDeadline& oDeadline)
{
    eSleepResult eResult = eSleepWoken;
    while (eResult == eSleepWoken && m_oThread.nWake.load(std::memory_order_acquire) == ASLEEP)
        eResult = FutexSleep(&m_oThread.nWake, ASLEEP, eFutexPrivate, oDeadline);
    return eResult;
}

// The last step before a sleep; from here on every change of a named object changes the word as well.
void CWaiter::Arm()
{
    for (int nIndex = 0; nIndex < m_nCount; ++nIndex)
    {
        sWaitNode& oNode = m_aNodes[nIndex];
        if (oNode.pNamed != nullptr)
        {
            oNode.nSeen = oNode.pNamed->Arm();
            oNode.bSlept = true;
        }
    }
}

void CWaiter::Disarm()
{
    for (int nIndex = 0; nIndex < m_nCount; ++nIndex)
    {
        if (m_aNodes[nIndex].pNamed != nullptr)
            m_aNodes[nIndex].pNamed->Disarm();
    }
}

// Takes back a wake that has arrived and did not end the wait. A wake that is still to come remains.
void CWaiter::ForgetWake()
{
    if (m_oThread.nWake.load(std::memory_order_acquire) != ASLEEP && !m_bDone)
    {
        m_oThread.nWake.store(ASLEEP, std::memory_order_relaxed);
        m_bWakeComing = false;
    }
}
} // namespace TOVPosix
} // namespace TOVPlatform
