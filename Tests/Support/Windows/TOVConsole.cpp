#include "Support/Windows/TOVConsole.h"

#include <stdexcept>

HANDLE OpenConsole(COORD oSize)
{
    ::FreeConsole();
    if (!::AllocConsole())
        throw std::runtime_error("no console");
    SECURITY_ATTRIBUTES oInherited = {sizeof(oInherited), NULL, TRUE};
    const HANDLE hScreen = ::CreateFileA("CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                         &oInherited, OPEN_EXISTING, 0, NULL);

    // A console that has ended after it was allocated shows only when it is used.
    CONSOLE_SCREEN_BUFFER_INFO oInfo = {};
    ::SetConsoleScreenBufferSize(hScreen, oSize);
    if (!::GetConsoleScreenBufferInfo(hScreen, &oInfo) || oInfo.dwSize.X != oSize.X || oInfo.dwSize.Y != oSize.Y)
    {
        ::CloseHandle(hScreen);
        ::FreeConsole();
        throw std::runtime_error("the console does not work; Wine's ends at once where the system has no font");
    }
    return hScreen;
}
