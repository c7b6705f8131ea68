#include "Catalog/Posix/CatalogSteps.h"
#include "Catalog/CatalogProcess.h"
#include "Support/Posix/TOVStartedProgram.h"

#include <csignal>
#include <sys/ptrace.h>
#include <sys/wait.h>

int RunStepByStep(const std::vector<std::string>& aArguments, const std::string& sFolder,
                  const std::function<void(int nProcess)>& fnLook)
{
    sProgram oProgram = CatalogProgram(aArguments, sFolder);
    // A leak check refuses to run when traced.
    for (const char* szVariable : {"ASAN_OPTIONS", "LSAN_OPTIONS"})
        *oProgram.aVariables[szVariable] += ":detect_leaks=0";
    sStart oStart;
    oStart.fnInChild = [] { ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr); };
    const pid_t nChild = StartProgram(oProgram, oStart);

    int nStatus = 0;
    for (pid_t nThread; (nThread = ::waitpid(-1, &nStatus, __WALL)) > 0;)
    {
        if (!WIFSTOPPED(nStatus))
        {
            if (nThread != nChild)
                continue;
            return ExitCodeOf(nStatus);
        }
        fnLook(nChild);
        // A new thread begins with a stop, and tracing reports each system call as a trap.
        const int nSignal = WSTOPSIG(nStatus) & 0x7F;
        const bool bOfTracing = nSignal == SIGTRAP || nSignal == SIGSTOP;
        ::ptrace(PTRACE_SETOPTIONS, nThread, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACECLONE | PTRACE_O_EXITKILL);
        ::ptrace(PTRACE_SYSCALL, nThread, nullptr, bOfTracing ? 0 : nSignal);
    }
    return -1;
}
