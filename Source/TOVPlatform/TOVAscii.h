// Tells ASCII characters from others, and changes the case of their letters in blocks. Internal to the text functions.
#pragma once

#include <algorithm>
#include <type_traits>

namespace TOVPlatform
{
namespace TOVAscii
{
// Whether the unit is a whole character in every code page, and the same in both widths.
template<class tUnit> constexpr bool IsAscii(tUnit cUnit)
{
    return static_cast<std::make_unsigned_t<tUnit>>(cUnit) < 0x80;
}

// The loops that follow have no calls and no early exits, so that the compiler makes vector instructions of them.

template<class tUnit> bool AreAscii(const tUnit* pUnits, int nCount)
{
    typedef std::make_unsigned_t<tUnit> tUnsigned;
    tUnsigned nAllBits = 0;
    for (int nIndex = 0; nIndex < nCount; ++nIndex)
        nAllBits = static_cast<tUnsigned>(nAllBits | static_cast<tUnsigned>(pUnits[nIndex]));
    return nAllBits < 0x80;
}

// Changes the case of the 26 letters from cFirst on.
template<class tUnit> void SwapCase(tUnit* pUnits, int nCount, char cFirst)
{
    typedef std::make_unsigned_t<tUnit> tUnsigned;
    constexpr tUnsigned NUM_LETTERS = 26;
    constexpr tUnsigned CASE_BIT = 'a' - 'A';
    for (int nIndex = 0; nIndex < nCount; ++nIndex)
    {
        const bool bLetter = static_cast<tUnsigned>(pUnits[nIndex] - cFirst) < NUM_LETTERS;
        pUnits[nIndex] = static_cast<tUnit>(pUnits[nIndex] ^ (bLetter ? CASE_BIT : 0));
    }
}

// Changes the case of the ASCII letters from cFirst on in blocks that are all ASCII, and maps each unit of the others.
template<class tUnit, class tMapping> void MapCase(tUnit* pUnits, int nCount, char cFirst, tMapping Map)
{
    constexpr int BLOCK_UNITS = 64;
    for (tUnit* const pEnd = pUnits + nCount; pUnits < pEnd;)
    {
        const int nBlock = static_cast<int>(std::min<long long>(BLOCK_UNITS, pEnd - pUnits));
        if (AreAscii(pUnits, nBlock))
            SwapCase(pUnits, nBlock, cFirst);
        else
            std::transform(pUnits, pUnits + nBlock, pUnits, Map);
        pUnits += nBlock;
    }
}
} // namespace TOVAscii
} // namespace TOVPlatform
