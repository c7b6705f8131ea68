// Runs the mixed load for so many seconds, and prints what the process has after each round, when it is at rest:
//
//   SoakAttack SECONDS          lines "sample SECOND RESIDENT PROPORTIONAL HANDLES THREADS OWN-HANDLES STARTED ROUNDS"
//   SoakAttack --threads N      starts so many threads of the library, whose handles stay: "kept BYTES" for each
//
// Memory is in KB. OWN-HANDLES is the highest of some new handles of the library, by which a table that grows is seen
// also where the system tells nothing; STARTED are the threads of the library that have been started, whose handles
// stay open as is described.
#include "MixedLoad.h"
#include "ProcessState.h"

#include <TOVPlatform/TOVFile.h>
#include <TOVPlatform/TOVSynchronization.h>
#include <Test/TOVTestHost.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

TOV_TEST_HOST

namespace
{
namespace Event = TOVPlatform::TOVSynchronization::Event;

// More handles than any round has open at once would hide a few that are lost.
constexpr int NEW_HANDLES = 8;
constexpr long ROUNDS_OF_A_THREAD = 20;

unsigned long FindHighestHandle()
{
    tHandle ahNew[NEW_HANDLES];
    unsigned long ulHighest = 0;
    for (tHandle& hNew : ahNew)
    {
        hNew = Event::Create(false, false, nullptr);
        ulHighest = std::max(ulHighest, static_cast<unsigned long>(hNew & 0xFFFFFFFF));
    }
    for (const tHandle hNew : ahNew)
        Event::Destroy(hNew);
    const unsigned long ulFiles =
        static_cast<unsigned long>(TOVPlatform::TOVFile::CTOVHandleManager::Instance().FindFreeHandle());
    return ulHighest + ulFiles;
}

int Soak(double dSeconds)
{
    typedef std::chrono::steady_clock tClock;
    CThreadReport oReport;
    const tClock::time_point oStart = tClock::now();
    double dNext = 0;
    long lStarted = 0;
    double dElapsed = 0;
    for (long lRound = 0; dElapsed < dSeconds; ++lRound)
    {
        RunMixedRound({4, 40}, true, oReport);
        RunSuites(oReport);
        if (lRound % ROUNDS_OF_A_THREAD == 0)
        {
            StartAndStopThread(oReport);
            ++lStarted;
        }
        dElapsed = std::chrono::duration<double>(tClock::now() - oStart).count();
        if (dElapsed < dNext)
            continue;
        dNext = dElapsed + 1;
        const sProcessState oState = ReadProcessState();
        std::printf("sample %.1f %ld %ld %ld %ld %lu %ld %ld\n", dElapsed, oState.lResidentKb, oState.lProportionalKb,
                    oState.lHandles, oState.lThreads, FindHighestHandle(), lStarted, lRound + 1);
        std::fflush(stdout);
    }
    std::printf("wrong %ld starved %ld\n%s", oReport.GetNumWrong(), oReport.GetNumStarved(),
                oReport.GetTexts().c_str());
    return oReport.GetNumWrong() == 0 ? 0 : 1;
}

int MeasureThreads(long lThreads)
{
    CThreadReport oReport;
    for (long lThread = 0; lThread < 100; ++lThread)
        StartAndStopThread(oReport);
    const long lBeforeKb = ReadProcessState().lResidentKb;
    for (long lThread = 0; lThread < lThreads; ++lThread)
        StartAndStopThread(oReport);
    std::printf("kept %.1f\n", 1024.0 * static_cast<double>(ReadProcessState().lResidentKb - lBeforeKb) /
                                   static_cast<double>(lThreads));
    return oReport.GetNumWrong() == 0 ? 0 : 1;
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    if (nArguments == 3 && std::strcmp(aszArguments[1], "--threads") == 0)
        return MeasureThreads(std::atol(aszArguments[2]));
    return nArguments == 2 ? Soak(std::atof(aszArguments[1])) : 2;
}
