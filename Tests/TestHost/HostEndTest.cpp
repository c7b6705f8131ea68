// Cases that end the run are named, and every report is complete.
#include "TestHost/HostInstruments.h"

namespace
{
struct sEnd
{
    const char* szSuite;
    const char* szReason;
};

const sEnd s_aEnds[] = {
    {"Throw", "threw past its checks: no \"good\" <at> all"},
    {"Throw number", "threw past its checks"},
    {"Throw exception", "threw past its checks: exception of class 5, code 0x12"},
    {"Check", "threw past its checks: failed check s_nDepth == -1 (Tests/Programs/SuitesEnding.cpp:41)"},
    {"Startup", "threw past its checks: no \"good\" <at> all"},
    {"Closedown", "threw past its checks: no \"good\" <at> all"},
    {"Overflow", "crashed: access violation"},
    {"Crash", "crashed: access violation"},
    {"Abort", "called abort()"},
    {"Exit", "ended the process with status 5"},
    {"Exit well", "ended the process with status 0"},
};

class HostEndingCaseTest : public testing::TestWithParam<sEnd>
{
};
} // namespace

TEST_P(HostEndingCaseTest, IsReportedByName)
{
    const std::string sCase = std::string(GetParam().szSuite) + ".ends";
    const sHostRun oRun = RunSuites("SuitesEnding", {"--filter", GetParam().szSuite});

    EXPECT_EQ(3, oRun.nExitCode);
    EXPECT_TRUE(Contains(oRun.sOutput, "ENDED  " + sCase + " (TIME)\n")) << oRun.sOutput;
    EXPECT_TRUE(Contains(oRun.sOutput, "\nThe run ended early: " + sCase + " " + GetParam().szReason + "\n"))
        << oRun.sOutput;
    EXPECT_EQ("1 suite, 3 cases: 1 passed, 1 ended the run, 1 not run (TIME)", LastLineOf(oRun.sOutput));
}

TEST_P(HostEndingCaseTest, LeavesCompleteReports)
{
    const CTempFolder oFolder;
    const std::string sXml = oFolder.File("report.xml");
    const std::string sHtml = oFolder.File("report.html");
    RunSuites("SuitesEnding", {"--filter", GetParam().szSuite, "--junit", sXml, "--html", sHtml});

    const std::string sReport = WithoutTimes(ReadWholeFile(sXml));
    EXPECT_TRUE(Contains(sReport, "<testsuites tests=\"3\" failures=\"0\" errors=\"1\" "));
    EXPECT_TRUE(Contains(sReport, " errors=\"1\" time=\"TIME\" skipped=\"1\">\n"));
    EXPECT_TRUE(Contains(sReport, "<testcase name=\"ends\" ")) << sReport;
    EXPECT_TRUE(Contains(sReport, "<skipped message=\"the run ended early\"/>"));
    EXPECT_TRUE(EndsWith(sReport, "</testsuites>\n"));
    EXPECT_TRUE(Contains(ReadWholeFile(sHtml), "The run ended early:"));
    EXPECT_TRUE(EndsWith(ReadWholeFile(sHtml), "</html>\n"));
}

INSTANTIATE_TEST_SUITE_P(Ways, HostEndingCaseTest, testing::ValuesIn(s_aEnds),
                         [](const auto& oInfo) { return std::to_string(oInfo.index); });

TEST(HostEndTest, KeepsWhatChecksSaidBefore)
{
    const sHostRun oRun = RunSuites("SuitesEnding", {"--filter", "Crash"});

    EXPECT_TRUE(Contains(oRun.sOutput, ": m_nCase == 0\n")) << oRun.sOutput;
}

TEST(HostEndTest, NamesNoLaterSuite)
{
    const sHostRun oRun = RunSuites("SuitesEnding", {"--filter", "Abort", "--filter", "Exit", "--repeat", "2"});

    EXPECT_EQ(3, oRun.nExitCode);
    EXPECT_FALSE(Contains(oRun.sOutput, "Exit"));
    EXPECT_FALSE(Contains(oRun.sOutput, "Run 2"));
    EXPECT_EQ("4 suites, 12 cases: 1 passed, 1 ended the run, 10 not run (TIME)", LastLineOf(oRun.sOutput));
}

TEST(HostEndTest, TellsOfACrashOutsideOfTheSuites)
{
    const CTempFolder oFolder;
    const sHostRun oRun = RunSuites("SuitesEndingLate", {"--junit", oFolder.File("report.xml")});

    EXPECT_EQ(3, oRun.nExitCode);
    EXPECT_TRUE(Contains(oRun.sOutput, "ok     Late: 1 case (TIME)\n")) << oRun.sOutput;
    EXPECT_TRUE(Contains(oRun.sOutput, "\nThe run ended early: <outside of the suites>.<outside of the cases> "));
    EXPECT_TRUE(Contains(ReadWholeFile(oFolder.File("report.xml")), "errors=\"1\""));
}

TEST(HostEndTest, RefusesALibraryThatEndsTheProcessWhenItIsLoaded)
{
    const CTempFolder oFolder;
    const sHostRun oRun = RunSuites("SuitesEndingEarly", {"--junit", oFolder.File("report.xml")});

    EXPECT_TRUE(IsRefused(oRun, "while the libraries were loaded, one of them ended the process with status 7"));
}
