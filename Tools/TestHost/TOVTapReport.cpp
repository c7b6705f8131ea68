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

CTOVTapReport::CTOVTapReport(std::FILE* pStream) : m_pStream(pStream), m_bPlanned(false), m_lCases(0)
{
}

void CTOVTapReport::PrintLine(const std::string& sLine)
{
    std::fprintf(m_pStream, "%s\n", sLine.c_str());
    std::fflush(m_pStream);
}

void CTOVTapReport::OnBegin(const sTestRecord& oRecord)
{
    PrintLine("TAP version 13");
    m_bPlanned = oRecord.oPlan.lRuns > 0;
    if (m_bPlanned)
        PrintLine("1.." + std::to_string(CountPlannedCases(oRecord.oPlan)));
}

void CTOVTapReport::OnEnterRun(const sTestRecord& oRecord)
{
    if (oRecord.oPlan.lRuns > 1)
        PrintLine("# run " + std::to_string(oRecord.lRuns) + " of " + std::to_string(oRecord.oPlan.lRuns));
}

void CTOVTapReport::OnLeaveCase(const sCaseRecord& oCase)
{
    const char* szResult = oCase.eOutcome == eOutcomePassed ? "ok " : "not ok ";
    PrintLine(szResult + std::to_string(++m_lCases) + " - " + Escaped(oCase.sName));
    for (const sTestNote& oNote : oCase.aNotes)
        for (const std::string& sLine : Describe(oNote))
            PrintLine("# " + sLine);
}

void CTOVTapReport::OnEnd(const sTestRecord& oRecord)
{
    if (!oRecord.sEarlyEnd.empty())
        PrintLine("Bail out! " + OneLine(oRecord.sEarlyEnd));
    else if (!m_bPlanned)
        PrintLine("1.." + std::to_string(m_lCases));
}
} // namespace TOVTestHost
