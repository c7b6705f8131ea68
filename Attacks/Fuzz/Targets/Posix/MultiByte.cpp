// Texts of a multi-byte code page: steps from character to character, and conversion to the other width, against a
// decoder of UTF-8 of its own. Windows has no such code page for its runtime.
#include "Fuzz.h"

#include <TOVPlatform/TOVString.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

#include <algorithm>
#include <clocale>
#include <stdexcept>

namespace
{
constexpr int MAX_TEXT = 60;

// While it lives, narrow text is UTF-8.
class CUtf8
{
public:
    CUtf8()
    {
        if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr)
            throw std::runtime_error("no locale C.UTF-8");
    }
    ~CUtf8() { std::setlocale(LC_CTYPE, "C"); }
    CUtf8(const CUtf8&) = delete;
    CUtf8& operator=(const CUtf8&) = delete;
};

struct sCharacter
{
    unsigned long ulCode = 0;
    std::size_t nBytes = 0; // 0: the bytes there are no character
};

std::size_t LengthByFirstByte(unsigned int nFirst)
{
    if (nFirst < 0x80)
        return 1;
    if (nFirst < 0xC2)
        return 0;
    if (nFirst < 0xE0)
        return 2;
    return nFirst < 0xF0 ? 3 : 4;
}

sCharacter Decode(const std::string& sText, std::size_t nAt)
{
    const auto fnByte = [&](std::size_t n) { return n < sText.size() ? static_cast<unsigned char>(sText[n]) : 0u; };
    const unsigned int nFirst = fnByte(nAt);
    sCharacter oResult;
    const std::size_t nBytes = LengthByFirstByte(nFirst);
    if (nBytes == 0)
        return oResult;
    oResult.ulCode = nBytes == 1 ? nFirst : nFirst & (0x7Fu >> nBytes);
    for (std::size_t n = 1; n < nBytes; ++n)
    {
        if ((fnByte(nAt + n) & 0xC0) != 0x80)
            return oResult;
        oResult.ulCode = oResult.ulCode << 6 | (fnByte(nAt + n) & 0x3F);
    }
    constexpr unsigned long FIRST_CODES[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool bSurrogate = oResult.ulCode >= 0xD800 && oResult.ulCode < 0xE000;
    if (oResult.ulCode >= FIRST_CODES[nBytes] && !bSurrogate)
        oResult.nBytes = nBytes;
    return oResult;
}

// Checks the steps. Returns whether the text is valid, with its form in the other width.
bool CheckSteps(const std::string& sText, std::vector<wchar_t>& aWide)
{
    bool bValid = true;
    int nCharacters = 0;
    const char* const szText = sText.c_str();
    for (std::size_t nAt = 0; nAt < sText.size(); ++nCharacters)
    {
        const sCharacter oCharacter = Decode(sText, nAt);
        const std::size_t nNext = nAt + std::max<std::size_t>(oCharacter.nBytes, 1);
        FUZZ_EXPECT(szText + nNext == TOVPlatform::TOVStringA::Inc(szText + nAt));
        FUZZ_EXPECT(szText + nAt == TOVPlatform::TOVStringA::NInc(szText, nCharacters));
        if (bValid)
            FUZZ_EXPECT(szText + nAt == TOVPlatform::TOVStringA::Dec(szText, szText + nNext));
        bValid = bValid && oCharacter.nBytes > 0;
        if (oCharacter.ulCode >= 0x10000)
        {
            aWide.push_back(static_cast<wchar_t>(0xD7C0 + (oCharacter.ulCode >> 10)));
            aWide.push_back(static_cast<wchar_t>(0xDC00 + (oCharacter.ulCode & 0x3FF)));
        }
        else
        {
            aWide.push_back(static_cast<wchar_t>(oCharacter.ulCode));
        }
        nAt = nNext;
    }
    FUZZ_EXPECT(szText + sText.size() == TOVPlatform::TOVStringA::NInc(szText, nCharacters));
    FUZZ_EXPECT(szText + sText.size() == TOVPlatform::TOVStringA::NInc(szText, nCharacters + 3));
    return bValid;
}

// A text that cannot be converted fails a check.
void CheckConversion(const std::string& sText, const std::vector<wchar_t>& aWide, bool bValid)
{
    CTOVStringW oWide;
    FUZZ_EXPECT_EQ(!bValid, Fuzz::FailsCheck([&] { oWide.Format(L"<%S>", sText.c_str()); }));
    if (!bValid)
        return;
    std::vector<wchar_t> aExpected = {L'<'};
    aExpected.insert(aExpected.end(), aWide.begin(), aWide.end());
    aExpected.push_back(L'>');
    FUZZ_EXPECT_EQ(aExpected, std::vector<wchar_t>(oWide.GetString(), oWide.GetString() + oWide.GetLength()));

    std::vector<wchar_t> aEnded = aWide;
    aEnded.push_back(0);
    CTOVStringA oNarrow;
    FUZZ_EXPECT_EQ(static_cast<int>(sText.size()) + 2, oNarrow.Format("<%S>", aEnded.data()));
    FUZZ_EXPECT_EQ("<" + sText + ">", std::string(~oNarrow));
}

// Finds each text by itself and its end, and calls whatever else moves by characters.
void CheckStrings(const std::string& sText, const std::string& sOther, int nStart)
{
    CTOVStringA oText(sText.c_str());
    const CTOVStringA oOther(sOther.c_str());
    if (!sText.empty())
        FUZZ_EXPECT_EQ(0, oText.Find(sText.c_str()));
    Fuzz::FailsCheck([&] { oText.Find(sOther.c_str(), nStart); });
    Fuzz::FailsCheck([&] { oText.FindOneOf(sOther.c_str(), nStart); });
    Fuzz::FailsCheck([&] { oText.FindNotOneOf(sOther.c_str(), nStart); });
    oText.ReverseFindOneOf(sOther.c_str());
    oText.ReverseFindNotOneOf(sOther.c_str());
    oText.CompareNoCase(sOther.c_str());
    Fuzz::FailsCheck([&] { oText.BeginsWith(oOther); });
    Fuzz::FailsCheck([&] { oText.EndsWith(oOther); });
    Fuzz::FailsCheck([&] { oText.EndsWithNoCase(oOther); });
    oText.Replace('a', 'b');
    oText.Replace(sOther.c_str(), "ab");
    oText.MakeUpper();
    oText.MakeLower();
    oText.Reverse();
}
} // namespace

FUZZ_TARGET(MultiByte)
{
    const CUtf8 oUtf8;
    const int nStart = oInput.Number();
    const std::string sText = oInput.Text(MAX_TEXT);
    // The runtime also takes codes for characters that Unicode does not have.
    if (std::none_of(sText.begin(), sText.end(), [](char cByte) { return static_cast<unsigned char>(cByte) >= 0xF4; }))
    {
        std::vector<wchar_t> aWide;
        const bool bValid = CheckSteps(sText, aWide);
        CheckConversion(sText, aWide, bValid);
    }
    CheckStrings(sText, oInput.Text(MAX_TEXT), nStart);

    // Any units at all, surrogates among them.
    std::vector<wchar_t> aUnits;
    for (std::size_t n = 0; n < sText.size() / 2; ++n)
        aUnits.push_back(static_cast<wchar_t>(static_cast<unsigned char>(sText[2 * n]) << 8 |
                                              static_cast<unsigned char>(sText[2 * n + 1])));
    aUnits.push_back(0);
    CTOVStringA oNarrow;
    Fuzz::FailsCheck([&] { oNarrow.Format("%S|%.3S", aUnits.data(), aUnits.data()); });
}
