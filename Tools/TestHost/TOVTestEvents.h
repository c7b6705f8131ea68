// What happens in a test run, in a form that can be kept and sent: ITOVTestEvents.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace TOVTestHost
{
// A suite or a case: its name, and where it stands.
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

// What will be run, in this order, and how many times over.
struct sTestPlan
{
    std::vector<sPlannedSuite> aSuites;
    long lRuns;
};

enum eTestNote
{
    eNoteWarning,
    eNoteFailure,
    eNoteEnd // it ended the case, and the run with it
};

// What was said about a case.
struct sTestNote
{
    eTestNote eKind;
    std::string sType; // "FailedAssertEquals"
    std::string sFile; // empty where no place is known
    long lLine;
    std::string sMessage;
    std::vector<std::pair<std::string, std::string>> aValues; // {"actual", "3"}
};

// Receives them in order: a plan, then runs of suites of cases. One thread.
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
    // The suite's Closedown for the case is over as well. The framework alone does not tell of it.
    virtual void OnCloseCase() = 0;
    // On the case that is open. One that comes before it was entered is its Startup's.
    virtual void OnNote(const sTestNote& oNote) = 0;

    // No run, suite or case that is open is left any more. The reason completes "the case ...".
    virtual void OnEndEarly(const std::string& sReason) = 0;
};
} // namespace TOVTestHost
