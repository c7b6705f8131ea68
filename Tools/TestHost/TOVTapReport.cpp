#include <TestHost/TOVTapReport.h>

#include <TestHost/TOVTestText.h>

namespace TOVTestHost
{
namespace
{
// Escapes a #, which would begin a directive such as TODO.
std::string Escaped(const std::string& sText)
{
    std::string sEscaped;
    for (const char cByte : OneLine(sText))
    {
        if (cByte == '#' || cByte == '\\')
            sEscaped += '\\';
        sEscaped += cByte;
    }
    return sEscaped;
}
} // namespace

CTOVTapReport::CTOVTapReport(std::FILE* pStream, long lSlowest)
    : m_pStream(pStream), m_bPlanned(false), m_lCases(0), m_lSlowest(lSlowest)
{
}

void CTOVTapReport::PrintLine(const std::string& sLine)
{
    m_oOutput.EndLine();
    std::fprintf(m_pStream, "%s\n", sLine.c_str());
    std::fflush(m_pStream);
}

void CTOVTapReport::OnBegin(const sTestRecord& oRecord)
{
    PrintLine("TAP version 13");
    m_bPlanned = oRecord.oPlan.lRuns > 0;
    if (m_bPlanned)
        PrintLine("1.." + std::to_string(CountPlannedCases(oRecord.oPlan)));
    if (oRecord.oPlan.llSeed >= 0)
        PrintLine("# shuffled with --seed " + std::to_string(oRecord.oPlan.llSeed));
}

void CTOVTapReport::OnEnterRun(const sTestRecord& oRecord)
{
    if (oRecord.oPlan.lRuns > 1)
        PrintLine("# run " + std::to_string(oRecord.lRuns) + " of " + std::to_string(oRecord.oPlan.lRuns));
}

void CTOVTapReport::OnLeaveCase(const sCaseRecord& oCase)
{
    m_oOutput.EndLine();
    const char* szResult = oCase.eOutcome == eOutcomePassed ? "ok " : "not ok ";
    PrintLine(szResult + std::to_string(++m_lCases) + " - " + Escaped(oCase.sName));
    for (const sTestNote& oNote : oCase.aNotes)
        for (const std::string& sLine : Describe(oNote))
            PrintLine("# " + sLine);
}

void CTOVTapReport::OnOutput(eTestStream /*eStream*/, const std::string& sText)
{
    m_oOutput.Print(stderr, sText);
}

void CTOVTapReport::OnEnd(const sTestRecord& oRecord)
{
    for (const std::string& sLine : DescribeSlowest(oRecord, m_lSlowest))
        PrintLine("# " + sLine);
    if (!oRecord.sEarlyEnd.empty())
        PrintLine("Bail out! " + OneLine(oRecord.sEarlyEnd));
    else if (!m_bPlanned)
        PrintLine("1.." + std::to_string(m_lCases));
}
} // namespace TOVTestHost
