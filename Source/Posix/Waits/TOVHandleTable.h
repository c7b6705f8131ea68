// All records of handles, and the way from a handle to its record.
#pragma once

#include <Posix/Waits/TOVWaitable.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// A handle is a record's tag in the high half and its place in the table in the low half. No tag of a living object is
// 0, so no handle is. Up to 1,048,576 objects; memory grows in chunks and is never given back. Usable before any static
// has been constructed. Threads: any.
class CHandleTable
{
public:
    // Returns a free record, or null if there is no memory or no place. Nobody finds it before Publish, which gives it
    // a new tag and its first value, and returns the handle.
    static CWaitable* Allocate();
    static tHandle Publish(CWaitable* pObject, eKind eObject, tDword nValue);

    // The record of the handle, or null. It can become another object's at any time, so that all later steps compare
    // the tag.
    static CWaitable* Find(tHandle hObject);
    static CWaitable* Find(tHandle hObject, eKind eObject)
    {
        return KindOf(TagOf(hObject)) == eObject ? Find(hObject) : nullptr;
    }

    // The record at the place that the handle names, or null, whatever its tag is. For steps that compare the tag.
    static CWaitable* FindPlace(tHandle hObject);

    static tDword TagOf(tHandle hObject) { return static_cast<tDword>(hObject >> 32); }

    // Gives a record back that nobody can find.
    static void Recycle(CWaitable* pObject);

    // Calls fnVisit(CWaitable&) for every record, free ones included.
    template<class TVisit> static void ForEach(TVisit fnVisit);

    static constexpr tDword CHUNK_BITS = 6;
    static constexpr tDword CHUNK_SIZE = 1u << CHUNK_BITS;

private:
    static constexpr tDword CHUNK_COUNT = 16384;

    // Returns the first record that has never been used, or null if there is no memory or no place.
    static CWaitable* TakeNewPlace();

    // The lock of the handles guards these, and the growth of the chunks.
    static tDword s_nPlaces; // all places before it have been used
    static CWaitable* s_pFirstFree;
    static std::atomic<CWaitable*> s_apChunks[CHUNK_COUNT];
};

inline CWaitable* CHandleTable::FindPlace(tHandle hObject)
{
    const tDword nPlace = static_cast<tDword>(hObject);
    if (nPlace >= CHUNK_COUNT * CHUNK_SIZE)
        return nullptr;
    CWaitable* const pChunk = s_apChunks[nPlace >> CHUNK_BITS].load(std::memory_order_acquire);
    return pChunk != nullptr ? pChunk + (nPlace & (CHUNK_SIZE - 1)) : nullptr;
}

inline CWaitable* CHandleTable::Find(tHandle hObject)
{
    CWaitable* const pObject = FindPlace(hObject);
    const tDword nTag = TagOf(hObject);
    return pObject != nullptr && KindOf(nTag) != eKindNone && pObject->GetTag() == nTag ? pObject : nullptr;
}

template<class TVisit> void CHandleTable::ForEach(TVisit fnVisit)
{
    for (std::atomic<CWaitable*>& pChunk : s_apChunks)
    {
        CWaitable* const pRecords = pChunk.load(std::memory_order_acquire);
        if (pRecords == nullptr)
            return;
        for (tDword nIndex = 0; nIndex < CHUNK_SIZE; ++nIndex)
            fnVisit(pRecords[nIndex]);
    }
}
} // namespace TOVPosix
} // namespace TOVPlatform
