#include <Listeners/TOVLogLine.h>

#include <Listeners/TOVListenerSystem.h>

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

bool IsControl(char cCharacter)
{
    return static_cast<unsigned char>(cCharacter) < ' ' || cCharacter == '\x7f';
}

void AppendEscaped(std::string& sTarget, char cCharacter)
{
    char szEscaped[5];
    std::snprintf(szEscaped, sizeof(szEscaped), "\\x%02x", static_cast<unsigned int>(cCharacter));
    sTarget += szEscaped;
}

// Returns the text with the head in front of each of its lines.
std::string PrintLines(const std::string& sHead, const std::string& sText)
{
    std::string sPrinted = sHead;
    if (std::none_of(sText.begin(), sText.end(), IsControl))
        return sPrinted += sText;

    const std::size_t nEnd = sText.size();
    for (std::size_t nCharacter = 0; nCharacter < nEnd; ++nCharacter)
    {
        const char cCharacter = sText[nCharacter];
        const bool bLast = nCharacter + 1 == nEnd;
        if (cCharacter == '\n' && !bLast)
            sPrinted += '\n' + sHead;
        else if (cCharacter == '\n' || (cCharacter == '\r' && !bLast && sText[nCharacter + 1] == '\n'))
            continue;
        else if (cCharacter != '\t' && IsControl(cCharacter))
            AppendEscaped(sPrinted, cCharacter);
        else
            sPrinted += cCharacter;
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
