#include "Listeners/ListenerTerminal.h"
#include "Support/TOVTestSupport.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
[[noreturn]] void BecomeScenario(const std::string& sTerminal, const std::vector<std::string>& aCommand,
                                 const std::map<std::string, std::string>& aVariables)
{
    ::setsid();
    const int nOwn = ::open(sTerminal.c_str(), O_RDWR);
    for (const int nStream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::dup2(nOwn, nStream);
    ::unsetenv("NO_COLOR");
    ::setenv("TERM", "xterm", 1);
    for (const auto& [sName, sValue] : aVariables)
        ::setenv(sName.c_str(), sValue.c_str(), 1);

    std::vector<char*> aWords;
    for (const std::string& sWord : aCommand)
        aWords.push_back(const_cast<char*>(sWord.c_str()));
    aWords.push_back(nullptr);
    ::execv(aWords[0], aWords.data());
    ::_exit(98);
}

// Everything until the other side is closed, or the deadline.
std::string ReadAll(int nTerminal)
{
    const auto oDeadline = std::chrono::steady_clock::now() + std::chrono::seconds(120);
    std::string sOutput;
    while (std::chrono::steady_clock::now() < oDeadline)
    {
        pollfd oPoll = {nTerminal, POLLIN, 0};
        if (::poll(&oPoll, 1, 1000) <= 0)
            continue;
        char szPart[4096];
        const ssize_t nRead = ::read(nTerminal, szPart, sizeof(szPart));
        if (nRead <= 0 && errno != EINTR)
            return sOutput;
        if (nRead > 0)
            sOutput.append(szPart, static_cast<std::size_t>(nRead));
    }
    return sOutput + "<deadline passed>";
}

// A line with the sequences of a colour around all of it, or with none.
sShownLine Read(const std::string& sLine)
{
    const std::map<std::string, std::string> aColours = {
        {"\x1b[90m", "grey"}, {"\x1b[33m", "yellow"}, {"\x1b[31m", "red"}, {"\x1b[91m", "bright red"}};
    const std::string sEnd = "\x1b[0m";
    if (sLine.find('\x1b') == std::string::npos)
        return {sLine, "none"};
    const auto pColour = aColours.find(sLine.substr(0, 5));
    if (pColour == aColours.end() || sLine.find('\x1b', 1) != sLine.size() - sEnd.size() ||
        sLine.substr(sLine.size() - sEnd.size()) != sEnd)
        return {sLine, "mixed"};
    return {sLine.substr(5, sLine.size() - 5 - sEnd.size()), pColour->second};
}
} // namespace

std::vector<sShownLine> ShownOnTerminal(const std::string& sScenario, const std::vector<std::string>& aArguments,
                                        const std::map<std::string, std::string>& aVariables)
{
    const int nTerminal = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (nTerminal < 0 || ::grantpt(nTerminal) != 0 || ::unlockpt(nTerminal) != 0)
        throw std::runtime_error("no pseudo-terminal");
    const std::string sTerminal = ::ptsname(nTerminal);
    const std::vector<std::string> aCommand = ChildCommand(sScenario, aArguments);
    const pid_t nChild = ::fork();
    if (nChild < 0)
        throw std::runtime_error("no child process");
    if (nChild == 0)
        BecomeScenario(sTerminal, aCommand, aVariables);

    const std::string sOutput = ReadAll(nTerminal);
    ::kill(nChild, SIGKILL);
    ::waitpid(nChild, nullptr, 0);
    ::close(nTerminal);

    std::vector<sShownLine> aLines;
    std::size_t nBegin = 0;
    for (std::size_t nEnd; (nEnd = sOutput.find("\r\n", nBegin)) != std::string::npos; nBegin = nEnd + 2)
        aLines.push_back(Read(sOutput.substr(nBegin, nEnd - nBegin)));
    if (nBegin < sOutput.size())
        aLines.push_back({sOutput.substr(nBegin) + "<no end>", "none"});
    return aLines;
}
