#include "Support/TOVObservedChild.h"
#include "Support/Posix/TOVPseudoTerminal.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <stdexcept>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <termios.h>

namespace
{
constexpr char QUESTION_PROMPT[] = "[y]es, [n]o, [c]ancel? ";
constexpr char ERROR_PROMPT[] = "[Enter] ";
constexpr std::size_t LARGEST_PACKET = 1 << 18;

class CObserver
{
public:
    CObserver(const std::string& sScenario, const sObservation& oHow) : m_oHow(oHow), m_nChild(-1), m_nAnswers(0)
    {
        m_oResult.nExitCode = -1;
        OpenTerminal();
        OpenErrors();
        Start(ScenarioProgram(sScenario, oHow.aArguments));
    }

    sObservedChild Run()
    {
        const auto oDeadline = std::chrono::steady_clock::now() + CHILD_DEADLINE;
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
    // Switches echo and the change of line ends off. The child's side stays open here, too, so that it never ends.
    void OpenTerminal()
    {
        if (m_oHow.aAnswers.empty())
            return;
        m_pTerminal = std::make_unique<CPseudoTerminal>();
        m_oTerminalOfChild.Set(::open(m_pTerminal->Name().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));

        termios oSettings;
        ::tcgetattr(m_oTerminalOfChild.Get(), &oSettings);
        oSettings.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        oSettings.c_oflag &= ~static_cast<tcflag_t>(OPOST);
        ::tcsetattr(m_oTerminalOfChild.Get(), TCSANOW, &oSettings);
    }

    // Standard error is a socket of packets, so that each piece arrives as it was written.
    void OpenErrors()
    {
        int aSockets[2];
        if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, aSockets) != 0)
            throw std::runtime_error("no socket");
        m_oErrors.Set(aSockets[0]);
        m_oErrorsOfChild.Set(aSockets[1]);
    }

    void Start(const sProgram& oProgram)
    {
        const CDescriptor oNull(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        sStart oStart;
        oStart.nInput = oNull.Get();
        oStart.nOutput = m_oOutput.oWrite.Get();
        oStart.nErrors = m_oErrorsOfChild.Get();
        oStart.bOwnSession = true;
        if (m_pTerminal)
            oStart.sTerminal = m_pTerminal->Name();
        if (m_oHow.bDebugger)
            oStart.fnInChild = [] { ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr); };
        m_nChild = StartProgram(oProgram, oStart);
        m_oOutput.oWrite.Set(-1);
        m_oErrorsOfChild.Set(-1);
    }

    // Lets a stopped child go on. Returns whether the child has ended.
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
        m_oResult.nExitCode = ExitCodeOf(nStatus);
        return true;
    }

    // Takes in what the child has said. Returns false if there was nothing.
    bool Hear(int nMilliseconds)
    {
        std::array<pollfd, 3> aPolls = {pollfd{m_oOutput.oRead.Get(), POLLIN, 0}, pollfd{m_oErrors.Get(), POLLIN, 0},
                                        pollfd{m_pTerminal ? m_pTerminal->Descriptor() : -1, POLLIN, 0}};
        if (::poll(aPolls.data(), aPolls.size(), nMilliseconds) <= 0)
            return false;

        bool bHeard = false;
        for (const pollfd& oPoll : aPolls)
        {
            if (oPoll.revents == 0)
                continue;
            std::string sPart;
            ReadSome(oPoll.fd, sPart, LARGEST_PACKET);
            bHeard = bHeard || !sPart.empty();
            Take(oPoll.fd, sPart);
        }
        return bHeard;
    }

    // An empty part means the end of this output.
    void Take(int nDescriptor, const std::string& sPart)
    {
        if (nDescriptor == m_oOutput.oRead.Get())
        {
            m_oResult.sOutput += sPart;
            if (sPart.empty())
                m_oOutput.oRead.Set(-1);
        }
        else if (nDescriptor == m_oErrors.Get())
        {
            if (!sPart.empty())
                m_oResult.aDebuggerTexts.push_back(sPart);
            else
                m_oErrors.Set(-1);
        }
        else
        {
            m_sShown += sPart;
            NoteIfAsked(QUESTION_PROMPT, "Yes No Cancel");
            NoteIfAsked(ERROR_PROMPT, "OK");
        }
    }

    // What the terminal has shown since the last answer is an empty line, the caption, the text and the prompt.
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

    // The delay gives a child that does not wait for the answer the time to show that.
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
        if (!m_pTerminal->Press(sTyped))
            m_oResult.sOutput += "\n<the user could not answer>";
    }

    const sObservation m_oHow;
    sObservedChild m_oResult;
    pid_t m_nChild;
    std::size_t m_nAnswers; // given so far; a box beyond them is to be answered when it is time
    std::chrono::steady_clock::time_point m_oTimeToAnswer;
    std::string m_sShown;
    std::unique_ptr<CPseudoTerminal> m_pTerminal; // none where there is no user
    CDescriptor m_oTerminalOfChild;
    sPipe m_oOutput;
    CDescriptor m_oErrors;
    CDescriptor m_oErrorsOfChild;
};
} // namespace

sObservedChild RunObserved(const std::string& sScenario, const sObservation& oHow)
{
    return CObserver(sScenario, oHow).Run();
}
