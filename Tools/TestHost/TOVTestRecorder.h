// Declares CTOVTestRecorder, which keeps the events of a test run and passes them to reports.
#pragma once

#include <TestHost/TOVTestReport.h>

#include <chrono>

namespace TOVTestHost
{
// Receives the events from a CTOVTestEventListener, or from another process, and measures the times. It does not own
// its reports, which are notified in the order in which they were added. Use it from one thread.
//
//     CTOVConsoleReport oConsole(stdout, false, false);
//     CTOVTestRecorder oRecorder;
//     oRecorder.AddReport(oConsole);
//     CTOVTestEventListener oListener(oRecorder);
//     TOVTest::CTOVSimpleTestRunner oRunner;
//     oRunner.AddListener(oListener);
//     oRunner.Run();
//     oRecorder.Finish();
class CTOVTestRecorder : public ITOVTestEvents
{
public:
    void OnPlan(const sTestPlan& oPlan) override;
    void OnEnterRun() override;
    void OnLeaveRun() override;
    void OnEnterSuite(const sTestPlace& oSuite) override;
    void OnLeaveSuite() override;
    void OnEnterCase(const sTestPlace& oCase) override;
    void OnLeaveCase() override;
    void OnCloseCase() override;
    void OnNote(const sTestNote& oNote) override;
    void OnEndEarly(const std::string& sReason) override;

    CTOVTestRecorder();

    void AddReport(ITOVTestReport& oReport);

    // Writes all reports. Call it once, after the last run. Rethrows the first exception of a report after all have
    // been written.
    void Finish();

    const sTestRecord& GetRecord() const;

private:
    typedef std::chrono::steady_clock tClock;

    template<class... TParameters, class... TArguments>
    void Tell(void (ITOVTestReport::*pfEvent)(TParameters...), const TArguments&... aArguments);
    void Begin();
    void EnterCaseThatDidNotStart();
    void AddCasesNotRun();

    std::vector<ITOVTestReport*> m_aReports;
    sTestRecord m_oRecord;
    bool m_bBegun;
    bool m_bInSuite;
    bool m_bCaseOpen;
    std::vector<sTestNote> m_aNotesOfStartup;
    tClock::time_point m_oStart;
    tClock::time_point m_oSuiteStart;
    tClock::time_point m_oCaseStart;
};
} // namespace TOVTestHost
