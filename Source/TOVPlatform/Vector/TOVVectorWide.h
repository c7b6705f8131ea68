// Defines how text functions choose vectors of 64 bytes, and the measure of a text by them. Internal to the text
// functions and classes.
#pragma once

#include <Debug/TOVCompiler.h>
#include <TOVPlatform/Vector/TOVVectorText.h>

#if TOV_HAS_X86_VECTORS
#include <atomic>
#include <cstdint>
#include <immintrin.h>

// Marks a function that has such vectors. It is called only where UsesWideVectors returns true.
#define TOV_WIDE_TEXT __attribute__((target("avx512bw")))

namespace TOVPlatform
{
namespace Vector
{
// What the processor has. A negative number counts the calls that are left until it is asked.
enum eWideVectors : int
{
    eWideVectorsUnused = 0,
    eWideVectorsUsed = 1
};
extern std::atomic<int> s_eWideVectors;

// Counts a call, and asks the processor if it was the last one. Returns whether there are such vectors.
TOV_NOINLINE bool AskForWideVectors();

TOV_ALWAYS_INLINE bool UsesWideVectors()
{
    const int eWideVectors = s_eWideVectors.load(std::memory_order_relaxed);
    return __builtin_expect(eWideVectors == eWideVectorsUsed, 1) ||
           (eWideVectors < eWideVectorsUnused && AskForWideVectors());
}

// Masks with a bit for each unit, the lowest one for the first unit: set where it is zero.
TOV_WIDE_TEXT inline std::uint64_t WideZeros(__m512i oUnits, char)
{
    return _mm512_testn_epi8_mask(oUnits, oUnits);
}
TOV_WIDE_TEXT inline std::uint64_t WideZeros(__m512i oUnits, wchar_t)
{
    return _mm512_testn_epi16_mask(oUnits, oUnits);
}

// Returns the length of a text that ends among the bytes of some vectors. Returns 0 for all others, and where these
// bytes may reach into another page.
template<unsigned int NUM_VECTORS, class tUnit> TOV_WIDE_TEXT inline unsigned int WideLength(const tUnit* szText)
{
    constexpr std::uintptr_t MIN_PAGE_SIZE = 4096;
    constexpr unsigned int UNITS = sizeof(__m512i) / sizeof(tUnit);
    if (reinterpret_cast<std::uintptr_t>(szText) % MIN_PAGE_SIZE > MIN_PAGE_SIZE - NUM_VECTORS * sizeof(__m512i))
        return 0;
    for (unsigned int nStart = 0; nStart < NUM_VECTORS * UNITS; nStart += UNITS)
    {
        const std::uint64_t uZeros = WideZeros(_mm512_loadu_si512(szText + nStart), tUnit());
        if (__builtin_expect(uZeros != 0, 1))
            return nStart + static_cast<unsigned int>(__builtin_ctzll(uZeros));
    }
    return 0;
}
} // namespace Vector
} // namespace TOVPlatform
#else
#define TOV_WIDE_TEXT

namespace TOVPlatform
{
namespace Vector
{
constexpr bool UsesWideVectors()
{
    return false;
}

template<unsigned int NUM_VECTORS, class tUnit> unsigned int WideLength(const tUnit*)
{
    return 0;
}
} // namespace Vector
} // namespace TOVPlatform
#endif

namespace TOVPlatform
{
namespace Vector
{
// Returns whether WideLength may be called, which reads units that follow a text.
inline bool UsesWideLength()
{
    return TOV_VECTOR_TEXT && UsesWideVectors();
}
} // namespace Vector
} // namespace TOVPlatform
