#include <TestHost/TOVTestSystem.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace TOVTestHost
{
namespace
{
constexpr char VARIABLE[] = "TOV_TEST_WORKER";

class CProcessLink : public ITOVProcessLink
{
public:
    ~CProcessLink() override { ::close(m_nSocket); }

    bool Write(const void* pBytes, std::size_t nBytes) override
    {
        const char* pNext = static_cast<const char*>(pBytes);
        while (nBytes > 0)
        {
            // No signal is wanted: the result shows that the other process has ended.
            const ssize_t nWritten = ::send(m_nSocket, pNext, nBytes, MSG_NOSIGNAL);
            if (nWritten < 0 && errno == EINTR)
                continue;
            if (nWritten <= 0)
                return false;
            pNext += nWritten;
            nBytes -= static_cast<std::size_t>(nWritten);
        }
        return true;
    }

    bool Read(void* pBytes, std::size_t nBytes) override
    {
        char* pNext = static_cast<char*>(pBytes);
        while (nBytes > 0)
        {
            const ssize_t nRead = ::recv(m_nSocket, pNext, nBytes, 0);
            if (nRead < 0 && errno == EINTR)
                continue;
            if (nRead <= 0)
                return false;
            pNext += nRead;
            nBytes -= static_cast<std::size_t>(nRead);
        }
        return true;
    }

    std::string WaitForEnd() override
    {
        ::shutdown(m_nSocket, SHUT_RDWR);
        int nStatus = 0;
        while (::waitpid(m_nWorker, &nStatus, 0) < 0 && errno == EINTR)
        {
        }
        if (WIFSIGNALED(nStatus))
            return DescribeSignal(WTERMSIG(nStatus));
        const int nExit = WEXITSTATUS(nStatus);
        return nExit == 0 ? "" : "ended the process with status " + std::to_string(nExit);
    }

    CProcessLink(int nSocket, pid_t nWorker) : m_nSocket(nSocket), m_nWorker(nWorker) {}

private:
    static std::string DescribeSignal(int nSignal)
    {
        switch (nSignal)
        {
        case SIGSEGV:
        case SIGBUS:
            return "crashed: access violation";
        case SIGABRT:
            return "called abort()";
        case SIGFPE:
            return "crashed: arithmetic fault";
        case SIGILL:
            return "crashed: illegal instruction";
        case SIGINT:
            return "was interrupted";
        default:
            return "was ended by signal " + std::to_string(nSignal);
        }
    }

    const int m_nSocket;
    const pid_t m_nWorker;
};

void OnInterrupt(int /*nSignal*/)
{
}

void LeaveFirstInterruptToWorker()
{
    struct sigaction oAction = {};
    oAction.sa_handler = &OnInterrupt;
    oAction.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    ::sigaction(SIGINT, &oAction, nullptr);
}
} // namespace

bool IsTerminal(std::FILE* pStream)
{
    return ::isatty(::fileno(pStream)) != 0;
}

const void* LoadSharedLibrary(const std::string& sFile, std::string& sReason)
{
    const std::string sPath = sFile.find('/') == std::string::npos ? "./" + sFile : sFile;
    const void* pLibrary = ::dlopen(sPath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (pLibrary == nullptr)
        sReason = ::dlerror();
    return pLibrary;
}

bool StandInOneModule(const void* pOne, const void* pOther)
{
    Dl_info oOne = {};
    Dl_info oOther = {};
    return ::dladdr(pOne, &oOne) != 0 && ::dladdr(pOther, &oOther) != 0 && oOne.dli_fbase == oOther.dli_fbase;
}

void SendOutputToErrors()
{
    std::fflush(stdout);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
}

std::unique_ptr<ITOVProcessLink> StartWorker(char** aszArguments)
{
    int aSockets[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, aSockets) != 0)
        throw std::runtime_error("no connection between processes: " + std::generic_category().message(errno));
    std::fflush(nullptr);
    const pid_t nWorker = ::fork();
    if (nWorker == 0)
    {
        const int nInherited = ::dup(aSockets[1]);
        // NOLINTNEXTLINE(concurrency-mt-unsafe): a child that was forked has one thread.
        ::setenv(VARIABLE, std::to_string(nInherited).c_str(), 1);
        ::execv("/proc/self/exe", aszArguments);
        ::_exit(127);
    }
    ::close(aSockets[1]);
    std::unique_ptr<ITOVProcessLink> pLink(new CProcessLink(aSockets[0], nWorker));
    if (nWorker < 0)
        throw std::runtime_error("no second process: " + std::generic_category().message(errno));
    LeaveFirstInterruptToWorker();
    return pLink;
}

std::unique_ptr<ITOVProcessLink> FindParent()
{
    const char* szSocket = std::getenv(VARIABLE);
    if (szSocket == nullptr)
        return nullptr;
    // A process that a case starts is not a worker, and must not keep the link open.
    const int nSocket = ::fcntl(std::atoi(szSocket), F_DUPFD_CLOEXEC, 3);
    ::close(std::atoi(szSocket));
    ::unsetenv(VARIABLE); // NOLINT(concurrency-mt-unsafe): the first thing that a worker does
    if (nSocket < 0)
        return nullptr;
    const rlimit oNoCore = {0, 0};
    ::setrlimit(RLIMIT_CORE, &oNoCore);
    return std::unique_ptr<ITOVProcessLink>(new CProcessLink(nSocket, -1));
}

void EndWorker()
{
    ::_exit(1);
}
} // namespace TOVTestHost
