// The patterns of tovtest, and the texts of its reports.
#include "Fuzz.h"

#include <TestHost/TOVTestSelection.h>
#include <TestHost/TOVTestText.h>

namespace
{
constexpr int MAX_PATTERN = 20;
constexpr int MAX_TEXT = 60;

// Row by row: whether the first characters of the pattern match the first ones of the text.
bool MatchesByTable(const std::string& sText, const std::string& sPattern)
{
    std::vector<char> aRow(sText.size() + 1);
    aRow[0] = 1;
    for (const char cPattern : sPattern)
    {
        std::vector<char> aNext(sText.size() + 1);
        aNext[0] = static_cast<char>(cPattern == '*' && aRow[0] != 0);
        for (std::size_t n = 1; n <= sText.size(); ++n)
            aNext[n] =
                static_cast<char>(cPattern == '*' ? aRow[n] != 0 || aNext[n - 1] != 0
                                                  : aRow[n - 1] != 0 && (cPattern == '?' || cPattern == sText[n - 1]));
        aRow = aNext;
    }
    return aRow.back() != 0;
}

bool IsContinuation(char cByte)
{
    return (static_cast<unsigned char>(cByte) & 0xC0) == 0x80;
}
} // namespace

FUZZ_TARGET(TestPatterns)
{
    const std::string sPattern = oInput.Bytes(MAX_PATTERN);
    const std::string sText = oInput.Bytes(MAX_TEXT);
    FUZZ_EXPECT_EQ(MatchesByTable(sText, sPattern), TOVTestHost::MatchesPattern(sText, sPattern));

    const std::string sLine = TOVTestHost::OneLine(sText);
    for (const char cByte : sLine)
        FUZZ_EXPECT((static_cast<unsigned char>(cByte) >= 0x20 && cByte != 0x7F));
    FUZZ_EXPECT_EQ(sLine, TOVTestHost::OneLine(sLine));

    const std::string sMarkup = TOVTestHost::Markup(sText);
    FUZZ_EXPECT(sMarkup.find_first_of("<>\"\n\r\t") == std::string::npos);
    for (std::size_t n = sMarkup.find('&'); n != std::string::npos; n = sMarkup.find('&', n + 1))
        FUZZ_EXPECT(sMarkup.find(';', n) != std::string::npos);

    const std::size_t nMost = static_cast<std::size_t>(oInput.Below(50)) + 3;
    const std::string sShort = TOVTestHost::Shortened(sText, nMost);
    std::size_t nCharacters = 0;
    for (const char cByte : sShort)
        nCharacters += IsContinuation(cByte) ? 0 : 1;
    FUZZ_EXPECT(nCharacters <= nMost);
}
