#include "Listeners/ListenerTerminal.h"
#include "Support/TOVTestSupport.h"
#include "Support/Windows/TOVConsole.h"

#include <stdexcept>
#include <windows.h>

namespace
{
const DWORD DEADLINE = 120000;
const SHORT WIDTH = 200;
const SHORT HEIGHT = 60;

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

sShownLine Read(HANDLE hScreen, SHORT nLine, WORD wUsual)
{
    std::string sLine(WIDTH, ' ');
    std::vector<WORD> aAttributes(WIDTH);
    DWORD dwRead = 0;
    ::ReadConsoleOutputCharacterA(hScreen, &sLine[0], WIDTH, {0, nLine}, &dwRead);
    ::ReadConsoleOutputAttribute(hScreen, aAttributes.data(), WIDTH, {0, nLine}, &dwRead);
    sLine.resize(sLine.find_last_not_of(' ') + 1);
    std::string sColour = NameOfColour(aAttributes[0], wUsual);
    for (std::size_t n = 0; n < sLine.size(); ++n)
        if (NameOfColour(aAttributes[n], wUsual) != sColour)
            sColour = "mixed";
    return {sLine, sColour};
}

void StartAndWait(const std::string& sScenario, const std::vector<std::string>& aArguments, HANDLE hScreen)
{
    STARTUPINFOA oStartup = {};
    oStartup.cb = sizeof(oStartup);
    oStartup.dwFlags = STARTF_USESTDHANDLES;
    oStartup.hStdInput = INVALID_HANDLE_VALUE;
    oStartup.hStdOutput = hScreen;
    oStartup.hStdError = hScreen;
    // No word of these has a space or a quote.
    std::string sCommandLine;
    for (const std::string& sWord : ChildCommand(sScenario, aArguments))
        sCommandLine += '"' + sWord + "\" ";
    PROCESS_INFORMATION oProcess = {};
    if (!::CreateProcessA(NULL, &sCommandLine[0], NULL, NULL, TRUE, 0, NULL, NULL, &oStartup, &oProcess))
        throw std::runtime_error("no child process");
    if (::WaitForSingleObject(oProcess.hProcess, DEADLINE) != WAIT_OBJECT_0)
        ::TerminateProcess(oProcess.hProcess, 99);
    ::CloseHandle(oProcess.hThread);
    ::CloseHandle(oProcess.hProcess);
}
} // namespace

std::vector<sShownLine> ShownOnTerminal(const std::string& sScenario, const std::vector<std::string>& aArguments,
                                        const std::map<std::string, std::string>& aVariables)
{
    const HANDLE hScreen = OpenConsole({WIDTH, HEIGHT});
    CONSOLE_SCREEN_BUFFER_INFO oBefore = {};
    ::GetConsoleScreenBufferInfo(hScreen, &oBefore);

    ::SetEnvironmentVariableA("NO_COLOR", NULL);
    for (const auto& [sName, sValue] : aVariables)
        ::SetEnvironmentVariableA(sName.c_str(), sValue.c_str());
    StartAndWait(sScenario, aArguments, hScreen);
    for (const auto& [sName, sValue] : aVariables)
        ::SetEnvironmentVariableA(sName.c_str(), NULL);

    std::vector<sShownLine> aLines;
    for (SHORT nLine = 0; nLine < HEIGHT; ++nLine)
    {
        sShownLine oLine = Read(hScreen, nLine, oBefore.wAttributes);
        if (!oLine.sText.empty())
            aLines.push_back(oLine);
    }
    ::CloseHandle(hScreen);
    ::FreeConsole();
    return aLines;
}
