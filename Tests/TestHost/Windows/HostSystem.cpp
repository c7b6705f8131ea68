#include "TestHost/HostSystem.h"
#include "Support/TOVChildProcess.h"
#include "Support/Windows/TOVConsole.h"

#include <stdexcept>
#include <windows.h>

namespace
{
const DWORD DEADLINE = 100000;
const SHORT WIDTH = 200;
const SHORT HEIGHT = 60;

std::string PathBesideTests(const std::string& sName)
{
    const std::string sTests = PathOfThisProgram();
    return sTests.substr(0, sTests.find_last_of("\\/") + 1) + sName;
}

std::vector<std::string> LinesOnScreen(HANDLE hScreen)
{
    std::vector<std::string> aLines;
    for (SHORT nLine = 0; nLine < HEIGHT; ++nLine)
    {
        std::string sLine(WIDTH, ' ');
        DWORD dwRead = 0;
        ::ReadConsoleOutputCharacterA(hScreen, &sLine[0], WIDTH, {0, nLine}, &dwRead);
        sLine.erase(sLine.find_last_not_of(' ') + 1);
        if (!sLine.empty())
            aLines.push_back(sLine);
    }
    return aLines;
}

bool Shows(const std::vector<std::string>& aLines, const std::string& sText)
{
    for (const std::string& sLine : aLines)
        if (sLine.find(sText) != std::string::npos)
            return true;
    return false;
}

HANDLE StartHost(const std::vector<std::string>& aArguments, HANDLE hScreen)
{
    STARTUPINFOA oStartup = {};
    oStartup.cb = sizeof(oStartup);
    oStartup.dwFlags = STARTF_USESTDHANDLES;
    oStartup.hStdInput = INVALID_HANDLE_VALUE;
    oStartup.hStdOutput = hScreen;
    oStartup.hStdError = hScreen;
    // No argument of these tests has a quote.
    std::string sCommandLine;
    for (const std::string& sWord : HostCommand())
        sCommandLine += '"' + sWord + "\" ";
    for (const std::string& sWord : aArguments)
        sCommandLine += '"' + sWord + "\" ";
    PROCESS_INFORMATION oProcess = {};
    if (!::CreateProcessA(NULL, &sCommandLine[0], NULL, NULL, TRUE, 0, NULL, NULL, &oStartup, &oProcess))
        throw std::runtime_error("no child process");
    ::CloseHandle(oProcess.hThread);
    return oProcess.hProcess;
}
} // namespace

std::vector<std::string> HostCommand()
{
    return {PathBesideTests("tovtest.exe")};
}

std::string PathOfSuites(const std::string& sName)
{
    return PathBesideTests(sName + ".dll");
}

sTerminalRun RunOnTerminal(const std::vector<std::string>& aArguments, const std::string& sText,
                           const std::function<void()>& fnWhenSeen)
{
    const HANDLE hScreen = OpenConsole({WIDTH, HEIGHT});
    const HANDLE hProcess = StartHost(aArguments, hScreen);

    sTerminalRun oRun = {-1, {}, {}};
    const DWORD dwStart = ::GetTickCount();
    while (::WaitForSingleObject(hProcess, 10) != WAIT_OBJECT_0 && ::GetTickCount() - dwStart < DEADLINE)
    {
        const std::vector<std::string> aLines = LinesOnScreen(hScreen);
        if (oRun.aDuring.empty() && Shows(aLines, sText))
        {
            oRun.aDuring = aLines;
            fnWhenSeen();
        }
    }
    DWORD dwExitCode = STILL_ACTIVE;
    ::GetExitCodeProcess(hProcess, &dwExitCode);
    if (dwExitCode == STILL_ACTIVE)
        ::TerminateProcess(hProcess, 0xC0DE0000u);
    oRun.nExitCode = dwExitCode <= 255 ? static_cast<int>(dwExitCode) : -1;
    oRun.aAfter = LinesOnScreen(hScreen);
    ::CloseHandle(hProcess);
    ::CloseHandle(hScreen);
    ::FreeConsole();
    ::SetConsoleCtrlHandler(NULL, FALSE);
    return oRun;
}

void PressInterruptKeys()
{
    // This program hears the keys as well.
    ::SetConsoleCtrlHandler(NULL, TRUE);
    if (!::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0))
        throw std::runtime_error("the keys cannot be pressed");
}

void SetVariable(const char* szName, const std::string& sValue)
{
    ::SetEnvironmentVariableA(szName, sValue.c_str());
}
