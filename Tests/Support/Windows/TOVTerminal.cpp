#include "Support/TOVTerminal.h"
#include "Support/Windows/TOVStartedProgram.h"

#include <algorithm>
#include <stdexcept>

namespace
{
// Wide enough for any line that is printed on it.
constexpr SHORT WIDTH = 250;
constexpr SHORT HEIGHT = 60;

// A new console in the place of this program's own. It is this program's too, because a console that belonged to the
// child alone would vanish together with it, before it could be read.
class CConsole
{
public:
    // Throws std::runtime_error where no console works, so that no test waits for what never appears.
    explicit CConsole(int nColumns)
    {
        ::FreeConsole();
        if (!::AllocConsole())
            throw std::runtime_error("no console");
        m_hScreen = Open("CONOUT$");
        m_hKeys = Open("CONIN$");

        // A console that has ended after it was allocated shows only when it is used.
        ::SetConsoleScreenBufferSize(m_hScreen, {WIDTH, HEIGHT});
        if (!::GetConsoleScreenBufferInfo(m_hScreen, &m_oAtBegin) || m_oAtBegin.dwSize.X != WIDTH ||
            m_oAtBegin.dwSize.Y != HEIGHT)
        {
            Close();
            throw std::runtime_error("the console does not work; Wine's ends at once where the system has no font");
        }
        const SMALL_RECT oWindow = {0, 0, static_cast<SHORT>(nColumns - 1), 23};
        ::SetConsoleWindowInfo(m_hScreen, TRUE, &oWindow);
    }

    ~CConsole() { Close(); }

    CConsole(const CConsole&) = delete;
    CConsole& operator=(const CConsole&) = delete;

    HANDLE Screen() const { return m_hScreen; }
    HANDLE Keys() const { return m_hKeys; }

    // The attribute of text that has no colour.
    WORD UsualAttribute() const { return m_oAtBegin.wAttributes; }

private:
    // A handle that a program inherits.
    static HANDLE Open(const char* szName)
    {
        SECURITY_ATTRIBUTES oInherited = {sizeof(oInherited), nullptr, TRUE};
        return ::CreateFileA(szName, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &oInherited,
                             OPEN_EXISTING, 0, nullptr);
    }

    void Close()
    {
        ::CloseHandle(m_hKeys);
        ::CloseHandle(m_hScreen);
        ::FreeConsole();
    }

    HANDLE m_hScreen;
    HANDLE m_hKeys;
    CONSOLE_SCREEN_BUFFER_INFO m_oAtBegin = {};
};

std::string NameOfColour(WORD wAttribute, WORD wUsual)
{
    if (wAttribute == wUsual)
        return "none";
    switch (wAttribute & 0x0f)
    {
    case FOREGROUND_INTENSITY:
        return "grey";
    case FOREGROUND_RED | FOREGROUND_GREEN:
        return "yellow";
    case FOREGROUND_RED:
        return "red";
    case FOREGROUND_RED | FOREGROUND_INTENSITY:
        return "bright red";
    default:
        return "attribute " + std::to_string(wAttribute);
    }
}

sShownLine ReadLine(const CConsole& oConsole, SHORT nLine)
{
    std::string sLine(WIDTH, ' ');
    std::vector<WORD> aAttributes(WIDTH);
    DWORD dwRead = 0;
    ::ReadConsoleOutputCharacterA(oConsole.Screen(), &sLine[0], WIDTH, {0, nLine}, &dwRead);
    ::ReadConsoleOutputAttribute(oConsole.Screen(), aAttributes.data(), WIDTH, {0, nLine}, &dwRead);
    sLine.resize(sLine.find_last_not_of(' ') + 1);

    const auto pEnd = aAttributes.begin() + static_cast<std::ptrdiff_t>(sLine.size());
    const bool bOneColour = std::count(aAttributes.begin(), pEnd, aAttributes[0]) == pEnd - aAttributes.begin();
    return {sLine, bOneColour ? NameOfColour(aAttributes[0], oConsole.UsualAttribute()) : "mixed"};
}
} // namespace

struct CTerminal::sState
{
    sState(const sProgram& oProgram, int nColumns)
        : oConsole(nColumns), oStarted(oProgram, oConsole.Keys(), oConsole.Screen(), oConsole.Screen())
    {
    }

    CConsole oConsole;
    CStartedProgram oStarted;
};

CTerminal::CTerminal(const sProgram& oProgram, int nColumns) : m_pState(new sState(oProgram, nColumns))
{
    // This program hears the keys as well. It ignores them only now, because the other one would have inherited that.
    ::SetConsoleCtrlHandler(nullptr, TRUE);
}

CTerminal::~CTerminal()
{
    Kill();
    ::SetConsoleCtrlHandler(nullptr, FALSE);
}

std::vector<sShownLine> CTerminal::ScreenInColours() const
{
    std::vector<sShownLine> aLines;
    for (SHORT nLine = 0; nLine < HEIGHT; ++nLine)
    {
        const sShownLine oLine = ReadLine(m_pState->oConsole, nLine);
        if (!oLine.sText.empty())
            aLines.push_back(oLine);
    }
    return aLines;
}

bool CTerminal::IsAtBeginOfLine() const
{
    CONSOLE_SCREEN_BUFFER_INFO oInfo = {};
    return ::GetConsoleScreenBufferInfo(m_pState->oConsole.Screen(), &oInfo) && oInfo.dwCursorPosition.X == 0;
}

bool CTerminal::WaitUntil(const std::function<bool(const std::vector<std::string>&)>& fnWanted)
{
    const auto oDeadline = std::chrono::steady_clock::now() + CHILD_DEADLINE;
    for (;;)
    {
        // In this order, so that what the program wrote last counts too.
        const bool bEnded = m_pState->oStarted.EndsWithin(10);
        if (fnWanted(Screen()))
            return true;
        if (bEnded || std::chrono::steady_clock::now() > oDeadline)
            return false;
    }
}

void CTerminal::PressInterruptKeys()
{
    if (!::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0))
        throw std::runtime_error("the keys cannot be pressed");
}

void CTerminal::Kill()
{
    m_pState->oStarted.Kill();
}

int CTerminal::WaitForEnd()
{
    m_pState->oStarted.WaitForEnd();
    return m_pState->oStarted.ExitCode();
}

unsigned long CTerminal::ProcessId() const
{
    return m_pState->oStarted.ProcessId();
}
