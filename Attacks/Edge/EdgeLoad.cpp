// A module that brings the library with it and takes it along: what a program loads and unloads between all its work.
#include "Soak/MixedLoad.h"

#include <Debug/TOVCompiler.h>

extern "C" TOV_PROGRAM_EXPORT long UseLibrary();

// Returns how many results were wrong. Nothing of it is left at work.
long UseLibrary()
{
    CThreadReport oReport;
    RunMixedRound({4, 5}, false, oReport);
    StartAndStopThread(oReport);
    return oReport.GetNumWrong();
}
