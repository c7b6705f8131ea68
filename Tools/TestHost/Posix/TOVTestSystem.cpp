#include <TestHost/TOVTestSystem.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace TOVTestHost
{
namespace
{
constexpr char VARIABLE[] = "TOV_TEST_WORKER";

// The worker, and the signal by which the user asked for the end of the run; 0: none.
volatile pid_t s_nWorker = -1;
volatile std::sig_atomic_t s_nAsked = 0;

// Closes a descriptor at its end.
class CDescriptor
{
public:
    explicit CDescriptor(int nDescriptor) : m_nDescriptor(nDescriptor) {}
    ~CDescriptor()
    {
        if (m_nDescriptor >= 0)
            ::close(m_nDescriptor);
    }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    int Get() const { return m_nDescriptor; }
    int Release() { return std::exchange(m_nDescriptor, -1); }

private:
    int m_nDescriptor;
};

// Keeps in memory what a process writes to it.
class COutputKeeper
{
public:
    COutputKeeper() : m_oFile(::memfd_create("output", MFD_CLOEXEC)), m_nTaken(0)
    {
        if (Descriptor() < 0 || ::fcntl(Descriptor(), F_SETFL, O_APPEND) != 0)
            throw std::runtime_error("no memory for output: " + std::generic_category().message(errno));
    }

    int Descriptor() const { return m_oFile.Get(); }

    std::string Take()
    {
        std::string sText;
        char szPart[4096];
        for (ssize_t nRead = 0; (nRead = ::pread(Descriptor(), szPart, sizeof(szPart), m_nTaken)) > 0;
             m_nTaken += nRead)
            sText.append(szPart, static_cast<std::size_t>(nRead));
        if (!sText.empty())
            ::fallocate(Descriptor(), FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, 0, m_nTaken);
        return sText;
    }

private:
    const CDescriptor m_oFile;
    off_t m_nTaken;
};

// Either side of the link.
template<class TLink> class CSocketLink : public TLink
{
public:
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

    explicit CSocketLink(int nSocket) : m_nSocket(nSocket) {}

protected:
    const int m_nSocket;
};

class CWorkerLink : public CSocketLink<ITOVWorkerLink>
{
public:
    ~CWorkerLink() override
    {
        if (s_nWorker >= 0)
        {
            ::kill(m_nWorker, SIGKILL);
            Reap();
        }
        ::close(m_nSocket);
    }

    std::string TakeOutput(eTestStream eStream) override
    {
        return eStream == eStreamOutput ? m_pOutput->Take() : m_pErrors->Take();
    }

    bool HasEnded() override
    {
        siginfo_t oInfo = {};
        return ::waitid(P_PID, static_cast<id_t>(m_nWorker), &oInfo, WEXITED | WNOHANG | WNOWAIT) != 0 ||
               oInfo.si_pid == m_nWorker;
    }

    void End() override
    {
        ::kill(m_nWorker, SIGKILL);
        EndTransfers();
    }

    sWorkerEnd WaitForEnd() override
    {
        const int nStatus = Reap();
        if (s_nAsked != 0)
            return {s_nAsked == SIGINT ? "was interrupted" : "was terminated", true};
        if (WIFSIGNALED(nStatus))
            return {DescribeSignal(WTERMSIG(nStatus)), false};
        const int nExit = WEXITSTATUS(nStatus);
        return {nExit == 0 ? "" : "ended the process with status " + std::to_string(nExit), false};
    }

    CWorkerLink(int nSocket, pid_t nWorker, std::unique_ptr<COutputKeeper> pOutput,
                std::unique_ptr<COutputKeeper> pErrors)
        : CSocketLink(nSocket), m_nWorker(nWorker), m_pOutput(std::move(pOutput)), m_pErrors(std::move(pErrors))
    {
    }

private:
    void EndTransfers() { ::shutdown(m_nSocket, SHUT_RDWR); }

    // Waits until the worker has ended, and returns its status. The destructor also runs while memory is exhausted, so
    // that this allocates nothing.
    int Reap()
    {
        EndTransfers();
        siginfo_t oInfo = {};
        while (::waitid(P_PID, static_cast<id_t>(m_nWorker), &oInfo, WEXITED | WNOWAIT) != 0 && errno == EINTR)
        {
        }
        s_nWorker = -1; // a signal must not reach another process that gets the number
        int nStatus = 0;
        ::waitpid(m_nWorker, &nStatus, 0);
        return nStatus;
    }

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

    const pid_t m_nWorker;
    const std::unique_ptr<COutputKeeper> m_pOutput;
    const std::unique_ptr<COutputKeeper> m_pErrors;
};

void EndWorkerOnRequest(int nSignal)
{
    const int nError = errno;
    s_nAsked = nSignal;
    if (s_nWorker >= 0)
        ::kill(s_nWorker, SIGKILL);
    errno = nError;
}

// Each of these signals ends the worker the first time, and the second time this process. One that is ignored, as in a
// shell's background, stays so.
void LeaveFirstRequestToWorker()
{
    for (const int nSignal : {SIGINT, SIGTERM})
    {
        struct sigaction oBefore = {};
        struct sigaction oAction = {};
        oAction.sa_handler = &EndWorkerOnRequest;
        oAction.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
        if (s_nAsked == 0 && ::sigaction(nSignal, nullptr, &oBefore) == 0 && oBefore.sa_handler != SIG_IGN)
            ::sigaction(nSignal, &oAction, nullptr);
    }
}
} // namespace

bool IsTerminal(std::FILE* pStream)
{
    return ::isatty(::fileno(pStream)) != 0;
}

std::size_t WidthOfTerminal(std::FILE* pStream)
{
    winsize oSize = {};
    return ::ioctl(::fileno(pStream), TIOCGWINSZ, &oSize) == 0 && oSize.ws_col > 0 ? oSize.ws_col : 80;
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

std::unique_ptr<ITOVWorkerLink> StartWorker(char** aszArguments)
{
    int aSockets[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, aSockets) != 0)
        throw std::runtime_error("no connection between processes: " + std::generic_category().message(errno));
    CDescriptor oOwn(aSockets[0]);
    const CDescriptor oOfWorker(aSockets[1]);
    std::unique_ptr<COutputKeeper> pOutput(new COutputKeeper);
    std::unique_ptr<COutputKeeper> pErrors(new COutputKeeper);
    LeaveFirstRequestToWorker();
    std::fflush(nullptr);
    const pid_t nWorker = ::fork();
    if (nWorker == 0)
    {
        ::dup2(pOutput->Descriptor(), STDOUT_FILENO);
        ::dup2(pErrors->Descriptor(), STDERR_FILENO);
        const int nInherited = ::dup(oOfWorker.Get());
        // NOLINTNEXTLINE(concurrency-mt-unsafe): a child that was forked has one thread.
        ::setenv(VARIABLE, std::to_string(nInherited).c_str(), 1);
        ::execv("/proc/self/exe", aszArguments);
        ::_exit(127);
    }
    const int nError = errno;
    s_nWorker = nWorker;
    std::unique_ptr<ITOVWorkerLink> pLink(
        new CWorkerLink(oOwn.Release(), nWorker, std::move(pOutput), std::move(pErrors)));
    if (nWorker < 0)
        throw std::runtime_error("no second process: " + std::generic_category().message(nError));
    if (s_nAsked != 0) // in the moment before the worker was known
        pLink->End();
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
    // What a case writes is not lost if it then crashes.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    return std::unique_ptr<ITOVProcessLink>(new CSocketLink<ITOVProcessLink>(nSocket));
}

void EndWorker()
{
    ::_exit(1);
}
} // namespace TOVTestHost
