// Numbers at the start of texts of both widths, against a simple model.
#include "Fuzz.h"

#include <TOVPlatform/TOVString.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

#include <cmath>
#include <cstdlib>

namespace
{
constexpr int MAX_TEXT = 80;
constexpr unsigned long long MAX_UNSIGNED = 0xFFFFFFFF;
constexpr long long MAX_SIGNED = 0x7FFFFFFF;

struct sInteger
{
    bool bNegative = false;
    unsigned long long ullValue = 0; // at most MAX_UNSIGNED + 1, which stands for all that is larger
    std::size_t nEnd = 0;            // 0: there is no number
};

bool IsSpace(char cChar)
{
    return cChar == ' ' || ('\t' <= cChar && cChar <= '\r');
}

// The value of a digit, 36 for anything else.
int DigitOf(char cChar)
{
    if ('0' <= cChar && cChar <= '9')
        return cChar - '0';
    if ('a' <= cChar && cChar <= 'z')
        return cChar - 'a' + 10;
    return 'A' <= cChar && cChar <= 'Z' ? cChar - 'A' + 10 : 36;
}

char At(const std::string& sText, std::size_t nIndex)
{
    return nIndex < sText.size() ? sText[nIndex] : '\0';
}

std::size_t SkipSpaceAndSign(const std::string& sText, bool& bNegative)
{
    std::size_t nAt = 0;
    while (IsSpace(At(sText, nAt)))
        ++nAt;
    bNegative = At(sText, nAt) == '-';
    return bNegative || At(sText, nAt) == '+' ? nAt + 1 : nAt;
}

sInteger ReadInteger(const std::string& sText, int nBase)
{
    sInteger oResult;
    if (nBase != 0 && (nBase < 2 || nBase > 36))
        return oResult;
    std::size_t nAt = SkipSpaceAndSign(sText, oResult.bNegative);
    // A prefix without a digit after it is not a number.
    const bool bPrefix = At(sText, nAt) == '0' && (At(sText, nAt + 1) | 0x20) == 'x';
    if (bPrefix && (nBase == 0 || nBase == 16))
    {
        nAt += 2;
        nBase = 16;
    }
    if (nBase == 0)
        nBase = At(sText, nAt) == '0' ? 8 : 10;
    for (; DigitOf(At(sText, nAt)) < nBase; ++nAt)
    {
        oResult.ullValue = oResult.ullValue * static_cast<unsigned>(nBase) + static_cast<unsigned>(DigitOf(sText[nAt]));
        if (oResult.ullValue > MAX_UNSIGNED)
            oResult.ullValue = MAX_UNSIGNED + 1;
        oResult.nEnd = nAt + 1;
    }
    return oResult;
}

long SignedOf(const sInteger& oInteger)
{
    if (oInteger.nEnd == 0)
        return 0;
    const long long llLimit = oInteger.bNegative ? MAX_SIGNED + 1 : MAX_SIGNED;
    const long long llValue = std::min(static_cast<long long>(oInteger.ullValue), llLimit);
    return static_cast<long>(oInteger.bNegative ? -llValue : llValue);
}

unsigned long UnsignedOf(const sInteger& oInteger)
{
    if (oInteger.nEnd == 0)
        return 0;
    const unsigned long long ullValue = std::min(oInteger.ullValue, MAX_UNSIGNED);
    return static_cast<unsigned long>((oInteger.bNegative ? 0 - ullValue : ullValue) & MAX_UNSIGNED);
}

std::size_t SkipDigits(const std::string& sText, std::size_t nAt)
{
    while (DigitOf(At(sText, nAt)) < 10)
        ++nAt;
    return nAt;
}

// Returns the end of a decimal number, 0 if there is none, and its text as the standard library reads it.
std::size_t FindDecimal(const std::string& sText, std::string& sNumber)
{
    bool bNegative = false;
    const std::size_t nStart = SkipSpaceAndSign(sText, bNegative);
    const std::size_t nPoint = SkipDigits(sText, nStart);
    std::size_t nEnd = nPoint;
    if (At(sText, nPoint) == '.')
        nEnd = SkipDigits(sText, nPoint + 1);
    if (nPoint == nStart && nEnd <= nPoint + 1)
        return 0;
    sNumber = (bNegative ? "-" : "") + sText.substr(nStart, nEnd - nStart);

    const char cExponent = static_cast<char>(At(sText, nEnd) | 0x20);
    const bool bSign = At(sText, nEnd + 1) == '-' || At(sText, nEnd + 1) == '+';
    const std::size_t nDigits = nEnd + (bSign ? 2 : 1);
    if ((cExponent != 'e' && cExponent != 'd') || DigitOf(At(sText, nDigits)) >= 10)
        return nEnd;
    const std::size_t nExponentEnd = SkipDigits(sText, nDigits);
    sNumber += 'e' + sText.substr(nEnd + 1, nExponentEnd - nEnd - 1);
    return nExponentEnd;
}

long ToLong(const char* szText, char** pszEnd, int nBase)
{
    return TOVPlatform::TOVStringA::ToLong(szText, pszEnd, nBase);
}
long ToLong(const wchar_t* szText, wchar_t** pszEnd, int nBase)
{
    return TOVPlatform::TOVStringW::ToLong(szText, pszEnd, nBase);
}
unsigned long ToUlong(const char* szText, char** pszEnd, int nBase)
{
    return TOVPlatform::TOVStringA::ToUlong(szText, pszEnd, nBase);
}
unsigned long ToUlong(const wchar_t* szText, wchar_t** pszEnd, int nBase)
{
    return TOVPlatform::TOVStringW::ToUlong(szText, pszEnd, nBase);
}
double ToDouble(const char* szText, char** pszEnd)
{
    return TOVPlatform::TOVStringA::ToDouble(szText, pszEnd);
}
double ToDouble(const wchar_t* szText, wchar_t** pszEnd)
{
    return TOVPlatform::TOVStringW::ToDouble(szText, pszEnd);
}

void ExpectSameBits(double dExpected, double dActual)
{
    FUZZ_EXPECT_EQ(dExpected, dActual);
    FUZZ_EXPECT_EQ(std::signbit(dExpected), std::signbit(dActual));
}

// The block has no unit after the terminator, so that the sanitizer sees a read there.
template<class tString, class tUnit> void CheckText(const std::string& sText, int nBase)
{
    std::vector<tUnit> aText(sText.begin(), sText.end());
    // Characters of other alphabets are neither digits nor space.
    for (tUnit& cUnit : aText)
        if (sizeof(tUnit) > 1 && static_cast<unsigned>(cUnit) >= 0x80)
            cUnit = static_cast<tUnit>(0x4E00 + (static_cast<unsigned>(cUnit) & 0xFF));
    aText.push_back(0);
    tUnit* const szText = aText.data();

    const sInteger oInteger = ReadInteger(sText, nBase);
    tUnit* szEnd = nullptr;
    FUZZ_EXPECT_EQ(SignedOf(oInteger), ToLong(szText, &szEnd, nBase));
    FUZZ_EXPECT_EQ(static_cast<long>(oInteger.nEnd), static_cast<long>(szEnd - szText));
    FUZZ_EXPECT_EQ(UnsignedOf(oInteger), ToUlong(szText, &szEnd, nBase));
    FUZZ_EXPECT_EQ(static_cast<long>(oInteger.nEnd), static_cast<long>(szEnd - szText));

    std::string sNumber;
    const std::size_t nDecimalEnd = FindDecimal(sText, sNumber);
    const double dExpected = nDecimalEnd > 0 ? std::strtod(sNumber.c_str(), nullptr) : 0.0;
    const double dActual = ToDouble(szText, &szEnd);
    FUZZ_EXPECT_EQ(static_cast<long>(nDecimalEnd), static_cast<long>(szEnd - szText));
    ExpectSameBits(dExpected, dActual);

    const tString oText(szText);
    FUZZ_EXPECT_EQ(static_cast<int>(SignedOf(oInteger)), oText.AsInt(nBase));
    FUZZ_EXPECT_EQ(SignedOf(oInteger), oText.AsLong(nBase));
    FUZZ_EXPECT_EQ(static_cast<unsigned int>(SignedOf(oInteger)), oText.AsUint(nBase));
    FUZZ_EXPECT_EQ(UnsignedOf(oInteger), oText.AsUlong(nBase));
    FUZZ_EXPECT_EQ(SignedOf(ReadInteger(sText, 10)), oText.AsLong());
    ExpectSameBits(dExpected, oText.AsDouble());
    ExpectSameBits(static_cast<double>(static_cast<float>(dExpected)), static_cast<double>(oText.AsFloat()));
}
} // namespace

FUZZ_TARGET(Numbers)
{
    const int nKind = oInput.Byte();
    const int nBase = nKind < 128 ? 10 : nKind < 250 ? nKind % 40 - 1 : nKind * 1000;
    std::string sText = oInput.Text(MAX_TEXT);
    CheckText<CTOVStringA, char>(sText, nBase);
    CheckText<CTOVStringW, wchar_t>(sText, nBase);
}
