// Exceptions and memory between this program, the library and a second module, and a module that brings the library: a
// short share of what Attacks/Edge does for long.
#include "Edge/EdgeCheck.h"
#include "Support/TOVChildProcess.h"
#include "Support/TOVTestSupport.h"

TEST(TOVModuleEdgeTest, EveryExceptionIsCaughtInAnotherModuleByItsOwnType)
{
    CThreadReport oReport;
    CheckExceptions(GetEdgeExceptions(), oReport);

    EXPECT_EQ(0, oReport.GetNumWrong()) << oReport.GetTexts();
}

TEST(TOVModuleEdgeTest, WhatOneModuleMakesAnotherOneReleases)
{
    CThreadReport oReport;
    CheckMemory(GetEdgeKinds(), 2, oReport);

    EXPECT_EQ(0, oReport.GetNumWrong()) << oReport.GetTexts();
}

// The runtime of a sanitizer cannot come late.
#if !TOV_ADDRESS_SANITIZER && !TOV_THREAD_SANITIZER
TEST(TOVModuleEdgeTest, TheLibraryComesAndGoesWithAModuleThatUsesAllOfIt)
{
    const sChildResult oResult =
        RunProgram({{PathBesideThisProgram(TOV_EDGE_LOADER), PathBesideThisProgram(TOV_EDGE_LOAD), TOV_LIBRARY, "3"},
                    "",
                    NO_LEAK_CHECK});

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sOutput;
    EXPECT_EQ(0u, oResult.sOutput.find("loads 3 right 3 ")) << oResult.sOutput;
}
#endif
