// Declares CTOVTapReport, which prints a run in the Test Anything Protocol, version 13.
#pragma once

#include <TestHost/TOVTestReport.h>

#include <cstdio>

namespace TOVTestHost
{
// Prints a line for each case as soon as it has ended, "ok 1 - Suite.Case" or "not ok 1 - Suite.Case", followed by its
// messages as diagnostics. For a run that ends early it prints "Bail out!". It does not own the stream.
class CTOVTapReport : public ITOVTestReport
{
public:
    void OnBegin(const sTestRecord& oRecord) override;
    void OnEnterRun(const sTestRecord& oRecord) override;
    void OnLeaveCase(const sCaseRecord& oCase) override;
    void OnEnd(const sTestRecord& oRecord) override;

    explicit CTOVTapReport(std::FILE* pStream);

private:
    void PrintLine(const std::string& sLine);

    std::FILE* m_pStream;
    bool m_bPlanned;
    long m_lCases;
};
} // namespace TOVTestHost
