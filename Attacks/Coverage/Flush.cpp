// Saves the counts of a process that ends without its last steps: by _exit, as forked children do, by abort, when
// another program takes its place, or when another process of the tests kills it. Each module has counters of its own.
// This file stands in a shared library that knows them all, and, compiled with TOV_MODULE, in every module.
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

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{
std::atomic<tSave> s_aSaves[64];

// Asks a process to save its counts before it is killed.
int SaveSignal()
{
    return SIGRTMAX - 1;
}

constexpr int MOST_MILLISECONDS_TO_SAVE = 2000;

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

// A test may let calls to the system fail, which would spoil them as well.
void EndFaults()
{
    if (const auto pfArm = reinterpret_cast<bool (*)(bool)>(dlsym(RTLD_DEFAULT, "_Z14ArmSystemFaultb")))
        pfArm(false);
}

void SaveAll()
{
    EndFaults();
    LiftLimit();
    for (std::atomic<tSave>& oPlace : s_aSaves)
    {
        if (const tSave pfSave = oPlace.load())
            pfSave();
    }
}

void SaveAndDie(int)
{
    SaveAll();
    syscall(SYS_kill, getpid(), SIGKILL);
}

__attribute__((constructor)) void AwaitKill()
{
    struct sigaction oAction = {};
    oAction.sa_handler = &SaveAndDie;
    sigaction(SaveSignal(), &oAction, nullptr);
}

// Whether the process waits for our signal: it has the handler, and has neither ended nor been stopped.
bool CanSave(pid_t nProcess)
{
    char szName[64];
    std::snprintf(szName, sizeof(szName), "/proc/%d/status", static_cast<int>(nProcess));
    std::FILE* const pFile = std::fopen(szName, "r");
    if (pFile == nullptr)
        return false;
    char cState = 'Z';
    unsigned long long ullCaught = 0;
    char szLine[256];
    while (std::fgets(szLine, sizeof(szLine), pFile) != nullptr)
    {
        std::sscanf(szLine, "State: %c", &cState);
        std::sscanf(szLine, "SigCgt: %llx", &ullCaught);
    }
    std::fclose(pFile);
    return std::strchr("ZXTt", cState) == nullptr && (ullCaught >> (SaveSignal() - 1) & 1) != 0;
}
} // namespace

void TOVCoverageAdd(tSave pfSave)
{
    Replace(nullptr, pfSave);
}

void TOVCoverageRemove(tSave pfSave)
{
    // The module is about to save its counts.
    EndFaults();
    LiftLimit();
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

extern "C" int kill(pid_t nProcess, int nSignal) noexcept
{
    if (nSignal == SIGKILL && nProcess > 0)
    {
        const int nError = errno;
        for (int nTime = 0; nTime < MOST_MILLISECONDS_TO_SAVE && CanSave(nProcess); ++nTime)
        {
            if (nTime == 0)
                syscall(SYS_kill, nProcess, SaveSignal());
            usleep(1000);
        }
        errno = nError;
    }
    return static_cast<int>(syscall(SYS_kill, nProcess, nSignal));
}

extern "C" void abort() noexcept
{
    SaveAll();
    const auto pfAbort = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "abort"));
    for (;;)
        pfAbort();
}

#endif
