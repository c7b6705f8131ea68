#include "Support/TOVObservedChild.h"
#include "Support/TOVTestSupport.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace
{
const char QUESTION_PROMPT[] = "[y]es, [n]o, [c]ancel? ";
const char ERROR_PROMPT[] = "[Enter] ";

// One open descriptor.
class CDescriptor
{
public:
    explicit CDescriptor(int nDescriptor = -1) : m_nDescriptor(nDescriptor) {}

    ~CDescriptor() { Close(); }

    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    void Set(int nDescriptor) { m_nDescriptor = nDescriptor; }

    void Close()
    {
        if (m_nDescriptor >= 0)
            ::close(m_nDescriptor);
        m_nDescriptor = -1;
    }

    int Get() const { return m_nDescriptor; }

private:
    int m_nDescriptor;
};

// What the parent and the child hold of their connections.
struct sEnds
{
    CDescriptor oParent;
    CDescriptor oChild;
};

class CObserver
{
public:
    CObserver(const std::string& sScenario, const sObservation& oHow) : m_oHow(oHow), m_nChild(-1), m_nAnswers(0)
    {
        m_oResult.nExitCode = -1;
        OpenTerminal();
        OpenOutput();
        Start(ChildCommand(sScenario, oHow.aArguments));
    }

    sObservedChild Run()
    {
        const auto oDeadline = std::chrono::steady_clock::now() + std::chrono::seconds(120);
        while (!HasEnded())
        {
            Hear(20);
            AnswerIfItIsTime();
            if (std::chrono::steady_clock::now() > oDeadline)
            {
                m_oResult.sOutput += "\n<deadline passed>";
                ::kill(m_nChild, SIGKILL);
            }
        }
        while (Hear(0))
        {
        }
        if (m_nAnswers < m_oResult.aBoxes.size())
            m_oResult.aBoxes.back().sSaid = m_oResult.sOutput + "<ended without an answer>";
        return m_oResult;
    }

private:
    // The terminal as a program sees it, but plain: no echo, and line ends stay as they are.
    void OpenTerminal()
    {
        if (m_oHow.aAnswers.empty())
            return;
        m_oTerminal.oParent.Set(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
        if (m_oTerminal.oParent.Get() < 0 || ::grantpt(m_oTerminal.oParent.Get()) != 0 ||
            ::unlockpt(m_oTerminal.oParent.Get()) != 0)
            throw std::runtime_error("no pseudo-terminal");
        m_sTerminal = ::ptsname(m_oTerminal.oParent.Get());
        m_oTerminal.oChild.Set(::open(m_sTerminal.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));

        termios oSettings;
        ::tcgetattr(m_oTerminal.oChild.Get(), &oSettings);
        oSettings.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        oSettings.c_oflag &= ~static_cast<tcflag_t>(OPOST);
        ::tcsetattr(m_oTerminal.oChild.Get(), TCSANOW, &oSettings);
    }

    // A socket of packets for standard error: each piece arrives as it was written.
    void OpenOutput()
    {
        int aPipe[2];
        int aSockets[2];
        if (::pipe2(aPipe, O_CLOEXEC) != 0 || ::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, aSockets) != 0)
            throw std::runtime_error("no pipe");
        m_oOutput.oParent.Set(aPipe[0]);
        m_oOutput.oChild.Set(aPipe[1]);
        m_oErrors.oParent.Set(aSockets[0]);
        m_oErrors.oChild.Set(aSockets[1]);
    }

    void Start(const std::vector<std::string>& aCommand)
    {
        std::vector<char*> aArguments;
        for (const std::string& sArgument : aCommand)
            aArguments.push_back(const_cast<char*>(sArgument.c_str()));
        aArguments.push_back(nullptr);

        m_nChild = ::fork();
        if (m_nChild < 0)
            throw std::runtime_error("no child process");
        if (m_nChild == 0)
            BecomeChild(aArguments.data());
        m_oOutput.oChild.Close();
        m_oErrors.oChild.Close();
    }

    [[noreturn]] void BecomeChild(char** aszArguments)
    {
        // Cut off from our terminal, the child takes the first one that it opens for its controlling terminal.
        ::setsid();
        if (!m_sTerminal.empty())
            static_cast<void>(::open(m_sTerminal.c_str(), O_RDWR | O_CLOEXEC));
        const int nNull = ::open("/dev/null", O_RDONLY);
        ::dup2(nNull, STDIN_FILENO);
        ::dup2(m_oOutput.oChild.Get(), STDOUT_FILENO);
        ::dup2(m_oErrors.oChild.Get(), STDERR_FILENO);
        // A child that ends in the middle of things leaves memory behind, and a leak check refuses to run when traced.
        ::setenv("LSAN_OPTIONS", "detect_leaks=0", 1);
        ::setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
        if (m_oHow.bDebugger)
            ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        ::execv(aszArguments[0], aszArguments);
        ::_exit(98);
    }

    // Lets a stopped child go on; true once it has ended.
    bool HasEnded()
    {
        int nStatus = 0;
        if (::waitpid(m_nChild, &nStatus, WNOHANG) != m_nChild)
            return false;
        if (WIFSTOPPED(nStatus))
        {
            const int nSignal = WSTOPSIG(nStatus) == SIGTRAP ? 0 : WSTOPSIG(nStatus);
            ::ptrace(PTRACE_SETOPTIONS, m_nChild, nullptr, PTRACE_O_EXITKILL);
            ::ptrace(PTRACE_CONT, m_nChild, nullptr, nSignal);
            return false;
        }
        if (WIFEXITED(nStatus))
            m_oResult.nExitCode = WEXITSTATUS(nStatus);
        return true;
    }

    // Takes in what the child has said; false if that was nothing.
    bool Hear(int nMilliseconds)
    {
        std::array<pollfd, 3> aPolls = {pollfd{m_oOutput.oParent.Get(), POLLIN, 0},
                                        pollfd{m_oErrors.oParent.Get(), POLLIN, 0},
                                        pollfd{m_oTerminal.oParent.Get(), POLLIN, 0}};
        if (::poll(aPolls.data(), aPolls.size(), nMilliseconds) <= 0)
            return false;

        std::vector<char> aPart(1 << 18);
        bool bHeard = false;
        for (const pollfd& oPoll : aPolls)
        {
            if (oPoll.revents == 0)
                continue;
            const ssize_t nRead = ::read(oPoll.fd, aPart.data(), aPart.size());
            bHeard = bHeard || nRead > 0;
            Take(oPoll.fd, nRead > 0 ? std::string(aPart.data(), static_cast<std::size_t>(nRead)) : std::string());
        }
        return bHeard;
    }

    void Take(int nDescriptor, const std::string& sPart)
    {
        if (nDescriptor == m_oOutput.oParent.Get())
        {
            m_oResult.sOutput += sPart;
            if (sPart.empty())
                m_oOutput.oParent.Close();
        }
        else if (nDescriptor == m_oErrors.oParent.Get())
        {
            if (!sPart.empty())
                m_oResult.aDebuggerTexts.push_back(sPart);
            else
                m_oErrors.oParent.Close();
        }
        else
        {
            m_sShown += sPart;
            NoteIfAsked(QUESTION_PROMPT, "Yes No Cancel");
            NoteIfAsked(ERROR_PROMPT, "OK");
        }
    }

    // What has been shown since the last answer is an empty line, the caption, the text and the prompt.
    void NoteIfAsked(const std::string& sPrompt, const char* szButtons)
    {
        const std::string sEnd = "\n" + sPrompt;
        if (m_sShown.size() < sEnd.size() || m_sShown.compare(m_sShown.size() - sEnd.size(), sEnd.size(), sEnd) != 0)
            return;

        const std::size_t nCaption = m_sShown.find_first_not_of('\n');
        const std::size_t nText = m_sShown.find('\n', nCaption) + 1;
        const std::size_t nEnd = m_sShown.size() - sEnd.size();
        m_oResult.aBoxes.push_back({m_sShown.substr(nCaption, nText - 1 - nCaption),
                                    nEnd > nText ? m_sShown.substr(nText, nEnd - nText) : "", szButtons, ""});
        m_sShown.clear();
        m_oTimeToAnswer = std::chrono::steady_clock::now() + std::chrono::milliseconds(100);
    }

    // A child that does not wait has the time to show it.
    void AnswerIfItIsTime()
    {
        if (m_nAnswers == m_oResult.aBoxes.size() || std::chrono::steady_clock::now() < m_oTimeToAnswer)
            return;
        m_oResult.aBoxes.back().sSaid = m_oResult.sOutput;
        Type(m_nAnswers < m_oHow.aAnswers.size() ? m_oHow.aAnswers[m_nAnswers] : eUserOther);
        ++m_nAnswers;
    }

    void Type(eUserAnswer eAnswer)
    {
        std::string sTyped = "\n";
        if (eAnswer == eUserYes)
            sTyped = "y\n";
        else if (eAnswer == eUserNo)
            sTyped = "n\n";
        else if (eAnswer == eUserCancel)
            sTyped = "c\n";
        else if (eAnswer == eUserOther)
            sTyped = "\x04"; // end of input
        if (::write(m_oTerminal.oParent.Get(), sTyped.data(), sTyped.size()) < 0)
            m_oResult.sOutput += "\n<the user could not answer>";
    }

    const sObservation m_oHow;
    sObservedChild m_oResult;
    pid_t m_nChild;
    std::size_t m_nAnswers; // given so far; a box beyond them is to be answered when it is time
    std::chrono::steady_clock::time_point m_oTimeToAnswer;
    std::string m_sTerminal;
    std::string m_sShown;
    sEnds m_oTerminal;
    sEnds m_oOutput;
    sEnds m_oErrors;
};
} // namespace

sObservedChild RunObserved(const std::string& sScenario, const sObservation& oHow)
{
    return CObserver(sScenario, oHow).Run();
}
