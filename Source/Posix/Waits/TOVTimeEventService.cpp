#include <Posix/Waits/TOVTimeEventService.h>

#include <Posix/Base/TOVProcessLocks.h>
#include <Posix/Waits/TOVLibraryHold.h>

#include <algorithm>
#include <initializer_list>
#include <pthread.h>
#include <signal.h>
#include <type_traits>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
constexpr unsigned int RESULT_DONE = 0;
constexpr unsigned int RESULT_CANNOT_DO = 97; // as the Windows timer service reports it

// A delay of the thread loses no call, and yet a callback that is always slower than its period does not fall back
// farther and farther.
constexpr long long MAX_CALLS_BEHIND = 16;

constexpr unsigned int MAX_EVENT_ID = 0x7FFFFFFF;
} // namespace

// The thread goes on to the very end of the process, and so does what it works with.
CTimeEventService s_oTimeEventService;
static_assert(std::is_trivially_destructible_v<CTimeEventService>, "nothing may end it");

bool CTimeEventService::IsPeriod(unsigned int nMilliseconds)
{
    return MIN_PERIOD <= nMilliseconds && nMilliseconds <= MAX_PERIOD;
}

unsigned int CTimeEventService::BeginPeriod(unsigned int nMilliseconds)
{
    if (!IsPeriod(nMilliseconds))
        return RESULT_CANNOT_DO;

    const CProcessLockScope oScope(eLockTimeEvents);
    ++m_aPeriods[nMilliseconds];
    return RESULT_DONE;
}

unsigned int CTimeEventService::EndPeriod(unsigned int nMilliseconds)
{
    const CProcessLockScope oScope(eLockTimeEvents);
    if (!IsPeriod(nMilliseconds) || m_aPeriods[nMilliseconds] == 0)
        return RESULT_CANNOT_DO;

    --m_aPeriods[nMilliseconds];
    return RESULT_DONE;
}

unsigned int CTimeEventService::Set(unsigned int nDelay, Backend::tTimeEvent pCallback, unsigned long ulUser,
                                    bool bPeriodic)
{
    if (!IsPeriod(nDelay))
        return 0;

    // The thread runs in this library's code. The lock is not held here, because the loader has one of its own, under
    // which other threads come here.
    HoldLibraryForEver();
    const CProcessLockScope oScope(eLockTimeEvents);
    sTimeEvent* const pEvent = FindFree();
    const long long nNow = Now();
    if (pEvent == nullptr || nNow < 0 || !StartThread())
        return 0;

    const long long nSpan = nDelay * NANOSECONDS_PER_MILLISECOND;
    *pEvent = {NextId(*pEvent), pCallback, ulUser, bPeriodic ? nSpan : 0, nNow + nSpan};
    m_nChanges.fetch_add(1, std::memory_order_release);
    FutexWake(&m_nChanges, 1, eFutexPrivate);
    return pEvent->nId;
}

unsigned int CTimeEventService::Kill(unsigned int nEvent)
{
    const CProcessLockScope oScope(eLockTimeEvents);
    sTimeEvent& oEvent = m_aEvents[nEvent % MAX_EVENTS];
    if (nEvent == 0 || oEvent.nId != nEvent)
        return RESULT_CANNOT_DO;

    oEvent.nId = 0;
    return RESULT_DONE;
}

bool CTimeEventService::StartThread()
{
    if (m_bThread)
        return true;

    // Signals are for the program's own threads, save those that a callback causes itself.
    sigset_t oBlocked;
    sigset_t oFormer;
    ::sigfillset(&oBlocked);
    for (const int nSignal : {SIGBUS, SIGFPE, SIGILL, SIGSEGV, SIGSYS, SIGTRAP})
        ::sigdelset(&oBlocked, nSignal);

    pthread_t oThread;
    ::pthread_sigmask(SIG_SETMASK, &oBlocked, &oFormer);
    m_bThread = ::pthread_create(&oThread, nullptr, EnterThread, this) == 0;
    ::pthread_sigmask(SIG_SETMASK, &oFormer, nullptr);
    if (m_bThread)
        ::pthread_detach(oThread);
    return m_bThread;
}

CTimeEventService::sTimeEvent* CTimeEventService::FindFree()
{
    for (sTimeEvent& oEvent : m_aEvents)
    {
        if (oEvent.nId == 0)
            return &oEvent;
    }
    return nullptr;
}

CTimeEventService::sTimeEvent* CTimeEventService::FindEarliest()
{
    sTimeEvent* pEarliest = nullptr;
    for (sTimeEvent& oEvent : m_aEvents)
    {
        if (oEvent.nId != 0 && (pEarliest == nullptr || oEvent.nDeadline < pEarliest->nDeadline))
            pEarliest = &oEvent;
    }
    return pEarliest;
}

// No number comes again before all others have been used, so that an old one names nothing.
unsigned int CTimeEventService::NextId(const sTimeEvent& oPlace)
{
    m_nLastId = m_nLastId < MAX_EVENT_ID - MAX_EVENTS ? m_nLastId + MAX_EVENTS : MAX_EVENTS;
    return m_nLastId / MAX_EVENTS * MAX_EVENTS + static_cast<unsigned int>(&oPlace - m_aEvents);
}

// Takes the event whose turn it is. Returns false, with the time of the next one, if there is none.
bool CTimeEventService::TakeDue(sTimeEvent& oDue, CDeadline& oNext)
{
    const CProcessLockScope oScope(eLockTimeEvents);
    sTimeEvent* const pEvent = FindEarliest();
    if (pEvent == nullptr)
        return false;

    const long long nLate = Now() - pEvent->nDeadline;
    if (nLate < 0)
    {
        oNext = CDeadline::At(pEvent->nDeadline);
        return false;
    }

    oDue = *pEvent;
    if (pEvent->nPeriod == 0)
        pEvent->nId = 0;
    else // moves to the next point of the event's own grid that is not too old
        pEvent->nDeadline += std::max(nLate / pEvent->nPeriod - MAX_CALLS_BEHIND, 1LL) * pEvent->nPeriod;
    return true;
}

void CTimeEventService::Serve()
{
    for (;;)
    {
        sTimeEvent oDue;
        CDeadline oNext = CDeadline::Never();
        const tDword nChanges = m_nChanges.load(std::memory_order_acquire);
        if (!TakeDue(oDue, oNext))
            FutexSleep(&m_nChanges, nChanges, eFutexPrivate, oNext);
        else if (oDue.pCallback != nullptr)
            oDue.pCallback(oDue.nId, 0, oDue.ulUser, 0, 0);
    }
}

void* CTimeEventService::EnterThread(void* pService)
{
    static_cast<CTimeEventService*>(pService)->Serve();
    return nullptr;
}

void CTimeEventService::Forget()
{
    m_bThread = false;
    for (sTimeEvent& oEvent : m_aEvents)
        oEvent.nId = 0;
}
} // namespace TOVPosix
} // namespace TOVPlatform
