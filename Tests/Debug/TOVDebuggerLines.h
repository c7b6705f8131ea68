// What a debugger was told by a child between two marks.
#pragma once

#include "Support/TOVObservedChild.h"

#include <Debug/TOVDebug.h>

#include <algorithm>
#include <string>
#include <vector>

typedef std::vector<std::string> tTexts;

// A child sets these marks around what is to be looked at: lines of the files "begin" and "end".
inline void MarkBegin()
{
    TOVDebug::_Log("begin", 1, 0x1, eSeverityInfo, "mark");
}

inline void MarkEnd()
{
    TOVDebug::_Log("end", 1, 0x1, eSeverityInfo, "mark");
}

struct sDebuggerTexts
{
    tTexts aBefore;
    tTexts aBetween;
    tTexts aBehind;
};

// Splits the texts at the marks, which are left out.
inline sDebuggerTexts SplitAtMarks(const tTexts& aTexts)
{
    const auto pBegin = std::find(aTexts.begin(), aTexts.end(), "begin(1) : ");
    const auto pEnd = std::find(pBegin, aTexts.end(), "end(1) : ");
    if (pBegin == aTexts.end() || pEnd == aTexts.end() || pEnd - pBegin < 3 || aTexts.end() - pEnd < 3)
        return {{}, {"<no marks>"}, {}};
    return {tTexts(aTexts.begin(), pBegin), tTexts(pBegin + 3, pEnd), tTexts(pEnd + 3, aTexts.end())};
}

inline std::string Joined(const tTexts& aTexts)
{
    std::string sJoined;
    for (const std::string& sText : aTexts)
        sJoined += sText;
    return sJoined;
}

// Runs a scenario with a debugger attached. The user closes every box.
inline sObservedChild RunDebugged(const std::string& sScenario, const tTexts& aArguments = {})
{
    sObservation oHow;
    oHow.bDebugger = true;
    oHow.aAnswers = {eUserOk};
    oHow.aArguments = aArguments;
    return RunObserved(sScenario, oHow);
}

inline tTexts TextsBetweenMarks(const std::string& sScenario, const tTexts& aArguments = {})
{
    return SplitAtMarks(RunDebugged(sScenario, aArguments).aDebuggerTexts).aBetween;
}
