// A run as it is shown to people: CTOVConsoleReport.
#pragma once

#include <TestHost/TOVTestReport.h>

#include <cstdio>

namespace TOVTestHost
{
// A line for each suite; for each case that failed or warned, its name and what was said, where and with which values;
// a summary. On a terminal also a line of progress, which goes away. Does not own the stream.
class CTOVConsoleReport : public ITOVTestReport
{
public:
    void OnBegin(const sTestRecord& oRecord) override;
    void OnEnterRun(const sTestRecord& oRecord) override;
    void OnEnterCase(const sCaseRecord& oCase) override;
    void OnLeaveCase(const sCaseRecord& oCase) override;
    void OnLeaveSuite(const sSuiteRecord& oSuite) override;
    void OnEnd(const sTestRecord& oRecord) override;

    // With bVerbose every case has its line.
    CTOVConsoleReport(std::FILE* pStream, bool bTerminal, bool bVerbose);

private:
    void PrintLine(const std::string& sLine);
    void ShowProgress(const std::string& sText);

    std::FILE* m_pStream;
    bool m_bTerminal;
    bool m_bVerbose;
    long m_lPlanned;
    long m_lEntered;
    std::size_t m_nProgressWidth;
};
} // namespace TOVTestHost
