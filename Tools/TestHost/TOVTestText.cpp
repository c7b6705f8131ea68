#include <TestHost/TOVTestText.h>

#include <TestHost/TOVTestReport.h>

#include <algorithm>
#include <cstdio>

namespace TOVTestHost
{
namespace
{
std::string HexEscape(char cByte)
{
    char szEscape[8];
    std::snprintf(szEscape, sizeof(szEscape), "\\x%02x", static_cast<unsigned char>(cByte));
    return szEscape;
}

bool IsContinuation(char cByte)
{
    return (static_cast<unsigned char>(cByte) & 0xC0) == 0x80;
}

// Returns the number of bytes of a character, given its first byte; 0 if no character begins with that byte.
std::size_t LengthByFirstByte(unsigned char nFirst)
{
    if (nFirst < 0x80)
        return 1;
    if (nFirst >= 0xC2 && nFirst < 0xE0)
        return 2;
    if (nFirst >= 0xE0 && nFirst < 0xF0)
        return 3;
    return nFirst >= 0xF0 && nFirst < 0xF5 ? 4 : 0;
}

// Returns the number of bytes of the character at nAt if it is complete and XML allows it, else 0.
std::size_t LegalLength(const std::string& sText, std::size_t nAt)
{
    const unsigned char nFirst = static_cast<unsigned char>(sText[nAt]);
    const std::size_t nLength = LengthByFirstByte(nFirst);
    if (nLength == 0 || nAt + nLength > sText.size())
        return 0;
    unsigned long ulCode = nLength == 1 ? nFirst : nFirst & (0x7Fu >> nLength);
    for (std::size_t n = 1; n < nLength; ++n)
    {
        if (!IsContinuation(sText[nAt + n]))
            return 0;
        ulCode = (ulCode << 6) | (static_cast<unsigned char>(sText[nAt + n]) & 0x3Fu);
    }
    const bool bTooLong = (nLength == 3 && ulCode < 0x800) || (nLength == 4 && ulCode < 0x10000);
    const bool bSurrogate = ulCode >= 0xD800 && ulCode < 0xE000;
    const bool bNoCharacter = ulCode == 0xFFFE || ulCode == 0xFFFF || ulCode > 0x10FFFF;
    const bool bControl = ulCode < 0x20 && ulCode != '\t' && ulCode != '\n' && ulCode != '\r';
    return bTooLong || bSurrogate || bNoCharacter || bControl ? 0 : nLength;
}
} // namespace

std::string OneLine(const std::string& sText)
{
    std::string sLine;
    for (std::size_t nAt = 0; nAt < sText.size();)
    {
        const std::size_t nLength = LegalLength(sText, nAt);
        switch (sText[nAt])
        {
        case '\n':
            sLine += "\\n";
            break;
        case '\r':
            sLine += "\\r";
            break;
        case '\t':
            sLine += "\\t";
            break;
        default:
            sLine += nLength > 0 && sText[nAt] != 0x7F ? sText.substr(nAt, nLength) : HexEscape(sText[nAt]);
        }
        nAt += std::max<std::size_t>(nLength, 1);
    }
    return sLine;
}

std::string Markup(const std::string& sText)
{
    std::string sMarkup;
    for (std::size_t nAt = 0; nAt < sText.size();)
    {
        const std::size_t nLength = LegalLength(sText, nAt);
        switch (sText[nAt])
        {
        case '&':
            sMarkup += "&amp;";
            break;
        case '<':
            sMarkup += "&lt;";
            break;
        case '>':
            sMarkup += "&gt;";
            break;
        case '"':
            sMarkup += "&quot;";
            break;
        case '\t':
        case '\n':
        case '\r':
            // An attribute would lose these characters.
            sMarkup += "&#" + std::to_string(static_cast<int>(sText[nAt])) + ";";
            break;
        default:
            sMarkup += nLength > 0 ? sText.substr(nAt, nLength) : HexEscape(sText[nAt]);
        }
        nAt += std::max<std::size_t>(nLength, 1);
    }
    return sMarkup;
}

std::string MarkupOfLines(const std::string& sText)
{
    std::string sMarkup;
    for (std::size_t nAt = 0; nAt < sText.size();)
    {
        const std::size_t nEnd = std::min(sText.find('\n', nAt), sText.size());
        sMarkup += Markup(sText.substr(nAt, nEnd - nAt)) + "\n";
        nAt = nEnd + 1;
    }
    return sMarkup;
}

std::string Shortened(const std::string& sText, std::size_t nCharacters)
{
    std::vector<std::size_t> aStarts;
    for (std::size_t nAt = 0; nAt < sText.size(); ++nAt)
        if (!IsContinuation(sText[nAt]))
            aStarts.push_back(nAt);
    return aStarts.size() <= nCharacters ? sText : sText.substr(0, aStarts[nCharacters - 3]) + "...";
}

std::string SecondsText(double dSeconds)
{
    char szText[64];
    std::snprintf(szText, sizeof(szText), "%.3f", dSeconds);
    return szText;
}

std::string CountText(long lCount, const char* szThing)
{
    return std::to_string(lCount) + " " + szThing + (lCount == 1 ? "" : "s");
}

std::vector<std::string> Describe(const sTestNote& oNote)
{
    const std::string sPlace = oNote.sFile.empty() ? "" : oNote.sFile + ":" + std::to_string(oNote.lLine) + ": ";
    const std::string sKind = oNote.eKind == eNoteWarning ? "warning: " : "";
    std::vector<std::string> aLines = {OneLine(sPlace + sKind + oNote.sMessage)};
    std::size_t nWidth = 0;
    for (const auto& oValue : oNote.aValues)
        nWidth = std::max(nWidth, oValue.first.size());
    for (const auto& oValue : oNote.aValues)
        aLines.push_back("    " + oValue.first + ": " + std::string(nWidth - oValue.first.size(), ' ') +
                         OneLine(oValue.second));
    return aLines;
}

std::vector<std::string> DescribeSlowest(const sTestRecord& oRecord, long lCases)
{
    std::vector<const sCaseRecord*> aCases;
    for (const sSuiteRecord& oSuite : oRecord.aSuites)
        for (const sCaseRecord& oCase : oSuite.aCases)
            if (oCase.eOutcome != eOutcomeNotRun)
                aCases.push_back(&oCase);
    std::stable_sort(aCases.begin(), aCases.end(), [](const sCaseRecord* pOne, const sCaseRecord* pOther) {
        return pOne->dSeconds > pOther->dSeconds;
    });
    if (aCases.size() > static_cast<std::size_t>(lCases))
        aCases.resize(static_cast<std::size_t>(lCases));

    std::vector<std::string> aLines;
    if (!aCases.empty())
        aLines.push_back("Slowest:");
    for (const sCaseRecord* pCase : aCases)
        aLines.push_back("    " + SecondsText(pCase->dSeconds) + " s " + OneLine(pCase->sName));
    return aLines;
}
} // namespace TOVTestHost
