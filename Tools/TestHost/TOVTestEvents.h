// Declares ITOVTestEvents, the events of a test run, with data that can be kept and sent.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace TOVTestHost
{
// The name of a suite or a case, and its place in the source.
struct sTestPlace
{
    std::string sDescription;
    std::string sFile;
    unsigned long ulLine;
};

struct sPlannedSuite
{
    sTestPlace oPlace;
    std::vector<sTestPlace> aCases;
};

// Lists what will be run, in this order, and how many times.
struct sTestPlan
{
    std::vector<sPlannedSuite> aSuites;
    long lRuns;
    long long llSeed = -1; // the order was shuffled with this seed; -1: it was not shuffled
};

// A place in a plan. All numbers begin with 0.
struct sTestPosition
{
    long lRun;
    std::size_t nSuite;
    std::size_t nCase;

    bool operator==(const sTestPosition& oOther) const
    {
        return lRun == oOther.lRun && nSuite == oOther.nSuite && nCase == oOther.nCase;
    }
};

enum eTestNote
{
    eNoteWarning,
    eNoteFailure,
    eNoteEnd // the cause that ended the case, and the run with it
};

// A message about a case.
struct sTestNote
{
    eTestNote eKind;
    std::string sType; // "FailedAssertEquals"
    std::string sFile; // empty: the place is unknown
    long lLine;
    std::string sMessage;
    std::vector<std::pair<std::string, std::string>> aValues; // {"actual", "3"}
};

// Receives the events in order: a plan, then runs, each with its suites and their cases. Call it from one thread.
class ITOVTestEvents
{
public:
    virtual ~ITOVTestEvents() = default;

    virtual void OnPlan(const sTestPlan& oPlan) = 0;
    virtual void OnEnterRun() = 0;
    virtual void OnLeaveRun() = 0;
    virtual void OnEnterSuite(const sTestPlace& oSuite) = 0;
    virtual void OnLeaveSuite() = 0;
    virtual void OnEnterCase(const sTestPlace& oCase) = 0;
    virtual void OnLeaveCase() = 0;
    // Called when the suite's Closedown for the case has returned as well. The framework itself has no such event.
    virtual void OnCloseCase() = 0;
    // Called for a message about the open case. One that is sent before OnEnterCase comes from the case's Startup.
    virtual void OnNote(const sTestNote& oNote) = 0;

    // Called when the process ends inside an open run, suite or case, for which no Leave event follows. The reason
    // completes the sentence "the case ...".
    virtual void OnEndEarly(const std::string& sReason) = 0;
};
} // namespace TOVTestHost
