#include <TestHost/TOVConsoleReport.h>

#include <TestHost/TOVTestText.h>

namespace TOVTestHost
{
namespace
{
// The line has one column less than a usual window, since a full line would wrap.
constexpr std::size_t PROGRESS_WIDTH = 79;

const char* NameOf(eTestOutcome eOutcome)
{
    switch (eOutcome)
    {
    case eOutcomeFailed:
        return "FAILED ";
    case eOutcomeEnded:
        return "ENDED  ";
    default:
        return "ok     ";
    }
}

void AppendCount(std::string& sText, long lCount, const char* szWhat)
{
    if (lCount > 0)
        sText += ", " + std::to_string(lCount) + " " + szWhat;
}

// Returns a text such as ", 1 failed, 2 warnings".
std::string BadNews(const sTestCounts& oCounts)
{
    std::string sText;
    AppendCount(sText, oCounts.lFailed, "failed");
    AppendCount(sText, oCounts.lEnded, "ended the run");
    AppendCount(sText, oCounts.lNotRun, "not run");
    if (oCounts.lWarnings > 0)
        sText += ", " + CountText(oCounts.lWarnings, "warning");
    return sText;
}

std::string InBrackets(double dSeconds)
{
    return " (" + SecondsText(dSeconds) + " s)";
}

std::string Summary(const sTestRecord& oRecord)
{
    const sTestCounts oCounts = CountCases(oRecord);
    std::string sText;
    if (oRecord.lRuns > 1)
        sText = CountText(oRecord.lRuns, "run") + ", ";
    sText += CountText(static_cast<long>(oRecord.aSuites.size()), "suite") + ", " + CountText(oCounts.lCases, "case") +
             ": " + std::to_string(oCounts.lPassed) + " passed";
    return sText + BadNews(oCounts) + InBrackets(oRecord.dSeconds);
}
} // namespace

CTOVConsoleReport::CTOVConsoleReport(std::FILE* pStream, bool bTerminal, bool bVerbose)
    : m_pStream(pStream), m_bTerminal(bTerminal), m_bVerbose(bVerbose), m_lPlanned(0), m_lEntered(0),
      m_nProgressWidth(0)
{
}

void CTOVConsoleReport::PrintLine(const std::string& sLine)
{
    ShowProgress("");
    std::fprintf(m_pStream, "%s\n", sLine.c_str());
    std::fflush(m_pStream);
}

// Leaves the cursor at the beginning of the line, so that the output of a case overwrites it.
void CTOVConsoleReport::ShowProgress(const std::string& sText)
{
    if (!m_bTerminal || (sText.empty() && m_nProgressWidth == 0))
        return;
    const std::string sShown = Shortened(sText, PROGRESS_WIDTH);
    const std::size_t nRest = m_nProgressWidth > sShown.size() ? m_nProgressWidth - sShown.size() : 0;
    std::fprintf(m_pStream, "\r%s%s\r", sShown.c_str(), std::string(nRest, ' ').c_str());
    std::fflush(m_pStream);
    m_nProgressWidth = sShown.size();
}

void CTOVConsoleReport::OnBegin(const sTestRecord& oRecord)
{
    m_lPlanned = CountPlannedCases(oRecord.oPlan);
}

void CTOVConsoleReport::OnEnterRun(const sTestRecord& oRecord)
{
    if (oRecord.oPlan.lRuns > 1)
        PrintLine("Run " + std::to_string(oRecord.lRuns) + " of " + std::to_string(oRecord.oPlan.lRuns));
}

void CTOVConsoleReport::OnEnterCase(const sCaseRecord& oCase)
{
    ++m_lEntered;
    std::string sCount = std::to_string(m_lEntered);
    if (m_lPlanned > 0)
        sCount.append("/").append(std::to_string(m_lPlanned));
    ShowProgress(std::string("[").append(sCount).append("] ").append(OneLine(oCase.sName)));
}

void CTOVConsoleReport::OnLeaveCase(const sCaseRecord& oCase)
{
    if (m_bVerbose || oCase.eOutcome != eOutcomePassed || !oCase.aNotes.empty())
        PrintLine(NameOf(oCase.eOutcome) + OneLine(oCase.sName) + InBrackets(oCase.dSeconds));
    for (const sTestNote& oNote : oCase.aNotes)
        for (const std::string& sLine : Describe(oNote))
            PrintLine("       " + sLine);
}

void CTOVConsoleReport::OnLeaveSuite(const sSuiteRecord& oSuite)
{
    const sTestCounts oCounts = CountCases(oSuite);
    const eTestOutcome eOutcome = oCounts.lEnded > 0    ? eOutcomeEnded
                                  : oCounts.lFailed > 0 ? eOutcomeFailed
                                                        : eOutcomePassed;
    PrintLine(NameOf(eOutcome) + OneLine(oSuite.oPlace.sDescription) + ": " + CountText(oCounts.lCases, "case") +
              BadNews(oCounts) + InBrackets(oSuite.dSeconds));
}

void CTOVConsoleReport::OnEnd(const sTestRecord& oRecord)
{
    PrintLine("");
    if (!oRecord.sEarlyEnd.empty())
        PrintLine("The run ended early: " + OneLine(oRecord.sEarlyEnd));
    for (const sSuiteRecord& oSuite : oRecord.aSuites)
        for (const sCaseRecord& oCase : oSuite.aCases)
            if (oCase.eOutcome == eOutcomeFailed)
                PrintLine("Failed: " + OneLine(oCase.sName));
    PrintLine(Summary(oRecord));
}
} // namespace TOVTestHost
