#include "Support/TOVChildProcess.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

std::string PathOfThisProgram()
{
    char szPath[4096];
    const ssize_t nLength = ::readlink("/proc/self/exe", szPath, sizeof(szPath));
    if (nLength <= 0)
        throw std::runtime_error("cannot find the running program");
    return std::string(szPath, static_cast<std::size_t>(nLength));
}

void PrepareChild()
{
    const rlimit oNoCore = {0, 0};
    ::setrlimit(RLIMIT_CORE, &oNoCore);
}

namespace
{
// Reads until the other end is closed or the deadline has passed.
bool ReadAll(int nDescriptor, std::string& sOutput)
{
    const auto oDeadline = std::chrono::steady_clock::now() + std::chrono::seconds(120);
    for (;;)
    {
        const auto nLeft =
            std::chrono::duration_cast<std::chrono::milliseconds>(oDeadline - std::chrono::steady_clock::now()).count();
        pollfd oPoll = {nDescriptor, POLLIN, 0};
        const int nReady = nLeft > 0 ? ::poll(&oPoll, 1, static_cast<int>(nLeft)) : 0;
        if (nReady < 0 && errno == EINTR)
            continue;
        if (nReady <= 0)
            return false;

        char szPart[4096];
        const ssize_t nRead = ::read(nDescriptor, szPart, sizeof(szPart));
        if (nRead <= 0)
            return true;
        sOutput.append(szPart, static_cast<std::size_t>(nRead));
    }
}
} // namespace

sChildResult RunProgram(const std::vector<std::string>& aCommand)
{
    int aPipe[2];
    if (::pipe2(aPipe, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");

    std::vector<char*> aArguments;
    for (const std::string& sArgument : aCommand)
        aArguments.push_back(const_cast<char*>(sArgument.c_str()));
    aArguments.push_back(nullptr);

    const pid_t nChild = ::fork();
    if (nChild < 0)
        throw std::runtime_error("no child process");
    if (nChild == 0)
    {
        ::dup2(aPipe[1], STDOUT_FILENO);
        ::dup2(aPipe[1], STDERR_FILENO);
        // A child that ends in the middle of things leaves memory behind: not a leak of the library.
        ::setenv("LSAN_OPTIONS", "detect_leaks=0", 1);
        ::setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
        ::execv(aArguments[0], aArguments.data());
        ::_exit(98);
    }

    ::close(aPipe[1]);
    sChildResult oResult = {-1, ""};
    if (!ReadAll(aPipe[0], oResult.sOutput))
    {
        oResult.sOutput += "\n<deadline passed>";
        ::kill(nChild, SIGKILL);
    }
    ::close(aPipe[0]);

    int nStatus = 0;
    while (::waitpid(nChild, &nStatus, 0) < 0 && errno == EINTR)
    {
    }
    if (WIFEXITED(nStatus))
        oResult.nExitCode = WEXITSTATUS(nStatus);
    return oResult;
}
