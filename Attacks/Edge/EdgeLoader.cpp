// A program without the library. Loads a module that brings it, uses it and unloads both, so many times:
//
//   EdgeLoader MODULE LIBRARY TIMES [SECONDS [thread]]     no more than so many seconds, each time on a thread of its
//   own
//
// Prints how often it did so, how often everything was right and the library was gone, and what the process has grown
// by since the tenth part of the times.
#include "LoadedFile.h"
#include "Soak/ProcessState.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace
{
typedef long (*tUseLibrary)();

bool UseOnce(const char* szModule, const char* szLibrary, bool bOnThread)
{
    void* const pModule = LoadFile(szModule);
    const tUseLibrary pfUse = reinterpret_cast<tUseLibrary>(FindFunction(pModule, "UseLibrary"));
    bool bRight = false;
    const auto fnUse = [&] { bRight = pfUse != nullptr && pfUse() == 0 && IsLoaded(szLibrary); };
    // A thread that lives on would keep its lists of freed blocks, if a thread of the library that is in its last steps
    // unloads it instead of the caller.
    if (bOnThread)
        std::thread(fnUse).join();
    else
        fnUse();
    UnloadFile(pModule);

    // A thread whose end was waited for may still be in its last steps.
    const auto oDeadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (IsLoaded(szLibrary))
    {
        if (std::chrono::steady_clock::now() > oDeadline)
            return false;
    }
    return bRight;
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    if (nArguments < 4)
        return 2;

    KeepSystemLibraries();
    const long lTimes = std::atol(aszArguments[3]);
    const double dSeconds = nArguments > 4 ? std::atof(aszArguments[4]) : 1e9;
    const auto oStart = std::chrono::steady_clock::now();
    sProcessState oBefore = ReadProcessState();
    long lTime = 0;
    long lRight = 0;
    for (; lTime < lTimes && std::chrono::steady_clock::now() - oStart < std::chrono::duration<double>(dSeconds);
         ++lTime)
    {
        lRight += UseOnce(aszArguments[1], aszArguments[2], nArguments > 5) ? 1 : 0;
        if (lTime <= lTimes / 10)
            oBefore = ReadProcessState();
    }
    const sProcessState oAfter = ReadProcessState();
    std::printf("loads %ld right %ld memory-kb %ld handles %ld threads %ld seconds %.1f\n", lTime, lRight,
                oAfter.lResidentKb - oBefore.lResidentKb, oAfter.lHandles - oBefore.lHandles,
                oAfter.lThreads - oBefore.lThreads,
                std::chrono::duration<double>(std::chrono::steady_clock::now() - oStart).count());
    return lRight == lTime && oAfter.lThreads <= oBefore.lThreads && oAfter.lHandles <= oBefore.lHandles ? 0 : 1;
}
