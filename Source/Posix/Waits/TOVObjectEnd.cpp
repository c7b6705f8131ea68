#include <Posix/Waits/TOVObjectEnd.h>

#include <Posix/Waits/TOVNamedObject.h>
#include <Posix/Waits/TOVWakeList.h>

namespace TOVPlatform
{
namespace TOVPosix
{
bool CloseObject(tHandle hObject)
{
    const tDword nTag = CHandleTable::TagOf(hObject);
    if (KindOf(nTag) == eKindNamed)
        return CNamedObject::CloseHandle(hObject);
    if (KindOf(nTag) == eKindCriticalSection)
        return false;
    CWaitable* const pRecord = CHandleTable::Find(hObject);
    return pRecord != nullptr && CloseRecord(*pRecord, nTag);
}

bool CloseRecord(CWaitable& oRecord, tDword nTag)
{
    {
        CWaitScope oScope;
        if (!oRecord.Hold(nTag))
            return false;
        oScope.Fail(oRecord);
        oRecord.Retire();
    }
    CHandleTable::Recycle(&oRecord);
    return true;
}

void AbandonMutexes(tDword nThreadId)
{
    CHandleTable::ForEach([nThreadId](CWaitable& oObject) {
        const tDword nTag = oObject.GetTag();
        if (KindOf(nTag) != eKindMutex || !oObject.IsOwnedBy(nThreadId))
            return;
        oObject.m_nInnerLevels.store(0, std::memory_order_relaxed);
        oObject.SetValue(nTag, MUTEX_ABANDONED);
    });
}

void EndThread(tHandle hThread)
{
    CWaitScope oScope; // needed in any case: a thread that uses this thread's id holds the lock
    CWaitable* const pThread = CHandleTable::Find(hThread);
    if (pThread == nullptr || !pThread->Hold(CHandleTable::TagOf(hThread)))
        return;
    pThread->ChangeHeld([](tDword& nValue) {
        nValue = VALUE_SIGNALLED;
        return true;
    });
    oScope.Serve(*pThread);
    pThread->Release();
}

void EndOtherThreads(const sThreadRecord& oThread, tDword nFormerId)
{
    CHandleTable::ForEach([&](CWaitable& oObject) { oObject.LeaveTo(oThread, nFormerId); });
}
} // namespace TOVPosix
} // namespace TOVPlatform
