// The Test Anything Protocol, as tovtest prints it.
#include "TestHost/HostInstruments.h"

#include <algorithm>
#include <regex>

namespace
{
// Reads the protocol strictly: it holds a version, a plan, numbered test lines, diagnostics and an end of the run.
struct sTap
{
    long lPlanned = -1;
    std::vector<bool> aResults;
    tLines aNames;
    tLines aDiagnostics;
    std::string sBailOut;
    tLines aOther; // lines that have no place there
};

sTap ReadTap(const std::string& sText)
{
    const std::regex oPlan("1\\.\\.([0-9]+)");
    const std::regex oTest("(not )?ok ([0-9]+) - ((?:[^\\\\#]|\\\\[\\\\#])*)");
    sTap oTap;
    tLines aLines = LinesOf(sText);
    if (aLines.empty() || aLines[0] != "TAP version 13")
        aLines.insert(aLines.begin(), "");
    std::smatch oMatch;
    for (std::size_t n = 1; n < aLines.size(); ++n)
    {
        const bool bEnded = !oTap.sBailOut.empty();
        if (n == 1 && std::regex_match(aLines[n], oMatch, oPlan))
            oTap.lPlanned = std::stol(oMatch.str(1));
        else if (!bEnded && std::regex_match(aLines[n], oMatch, oTest) &&
                 std::stoul(oMatch.str(2)) == oTap.aResults.size() + 1)
        {
            oTap.aResults.push_back(!oMatch[1].matched);
            oTap.aNames.push_back(oMatch.str(3));
        }
        else if (!bEnded && aLines[n].compare(0, 2, "# ") == 0)
            oTap.aDiagnostics.push_back(aLines[n].substr(2));
        else if (!bEnded && aLines[n].compare(0, 10, "Bail out! ") == 0)
            oTap.sBailOut = aLines[n].substr(10);
        else
            oTap.aOther.push_back(aLines[n]);
    }
    return oTap;
}
} // namespace

TEST(HostTapTest, HasALineForEachCase)
{
    EXPECT_EQ("TAP version 13\n"
              "1..2\n"
              "ok 1 - Words.joins\n"
              "ok 2 - Numbers.adds\n"
              "# Tests/Programs/SuitesPassing.cpp:17: warning: adds slowly\n",
              RunSuites("SuitesPassing", {"--tap", "--filter", "Numbers.adds", "--filter", "*joins"}).sOutput);
}

TEST(HostTapTest, FollowsTheGrammarWhateverTheTexts)
{
    const sHostRun oRun = RunSuites("SuitesFailing", {"--tap"});
    const sTap oTap = ReadTap(oRun.sOutput);

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ(15, oTap.lPlanned);
    ASSERT_EQ(15u, oTap.aResults.size()) << oRun.sOutput;
    EXPECT_EQ(2, std::count(oTap.aResults.begin(), oTap.aResults.end(), true));
    EXPECT_EQ("Trial <\"&'>\\\\x01.a \\# TODO \\\\ directive", oTap.aNames[11]);
    EXPECT_EQ(tLines{}, oTap.aOther);
    EXPECT_EQ("", oTap.sBailOut);
}

TEST(HostTapTest, HasFailuresAsDiagnostics)
{
    EXPECT_EQ("TAP version 13\n"
              "1..1\n"
              "not ok 1 - Failing.order\n"
              "# Tests/Programs/SuitesFailing.cpp:19: 5 < 4\n"
              "#     actual: 5\n"
              "#     limit:  4\n",
              RunSuites("SuitesFailing", {"--tap", "--filter", "Failing.order"}).sOutput);
}

TEST(HostTapTest, NumbersTheCasesOfAllRuns)
{
    const sTap oTap = ReadTap(RunSuites("SuitesFailing", {"--tap", "--filter", "Around", "--repeat", "2"}).sOutput);

    EXPECT_EQ(6, oTap.lPlanned);
    EXPECT_EQ((std::vector<bool>{true, false, false, true, true, true}), oTap.aResults);
    EXPECT_EQ("run 1 of 2", oTap.aDiagnostics.front());
}

TEST(HostTapTest, BailsOutWhenTheRunEndsEarly)
{
    for (const char* szSuite : {"Throw", "Crash", "Abort", "Overflow", "Exit", "Exit well", "Startup", "Closedown"})
    {
        const sHostRun oRun = RunSuites("SuitesEnding", {"--tap", "--filter", szSuite});
        const sTap oTap = ReadTap(oRun.sOutput);
        EXPECT_EQ(3, oRun.nExitCode) << szSuite;
        EXPECT_EQ(3, oTap.lPlanned);
        EXPECT_EQ((std::vector<bool>{true, false}), oTap.aResults) << oRun.sOutput;
        EXPECT_EQ(0u, oTap.sBailOut.find(std::string(szSuite) + ".ends ")) << oTap.sBailOut;
        EXPECT_EQ(tLines{}, oTap.aOther);
    }
}
