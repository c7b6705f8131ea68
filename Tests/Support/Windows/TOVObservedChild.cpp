#include "Support/TOVObservedChild.h"
#include "Support/Windows/TOVStartedProgram.h"

#include <algorithm>
#include <atomic>

namespace
{
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
    return oSearch.hFound == nullptr;
}

// The message box that a process shows now, or null.
HWND FindBox(DWORD dwProcess)
{
    sSearch oSearch = {dwProcess, nullptr};
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
    // The one button of a plain box has one of two numbers.
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

// Watches for the boxes of a process on a thread of its own and answers them.
class CUser
{
public:
    CUser(DWORD dwProcess, const std::vector<eUserAnswer>& aAnswers, COutputPipe& oOutput)
        : m_dwProcess(dwProcess), m_aAnswers(aAnswers), m_oOutput(oOutput), m_bEnd(false),
          m_oThread([this] { Watch(); })
    {
    }

    // Ends the watch and returns what was seen.
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
        // The delay gives a child that does not wait for the answer the time to show that.
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
    COutputPipe& m_oOutput;
    std::vector<sShownBox> m_aBoxes;
    std::atomic<bool> m_bEnd;
    std::thread m_oThread; // last, since it uses the others at once
};

// The debugger's loop: lets the process go on after each event, and keeps the texts. Returns false if the deadline
// passes before the process ends.
bool Debug(const CStartedProgram& oProgram, std::vector<std::string>& aTexts)
{
    const auto oDeadline = std::chrono::steady_clock::now() + CHILD_DEADLINE;
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
            ::ReadProcessMemory(oProgram.Process(), oText.lpDebugStringData, aText.data(), oText.nDebugStringLength,
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
        ::ContinueDebugEvent(oEvent.dwProcessId, oEvent.dwThreadId, dwReaction);
        if (bEnded)
            return true;
    }
    return false;
}
} // namespace

sObservedChild RunObserved(const std::string& sScenario, const sObservation& oHow)
{
    COutputPipe oOutput;
    CStartedProgram oProgram(ScenarioProgram(sScenario, oHow.aArguments), ::GetStdHandle(STD_INPUT_HANDLE),
                             oOutput.ForProgram(), oOutput.ForProgram(), oHow.bDebugger ? DEBUG_ONLY_THIS_PROCESS : 0);
    oOutput.StartReading();

    sObservedChild oResult = {-1, "", {}, {}};
    CUser oUser(oProgram.ProcessId(), oHow.aAnswers, oOutput);
    if (oHow.bDebugger && !Debug(oProgram, oResult.aDebuggerTexts))
        oProgram.Kill();
    oProgram.WaitForEnd();
    oResult.nExitCode = oProgram.ExitCode();
    oResult.aBoxes = oUser.Leave();
    oResult.sOutput = oOutput.Finish();
    return oResult;
}
