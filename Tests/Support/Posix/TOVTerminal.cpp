#include "Support/TOVTerminal.h"
#include "Support/Posix/TOVPseudoTerminal.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>

namespace
{
std::string NameOfColour(const std::string& sAttribute)
{
    static const std::map<std::string, std::string> s_aNames = {
        {"0", "none"}, {"90", "grey"}, {"33", "yellow"}, {"31", "red"}, {"91", "bright red"}};
    const auto pName = s_aNames.find(sAttribute);
    return pName != s_aNames.end() ? pName->second : "attribute " + sAttribute;
}

// A screen of endless size. A carriage return goes back to the begin of the line, and what comes next is written over
// what stood there; the terminal puts one before each line feed. Of control sequences the screen knows "erase to the
// end of the line" and the attributes of text.
class CScreen
{
public:
    explicit CScreen(const std::string& sOutput)
    {
        for (std::size_t n = 0; n < sOutput.size(); ++n)
        {
            if (sOutput[n] == '\x1b')
                n = ObeySequence(sOutput, n);
            else if (sOutput[n] == '\r')
                m_nColumn = 0;
            else if (sOutput[n] == '\n')
                EndLine();
            else
                Show(sOutput[n]);
        }
    }

    std::vector<sShownLine> Lines() const
    {
        std::vector<sShownLine> aLines;
        for (const sLine& oLine : m_aLines)
        {
            const std::string sText = oLine.sText.substr(0, oLine.sText.find_last_not_of(' ') + 1);
            if (!sText.empty())
                aLines.push_back({sText, oLine.ColourOf(sText.size())});
        }
        return aLines;
    }

    bool IsAtBeginOfLine() const { return m_nColumn == 0; }

private:
    struct sLine
    {
        std::string sText;
        std::vector<std::string> aColours; // of each character
        bool bColourGoesOn = false;        // after the end of the line

        std::string ColourOf(std::size_t nCharacters) const
        {
            const auto pEnd = aColours.begin() + static_cast<std::ptrdiff_t>(nCharacters);
            const bool bOne = std::count(aColours.begin(), pEnd, aColours[0]) == pEnd - aColours.begin();
            return bOne && !bColourGoesOn ? aColours[0] : "mixed";
        }
    };

    // Returns the index of the last character of the sequence. The first character of any other one is shown as it is.
    std::size_t ObeySequence(const std::string& sOutput, std::size_t nStart)
    {
        const std::size_t nParameter = nStart + 2;
        const std::size_t nEnd = sOutput.find_first_not_of("0123456789", nParameter);
        const char cCommand =
            nEnd != std::string::npos && sOutput.compare(nStart, 2, "\x1b[") == 0 ? sOutput[nEnd] : '\0';
        if (cCommand == 'm')
            m_sColour = NameOfColour(sOutput.substr(nParameter, nEnd - nParameter));
        else if (cCommand == 'K' && nEnd == nParameter)
            SetWidth(m_nColumn);
        else
        {
            Show(sOutput[nStart]);
            return nStart;
        }
        return nEnd;
    }

    void EndLine()
    {
        m_aLines.back().bColourGoesOn = m_sColour != "none";
        m_aLines.emplace_back();
    }

    void Show(char cCharacter)
    {
        SetWidth(std::max(m_aLines.back().sText.size(), m_nColumn + 1));
        m_aLines.back().sText[m_nColumn] = cCharacter;
        m_aLines.back().aColours[m_nColumn] = m_sColour;
        ++m_nColumn;
    }

    void SetWidth(std::size_t nWidth)
    {
        m_aLines.back().sText.resize(nWidth, ' ');
        m_aLines.back().aColours.resize(nWidth, "none");
    }

    std::vector<sLine> m_aLines{1};
    std::size_t m_nColumn = 0;
    std::string m_sColour = "none";
};
} // namespace

struct CTerminal::sState
{
    explicit sState(int nColumns) : oTerminal(nColumns) {}

    CPseudoTerminal oTerminal;
    pid_t nProcess = -1;
    bool bEnded = false;
    int nExitCode = -1;
    std::string sOutput;

    // Takes what comes within a tenth of a second. Returns false at the end of the output.
    bool Read()
    {
        pollfd oPoll = {oTerminal.Descriptor(), POLLIN, 0};
        return ::poll(&oPoll, 1, 100) <= 0 || ReadSome(oTerminal.Descriptor(), sOutput);
    }
};

CTerminal::CTerminal(const sProgram& oProgram, int nColumns) : m_pState(new sState(nColumns))
{
    // The new process inherits this side. So its end is noticed even if it ends before it opens the terminal itself.
    const CDescriptor oOther(::open(m_pState->oTerminal.Name().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    sStart oStart;
    oStart.bOwnSession = true;
    oStart.sTerminal = m_pState->oTerminal.Name();
    m_pState->nProcess = StartProgram(oProgram, oStart);
}

CTerminal::~CTerminal()
{
    Kill();
    WaitForEnd();
}

std::vector<sShownLine> CTerminal::ScreenInColours() const
{
    return CScreen(m_pState->sOutput).Lines();
}

bool CTerminal::IsAtBeginOfLine() const
{
    return CScreen(m_pState->sOutput).IsAtBeginOfLine();
}

bool CTerminal::WaitUntil(const std::function<bool(const std::vector<std::string>&)>& fnWanted)
{
    const auto oDeadline = std::chrono::steady_clock::now() + CHILD_DEADLINE;
    while (!fnWanted(Screen()))
        if (std::chrono::steady_clock::now() > oDeadline || !m_pState->Read())
            return false;
    return true;
}

void CTerminal::PressInterruptKeys()
{
    if (!m_pState->oTerminal.Press("\x03"))
        throw std::runtime_error("the keys cannot be pressed");
}

void CTerminal::Kill()
{
    if (!m_pState->bEnded)
        ::kill(m_pState->nProcess, SIGKILL);
}

int CTerminal::WaitForEnd()
{
    if (m_pState->bEnded)
        return m_pState->nExitCode;
    const auto oDeadline = std::chrono::steady_clock::now() + CHILD_DEADLINE;
    while (m_pState->Read())
        if (std::chrono::steady_clock::now() > oDeadline)
            Kill();
    m_pState->nExitCode = WaitForExitCode(m_pState->nProcess);
    m_pState->bEnded = true;
    return m_pState->nExitCode;
}

unsigned long CTerminal::ProcessId() const
{
    return static_cast<unsigned long>(m_pState->nProcess);
}
