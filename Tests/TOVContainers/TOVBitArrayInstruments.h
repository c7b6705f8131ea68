// What the tests of bit arrays share.
#pragma once

#include "Support/TOVTestSupport.h"

#include <TOVContainers/TOVBitArray.h>

#include <cstddef>
#include <initializer_list>
#include <ostream>
#include <string>

constexpr char NO_SUCH_BIT[] = "(0 <= nPos) && (nPos <= m_nNumBits)";
constexpr char NO_BYTES[] = "m_pStream != NULL";
constexpr char OTHER_SIZE[] = "GetSize() == oSrc.GetSize()";

inline std::string BytesOf(const CTOVBitArray& oBits)
{
    return std::string(reinterpret_cast<const char*>(oBits.GetBuffer()), static_cast<std::size_t>(oBits.GetSize()));
}

// The first bits, as zeros and ones.
inline std::string BitsOf(const CTOVBitArray& oBits, int nCount)
{
    std::string sBits;
    for (int nPos = 0; nPos < nCount; ++nPos)
        sBits += oBits.GetBit(nPos) ? '1' : '0';
    return sBits;
}

inline CTOVBitArray WithBits(int nNumBits, std::initializer_list<int> aPositions)
{
    CTOVBitArray oBits(nNumBits);
    for (const int nPos : aPositions)
        oBits.SetBit(nPos);
    return oBits;
}

// The array as bytes and in both sizes.
struct sHeldBits
{
    std::string sBytes;
    int nNumBits;
};

inline bool operator==(const sHeldBits& oFirst, const sHeldBits& oSecond)
{
    return oFirst.sBytes == oSecond.sBytes && oFirst.nNumBits == oSecond.nNumBits;
}

inline void PrintTo(const sHeldBits& oHeld, std::ostream* pStream)
{
    *pStream << testing::PrintToString(oHeld.sBytes) << " of " << oHeld.nNumBits << " bits";
}

template<std::size_t nSize> sHeldBits Holds(const char (&szBytes)[nSize], int nNumBits)
{
    return {std::string(szBytes, nSize - 1), nNumBits};
}

inline sHeldBits StateOf(const CTOVBitArray& oBits)
{
    return {oBits.GetSize() == 0 ? "" : BytesOf(oBits), oBits.GetNumBits()};
}
