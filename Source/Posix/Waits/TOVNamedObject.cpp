#include <Posix/Waits/TOVNamedObject.h>

#include <Posix/Base/TOVProcessLocks.h>
#include <Posix/Waits/TOVHandleTable.h>

#include <cstring>
#include <new>
#include <pthread.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// The contents of the segment.
struct sSharedState
{
    tDword nLayout; // the processes must agree on it
    tDword nKind;
    char szName[CSharedSegment::MAX_NAME + 1];

    pthread_mutex_t oGuard; // of all below but the words that threads sleep on; survives the death of its holder
    pthread_mutex_t oOwner; // mutex: held by the owning thread
    tFutex nChanges;        // event, semaphore: counts what could release a wait
    tDword nSleepers;       // at least as many as there are; too many if some died
    tDword nValue;          // event: signalled; semaphore: count; mutex: levels of ownership
    tDword nMaximum;
    bool bManualReset;
    bool bAbandoned; // mutex: the last owner ended as such
};

namespace
{
constexpr tDword LAYOUT = 0x544F5600 + sizeof(sSharedState);

CNamedObject* s_pFirstObject = nullptr;

// The word that the kernel marks when the owner of a robust mutex dies. It holds the owner's id and the FUTEX_ flags.
int* OwnerWord(pthread_mutex_t& oMutex)
{
    return &oMutex.__data.__lock;
}

tDword LoadOwner(pthread_mutex_t& oMutex)
{
    return static_cast<tDword>(__atomic_load_n(OwnerWord(oMutex), __ATOMIC_ACQUIRE));
}

bool IsFree(tDword nOwner)
{
    return (nOwner & FUTEX_TID_MASK) == 0 || (nOwner & FUTEX_OWNER_DIED) != 0;
}

bool IsOwnedBy(tDword nOwner, const sThreadRecord& oThread)
{
    return !IsFree(nOwner) && (nOwner & FUTEX_TID_MASK) == oThread.nId;
}

bool MakeRobust(pthread_mutex_t& oMutex)
{
    pthread_mutexattr_t oAttributes;
    if (::pthread_mutexattr_init(&oAttributes) != 0)
        return false;
    const bool bMade = ::pthread_mutexattr_setpshared(&oAttributes, PTHREAD_PROCESS_SHARED) == 0 &&
                       ::pthread_mutexattr_setrobust(&oAttributes, PTHREAD_MUTEX_ROBUST) == 0 &&
                       ::pthread_mutex_init(&oMutex, &oAttributes) == 0;
    ::pthread_mutexattr_destroy(&oAttributes);
    return bMade;
}

bool MakeState(sSharedState& oState, const char* szName, const CNamedObject::sInitial& oInitial)
{
    new (&oState) sSharedState();
    if (!MakeRobust(oState.oGuard) || !MakeRobust(oState.oOwner))
        return false;
    oState.nKind = oInitial.eObject;
    std::strcpy(oState.szName, szName);
    oState.nValue = oInitial.eObject == eNamedMutex ? 0 : oInitial.nValue;
    oState.nMaximum = oInitial.nMaximum;
    oState.bManualReset = oInitial.bManualReset;
    oState.nLayout = LAYOUT;
    return true;
}

// Whether another process has made the state for an object of this name and kind.
bool IsState(const sSharedState& oState, const char* szName, const CNamedObject::sInitial& oInitial)
{
    return oState.nLayout == LAYOUT && oState.nKind == oInitial.eObject && std::strcmp(oState.szName, szName) == 0;
}

// Windows has two name spaces; "Local\" is the one of names without a prefix. Returns the name without that prefix, or
// null for any other backslash and for an empty name.
const char* WithoutScope(const char* szName)
{
    constexpr char LOCAL[] = "Local\\";
    constexpr char GLOBAL[] = "Global\\";
    if (std::strncmp(szName, LOCAL, sizeof LOCAL - 1) == 0)
        szName += sizeof LOCAL - 1;
    const bool bGlobal = std::strncmp(szName, GLOBAL, sizeof GLOBAL - 1) == 0;
    const char* const szRest = bGlobal ? szName + sizeof GLOBAL - 1 : szName;
    return *szRest != '\0' && std::strchr(szRest, '\\') == nullptr ? szName : nullptr;
}
} // namespace

CNamedObject::CNamedObject(const CSharedSegment& oSegment)
    : m_oSegment(oSegment), m_oState(*static_cast<sSharedState*>(oSegment.GetMemory())), m_nReferences(1),
      m_nHandles(1), m_pNext(s_pFirstObject), m_pNextOwned(nullptr)
{
    s_pFirstObject = this;
}

tHandle CNamedObject::OpenHandle(const char* szName, const sInitial& oInitial)
{
    CNamedObject* const pNamed = Open(szName, oInitial);
    if (pNamed == nullptr)
        return 0;
    CWaitable* const pRecord = CHandleTable::Allocate();
    if (pRecord == nullptr)
    {
        pNamed->Release();
        return 0;
    }
    pRecord->m_pNamed.store(pNamed, std::memory_order_relaxed);
    return CHandleTable::Publish(pRecord, eKindNamed, 0);
}

CNamedObject* CNamedObject::Open(const char* szName, const sInitial& oInitial)
{
    sThreadRecord& oThread = ThisThread();
    const char* const szLocalName = WithoutScope(szName);
    if (szLocalName == nullptr || std::strlen(szLocalName) > CSharedSegment::MAX_NAME)
        return nullptr;

    const CProcessLockScope oScope(eLockNamedObjects);
    CNamedObject* pObject = FindOpen(szLocalName);
    if (pObject == nullptr)
        return OpenSegment(szLocalName, oInitial, oThread);
    if (pObject->m_oState.nKind != oInitial.eObject)
        return nullptr;
    ++pObject->m_nReferences;
    ++pObject->m_nHandles;
    return pObject;
}

CNamedObject* CNamedObject::FindOpen(const char* szName)
{
    CNamedObject* pObject = s_pFirstObject;
    while (pObject != nullptr && std::strcmp(pObject->m_oState.szName, szName) != 0)
        pObject = pObject->m_pNext;
    return pObject;
}

CNamedObject* CNamedObject::OpenSegment(const char* szName, const sInitial& oInitial, sThreadRecord& oThread)
{
    // The names are removed with the library. An object does it, and not a function for the end of the process, because
    // sanitizers detach the latter from the library.
    struct sNamesRemoval
    {
        ~sNamesRemoval() { RemoveNames(); }
    };
    static const sNamesRemoval s_oRemoval;

    const CSegmentLock oLock;
    // Processes that were killed have left theirs. The first object of each process is the occasion to remove them.
    static bool s_bCleaned = false; // eLockNamedObjects guards it
    if (!s_bCleaned)
        CSharedSegment::RemoveDead(oLock);
    s_bCleaned = s_bCleaned || oLock.IsHeld();

    CSharedSegment oSegment;
    if (!oSegment.Open(oLock, szName, sizeof(sSharedState)))
        return nullptr;

    sSharedState& oState = *static_cast<sSharedState*>(oSegment.GetMemory());
    const bool bUsable = oSegment.IsNew() ? MakeState(oState, szName, oInitial) : IsState(oState, szName, oInitial);
    CNamedObject* const pObject = bUsable ? new (std::nothrow) CNamedObject(oSegment) : nullptr;
    if (pObject == nullptr)
        oSegment.Close(oLock);
    else if (oSegment.IsNew() && oInitial.eObject == eNamedMutex && oInitial.nValue != 0)
        pObject->Take(oThread); // needs no lock: nobody else can have it open yet
    return pObject;
}

CNamedObject* CNamedObject::FromHandle(tHandle hObject, eNamedKind eObject)
{
    CNamedObject* const pObject = FromHandle(hObject);
    if (pObject == nullptr || pObject->m_oState.nKind == eObject)
        return pObject;
    pObject->Release();
    return nullptr;
}

CNamedObject* CNamedObject::FromHandle(tHandle hObject)
{
    if (KindOf(CHandleTable::TagOf(hObject)) != eKindNamed)
        return nullptr;

    const CProcessLockScope oScope(eLockNamedObjects);
    CWaitable* const pRecord = CHandleTable::Find(hObject);
    if (pRecord == nullptr)
        return nullptr;
    CNamedObject* const pObject = pRecord->m_pNamed.load(std::memory_order_relaxed);
    ++pObject->m_nReferences;
    return pObject;
}

bool CNamedObject::CloseHandle(tHandle hObject)
{
    CNamedObject* pObject = nullptr;
    {
        const CProcessLockScope oScope(eLockNamedObjects);
        CWaitable* const pRecord = CHandleTable::Find(hObject);
        if (pRecord == nullptr)
            return false;
        pObject = pRecord->m_pNamed.load(std::memory_order_relaxed);
        pRecord->Retire();
        CHandleTable::Recycle(pRecord);
        if (--pObject->m_nHandles == 0 && pObject->m_nReferences != 1)
            pObject->LoseName();
    }
    pObject->Release();
    return true;
}

void CNamedObject::Release()
{
    const CProcessLockScope oScope(eLockNamedObjects);
    if (--m_nReferences != 0)
        return;

    Unlist();
    m_oSegment.Close(CSegmentLock());
    delete this;
}

// An owner or a wait may keep the object past its last handle, but nobody finds it by its name any more.
void CNamedObject::LoseName()
{
    if (m_oSegment.RemoveName(CSegmentLock()))
        Unlist();
}

void CNamedObject::Unlist()
{
    CNamedObject** ppLink = &s_pFirstObject;
    while (*ppLink != nullptr && *ppLink != this)
        ppLink = &(*ppLink)->m_pNext;
    if (*ppLink == this)
        *ppLink = m_pNext;
}

void CNamedObject::SetSignalled()
{
    Lock();
    m_oState.nValue = VALUE_SIGNALLED;
    ++m_oState.nChanges;
    WakeSleepers();
    Unlock();
}

void CNamedObject::ClearSignal()
{
    Lock();
    m_oState.nValue = 0;
    Unlock();
}

void CNamedObject::LeaveMutex(sThreadRecord& oThread)
{
    Lock();
    const bool bFreed = IsOwnedBy(LoadOwner(m_oState.oOwner), oThread) && --m_oState.nValue == 0;
    if (bFreed)
        FreeMutex(oThread);
    Unlock();
    if (bFreed)
        Release();
}

bool CNamedObject::ReleaseSemaphore(tDword nCount, tDword& nPrevious)
{
    Lock();
    nPrevious = m_oState.nValue;
    const bool bFits = nCount <= m_oState.nMaximum - nPrevious;
    if (bFits)
    {
        m_oState.nValue += nCount;
        ++m_oState.nChanges;
        WakeSleepers();
    }
    Unlock();
    return bFits;
}

bool CNamedObject::IsLockedBefore(const CNamedObject& oOther) const
{
    return m_oSegment.GetNumber() < oOther.m_oSegment.GetNumber();
}

void CNamedObject::Lock()
{
    if (::pthread_mutex_lock(&m_oState.oGuard) == EOWNERDEAD)
    {
        // The holder may have died before it woke the sleepers. Each change is complete in itself.
        ::pthread_mutex_consistent(&m_oState.oGuard);
        WakeSleepers();
    }
}

void CNamedObject::Unlock()
{
    ::pthread_mutex_unlock(&m_oState.oGuard);
}

bool CNamedObject::CanTake(const sThreadRecord& oThread) const
{
    if (m_oState.nKind != eNamedMutex)
        return m_oState.nValue != 0;
    const tDword nOwner = LoadOwner(m_oState.oOwner);
    return IsFree(nOwner) || IsOwnedBy(nOwner, oThread);
}

bool CNamedObject::Take(sThreadRecord& oThread)
{
    if (m_oState.nKind == eNamedEvent && !m_oState.bManualReset)
        m_oState.nValue = 0;
    else if (m_oState.nKind == eNamedSemaphore)
        --m_oState.nValue;
    return m_oState.nKind == eNamedMutex && TakeMutex(oThread);
}

bool CNamedObject::TakeMutex(sThreadRecord& oThread)
{
    if (IsOwnedBy(LoadOwner(m_oState.oOwner), oThread))
    {
        ++m_oState.nValue;
        return false;
    }

    const bool bDied = ::pthread_mutex_trylock(&m_oState.oOwner) == EOWNERDEAD;
    if (bDied)
    {
        // The kernel has woken one sleeper only; the others have to mark the new owner's word.
        ::pthread_mutex_consistent(&m_oState.oOwner);
        WakeSleepers();
    }
    const bool bAbandoned = bDied || m_oState.bAbandoned;
    m_oState.bAbandoned = false;
    m_oState.nValue = 1;

    ++m_nReferences; // the object stays mapped while it is owned, even without a handle
    m_pNextOwned = oThread.pOwnedNamed;
    oThread.pOwnedNamed = this;
    return bAbandoned;
}

tDword CNamedObject::Arm()
{
    ++m_oState.nSleepers;
    if (m_oState.nKind != eNamedMutex)
        return m_oState.nChanges.load(std::memory_order_relaxed);

    // The kernel wakes a sleeper at the owner's death only if the word says that there is one.
    int nOwner = __atomic_load_n(OwnerWord(m_oState.oOwner), __ATOMIC_RELAXED);
    do
    {
        if (IsFree(static_cast<tDword>(nOwner)))
            return ~static_cast<tDword>(nOwner); // the owner has died meanwhile: the caller must not sleep
    } while (!__atomic_compare_exchange_n(OwnerWord(m_oState.oOwner), &nOwner, nOwner | static_cast<int>(FUTEX_WAITERS),
                                          false, __ATOMIC_RELAXED, __ATOMIC_RELAXED));
    return static_cast<tDword>(nOwner) | FUTEX_WAITERS;
}

void CNamedObject::Disarm()
{
    --m_oState.nSleepers;
}

const void* CNamedObject::GetWord() const
{
    if (m_oState.nKind == eNamedMutex)
        return OwnerWord(m_oState.oOwner);
    return &m_oState.nChanges;
}

bool CNamedObject::HasPulsed(tDword nSeen) const
{
    return m_oState.nKind == eNamedEvent && m_oState.bManualReset &&
           m_oState.nChanges.load(std::memory_order_relaxed) != nSeen;
}

void CNamedObject::AbandonMutexes(sThreadRecord& oThread)
{
    while (oThread.pOwnedNamed != nullptr)
    {
        CNamedObject& oMutex = *oThread.pOwnedNamed;
        oMutex.Lock();
        oMutex.m_oState.bAbandoned = true;
        oMutex.FreeMutex(oThread);
        oMutex.Unlock();
        oMutex.Release();
    }
}

void CNamedObject::FreeMutex(sThreadRecord& oThread)
{
    CNamedObject** ppLink = &oThread.pOwnedNamed;
    while (*ppLink != this)
        ppLink = &(*ppLink)->m_pNextOwned;
    *ppLink = m_pNextOwned;

    m_oState.nValue = 0;
    ::pthread_mutex_unlock(&m_oState.oOwner);
    WakeSleepers();
}

void CNamedObject::WakeSleepers()
{
    if (m_oState.nSleepers != 0)
        FutexWake(GetWord(), INT_MAX, eFutexShared);
}

// A process that exits without closing still has its names removed. Nothing is closed, because later clean-up may still
// use it.
void CNamedObject::RemoveNames()
{
    const CProcessLockScope oScope(eLockNamedObjects);
    if (s_pFirstObject == nullptr)
        return;
    const CSegmentLock oLock;
    for (CNamedObject* pObject = s_pFirstObject; pObject != nullptr; pObject = pObject->m_pNext)
        pObject->m_oSegment.RemoveName(oLock);
}
} // namespace TOVPosix
} // namespace TOVPlatform
