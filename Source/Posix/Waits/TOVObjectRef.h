// One view of the objects without a name and of those with one.
#pragma once

#include <Posix/Waits/TOVNamedObject.h>
#include <Posix/Waits/TOVWakeList.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// The event, mutex or semaphore that a handle names, if there is one: a record of this process, or an object that
// processes share, which stays open while this reference lives.
class CObjectRef
{
public:
    // pRecord is null unless the handle's kind is one of a record.
    CObjectRef(tHandle hObject, CWaitable* pRecord, eNamedKind eNamed)
        : m_pRecord(pRecord), m_nTag(CHandleTable::TagOf(hObject)),
          m_pNamed(pRecord == nullptr ? CNamedObject::FromHandle(hObject, eNamed) : nullptr)
    {
    }

    ~CObjectRef()
    {
        if (m_pNamed != nullptr)
            m_pNamed->Release();
    }

    CObjectRef(const CObjectRef&) = delete;
    CObjectRef& operator=(const CObjectRef&) = delete;

    explicit operator bool() const { return m_pRecord != nullptr || m_pNamed != nullptr; }

    // These are for an event.
    void SetSignalled() const
    {
        if (m_pRecord != nullptr)
            m_pRecord->SetSignalled(m_nTag);
        else
            m_pNamed->SetSignalled();
    }

    void ClearSignal() const
    {
        if (m_pRecord != nullptr)
            m_pRecord->ClearSignal(m_nTag);
        else
            m_pNamed->ClearSignal();
    }

    // This is for a mutex. It does nothing unless that thread is the owner.
    void LeaveMutex(sThreadRecord& oThread) const
    {
        if (m_pRecord != nullptr)
            m_pRecord->LeaveMutex(m_nTag, oThread);
        else
            m_pNamed->LeaveMutex(oThread);
    }

    // This is for a semaphore. Returns false, with the count unchanged, if the count would exceed the maximum.
    bool ReleaseSemaphore(tDword nCount, tDword& nPrevious) const
    {
        if (m_pRecord != nullptr)
            return m_pRecord->ReleaseSemaphore(m_nTag, nCount, nPrevious);
        return m_pNamed->ReleaseSemaphore(nCount, nPrevious);
    }

private:
    CWaitable* m_pRecord;
    tDword m_nTag;
    CNamedObject* m_pNamed;
};

inline CObjectRef FindEvent(tHandle hEvent)
{
    CWaitable* pEvent = CHandleTable::Find(hEvent, eKindAutoEvent);
    if (pEvent == nullptr)
        pEvent = CHandleTable::Find(hEvent, eKindManualEvent);
    return CObjectRef(hEvent, pEvent, eNamedEvent);
}

inline CObjectRef FindMutex(tHandle hMutex)
{
    return CObjectRef(hMutex, CHandleTable::Find(hMutex, eKindMutex), eNamedMutex);
}

inline CObjectRef FindSemaphore(tHandle hSemaphore)
{
    return CObjectRef(hSemaphore, CHandleTable::Find(hSemaphore, eKindSemaphore), eNamedSemaphore);
}
} // namespace TOVPosix
} // namespace TOVPlatform
