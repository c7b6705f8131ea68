// Runs loads of many threads, and prints a line for each: what it did, how fast, and the longest wait of any thread.
//
//   ThreadAttack --list                               the names of all loads, each with the divisor of its operations
//   ThreadAttack THREADS OPERATIONS [NAME...]         the named loads, or all; so many operations of each thread
#include "ThreadScenarios.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{
// Returns whether everything was as it must be.
bool Run(const sThreadScenario& oScenario, const sThreadLoad& oLoad)
{
    CThreadReport oReport;
    const auto oStart = std::chrono::steady_clock::now();
    oScenario.fnRun(oLoad, oReport);
    const std::chrono::duration<double> oTime = std::chrono::steady_clock::now() - oStart;

    const double dOperations = 1.0 * oLoad.nThreads * oLoad.nOperations;
    std::printf("%s threads %d operations %d seconds %.2f rate %.0f wait-ms %.1f starved %ld wrong %ld\n%s",
                oScenario.szName, oLoad.nThreads, oLoad.nOperations, oTime.count(), dOperations / oTime.count(),
                oReport.GetLongestWaitMs(), oReport.GetNumStarved(), oReport.GetNumWrong(), oReport.GetTexts().c_str());
    std::fflush(stdout);
    return oReport.GetNumStarved() == 0 && oReport.GetNumWrong() == 0;
}

bool IsWanted(const char* szName, int nNames, char** aszNames)
{
    for (int nName = 0; nName < nNames; ++nName)
    {
        if (std::strcmp(szName, aszNames[nName]) == 0)
            return true;
    }
    return nNames == 0;
}
// Runs or lists the wanted ones of these. Returns whether everything was as it must be.
bool RunAll(const sThreadScenario* pScenario, int nArguments, char** aszArguments)
{
    bool bRight = true;
    for (; pScenario->szName != nullptr; ++pScenario)
    {
        if (nArguments == 2)
            std::printf("%s %d\n", pScenario->szName, pScenario->nDivisor);
        else if (IsWanted(pScenario->szName, nArguments - 3, aszArguments + 3))
            bRight = Run(*pScenario, {std::atoi(aszArguments[1]), std::atoi(aszArguments[2])}) && bRight;
    }
    return bRight;
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    const bool bList = nArguments == 2 && std::strcmp(aszArguments[1], "--list") == 0;
    if (!bList && nArguments < 3)
        return 2;

    const bool bRight = RunAll(THREAD_SCENARIOS, nArguments, aszArguments);
    return RunAll(NATIVE_SCENARIOS, nArguments, aszArguments) && bRight ? 0 : 1;
}
