// Declares RunTests, which loads, selects and runs suites.
#pragma once

#include <TestHost/TOVTestSelection.h>

namespace TOVTestHost
{
struct sTestRun
{
    std::vector<std::string> aLibraries; // shared libraries of suites, in the order in which they run
    sTestChoice oChoice;
    bool bListOnly; // only the plan is sent
    sTestPosition oStart = {0, 0, 0};
};

// Sends the plan and the events of the run to oEvents. An exception that leaves a case is sent as the early end of the
// run. Throws std::runtime_error if a library cannot be loaded or has no suites, and if CTOVTestSelection refuses the
// choice.
void RunTests(const sTestRun& oRun, ITOVTestEvents& oEvents);
} // namespace TOVTestHost
