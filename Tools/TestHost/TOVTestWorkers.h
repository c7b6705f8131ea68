// Declares RunInWorkers, which runs the cases in other processes.
#pragma once

#include <TestHost/TOVTestRecorder.h>

namespace TOVTestHost
{
struct sWorkerRules
{
    double dSecondsForACase; // 0: no limit
    bool bKeepGoing;         // after a case that ended, another worker continues with the next one
    unsigned long ulSeed;    // of a shuffled order
};

// Starts this program again as a worker, with the same arguments, and gives the recorder what it sends and writes. A
// case that ends the worker, or takes too long, is recorded as ended. Throws std::runtime_error if there was nothing to
// run, or the first worker cannot be started.
void RunInWorkers(char** aszArguments, const sWorkerRules& oRules, CTOVTestRecorder& oRecorder);
} // namespace TOVTestHost
