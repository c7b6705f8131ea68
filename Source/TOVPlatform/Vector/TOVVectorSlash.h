// Defines the search for the last separator of a path, which is inlined where paths are taken apart. Internal to them.
#pragma once

#include <Debug/TOVCompiler.h>

#if defined(__SSE2__)
#define TOV_VECTOR_SLASH 1
#include <immintrin.h>
#else
#define TOV_VECTOR_SLASH 0
#endif

namespace TOVPlatform
{
namespace Vector
{
inline bool IsSlash(char cChar)
{
    return cChar == '\\' || cChar == '/';
}

#if TOV_VECTOR_SLASH
constexpr long SLASH_MASK_LENGTH = sizeof(__m128i);

// Returns a mask with one bit for each of 16 characters, the lowest one for the first: set where it is a separator.
inline unsigned int FindSlashes(const char* pText)
{
    const __m128i oText = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pText));
    const __m128i oHits =
        _mm_or_si128(_mm_cmpeq_epi8(oText, _mm_set1_epi8('/')), _mm_cmpeq_epi8(oText, _mm_set1_epi8('\\')));
    return static_cast<unsigned int>(_mm_movemask_epi8(oHits));
}
#endif

// Returns the place of the last separator before lEnd, or -1. It is not inlined: what is left of a text is seldom
// needed.
TOV_NOINLINE inline long FindLastSlashPlainly(const char* pText, long lEnd)
{
    while (lEnd > 0 && !IsSlash(pText[lEnd - 1]))
        --lEnd;
    return lEnd - 1;
}

// Does the same with vectors.
inline long FindLastSlash(const char* pText, long lEnd)
{
#if TOV_VECTOR_SLASH
    for (; lEnd >= SLASH_MASK_LENGTH; lEnd -= SLASH_MASK_LENGTH)
    {
        if (const unsigned int nSlashes = FindSlashes(pText + lEnd - SLASH_MASK_LENGTH))
            return lEnd - SLASH_MASK_LENGTH + (31 - __builtin_clz(nSlashes));
    }
#endif
    return FindLastSlashPlainly(pText, lEnd);
}
} // namespace Vector
} // namespace TOVPlatform
