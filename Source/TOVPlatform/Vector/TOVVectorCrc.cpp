#include <TOVPlatform/Vector/TOVVectorCrc.h>

#include <TOVPlatform/Vector/TOVVectorProcessor.h>

#if TOV_HAS_X86_VECTORS
#include <immintrin.h>
#endif

// The method is that of V. Gopal et al., "Fast CRC Computation for Generic Polynomials Using PCLMULQDQ Instruction",
// 2009. The data is a polynomial over the numbers 0 and 1, and its checksum is the remainder of a division. A block of
// 16 bytes that n more bytes follow counts as itself times x^(8n); that power may be replaced by its own remainder,
// which is short. So two multiplications move a block forward over any distance, where it is added to the block there.
namespace TOVPlatform
{
namespace Vector
{
#if TOV_HAS_X86_VECTORS
namespace
{
#define TOV_FOLDING __attribute__((target("pclmul,sse4.1")))
#define TOV_WIDE_FOLDING __attribute__((target("pclmul,vpclmulqdq,avx512bw")))

constexpr std::size_t BLOCK = 16;

// Shorter data is left to the tables, which are as fast for it.
constexpr std::size_t MIN_FOLDED_SIZE = 64;

// Rules of CRC-32. The first bit of a byte is its least significant one, so that all values are reflected.
struct sCrc32
{
    static constexpr std::uint64_t POLYNOMIAL = 0x104C11DB7;
    static constexpr bool REFLECTED = true;
};

// Rules of CRC-16/XMODEM, whose polynomial and values are those of 32 bits with 16 zeros after them.
struct sCrc16
{
    static constexpr std::uint64_t POLYNOMIAL = 0x110210000;
    static constexpr bool REFLECTED = false;
};

constexpr std::uint64_t Reflected(std::uint64_t uValue, int nBits)
{
    std::uint64_t uReflected = 0;
    for (int nBit = 0; nBit < nBits; ++nBit)
        uReflected |= ((uValue >> nBit) & 1) << (nBits - 1 - nBit);
    return uReflected;
}

// The remainder of x^nPower in a form to be multiplied with a half of a block.
template<class TRules> constexpr long long Power(int nPower)
{
    // In reflected order, the product of two halves is one power of x too high.
    std::uint64_t uRemainder = 1;
    for (int i = TRules::REFLECTED ? 1 : 0; i < nPower; ++i)
    {
        uRemainder <<= 1;
        if ((uRemainder >> 32) != 0)
            uRemainder ^= TRules::POLYNOMIAL;
    }
    return static_cast<long long>(TRules::REFLECTED ? Reflected(uRemainder, 64) : uRemainder);
}

// The whole part of x^64 divided by the polynomial, and the polynomial itself: the constants of P. Barrett's division.
template<class TRules> constexpr long long Quotient()
{
    std::uint64_t uQuotient = 1; // of x^32
    std::uint64_t uRemainder = TRules::POLYNOMIAL & 0xFFFFFFFF;
    for (int i = 0; i < 32; ++i)
    {
        uRemainder <<= 1;
        uQuotient = uQuotient << 1 | uRemainder >> 32;
        if ((uRemainder >> 32) != 0)
            uRemainder ^= TRules::POLYNOMIAL;
    }
    return static_cast<long long>(TRules::REFLECTED ? Reflected(uQuotient, 33) : uQuotient);
}

template<class TRules> constexpr long long Polynomial()
{
    return static_cast<long long>(TRules::REFLECTED ? Reflected(TRules::POLYNOMIAL, 33) : TRules::POLYNOMIAL);
}

// The multipliers that move a block forward by nBlocks blocks. The half of a block that is 64 powers above the other is
// the lower one in a register if the order is reflected, and the upper one otherwise.
template<class TRules, int nBlocks> struct sMultipliers
{
    static constexpr long long HIGH = Power<TRules>(128 * nBlocks + 64);
    static constexpr long long LOW = Power<TRules>(128 * nBlocks);
    static constexpr long long UPPER = TRules::REFLECTED ? LOW : HIGH;
    static constexpr long long LOWER = TRules::REFLECTED ? HIGH : LOW;
};

template<class TRules, int nBlocks> TOV_FOLDING inline __m128i Multipliers()
{
    typedef sMultipliers<TRules, nBlocks> tMultipliers;
    return _mm_set_epi64x(tMultipliers::UPPER, tMultipliers::LOWER);
}

TOV_FOLDING inline __m128i Move(__m128i oBlock, __m128i oMultipliers)
{
    return _mm_xor_si128(_mm_clmulepi64_si128(oBlock, oMultipliers, 0x00),
                         _mm_clmulepi64_si128(oBlock, oMultipliers, 0x11));
}

// Brings the bytes of a block into the order of their powers, or back into that of the memory.
template<class TRules> TOV_FOLDING inline __m128i Ordered(__m128i oBlock)
{
    if (TRules::REFLECTED)
        return oBlock;
    return _mm_shuffle_epi8(oBlock, _mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
}

template<class TRules> TOV_FOLDING inline __m128i Load(const tByte* pBlock)
{
    return Ordered<TRules>(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pBlock)));
}

// The remainder of a block and 32 zero bits after it.
template<class TRules> TOV_FOLDING inline std::uint32_t Remainder(__m128i oBlock)
{
    constexpr bool REFLECTED = TRules::REFLECTED;
    constexpr int UPPER_HALF = REFLECTED ? 0x00 : 0x01; // the half of the first factor that has the higher powers
    constexpr long long POWER_96 = Power<TRules>(96);
    constexpr long long POWER_64 = Power<TRules>(64);
    constexpr long long QUOTIENT = Quotient<TRules>();
    constexpr long long POLYNOMIAL = Polynomial<TRules>();

    // The upper half becomes 96 bits, and the lower one is shifted by 32 bits to its place.
    const __m128i oLower =
        REFLECTED ? _mm_slli_si128(_mm_srli_si128(oBlock, 8), 4) : _mm_srli_si128(_mm_slli_si128(oBlock, 8), 4);
    __m128i oRest = _mm_xor_si128(_mm_clmulepi64_si128(oBlock, _mm_set_epi64x(0, POWER_96), UPPER_HALF), oLower);

    // The upper 32 of these 96 bits become 64.
    oRest = _mm_xor_si128(_mm_clmulepi64_si128(oRest, _mm_set_epi64x(0, POWER_64), UPPER_HALF), oRest);

    // The other 64 are divided: the upper 32 of them determine the multiple of the polynomial that is subtracted.
    const __m128i oUpper = _mm_cvtsi32_si128(_mm_extract_epi32(oRest, REFLECTED ? 2 : 1));
    const __m128i oQuotient = _mm_clmulepi64_si128(oUpper, _mm_set_epi64x(0, QUOTIENT), 0x00);
    const __m128i oFactor = _mm_cvtsi32_si128(_mm_extract_epi32(oQuotient, REFLECTED ? 0 : 1));
    const __m128i oMultiple = _mm_clmulepi64_si128(oFactor, _mm_set_epi64x(0, POLYNOMIAL), 0x00);
    return static_cast<std::uint32_t>(_mm_extract_epi32(oMultiple, REFLECTED ? 1 : 0) ^
                                      _mm_extract_epi32(oRest, REFLECTED ? 3 : 0));
}

// Moves a block over the data from pData to pEnd, a multiple of its own size, and returns its remainder.
template<class TRules> TOV_FOLDING inline std::uint32_t Finish(__m128i oBlock, const tByte* pData, const tByte* pEnd)
{
    const __m128i oByOne = Multipliers<TRules, 1>();
    for (; pData != pEnd; pData += BLOCK)
        oBlock = _mm_xor_si128(Move(oBlock, oByOne), Load<TRules>(pData));
    return Remainder<TRules>(oBlock);
}

// The running checksum counts as if it were added to the first bytes of the data.
template<class TRules> TOV_FOLDING inline __m128i Start(std::uint32_t uCrc)
{
    const __m128i oCrc = _mm_cvtsi32_si128(static_cast<int>(uCrc));
    return TRules::REFLECTED ? oCrc : _mm_slli_si128(oCrc, 12);
}

// Moves four blocks at a time, so that none waits for another.
template<class TRules> TOV_FOLDING std::uint32_t Fold(const tByte* pData, std::size_t ulSize, std::uint32_t uCrc)
{
    const tByte* const pEnd = pData + ulSize;
    __m128i o0 = _mm_xor_si128(Load<TRules>(pData), Start<TRules>(uCrc));
    __m128i o1 = Load<TRules>(pData + BLOCK);
    __m128i o2 = Load<TRules>(pData + 2 * BLOCK);
    __m128i o3 = Load<TRules>(pData + 3 * BLOCK);
    pData += 4 * BLOCK;

    const __m128i oByFour = Multipliers<TRules, 4>();
    for (; static_cast<std::size_t>(pEnd - pData) >= 4 * BLOCK; pData += 4 * BLOCK)
    {
        o0 = _mm_xor_si128(Move(o0, oByFour), Load<TRules>(pData));
        o1 = _mm_xor_si128(Move(o1, oByFour), Load<TRules>(pData + BLOCK));
        o2 = _mm_xor_si128(Move(o2, oByFour), Load<TRules>(pData + 2 * BLOCK));
        o3 = _mm_xor_si128(Move(o3, oByFour), Load<TRules>(pData + 3 * BLOCK));
    }

    o0 = _mm_xor_si128(Move(o0, Multipliers<TRules, 3>()), Move(o1, Multipliers<TRules, 2>()));
    o2 = _mm_xor_si128(Move(o2, Multipliers<TRules, 1>()), o3);
    return Finish<TRules>(_mm_xor_si128(o0, o2), pData, pEnd);
}

// The rest does the same with wide registers, which hold four blocks each.

template<class TRules, int nBlocks> TOV_WIDE_FOLDING inline __m512i WideMultipliers()
{
    typedef sMultipliers<TRules, nBlocks> tMultipliers;
    return _mm512_set4_epi64(tMultipliers::UPPER, tMultipliers::LOWER, tMultipliers::UPPER, tMultipliers::LOWER);
}

TOV_WIDE_FOLDING inline __m512i WideMove(__m512i oBlocks, __m512i oMultipliers)
{
    return _mm512_xor_si512(_mm512_clmulepi64_epi128(oBlocks, oMultipliers, 0x00),
                            _mm512_clmulepi64_epi128(oBlocks, oMultipliers, 0x11));
}

template<class TRules> TOV_WIDE_FOLDING inline __m512i WideLoad(const tByte* pData)
{
    const __m512i oBlocks = _mm512_loadu_si512(pData);
    if (TRules::REFLECTED)
        return oBlocks;
    return _mm512_shuffle_epi8(oBlocks, _mm512_set4_epi32(0x00010203, 0x04050607, 0x08090A0B, 0x0C0D0E0F));
}

// Moves all blocks of a register to the last one, and adds them.
template<class TRules> TOV_WIDE_FOLDING inline __m128i SumOfBlocks(__m512i oBlocks)
{
    typedef sMultipliers<TRules, 3> tFirst;
    typedef sMultipliers<TRules, 2> tSecond;
    typedef sMultipliers<TRules, 1> tThird;
    const __m512i oMultipliers = _mm512_set_epi64(0, 0, tThird::UPPER, tThird::LOWER, tSecond::UPPER, tSecond::LOWER,
                                                  tFirst::UPPER, tFirst::LOWER);
    constexpr __mmask8 LAST = 0xC0;
    const __m512i oMoved = WideMove(oBlocks, oMultipliers);

    __m128i aMoved[4];
    _mm512_storeu_si512(aMoved, _mm512_mask_xor_epi64(oMoved, LAST, oMoved, oBlocks));
    return _mm_xor_si128(_mm_xor_si128(aMoved[0], aMoved[1]), _mm_xor_si128(aMoved[2], aMoved[3]));
}

template<class TRules>
TOV_WIDE_FOLDING std::uint32_t FoldWide(const tByte* pData, std::size_t ulSize, std::uint32_t uCrc)
{
    constexpr std::size_t WIDE = 4 * BLOCK;

    const tByte* const pEnd = pData + ulSize;
    __m512i o0 = _mm512_xor_si512(WideLoad<TRules>(pData), _mm512_zextsi128_si512(Start<TRules>(uCrc)));
    pData += WIDE;

    if (static_cast<std::size_t>(pEnd - pData) >= 7 * WIDE)
    {
        __m512i o1 = WideLoad<TRules>(pData);
        __m512i o2 = WideLoad<TRules>(pData + WIDE);
        __m512i o3 = WideLoad<TRules>(pData + 2 * WIDE);
        pData += 3 * WIDE;

        const __m512i oByAll = WideMultipliers<TRules, 16>();
        for (; static_cast<std::size_t>(pEnd - pData) >= 4 * WIDE; pData += 4 * WIDE)
        {
            o0 = _mm512_xor_si512(WideMove(o0, oByAll), WideLoad<TRules>(pData));
            o1 = _mm512_xor_si512(WideMove(o1, oByAll), WideLoad<TRules>(pData + WIDE));
            o2 = _mm512_xor_si512(WideMove(o2, oByAll), WideLoad<TRules>(pData + 2 * WIDE));
            o3 = _mm512_xor_si512(WideMove(o3, oByAll), WideLoad<TRules>(pData + 3 * WIDE));
        }

        o0 = _mm512_xor_si512(WideMove(o0, WideMultipliers<TRules, 12>()), WideMove(o1, WideMultipliers<TRules, 8>()));
        o2 = _mm512_xor_si512(WideMove(o2, WideMultipliers<TRules, 4>()), o3);
        o0 = _mm512_xor_si512(o0, o2);
    }

    const __m512i oByOne = WideMultipliers<TRules, 4>();
    for (; static_cast<std::size_t>(pEnd - pData) >= WIDE; pData += WIDE)
        o0 = _mm512_xor_si512(WideMove(o0, oByOne), WideLoad<TRules>(pData));
    return Finish<TRules>(SumOfBlocks<TRules>(o0), pData, pEnd);
}

// Continues the checksum with all whole blocks, and returns their size.
template<class TRules>
std::size_t FoldBlocks(eFolding eForm, const tByte* pData, std::size_t ulSize, std::uint32_t& uCrc)
{
    if (ulSize < MIN_FOLDED_SIZE || eForm == eFoldingNone)
        return 0;

    const std::size_t ulFolded = ulSize - ulSize % BLOCK;
    uCrc = eForm == eFoldingWide ? FoldWide<TRules>(pData, ulFolded, uCrc) : Fold<TRules>(pData, ulFolded, uCrc);
    return ulFolded;
}

eFolding AskProcessor()
{
    unsigned int uEax;
    unsigned int uEbx;
    unsigned int uEcx;
    unsigned int uEdx;
    if (__get_cpuid(1, &uEax, &uEbx, &uEcx, &uEdx) == 0 || (uEcx & bit_PCLMUL) == 0 || (uEcx & bit_SSE4_1) == 0)
        return eFoldingNone;
    if (!HasWideVectors() || __get_cpuid_count(7, 0, &uEax, &uEbx, &uEcx, &uEdx) == 0)
        return eFoldingNarrow;
    return (uEcx & bit_VPCLMULQDQ) != 0 ? eFoldingWide : eFoldingNarrow;
}
} // namespace

eFolding GetBestFolding()
{
    // The compiler's own test, __builtin_cpu_supports, would ask the processor at the start of every program.
    static const eFolding s_eBest = AskProcessor();
    return s_eBest;
}

std::size_t FoldCrc16(eFolding eForm, const tByte* pData, std::size_t ulSize, std::uint16_t& usCrc)
{
    std::uint32_t uCrc = static_cast<std::uint32_t>(usCrc) << 16;
    const std::size_t ulFolded = FoldBlocks<sCrc16>(eForm, pData, ulSize, uCrc);
    usCrc = static_cast<std::uint16_t>(uCrc >> 16);
    return ulFolded;
}

std::size_t FoldCrc32(eFolding eForm, const tByte* pData, std::size_t ulSize, std::uint32_t& uCrc)
{
    return FoldBlocks<sCrc32>(eForm, pData, ulSize, uCrc);
}
#else
eFolding GetBestFolding()
{
    return eFoldingNone;
}

std::size_t FoldCrc16(eFolding, const tByte*, std::size_t, std::uint16_t&)
{
    return 0;
}

std::size_t FoldCrc32(eFolding, const tByte*, std::size_t, std::uint32_t&)
{
    return 0;
}
#endif
} // namespace Vector
} // namespace TOVPlatform
