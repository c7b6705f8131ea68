#include <TOVPlatform/Backend/TOVTimeEvent.h>

#include <new>

#include <windows.h>

#include <mmsystem.h>

namespace TOVPlatform
{
using Backend::tSystemTimeEvent;
using Backend::tTimeEvent;

namespace
{
// In the system's calling convention the callee clears the stack; a plain function leaves that to its caller. So the
// system calls this backend, which finds the plain function by the event's identifier.
struct sPlainEvent
{
    UINT nId;
    tTimeEvent pCallback;
    bool bPeriodic;
    sPlainEvent* pNext;
};

// The lock of the list. It is held also while an event is set or killed, so that the list knows each event before its
// first call. Neither lock, list nor records are ever destroyed: the system calls to the end of the process.
SRWLOCK s_oLock = SRWLOCK_INIT;
sPlainEvent* s_pPlainEvents = nullptr;

class CScope
{
public:
    CScope() { ::AcquireSRWLockExclusive(&s_oLock); }

    ~CScope() { ::ReleaseSRWLockExclusive(&s_oLock); }

    CScope(const CScope&) = delete;
    CScope& operator=(const CScope&) = delete;
};

// The place in the list that points to the event, or to its end.
sPlainEvent** FindPlain(UINT nId)
{
    sPlainEvent** ppEvent = &s_pPlainEvents;
    while (*ppEvent != nullptr && (*ppEvent)->nId != nId)
        ppEvent = &(*ppEvent)->pNext;
    return ppEvent;
}

void Forget(sPlainEvent** ppEvent)
{
    sPlainEvent* const pEvent = *ppEvent;
    if (pEvent == nullptr)
        return;
    *ppEvent = pEvent->pNext;
    delete pEvent;
}

// The callback of the event, or null if the event has just been killed.
tTimeEvent TakeCallback(UINT nId)
{
    const CScope oScope;
    sPlainEvent** const ppEvent = FindPlain(nId);
    const tTimeEvent pCallback = *ppEvent != nullptr ? (*ppEvent)->pCallback : nullptr;
    if (*ppEvent != nullptr && !(*ppEvent)->bPeriodic)
        Forget(ppEvent);
    return pCallback;
}

void CALLBACK CallPlain(UINT nId, UINT nMessage, DWORD_PTR nUser, DWORD_PTR nReserved1, DWORD_PTR nReserved2)
{
    const tTimeEvent pCallback = TakeCallback(nId);
    if (pCallback != nullptr)
        pCallback(nId, nMessage, nUser, nReserved1, nReserved2);
}

// Stands in for a null callback, which the system would call.
void CALLBACK CallNobody(UINT, UINT, DWORD_PTR, DWORD_PTR, DWORD_PTR)
{
}

// The system calls into this library, which therefore stays in memory, even if the program unloads it.
void StayInMemory()
{
    HMODULE hLibrary = nullptr;
    ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                         reinterpret_cast<LPCSTR>(&CallPlain), &hLibrary);
}
} // namespace

namespace Backend
{
unsigned int BeginTimerPeriod(unsigned int nMilliseconds)
{
    return ::timeBeginPeriod(nMilliseconds);
}

unsigned int EndTimerPeriod(unsigned int nMilliseconds)
{
    return ::timeEndPeriod(nMilliseconds);
}

unsigned int SetTimeEvent(unsigned int nDelay, unsigned int nResolution, tTimeEvent pCallback, unsigned long ulUser,
                          bool bPeriodic)
{
    sPlainEvent* const pEvent = new (std::nothrow) sPlainEvent{0, pCallback, bPeriodic, nullptr};
    if (pEvent == nullptr)
        return 0;

    StayInMemory();
    const CScope oScope;
    pEvent->nId = SetSystemTimeEvent(nDelay, nResolution, CallPlain, ulUser, bPeriodic);
    pEvent->pNext = s_pPlainEvents;
    s_pPlainEvents = pEvent;
    const unsigned int nId = pEvent->nId;
    if (nId == 0)
        Forget(&s_pPlainEvents);
    return nId;
}

unsigned int SetSystemTimeEvent(unsigned int nDelay, unsigned int nResolution, tSystemTimeEvent pCallback,
                                unsigned long ulUser, bool bPeriodic)
{
    if (pCallback == nullptr)
    {
        StayInMemory();
        pCallback = CallNobody;
    }
    return ::timeSetEvent(nDelay, nResolution, pCallback, ulUser, bPeriodic ? TIME_PERIODIC : TIME_ONESHOT);
}

unsigned int KillTimeEvent(unsigned int nEvent)
{
    // Some versions of the system mistake 0 for one of their free places.
    if (nEvent == 0)
        return MMSYSERR_INVALPARAM;

    const CScope oScope;
    const MMRESULT nResult = ::timeKillEvent(nEvent);
    if (nResult == TIMERR_NOERROR)
        Forget(FindPlain(nEvent));
    return nResult;
}
} // namespace Backend
} // namespace TOVPlatform
