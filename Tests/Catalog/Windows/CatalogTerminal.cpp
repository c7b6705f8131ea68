#include "Catalog/CatalogTerminal.h"
#include "Catalog/Windows/CatalogCommandLine.h"
#include "Support/Windows/TOVConsole.h"

#include <stdexcept>
#include <windows.h>

namespace
{
const DWORD DEADLINE = 240000;
const DWORD ENDED_FROM_OUTSIDE = 0xC0DE0000u;
} // namespace

struct CCatalogTerminal::sState
{
    HANDLE hScreen = INVALID_HANDLE_VALUE;
    PROCESS_INFORMATION oProcess = {};

    std::string Line(SHORT nLine, SHORT nWidth)
    {
        std::string sLine(static_cast<std::size_t>(nWidth), ' ');
        DWORD dwRead = 0;
        ::ReadConsoleOutputCharacterA(hScreen, &sLine[0], static_cast<DWORD>(nWidth), {0, nLine}, &dwRead);
        return sLine.substr(0, sLine.find_last_not_of(' ') + 1);
    }
};

CCatalogTerminal::CCatalogTerminal(const std::vector<std::string>& aArguments, const std::string& sFolder)
    : m_pState(new sState)
{
    // Wide enough for any line that is printed here.
    m_pState->hScreen = OpenConsole({250, 50});
    SECURITY_ATTRIBUTES oInherited = {sizeof(oInherited), NULL, TRUE};
    const HANDLE hKeys = ::CreateFileA("CONIN$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                       &oInherited, OPEN_EXISTING, 0, NULL);

    STARTUPINFOA oStartup = {};
    oStartup.cb = sizeof(oStartup);
    oStartup.dwFlags = STARTF_USESTDHANDLES;
    oStartup.hStdInput = hKeys;
    oStartup.hStdOutput = m_pState->hScreen;
    oStartup.hStdError = m_pState->hScreen;
    std::string sCommandLine = CatalogCommandLine(aArguments);
    const BOOL bStarted = ::CreateProcessA(NULL, &sCommandLine[0], NULL, NULL, TRUE, 0, NULL, sFolder.c_str(),
                                           &oStartup, &m_pState->oProcess);
    ::CloseHandle(hKeys);
    if (!bStarted)
        throw std::runtime_error("no child process");
    // After the start: the other would inherit that it does not hear the keys.
    ::SetConsoleCtrlHandler(NULL, TRUE);
}

CCatalogTerminal::~CCatalogTerminal()
{
    Kill();
    ::CloseHandle(m_pState->oProcess.hThread);
    ::CloseHandle(m_pState->oProcess.hProcess);
    ::CloseHandle(m_pState->hScreen);
    ::FreeConsole();
    ::SetConsoleCtrlHandler(NULL, FALSE);
}

bool CCatalogTerminal::WaitUntil(const std::function<bool(const std::vector<std::string>&)>& fnWanted)
{
    const DWORD dwStart = ::GetTickCount();
    for (;;)
    {
        // In this order: what it wrote last counts too.
        const bool bEnded = ::WaitForSingleObject(m_pState->oProcess.hProcess, 10) == WAIT_OBJECT_0;
        if (fnWanted(Screen()))
            return true;
        if (bEnded || ::GetTickCount() - dwStart > DEADLINE)
            return false;
    }
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
    if (!::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0))
        throw std::runtime_error("the keys cannot be pressed");
}

void CCatalogTerminal::Kill()
{
    ::TerminateProcess(m_pState->oProcess.hProcess, ENDED_FROM_OUTSIDE);
    ::WaitForSingleObject(m_pState->oProcess.hProcess, DEADLINE);
}

int CCatalogTerminal::WaitForEnd()
{
    if (::WaitForSingleObject(m_pState->oProcess.hProcess, DEADLINE) != WAIT_OBJECT_0)
        Kill();
    DWORD dwExitCode = ENDED_FROM_OUTSIDE;
    ::GetExitCodeProcess(m_pState->oProcess.hProcess, &dwExitCode);
    return dwExitCode <= 255 ? static_cast<int>(dwExitCode) : -1;
}

std::vector<std::string> CCatalogTerminal::Screen()
{
    CONSOLE_SCREEN_BUFFER_INFO oInfo = {};
    ::GetConsoleScreenBufferInfo(m_pState->hScreen, &oInfo);
    std::vector<std::string> aLines;
    for (SHORT nLine = 0; nLine < oInfo.dwSize.Y; ++nLine)
    {
        const std::string sLine = m_pState->Line(nLine, oInfo.dwSize.X);
        if (!sLine.empty())
            aLines.push_back(sLine);
    }
    return aLines;
}

unsigned long CCatalogTerminal::ProcessId() const
{
    return m_pState->oProcess.dwProcessId;
}
