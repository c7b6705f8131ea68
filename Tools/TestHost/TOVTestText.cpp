#include <TestHost/TOVTestText.h>

#include <TestHost/TOVTestReport.h>
#include <Text/TOVShownText.h>

#include <algorithm>
#include <cstdio>

namespace TOVTestHost
{
namespace
{
bool IsContinuation(char cByte)
{
    return (static_cast<unsigned char>(cByte) & 0xC0) == 0x80;
}

const char* NameOfControl(char cCharacter)
{
    switch (cCharacter)
    {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return nullptr;
    }
}

const char* EntityOf(char cCharacter)
{
    switch (cCharacter)
    {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    // An attribute would lose these characters.
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    case '\r':
        return "&#13;";
    default:
        return nullptr;
    }
}

// Returns the text with the escape of each character that has one, and the others as they are shown. Reports are in
// UTF-8 on every system.
std::string Escaped(const std::string& sText, const char* (*pfEscapeOf)(char))
{
    std::string sEscaped;
    for (std::string_view sLeft = sText; !sLeft.empty();)
    {
        const char* const szEscape = pfEscapeOf(sLeft[0]);
        if (szEscape == nullptr)
        {
            TOVShownText::MoveShown(sLeft, sEscaped, &TOVShownText::ReadUtf8);
            continue;
        }
        sEscaped += szEscape;
        sLeft.remove_prefix(1);
    }
    return sEscaped;
}
} // namespace

std::string OneLine(const std::string& sText)
{
    return Escaped(sText, &NameOfControl);
}

std::string Markup(const std::string& sText)
{
    return Escaped(sText, &EntityOf);
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
