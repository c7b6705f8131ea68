#include "TestHost/HostSystem.h"
#include "Support/TOVChildProcess.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
std::string PathBesideTests(const std::string& sName)
{
    const std::string sTests = PathOfThisProgram();
    return sTests.substr(0, sTests.rfind('/') + 1) + sName;
}

// Of what the program writes to a terminal, it uses the carriage return alone.
std::vector<std::string> LinesOnScreen(const std::string& sOutput)
{
    std::vector<std::string> aLines(1);
    std::size_t nColumn = 0;
    for (const char cByte : sOutput)
    {
        std::string& sLine = aLines.back();
        if (cByte == '\r')
            nColumn = 0;
        else if (cByte == '\n')
            aLines.emplace_back();
        else
        {
            sLine.resize(std::max(sLine.size(), nColumn + 1), ' ');
            sLine[nColumn++] = cByte;
        }
    }
    std::vector<std::string> aShown;
    for (std::string& sLine : aLines)
    {
        sLine.erase(sLine.find_last_not_of(' ') + 1);
        if (!sLine.empty())
            aShown.push_back(sLine);
    }
    return aShown;
}

int s_nTerminal = -1;

[[noreturn]] void BecomeHost(const std::string& sTerminal, const std::vector<std::string>& aArguments)
{
    ::setsid();
    const int nOwn = ::open(sTerminal.c_str(), O_RDWR);
    for (const int nStream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::dup2(nOwn, nStream);
    std::vector<std::string> aCommand = HostCommand();
    aCommand.insert(aCommand.end(), aArguments.begin(), aArguments.end());
    std::vector<char*> aWords;
    for (std::string& sWord : aCommand)
        aWords.push_back(&sWord[0]);
    aWords.push_back(nullptr);
    ::execv(aWords[0], aWords.data());
    ::_exit(98);
}

// False once the other side is closed.
bool ReadSome(int nTerminal, std::string& sOutput)
{
    pollfd oPoll = {nTerminal, POLLIN, 0};
    if (::poll(&oPoll, 1, 1000) <= 0)
        return true;
    char szPart[4096];
    const ssize_t nRead = ::read(nTerminal, szPart, sizeof(szPart));
    if (nRead > 0)
        sOutput.append(szPart, static_cast<std::size_t>(nRead));
    return nRead > 0 || errno == EINTR;
}
} // namespace

std::vector<std::string> HostCommand()
{
    return {"/usr/bin/env", "ASAN_OPTIONS=handle_segv=0:handle_abort=0:detect_stack_use_after_return=0",
            "LSAN_OPTIONS=detect_leaks=1", "TSAN_OPTIONS=handle_segv=0:handle_abort=0", PathBesideTests("tovtest")};
}

std::string PathOfSuites(const std::string& sName)
{
    return PathBesideTests(sName + ".so");
}

sTerminalRun RunOnTerminal(const std::vector<std::string>& aArguments, const std::string& sText,
                           const std::function<void()>& fnWhenSeen)
{
    const int nTerminal = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (nTerminal < 0 || ::grantpt(nTerminal) != 0 || ::unlockpt(nTerminal) != 0)
        throw std::runtime_error("no pseudo-terminal");
    const std::string sTerminal = ::ptsname(nTerminal);
    const pid_t nChild = ::fork();
    if (nChild < 0)
        throw std::runtime_error("no child process");
    if (nChild == 0)
        BecomeHost(sTerminal, aArguments);

    const auto oDeadline = std::chrono::steady_clock::now() + std::chrono::seconds(100);
    sTerminalRun oRun = {-1, {}, {}};
    std::string sOutput;
    while (ReadSome(nTerminal, sOutput) && std::chrono::steady_clock::now() < oDeadline)
    {
        if (oRun.aDuring.empty() && sOutput.find(sText) != std::string::npos)
        {
            oRun.aDuring = LinesOnScreen(sOutput);
            s_nTerminal = nTerminal;
            fnWhenSeen();
        }
    }
    if (std::chrono::steady_clock::now() >= oDeadline)
        ::kill(nChild, SIGKILL);
    int nStatus = 0;
    ::waitpid(nChild, &nStatus, 0);
    ::close(nTerminal);
    oRun.nExitCode = WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
    oRun.aAfter = LinesOnScreen(sOutput);
    return oRun;
}

void PressInterruptKeys()
{
    if (::write(s_nTerminal, "\x03", 1) != 1)
        throw std::runtime_error("the keys cannot be pressed");
}

void SetVariable(const char* szName, const std::string& sValue)
{
    ::setenv(szName, sValue.c_str(), 1);
}
