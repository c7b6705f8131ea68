#include "Startup/StartupHost.h"

#include <Debug/TOVCompiler.h>
#include <Test/TOVTestSuiteFactory.h>

#include <cstdio>

// The library comes here for its creator map before this program's statics are made and after they are gone. Each call
// tells the names that came or went since the one before.
extern "C" TOV_PROGRAM_EXPORT TOVTest::tCreatorMap& GetCreatorMapDirect()
{
    static TOVTest::tCreatorMap* const s_pCreators = new TOVTest::tCreatorMap;
    static TOVTest::tCreatorMap* const s_pKnown = new TOVTest::tCreatorMap;
    if (!IsTelling())
        return *s_pCreators;

    char szLine[128];
    for (const auto& oCreator : *s_pCreators)
    {
        if (s_pKnown->count(oCreator.first) == 0)
        {
            std::snprintf(szLine, sizeof(szLine), "came %s\n", oCreator.first);
            TellDebugger(szLine);
        }
    }
    for (const auto& oCreator : *s_pKnown)
    {
        if (s_pCreators->count(oCreator.first) == 0)
        {
            std::snprintf(szLine, sizeof(szLine), "went %s\n", oCreator.first);
            TellDebugger(szLine);
        }
    }
    *s_pKnown = *s_pCreators;
    std::snprintf(szLine, sizeof(szLine), "asked with %d\n", static_cast<int>(s_pCreators->size()));
    TellDebugger(szLine);
    return *s_pCreators;
}
