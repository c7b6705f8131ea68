#include "Support/Windows/TOVBoxCalls.h"
#include "Support/Windows/TOVReplaceImport.h"

#include <cstdio>

static const char* NameOf(HWND hWindow)
{
    if (hWindow == nullptr)
        return "none";
    return hWindow == GetDesktopWindow() ? "desktop" : "other";
}

static int WINAPI TellBox(HWND hOwner, const char* szText, const char* szCaption, UINT uFlags)
{
    std::printf("box flags %x, owner %s; ", uFlags, NameOf(hOwner));
    std::fflush(stdout);
    return MessageBoxA(hOwner, szText, szCaption, uFlags);
}

static BOOL WINAPI TellForeground(HWND hWindow)
{
    std::printf("foreground %s; ", NameOf(hWindow));
    std::fflush(stdout);
    return SetForegroundWindow(hWindow);
}

void TellBoxCalls()
{
    const HMODULE hLibrary = GetModuleHandleA("TOVKernel.dll");
    ReplaceImport(hLibrary, "MessageBoxA", reinterpret_cast<void*>(&TellBox));
    ReplaceImport(hLibrary, "SetForegroundWindow", reinterpret_cast<void*>(&TellForeground));
}
