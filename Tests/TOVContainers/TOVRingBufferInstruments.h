// What the tests of ring buffers share.
#pragma once

#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"

#include <TOVContainers/TOVRingBuffer.h>

#include <ostream>
#include <vector>

typedef CTOVRingBuffer<int> tBuffer;
typedef std::vector<int> tValues;

namespace
{
TOV_PRIVATE_MEMBER(PlacesOf, tBuffer, int*, m_pBuffer)
TOV_PRIVATE_MEMBER(CountOf, tBuffer, long, m_lCount)
TOV_PRIVATE_MEMBER(CapacityOf, tBuffer, long, m_lCapacity)
TOV_PRIVATE_MEMBER(ReadPosOf, tBuffer, long, m_lReadPos)
TOV_PRIVATE_MEMBER(WritePosOf, tBuffer, long, m_lWritePos)
} // namespace

// What a buffer says of itself.
struct sRingState
{
    long lCount;
    long lCapacity;
    bool bEmpty;
    bool bFull;
};

inline bool operator==(const sRingState& oFirst, const sRingState& oSecond)
{
    return oFirst.lCount == oSecond.lCount && oFirst.lCapacity == oSecond.lCapacity &&
           oFirst.bEmpty == oSecond.bEmpty && oFirst.bFull == oSecond.bFull;
}

inline void PrintTo(const sRingState& oState, std::ostream* pStream)
{
    *pStream << oState.lCount << " of " << oState.lCapacity << (oState.bEmpty ? ", empty" : "")
             << (oState.bFull ? ", full" : "");
}

constexpr bool EMPTY = true;
constexpr bool FULL = true;

template<class T> sRingState StateOf(const CTOVRingBuffer<T>& oBuffer)
{
    EXPECT_EQ(oBuffer.GetCount(), oBuffer.GetSize());
    return {oBuffer.GetCount(), oBuffer.GetCapacity(), oBuffer.IsEmpty(), oBuffer.IsFull()};
}

inline void WriteAll(tBuffer& oBuffer, const std::vector<int>& aValues)
{
    for (const int nValue : aValues)
        EXPECT_TRUE(oBuffer.Write(nValue)) << nValue;
}

// Takes all elements, oldest first.
template<class T> std::vector<T> ReadAll(CTOVRingBuffer<T>& oBuffer)
{
    std::vector<T> aValues;
    for (T oValue = T(); oBuffer.Read(oValue);)
        aValues.push_back(oValue);
    return aValues;
}
