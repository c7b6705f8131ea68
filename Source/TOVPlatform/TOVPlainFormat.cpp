#include <TOVPlatform/TOVPlainFormat.h>

#include <TOVPlatform/Backend/TOVFormat.h>
#include <TOVPlatform/TOVAscii.h>
#include <TOVPlatform/TOVDigits.h>
#include <TOVPlatform/TOVTextRuntime.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace TOVPlatform
{
using namespace TOVDigits;

namespace
{
constexpr int MAX_FORMAT_UNITS = 1000;
constexpr int INTEGER_BOUND = 32;

constexpr int EXPONENT_BITS = 11;
constexpr int WORD_BITS = 64;

constexpr int DEFAULT_DIGITS = 6;
constexpr int FIXED_EXTRA_DIGITS = 6;
constexpr int MAX_REAL_UNITS = 24;

// Writes all digits of the value in front of pEnd, at least one.
char* WriteNumber(char* pEnd, std::uint32_t uValue)
{
    for (; uValue >= 100; uValue /= 100)
        pEnd = WriteDigits(pEnd, 2, uValue);
    return WriteDigits(pEnd, uValue >= 10 ? 2 : 1, uValue);
}

bool IsPowerOfTen(std::uint32_t uValue)
{
    return std::find(std::begin(POWERS_OF_TEN), std::end(POWERS_OF_TEN), uValue) != std::end(POWERS_OF_TEN);
}

// Writes a number with nDigits digits after the point in front of pEnd, and returns where it begins; null for a value
// that has more than one word before the point or after it, or of which the measure may have another length. Rounds
// half away from zero.
char* WriteReal(char* pEnd, int nDigits, double dValue)
{
    std::uint64_t ullBits = 0;
    static_assert(sizeof(ullBits) == sizeof(dValue));
    std::memcpy(&ullBits, &dValue, sizeof(ullBits));
    const bool bNegative = ullBits >> (WORD_BITS - 1) != 0;
    const int nShift = EXPONENT_BIAS - static_cast<int>((ullBits >> MANTISSA_BITS) & ((1 << EXPONENT_BITS) - 1));
    if (nShift <= 0 || nShift >= WORD_BITS || !Backend::ArePlainReals())
        return nullptr;

    const std::uint64_t ullLeadingOne = std::uint64_t(1) << MANTISSA_BITS;
    const std::uint64_t ullMantissa = (ullBits & (ullLeadingOne - 1)) | ullLeadingOne;
    const std::uint64_t ullWhole = ullMantissa >> nShift;
    if (ullWhole >= UINT32_MAX)
        return nullptr;
    std::uint64_t ullFraction = ullMantissa << (WORD_BITS - nShift);
    std::uint32_t uWhole = static_cast<std::uint32_t>(ullWhole);
    std::uint32_t uFraction = TakeWhole(ullFraction, POWERS_OF_TEN[nDigits]);
    if (ullFraction >> (WORD_BITS - 1) != 0 && ++uFraction == POWERS_OF_TEN[nDigits])
    {
        // What is measured may be rounded later, and have a digit less then.
        uFraction = 0;
        if (IsPowerOfTen(++uWhole))
            return nullptr;
    }

    char* pFirst = WriteDigits(pEnd, nDigits, uFraction);
    if (nDigits > 0)
        *--pFirst = '.';
    pFirst = WriteNumber(pFirst, uWhole);
    if (bNegative)
        *--pFirst = '-';
    return pFirst;
}
} // namespace

template<class tUnit> bool CTOVPlainFormat<tUnit>::Print(const tUnit* szFormat, va_list& pArguments)
{
    if (szFormat == nullptr || *szFormat == 0)
        return false;
    const tUnit* szPosition = szFormat;
    int nLiterals = 0;
    int nPositions = 0; // the sum of those of the literals
    while (*szPosition != 0)
    {
        if (*szPosition == '%')
        {
            szPosition = PrintItem(szPosition + 1, pArguments);
            if (szPosition == nullptr)
                return false;
            continue;
        }
        if (szPosition - szFormat > MAX_FORMAT_UNITS)
            return false;
        const int nFirst = static_cast<int>(szPosition - szFormat);
        const int nUnits = PrintLiterals(szPosition);
        if (nUnits < 0)
            return false;
        szPosition += nUnits;
        nLiterals += nUnits;
        nPositions += nUnits * nFirst + nUnits * (nUnits - 1) / 2;
    }
    // Each literal counts the rest of the format from itself on.
    m_nBound += nLiterals * static_cast<int>(szPosition - szFormat) - nPositions;
    return szPosition - szFormat <= MAX_FORMAT_UNITS;
}

template<class tUnit> int CTOVPlainFormat<tUnit>::PrintLiterals(const tUnit* szLiterals)
{
    tUnit nAllBits = 0;
    tUnit* pNext = m_pNext;
    tUnit* const pEnd = m_szText + MAX_UNITS;
    const tUnit* szUnit = szLiterals;
    for (; *szUnit != '%' && *szUnit != 0; ++szUnit)
    {
        if (pNext == pEnd)
            return -1;
        nAllBits = static_cast<tUnit>(nAllBits | *szUnit);
        *pNext++ = *szUnit;
    }
    m_pNext = pNext;
    return TOVAscii::IsAscii(nAllBits) ? static_cast<int>(szUnit - szLiterals) : -1;
}

template<class tUnit> const tUnit* CTOVPlainFormat<tUnit>::PrintItem(const tUnit* szType, va_list& pArguments)
{
    bool bPlain = false;
    switch (*szType)
    {
    case 's':
        bPlain = PrintText(va_arg(pArguments, const tUnit*));
        break;
    case 'd':
    case 'i':
    case 'u':
    {
        const int nValue = va_arg(pArguments, int);
        const std::uint32_t uValue = static_cast<std::uint32_t>(nValue);
        const bool bNegative = *szType != 'u' && nValue < 0;
        bPlain = PrintInteger(bNegative, bNegative ? 0 - uValue : uValue);
        break;
    }
    case 'f':
        bPlain = PrintReal(va_arg(pArguments, double), false, DEFAULT_DIGITS);
        break;
    case '.':
    {
        const unsigned int nDigits = static_cast<unsigned int>(*++szType) - '0';
        if (nDigits <= GROUP_DIGITS && *++szType == 'f')
            bPlain = PrintReal(va_arg(pArguments, double), true, static_cast<int>(nDigits));
        break;
    }
    default:
        break;
    }
    return bPlain ? szType + 1 : nullptr;
}

template<class tUnit> bool CTOVPlainFormat<tUnit>::PrintText(const tUnit* szText)
{
    if (szText == nullptr)
        return false;
    // A short text is copied while it is measured.
    constexpr int SHORT_LENGTH = 16;
    if (!HasRoom(SHORT_LENGTH))
        return false;
    int nLength = 0;
    for (; nLength < SHORT_LENGTH && szText[nLength] != 0; ++nLength)
        m_pNext[nLength] = szText[nLength];
    if (nLength == SHORT_LENGTH)
    {
        nLength += Backend::Length(szText + SHORT_LENGTH);
        if (!HasRoom(nLength))
            return false;
        std::copy_n(szText + SHORT_LENGTH, nLength - SHORT_LENGTH, m_pNext + SHORT_LENGTH);
    }
    m_pNext += nLength;
    m_nBound += std::max(nLength, 1);
    return true;
}

template<class tUnit> bool CTOVPlainFormat<tUnit>::PrintInteger(bool bNegative, std::uint32_t uMagnitude)
{
    char szDigits[16];
    char* const pEnd = std::end(szDigits);
    char* pFirst = WriteNumber(pEnd, uMagnitude);
    if (bNegative)
        *--pFirst = '-';
    if (!HasRoom(pEnd - pFirst))
        return false;
    m_nBound += INTEGER_BOUND;
    PutDigits(pFirst, pEnd);
    return true;
}

template<class tUnit> bool CTOVPlainFormat<tUnit>::PrintReal(double dValue, bool bHasPrecision, int nDigits)
{
    char szText[MAX_REAL_UNITS];
    const char* const pFirst = WriteReal(std::end(szText), nDigits, dValue);
    if (pFirst == nullptr || !HasRoom(std::end(szText) - pFirst))
        return false;

    // The measure counts more digits than are printed if there is a precision, and a point always.
    m_nBound += static_cast<int>(std::end(szText) - pFirst);
    if (bHasPrecision)
        m_nBound += FIXED_EXTRA_DIGITS + (nDigits == 0 ? 1 : 0);
    PutDigits(pFirst, std::end(szText));
    return true;
}

template<class tUnit> void CTOVPlainFormat<tUnit>::PutDigits(const char* pDigits, const char* pEnd)
{
    for (; pDigits < pEnd; ++pDigits)
        *m_pNext++ = static_cast<tUnit>(*pDigits);
}

template class CTOVPlainFormat<char>;
template class CTOVPlainFormat<wchar_t>;
} // namespace TOVPlatform
