// Defines the comparison of short blocks of memory, which is inlined. Internal to the memory functions.
#pragma once

#include <cstddef>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace TOVPlatform
{
namespace Vector
{
// Returns whether two blocks are short and equal: 16 to 64 bytes. Others are never called equal here. No other byte is
// read.
inline bool AreShortAndEqual(const void* pFirst, const void* pSecond, std::size_t nSize)
{
#if defined(__SSE2__)
    constexpr std::size_t VECTOR = sizeof(__m128i);
    const auto EqualBytes = [=](std::size_t nStart) {
        const unsigned char* const pBytes1 = static_cast<const unsigned char*>(pFirst) + nStart;
        const unsigned char* const pBytes2 = static_cast<const unsigned char*>(pSecond) + nStart;
        return _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pBytes1)),
                              _mm_loadu_si128(reinterpret_cast<const __m128i*>(pBytes2)));
    };
    if (nSize < VECTOR || nSize > 4 * VECTOR)
        return false;

    // Vectors from both ends, which may overlap each other.
    __m128i oEqual = _mm_and_si128(EqualBytes(0), EqualBytes(nSize - VECTOR));
    if (nSize > 2 * VECTOR)
        oEqual = _mm_and_si128(oEqual, _mm_and_si128(EqualBytes(VECTOR), EqualBytes(nSize - 2 * VECTOR)));
    return _mm_movemask_epi8(oEqual) == 0xFFFF;
#else
    static_cast<void>(pFirst);
    static_cast<void>(pSecond);
    static_cast<void>(nSize);
    return false;
#endif
}
} // namespace Vector
} // namespace TOVPlatform
