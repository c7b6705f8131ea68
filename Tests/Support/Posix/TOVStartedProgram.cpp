#include "Support/Posix/TOVStartedProgram.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
// The first terminal that a session of its own opens controls it.
void EnterSession(const sStart& oStart)
{
    if (oStart.bOwnSession)
        ::setsid();
    const char* szRest = oStart.sTerminal.empty() ? "/dev/null" : oStart.sTerminal.c_str();
    const int nRest = ::open(szRest, O_RDWR | O_CLOEXEC);
    const std::array<int, 3> aStreams = {oStart.nInput, oStart.nOutput, oStart.nErrors};
    for (std::size_t n = 0; n < aStreams.size(); ++n)
        ::dup2(aStreams[n] >= 0 ? aStreams[n] : nRest, static_cast<int>(n));
}

// Tests that run in the background may have signals ignored, and their programs would inherit that.
void RestoreSignals()
{
    for (const int nSignal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE})
        ::signal(nSignal, SIG_DFL);
}

// The environment of this process with the changes.
std::vector<std::string> Environment(const tVariables& aChanges)
{
    std::vector<std::string> aVariables;
    for (char** pszVariable = environ; *pszVariable != nullptr; ++pszVariable)
    {
        const std::string sVariable = *pszVariable;
        if (aChanges.count(sVariable.substr(0, sVariable.find('='))) == 0)
            aVariables.push_back(sVariable);
    }
    for (const auto& [sName, oValue] : aChanges)
        if (oValue)
            aVariables.push_back(sName + '=' + *oValue);
    return aVariables;
}

// The texts as the system takes them, with a null pointer after the last one.
std::vector<char*> Pointers(const std::vector<std::string>& aTexts)
{
    std::vector<char*> aPointers;
    for (const std::string& sText : aTexts)
        aPointers.push_back(const_cast<char*>(sText.c_str()));
    aPointers.push_back(nullptr);
    return aPointers;
}
} // namespace

void CDescriptor::Set(int nDescriptor)
{
    if (m_nDescriptor >= 0)
        ::close(m_nDescriptor);
    m_nDescriptor = nDescriptor;
}

sPipe::sPipe()
{
    int aEnds[2];
    if (::pipe2(aEnds, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    oRead.Set(aEnds[0]);
    oWrite.Set(aEnds[1]);
}

bool ReadSome(int nDescriptor, std::string& sText, std::size_t nBytes)
{
    std::vector<char> aPart(nBytes);
    const ssize_t nRead = ::read(nDescriptor, aPart.data(), aPart.size());
    if (nRead > 0)
        sText.append(aPart.data(), static_cast<std::size_t>(nRead));
    return nRead > 0 || (nRead < 0 && errno == EINTR);
}

pid_t StartProgram(const sProgram& oProgram, const sStart& oStart)
{
    // All memory is allocated before the fork: in the new process another thread's lock of the heap could stay taken.
    const std::vector<std::string> aEnvironment = Environment(oProgram.aVariables);
    const std::vector<char*> aVariables = Pointers(aEnvironment);
    const std::vector<char*> aWords = Pointers(oProgram.aCommand);

    const pid_t nProcess = ::fork();
    if (nProcess < 0)
        throw std::runtime_error("no child process");
    if (nProcess == 0)
    {
        EnterSession(oStart);
        RestoreSignals();
        if (oStart.fnInChild)
            oStart.fnInChild();
        PrepareChild();
        if (!oProgram.sFolder.empty() && ::chdir(oProgram.sFolder.c_str()) != 0)
            ::_exit(97);
        ::execve(aWords[0], aWords.data(), aVariables.data());
        ::_exit(98);
    }
    return nProcess;
}

int ExitCodeOf(int nStatus)
{
    return WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
}

int WaitForExitCode(pid_t nProcess)
{
    int nStatus = 0;
    while (::waitpid(nProcess, &nStatus, 0) < 0 && errno == EINTR)
    {
    }
    return ExitCodeOf(nStatus);
}
