#include <Posix/Waits/TOVHandleTable.h>

#include <Posix/Base/TOVProcessLocks.h>

#include <new>

namespace TOVPlatform
{
namespace TOVPosix
{
tDword CHandleTable::s_nChunks = 0;
CWaitable* CHandleTable::s_pFirstFree = nullptr;
std::atomic<CWaitable*> CHandleTable::s_apChunks[CHUNK_COUNT] = {};

CWaitable* CHandleTable::Allocate()
{
    const CProcessLockScope oScope(eLockHandles);
    if (s_pFirstFree == nullptr && !AddChunk())
        return nullptr;

    CWaitable* const pObject = s_pFirstFree;
    s_pFirstFree = pObject->m_pNextFree;
    return pObject;
}

tHandle CHandleTable::Publish(CWaitable* pObject, eKind eObject, tDword nValue)
{
    const tDword nUses = (pObject->GetTag() >> TAG_KIND_BITS) + 1;
    const tDword nTag = nUses << TAG_KIND_BITS | eObject;
    pObject->m_nInnerLevels.store(0, std::memory_order_relaxed);
    pObject->m_nWord.store(CWaitable::MakeWord(nTag, nValue), std::memory_order_release);
    return pObject->GetHandle();
}

void CHandleTable::Recycle(CWaitable* pObject)
{
    const CProcessLockScope oScope(eLockHandles);
    pObject->m_pNextFree = s_pFirstFree;
    s_pFirstFree = pObject;
}

bool CHandleTable::AddChunk()
{
    CWaitable* const pRecords = s_nChunks < CHUNK_COUNT ? new (std::nothrow) CWaitable[CHUNK_SIZE]() : nullptr;
    if (pRecords == nullptr)
        return false;

    for (tDword nIndex = CHUNK_SIZE; nIndex-- > 0;) // the first place is used first
    {
        pRecords[nIndex].m_nPlace = s_nChunks * CHUNK_SIZE + nIndex;
        pRecords[nIndex].m_pNextFree = s_pFirstFree;
        s_pFirstFree = &pRecords[nIndex];
    }
    s_apChunks[s_nChunks++].store(pRecords, std::memory_order_release);
    return true;
}
} // namespace TOVPosix
} // namespace TOVPlatform
