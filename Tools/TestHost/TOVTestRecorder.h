// Keeps what happens in a test run and hands it to reports: CTOVTestRecorder.
#pragma once

#include <TestHost/TOVTestReport.h>

#include <chrono>

namespace TOVTestHost
{
// Behind CTOVTestEventListener, or behind the events of another process. Takes the times. Does not own its reports,
// which hear of everything in the order in which they were added. One thread.
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

    // Has the reports written. Once, behind the last run. What a report throws comes out when all have had their turn.
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
