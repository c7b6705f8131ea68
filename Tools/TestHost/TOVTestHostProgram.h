// Declares RunTestHost, a whole test program.
#pragma once

namespace TOVTestHost
{
enum eTestExit
{
    eExitPassed = 0, // at least one case ran and none failed
    eExitFailed = 1,
    eExitUsage = 2, // nothing was run, or a report could not be written
    eExitEnded = 3  // an exception left a case, or a case ended the process
};

// Call this from main in a test program. It runs the suites that are linked to the program, and those of the libraries
// that the command line names, and returns the exit status. Documentation/Testing.md describes the command line.
//
//     TOV_TEST_HOST                            // Test/TOVTestHost.h
//
//     int main(int nArguments, char** aszArguments)
//     {
//         return TOVTestHost::RunTestHost(nArguments, aszArguments);
//     }
int RunTestHost(int nArguments, char** aszArguments);
} // namespace TOVTestHost
