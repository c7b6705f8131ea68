#include "Catalog/Posix/CatalogSteps.h"
#include "Catalog/Posix/CatalogHindrance.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

int RunStepByStep(const std::vector<std::string>& aArguments, const std::string& sFolder,
                  const std::function<void()>& fnLook)
{
    const pid_t nChild = ::fork();
    if (nChild == 0)
    {
        // A leak check refuses to run when traced.
        ::setenv("LSAN_OPTIONS", "detect_leaks=0", 1);
        ::setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
        ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
        ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        BecomeCatalogProgram(aArguments, sFolder);
    }

    int nStatus = 0;
    for (pid_t nThread; (nThread = ::waitpid(-1, &nStatus, __WALL)) > 0;)
    {
        if (!WIFSTOPPED(nStatus))
        {
            if (nThread != nChild)
                continue;
            return WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
        }
        fnLook();
        // A new thread begins stopped, and the options make stops out of traps.
        const int nSignal = WSTOPSIG(nStatus) & 0x7F;
        const bool bOfTracing = nSignal == SIGTRAP || nSignal == SIGSTOP;
        ::ptrace(PTRACE_SETOPTIONS, nThread, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACECLONE | PTRACE_O_EXITKILL);
        ::ptrace(PTRACE_SYSCALL, nThread, nullptr, bOfTracing ? 0 : nSignal);
    }
    return -1;
}
