#include "Support/Posix/TOVForkedChild.h"

#include "Support/Posix/TOVStartedProgram.h"
#include "Support/TOVWaitInstruments.h"

#include <atomic>
#include <cerrno>
#include <poll.h>
#include <signal.h>
#include <stdexcept>
#include <unistd.h>

namespace
{
constexpr int BUSY_THREADS = 3;

// Whether the process with the other end of the pipe ends before the deadline.
bool EndsInTime(int nPipe)
{
    pollfd oPoll = {nPipe, POLLIN, 0};
    int nReady = -1;
    do
        nReady = ::poll(&oPoll, 1, static_cast<int>(DEADLINE));
    while (nReady < 0 && errno == EINTR);
    return nReady > 0;
}
} // namespace

bool IsTrueInFork(const std::function<bool()>& fnAction)
{
    sPipe oPipe;
    const pid_t nChild = ::fork();
    if (nChild < 0)
        throw std::runtime_error("no child process");
    if (nChild == 0)
        ::_exit(fnAction() ? 0 : 1);

    oPipe.oWrite.Set(-1);
    if (!EndsInTime(oPipe.oRead.Get()))
        ::kill(nChild, SIGKILL);
    return WaitForExitCode(nChild) == 0;
}

int CountForksAmid(int nForks, const std::function<void()>& fnBusy, const std::function<bool()>& fnInChild)
{
    std::atomic<bool> bDone(false);
    CTally oAtWork;
    CThreadGroup oBusy;
    oBusy.Start(BUSY_THREADS, [&](int) {
        fnBusy();
        oAtWork.Add();
        while (!bDone)
            fnBusy();
    });
    int nGood = 0;
    if (oAtWork.Reaches(BUSY_THREADS))
    {
        while (nGood < nForks && IsTrueInFork(fnInChild))
            ++nGood;
    }
    bDone = true;
    oBusy.Join();
    return nGood;
}
