// What the command line of tovtest does, and the exit status.
#include "TestHost/HostInstruments.h"

#include <regex>

TEST(HostOptionsTest, RunsTheLibrarysOwnSuitesWhenNoOthersAreGiven)
{
    const sHostRun oRun = RunHost({});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_TRUE(Contains(oRun.sOutput, "\nFailed: TOVSystem Test.Macros Test\n"));
    EXPECT_EQ("12 suites, 80 cases: 79 passed, 1 failed, 2 warnings (TIME)", LastLineOf(oRun.sOutput));
}

TEST(HostOptionsTest, RunsOnlyTheSuitesOfALibrary)
{
    const sHostRun oRun = RunSuites("SuitesPassing");

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ("3 suites, 4 cases: 4 passed, 1 warning (TIME)", LastLineOf(oRun.sOutput));
}

TEST(HostOptionsTest, RunsAllSuitesWhenAsked)
{
    const sHostRun oRun = RunSuites("SuitesPassing", {"--all"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ("15 suites, 84 cases: 83 passed, 1 failed, 3 warnings (TIME)", LastLineOf(oRun.sOutput));
}

TEST(HostOptionsTest, RunsLibrariesInTheOrderGiven)
{
    const std::string sPassing = PathOfSuites("SuitesPassing");
    const std::string sFailing = PathOfSuites("SuitesFailing");

    EXPECT_EQ("Words.counts", LinesOf(RunHost({sPassing, sFailing, "--list"}).sOutput).front());
    EXPECT_EQ("Failing.passes", LinesOf(RunHost({sFailing, sPassing, "--list"}).sOutput).front());
    EXPECT_EQ("6 suites, 19 cases: 6 passed, 13 failed, 2 warnings (TIME)",
              LastLineOf(RunHost({sFailing, sPassing}).sOutput));
}

TEST(HostOptionsTest, TakesALibraryThatIsGivenTwiceOnce)
{
    const std::string sPassing = PathOfSuites("SuitesPassing");

    const std::string sOtherwise = std::regex_replace(sPassing, std::regex("(.*[\\\\/])"), "$1./");

    EXPECT_EQ(4u, LinesOf(RunHost({sPassing, sPassing, sOtherwise, "--list"}).sOutput).size());
}

TEST(HostOptionsTest, ListsTheCasesAndRunsNone)
{
    const sHostRun oRun = RunSuites("SuitesPassing", {"--list"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ("Words.counts\nWords.joins\nNumbers.adds\nNumbers.prints\n", oRun.sOutput);
}

TEST(HostOptionsTest, FiltersByCaseAndBySuite)
{
    const auto List = [](const std::vector<std::string>& aArguments) {
        std::vector<std::string> aAll = {"--list"};
        aAll.insert(aAll.end(), aArguments.begin(), aArguments.end());
        return LinesOf(RunSuites("SuitesPassing", aAll).sOutput);
    };

    EXPECT_EQ((tLines{"Words.counts", "Words.joins"}), List({"--filter", "Words"}));
    EXPECT_EQ((tLines{"Words.joins", "Numbers.adds"}), List({"--filter", "*.?oins", "--filter", "Numbers.a*"}));
    EXPECT_EQ((tLines{"Numbers.adds", "Numbers.prints"}), List({"--exclude", "Words"}));
    EXPECT_EQ((tLines{"Words.joins"}), List({"--filter", "Words", "--exclude", "*counts"}));
    EXPECT_EQ((tLines{"Words.joins"}), List({"--exclude", "*counts", "--exclude", "Numbers*"}));
}

TEST(HostOptionsTest, RunsOnlyTheCasesThatMatch)
{
    const sHostRun oRun = RunSuites("SuitesFailing", {"--filter", "Failing.*e*", "--exclude", "*boolean", "--verbose"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_TRUE(Contains(oRun.sOutput, "ok     Failing.passes (TIME)\n"));
    EXPECT_FALSE(Contains(oRun.sOutput, "boolean"));
    EXPECT_EQ("1 suite, 5 cases: 1 passed, 4 failed (TIME)", LastLineOf(oRun.sOutput));
}

TEST(HostOptionsTest, CountsAllRunsTogether)
{
    const sHostRun oRun = RunSuites("SuitesPassing", {"--repeat", "3"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_TRUE(Contains(oRun.sOutput, "Run 1 of 3\n"));
    EXPECT_TRUE(Contains(oRun.sOutput, "Run 3 of 3\n"));
    EXPECT_EQ("3 runs, 9 suites, 12 cases: 12 passed, 3 warnings (TIME)", LastLineOf(oRun.sOutput));
}

TEST(HostOptionsTest, FailsWhenACaseFailsInAnyRun)
{
    const sHostRun oRun = RunSuites("SuitesFailing", {"--filter", "Around", "--repeat", "2"});

    EXPECT_EQ(1, oRun.nExitCode); // though all cases of the second run pass
    EXPECT_EQ("2 runs, 2 suites, 6 cases: 4 passed, 2 failed (TIME)", LastLineOf(oRun.sOutput));
}

TEST(HostOptionsTest, RunsInOneProcessForADebugger)
{
    const sHostRun oRun = RunSuites("SuitesPassing", {"--in-process"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ(RunSuites("SuitesPassing").sOutput, oRun.sOutput);
    EXPECT_EQ(3, RunSuites("SuitesEnding", {"--in-process", "--filter", "Throw"}).nExitCode);
}

TEST(HostOptionsTest, TellsHowItIsUsed)
{
    const sHostRun oRun = RunHost({"--help"});

    EXPECT_EQ(0, oRun.nExitCode);
    for (const char* szOption : {"--list", "--filter PATTERN", "--exclude PATTERN", "--repeat N", "--junit FILE",
                                 "--tap", "--html FILE", "--verbose", "--all", "--in-process", "--shuffle", "--seed N",
                                 "--timeout SECONDS", "--keep-going", "--fail-fast", "--slowest N"})
        EXPECT_TRUE(Contains(oRun.sOutput, szOption)) << szOption;
}

TEST(HostOptionsTest, TellsItsVersion)
{
    const sHostRun oRun = RunHost({"--version"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_TRUE(std::regex_match(oRun.sOutput, std::regex("tovtest \\d+\\.\\d+\\.\\d+\n"))) << oRun.sOutput;
}

TEST(HostOptionsTest, RefusesAWrongCommandLine)
{
    for (const tLines& aArguments : {tLines{"--nonsense"},
                                     tLines{"--repeat", "0"},
                                     tLines{"--repeat", "-1"},
                                     tLines{"--repeat", "many"},
                                     tLines{"--repeat"},
                                     tLines{"--filter", ""},
                                     tLines{"--filter"},
                                     tLines{"--junit", ""},
                                     tLines{"--junit", "same", "--html", "same"},
                                     tLines{"--junit", "-", "--html", "-"},
                                     tLines{"--junit", "-", "--tap"},
                                     tLines{"--tap", "--html", "-"},
                                     tLines{"--seed", "-1"},
                                     tLines{"--seed", "4294967296"},
                                     tLines{"--seed", "x"},
                                     tLines{"--timeout", "-1"},
                                     tLines{"--timeout", "soon"},
                                     tLines{"--timeout", "nan"},
                                     tLines{"--timeout", ""},
                                     tLines{"--timeout", "1000001"},
                                     tLines{"--slowest", "-1"},
                                     tLines{"--keep-going", "--fail-fast"},
                                     tLines{"--in-process", "--timeout", "1"},
                                     tLines{"--in-process", "--keep-going"}})
    {
        const sHostRun oRun = RunHost(aArguments);
        EXPECT_EQ(2, oRun.nExitCode) << testing::PrintToString(aArguments);
        EXPECT_EQ(0u, oRun.sOutput.find("tovtest: ")) << oRun.sOutput;
    }
}

TEST(HostOptionsTest, RefusesAPatternThatMatchesNothing)
{
    EXPECT_TRUE(IsRefused(RunSuites("SuitesPassing", {"--filter", "words"}), "no case matches words"));
    EXPECT_TRUE(IsRefused(RunSuites("SuitesPassing", {"--exclude", "Word"}), "no case matches Word"));
    EXPECT_TRUE(IsRefused(RunSuites("SuitesPassing", {"--filter", "*", "--filter", "x*", "--list"}), "matches x*"));
    EXPECT_TRUE(IsRefused(RunHost({"--filter", "TOVDebug Test"}), "no case matches TOVDebug Test")); // it has none
}

TEST(HostOptionsTest, RefusesARunWithoutACase)
{
    EXPECT_TRUE(IsRefused(RunSuites("SuitesPassing", {"--exclude", "*"}), "there is no case to run"));
}

TEST(HostOptionsTest, RefusesALibraryThatCannotBeLoaded)
{
    const CTempFolder oFolder;
    WriteWholeFile(oFolder.File("text.so"), "no library");

    EXPECT_TRUE(IsRefused(RunHost({oFolder.File("text.so")}), "text.so"));
    EXPECT_TRUE(IsRefused(RunHost({oFolder.File("missing.so")}), "missing.so"));
    EXPECT_TRUE(IsRefused(RunHost({"missing.so"}), "missing.so"));
    EXPECT_TRUE(IsRefused(RunHost({PathOfSuites("SuitesPassing"), "missing.so", "--list"}), "missing.so"));
}

TEST(HostOptionsTest, RefusesALibraryWithoutSuites)
{
    EXPECT_TRUE(IsRefused(RunSuites("SuitesEmpty"), "holds no test suite"));
}

TEST(HostOptionsTest, RefusesAReportThatCannotBeWritten)
{
    const CTempFolder oFolder;
    const std::string sFile = oFolder.File("missing") + "/report";

    EXPECT_TRUE(IsRefused(RunSuites("SuitesPassing", {"--junit", sFile}), "cannot write"));
    EXPECT_TRUE(IsRefused(RunSuites("SuitesPassing", {"--html", sFile}), "cannot write"));
    EXPECT_TRUE(IsRefused(RunSuites("SuitesPassing", {"--html", sFile, "--tap"}), "cannot write"));
}

TEST(HostOptionsTest, LeavesReportsAloneWhenThereIsNothingToRun)
{
    const CTempFolder oFolder;
    WriteWholeFile(oFolder.File("report.xml"), "the last run's");

    EXPECT_EQ(2, RunSuites("SuitesPassing", {"--junit", oFolder.File("report.xml"), "--filter", "none"}).nExitCode);

    EXPECT_EQ("the last run's", ReadWholeFile(oFolder.File("report.xml")));
}

TEST(HostOptionsTest, ShowsTheControlCharactersOfAWrongArgumentEscaped)
{
    for (const std::vector<std::string>& aArguments :
         {std::vector<std::string>{"--esc\x1b[2J\nline"}, {"esc\x1b[2J\nline"}, {"--repeat", "esc\x1b[2J\nline"}})
    {
        const sHostRun oRun = RunHost(aArguments);

        EXPECT_EQ(2, oRun.nExitCode) << oRun.sOutput;
        EXPECT_TRUE(Contains(oRun.sOutput, "esc\\x1b[2J\\nline")) << oRun.sOutput;
        EXPECT_FALSE(Contains(oRun.sOutput, "\x1b")) << oRun.sOutput;
    }
}
