// Instruments for the tests of the ready-made listeners: what they are told, and what they have written.
#pragma once

#include "Support/TOVTestSupport.h"

#include <Debug/TOVDebug.h>
#include <Debug/TOVException.h>
#include <Listeners/TOVLogLine.h>

#include <cstdarg>
#include <string>
#include <vector>

typedef std::vector<std::string> tLines;

inline void Log(int nSeverity, const std::string& sText)
{
    TOVDebug::_Log("Folder/File.cpp", 148, 0x1, static_cast<eTOVDebugSeverity>(nSeverity), "%s", sText.c_str());
}

inline void FailCheck(const std::string& sExpression)
{
    try
    {
        TOVDebug::Assert(sExpression.c_str(), "Folder/File.cpp", 12);
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
    }
}

// What Log makes a listener write, with TIME in the place of the time.
inline std::string Printed(const std::string& sSeverity, const std::string& sText)
{
    return "Folder/File.cpp(148) : " + sSeverity + ": TIME " + sText;
}

inline tLines PrintedInfos(const tLines& aTexts)
{
    tLines aLines;
    for (const std::string& sText : aTexts)
        aLines.push_back(Printed("info", sText));
    return aLines;
}

// The text with TIME in the place of each time, and of the thread's number after it.
std::string WithoutTimes(const std::string& sText);

// The lines of a text. What stands after the last line end counts as a line too, with "<no end>" after it.
inline tLines LinesOf(const std::string& sText)
{
    tLines aLines;
    std::size_t nBegin = 0;
    for (std::size_t nEnd; (nEnd = sText.find('\n', nBegin)) != std::string::npos; nBegin = nEnd + 1)
        aLines.push_back(sText.substr(nBegin, nEnd - nBegin));
    if (nBegin < sText.size())
        aLines.push_back(sText.substr(nBegin) + "<no end>");
    return aLines;
}

inline tLines LinesOfFile(const std::string& sPath)
{
    return LinesOf(WithoutTimes(ReadWholeFile(sPath)));
}

inline tLines TextsOf(const std::vector<TOVDebug::sTOVLogLine>& aLines)
{
    tLines aTexts;
    for (const TOVDebug::sTOVLogLine& oLine : aLines)
        aTexts.push_back(oLine.sText);
    return aTexts;
}

// Hands the same argument list to a listener twice, as a careless caller does.
template<class TListener> void LogTwiceFromOneList(TListener& oListener, const char* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    oListener.OnLogV("Folder/File.cpp", 148, eSeverityInfo, szFormat, pArguments);
    oListener.OnPanicV("Folder/File.cpp", 148, szFormat, pArguments);
    va_end(pArguments);
}

// Starts threads that log at the same time, each its own texts "THREAD-NUMBER" with a tail.
void LogFromThreads(int nThreads, int nLines, int nSeverity);

// All texts that these threads log, sorted.
tLines TextsOfThreads(int nThreads, int nLines);
