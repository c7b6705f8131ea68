#include <TOVPlatform/Backend/TOVTextNumber.h>

#include <Posix/Text/TOVMultiByte.h>
#include <TOVPlatform/TOVAscii.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <system_error>
#include <wctype.h>

namespace TOVPlatform
{
namespace Backend
{
namespace
{
constexpr std::uint64_t MAX_MAGNITUDE = UINT32_MAX;

bool IsWhiteSpaceOfLocale(char cUnit)
{
    return std::isspace(static_cast<unsigned char>(cUnit)) != 0;
}

bool IsWhiteSpaceOfLocale(wchar_t cUnit)
{
    return iswspace(cUnit) != 0;
}

// Locales differ after ASCII only.
template<class tUnit> bool IsWhiteSpace(tUnit cUnit)
{
    if (!TOVAscii::IsAscii(cUnit))
        return IsWhiteSpaceOfLocale(cUnit);
    return cUnit == ' ' || ('\t' <= cUnit && cUnit <= '\r');
}

template<class tUnit> bool IsDecimalDigit(tUnit cUnit)
{
    return '0' <= cUnit && cUnit <= '9';
}

// The value of a digit; 36 for a unit that is no digit in any base.
template<class tUnit> int DigitValue(tUnit cUnit)
{
    if (IsDecimalDigit(cUnit))
        return cUnit - '0';
    if ('a' <= cUnit && cUnit <= 'z')
        return cUnit - 'a' + 10;
    if ('A' <= cUnit && cUnit <= 'Z')
        return cUnit - 'A' + 10;
    return 36;
}

template<class tUnit> const tUnit* SkipWhiteSpace(const tUnit* szText)
{
    while (IsWhiteSpace(*szText))
        ++szText;
    return szText;
}

// Moves past a sign. Returns true for a minus.
template<class tUnit> bool ReadSign(const tUnit*& szText)
{
    const bool bNegative = *szText == '-';
    if (bNegative || *szText == '+')
        ++szText;
    return bNegative;
}

struct sInteger
{
    bool bNegative = false;
    std::uint64_t ullMagnitude = 0; // 0x100000000 stands for all larger values
};

template<class tUnit> sInteger ReadInteger(const tUnit* szStart, tUnit** pszEnd, int nBase)
{
    sInteger oResult;
    *pszEnd = const_cast<tUnit*>(szStart);

    const tUnit* szText = SkipWhiteSpace(szStart);
    oResult.bNegative = ReadSign(szText);
    if ((nBase == 0 || nBase == 16) && szText[0] == '0' && (szText[1] == 'x' || szText[1] == 'X'))
    {
        szText += 2;
        nBase = 16;
    }
    else if (nBase == 0)
    {
        nBase = *szText == '0' ? 8 : 10;
    }

    for (; DigitValue(*szText) < nBase; ++szText)
    {
        const std::uint64_t ullValue = oResult.ullMagnitude * static_cast<std::uint64_t>(nBase) + DigitValue(*szText);
        oResult.ullMagnitude = std::min(ullValue, MAX_MAGNITUDE + 1);
        *pszEnd = const_cast<tUnit*>(szText + 1);
    }
    return oResult;
}

// Finds the units of a decimal number without its sign: mantissa and exponent.
template<class tUnit> class CDecimalScanner
{
public:
    explicit CDecimalScanner(const tUnit* szNumber) : m_szBegin(szNumber), m_szEnd(szNumber) { Scan(); }

    bool HasNumber() const { return m_bHasNumber; }
    const tUnit* GetEnd() const { return m_szEnd; }

    double GetValue() const;

private:
    static char ToAscii(tUnit cUnit) { return static_cast<char>(cUnit); }

    // Reads a number that has the same form in every locale, in which the standard library reads it. Returns false for
    // another form, and for a number that is too large or too small for a double: the C library's strtod, which follows
    // the locale, gets these with the exponent letter e.
    bool ReadPlain(double& dValue) const;

    void Scan();
    const tUnit* ScanDigits(const tUnit* szText);
    void ScanExponent();

    const tUnit* m_szBegin;
    const tUnit* m_szEnd;
    const tUnit* m_szPoint = nullptr;
    const tUnit* m_szAfterPoint = nullptr;
    const tUnit* m_szExponent = nullptr;
    bool m_bHasNumber = false;
};

// The length of the locale's decimal point if the text begins with it; otherwise 0.
template<class tUnit> int PointLength(const tUnit* szText)
{
    TOVMultiByte::sCharacter<tUnit> oPoint;
    TOVMultiByte::GetDecimalPoint(oPoint);
    return std::equal(oPoint.szUnits, oPoint.szUnits + oPoint.nUnits, szText) ? oPoint.nUnits : 0;
}

template<class tUnit> const tUnit* CDecimalScanner<tUnit>::ScanDigits(const tUnit* szText)
{
    for (; IsDecimalDigit(*szText); ++szText)
        m_bHasNumber = true;
    return szText;
}

template<class tUnit> void CDecimalScanner<tUnit>::ScanExponent()
{
    const tUnit* szText = m_szEnd;
    if (*szText != 'e' && *szText != 'E' && *szText != 'd' && *szText != 'D')
        return;
    ++szText;
    ReadSign(szText);
    if (!IsDecimalDigit(*szText))
        return;
    m_szExponent = m_szEnd;
    m_szEnd = ScanDigits(szText);
}

template<class tUnit> void CDecimalScanner<tUnit>::Scan()
{
    m_szEnd = ScanDigits(m_szBegin);
    m_szPoint = m_szEnd;
    m_szAfterPoint = m_szEnd + PointLength(m_szEnd);
    m_szEnd = ScanDigits(m_szAfterPoint);
    if (m_bHasNumber)
        ScanExponent();
}

template<class tUnit> bool CDecimalScanner<tUnit>::ReadPlain(double& dValue) const
{
    const bool bPlainPoint = m_szAfterPoint == m_szPoint || (m_szAfterPoint == m_szPoint + 1 && *m_szPoint == '.');
    const bool bPlainExponent = m_szExponent == nullptr || *m_szExponent == 'e' || *m_szExponent == 'E';
    if (!bPlainPoint || !bPlainExponent)
        return false;

    if constexpr (sizeof(tUnit) == sizeof(char))
    {
        return std::from_chars(m_szBegin, m_szEnd, dValue).ec == std::errc();
    }
    else
    {
        char szNumber[64];
        if (m_szEnd - m_szBegin > static_cast<std::ptrdiff_t>(sizeof(szNumber)))
            return false;
        const char* const szEnd = std::transform(m_szBegin, m_szEnd, szNumber, ToAscii);
        return std::from_chars(szNumber, szEnd, dValue).ec == std::errc();
    }
}

template<class tUnit> double CDecimalScanner<tUnit>::GetValue() const
{
    double dValue = 0;
    if (ReadPlain(dValue))
        return dValue;

    TOVMultiByte::sCharacter<char> oPoint;
    TOVMultiByte::GetDecimalPoint(oPoint);

    char szShort[64];
    std::string sLong;
    char* szNumber = szShort;
    const std::size_t nNeeded = static_cast<std::size_t>(m_szEnd - m_szBegin) + sizeof(oPoint.szUnits) + 1;
    if (nNeeded > sizeof(szShort))
    {
        sLong.resize(nNeeded);
        szNumber = sLong.data();
    }

    char* szOut = std::transform(m_szBegin, m_szPoint, szNumber, ToAscii);
    if (m_szAfterPoint != m_szPoint)
        szOut = std::copy_n(oPoint.szUnits, oPoint.nUnits, szOut);
    szOut = std::transform(m_szAfterPoint, m_szExponent != nullptr ? m_szExponent : m_szEnd, szOut, ToAscii);
    if (m_szExponent != nullptr)
    {
        *szOut++ = 'e';
        szOut = std::transform(m_szExponent + 1, m_szEnd, szOut, ToAscii);
    }
    *szOut = '\0';
    return std::strtod(szNumber, nullptr);
}

long ToSigned(const sInteger& oInteger)
{
    if (oInteger.bNegative)
        return -static_cast<long>(std::min<std::uint64_t>(oInteger.ullMagnitude, std::uint64_t(INT32_MAX) + 1));
    return static_cast<long>(std::min<std::uint64_t>(oInteger.ullMagnitude, INT32_MAX));
}

// A minus sign negates the value that has been cut to 32 bits, so that a text below the range gives 1.
unsigned long ToUnsigned(const sInteger& oInteger)
{
    const std::uint32_t dwMagnitude = static_cast<std::uint32_t>(std::min(oInteger.ullMagnitude, MAX_MAGNITUDE));
    return oInteger.bNegative ? 0u - dwMagnitude : dwMagnitude;
}

template<class tUnit> double ReadReal(const tUnit* szStart, tUnit** pszEnd)
{
    *pszEnd = const_cast<tUnit*>(szStart);

    const tUnit* szText = SkipWhiteSpace(szStart);
    const bool bNegative = ReadSign(szText);
    const CDecimalScanner<tUnit> oNumber(szText);
    if (!oNumber.HasNumber())
        return 0.0;
    *pszEnd = const_cast<tUnit*>(oNumber.GetEnd());
    return bNegative ? -oNumber.GetValue() : oNumber.GetValue();
}
} // namespace

long ToLong(const char* szStart, char** pszEnd, int nBase)
{
    return ToSigned(ReadInteger(szStart, pszEnd, nBase));
}

unsigned long ToUlong(const char* szStart, char** pszEnd, int nBase)
{
    return ToUnsigned(ReadInteger(szStart, pszEnd, nBase));
}

double ToDouble(const char* szStart, char** pszEnd)
{
    return ReadReal(szStart, pszEnd);
}

long ToLong(const wchar_t* szStart, wchar_t** pszEnd, int nBase)
{
    return ToSigned(ReadInteger(szStart, pszEnd, nBase));
}

unsigned long ToUlong(const wchar_t* szStart, wchar_t** pszEnd, int nBase)
{
    return ToUnsigned(ReadInteger(szStart, pszEnd, nBase));
}

double ToDouble(const wchar_t* szStart, wchar_t** pszEnd)
{
    return ReadReal(szStart, pszEnd);
}
} // namespace Backend
} // namespace TOVPlatform
