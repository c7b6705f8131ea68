// What the scenarios of faults have in common: a scenario uses one part of the library while a step of the system
// fails, and checks that the objects are then as their headers say.
//
//     {"StringAppends",
//      [] {
//          CTOVStringA oText("text");
//          const bool bDone = Completes([&] { oText += "more"; });
//          FAULT_EXPECT(oText == (bDone ? "textmore" : "text"));
//      }},
//
// The fault can strike anywhere in the scenario, also in a constructor or a destructor. An exception of exhausted
// memory may leave the scenario, and ends it there.
#pragma once

#include "Support/TOVAllocationCounter.h"

#include <Debug/TOVException.h>

#include <new>
#include <vector>

struct sFaultScenario
{
    const char* szName;
    void (*pfnRun)();
};

// Checks a condition in a scenario. A failure is noted, with its place, and the scenario continues.
#define FAULT_EXPECT(condition) NoteCondition((condition), #condition, __FILE__, __LINE__)

void NoteCondition(bool bHolds, const char* szCondition, const char* szFile, int nLine);

// Returns how many conditions have failed, in all scenarios of this process.
int CountFailedConditions();

// Returns the full name of a file in a folder that is made by the first call and removed at the end of the process that
// has made it. Allocates nothing after that. The text is valid during some further calls.
const char* FaultFile(const char* szName);

// Returns the name of a system-wide object that no process has that runs beside this one. Otherwise like FaultFile.
const char* FaultName(const char* szName);

// While it lives, no allocation of this thread fails, and no call to the system.
class CFaultPause
{
public:
    CFaultPause();
    ~CFaultPause();
    CFaultPause(const CFaultPause&) = delete;
    CFaultPause& operator=(const CFaultPause&) = delete;

private:
    const bool m_bFailing;
    const bool m_bSystemFailing;
};

// Whether the action returns. If not, memory is exhausted.
template<class TAction> bool Completes(const TAction& fnAction)
{
    try
    {
        fnAction();
        return true;
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
}

// Whether the action returns. If not, memory is exhausted, or a check fails for that reason.
template<class TAction> bool CompletesOrFailsACheck(const TAction& fnAction)
{
    try
    {
        return Completes(fnAction);
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        return false;
    }
}

typedef std::vector<sFaultScenario> tFaultScenarios;
