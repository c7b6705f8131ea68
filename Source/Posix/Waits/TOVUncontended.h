// The operations on sections and objects without a name for which nobody waits: one compare and swap each, and no call.
#pragma once

#include <Posix/Waits/TOVHandleTable.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// Each function does what the operation of that name does, or returns false with nothing changed if there is more to
// it: a thread waits, the object cannot be had at once, the handle is another one, the calling thread has not been seen
// yet. Then the operation itself has to find out.
namespace Uncontended
{
inline bool IsEvent(tDword nTag)
{
    return KindOf(nTag) == eKindAutoEvent || KindOf(nTag) == eKindManualEvent;
}

inline bool EnterSection(tHandle hSection)
{
    CWaitable* const pSection = CHandleTable::Find(hSection, eKindCriticalSection);
    tDword nState = 0;
    return pSection != nullptr && t_oThread.nId != 0 &&
           pSection->m_nLock.compare_exchange_strong(nState, t_oThread.nId, std::memory_order_acquire,
                                                     std::memory_order_relaxed);
}

inline bool LeaveSection(tHandle hSection)
{
    CWaitable* const pSection = CHandleTable::Find(hSection, eKindCriticalSection);
    tDword nState = t_oThread.nId;
    return pSection != nullptr && nState != 0 && !pSection->HasInnerLevels() &&
           pSection->m_nLock.compare_exchange_strong(nState, 0, std::memory_order_release, std::memory_order_relaxed);
}

inline bool Take(tHandle hObject)
{
    const tDword nTag = CHandleTable::TagOf(hObject);
    CWaitable* const pObject = CHandleTable::FindPlace(hObject);
    if (pObject == nullptr)
        return false;

    switch (KindOf(nTag))
    {
    case eKindMutex:
        if (!t_oThread.bIntroduced || !pObject->Exchange(nTag, 0, t_oThread.nId))
            return false;
        ++t_oThread.nOwnedMutexes;
        return true;
    case eKindAutoEvent:
        return pObject->Exchange(nTag, VALUE_SIGNALLED, 0);
    case eKindManualEvent:
        return pObject->HasValue(nTag, VALUE_SIGNALLED);
    case eKindSemaphore:
        return pObject->TryChange(nTag, [](tDword& nValue) { return nValue-- != 0; }) == eTryDone;
    default:
        return false;
    }
}

inline bool LeaveMutex(tHandle hMutex)
{
    const tDword nTag = CHandleTable::TagOf(hMutex);
    CWaitable* const pMutex = CHandleTable::FindPlace(hMutex);
    if (pMutex == nullptr || KindOf(nTag) != eKindMutex || t_oThread.nId == 0 || pMutex->HasInnerLevels() ||
        !pMutex->Exchange(nTag, t_oThread.nId, 0))
        return false;
    --t_oThread.nOwnedMutexes;
    return true;
}

inline bool SetSignalled(tHandle hEvent)
{
    const tDword nTag = CHandleTable::TagOf(hEvent);
    CWaitable* const pEvent = CHandleTable::FindPlace(hEvent);
    return pEvent != nullptr && IsEvent(nTag) && pEvent->Exchange(nTag, 0, VALUE_SIGNALLED);
}

// Whether this is an event that has the value.
inline bool HasValue(tHandle hEvent, tDword nValue)
{
    const tDword nTag = CHandleTable::TagOf(hEvent);
    const CWaitable* const pEvent = CHandleTable::FindPlace(hEvent);
    return pEvent != nullptr && IsEvent(nTag) && pEvent->HasValue(nTag, nValue);
}

inline bool ReleaseSemaphore(tHandle hSemaphore, tDword nCount, tDword& nPrevious)
{
    const tDword nTag = CHandleTable::TagOf(hSemaphore);
    CWaitable* const pSemaphore = CHandleTable::FindPlace(hSemaphore);
    return pSemaphore != nullptr && KindOf(nTag) == eKindSemaphore &&
           pSemaphore->TryReleaseSemaphore(nTag, nCount, nPrevious) == eTryDone;
}
} // namespace Uncontended
} // namespace TOVPosix
} // namespace TOVPlatform
