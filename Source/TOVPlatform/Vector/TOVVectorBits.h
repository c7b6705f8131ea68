// Inverts bits in blocks of several vectors.
#pragma once

#include <Debug/TOVBase.h>

#include <cstddef>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace TOVPlatform
{
namespace Vector
{
// Inverts the bytes at the beginning, and returns their number: all but the last 63 at most, or none without vectors. A
// loop that inverts one vector at a time is no faster than its jump.
inline std::size_t InvertBlocks([[maybe_unused]] tByte* pBytes, [[maybe_unused]] std::size_t nSize)
{
    std::size_t nByte = 0;
#if defined(__SSE2__)
    const __m128i oOnes = _mm_set1_epi8(-1);
    for (; nSize - nByte >= 4 * sizeof(__m128i); nByte += 4 * sizeof(__m128i))
    {
        __m128i* const pVectors = reinterpret_cast<__m128i*>(pBytes + nByte);
        for (int nVector = 0; nVector < 4; ++nVector)
            _mm_storeu_si128(pVectors + nVector, _mm_xor_si128(_mm_loadu_si128(pVectors + nVector), oOnes));
    }
#endif
    return nByte;
}
} // namespace Vector
} // namespace TOVPlatform
