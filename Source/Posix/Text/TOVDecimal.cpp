#include <Posix/Text/TOVDecimal.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace TOVPlatform
{
namespace
{
// How many digits after the point the binary value has: each of its bits after the point makes one.
int FractionDigits(double dValue)
{
    int nExponent = 0;
    double dMantissa = std::frexp(dValue, &nExponent);
    int nBits = 0;
    for (; dMantissa != std::floor(dMantissa); ++nBits)
        dMantissa *= 2;
    return std::max(0, nBits - nExponent);
}
} // namespace

CTOVDecimal::CTOVDecimal(double dValue) : m_bFinite(std::isfinite(dValue))
{
    if (m_bFinite)
        ReadDigits(std::fabs(dValue));
    else if (std::isinf(dValue))
        SetDigits("1#INF");
    else
        SetDigits(std::signbit(dValue) ? "1#IND" : "1#QNAN");
}

void CTOVDecimal::SetDigits(const char* szDigits)
{
    m_nDigits = static_cast<int>(std::strlen(szDigits));
    m_nPoint = 1;
    std::copy_n(szDigits, m_nDigits, m_szDigits);
}

// With as many digits as the value has, the C library's text is exact, and nothing depends on how the library rounds.
void CTOVDecimal::ReadDigits(double dValue)
{
    char szText[MAX_DIGITS + 32];
    const int nFractionDigits = FractionDigits(dValue);
    const int nLength = std::snprintf(szText, sizeof(szText), "%.*f", nFractionDigits, dValue);

    // The point is skipped, whatever the locale uses for it.
    const auto IsDigit = [](char cUnit) { return '0' <= cUnit && cUnit <= '9'; };
    char* const szEnd = std::remove_if(szText, szText + nLength, [&](char cUnit) { return !IsDigit(cUnit); });
    const char* const szFirst = std::find_if(szText, szEnd, [](char cUnit) { return cUnit != '0'; });
    m_nDigits = static_cast<int>(szEnd - szFirst);
    m_nPoint = m_nDigits - nFractionDigits;
    std::copy(szFirst, static_cast<const char*>(szEnd), m_szDigits);
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
    DropTrailingZeros();
}

sRealText CTOVDecimal::ToText(char cConversion, int nPrecision, bool bAlternate)
{
    const bool bPoint = nPrecision > 0 || (bAlternate && m_bFinite);

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
    oText.nExponentLength = std::snprintf(oText.szExponent, sizeof(oText.szExponent), "%c%c%02d", cLetter,
                                          (nExponent < 0) ? '-' : '+', std::abs(nExponent));
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
