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

    // From here on, OnEndEarly ends the case and not the run, provided that it is called inside a suite. Its suite
    // stays open: another worker continues at the next position, and its plan, and that it enters the run and the
    // suite, are known already.
    void KeepGoing();

    // Returns whether a case has ended and the run can be continued, and where.
    bool CanContinue() const;
    sTestPosition GetNextPosition() const;

    // OnEndEarly ends the run, also after KeepGoing. If the run was to be continued, it ends now, for this reason.
    void StopKeepingGoing(const std::string& sReason);

    // Ends a run in which a case has failed, if cases have not run.
    void StopAfterFailure();

    // Call this for what a worker has written. It belongs to the case that is open, or else to the next case of the
    // suite.
    void OnOutput(eTestStream eStream, const std::string& sText);

    // Returns how long the present step has taken: a case together with its Startup and Closedown, or what a worker
    // does before its first case and after its last one. Returns 0 before there is a plan.
    double GetSecondsInStep() const;

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
    void BeginStep();
    void EndRun(const std::string& sReason);

    std::vector<ITOVTestReport*> m_aReports;
    sTestRecord m_oRecord;
    bool m_bBegun;
    bool m_bInSuite;
    bool m_bCaseOpen;
    bool m_bCaseLeft; // the open case itself has returned
    bool m_bInStep;
    bool m_bKeepGoing;
    bool m_bContinuing; // another worker has to continue the open suite
    std::vector<sTestNote> m_aNotesOfStartup;
    std::string m_sOutputOfStartup;
    std::string m_sErrorsOfStartup;
    tClock::time_point m_oStart;
    tClock::time_point m_oSuiteStart;
    tClock::time_point m_oStepStart;
    tClock::time_point m_oCaseStart;
};
} // namespace TOVTestHost
