#include "Faults/TOVFaultProcess.h"

#include <windows.h>

// No process can be copied here: a scenario that crashes ends the program, and the other cases are run again.
bool ReturnsTrueApart(const std::function<bool()>& fnAction)
{
    return fnAction();
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
