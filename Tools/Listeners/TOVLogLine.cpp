#include <Listeners/TOVLogLine.h>

#include <Listeners/TOVListenerSystem.h>
#include <Text/TOVShownText.h>

#include <algorithm>
#include <cstdio>

namespace TOVDebug
{
namespace
{
std::string PrintSeverity(eTOVDebugSeverity eSeverity)
{
    switch (eSeverity)
    {
    case eSeverityTrace:
        return "trace";
    case eSeverityInfo:
        return "info";
    case eSeverityWarning:
        return "warning";
    case eSeverityError:
        return "error";
    case eSeverityFatal:
        return "fatal error";
    }
    return "severity " + std::to_string(static_cast<int>(eSeverity));
}

std::string PrintTime(std::chrono::system_clock::time_point oTime)
{
    const auto oSecond = std::chrono::floor<std::chrono::seconds>(oTime);
    const auto oRest = std::chrono::duration_cast<std::chrono::milliseconds>(oTime - oSecond);
    const std::tm oLocal = TOVListenerSystem::LocalTime(std::chrono::system_clock::to_time_t(oSecond));
    char szTime[100];
    std::snprintf(szTime, sizeof(szTime), "%04d-%02d-%02d %02d:%02d:%02d.%03d", oLocal.tm_year + 1900,
                  oLocal.tm_mon + 1, oLocal.tm_mday, oLocal.tm_hour, oLocal.tm_min, oLocal.tm_sec,
                  static_cast<int>(oRest.count()));
    return szTime;
}

std::string PrintThread(unsigned long ulThread)
{
    return ulThread != 0 ? " [" + std::to_string(ulThread) + ']' : std::string();
}

const char* Prefix(eTOVLogKind eKind)
{
    switch (eKind)
    {
    case eLogCheck:
        return "check failed: ";
    case eLogPanic:
        return "panic: ";
    default:
        return "";
    }
}

bool IsPlain(char cCharacter)
{
    return ' ' <= cCharacter && cCharacter <= '~';
}

// A program may log in UTF-8 where the system's names have another encoding.
std::size_t ReadLogged(std::string_view sText, char32_t& cCharacter)
{
    const std::size_t nBytes = TOVShownText::ReadUtf8(sText, cCharacter);
    return nBytes > 1 ? nBytes : TOVShownText::ReadCharacter(sText, cCharacter);
}

bool BeginsWithLineEnd(std::string_view sText)
{
    return sText[0] == '\n' || sText.substr(0, 2) == "\r\n";
}

// Returns the text with the head in front of each of its lines.
std::string PrintLines(const std::string& sHead, const std::string& sText)
{
    std::string sPrinted = sHead;
    if (std::all_of(sText.begin(), sText.end(), IsPlain))
        return sPrinted += sText;

    for (std::string_view sLeft = sText; !sLeft.empty();)
    {
        if (BeginsWithLineEnd(sLeft))
        {
            sLeft.remove_prefix(sLeft[0] == '\n' ? 1 : 2);
            if (!sLeft.empty())
                sPrinted += '\n' + sHead;
        }
        else if (sLeft[0] == '\t')
        {
            sLeft.remove_prefix(1);
            sPrinted += '\t';
        }
        else
            TOVShownText::MoveShown(sLeft, sPrinted, &ReadLogged);
    }
    return sPrinted;
}
} // namespace

bool sTOVLogLine::IsGrave() const
{
    return eKind != eLogMessage || eSeverity >= eSeverityError;
}

std::string sTOVLogLine::Print() const
{
    const std::string sPosition = sFile + '(' + std::to_string(ulLine) + ") : ";
    return PrintLines(sPosition + PrintSeverity(eSeverity) + ": " + PrintTime(oTime) + PrintThread(ulThread) + ' ' +
                          Prefix(eKind),
                      sText);
}
} // namespace TOVDebug
