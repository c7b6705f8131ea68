#include "Faults/TOVFaultProcess.h"
#include "Faults/Posix/TOVFaultySystem.h"
#include "Support/Posix/TOVForkedChild.h"

#include <dirent.h>

bool ReturnsTrueApart(const std::function<bool()>& fnAction)
{
    return IsTrueInFork(fnAction);
}

long CountOpenHandles()
{
    DIR* const pFolder = ::opendir("/proc/self/fd");
    if (pFolder == nullptr)
        return -1;
    long lCount = 0;
    while (::readdir(pFolder) != nullptr)
        ++lCount;
    ::closedir(pFolder);
    return lCount;
}

bool LetSystemFail(bool bFail)
{
    return ArmSystemFault(bFail);
}
