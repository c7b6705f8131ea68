// What the tests of buffers share.
#pragma once

#include "Support/TOVTestSupport.h"

#include <TOVContainers/TOVBuffer.h>

#include <vector>

constexpr char VALID_CHECK[] = "m_pArray.IsValid()";
constexpr char RANGE_CHECK[] = "(0 <= lIndex) && (lIndex+lSize <= GetSize())";
constexpr char SIZE_CHECK[] = "lNumElements >= 0";
constexpr char FIRST_INDEX_CHECK[] = "(0 <= lIndex1) && (lIndex1 < GetSize())";
constexpr char SECOND_INDEX_CHECK[] = "(0 <= lIndex2) && (lIndex2 < GetSize())";

template<class T> CTOVBuffer<T> MakeBuffer(const std::vector<T>& aElements)
{
    return CTOVBuffer<T>(aElements.data(), static_cast<long>(aElements.size()));
}

template<class T> std::vector<T> Elements(const CTOVBuffer<T>& oBuffer)
{
    return std::vector<T>(oBuffer.GetBuffer(), oBuffer.GetBuffer() + oBuffer.GetSize());
}

// Elements of every type for which the library has buffers.
template<class T> class CBufferFixture : public testing::Test
{
protected:
    const T m_aThree[3] = {T(5), T(6), T(7)};
    const T m_aTwo[2] = {T(8), T(9)};
};

typedef testing::Types<tByte, char, wchar_t> tElementTypes;
