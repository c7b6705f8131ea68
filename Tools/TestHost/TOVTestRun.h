// Loads suites, chooses among them and runs them: RunTests.
#pragma once

#include <TestHost/TOVTestSelection.h>

namespace TOVTestHost
{
struct sTestRun
{
    std::vector<std::string> aLibraries; // shared libraries of suites, in the order in which they run
    sTestChoice oChoice;
    bool bListOnly; // only the plan
};

// Tells the events the plan and what happens. What a case throws past its checks is told too, as the early end of the
// run. Throws std::runtime_error if there is nothing to run: for a library that cannot be loaded or holds no suite, and
// for what CTOVTestSelection refuses.
void RunTests(const sTestRun& oRun, ITOVTestEvents& oEvents);
} // namespace TOVTestHost
