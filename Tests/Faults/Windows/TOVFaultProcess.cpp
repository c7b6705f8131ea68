#include "Faults/TOVFaultProcess.h"

#include "Faults/Windows/TOVHeapCheck.h"

#include <windows.h>

// No process can be copied here: a scenario that crashes ends the program, and the other cases are run again. One that
// damages a heap fails, although it may not have crashed yet.
bool ReturnsTrueApart(const std::function<bool()>& fnAction)
{
    const bool bHolds = fnAction();
    return AreHeapsWhole() && bHolds;
}

long CountOpenHandles()
{
    DWORD dwHandles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &dwHandles);
    return static_cast<long>(dwHandles);
}

// Only allocations fail here.
bool LetSystemFail(bool)
{
    return false;
}
