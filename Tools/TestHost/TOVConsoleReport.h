// Declares CTOVConsoleReport, which shows a run to people.
#pragma once

#include <TestHost/TOVCaseOutput.h>
#include <TestHost/TOVTestReport.h>

#include <cstdio>

namespace TOVTestHost
{
// Prints a line for each suite, and a summary. For each case that failed or warned, it prints the name, the messages,
// their places and their values. What the cases write appears where they write it. On a terminal the report has
// colours, unless the environment variable NO_COLOR is set, and a line of progress, which it erases. It does not own
// the stream.
class CTOVConsoleReport : public ITOVTestReport
{
public:
    void OnBegin(const sTestRecord& oRecord) override;
    void OnEnterRun(const sTestRecord& oRecord) override;
    void OnEnterCase(const sCaseRecord& oCase) override;
    void OnLeaveCase(const sCaseRecord& oCase) override;
    void OnLeaveSuite(const sSuiteRecord& oSuite) override;
    void OnOutput(eTestStream eStream, const std::string& sText) override;
    void OnEnd(const sTestRecord& oRecord) override;

    // With bProgress, it shows the line of progress; with bVerbose, it prints a line for every case. The lSlowest
    // slowest cases are listed at the end.
    CTOVConsoleReport(std::FILE* pStream, bool bProgress, bool bVerbose, long lSlowest = 0);

private:
    enum eTone
    {
        eTonePlain,
        eToneWarning,
        eToneFailed,
        eToneEnded
    };

    void PrintLine(const std::string& sLine, eTone eLook = eTonePlain);
    void ShowProgress(const std::string& sText);
    static eTone ToneOf(eTestOutcome eOutcome, bool bWarned);
    std::string BadNews(const sTestCounts& oCounts) const;

    std::FILE* m_pStream;
    bool m_bProgress;
    bool m_bColours;
    bool m_bVerbose;
    bool m_bKeepGoing;
    long m_lSlowest;
    long m_lPlanned;
    long m_lEntered;
    std::size_t m_nProgressWidth;
    std::string m_sProgress;
    CTOVCaseOutput m_oOutput;
};
} // namespace TOVTestHost
