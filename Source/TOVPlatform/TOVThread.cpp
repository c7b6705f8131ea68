// The threads of both platforms: waits for their end, and the table of priorities.
#include <TOVPlatform/TOVThread.h>

#include <TOVPlatform/Backend/TOVSynchronization.h>
#include <TOVPlatform/Backend/TOVThread.h>

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
    {eThreadPriorityLow, Backend::Thread::LEVEL_LOWEST},
    {eThreadPriorityNormal, Backend::Thread::LEVEL_NORMAL},
    {eThreadPriorityHigh, Backend::Thread::LEVEL_HIGHEST},
    {eThreadPriorityTimeCritical, Backend::Thread::LEVEL_TIME_CRITICAL},
};
} // namespace

void WaitForExit(tHandle hThread, unsigned long ulMilliseconds)
{
    Backend::Wait::ForOne(hThread, static_cast<tDword>(ulMilliseconds));
}

void WaitForExitInfinite(tHandle hThread)
{
    Backend::Wait::ForOne(hThread, Backend::Wait::INFINITE_TIMEOUT);
}

eThreadPriority GetPriority(tHandle hThread)
{
    const int nLevel = Backend::Thread::ReadPriority(hThread);
    for (const sPriority& oEntry : PRIORITIES)
    {
        if (oEntry.nLevel == nLevel)
            return oEntry.ePriority;
    }
    return static_cast<eThreadPriority>(-1); // Settled: a level in between has no enumerator, nor has -1.
}

void SetPriority(tHandle hThread, eThreadPriority ePriority)
{
    int nLevel = Backend::Thread::LEVEL_NORMAL;
    for (const sPriority& oEntry : PRIORITIES)
    {
        if (oEntry.ePriority == ePriority)
            nLevel = oEntry.nLevel;
    }
    Backend::Thread::WritePriority(hThread, nLevel);
}
} // namespace TOVThread
} // namespace TOVPlatform
