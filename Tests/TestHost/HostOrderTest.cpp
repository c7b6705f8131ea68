// The shuffled order, and the list of the slowest cases.
#include "TestHost/HostInstruments.h"

#include <algorithm>
#include <regex>
#include <set>

TEST(HostOrderTest, IsTheSameOnEverySystemForTheSameSeed)
{
    EXPECT_EQ((tLines{"Numbers.adds", "Numbers.prints", "Words.joins", "Words.counts"}),
              LinesOf(RunSuites("SuitesPassing", {"--list", "--shuffle", "--seed", "7"}).sOutput));
    EXPECT_EQ(RunSuites("SuitesPassing", {"--list", "--shuffle", "--seed", "7"}).sOutput,
              RunSuites("SuitesPassing", {"--list", "--seed", "7"}).sOutput);
}

TEST(HostOrderTest, HasAllCasesWhateverTheSeed)
{
    std::set<std::string> aOrders;
    tLines aPlain = LinesOf(RunSuites("SuitesFailing", {"--list"}).sOutput);
    std::sort(aPlain.begin(), aPlain.end());
    for (const char* szSeed : {"0", "1", "2", "3", "4294967295"})
    {
        const std::string sOutput = RunSuites("SuitesFailing", {"--list", "--seed", szSeed}).sOutput;
        aOrders.insert(sOutput);
        tLines aLines = LinesOf(sOutput);
        std::sort(aLines.begin(), aLines.end());
        EXPECT_EQ(aPlain, aLines) << szSeed;
    }
    EXPECT_EQ(5u, aOrders.size());
}

TEST(HostOrderTest, IsToldByItsSeedAndComesAgain)
{
    const CTempFolder oFolder;
    const std::string sXml = oFolder.File("report.xml");
    const sHostRun oFirst = RunSuites("SuitesFailing", {"--shuffle", "--verbose", "--junit", sXml});
    std::smatch oSeed;
    ASSERT_TRUE(std::regex_search(oFirst.sOutput, oSeed, std::regex("^Shuffled with --seed ([0-9]+)\n")));

    EXPECT_EQ(oFirst.sOutput, RunSuites("SuitesFailing", {"--seed", oSeed[1], "--verbose"}).sOutput);
    EXPECT_TRUE(Contains(ReadWholeFile(sXml), "<property name=\"seed\" value=\"" + oSeed.str(1) + "\"/>"));
    EXPECT_TRUE(Contains(RunSuites("SuitesFailing", {"--seed", oSeed[1], "--tap"}).sOutput,
                         "# shuffled with --seed " + oSeed.str(1) + "\n"));
}

TEST(HostSlowestTest, AreListedAtTheEnd)
{
    const tLines aLines = LinesOf(RunSuites("SuitesPassing", {"--slowest", "2"}).sOutput);

    ASSERT_LT(4u, aLines.size());
    EXPECT_EQ("Slowest:", aLines[aLines.size() - 4]);
    EXPECT_EQ(0u, aLines[aLines.size() - 3].find("    TIME "));
    EXPECT_EQ(0u, aLines[aLines.size() - 2].find("    TIME "));
}

TEST(HostSlowestTest, BeginWithTheSlowest)
{
    const sHostRun oRun = RunSuites("SuitesHanging", {"--filter", "In Startup", "--filter", "TOVSystem Test", "--all",
                                                      "--timeout", "0.5", "--slowest", "1", "--tap"});

    EXPECT_TRUE(Contains(oRun.sOutput, "# Slowest:\n#     TIME In Startup.hangs\n")) << oRun.sOutput;
}
