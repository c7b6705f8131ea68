#include "Catalog/CatalogTerminal.h"
#include "Catalog/Posix/CatalogHindrance.h"
#include "Support/TOVTestSupport.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
const std::chrono::seconds DEADLINE(240);

// What stands on a screen of endless width after this output: the carriage return goes back to the line's begin, and
// what comes next is written over what stood there. Of control sequences it knows "erase to the end of the line".
std::vector<std::string> LinesOnScreen(const std::string& sOutput)
{
    std::vector<std::string> aLines(1);
    std::size_t nColumn = 0;
    for (std::size_t n = 0; n < sOutput.size(); ++n)
    {
        std::string& sLine = aLines.back();
        if (sOutput[n] == '\r')
            nColumn = 0;
        else if (sOutput[n] == '\n')
            aLines.emplace_back();
        else if (sOutput.compare(n, 3, "\x1b[K") == 0)
        {
            sLine.resize(nColumn);
            n += 2;
        }
        else
        {
            sLine.resize(std::max(sLine.size(), nColumn + 1), ' ');
            sLine[nColumn++] = sOutput[n];
        }
    }
    return aLines;
}
} // namespace

struct CCatalogTerminal::sState
{
    int nTerminal;
    pid_t nChild;
    bool bEnded;
    int nExitCode;
    std::string sOutput;

    // Takes what comes within the time; false at the end of the output.
    bool Read(int nMilliseconds)
    {
        pollfd oPoll = {nTerminal, POLLIN, 0};
        if (::poll(&oPoll, 1, nMilliseconds) == 0)
            return true;
        char szPart[4096];
        const ssize_t nRead = ::read(nTerminal, szPart, sizeof(szPart));
        if (nRead > 0)
            sOutput.append(szPart, static_cast<std::size_t>(nRead));
        return nRead > 0 || (nRead < 0 && errno == EINTR);
    }
};

CCatalogTerminal::CCatalogTerminal(const std::vector<std::string>& aArguments, const std::string& sFolder)
    : m_pState(new sState{::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC), -1, false, -1, ""})
{
    const int nTerminal = m_pState->nTerminal;
    if (nTerminal < 0 || ::grantpt(nTerminal) != 0 || ::unlockpt(nTerminal) != 0)
        throw std::runtime_error("no pseudo-terminal");
    const std::string sName = ::ptsname(nTerminal);
    // The usual size of a window: without one, a program cannot know where a line would break.
    const winsize oSize = {24, 80, 0, 0};
    ::ioctl(nTerminal, TIOCSWINSZ, &oSize);

    m_pState->nChild = ::fork();
    if (m_pState->nChild < 0)
        throw std::runtime_error("no child process");
    if (m_pState->nChild == 0)
    {
        // The first terminal that a session of its own opens becomes its controlling terminal.
        ::setsid();
        const int nOwn = ::open(sName.c_str(), O_RDWR);
        ::dup2(nOwn, STDIN_FILENO);
        ::dup2(nOwn, STDOUT_FILENO);
        ::dup2(nOwn, STDERR_FILENO);
        ::close(nOwn);
        BecomeCatalogProgram(aArguments, sFolder);
    }
}

CCatalogTerminal::~CCatalogTerminal()
{
    Kill();
    WaitForEnd();
    ::close(m_pState->nTerminal);
}

bool CCatalogTerminal::WaitUntil(const std::function<bool(const std::vector<std::string>&)>& fnWanted)
{
    const auto oDeadline = std::chrono::steady_clock::now() + DEADLINE;
    while (!fnWanted(Screen()))
        if (std::chrono::steady_clock::now() > oDeadline || !m_pState->Read(100))
            return false;
    return true;
}

bool CCatalogTerminal::WaitUntilItShows(const std::string& sText)
{
    return WaitUntil([&](const std::vector<std::string>& aLines) {
        for (const std::string& sLine : aLines)
            if (sLine.find(sText) != std::string::npos)
                return true;
        return false;
    });
}

void CCatalogTerminal::PressInterruptKeys()
{
    if (::write(m_pState->nTerminal, "\x03", 1) != 1)
        throw std::runtime_error("the keys cannot be pressed");
}

void CCatalogTerminal::Kill()
{
    if (!m_pState->bEnded)
        ::kill(m_pState->nChild, SIGKILL);
}

int CCatalogTerminal::WaitForEnd()
{
    if (m_pState->bEnded)
        return m_pState->nExitCode;
    const auto oDeadline = std::chrono::steady_clock::now() + DEADLINE;
    while (m_pState->Read(100))
        if (std::chrono::steady_clock::now() > oDeadline)
            ::kill(m_pState->nChild, SIGKILL);

    int nStatus = 0;
    while (::waitpid(m_pState->nChild, &nStatus, 0) < 0 && errno == EINTR)
    {
    }
    m_pState->bEnded = true;
    m_pState->nExitCode = WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
    return m_pState->nExitCode;
}

std::vector<std::string> CCatalogTerminal::Screen()
{
    std::vector<std::string> aLines;
    for (std::string& sLine : LinesOnScreen(m_pState->sOutput))
    {
        sLine.erase(sLine.find_last_not_of(' ') + 1);
        if (!sLine.empty())
            aLines.push_back(sLine);
    }
    return aLines;
}

unsigned long CCatalogTerminal::ProcessId() const
{
    return static_cast<unsigned long>(m_pState->nChild);
}
