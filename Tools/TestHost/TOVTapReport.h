// A run in the Test Anything Protocol, version 13: CTOVTapReport.
#pragma once

#include <TestHost/TOVTestReport.h>

#include <cstdio>

namespace TOVTestHost
{
// A line for each case, "ok 1 - Suite.Case" or "not ok 1 - Suite.Case", as soon as it is over, with what was said as
// diagnostics below it. A run that ends early bails out. Does not own the stream.
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
