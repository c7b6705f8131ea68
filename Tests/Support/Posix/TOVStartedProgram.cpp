#include "Support/Posix/TOVStartedProgram.h"

#include <array>
#include <cerrno>
#include <cstdlib>
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

[[noreturn]] void BecomeProgram(const sProgram& oProgram)
{
    std::vector<char*> aWords;
    for (const std::string& sWord : oProgram.aCommand)
        aWords.push_back(const_cast<char*>(sWord.c_str()));
    aWords.push_back(nullptr);

    PrepareChild();
    for (const auto& [sName, oValue] : oProgram.aVariables)
    {
        if (oValue)
            ::setenv(sName.c_str(), oValue->c_str(), 1);
        else
            ::unsetenv(sName.c_str());
    }
    if (!oProgram.sFolder.empty() && ::chdir(oProgram.sFolder.c_str()) != 0)
        ::_exit(97);
    ::execv(aWords[0], aWords.data());
    ::_exit(98);
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
    const pid_t nProcess = ::fork();
    if (nProcess < 0)
        throw std::runtime_error("no child process");
    if (nProcess == 0)
    {
        EnterSession(oStart);
        if (oStart.fnInChild)
            oStart.fnInChild();
        BecomeProgram(oProgram);
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
