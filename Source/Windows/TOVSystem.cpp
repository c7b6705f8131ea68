#include <TOVPlatform/TOVSystem.h>

#include <Debug/TOVException.h>

#include <windows.h>

#include <mmsystem.h>

namespace TOVPlatform
{
namespace TOVSystem
{
namespace
{
// Set by the thread that ends the process; the clean-up runs on the same one.
bool s_bEnding = false;
UINT s_nExitCode = 0;
} // namespace

// The system calls what it needs by the library's own exports and callbacks.
void PrepareProcess()
{
}

void OutputDebugText(const char* szText)
{
    ::OutputDebugStringA(szText);
}

void ThrowUnheardCheck(const char* /*szExpression*/, const char* /*szFile*/, tDword /*dwLine*/)
{
    throw TOVDebug::CTOVAssertException();
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

// The program's own clean-up is passed over, but each library is told of the end and cleans up then.
void EndProcess(int nExitCode)
{
    s_nExitCode = static_cast<UINT>(nExitCode);
    s_bEnding = true;
    ::ExitProcess(s_nExitCode);
}

void PassOverCleanUp()
{
    if (s_bEnding)
        ::TerminateProcess(::GetCurrentProcess(), s_nExitCode);
}

void* FindInMainProgram(const char* szFunction)
{
    return reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA(NULL), szFunction));
}

bool ReadPerformanceCounter(long long& nTicks)
{
    LARGE_INTEGER oTicks;
    if (!::QueryPerformanceCounter(&oTicks))
        return false;
    nTicks = oTicks.QuadPart;
    return true;
}

bool ReadPerformanceFrequency(long long& nTicksPerSecond)
{
    LARGE_INTEGER oFrequency;
    if (!::QueryPerformanceFrequency(&oFrequency))
        return false;
    nTicksPerSecond = oFrequency.QuadPart;
    return true;
}

tDword ReadMilliseconds()
{
    return ::timeGetTime();
}
} // namespace TOVSystem
} // namespace TOVPlatform
