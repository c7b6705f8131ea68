#include <TOVPlatform/Backend/TOVSynchronization.h>

#include <Windows/TOVNativeHandle.h>

#include <new>

#undef InterlockedIncrement // <windows.h> would rename our function

namespace TOVPlatform
{
namespace TOVSynchronization
{
namespace
{
CRITICAL_SECTION* ToSection(tHandle hCriticalSection)
{
    return static_cast<CRITICAL_SECTION*>(ToNative(hCriticalSection));
}
} // namespace

tHandle CriticalSection::Create(unsigned long)
{
    CRITICAL_SECTION* const pSection = new (std::nothrow) CRITICAL_SECTION;
    if (pSection != nullptr)
        ::InitializeCriticalSection(pSection);
    return FromNative(pSection);
}

void CriticalSection::Enter(tHandle hCriticalSection)
{
    if (CRITICAL_SECTION* const pSection = ToSection(hCriticalSection))
        ::EnterCriticalSection(pSection);
}

void CriticalSection::Leave(tHandle hCriticalSection)
{
    if (CRITICAL_SECTION* const pSection = ToSection(hCriticalSection))
        ::LeaveCriticalSection(pSection);
}

void CriticalSection::Destroy(tHandle hCriticalSection)
{
    if (CRITICAL_SECTION* const pSection = ToSection(hCriticalSection))
    {
        ::DeleteCriticalSection(pSection);
        delete pSection;
    }
}

tHandle Event::Create(bool bManualReset, bool bInitiallySignalled, const char* szName)
{
    return FromNative(::CreateEventA(nullptr, bManualReset, bInitiallySignalled, szName));
}

bool Event::Destroy(tHandle hEvent)
{
    return ::CloseHandle(ToNative(hEvent)) != FALSE;
}

void Event::Signal(tHandle hEvent)
{
    ::SetEvent(ToNative(hEvent));
}

void Event::SignalIfClear(tHandle hEvent)
{
    ::SetEvent(ToNative(hEvent)); // the system tells no event's state
}

void Event::Reset(tHandle hEvent)
{
    ::ResetEvent(ToNative(hEvent));
}

tHandle Mutex::Create(bool bInitiallyOwned, const char* szName)
{
    return FromNative(::CreateMutexA(nullptr, bInitiallyOwned, szName));
}

bool Mutex::Destroy(tHandle hMutex)
{
    return ::CloseHandle(ToNative(hMutex)) != FALSE;
}

void Mutex::Unlock(tHandle hMutex)
{
    ::ReleaseMutex(ToNative(hMutex));
}

tHandle Semaphore::Create(long lInitialCount, long lMaximumCount, const char* szName)
{
    return FromNative(::CreateSemaphoreA(nullptr, lInitialCount, lMaximumCount, szName));
}

bool Semaphore::Destroy(tHandle hSemaphore)
{
    return ::CloseHandle(ToNative(hSemaphore)) != FALSE;
}

long Semaphore::Unlock(tHandle hSemaphore, long lReleaseCount)
{
    if (lReleaseCount < 1) // not every version of the system refuses 0
        return 0;

    LONG lPreviousCount = 0;
    if (::ReleaseSemaphore(ToNative(hSemaphore), lReleaseCount, &lPreviousCount) == FALSE)
        return 0;
    return lPreviousCount;
}

long Variable::InterlockedIncrement(long& lVariable)
{
    return ::_InterlockedIncrement(&lVariable);
}
} // namespace TOVSynchronization

namespace Backend
{
static_assert(Wait::MAX_OBJECTS == MAXIMUM_WAIT_OBJECTS && Wait::INFINITE_TIMEOUT == INFINITE &&
                  Wait::RESULT_SIGNALLED == WAIT_OBJECT_0 && Wait::RESULT_ABANDONED == WAIT_ABANDONED_0 &&
                  Wait::RESULT_TIMEOUT == WAIT_TIMEOUT && Wait::RESULT_FAILED == WAIT_FAILED,
              "the waits' results are passed on as they stand");

tDword Wait::ForOne(tHandle hObject, tDword dwMilliseconds)
{
    return ::WaitForSingleObject(ToNative(hObject), dwMilliseconds);
}

tDword Wait::ForMany(const tHandle* pHandles, int nCount, bool bWaitForAll, tDword dwMilliseconds)
{
    HANDLE ahObjects[MAX_OBJECTS];
    for (int nIndex = 0; nIndex < nCount; ++nIndex)
        ahObjects[nIndex] = ToNative(pHandles[nIndex]);
    return ::WaitForMultipleObjects(static_cast<DWORD>(nCount), ahObjects, bWaitForAll, dwMilliseconds);
}
} // namespace Backend
} // namespace TOVPlatform
