// Defines the measure of short texts and the walk over the hits of a unit, which are inlined where strings are made.
// Internal to the text classes.
#pragma once

#include <TOVPlatform/Vector/TOVVectorText.h>

#include <cstdint>
#include <cstring>

#if TOV_VECTOR_TEXT
#include <immintrin.h>
#endif

namespace TOVPlatform
{
namespace Vector
{
// A text is short if it has fewer units than this, its terminator not counted.
constexpr unsigned int SHORT_LENGTH = 32;

#if TOV_VECTOR_TEXT
inline __m128i LoadUnits(const void* pUnits)
{
    return _mm_loadu_si128(static_cast<const __m128i*>(pUnits));
}

// Masks with one bit for each of 32 or 16 units, the lowest one for the first unit: set where it is cUnit.
inline unsigned int FindUnits(const char* pUnits, char cUnit)
{
    const __m128i oUnit = _mm_set1_epi8(cUnit);
    const __m128i oHits0 = _mm_cmpeq_epi8(LoadUnits(pUnits), oUnit);
    const __m128i oHits1 = _mm_cmpeq_epi8(LoadUnits(pUnits + 16), oUnit);
    return static_cast<unsigned int>(_mm_movemask_epi8(oHits0)) | static_cast<unsigned int>(_mm_movemask_epi8(oHits1))
                                                                      << 16;
}

inline unsigned int FindUnits(const wchar_t* pUnits, wchar_t cUnit)
{
    const __m128i oUnit = _mm_set1_epi16(static_cast<short>(cUnit));
    const __m128i oHits0 = _mm_cmpeq_epi16(LoadUnits(pUnits), oUnit);
    const __m128i oHits1 = _mm_cmpeq_epi16(LoadUnits(pUnits + 8), oUnit);
    return static_cast<unsigned int>(_mm_movemask_epi8(_mm_packs_epi16(oHits0, oHits1)));
}

template<class tUnit> constexpr int MASK_LENGTH = 2 * sizeof(__m128i) / sizeof(tUnit);

// The same for the zeros of an aligned vector.
inline unsigned int FindZeros(const char* pVector)
{
    const __m128i oUnits = _mm_load_si128(reinterpret_cast<const __m128i*>(pVector));
    return static_cast<unsigned int>(_mm_movemask_epi8(_mm_cmpeq_epi8(oUnits, _mm_setzero_si128())));
}

inline unsigned int FindZeros(const wchar_t* pVector)
{
    const __m128i oUnits = _mm_load_si128(reinterpret_cast<const __m128i*>(pVector));
    const __m128i oZeros = _mm_cmpeq_epi16(oUnits, _mm_setzero_si128());
    return static_cast<unsigned int>(_mm_movemask_epi8(_mm_packs_epi16(oZeros, _mm_setzero_si128())));
}

// Returns the length of a short text, and SHORT_LENGTH or more for all others. The vectors are aligned, so that none
// reaches into a page that the text does not touch, and a tool that watches the heap sees what they mean.
template<class tUnit> inline unsigned int ShortLength(const tUnit* szText)
{
    constexpr unsigned int VECTOR_UNITS = sizeof(__m128i) / sizeof(tUnit);
    const std::uintptr_t nAddress = reinterpret_cast<std::uintptr_t>(szText);
    if (nAddress % sizeof(tUnit) != 0)
        return SHORT_LENGTH;

    const unsigned int nBefore = static_cast<unsigned int>(nAddress % sizeof(__m128i) / sizeof(tUnit));
    const tUnit* const pVectors = reinterpret_cast<const tUnit*>(nAddress - nAddress % sizeof(__m128i));
    if (const unsigned int nZeros = FindZeros(pVectors) >> nBefore)
        return static_cast<unsigned int>(__builtin_ctz(nZeros));
    for (unsigned int nStart = VECTOR_UNITS; nStart - nBefore < SHORT_LENGTH; nStart += VECTOR_UNITS)
    {
        if (const unsigned int nZeros = FindZeros(pVectors + nStart))
            return nStart - nBefore + static_cast<unsigned int>(__builtin_ctz(nZeros));
    }
    return SHORT_LENGTH;
}

// Calls fnHit with the place of each unit that is cUnit, which is not 0. No unit after the last one is read.
template<class tUnit, class TFunction>
inline void ForEachHit(const tUnit* pUnits, int nCount, tUnit cUnit, TFunction fnHit)
{
    tUnit aRest[MASK_LENGTH<tUnit>] = {};
    for (int nStart = 0; nStart < nCount; nStart += MASK_LENGTH<tUnit>)
    {
        const tUnit* pVectors = pUnits + nStart;
        if (nCount - nStart < MASK_LENGTH<tUnit>)
        {
            std::memcpy(aRest, pVectors, (nCount - nStart) * sizeof(tUnit));
            pVectors = aRest;
        }
        for (unsigned int nHits = FindUnits(pVectors, cUnit); nHits != 0; nHits &= nHits - 1)
            fnHit(nStart + __builtin_ctz(nHits));
    }
}
#else
template<class tUnit> inline unsigned int ShortLength(const tUnit*)
{
    return SHORT_LENGTH;
}

template<class tUnit, class TFunction>
inline void ForEachHit(const tUnit* pUnits, int nCount, tUnit cUnit, TFunction fnHit)
{
    for (int nPlace = 0; nPlace < nCount; ++nPlace)
    {
        if (pUnits[nPlace] == cUnit)
            fnHit(nPlace);
    }
}
#endif
} // namespace Vector
} // namespace TOVPlatform
