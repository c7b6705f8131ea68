// Runs a scenario again and again, with one fault after the other.
#pragma once

#include "Faults/TOVFaultScenario.h"
#include "Faults/TOVFaultWitness.h"

#include <functional>
#include <string>

// What one way of failing has come to: how many times the scenario ran, and how many calls were made to fail.
struct sFaultFigures
{
    unsigned long ulRounds;
    unsigned long ulFaults;
};

enum eFaultMode
{
    eFaultOnce,
    eFaultFromThenOn
};

// One round after the other in this process, and what must be the same before and after each: the number of blocks, of
// open handles, and, after some rounds and at the end, that another thread can
// work.
class CFaultRounds
{
public:
    CFaultRounds();

    // Runs the scenario, where fnBegin makes the fault ready and fnEnd takes it away. A block that is only left by the
    // first of two equal rounds is no leak: the library or the system has made something that it keeps.
    void Run(const sFaultScenario& oScenario, const std::function<void()>& fnBegin, const std::function<void()>& fnEnd);

    // Returns whether all rounds have left everything whole.
    bool HaveHeld();

    // What has failed so far, conditions in scenarios included.
    int CountFailures() const;

private:
    // Returns how many blocks are kept: at once, or when all threads have come to rest.
    long RunOnce(const sFaultScenario& oScenario, const std::function<void()>& fnBegin,
                 const std::function<void()>& fnEnd, bool bPatient);

    // Asks the witness to work.
    void Ask();

    CFaultWitness m_oWitness;
    long m_lHandles;
    unsigned long m_ulRounds;
    int m_nBroken;
    const int m_nFailedBefore; // in other scenarios of this process
};

// Lets the first allocation of the scenario fail, then the second, and so on until the scenario has no more. With
// bLists, small blocks come from the lists of the thread where there are any. Returns false if something broke.
bool RunAllocationRounds(const sFaultScenario& oScenario, eFaultMode eMode, bool bLists, sFaultFigures& oFigures);

// Adds a line to the file that the environment names for figures, if it does.
void TellFigures(const std::string& sKind, const sFaultScenario& oScenario, const sFaultFigures& oFigures);
