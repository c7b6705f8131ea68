#include <TOVPlatform/Vector/TOVVectorText.h>

#include <TOVPlatform/TOVTextSearch.h>

#include <algorithm>
#include <climits>
#include <cstdint>

// The sanitizers report reads after the end of a block, which the vectors make: their builds have the plain loops.
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define TOV_VECTOR_TEXT 0
#endif
#endif
#if !defined(TOV_VECTOR_TEXT)
#if defined(__SSE2__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define TOV_VECTOR_TEXT 1
#else
#define TOV_VECTOR_TEXT 0
#endif
#endif

#if TOV_VECTOR_TEXT
#include <immintrin.h>
#endif

namespace TOVPlatform
{
namespace Vector
{
namespace
{
#if TOV_VECTOR_TEXT
constexpr std::uintptr_t MIN_PAGE_SIZE = 4096;
constexpr std::size_t VECTOR_UNITS = sizeof(__m128i) / sizeof(wchar_t);
constexpr int ALL_BYTES = 0xFFFF;

std::uintptr_t ToAddress(const wchar_t* szText)
{
    return reinterpret_cast<std::uintptr_t>(szText);
}

template<class tUnit> __m128i Load(const tUnit* pUnits)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(pUnits));
}

__m128i LoadAligned(const wchar_t* pUnits)
{
    return _mm_load_si128(reinterpret_cast<const __m128i*>(pUnits));
}

__m128i Repeat(wchar_t cUnit)
{
    return _mm_set1_epi16(static_cast<short>(cUnit));
}

// A mask has two equal bits for each unit, the lowest ones for the first unit.
unsigned int ToMask(__m128i oUnits)
{
    return static_cast<unsigned int>(_mm_movemask_epi8(oUnits));
}

std::size_t FirstOf(unsigned int nMask)
{
    return static_cast<std::size_t>(__builtin_ctz(nMask)) / sizeof(wchar_t);
}

bool IsAligned(const wchar_t* szText, std::uintptr_t nSize)
{
    return ToAddress(szText) % nSize == 0;
}

__m128i UnitOrEnd(__m128i oUnits, __m128i oUnit)
{
    return _mm_or_si128(_mm_cmpeq_epi16(oUnits, oUnit), _mm_cmpeq_epi16(oUnits, _mm_setzero_si128()));
}

bool IsVectorInPage(const wchar_t* szText)
{
    return ToAddress(szText) % MIN_PAGE_SIZE <= MIN_PAGE_SIZE - sizeof(__m128i);
}

// The letters A to Z in lower case; all units are below 0x8000.
__m128i LowerCase(__m128i oUnits)
{
    const __m128i oCapital =
        _mm_and_si128(_mm_cmpgt_epi16(oUnits, Repeat('A' - 1)), _mm_cmplt_epi16(oUnits, Repeat('Z' + 1)));
    return _mm_or_si128(oUnits, _mm_and_si128(oCapital, Repeat('a' - 'A')));
}
#endif
} // namespace

#if TOV_VECTOR_TEXT
const wchar_t* FindUnitOrEnd(const wchar_t* szText, wchar_t cUnit)
{
    const __m128i oUnit = Repeat(cUnit);
    constexpr std::uintptr_t GROUP_SIZE = 4 * sizeof(__m128i);

    // A vector that is aligned lies in one page with the text, whose first units it may read again.
    if (!IsAligned(szText, sizeof(wchar_t)))
    {
        while (*szText != cUnit && *szText != 0)
            ++szText;
        return szText;
    }
    const std::uintptr_t nBytesBefore = ToAddress(szText) % sizeof(__m128i);
    const wchar_t* pUnits = szText - nBytesBefore / sizeof(wchar_t);
    if (const unsigned int nMask = ToMask(UnitOrEnd(LoadAligned(pUnits), oUnit)) >> nBytesBefore)
        return szText + FirstOf(nMask);

    for (pUnits += VECTOR_UNITS; !IsAligned(pUnits, GROUP_SIZE); pUnits += VECTOR_UNITS)
    {
        if (const unsigned int nMask = ToMask(UnitOrEnd(LoadAligned(pUnits), oUnit)))
            return pUnits + FirstOf(nMask);
    }
    for (;; pUnits += 4 * VECTOR_UNITS)
    {
        const __m128i oHits0 = UnitOrEnd(LoadAligned(pUnits), oUnit);
        const __m128i oHits1 = UnitOrEnd(LoadAligned(pUnits + VECTOR_UNITS), oUnit);
        const __m128i oHits2 = UnitOrEnd(LoadAligned(pUnits + 2 * VECTOR_UNITS), oUnit);
        const __m128i oHits3 = UnitOrEnd(LoadAligned(pUnits + 3 * VECTOR_UNITS), oUnit);
        if (ToMask(_mm_or_si128(_mm_or_si128(oHits0, oHits1), _mm_or_si128(oHits2, oHits3))) == 0)
            continue;
        if (const unsigned int nMask = ToMask(oHits0) | ToMask(oHits1) << 16)
            return pUnits + FirstOf(nMask);
        return pUnits + 2 * VECTOR_UNITS + FirstOf(ToMask(oHits2) | ToMask(oHits3) << 16);
    }
}

const wchar_t* FindText(const wchar_t* szText, const wchar_t* szPart)
{
    if (szPart[1] == 0)
    {
        szText = FindUnitOrEnd(szText, szPart[0]);
        return *szText != 0 ? szText : nullptr;
    }

    // Every second vector is aligned to the size of both. The vector of the units before them begins in the text, too.
    constexpr std::uintptr_t GROUP_SIZE = 2 * sizeof(__m128i);
    CTOVPartMatcher<wchar_t> oMatcher(szText, szPart);
    do
    {
        if (oMatcher.IsAt(szText))
            return szText;
        if (*szText == 0)
            return nullptr;
        if (oMatcher.IsSlow(szText))
            return oMatcher.FindInLinearTime(szText);
        ++szText;
    } while (!IsAligned(szText, GROUP_SIZE));

    const __m128i oFirst = Repeat(szPart[0]);
    const __m128i oSecond = Repeat(szPart[1]);
    const auto Candidates = [&](const wchar_t* pUnits) {
        const __m128i oUnits = LoadAligned(pUnits);
        const __m128i oPair =
            _mm_and_si128(_mm_cmpeq_epi16(oUnits, oSecond), _mm_cmpeq_epi16(Load(pUnits - 1), oFirst));
        return _mm_or_si128(oPair, _mm_cmpeq_epi16(oUnits, _mm_setzero_si128()));
    };
    for (;; szText += 2 * VECTOR_UNITS)
    {
        const __m128i oCandidates0 = Candidates(szText);
        const __m128i oCandidates1 = Candidates(szText + VECTOR_UNITS);
        unsigned int nMask = ToMask(_mm_packs_epi16(oCandidates0, oCandidates1));
        for (; nMask != 0; nMask &= nMask - 1)
        {
            const wchar_t* const pSecond = szText + __builtin_ctz(nMask);
            if (*pSecond == 0)
                return nullptr;
            if (oMatcher.IsAt(pSecond - 1))
                return pSecond - 1;
            if (oMatcher.IsSlow(pSecond))
                return oMatcher.FindInLinearTime(pSecond);
        }
    }
}

std::size_t CountEqualNoCase(const wchar_t* szText1, const wchar_t* szText2)
{
    std::size_t nEqual = 0;
    for (; IsVectorInPage(szText1 + nEqual) && IsVectorInPage(szText2 + nEqual); nEqual += VECTOR_UNITS)
    {
        const __m128i oUnits1 = Load(szText1 + nEqual);
        const __m128i oUnits2 = Load(szText2 + nEqual);
        const __m128i oAbove = _mm_andnot_si128(Repeat(0x7F), _mm_or_si128(oUnits1, oUnits2));
        const __m128i oAscii = _mm_cmpeq_epi16(oAbove, _mm_setzero_si128());
        const __m128i oEnd = _mm_cmpeq_epi16(oUnits1, _mm_setzero_si128());
        const __m128i oSame = _mm_cmpeq_epi16(LowerCase(oUnits1), LowerCase(oUnits2));
        const unsigned int nMask = ToMask(_mm_and_si128(_mm_andnot_si128(oEnd, oAscii), oSame));
        if (nMask != ALL_BYTES)
            return nEqual + FirstOf(~nMask);
    }
    return nEqual;
}

bool AreSingleUnits(const char* pUnits, std::size_t nCount)
{
    if (nCount < sizeof(__m128i))
        return std::all_of(pUnits, pUnits + nCount, [](char cUnit) { return cUnit > 0; });

    // The last vector may overlap the one before it.
    const char* const pLast = pUnits + nCount - sizeof(__m128i);
    __m128i oBits = Load(pLast);
    __m128i oLeast = oBits;
    for (; pUnits + sizeof(__m128i) < pLast; pUnits += 2 * sizeof(__m128i))
    {
        const __m128i oUnits0 = Load(pUnits);
        const __m128i oUnits1 = Load(pUnits + sizeof(__m128i));
        oBits = _mm_or_si128(oBits, _mm_or_si128(oUnits0, oUnits1));
        oLeast = _mm_min_epu8(oLeast, _mm_min_epu8(oUnits0, oUnits1));
    }
    if (pUnits < pLast)
    {
        const __m128i oUnits = Load(pUnits);
        oBits = _mm_or_si128(oBits, oUnits);
        oLeast = _mm_min_epu8(oLeast, oUnits);
    }
    return ToMask(_mm_or_si128(oBits, _mm_cmpeq_epi8(oLeast, _mm_setzero_si128()))) == 0;
}

bool AreSingleUnits(const wchar_t* pUnits, std::size_t nCount)
{
    if (nCount < VECTOR_UNITS)
        return std::find(pUnits, pUnits + nCount, L'\0') == pUnits + nCount;

    const auto Zeros = [](const wchar_t* pVector) { return _mm_cmpeq_epi16(Load(pVector), _mm_setzero_si128()); };
    const wchar_t* const pLast = pUnits + nCount - VECTOR_UNITS;
    __m128i oZeros = Zeros(pLast);
    __m128i oOtherZeros = oZeros;
    for (; pUnits + VECTOR_UNITS < pLast; pUnits += 2 * VECTOR_UNITS)
    {
        oZeros = _mm_or_si128(oZeros, Zeros(pUnits));
        oOtherZeros = _mm_or_si128(oOtherZeros, Zeros(pUnits + VECTOR_UNITS));
    }
    if (pUnits < pLast)
        oZeros = _mm_or_si128(oZeros, Zeros(pUnits));
    return ToMask(_mm_or_si128(oZeros, oOtherZeros)) == 0;
}
#else
bool AreSingleUnits(const char* pUnits, std::size_t nCount)
{
    return std::all_of(pUnits, pUnits + nCount,
                       [](char cUnit) { return 0 < cUnit && static_cast<unsigned char>(cUnit) <= SCHAR_MAX; });
}

bool AreSingleUnits(const wchar_t* pUnits, std::size_t nCount)
{
    return std::find(pUnits, pUnits + nCount, L'\0') == pUnits + nCount;
}

const wchar_t* FindUnitOrEnd(const wchar_t* szText, wchar_t cUnit)
{
    while (*szText != cUnit && *szText != 0)
        ++szText;
    return szText;
}

const wchar_t* FindText(const wchar_t* szText, const wchar_t* szPart)
{
    return FindPart(szText, szPart);
}

std::size_t CountEqualNoCase(const wchar_t*, const wchar_t*)
{
    return 0;
}
#endif
} // namespace Vector
} // namespace TOVPlatform
