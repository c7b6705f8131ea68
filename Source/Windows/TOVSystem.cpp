#include <TOVPlatform/Backend/TOVSystem.h>

#include <Debug/TOVException.h>

#include <cstdlib>
#include <windows.h>

#include <mmsystem.h>

namespace TOVPlatform
{
namespace Backend
{
namespace
{
UINT s_nExitCode = 0; // of a process that is to end at once

void EndNow()
{
    ::TerminateProcess(::GetCurrentProcess(), s_nExitCode);
}
} // namespace

// Nothing has to be registered: the system reaches the library through its exports and callbacks.
void PrepareProcess()
{
}

void OutputDebugText(const char* szText)
{
    ::OutputDebugStringA(szText);
}

// Not only a debugger of this process reads the system's output.
bool HasDebugOutput()
{
    return true;
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
    ::MessageBoxA(nullptr, szText, szCaption, MB_OK | MB_ICONHAND);
}

// ExitProcess skips the program's clean-up, but lets each library clean up. The function that is registered last runs
// first then, and ends the process before anything of this library is cleaned up.
void EndProcess(int nExitCode)
{
    s_nExitCode = static_cast<UINT>(nExitCode);
    std::atexit(&EndNow);
    ::ExitProcess(s_nExitCode);
}

void* FindInMainProgram(const char* szFunction)
{
    return reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA(nullptr), szFunction));
}

sReading ReadPerformanceCounter()
{
    LARGE_INTEGER oTicks = {};
    const bool bRead = ::QueryPerformanceCounter(&oTicks) != 0;
    return {bRead, oTicks.QuadPart};
}

sReading ReadPerformanceFrequency()
{
    LARGE_INTEGER oFrequency = {};
    const bool bRead = ::QueryPerformanceFrequency(&oFrequency) != 0;
    return {bRead, oFrequency.QuadPart};
}

tDword ReadMilliseconds()
{
    return ::timeGetTime();
}
} // namespace Backend
} // namespace TOVPlatform
