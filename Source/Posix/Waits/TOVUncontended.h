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
    return pSection != nullptr && pSection->ExchangeLock(0, t_oThread.nId);
}

inline bool LeaveSection(tHandle hSection)
{
    CWaitable* const pSection = CHandleTable::Find(hSection, eKindCriticalSection);
    return pSection != nullptr && !pSection->HasInnerLevels() && pSection->ExchangeLock(t_oThread.nId, 0);
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
    {
        const tDword nValue = pObject->PeekValue();
        return nValue != 0 && (nValue & VALUE_HELD) == 0 && pObject->Exchange(nTag, nValue, nValue - 1);
    }
    default:
        return false;
    }
}

inline bool LeaveMutex(tHandle hMutex)
{
    const tDword nTag = CHandleTable::TagOf(hMutex);
    CWaitable* const pMutex = CHandleTable::FindPlace(hMutex);
    if (pMutex == nullptr || KindOf(nTag) != eKindMutex || pMutex->HasInnerLevels() ||
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

// Writes only if the event has another value.
inline bool ChangeSignal(tHandle hEvent, tDword nTo)
{
    const tDword nTag = CHandleTable::TagOf(hEvent);
    CWaitable* const pEvent = CHandleTable::FindPlace(hEvent);
    return pEvent != nullptr && IsEvent(nTag) && pEvent->ChangeSignal(nTag, nTo);
}

inline bool ReleaseSemaphore(tHandle hSemaphore, tDword nCount, tDword& nPrevious)
{
    const tDword nTag = CHandleTable::TagOf(hSemaphore);
    CWaitable* const pSemaphore = CHandleTable::FindPlace(hSemaphore);
    if (pSemaphore == nullptr || KindOf(nTag) != eKindSemaphore)
        return false;
    nPrevious = pSemaphore->PeekValue();
    return (nPrevious & VALUE_HELD) == 0 &&
           nCount <= pSemaphore->m_nMaximum.load(std::memory_order_relaxed) - nPrevious &&
           pSemaphore->Exchange(nTag, nPrevious, nPrevious + nCount);
}
} // namespace Uncontended
} // namespace TOVPosix
} // namespace TOVPlatform
