// What the threads of both platforms have in common: waits for the end, and the table of priorities.
#include <TOVPlatform/TOVThread.h>

#include <TOVPlatform/TOVThreadPriority.h>
#include <TOVPlatform/TOVWait.h>

namespace TOVPlatform
{
namespace TOVThread
{
namespace
{
struct sPriority
{
    eThreadPriority ePriority;
    int nLevel;
};

constexpr sPriority PRIORITIES[] = {
    {eThreadPriorityLow, TOVThreadPriority::LEVEL_LOWEST},
    {eThreadPriorityNormal, TOVThreadPriority::LEVEL_NORMAL},
    {eThreadPriorityHigh, TOVThreadPriority::LEVEL_HIGHEST},
    {eThreadPriorityTimeCritical, TOVThreadPriority::LEVEL_TIME_CRITICAL},
};
} // namespace

void WaitForExit(tHandle hThread, unsigned long ulMilliseconds)
{
    TOVWait::ForOne(hThread, static_cast<tDword>(ulMilliseconds));
}

void WaitForExitInfinite(tHandle hThread)
{
    TOVWait::ForOne(hThread, TOVWait::INFINITE_TIMEOUT);
}

eThreadPriority GetPriority(tHandle hThread)
{
    const int nLevel = TOVThreadPriority::Read(hThread);
    for (const sPriority& oEntry : PRIORITIES)
    {
        if (oEntry.nLevel == nLevel)
            return oEntry.ePriority;
    }
    return static_cast<eThreadPriority>(-1); // Settled: the levels between have no enumerator, nor has this value.
}

void SetPriority(tHandle hThread, eThreadPriority ePriority)
{
    int nLevel = TOVThreadPriority::LEVEL_NORMAL;
    for (const sPriority& oEntry : PRIORITIES)
    {
        if (oEntry.ePriority == ePriority)
            nLevel = oEntry.nLevel;
    }
    TOVThreadPriority::Write(hThread, nLevel);
}
} // namespace TOVThread
} // namespace TOVPlatform
