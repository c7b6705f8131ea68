#include <TOVPlatform/TOVSystem.h>

#include <windows.h>

namespace TOVPlatform
{
namespace TOVSystem
{
void OutputDebugText(const char* szText)
{
    ::OutputDebugStringA(szText);
}

bool IsDebuggerAttached()
{
    return ::IsDebuggerPresent() != FALSE;
}

eAnswer AskYesNoCancel(const char* szText, const char* szCaption)
{
    const HWND hDesktop = ::GetDesktopWindow();
    ::SetForegroundWindow(hDesktop);
    switch (::MessageBoxA(hDesktop, szText, szCaption, MB_YESNOCANCEL | MB_TOPMOST))
    {
    case IDYES:
        return eAnswerYes;
    case IDNO:
        return eAnswerNo;
    case IDCANCEL:
        return eAnswerCancel;
    default:
        return eAnswerNone;
    }
}

void ShowError(const char* szText, const char* szCaption)
{
    ::MessageBoxA(NULL, szText, szCaption, MB_OK | MB_ICONHAND);
}

void EndProcess(int nExitCode)
{
    ::ExitProcess(static_cast<UINT>(nExitCode));
}
} // namespace TOVSystem
} // namespace TOVPlatform
