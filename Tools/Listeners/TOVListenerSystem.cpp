#include <Listeners/TOVListenerSystem.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#if defined(_WIN32)
#include <io.h>
#include <windows.h>
#else
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace TOVDebug
{
namespace TOVListenerSystem
{
namespace
{
std::atomic<bool> s_bEnding(false);

// This library is cleaned up after the application.
struct sEndMarker
{
    ~sEndMarker()
    {
        s_bEnding = true;
        std::fflush(nullptr);
    }
};
const sEndMarker s_oEndMarker;

bool WriteText(std::FILE* pStream, const std::string& sText)
{
    return std::fwrite(sText.data(), 1, sText.size(), pStream) == sText.size();
}
} // namespace

bool MustFlush(const sTOVLogLine& oLine)
{
    return oLine.IsGrave() || s_bEnding;
}

#if defined(_WIN32)

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
        return WriteText(pStream, sText + '\n');

    // All versions of Windows have the attributes of the console, which apply to all text that is written afterwards.
    const HANDLE hConsole = ConsoleOf(pStream);
    CONSOLE_SCREEN_BUFFER_INFO oBefore = {};
    std::fflush(pStream);
    ::GetConsoleScreenBufferInfo(hConsole, &oBefore);
    const WORD wBackground = oBefore.wAttributes & ~AttributeOf(eColourNone) & ~FOREGROUND_INTENSITY;
    ::SetConsoleTextAttribute(hConsole, wBackground | AttributeOf(eColour));
    const bool bWritten = WriteText(pStream, sText) && std::fflush(pStream) == 0;
    ::SetConsoleTextAttribute(hConsole, oBefore.wAttributes);
    return WriteText(pStream, "\n") && bWritten;
}

#else

std::tm LocalTime(std::time_t nTime)
{
    std::tm oLocal = {};
    ::localtime_r(&nTime, &oLocal);
    return oLocal;
}

std::FILE* OpenFile(const std::string& sPath, bool bAppend)
{
    return std::fopen(sPath.c_str(), bAppend ? "abe" : "wbe");
}

ePresence PresenceOf(const std::string& sPath)
{
    struct stat oStatus;
    if (::lstat(sPath.c_str(), &oStatus) == 0)
        return ePresent;
    return errno == ENOENT ? eAbsent : ePresenceUnknown;
}

unsigned long long SizeOf(std::FILE* pFile)
{
    struct stat oStatus;
    return ::fstat(::fileno(pFile), &oStatus) == 0 && oStatus.st_size > 0
               ? static_cast<unsigned long long>(oStatus.st_size)
               : 0;
}

bool ShowsColours(std::FILE* pStream)
{
    const char* szTerminal = std::getenv("TERM");
    return ::isatty(::fileno(pStream)) != 0 && (szTerminal == nullptr || std::strcmp(szTerminal, "dumb") != 0);
}

bool WriteLine(std::FILE* pStream, eLineColour eColour, const std::string& sText)
{
    // The sequences are in the order of eLineColour.
    static const char* const s_aszBegin[] = {"", "\x1b[90m", "\x1b[33m", "\x1b[31m", "\x1b[91m"};
    const char* szEnd = eColour != eColourNone ? "\x1b[0m\n" : "\n";
    // All is written at once, so that no other output comes between.
    return WriteText(pStream, s_aszBegin[eColour] + sText + szEnd);
}

#endif
} // namespace TOVListenerSystem
} // namespace TOVDebug
