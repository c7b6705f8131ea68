// Saves the counts of a process that ends without its last steps: by _exit, as forked children do, by abort, or when
// another program takes its place. Each module has counters of its own. This file stands in a shared library that knows
// them all, and, compiled with TOV_MODULE, in every module.
#include <atomic>

typedef void (*tSave)();

extern "C" void TOVCoverageAdd(tSave pfSave);
extern "C" void TOVCoverageRemove(tSave pfSave);

#ifdef TOV_MODULE

extern "C" void __gcov_dump();

namespace
{
__attribute__((constructor)) void Add()
{
    TOVCoverageAdd(__gcov_dump);
}

__attribute__((destructor)) void Remove()
{
    TOVCoverageRemove(__gcov_dump);
}
} // namespace

#else

#include <dlfcn.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{
std::atomic<tSave> s_aSaves[64];

void Replace(tSave pfOld, tSave pfNew)
{
    for (std::atomic<tSave>& oPlace : s_aSaves)
    {
        tSave pfExpected = pfOld;
        if (oPlace.compare_exchange_strong(pfExpected, pfNew))
            return;
    }
}

// A test may have limited the size of files, and a part of the counts would spoil those of all other processes.
void LiftLimit()
{
    const rlimit oNone = {RLIM_INFINITY, RLIM_INFINITY};
    if (setrlimit(RLIMIT_FSIZE, &oNone) == 0)
        return;
    rlimit oMost = {};
    getrlimit(RLIMIT_FSIZE, &oMost);
    oMost.rlim_cur = oMost.rlim_max;
    setrlimit(RLIMIT_FSIZE, &oMost);
}

void SaveAll()
{
    LiftLimit();
    for (std::atomic<tSave>& oPlace : s_aSaves)
    {
        if (const tSave pfSave = oPlace.load())
            pfSave();
    }
}
} // namespace

void TOVCoverageAdd(tSave pfSave)
{
    Replace(nullptr, pfSave);
}

void TOVCoverageRemove(tSave pfSave)
{
    LiftLimit(); // the module is about to save its counts
    Replace(pfSave, nullptr);
}

extern "C" void _exit(int nStatus)
{
    SaveAll();
    for (;;)
        syscall(SYS_exit_group, nStatus);
}

extern "C" int execv(const char* szFile, char* const aszArguments[])
{
    SaveAll();
    return execve(szFile, aszArguments, environ);
}

extern "C" void abort() noexcept
{
    SaveAll();
    const auto pfAbort = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "abort"));
    for (;;)
        pfAbort();
}

#endif
