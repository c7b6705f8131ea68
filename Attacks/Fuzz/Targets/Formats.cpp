// Formatted texts of both widths: against the C library for what it supports, and against each other. The estimate
// never falls short, and nothing is written outside a buffer.
#include "FormatItems.h"

#include <TOVPlatform/TOVText.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <memory>

namespace
{
constexpr int MAX_PRINTED = 6000;

template<class tUnit> std::vector<tUnit> Ended(const std::string& sText)
{
    std::vector<tUnit> aText(sText.begin(), sText.end());
    aText.push_back(0);
    return aText;
}

// The arguments in memory of their own, for a format of one width.
template<class tUnit> class CArguments
{
public:
    explicit CArguments(const Fuzz::sFormat& oFormat)
    {
        for (const Fuzz::sArgument& oArgument : oFormat.aArguments)
        {
            const bool bText = oArgument.nKind == Fuzz::sArgument::eText;
            const bool bWide = bText == (sizeof(tUnit) > 1);
            m_aNarrow.push_back(Ended<char>(bWide ? "" : oArgument.sText));
            m_aWide.push_back(Ended<wchar_t>(bWide ? oArgument.sText : ""));
            const void* pAddress = bWide ? static_cast<const void*>(m_aWide.back().data()) : m_aNarrow.back().data();
            if (oArgument.nKind == Fuzz::sArgument::ePlace)
                pAddress = &m_llPlace;
            m_aAddresses.push_back(oArgument.bNull ? nullptr : pAddress);
        }
    }

    const void* operator()(std::size_t nArgument) const { return m_aAddresses[nArgument]; }

private:
    std::vector<std::vector<char>> m_aNarrow;
    std::vector<std::vector<wchar_t>> m_aWide;
    std::vector<const void*> m_aAddresses;
    mutable long long m_llPlace = 0;
};

// Whether exponents have three digits, as only the runtime of Windows writes them.
bool HasLongExponents()
{
    static const bool s_bLong = [] {
        char szText[16];
        return TOVText::SPrintf(szText, "%.0e", 1.0) > 5;
    }();
    return s_bLong;
}

template<class tUnit> int Estimate(const tUnit* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const struct sEnd
    {
        va_list& pList;
        ~sEnd() { va_end(pList); }
    } oEnd = {pArguments};
    return TOVText::VSCPrintf(szFormat, pArguments);
}

// Prints within the limits of an estimate, and into buffers that are too short. Returns the text.
template<class tString, class tUnit, class TCall>
std::vector<tUnit> Print(int nEstimate, int nShort, const tUnit* szFormat, TCall fnCall)
{
    const auto fnPrint = [&](auto... oArguments) {
        const std::unique_ptr<tUnit[]> pBuffer(new tUnit[static_cast<std::size_t>(nEstimate) + 1]);
        const int nLength = TOVText::SPrintf(pBuffer.get(), szFormat, oArguments...);
        FUZZ_EXPECT(-1 <= nLength && nLength <= nEstimate);
        if (nLength == -1)
            return std::vector<tUnit>();
        FUZZ_EXPECT_EQ(0, static_cast<int>(pBuffer[static_cast<std::size_t>(nLength)]));
        std::vector<tUnit> aText(pBuffer.get(), pBuffer.get() + nLength);

        for (const int nCount : {nShort, nLength, nLength + 1})
        {
            if (nCount < 1)
                continue;
            const std::unique_ptr<tUnit[]> pShort(new tUnit[static_cast<std::size_t>(nCount)]);
            const int nPrinted = TOVText::SNPrintf(pShort.get(), nCount, szFormat, oArguments...);
            FUZZ_EXPECT_EQ(nLength <= nCount ? nLength : -1, nPrinted);
            const int nWritten = nLength <= nCount ? nLength : nCount;
            FUZZ_EXPECT(std::equal(aText.begin(), aText.begin() + nWritten, pShort.get()));
            if (nLength < nCount)
                FUZZ_EXPECT_EQ(0, static_cast<int>(pShort[static_cast<std::size_t>(nLength)]));
        }

        tString oString;
        int nFormatted = 0;
        const bool bFails = Fuzz::FailsCheck([&] { nFormatted = oString.Format(szFormat, oArguments...); });
        FUZZ_EXPECT_EQ(nEstimate == 0, bFails);
        if (bFails)
            return aText;
        FUZZ_EXPECT_EQ(nLength, nFormatted);
        FUZZ_EXPECT_EQ(static_cast<long>(nLength), oString.GetLength());
        FUZZ_EXPECT(oString.GetData()->GetSize() > nLength);
        FUZZ_EXPECT_EQ(aText, std::vector<tUnit>(oString.GetString(), oString.GetString() + nLength));
        return aText;
    };
    return fnCall(fnPrint);
}

// Returns false where the estimate fails a check.
template<class tString, class tUnit>
bool PrintItems(const Fuzz::sFormat& oFormat, int nShort, std::vector<tUnit>& aText)
{
    const std::vector<tUnit> aFormat = Ended<tUnit>(oFormat.sText);
    const CArguments<tUnit> oAddresses(oFormat);
    int nEstimate = 0;
    const bool bRefused = Fuzz::FailsCheck([&] {
        Fuzz::Apply(
            oFormat, [&](auto... oArguments) { nEstimate = Estimate(aFormat.data(), oArguments...); }, oAddresses);
    });
    FUZZ_EXPECT_EQ(oFormat.bRefused, bRefused);
    if (bRefused)
        return false;
    aText = Print<tString>(nEstimate, nShort, aFormat.data(), [&](auto fnPrint) {
        std::vector<tUnit> aPrinted;
        Fuzz::Apply(
            oFormat, [&](auto... oArguments) { aPrinted = fnPrint(oArguments...); }, oAddresses);
        return aPrinted;
    });
    return true;
}

std::string PrintByLibrary(const Fuzz::sFormat& oFormat, const std::string& sText)
{
    static char s_szBuffer[MAX_PRINTED];
    int nLength = 0;
    // Texts of the other width are passed as narrow ones.
    std::vector<std::string> aTexts;
    for (const Fuzz::sArgument& oArgument : oFormat.aArguments)
        aTexts.push_back(oArgument.sText);
    // An argument too many is ignored.
    Fuzz::Apply(
        oFormat,
        [&](auto... oArguments) {
            nLength = std::snprintf(s_szBuffer, sizeof(s_szBuffer), sText.c_str(), oArguments..., 0);
        },
        [&](std::size_t nArgument) { return static_cast<const void*>(aTexts[nArgument].c_str()); });
    FUZZ_EXPECT(0 <= nLength && nLength < MAX_PRINTED);
    return std::string(s_szBuffer, static_cast<std::size_t>(nLength));
}

// Whether the two differ in digits alone, in which a number halfway between two others is rounded away from zero by the
// one and to the even one by the other.
bool DifferByRounding(const std::string& sFirst, const std::string& sSecond)
{
    if (sFirst.size() > sSecond.size() + 1 || sSecond.size() > sFirst.size() + 1)
        return false;
    return (sFirst + sSecond).find_first_of("123456789") != std::string::npos &&
           sFirst.find_first_of("0123456789") == sSecond.find_first_of("0123456789");
}

// Whether a number of the format ends, in decimal, in a 5 that a conversion can cut off.
bool HasHalf(const Fuzz::sFormat& oFormat)
{
    static char s_szDigits[1200];
    for (const Fuzz::sArgument& oArgument : oFormat.aArguments)
    {
        if (oArgument.nKind != Fuzz::sArgument::eDouble)
            continue;
        const int nLength = std::snprintf(s_szDigits, sizeof(s_szDigits), "%.1080e", oArgument.dValue);
        const std::string sDigits = std::string(s_szDigits, static_cast<std::size_t>(nLength));
        const std::size_t nLast = sDigits.find_last_not_of("0.", sDigits.find('e') - 1);
        if (nLast != std::string::npos && sDigits[nLast] == '5')
            return true;
    }
    return false;
}

void CompareWithLibrary(const Fuzz::sFormat& oFormat, const std::vector<char>& aText)
{
    if (!oFormat.bComparable || (oFormat.bExponent && HasLongExponents()))
        return;
    const std::string sExpected = PrintByLibrary(oFormat, oFormat.sOfLibrary);
    const std::string sActual(aText.begin(), aText.end());
    if (sExpected == sActual || (oFormat.bRounds && HasHalf(oFormat) && DifferByRounding(sExpected, sActual)))
        return;
    Fuzz::Fail(__FILE__, __LINE__,
               Fuzz::Show(oFormat.sText) + ": expected " + Fuzz::Show(sExpected) + ", found " + Fuzz::Show(sActual));
}

// Any format at all, with more arguments than it can take. Texts are left out, since it has none. Whole numbers have 64
// bits, since the format may read that many. Its 16 units have at most 8 conversions, so that all doubles it reads are
// in registers: what a 9th one reads differs from function to function.
template<class tString, class tUnit> void PrintWild(Fuzz::CInput& oInput)
{
    static constexpr char UNITS[] = "%%%%%%**..0123456789-+ #hlIFLN64diouxXcCpegGfqz";
    std::vector<tUnit> aFormat;
    for (int n = oInput.Below(17); n > 0; --n)
        aFormat.push_back(static_cast<tUnit>(UNITS[oInput.Below(static_cast<int>(sizeof(UNITS)) - 1)]));
    aFormat.push_back(0);
    long long a[8];
    for (long long& llValue : a)
        llValue = 1 + oInput.Below(100);
    const auto fnCall = [&](auto fnFunction) {
        return fnFunction(0.1, 1.1, -2.3, 3.3, 0.7, 1.3e10, -7.1, 123.4, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7],
                          1LL, 2LL, 30LL, 4LL, 50LL, 6LL, 700LL, 8LL, 1LL, 2LL, 3LL, 4LL, 5LL, 6LL, 7LL, 8LL);
    };
    int nEstimate = -1;
    const auto fnEstimate = [&](auto... oArguments) { return Estimate(aFormat.data(), oArguments...); };
    if (!Fuzz::FailsCheck([&] { nEstimate = fnCall(fnEstimate); }) && 0 <= nEstimate && nEstimate < MAX_PRINTED)
        Print<tString>(nEstimate, oInput.Below(100), aFormat.data(), fnCall);
}
} // namespace

FUZZ_TARGET(NarrowFormats)
{
    if (oInput.Below(4) == 0)
        return PrintWild<CTOVStringA, char>(oInput);
    const int nShort = oInput.Below(100);
    const Fuzz::sFormat oFormat = Fuzz::ReadFormat(oInput);
    std::vector<char> aText;
    if (PrintItems<CTOVStringA>(oFormat, nShort, aText))
        CompareWithLibrary(oFormat, aText);
}

FUZZ_TARGET(WideFormats)
{
    if (oInput.Below(4) == 0)
        return PrintWild<CTOVStringW, wchar_t>(oInput);
    const int nShort = oInput.Below(100);
    const Fuzz::sFormat oFormat = Fuzz::ReadFormat(oInput);
    std::vector<char> aNarrow;
    std::vector<wchar_t> aWide;
    const bool bPrinted = PrintItems<CTOVStringW>(oFormat, nShort, aWide);
    FUZZ_EXPECT_EQ(bPrinted, PrintItems<CTOVStringA>(oFormat, nShort, aNarrow));
    // A pointer is that of the argument, which the two do not share.
    if (oFormat.sText.find('p') == std::string::npos)
        FUZZ_EXPECT_EQ(std::vector<wchar_t>(aNarrow.begin(), aNarrow.end()), aWide);
}
