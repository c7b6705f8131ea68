#include "Support/TOVNativeThread.h"

#include <cerrno>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

unsigned long NativeThreadId()
{
    return static_cast<unsigned long>(::syscall(SYS_gettid));
}

int NativePriority(const sNativeThread& oThread)
{
    errno = 0;
    const int nNice = ::getpriority(PRIO_PROCESS, static_cast<id_t>(oThread.ulId));
    return errno == 0 ? -nNice : 1000;
}

bool SetNativePriority(const sNativeThread& oThread, int nPriority)
{
    return ::setpriority(PRIO_PROCESS, static_cast<id_t>(oThread.ulId), -nPriority) == 0;
}

std::vector<int> NativePriorities()
{
    std::vector<int> aPriorities;
    for (int nPriority = 20; nPriority >= -19; --nPriority)
        aPriorities.push_back(nPriority);
    return aPriorities;
}
