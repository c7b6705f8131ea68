// Declares sTestRecord, the data of a test run, and ITOVTestReport, the interface of the reports that show it.
#pragma once

#include <TestHost/TOVTestEvents.h>
#include <TestHost/TOVTestSystem.h>

#include <ctime>

namespace TOVTestHost
{
enum eTestOutcome
{
    eOutcomePassed,
    eOutcomeFailed, // at least one check failed
    eOutcomeEnded,  // an exception left the case, it ended the process, or it took too long
    eOutcomeNotRun  // the run ended before this case
};

struct sCaseRecord
{
    std::string sName; // "Suite description.Case description"
    sTestPlace oPlace;
    eTestOutcome eOutcome;
    double dSeconds;
    std::vector<sTestNote> aNotes;
    std::string sOutput; // what it wrote to standard output, unless the cases run in this process
    std::string sErrors; // the same of standard error
};

// Records one run of a suite: a suite that is run three times has three records.
struct sSuiteRecord
{
    sTestPlace oPlace;
    double dSeconds;
    std::time_t nStart;
    std::vector<sCaseRecord> aCases;
};

struct sTestRecord
{
    sTestPlan oPlan; // empty: there was no plan
    long lRuns;      // the number of runs that have begun
    double dSeconds;
    std::string sEarlyEnd; // "Suite.Case threw ..."; empty unless the run ended early
    std::vector<sSuiteRecord> aSuites;
    bool bKeepGoing = false; // the run continues after a case that ended
};

struct sTestCounts
{
    long lCases; // the sum of the next four
    long lPassed;
    long lFailed;
    long lEnded;
    long lNotRun;
    long lWarnings;
};

sTestCounts CountCases(const sSuiteRecord& oSuite);
sTestCounts CountCases(const sTestRecord& oRecord);
long CountPlannedCases(const sTestPlan& oPlan);

// Shows a run. A report that cannot be written throws std::runtime_error, which ends the run.
class ITOVTestReport
{
public:
    virtual ~ITOVTestReport() = default;

    virtual void OnBegin(const sTestRecord& /*oRecord*/) {}
    virtual void OnEnterRun(const sTestRecord& /*oRecord*/) {}
    virtual void OnEnterCase(const sCaseRecord& /*oCase*/) {}
    virtual void OnLeaveCase(const sCaseRecord& /*oCase*/) {}
    virtual void OnLeaveSuite(const sSuiteRecord& /*oSuite*/) {}

    // Called for what a worker process has written. It may be a part of a line.
    virtual void OnOutput(eTestStream /*eStream*/, const std::string& /*sText*/) {}

    // Called once, however the run has ended.
    virtual void OnEnd(const sTestRecord& oRecord) = 0;
};
} // namespace TOVTestHost
