#include <Listeners/TOVLogLine.h>

#include <Listeners/TOVListenerSystem.h>

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
} // namespace

bool sTOVLogLine::IsGrave() const
{
    return eKind != eLogMessage || eSeverity >= eSeverityError;
}

std::string sTOVLogLine::Print() const
{
    return sFile + '(' + std::to_string(ulLine) + ") : " + PrintSeverity(eSeverity) + ": " + PrintTime(oTime) + ' ' +
           Prefix(eKind) + sText;
}
} // namespace TOVDebug
