#include "Support/Posix/TOVForkedChild.h"

#include "Support/TOVWaitInstruments.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
const int BUSY_THREADS = 3;

// Whether the process at the other end of the pipe ends before the deadline.
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
    int aPipe[2];
    if (::pipe2(aPipe, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    const pid_t nChild = ::fork();
    if (nChild < 0)
        throw std::runtime_error("no child process");
    if (nChild == 0)
        ::_exit(fnAction() ? 0 : 1);

    ::close(aPipe[1]);
    if (!EndsInTime(aPipe[0]))
        ::kill(nChild, SIGKILL);
    ::close(aPipe[0]);
    int nStatus = 0;
    while (::waitpid(nChild, &nStatus, 0) < 0 && errno == EINTR)
    {
    }
    return WIFEXITED(nStatus) && WEXITSTATUS(nStatus) == 0;
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
