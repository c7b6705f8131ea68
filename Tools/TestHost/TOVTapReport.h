// Declares CTOVTapReport, which prints a run in the Test Anything Protocol, version 13.
#pragma once

#include <TestHost/TOVCaseOutput.h>
#include <TestHost/TOVTestReport.h>

#include <cstdio>

namespace TOVTestHost
{
// Prints a line for each case as soon as it has ended, "ok 1 - Suite.Case" or "not ok 1 - Suite.Case", followed by its
// messages as diagnostics. For a run that ends early it prints "Bail out!". What the cases write goes to standard
// error. It does not own the stream.
class CTOVTapReport : public ITOVTestReport
{
public:
    void OnBegin(const sTestRecord& oRecord) override;
    void OnEnterRun(const sTestRecord& oRecord) override;
    void OnLeaveCase(const sCaseRecord& oCase) override;
    void OnOutput(eTestStream eStream, const std::string& sText) override;
    void OnEnd(const sTestRecord& oRecord) override;

    // The lSlowest slowest cases are listed at the end.
    explicit CTOVTapReport(std::FILE* pStream, long lSlowest = 0);

private:
    void PrintLine(const std::string& sLine);

    std::FILE* m_pStream;
    bool m_bPlanned;
    long m_lCases;
    long m_lSlowest;
    CTOVCaseOutput m_oOutput;
};
} // namespace TOVTestHost
