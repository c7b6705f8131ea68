#include "Catalog/CatalogProcess.h"
#include "Catalog/Posix/CatalogHindrance.h"
#include "Support/TOVChildProcess.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <linux/securebits.h>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
typedef std::array<int, 2> tPipe;

// The child inherits neither end but as what it makes its standard streams.
tPipe MakePipe()
{
    tPipe aPipe;
    if (::pipe2(aPipe.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    return aPipe;
}

void AddToVariable(const char* szVariable, const char* szOptions)
{
    const char* szGiven = ::getenv(szVariable);
    const std::string sAll = (szGiven != nullptr ? std::string(szGiven) + ":" : "") + szOptions;
    ::setenv(szVariable, sAll.c_str(), 1);
}

// Takes what is there; false at the end of the pipe.
bool ReadSome(int nDescriptor, std::string& sText)
{
    char szPart[65536];
    const ssize_t nRead = ::read(nDescriptor, szPart, sizeof(szPart));
    if (nRead > 0)
        sText.append(szPart, static_cast<std::size_t>(nRead));
    return nRead > 0 || (nRead < 0 && errno == EINTR);
}

// Reads both pipes to their ends and closes them; false at the deadline.
bool ReadBoth(tPipe aDescriptors, sRun& oRun)
{
    const auto oDeadline = std::chrono::steady_clock::now() + std::chrono::seconds(240);
    const std::array<std::string*, 2> aTexts = {&oRun.sOutput, &oRun.sErrors};
    while (aDescriptors[0] >= 0 || aDescriptors[1] >= 0)
    {
        if (std::chrono::steady_clock::now() > oDeadline)
            return false;
        std::array<pollfd, 2> aPolls = {pollfd{aDescriptors[0], POLLIN, 0}, pollfd{aDescriptors[1], POLLIN, 0}};
        ::poll(aPolls.data(), aPolls.size(), 1000);
        for (std::size_t n = 0; n < aPolls.size(); ++n)
            if (aPolls[n].revents != 0 && !ReadSome(aDescriptors[n], *aTexts[n]))
            {
                ::close(aDescriptors[n]);
                aDescriptors[n] = -1;
            }
    }
    return true;
}

void SetFileSizeLimit(unsigned long ulBytes)
{
    const rlimit oLimit = {ulBytes, ulBytes};
    if (::setrlimit(RLIMIT_FSIZE, &oLimit) != 0)
        ::_exit(97);
}
} // namespace

std::string PathOfCatalogProgram()
{
    return std::filesystem::path(PathOfThisProgram()).parent_path() / "tovcatalog";
}

sRun RunCatalog(const std::vector<std::string>& aArguments, const std::string& sFolder)
{
    return RunHindered(aArguments, sFolder, [] {});
}

sRun RunHindered(const std::vector<std::string>& aArguments, const std::string& sFolder,
                 const std::function<void()>& fnInChild)
{
    const tPipe aOutput = MakePipe();
    const tPipe aErrors = MakePipe();
    const pid_t nChild = ::fork();
    if (nChild < 0)
        throw std::runtime_error("no child process");
    if (nChild == 0)
    {
        ::dup2(::open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
        ::dup2(aOutput[1], STDOUT_FILENO);
        ::dup2(aErrors[1], STDERR_FILENO);
        fnInChild();
        BecomeCatalogProgram(aArguments, sFolder);
    }
    ::close(aOutput[1]);
    ::close(aErrors[1]);

    sRun oRun = {-1, "", ""};
    if (!ReadBoth({aOutput[0], aErrors[0]}, oRun))
    {
        oRun.sErrors += "\n<deadline passed>";
        ::kill(nChild, SIGKILL);
    }
    int nStatus = 0;
    while (::waitpid(nChild, &nStatus, 0) < 0 && errno == EINTR)
    {
    }
    if (WIFEXITED(nStatus))
        oRun.nExitCode = WEXITSTATUS(nStatus);
    return oRun;
}

void BecomeCatalogProgram(const std::vector<std::string>& aArguments, const std::string& sFolder)
{
    const std::string sProgram = PathOfCatalogProgram();
    std::vector<char*> aWords = {const_cast<char*>(sProgram.c_str())};
    for (const std::string& sArgument : aArguments)
        aWords.push_back(const_cast<char*>(sArgument.c_str()));
    aWords.push_back(nullptr);

    PrepareChild();
    for (const char* szVariable : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"})
        AddToVariable(szVariable, "exitcode=99");
    if (::chdir(sFolder.c_str()) != 0)
        ::_exit(97);
    ::execv(aWords[0], aWords.data());
    ::_exit(98);
}

void GiveUpPrivileges()
{
    // Root then gains no more by becoming a program than others do.
    if (::geteuid() == 0 && ::prctl(PR_SET_SECUREBITS, SECBIT_NOROOT) != 0)
        ::_exit(97);
}

void LimitFileSize(unsigned long ulBytes)
{
    ::signal(SIGXFSZ, SIG_IGN);
    SetFileSizeLimit(ulBytes);
}

void DieBeyondFileSize(unsigned long ulBytes)
{
    ::signal(SIGXFSZ, SIG_DFL);
    SetFileSizeLimit(ulBytes);
}
