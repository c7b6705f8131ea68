#include <Posix/Text/TOVDecimal.h>

#include <TOVPlatform/TOVDigits.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace TOVPlatform
{
using namespace TOVDigits;

namespace
{
// No double has more digits than this in a scientific form.
constexpr int MAX_SIGNIFICANT_DIGITS = 767;
} // namespace

CTOVDecimal::CTOVDecimal(double dValue) : m_dMagnitude(std::fabs(dValue)), m_bFinite(std::isfinite(dValue))
{
    if (std::isinf(dValue))
        SetDigits("1#INF");
    else if (!m_bFinite)
        SetDigits(std::signbit(dValue) ? "1#IND" : "1#QNAN");

    std::uint64_t ullBits = 0;
    static_assert(sizeof(ullBits) == sizeof(m_dMagnitude));
    std::memcpy(&ullBits, &m_dMagnitude, sizeof(ullBits));
    const int nBiased = static_cast<int>(ullBits >> MANTISSA_BITS);
    const std::uint64_t ullLeadingOne = std::uint64_t(1) << MANTISSA_BITS;
    m_ullMantissa = (ullBits & (ullLeadingOne - 1)) | (nBiased > 0 ? ullLeadingOne : 0);
    m_nExponent = std::max(nBiased, 1) - EXPONENT_BIAS;
}

void CTOVDecimal::SetDigits(const char* szDigits)
{
    m_nDigits = static_cast<int>(std::strlen(szDigits));
    m_nPoint = 1;
    std::copy_n(szDigits, m_nDigits, m_szDigits);
}

// Whether the value is an odd multiple of 2^nExponent.
bool CTOVDecimal::HasLowestBitAt(int nExponent) const
{
    const int nBit = nExponent - m_nExponent;
    if (nBit < 0 || nBit > MANTISSA_BITS)
        return false;
    const std::uint64_t ullBit = std::uint64_t(1) << nBit;
    return (m_ullMantissa & (2 * ullBit - 1)) == ullBit;
}

// How many digits after the point the value has: each of its bits after the point makes one.
int CTOVDecimal::CountFractionDigits() const
{
    return m_ullMantissa != 0 ? std::max(-m_nExponent - __builtin_ctzll(m_ullMantissa), 0) : 0;
}

// The standard library rounds the exact value, but a tie to the even digit. A cut after n digits is a tie if the value
// is an odd multiple of 2^-(n+1), and then all its digits are read.
void CTOVDecimal::ReadFixed(int nPrecision)
{
    nPrecision = std::min(nPrecision, MAX_FRACTION_DIGITS);
    if (ReadFromWords(nPrecision))
        return;
    if (HasLowestBitAt(-nPrecision - 1))
        ReadExactly();
    else
        ReadFixedText(nPrecision);
}

void CTOVDecimal::ReadExactly()
{
    ReadFixedText(CountFractionDigits());
}

// Reads a value whose bits are all in one word before the point and one after it. Returns false for any other value.
bool CTOVDecimal::ReadFromWords(int nPrecision)
{
    constexpr int WORD_BITS = 64;
    if (m_ullMantissa == 0)
        return true;
    if (m_nExponent < -WORD_BITS || m_nExponent >= WORD_BITS - MANTISSA_BITS)
        return false;

    std::uint64_t ullWhole = 0;
    std::uint64_t ullFraction = 0;
    if (m_nExponent >= 0)
        ullWhole = m_ullMantissa << m_nExponent;
    else if (m_nExponent > -WORD_BITS)
        ullWhole = m_ullMantissa >> -m_nExponent;
    if (m_nExponent < 0)
        ullFraction = m_ullMantissa << (WORD_BITS + m_nExponent);

    m_nDigits = 0;
    if (ullWhole != 0)
        m_nDigits = static_cast<int>(std::to_chars(m_szDigits, std::end(m_szDigits), ullWhole).ptr - m_szDigits);
    m_nPoint = m_nDigits;
    for (int nLeft = nPrecision; nLeft > 0 && ullFraction != 0; nLeft -= GROUP_DIGITS)
    {
        const int nDigits = std::min(nLeft, GROUP_DIGITS);
        m_nDigits += nDigits;
        WriteDigits(m_szDigits + m_nDigits, nDigits, TakeWhole(ullFraction, POWERS_OF_TEN[nDigits]));
    }
    if (ullFraction >> (WORD_BITS - 1) != 0)
        RoundUp();
    TakeDigits(m_nDigits, m_nPoint);
    return true;
}

void CTOVDecimal::ReadFixedText(int nPrecision)
{
    char* const pEnd =
        std::to_chars(m_szDigits, std::end(m_szDigits), m_dMagnitude, std::chars_format::fixed, nPrecision).ptr;
    const int nWhole = static_cast<int>(pEnd - m_szDigits) - (nPrecision > 0 ? nPrecision + 1 : 0);
    std::memmove(m_szDigits + nWhole, m_szDigits + nWhole + 1, nPrecision);
    TakeDigits(nWhole + nPrecision, nWhole);
}

void CTOVDecimal::ReadScientific(int nPrecision)
{
    const int nExactDigits = CountFractionDigits();
    if (nExactDigits <= 2 * GROUP_DIGITS && ReadFromWords(nExactDigits))
        return;
    if (nPrecision >= MAX_SIGNIFICANT_DIGITS)
    {
        ReadExactly();
        return;
    }

    // d.ddde+00, or de+00 without digits after the point.
    const char* const pEnd =
        std::to_chars(m_szDigits, std::end(m_szDigits), m_dMagnitude, std::chars_format::scientific, nPrecision).ptr;
    const int nMantissa = nPrecision > 0 ? nPrecision + 2 : 1;
    int nExponent = 0;
    std::from_chars(m_szDigits + nMantissa + 2, pEnd, nExponent);
    if (m_szDigits[nMantissa + 1] == '-')
        nExponent = -nExponent;

    // Rounding may have raised the exponent by one.
    const int nFractionDigits = nPrecision - nExponent;
    if (HasLowestBitAt(-nFractionDigits - 1) || HasLowestBitAt(-nFractionDigits - 2))
    {
        ReadExactly();
        return;
    }
    std::memmove(m_szDigits + 1, m_szDigits + 2, nPrecision);
    TakeDigits(1 + nPrecision, 1 + nExponent);
}

// Makes the digits at the start of the array the value's, without the zeros at both ends.
void CTOVDecimal::TakeDigits(int nDigits, int nPoint)
{
    int nZeros = 0;
    while (nZeros < nDigits && m_szDigits[nZeros] == '0')
        ++nZeros;
    if (nZeros > 0)
        std::memmove(m_szDigits, m_szDigits + nZeros, nDigits - nZeros);
    m_nDigits = nDigits - nZeros;
    m_nPoint = nPoint - nZeros;
    DropTrailingZeros();
}

void CTOVDecimal::DropTrailingZeros()
{
    while (m_nDigits > 0 && m_szDigits[m_nDigits - 1] == '0')
        --m_nDigits;
}

void CTOVDecimal::Round(long long llKeptDigits)
{
    if (llKeptDigits >= m_nDigits)
        return;
    if (llKeptDigits < 0)
    {
        m_nDigits = 0;
        return;
    }

    const bool bUp = m_szDigits[llKeptDigits] >= '5';
    m_nDigits = static_cast<int>(llKeptDigits);
    if (bUp)
        RoundUp();
    DropTrailingZeros();
}

// Adds one to the last digit.
void CTOVDecimal::RoundUp()
{
    while (m_nDigits > 0 && m_szDigits[m_nDigits - 1] == '9')
        --m_nDigits;
    if (m_nDigits > 0)
    {
        ++m_szDigits[m_nDigits - 1];
    }
    else
    {
        m_szDigits[0] = '1';
        m_nDigits = 1;
        ++m_nPoint;
    }
}

sRealText CTOVDecimal::ToText(char cConversion, int nPrecision, bool bAlternate)
{
    const bool bPoint = nPrecision > 0 || (bAlternate && m_bFinite);
    if (m_bFinite && cConversion == 'f')
        ReadFixed(nPrecision);
    else if (m_bFinite && (cConversion == 'e' || cConversion == 'E'))
        ReadScientific(nPrecision);
    else if (m_bFinite)
        ReadScientific(std::max(nPrecision, 1) - 1);

    switch (cConversion)
    {
    case 'e':
    case 'E':
        return ToScientific(nPrecision, bPoint, cConversion);
    case 'g':
        return ToGeneral(nPrecision, bAlternate, 'e');
    case 'G':
        return ToGeneral(nPrecision, bAlternate, 'E');
    default:
        return ToFixed(nPrecision, bPoint);
    }
}

sRealText CTOVDecimal::ToFixed(long long llPrecision, bool bPoint)
{
    Round(m_nPoint + llPrecision);

    sRealText oText;
    oText.bHasPoint = bPoint;
    const int nWhole = m_nDigits > 0 ? std::max(m_nPoint, 0) : 0;
    const int nWholeDigits = std::min(nWhole, m_nDigits);
    if (nWhole > 0)
    {
        oText.pWhole = m_szDigits;
        oText.nWholeDigits = nWholeDigits;
        oText.nWholeZeros = nWhole - nWholeDigits;
    }

    oText.pFraction = m_szDigits + nWholeDigits;
    oText.nFractionDigits = m_nDigits - nWholeDigits;
    if (oText.nFractionDigits > 0)
        oText.llLeadingZeros = std::max(-m_nPoint, 0);
    oText.llTrailingZeros = llPrecision - oText.llLeadingZeros - oText.nFractionDigits;
    return oText;
}

sRealText CTOVDecimal::ToScientific(long long llPrecision, bool bPoint, char cLetter)
{
    Round(llPrecision + 1);

    sRealText oText;
    oText.bHasPoint = bPoint;
    if (m_nDigits > 0)
    {
        oText.pWhole = m_szDigits;
        oText.pFraction = m_szDigits + 1;
        oText.nFractionDigits = m_nDigits - 1;
    }
    oText.llTrailingZeros = llPrecision - oText.nFractionDigits;

    const int nExponent = GetExponent();
    const int nMagnitude = std::abs(nExponent);
    char* pUnit = oText.szExponent;
    *pUnit++ = cLetter;
    *pUnit++ = nExponent < 0 ? '-' : '+';
    if (nMagnitude < 10)
        *pUnit++ = '0';
    pUnit = std::to_chars(pUnit, std::end(oText.szExponent), nMagnitude).ptr;
    oText.nExponentLength = static_cast<int>(pUnit - oText.szExponent);
    return oText;
}

sRealText CTOVDecimal::ToGeneral(int nPrecision, bool bAlternate, char cLetter)
{
    const long long llSignificant = std::max(nPrecision, 1);
    Round(llSignificant);

    const int nExponent = GetExponent();
    const bool bScientific = nExponent < -4 || nExponent >= llSignificant;
    long long llPrecision = bScientific ? llSignificant - 1 : llSignificant - 1 - nExponent;
    if (!bAlternate)
        llPrecision = m_nDigits > 0 ? std::max(0, m_nDigits - (bScientific ? 1 : m_nPoint)) : 0;

    const bool bPoint = llPrecision > 0 || (bAlternate && m_bFinite);
    return bScientific ? ToScientific(llPrecision, bPoint, cLetter) : ToFixed(llPrecision, bPoint);
}
} // namespace TOVPlatform
