// What is known of a test run, and who shows it: sTestRecord, ITOVTestReport.
#pragma once

#include <TestHost/TOVTestEvents.h>

#include <ctime>

namespace TOVTestHost
{
enum eTestOutcome
{
    eOutcomePassed,
    eOutcomeFailed, // at least one check failed
    eOutcomeEnded,  // threw past its checks or ended the process, and the run with it
    eOutcomeNotRun  // the run ended before its turn came
};

struct sCaseRecord
{
    std::string sName; // "Suite description.Case description"
    sTestPlace oPlace;
    eTestOutcome eOutcome;
    double dSeconds;
    std::vector<sTestNote> aNotes;
};

// One visit to a suite: a suite that is run three times is there three times.
struct sSuiteRecord
{
    sTestPlace oPlace;
    double dSeconds;
    std::time_t nStart;
    std::vector<sCaseRecord> aCases;
};

struct sTestRecord
{
    sTestPlan oPlan; // empty where none was told
    long lRuns;      // begun
    double dSeconds;
    std::string sEarlyEnd; // "the case Suite.Case threw ..."; empty unless the run ended early
    std::vector<sSuiteRecord> aSuites;
};

struct sTestCounts
{
    long lCases; // all that follow
    long lPassed;
    long lFailed;
    long lEnded;
    long lNotRun;
    long lWarnings;
};

sTestCounts CountCases(const sSuiteRecord& oSuite);
sTestCounts CountCases(const sTestRecord& oRecord);
long CountPlannedCases(const sTestPlan& oPlan);

// A way to show a run. What it throws as std::runtime_error ends the run; it tells of a report that cannot be written.
class ITOVTestReport
{
public:
    virtual ~ITOVTestReport() = default;

    virtual void OnBegin(const sTestRecord& /*oRecord*/) {}
    virtual void OnEnterRun(const sTestRecord& /*oRecord*/) {}
    virtual void OnEnterCase(const sCaseRecord& /*oCase*/) {}
    virtual void OnLeaveCase(const sCaseRecord& /*oCase*/) {}
    virtual void OnLeaveSuite(const sSuiteRecord& /*oSuite*/) {}

    // Once, whatever became of the run.
    virtual void OnEnd(const sTestRecord& oRecord) = 0;
};
} // namespace TOVTestHost
