#include "Startup/StartupHost.h"

#include "Support/TOVChildProcess.h"

#include <Debug/TOVDebug.h>
#include <TOVPlatform/TOVFile.h>
#include <Test/TOVTestSuiteFactory.h>

#include <cstdio>

// Tells what the library's functions do before the library's objects are made, and after they are gone.
static void TellUse()
{
    namespace File = TOVPlatform::TOVFile;
    const bool bLogged = TOVDebug::_Log("host", 1, 0x1, eSeverityInfo, "used");
    const unsigned long long hFile = File::Open(PathOfThisProgram().c_str(), "rb");
    char cFirst = 0;
    const bool bRead = hFile != FILE_INVALID_HANDLE && File::Read(hFile, &cFirst, 1, 1) == 1;
    const bool bClosed = bRead && File::Close(hFile) == File::eFileSuccess;

    char szLine[128];
    std::snprintf(szLine, sizeof(szLine), "used %d %lld %d\n", bLogged ? 1 : 0, static_cast<long long>(hFile),
                  bClosed ? 1 : 0);
    TellDebugger(szLine);
}

TOV_PLAIN_NAMES_BEGIN
TOV_PROGRAM_EXPORT TOVTest::tCreatorMap& GetCreatorMapDirect();
TOV_PLAIN_NAMES_END

// The library comes here for its creator map before this program's statics are made and after they are gone. Each call
// tells the names that came or went since the one before.
TOVTest::tCreatorMap& GetCreatorMapDirect()
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
    if (IsUsing())
        TellUse();
    return *s_pCreators;
}

sDebuggerTexts ObserveTelling(const std::string& sScenario)
{
    const CTellingChildren oTelling;
    return SplitAtMarks(RunDebugged(sScenario).aDebuggerTexts);
}
