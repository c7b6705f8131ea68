// A run that continues after a case that ended its process, and one that stops at the first failure.
#include "TestHost/HostInstruments.h"

TEST(HostKeepGoingTest, RunsTheCasesAfterEachKindOfEnd)
{
    for (const char* szSuite :
         {"Throw", "Throw number", "Check", "Startup", "Closedown", "Overflow", "Crash", "Abort", "Exit", "Exit well"})
    {
        const sHostRun oRun = RunSuites("SuitesEnding", {"--filter", szSuite, "--keep-going"});

        EXPECT_EQ(3, oRun.nExitCode) << szSuite;
        EXPECT_TRUE(Contains(oRun.sOutput, std::string("\nEnded: ") + szSuite + ".ends\n")) << oRun.sOutput;
        EXPECT_FALSE(Contains(oRun.sOutput, "The run ended early")) << oRun.sOutput;
        EXPECT_EQ("1 suite, 3 cases: 2 passed, 1 ended (TIME)", LastLineOf(oRun.sOutput));
    }
}

TEST(HostKeepGoingTest, MakesOneReportOfAllWorkers)
{
    const CTempFolder oFolder;
    const sHostRun oRun =
        RunSuites("SuitesEnding", {"--filter", "Abort", "--filter", "Throw", "--keep-going", "--repeat", "2",
                                   "--verbose", "--junit", oFolder.File("report.xml")});

    const std::string sSuite = "ok     Throw.before (TIME)\n"
                               "ENDED  Throw.ends (TIME)\n";
    EXPECT_EQ("2 runs, 4 suites, 12 cases: 8 passed, 4 ended (TIME)", LastLineOf(oRun.sOutput)) << oRun.sOutput;
    EXPECT_EQ(0u, oRun.sOutput.find("Run 1 of 2\n" + sSuite)) << oRun.sOutput;
    EXPECT_TRUE(Contains(oRun.sOutput, "\nRun 2 of 2\n" + sSuite)) << oRun.sOutput;
    EXPECT_TRUE(Contains(oRun.sOutput, "ok     Throw.after (TIME)\nENDED  Throw: 3 cases, 1 ended (TIME)\n"));
    EXPECT_TRUE(
        Contains(ReadWholeFile(oFolder.File("report.xml")), "<testsuites tests=\"12\" failures=\"0\" errors=\"4\""));
}

TEST(HostKeepGoingTest, NumbersAllCasesInTheProtocol)
{
    const sHostRun oRun = RunSuites("SuitesEnding", {"--filter", "Abort", "--filter", "Exit", "--keep-going", "--tap"});

    EXPECT_TRUE(Contains(oRun.sOutput, "not ok 2 - Abort.ends\n"));
    EXPECT_TRUE(Contains(oRun.sOutput, "\nok 6 - Exit.after\n")) << oRun.sOutput;
    EXPECT_FALSE(Contains(oRun.sOutput, "Bail out!"));
}

TEST(HostKeepGoingTest, HasNothingToContinueAfterTheLastCase)
{
    const sHostRun oRun = RunSuites("SuitesEndingLate", {"--keep-going"});

    EXPECT_EQ(3, oRun.nExitCode);
    EXPECT_TRUE(Contains(oRun.sOutput, "\nThe run ended early: <outside of the suites>.")) << oRun.sOutput;
}

TEST(HostKeepGoingTest, KeepsTheShuffledOrder)
{
    const std::vector<std::string> aOrder = {"--filter", "Abort", "--filter", "Exit",
                                             "--filter", "Throw", "--seed",   "5"};
    std::vector<std::string> aRun = aOrder;
    aRun.insert(aRun.end(), {"--keep-going", "--tap"});
    std::vector<std::string> aList = aOrder;
    aList.push_back("--list");

    tLines aRan;
    for (const std::string& sLine : LinesOf(RunSuites("SuitesEnding", aRun).sOutput))
        if (const std::size_t nAt = sLine.find(" - "); nAt != std::string::npos)
            aRan.push_back(sLine.substr(nAt + 3));

    EXPECT_EQ(9u, aRan.size());
    EXPECT_EQ(LinesOf(RunSuites("SuitesEnding", aList).sOutput), aRan);
}

TEST(HostFailFastTest, StopsAfterTheFirstFailedCase)
{
    const std::string sFile = "       Tests/Programs/SuitesFailing.cpp:";
    for (const char* szProcess : {"--verbose", "--in-process"})
    {
        const sHostRun oRun = RunSuites("SuitesFailing", {"--fail-fast", "--repeat", "2", szProcess});

        EXPECT_EQ(1, oRun.nExitCode);
        EXPECT_TRUE(Contains(oRun.sOutput, "FAILED Failing.boolean (TIME)\n" + sFile +
                                               "11: 1 > 2\n"
                                               "FAILED Failing: 2 cases, 1 failed (TIME)\n"
                                               "\n"
                                               "The run ended early: Failing.boolean failed\n"
                                               "Failed: Failing.boolean\n"))
            << oRun.sOutput;
        EXPECT_EQ("6 suites, 30 cases: 1 passed, 1 failed, 28 not run (TIME)", LastLineOf(oRun.sOutput));
    }
}

TEST(HostFailFastTest, CountsAFailureInStartup)
{
    const sHostRun oRun = RunSuites("SuitesFailing", {"--fail-fast", "--filter", "Around"});

    EXPECT_EQ("1 suite, 3 cases: 1 passed, 1 failed, 1 not run (TIME)", LastLineOf(oRun.sOutput)) << oRun.sOutput;
}

TEST(HostFailFastTest, ChangesNothingWhenAllPasses)
{
    EXPECT_EQ(RunSuites("SuitesPassing").sOutput, RunSuites("SuitesPassing", {"--fail-fast"}).sOutput);
}
