#include <Listeners/TOVListenerSystem.h>

#include <Listeners/TOVListenerOutput.h>

#include <io.h>
#include <windows.h>

namespace TOVDebug
{
namespace TOVListenerSystem
{
namespace
{
HANDLE ConsoleOf(std::FILE* pStream)
{
    return reinterpret_cast<HANDLE>(::_get_osfhandle(::_fileno(pStream)));
}

WORD AttributeOf(eLineColour eColour)
{
    switch (eColour)
    {
    case eColourGrey:
        return FOREGROUND_INTENSITY;
    case eColourYellow:
        return FOREGROUND_RED | FOREGROUND_GREEN;
    case eColourRed:
        return FOREGROUND_RED;
    case eColourBrightRed:
        return FOREGROUND_RED | FOREGROUND_INTENSITY;
    default:
        return FOREGROUND_RED | FOREGROUND_GREEN | FOREGROUND_BLUE;
    }
}
} // namespace

unsigned long CurrentThread()
{
    return ::GetCurrentThreadId();
}

std::tm LocalTime(std::time_t nTime)
{
    // The runtime keeps a separate result for each thread.
    const std::tm* pLocal = std::localtime(&nTime);
    return pLocal != nullptr ? *pLocal : std::tm();
}

std::FILE* OpenFile(const std::string& sPath, bool bAppend)
{
    return std::fopen(sPath.c_str(), bAppend ? "abN" : "wbN");
}

ePresence PresenceOf(const std::string& sPath)
{
    if (::GetFileAttributesA(sPath.c_str()) != INVALID_FILE_ATTRIBUTES)
        return ePresent;
    const DWORD dwError = ::GetLastError();
    return dwError == ERROR_FILE_NOT_FOUND || dwError == ERROR_PATH_NOT_FOUND ? eAbsent : ePresenceUnknown;
}

unsigned long long SizeOf(std::FILE* pFile)
{
    const long long llSize = ::_filelengthi64(::_fileno(pFile));
    return llSize > 0 ? static_cast<unsigned long long>(llSize) : 0;
}

bool ShowsColours(std::FILE* pStream)
{
    CONSOLE_SCREEN_BUFFER_INFO oInfo;
    return ::_fileno(pStream) >= 0 && ::GetConsoleScreenBufferInfo(ConsoleOf(pStream), &oInfo) != 0;
}

bool WriteLine(std::FILE* pStream, eLineColour eColour, const std::string& sText)
{
    if (eColour == eColourNone)
        return TOVListenerOutput::WriteText(pStream, sText + '\n');

    // All versions of Windows have the attributes of a console, which apply to all text that is written afterwards.
    const HANDLE hConsole = ConsoleOf(pStream);
    CONSOLE_SCREEN_BUFFER_INFO oBefore = {};
    std::fflush(pStream);
    ::GetConsoleScreenBufferInfo(hConsole, &oBefore);
    const WORD wBackground = oBefore.wAttributes & ~AttributeOf(eColourNone) & ~FOREGROUND_INTENSITY;
    ::SetConsoleTextAttribute(hConsole, wBackground | AttributeOf(eColour));
    const bool bWritten = TOVListenerOutput::WriteText(pStream, sText) && std::fflush(pStream) == 0;
    ::SetConsoleTextAttribute(hConsole, oBefore.wAttributes);
    return TOVListenerOutput::WriteText(pStream, "\n") && bWritten;
}
} // namespace TOVListenerSystem
} // namespace TOVDebug
