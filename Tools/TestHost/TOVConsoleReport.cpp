#include <TestHost/TOVConsoleReport.h>

#include <TestHost/TOVTestText.h>

#include <Listeners/TOVListenerOutput.h>
#include <Listeners/TOVListenerSystem.h>

#include <algorithm>

namespace TOVTestHost
{
namespace
{
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

std::string InBrackets(double dSeconds)
{
    return " (" + SecondsText(dSeconds) + " s)";
}
} // namespace

CTOVConsoleReport::CTOVConsoleReport(std::FILE* pStream, bool bProgress, bool bVerbose, long lSlowest)
    : m_pStream(pStream), m_bProgress(bProgress), m_bColours(TOVDebug::TOVListenerOutput::WantsColours(pStream)),
      m_bVerbose(bVerbose), m_bKeepGoing(false), m_lSlowest(lSlowest), m_lPlanned(0), m_lEntered(0), m_nProgressWidth(0)
{
}

CTOVConsoleReport::eTone CTOVConsoleReport::ToneOf(eTestOutcome eOutcome, bool bWarned)
{
    switch (eOutcome)
    {
    case eOutcomeFailed:
        return eToneFailed;
    case eOutcomeEnded:
        return eToneEnded;
    default:
        return bWarned ? eToneWarning : eTonePlain;
    }
}

// Returns a text such as ", 1 failed, 2 warnings".
std::string CTOVConsoleReport::BadNews(const sTestCounts& oCounts) const
{
    std::string sText;
    AppendCount(sText, oCounts.lFailed, "failed");
    AppendCount(sText, oCounts.lEnded, m_bKeepGoing ? "ended" : "ended the run");
    AppendCount(sText, oCounts.lNotRun, "not run");
    if (oCounts.lWarnings > 0)
        sText += ", " + CountText(oCounts.lWarnings, "warning");
    return sText;
}

void CTOVConsoleReport::PrintLine(const std::string& sLine, eTone eLook)
{
    using namespace TOVDebug::TOVListenerSystem;
    static const eLineColour s_aColours[] = {eColourNone, eColourYellow, eColourRed, eColourBrightRed};
    m_oOutput.EndLine();
    ShowProgress("");
    WriteLine(m_pStream, m_bColours ? s_aColours[eLook] : eColourNone, sLine);
    std::fflush(m_pStream);
}

// Leaves the cursor at the beginning of the line.
void CTOVConsoleReport::ShowProgress(const std::string& sText)
{
    if (!m_bProgress || m_oOutput.IsInLine() || (sText.empty() && m_nProgressWidth == 0))
        return;
    // A full line would wrap.
    const std::size_t nWidth = std::max<std::size_t>(WidthOfTerminal(m_pStream), 11) - 1;
    const std::string sShown = Shortened(sText, nWidth);
    const std::size_t nRest = m_nProgressWidth > sShown.size() ? m_nProgressWidth - sShown.size() : 0;
    std::fprintf(m_pStream, "\r%s%s\r", sShown.c_str(), std::string(nRest, ' ').c_str());
    std::fflush(m_pStream);
    m_nProgressWidth = sShown.size();
}

void CTOVConsoleReport::OnBegin(const sTestRecord& oRecord)
{
    m_lPlanned = CountPlannedCases(oRecord.oPlan);
    m_bKeepGoing = oRecord.bKeepGoing;
    if (oRecord.oPlan.llSeed >= 0)
        PrintLine("Shuffled with --seed " + std::to_string(oRecord.oPlan.llSeed));
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
    m_sProgress = std::string("[").append(sCount).append("] ").append(OneLine(oCase.sName));
    ShowProgress(m_sProgress);
}

void CTOVConsoleReport::OnOutput(eTestStream eStream, const std::string& sText)
{
    const std::string sProgress = m_nProgressWidth > 0 ? m_sProgress : "";
    ShowProgress("");
    m_oOutput.Print(eStream == eStreamOutput ? m_pStream : stderr, sText);
    ShowProgress(sProgress);
}

void CTOVConsoleReport::OnLeaveCase(const sCaseRecord& oCase)
{
    m_oOutput.EndLine();
    if (m_bVerbose || oCase.eOutcome != eOutcomePassed || !oCase.aNotes.empty())
        PrintLine(NameOf(oCase.eOutcome) + OneLine(oCase.sName) + InBrackets(oCase.dSeconds),
                  ToneOf(oCase.eOutcome, !oCase.aNotes.empty()));
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
                  BadNews(oCounts) + InBrackets(oSuite.dSeconds),
              ToneOf(eOutcome, oCounts.lWarnings > 0));
}

void CTOVConsoleReport::OnEnd(const sTestRecord& oRecord)
{
    PrintLine("");
    if (!oRecord.sEarlyEnd.empty())
        PrintLine("The run ended early: " + OneLine(oRecord.sEarlyEnd), eToneEnded);
    for (const sSuiteRecord& oSuite : oRecord.aSuites)
        for (const sCaseRecord& oCase : oSuite.aCases)
        {
            if (oCase.eOutcome == eOutcomeFailed)
                PrintLine("Failed: " + OneLine(oCase.sName), eToneFailed);
            if (oCase.eOutcome == eOutcomeEnded && m_bKeepGoing)
                PrintLine("Ended: " + OneLine(oCase.sName), eToneEnded);
        }
    for (const std::string& sLine : DescribeSlowest(oRecord, m_lSlowest))
        PrintLine(sLine);

    const sTestCounts oCounts = CountCases(oRecord);
    const std::string sRuns = oRecord.lRuns > 1 ? CountText(oRecord.lRuns, "run") + ", " : "";
    PrintLine(sRuns + CountText(static_cast<long>(oRecord.aSuites.size()), "suite") + ", " +
                  CountText(oCounts.lCases, "case") + ": " + std::to_string(oCounts.lPassed) + " passed" +
                  BadNews(oCounts) + InBrackets(oRecord.dSeconds),
              ToneOf(oCounts.lEnded > 0    ? eOutcomeEnded
                     : oCounts.lFailed > 0 ? eOutcomeFailed
                                           : eOutcomePassed,
                     oCounts.lWarnings > 0));
}
} // namespace TOVTestHost
