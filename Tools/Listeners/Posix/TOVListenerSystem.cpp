#include <Listeners/TOVListenerSystem.h>

#include <Listeners/TOVListenerOutput.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace TOVDebug
{
namespace TOVListenerSystem
{
unsigned long CurrentThread()
{
    return static_cast<unsigned long>(::gettid());
}

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
    return TOVListenerOutput::WriteText(pStream, s_aszBegin[eColour] + sText + szEnd);
}
} // namespace TOVListenerSystem
} // namespace TOVDebug
