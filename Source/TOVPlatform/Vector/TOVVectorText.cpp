#include <TOVPlatform/Vector/TOVVectorText.h>

#include <TOVPlatform/TOVTextSearch.h>
#include <TOVPlatform/Vector/TOVVectorProcessor.h>
#include <TOVPlatform/Vector/TOVVectorWide.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

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

TOV_NOINLINE bool AreSingleUnitsPlainly(const char* pUnits, std::size_t nCount)
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

TOV_NOINLINE bool AreSingleUnitsPlainly(const wchar_t* pUnits, std::size_t nCount)
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
TOV_NOINLINE bool AreSingleUnitsPlainly(const char* pUnits, std::size_t nCount)
{
    return std::all_of(pUnits, pUnits + nCount,
                       [](char cUnit) { return 0 < cUnit && static_cast<unsigned char>(cUnit) <= SCHAR_MAX; });
}

TOV_NOINLINE bool AreSingleUnitsPlainly(const wchar_t* pUnits, std::size_t nCount)
{
    return std::find(pUnits, pUnits + nCount, L'\0') == pUnits + nCount;
}
#endif

TOV_NOINLINE const char* FindUnitPlainly(const char* szText, char cUnit)
{
    return std::strchr(szText, cUnit);
}

TOV_NOINLINE const wchar_t* FindUnitPlainly(const wchar_t* szText, wchar_t cUnit)
{
    const wchar_t* const szHit = FindUnitOrEnd(szText, cUnit);
    return *szHit != 0 ? szHit : nullptr;
}

#if TOV_HAS_X86_VECTORS
// Operations on 64 bytes of units. A mask has a bit for each unit.
template<class tUnit> constexpr std::size_t WIDE_UNITS = sizeof(__m512i) / sizeof(tUnit);

template<class tUnit> TOV_WIDE_TEXT inline __m512i WideLoad(const tUnit* pUnits)
{
    // Without this, the compiler reads the memory again for each use.
    __m512i oUnits = _mm512_loadu_si512(pUnits);
    asm("" : "+v"(oUnits));
    return oUnits;
}

// The first units, less than a vector; zeros after them. No other unit is read.
TOV_WIDE_TEXT inline __m512i WideLoad(const char* pUnits, std::size_t nCount)
{
    return _mm512_maskz_loadu_epi8((1ULL << nCount) - 1, pUnits);
}
TOV_WIDE_TEXT inline __m512i WideLoad(const wchar_t* pUnits, std::size_t nCount)
{
    return _mm512_maskz_loadu_epi16((1U << nCount) - 1, pUnits);
}

TOV_WIDE_TEXT inline __m512i WideRepeat(char cUnit)
{
    return _mm512_set1_epi8(cUnit);
}
TOV_WIDE_TEXT inline __m512i WideRepeat(wchar_t cUnit)
{
    return _mm512_set1_epi16(static_cast<short>(cUnit));
}

TOV_WIDE_TEXT inline __m512i WideLeast(__m512i oUnits1, __m512i oUnits2, char)
{
    return _mm512_min_epu8(oUnits1, oUnits2);
}
TOV_WIDE_TEXT inline __m512i WideLeast(__m512i oUnits1, __m512i oUnits2, wchar_t)
{
    return _mm512_min_epu16(oUnits1, oUnits2);
}

// Zero where a unit is zero or equal to the other one.
template<class tUnit> TOV_WIDE_TEXT inline __m512i WideHits(__m512i oUnits, __m512i oUnit)
{
    return WideLeast(oUnits, _mm512_xor_si512(oUnits, oUnit), tUnit());
}

// Returns the first unit of four vectors that is zero or cUnit, null if there is none.
template<class tUnit> TOV_WIDE_TEXT inline const tUnit* FindInFourVectors(const tUnit* pUnits, __m512i oUnit)
{
    constexpr std::size_t UNITS = WIDE_UNITS<tUnit>;
    const __m512i oHits0 = WideHits<tUnit>(WideLoad(pUnits), oUnit);
    const __m512i oHits1 = WideHits<tUnit>(WideLoad(pUnits + UNITS), oUnit);
    const __m512i oHits2 = WideHits<tUnit>(WideLoad(pUnits + 2 * UNITS), oUnit);
    const __m512i oHits3 = WideHits<tUnit>(WideLoad(pUnits + 3 * UNITS), oUnit);
    const __m512i oHits01 = WideLeast(oHits0, oHits1, tUnit());
    const __m512i oHits23 = WideLeast(oHits2, oHits3, tUnit());
    const std::uint64_t uMask = WideZeros(WideLeast(oHits01, oHits23, tUnit()), tUnit());
    if (uMask == 0)
        return nullptr;
    if (const std::uint64_t uMask0 = WideZeros(oHits0, tUnit()))
        return pUnits + __builtin_ctzll(uMask0);
    if (const std::uint64_t uMask1 = WideZeros(oHits1, tUnit()))
        return pUnits + UNITS + __builtin_ctzll(uMask1);
    if (const std::uint64_t uMask2 = WideZeros(oHits2, tUnit()))
        return pUnits + 2 * UNITS + __builtin_ctzll(uMask2);
    return pUnits + 3 * UNITS + __builtin_ctzll(uMask);
}

// Returns the first of nCount units that is zero or cUnit; their end if there is none.
template<class tUnit>
TOV_WIDE_TEXT inline const tUnit* FindInWideVectors(const tUnit* pUnits, std::size_t nCount, tUnit cUnit)
{
    constexpr std::size_t UNITS = WIDE_UNITS<tUnit>;
    constexpr std::size_t GROUP = 4 * UNITS;
    const __m512i oUnit = WideRepeat(cUnit);
    if (nCount < UNITS)
    {
        // The zeros after the units are hits as well.
        return pUnits + __builtin_ctzll(WideZeros(WideHits<tUnit>(WideLoad(pUnits, nCount), oUnit), tUnit()));
    }

    const tUnit* const pEnd = pUnits + nCount;
    if (const std::uint64_t uMask = WideZeros(WideHits<tUnit>(WideLoad(pUnits), oUnit), tUnit()))
        return pUnits + __builtin_ctzll(uMask);

    // All further vectors are aligned but the last one, which overlaps another.
    const tUnit* const pLast = pEnd - UNITS;
    pUnits += UNITS - reinterpret_cast<std::uintptr_t>(pUnits) % sizeof(__m512i) / sizeof(tUnit);
    for (std::size_t nGroups = static_cast<std::size_t>(pEnd - pUnits) / GROUP; nGroups > 0; --nGroups)
    {
        if (const tUnit* const pHit = FindInFourVectors(pUnits, oUnit))
            return pHit;
        pUnits += GROUP;
    }
    for (; pUnits < pLast; pUnits += UNITS)
    {
        if (const std::uint64_t uMask = WideZeros(WideHits<tUnit>(WideLoad(pUnits), oUnit), tUnit()))
            return pUnits + __builtin_ctzll(uMask);
    }
    const std::uint64_t uMask = WideZeros(WideHits<tUnit>(WideLoad(pLast), oUnit), tUnit());
    return uMask != 0 ? pLast + __builtin_ctzll(uMask) : pEnd;
}

template<class tUnit>
TOV_WIDE_TEXT const tUnit* FindUnitByWideVectors(const tUnit* szText, std::size_t nLength, tUnit cUnit)
{
    const tUnit* const szFound = FindInWideVectors(szText, nLength, cUnit);
    if (*szFound == cUnit)
        return szFound;
    return *szFound == 0 ? nullptr : FindUnitPlainly(szFound, cUnit);
}

TOV_WIDE_TEXT bool AreSingleUnitsInWideVectors(const char* pUnits, std::size_t nCount)
{
    constexpr std::size_t UNITS = WIDE_UNITS<char>;
    if (nCount < UNITS)
    {
        const std::uint64_t uAll = (1ULL << nCount) - 1;
        return _mm512_cmpgt_epi8_mask(WideLoad(pUnits, nCount), _mm512_setzero_si512()) == uAll;
    }
    const char* const pLast = pUnits + nCount - UNITS;
    __m512i oLeast = WideLoad(pLast);
    for (; pUnits < pLast; pUnits += UNITS)
        oLeast = _mm512_min_epi8(oLeast, WideLoad(pUnits));
    return _mm512_cmple_epi8_mask(oLeast, _mm512_setzero_si512()) == 0;
}

TOV_WIDE_TEXT bool AreSingleUnitsInWideVectors(const wchar_t* pUnits, std::size_t nCount)
{
    constexpr std::size_t UNITS = WIDE_UNITS<wchar_t>;
    if (nCount < UNITS)
        return static_cast<std::size_t>(__builtin_ctzll(WideZeros(WideLoad(pUnits, nCount), wchar_t()))) == nCount;

    const wchar_t* const pLast = pUnits + nCount - UNITS;
    __m512i oLeast = WideLoad(pLast);
    for (; pUnits < pLast; pUnits += UNITS)
        oLeast = _mm512_min_epu16(oLeast, WideLoad(pUnits));
    return WideZeros(oLeast, wchar_t()) == 0;
}
#endif
} // namespace

#if TOV_VECTOR_TEXT
TOV_NOINLINE const wchar_t* FindUnitOrEnd(const wchar_t* szText, wchar_t cUnit)
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
    const auto CandidatesOfTwo = [&](const wchar_t* pUnits) {
        return ToMask(_mm_packs_epi16(Candidates(pUnits), Candidates(pUnits + VECTOR_UNITS)));
    };
    for (;; szText += 2 * VECTOR_UNITS)
    {
        unsigned int nMask = CandidatesOfTwo(szText);
        while (nMask == 0)
        {
            szText += 2 * VECTOR_UNITS;
            nMask = CandidatesOfTwo(szText);
        }
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
#else
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

#if TOV_HAS_X86_VECTORS
// A program that ends soon makes fewer calls, and does not pay for the question.
constexpr int CALLS_BEFORE_ASKING = 1000;
std::atomic<int> s_eWideVectors{-CALLS_BEFORE_ASKING};

bool AskForWideVectors()
{
    // Threads that count at the same time ask a little later, or twice.
    const int nLeft = -s_eWideVectors.load(std::memory_order_relaxed);
    if (nLeft > 1)
    {
        s_eWideVectors.store(1 - nLeft, std::memory_order_relaxed);
        return false;
    }
    const bool bUsed = HasWideVectors();
    s_eWideVectors.store(bUsed ? eWideVectorsUsed : eWideVectorsUnused, std::memory_order_relaxed);
    return bUsed;
}

bool UseWideVectors(bool bUse)
{
    const bool bUsed = UsesWideVectors();
    s_eWideVectors.store(bUse && HasWideVectors() ? eWideVectorsUsed : eWideVectorsUnused);
    return bUsed;
}

const char* FindUnit(const char* szText, std::size_t nLength, char cUnit)
{
    return UsesWideVectors() ? FindUnitByWideVectors(szText, nLength, cUnit) : FindUnitPlainly(szText, cUnit);
}

const wchar_t* FindUnit(const wchar_t* szText, std::size_t nLength, wchar_t cUnit)
{
    return UsesWideVectors() ? FindUnitByWideVectors(szText, nLength, cUnit) : FindUnitPlainly(szText, cUnit);
}

bool AreSingleUnits(const char* pUnits, std::size_t nCount)
{
    return UsesWideVectors() ? AreSingleUnitsInWideVectors(pUnits, nCount) : AreSingleUnitsPlainly(pUnits, nCount);
}

bool AreSingleUnits(const wchar_t* pUnits, std::size_t nCount)
{
    return UsesWideVectors() ? AreSingleUnitsInWideVectors(pUnits, nCount) : AreSingleUnitsPlainly(pUnits, nCount);
}
#else
bool UseWideVectors(bool)
{
    return false;
}

const char* FindUnit(const char* szText, std::size_t, char cUnit)
{
    return FindUnitPlainly(szText, cUnit);
}

const wchar_t* FindUnit(const wchar_t* szText, std::size_t, wchar_t cUnit)
{
    return FindUnitPlainly(szText, cUnit);
}

bool AreSingleUnits(const char* pUnits, std::size_t nCount)
{
    return AreSingleUnitsPlainly(pUnits, nCount);
}

bool AreSingleUnits(const wchar_t* pUnits, std::size_t nCount)
{
    return AreSingleUnitsPlainly(pUnits, nCount);
}
#endif
} // namespace Vector
} // namespace TOVPlatform
