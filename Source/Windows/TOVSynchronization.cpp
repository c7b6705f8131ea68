#include <TOVPlatform/TOVSynchronization.h>
#include <TOVPlatform/TOVWait.h>

#include <Windows/TOVNativeHandle.h>

#include <new>

#undef InterlockedIncrement // <windows.h> would rename our function

namespace TOVPlatform
{
namespace TOVSynchronization
{
namespace
{
tHandle FromRecord(CRITICAL_SECTION* pRecord)
{
    return static_cast<tHandle>(static_cast<long long>(reinterpret_cast<LONG_PTR>(pRecord)));
}

CRITICAL_SECTION* ToRecord(tHandle hCriticalSection)
{
    return reinterpret_cast<CRITICAL_SECTION*>(static_cast<ULONG_PTR>(hCriticalSection));
}
} // namespace

tHandle CriticalSection::Create(unsigned long)
{
    CRITICAL_SECTION* const pRecord = new (std::nothrow) CRITICAL_SECTION;
    if (pRecord != nullptr)
        ::InitializeCriticalSection(pRecord);
    return FromRecord(pRecord);
}

void CriticalSection::Enter(tHandle hCriticalSection)
{
    if (CRITICAL_SECTION* const pRecord = ToRecord(hCriticalSection))
        ::EnterCriticalSection(pRecord);
}

void CriticalSection::Leave(tHandle hCriticalSection)
{
    if (CRITICAL_SECTION* const pRecord = ToRecord(hCriticalSection))
        ::LeaveCriticalSection(pRecord);
}

void CriticalSection::Destroy(tHandle hCriticalSection)
{
    if (CRITICAL_SECTION* const pRecord = ToRecord(hCriticalSection))
    {
        ::DeleteCriticalSection(pRecord);
        delete pRecord;
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
    LONG lPreviousCount = 0;
    if (lReleaseCount < 1 || !::ReleaseSemaphore( // not every version of the system refuses 0
                                 ToNative(hSemaphore), lReleaseCount, &lPreviousCount))
        return 0;
    return lPreviousCount;
}

long Variable::InterlockedIncrement(long& lVariable)
{
    return ::_InterlockedIncrement(&lVariable);
}
} // namespace TOVSynchronization

static_assert(TOVWait::MAX_OBJECTS == MAXIMUM_WAIT_OBJECTS && TOVWait::INFINITE_TIMEOUT == INFINITE &&
                  TOVWait::RESULT_SIGNALLED == WAIT_OBJECT_0 && TOVWait::RESULT_ABANDONED == WAIT_ABANDONED_0 &&
                  TOVWait::RESULT_TIMEOUT == WAIT_TIMEOUT && TOVWait::RESULT_FAILED == WAIT_FAILED,
              "the waits' results are passed on as they stand");

tDword TOVWait::ForOne(tHandle hObject, tDword dwMilliseconds)
{
    return ::WaitForSingleObject(ToNative(hObject), dwMilliseconds);
}

tDword TOVWait::ForMany(const tHandle* pHandles, int nCount, bool bWaitForAll, tDword dwMilliseconds)
{
    HANDLE ahObjects[MAX_OBJECTS];
    for (int nIndex = 0; nIndex < nCount; ++nIndex)
        ahObjects[nIndex] = ToNative(pHandles[nIndex]);
    return ::WaitForMultipleObjects(static_cast<DWORD>(nCount), ahObjects, bWaitForAll, dwMilliseconds);
}
} // namespace TOVPlatform
