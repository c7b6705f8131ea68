// Declares CTOVConsoleReport, which shows a run to people.
#pragma once

#include <TestHost/TOVTestReport.h>

#include <cstdio>

namespace TOVTestHost
{
// Prints a line for each suite, and a summary. For each case that failed or warned, it prints the name, the messages,
// their places and their values. On a terminal it also shows a line of progress, which it erases. It does not own the
// stream.
class CTOVConsoleReport : public ITOVTestReport
{
public:
    void OnBegin(const sTestRecord& oRecord) override;
    void OnEnterRun(const sTestRecord& oRecord) override;
    void OnEnterCase(const sCaseRecord& oCase) override;
    void OnLeaveCase(const sCaseRecord& oCase) override;
    void OnLeaveSuite(const sSuiteRecord& oSuite) override;
    void OnEnd(const sTestRecord& oRecord) override;

    // With bVerbose, it prints a line for every case.
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
