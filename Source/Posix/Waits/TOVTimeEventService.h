// The service that calls time events back.
#pragma once

#include <Posix/Base/TOVFutex.h>
#include <TOVPlatform/Backend/TOVTimeEvent.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// All time events of the process. One thread serves them; it begins with the first event and never ends. Functions and
// results are those of Backend/TOVTimeEvent.h. Usable before any static has been constructed. Threads: any.
class CTimeEventService
{
public:
    unsigned int BeginPeriod(unsigned int nMilliseconds);
    unsigned int EndPeriod(unsigned int nMilliseconds);
    unsigned int Set(unsigned int nDelay, Backend::tTimeEvent pCallback, unsigned long ulUser, bool bPeriodic);
    unsigned int Kill(unsigned int nEvent);

    // Called in the child of a fork, under the lock of the time events: the service thread stays with the parent, and
    // so do the events, as the system's own timers do.
    void Forget();

private:
    // The limits of the Windows timer service.
    static constexpr unsigned int MIN_PERIOD = 1;
    static constexpr unsigned int MAX_PERIOD = 65535;
    static constexpr unsigned int MAX_EVENTS = 16;

    struct sTimeEvent
    {
        unsigned int nId; // 0 for a free place; otherwise the place's index in the low 4 bits
        Backend::tTimeEvent pCallback;
        unsigned long ulUser;
        long long nPeriod; // 0 for a single call
        long long nDeadline;
    };

    static bool IsPeriod(unsigned int nMilliseconds);
    bool StartThread();
    sTimeEvent* FindFree();
    sTimeEvent* FindEarliest();
    unsigned int NextId(const sTimeEvent& oPlace);
    bool TakeDue(sTimeEvent& oDue, CDeadline& oNext);
    void Serve();

    static void* EnterThread(void* pService);

    // All members are guarded by the lock of the time events.
    tFutex m_nChanges = {0}; // what the thread sleeps on: counts the events that have come
    bool m_bThread = false;
    unsigned int m_nLastId = 0;
    sTimeEvent m_aEvents[MAX_EVENTS] = {};
    tDword m_aPeriods[MAX_PERIOD + 1] = {}; // how often each period has been begun and not ended
};

extern CTimeEventService s_oTimeEventService;
} // namespace TOVPosix
} // namespace TOVPlatform
