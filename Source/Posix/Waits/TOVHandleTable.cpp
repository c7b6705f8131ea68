#include <Posix/Waits/TOVHandleTable.h>

#include <Posix/Base/TOVProcessLocks.h>

#include <new>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
// The first chunk is there from the start. It takes no block, and only those of its pages that are used.
CWaitable s_aFirstRecords[CHandleTable::CHUNK_SIZE];
} // namespace

// The compiler places the last of these first, so that a program with few handles touches one page of all three.
std::atomic<CWaitable*> CHandleTable::s_apChunks[CHUNK_COUNT] = {};
CWaitable* CHandleTable::s_pFirstFree = nullptr;
tDword CHandleTable::s_nPlaces = 0;

CWaitable* CHandleTable::Allocate()
{
    const CProcessLockScope oScope(eLockHandles);
    CWaitable* const pObject = s_pFirstFree;
    if (pObject == nullptr)
        return TakeNewPlace();

    s_pFirstFree = pObject->m_pNextFree;
    return pObject;
}

tHandle CHandleTable::Publish(CWaitable* pObject, eKind eObject, tDword nValue)
{
    const tDword nUses = (pObject->GetTag() >> TAG_KIND_BITS) + 1;
    const tDword nTag = nUses << TAG_KIND_BITS | eObject;
    pObject->m_nInnerLevels.store(0, std::memory_order_relaxed);
    if (eObject != eKindThread && eObject != eKindNamed) // threads wait for what others do
        pObject->m_oOwner.Admit();
    pObject->m_nWord.store(CWaitable::MakeWord(nTag, nValue), std::memory_order_release);
    return pObject->GetHandle();
}

void CHandleTable::Recycle(CWaitable* pObject)
{
    const CProcessLockScope oScope(eLockHandles);
    pObject->m_pNextFree = s_pFirstFree;
    s_pFirstFree = pObject;
}

CWaitable* CHandleTable::TakeNewPlace()
{
    const tDword nIndex = s_nPlaces % CHUNK_SIZE;
    const tDword nChunk = s_nPlaces / CHUNK_SIZE;
    if (nChunk == CHUNK_COUNT)
        return nullptr;

    if (nIndex == 0)
    {
        CWaitable* const pRecords = nChunk == 0 ? s_aFirstRecords : new (std::nothrow) CWaitable[CHUNK_SIZE]();
        if (pRecords == nullptr)
            return nullptr;
        s_apChunks[nChunk].store(pRecords, std::memory_order_release);
    }
    CWaitable& oRecord = s_apChunks[nChunk].load(std::memory_order_relaxed)[nIndex];
    oRecord.m_nPlace = s_nPlaces++;
    return &oRecord;
}
} // namespace TOVPosix
} // namespace TOVPlatform
