#include "../ProcessState.h"

#include <dirent.h>
#include <fstream>
#include <string>

namespace
{
// The number after the name at the beginning of a line.
long ReadNumber(const char* szFile, const std::string& sName)
{
    std::ifstream oFile(szFile);
    for (std::string sWord; oFile >> sWord;)
    {
        long lNumber = 0;
        if (sWord == sName && oFile >> lNumber)
            return lNumber;
    }
    return 0;
}

long CountDescriptors()
{
    DIR* const pDirectory = ::opendir("/proc/self/fd");
    long lEntries = -3; // the directory itself, ".", ".."
    while (pDirectory != nullptr && ::readdir(pDirectory) != nullptr)
        ++lEntries;
    if (pDirectory != nullptr)
        ::closedir(pDirectory);
    return lEntries;
}
} // namespace

sProcessState ReadProcessState()
{
    return {ReadNumber("/proc/self/smaps_rollup", "Rss:"), ReadNumber("/proc/self/smaps_rollup", "Pss:"),
            CountDescriptors(), ReadNumber("/proc/self/status", "Threads:")};
}
