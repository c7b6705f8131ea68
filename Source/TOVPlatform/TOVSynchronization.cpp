// The waits of both platforms: how the result of the system's wait becomes the one that the caller gets.
#include <TOVPlatform/TOVSynchronization.h>

#include <TOVPlatform/Backend/TOVSynchronization.h>

#include <algorithm>

namespace TOVPlatform
{
namespace TOVSynchronization
{
namespace
{
constexpr int MULTIPLE_WAIT_FAILED = -1;
constexpr int MULTIPLE_WAIT_TIMEOUT = -2;

void WaitForEver(tHandle hObject)
{
    Backend::Wait::ForOne(hObject, Backend::Wait::INFINITE_TIMEOUT);
}

// Settled: a failed wait counts as a released one.
bool IsReleasedInTime(tHandle hObject, long lMilliseconds)
{
    return Backend::Wait::ForOne(hObject, static_cast<tDword>(lMilliseconds)) != Backend::Wait::RESULT_TIMEOUT;
}

// A wait for all cannot take one object twice; not every version of the systems refuses that.
bool HasTwins(const tHandle* pHandles, int nCount)
{
    for (int nIndex = 1; nIndex < nCount; ++nIndex)
    {
        if (std::find(pHandles, pHandles + nIndex, pHandles[nIndex]) != pHandles + nIndex)
            return true;
    }
    return false;
}

int WaitForSeveral(const tHandle* pHandles, int nCount, bool bWaitForAll, tDword dwMilliseconds)
{
    if (pHandles == nullptr || nCount < 1 || nCount > Backend::Wait::MAX_OBJECTS)
        return MULTIPLE_WAIT_FAILED;
    if (bWaitForAll && HasTwins(pHandles, nCount))
        return MULTIPLE_WAIT_FAILED;

    const tDword dwResult = Backend::Wait::ForMany(pHandles, nCount, bWaitForAll, dwMilliseconds);
    return dwResult == Backend::Wait::RESULT_TIMEOUT ? MULTIPLE_WAIT_TIMEOUT : static_cast<int>(dwResult);
}
} // namespace

void Event::Wait(tHandle hEvent)
{
    WaitForEver(hEvent);
}

bool Event::TimedWait(tHandle hEvent, long lMilliseconds)
{
    return IsReleasedInTime(hEvent, lMilliseconds);
}

int Event::MultipleWait(tHandle* pHandles, int nCount, bool bWaitForAll)
{
    return WaitForSeveral(pHandles, nCount, bWaitForAll, Backend::Wait::INFINITE_TIMEOUT);
}

int Event::MultipleTimedWait(tHandle* pHandles, int nCount, bool bWaitForAll, long lMilliseconds)
{
    return WaitForSeveral(pHandles, nCount, bWaitForAll, static_cast<tDword>(lMilliseconds));
}

void Mutex::Lock(tHandle hMutex)
{
    WaitForEver(hMutex);
}

bool Mutex::IsLocked(tHandle hMutex)
{
    // Settled: a free mutex is taken by this query.
    return Backend::Wait::ForOne(hMutex, 0) != Backend::Wait::RESULT_SIGNALLED;
}

void Semaphore::Lock(tHandle hSemaphore)
{
    WaitForEver(hSemaphore);
}

bool Semaphore::TryLock(tHandle hSemaphore, long lMilliseconds)
{
    return IsReleasedInTime(hSemaphore, lMilliseconds);
}
} // namespace TOVSynchronization
} // namespace TOVPlatform
