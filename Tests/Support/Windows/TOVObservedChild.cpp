#include "Support/TOVObservedChild.h"
#include "Support/TOVChildProcess.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <windows.h>

namespace
{
const int DEADLINE_MILLISECONDS = 120000;
const DWORD FAILED = 0xC0DE0000u;

std::string TextOf(HWND hWindow)
{
    char szText[8192] = "";
    DWORD_PTR dwLength = 0;
    ::SendMessageTimeoutA(hWindow, WM_GETTEXT, sizeof(szText), reinterpret_cast<LPARAM>(szText), SMTO_NORMAL, 10000,
                          &dwLength);
    return szText;
}

std::string ClassOf(HWND hWindow)
{
    char szClass[64] = "";
    ::GetClassNameA(hWindow, szClass, sizeof(szClass));
    return szClass;
}

struct sSearch
{
    DWORD dwProcess;
    HWND hFound;
};

BOOL CALLBACK IsBoxOfProcess(HWND hWindow, LPARAM lSearch)
{
    sSearch& oSearch = *reinterpret_cast<sSearch*>(lSearch);
    DWORD dwOwner = 0;
    ::GetWindowThreadProcessId(hWindow, &dwOwner);
    if (dwOwner == oSearch.dwProcess && ::IsWindowVisible(hWindow) && ClassOf(hWindow) == "#32770")
        oSearch.hFound = hWindow;
    return oSearch.hFound == NULL;
}

// The message box that a process shows now, or NULL.
HWND FindBox(DWORD dwProcess)
{
    sSearch oSearch = {dwProcess, NULL};
    ::EnumWindows(&IsBoxOfProcess, reinterpret_cast<LPARAM>(&oSearch));
    return oSearch.hFound;
}

struct sParts
{
    std::string sText;
    std::vector<int> aButtons;
};

BOOL CALLBACK CollectPart(HWND hPart, LPARAM lParts)
{
    sParts& oParts = *reinterpret_cast<sParts*>(lParts);
    if (ClassOf(hPart) == "Static")
        oParts.sText += TextOf(hPart);
    else if (ClassOf(hPart) == "Button" && (::GetWindowLongA(hPart, GWL_STYLE) & WS_VISIBLE) != 0)
        oParts.aButtons.push_back(::GetDlgCtrlID(hPart));
    return TRUE;
}

std::string NameButtons(std::vector<int> aButtons)
{
    std::sort(aButtons.begin(), aButtons.end());
    if (aButtons == std::vector<int>{IDCANCEL, IDYES, IDNO})
        return "Yes No Cancel";
    // The one button of a plain box bears either of two numbers.
    if (aButtons == std::vector<int>{IDOK} || aButtons == std::vector<int>{IDCANCEL})
        return "OK";
    return "others";
}

sShownBox Describe(HWND hBox)
{
    sParts oParts;
    ::EnumChildWindows(hBox, &CollectPart, reinterpret_cast<LPARAM>(&oParts));
    return {TextOf(hBox), oParts.sText, NameButtons(oParts.aButtons), ""};
}

WPARAM ButtonOf(eUserAnswer eAnswer, const sShownBox& oBox)
{
    if (oBox.sButtons == "OK" || eAnswer == eUserOk)
        return IDOK;
    if (eAnswer == eUserYes)
        return IDYES;
    if (eAnswer == eUserNo)
        return IDNO;
    return eAnswer == eUserCancel ? IDCANCEL : IDRETRY;
}

// What comes out of a pipe, read on a thread of its own until its other end is closed.
class COutput
{
public:
    explicit COutput(HANDLE hRead) : m_hRead(hRead), m_oThread([this] { Read(); }) {}

    // All of it, once the process has ended.
    std::string Finish()
    {
        m_oThread.join();
        return SoFar();
    }

    // Text files end their lines in their own way here.
    std::string SoFar()
    {
        const std::lock_guard<std::mutex> oGuard(m_oMutex);
        std::string sText = m_sText;
        sText.erase(std::remove(sText.begin(), sText.end(), '\r'), sText.end());
        return sText;
    }

private:
    void Read()
    {
        char szPart[4096];
        DWORD dwRead = 0;
        while (::ReadFile(m_hRead, szPart, sizeof(szPart), &dwRead, NULL) && dwRead > 0)
        {
            const std::lock_guard<std::mutex> oGuard(m_oMutex);
            m_sText.append(szPart, dwRead);
        }
    }

    const HANDLE m_hRead;
    std::mutex m_oMutex;
    std::string m_sText;
    std::thread m_oThread; // last, since it uses the others at once
};

// Watches for the boxes of a process on a thread of its own and answers them.
class CUser
{
public:
    CUser(DWORD dwProcess, const std::vector<eUserAnswer>& aAnswers, COutput& oOutput)
        : m_dwProcess(dwProcess), m_aAnswers(aAnswers), m_oOutput(oOutput), m_bEnd(false),
          m_oThread([this] { Watch(); })
    {
    }

    // Ends the watch and hands over what was seen.
    std::vector<sShownBox> Leave()
    {
        m_bEnd = true;
        m_oThread.join();
        return m_aBoxes;
    }

private:
    void Watch()
    {
        while (!m_bEnd)
        {
            if (HWND hBox = FindBox(m_dwProcess))
                Answer(hBox);
            ::Sleep(10);
        }
    }

    void Answer(HWND hBox)
    {
        sShownBox oBox = Describe(hBox);
        // A process that does not wait has the time to show it.
        ::Sleep(100);
        oBox.sSaid = m_oOutput.SoFar();
        const eUserAnswer eAnswer = m_aBoxes.size() < m_aAnswers.size() ? m_aAnswers[m_aBoxes.size()] : eUserOther;
        m_aBoxes.push_back(oBox);
        ::PostMessageA(hBox, WM_COMMAND, ButtonOf(eAnswer, oBox), 0);
        while (!m_bEnd && ::IsWindow(hBox))
            ::Sleep(5);
    }

    const DWORD m_dwProcess;
    const std::vector<eUserAnswer> m_aAnswers;
    COutput& m_oOutput;
    std::vector<sShownBox> m_aBoxes;
    std::atomic<bool> m_bEnd;
    std::thread m_oThread; // last, since it uses the others at once
};

// The debugger's loop: lets the process go on after each event, and keeps the texts. Gives the exit code.
DWORD Debug(const PROCESS_INFORMATION& oProcess, std::vector<std::string>& aTexts)
{
    const auto oDeadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(DEADLINE_MILLISECONDS);
    while (std::chrono::steady_clock::now() < oDeadline)
    {
        DEBUG_EVENT oEvent = {};
        if (!::WaitForDebugEvent(&oEvent, 100))
            continue;

        DWORD dwReaction = DBG_CONTINUE;
        if (oEvent.dwDebugEventCode == OUTPUT_DEBUG_STRING_EVENT)
        {
            const OUTPUT_DEBUG_STRING_INFO& oText = oEvent.u.DebugString;
            std::vector<char> aText(oText.nDebugStringLength + 1u, '\0');
            SIZE_T nRead = 0;
            ::ReadProcessMemory(oProcess.hProcess, oText.lpDebugStringData, aText.data(), oText.nDebugStringLength,
                                &nRead);
            aTexts.push_back(oText.fUnicode ? "<wide text>" : aText.data());
        }
        else if (oEvent.dwDebugEventCode == EXCEPTION_DEBUG_EVENT &&
                 oEvent.u.Exception.ExceptionRecord.ExceptionCode != EXCEPTION_BREAKPOINT)
            dwReaction = DBG_EXCEPTION_NOT_HANDLED;
        else if (oEvent.dwDebugEventCode == CREATE_PROCESS_DEBUG_EVENT)
            ::CloseHandle(oEvent.u.CreateProcessInfo.hFile);
        else if (oEvent.dwDebugEventCode == LOAD_DLL_DEBUG_EVENT)
            ::CloseHandle(oEvent.u.LoadDll.hFile);

        const bool bEnded = oEvent.dwDebugEventCode == EXIT_PROCESS_DEBUG_EVENT;
        const DWORD dwExitCode = oEvent.u.ExitProcess.dwExitCode;
        ::ContinueDebugEvent(oEvent.dwProcessId, oEvent.dwThreadId, dwReaction);
        if (bEnded)
            return dwExitCode;
    }
    ::TerminateProcess(oProcess.hProcess, FAILED);
    return FAILED;
}

DWORD WaitForEnd(const PROCESS_INFORMATION& oProcess)
{
    DWORD dwExitCode = FAILED;
    if (::WaitForSingleObject(oProcess.hProcess, DEADLINE_MILLISECONDS) != WAIT_OBJECT_0)
        ::TerminateProcess(oProcess.hProcess, FAILED);
    else
        ::GetExitCodeProcess(oProcess.hProcess, &dwExitCode);
    return dwExitCode;
}

std::string CommandLine(const std::vector<std::string>& aCommand)
{
    std::string sCommandLine;
    for (const std::string& sArgument : aCommand)
        sCommandLine += (sCommandLine.empty() ? "\"" : " \"") + sArgument + "\"";
    return sCommandLine;
}
} // namespace

sObservedChild RunObserved(const std::string& sScenario, const sObservation& oHow)
{
    SECURITY_ATTRIBUTES oInherited = {sizeof(oInherited), NULL, TRUE};
    HANDLE hRead = NULL;
    HANDLE hWrite = NULL;
    if (!::CreatePipe(&hRead, &hWrite, &oInherited, 0))
        throw std::runtime_error("no pipe");
    ::SetHandleInformation(hRead, HANDLE_FLAG_INHERIT, 0);

    STARTUPINFOA oStartup = {};
    oStartup.cb = sizeof(oStartup);
    oStartup.dwFlags = STARTF_USESTDHANDLES;
    oStartup.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    oStartup.hStdOutput = hWrite;
    oStartup.hStdError = hWrite;
    PROCESS_INFORMATION oProcess = {};
    std::string sCommandLine = CommandLine(ChildCommand(sScenario, oHow.aArguments));
    if (!::CreateProcessA(NULL, &sCommandLine[0], NULL, NULL, TRUE, oHow.bDebugger ? DEBUG_ONLY_THIS_PROCESS : 0, NULL,
                          NULL, &oStartup, &oProcess))
        throw std::runtime_error("no child process");
    ::CloseHandle(hWrite);

    sObservedChild oResult = {-1, "", {}, {}};
    COutput oOutput(hRead);
    CUser oUser(oProcess.dwProcessId, oHow.aAnswers, oOutput);
    const DWORD dwExitCode = oHow.bDebugger ? Debug(oProcess, oResult.aDebuggerTexts) : WaitForEnd(oProcess);
    oResult.aBoxes = oUser.Leave();
    oResult.sOutput = oOutput.Finish();
    if (dwExitCode != FAILED)
        oResult.nExitCode = static_cast<int>(dwExitCode & 0xff);

    ::CloseHandle(hRead);
    ::CloseHandle(oProcess.hThread);
    ::CloseHandle(oProcess.hProcess);
    return oResult;
}
