// What is seen on a terminal.
#include "Catalog/CatalogFiles.h"
#include "Catalog/CatalogInstruments.h"
#include "Support/TOVTerminal.h"

#include <regex>

namespace
{
class CatalogTerminalTest : public CatalogTest
{
protected:
    CatalogTerminalTest()
    {
        MakeDirectory("tree");
        WriteSparseFile(Path("tree/big"), ENDLESS_SIZE, "");
    }

    // The megabytes done that a screen tells with a line of progress and nothing else, or -1 for any other screen.
    static int MegabytesDone(const tNames& aScreen)
    {
        const std::regex oProgress("[0-9]+ of [0-9]+ files?, ([0-9]+) of " + std::to_string(ENDLESS_SIZE / 1000000) +
                                   " MB, [0-9]+%, [0-9]+\\.[0-9] MB/s");
        std::smatch oMatch;
        return aScreen.size() == 1 && std::regex_match(aScreen[0], oMatch, oProgress) ? std::stoi(oMatch.str(1)) : -1;
    }
};
} // namespace

TEST_F(CatalogTerminalTest, ShowsOneLineOfProgressWhileItReads)
{
    Write("c.cat", CatalogVersion3({"tree"}, {}, {{0, "big", ENDLESS_SIZE, 0}}));

    for (const tNames& aCommand : {tNames{"create", "new.cat", "tree"}, tNames{"verify", "c.cat"}})
    {
        CTerminal oTerminal(Program(aCommand));
        int nFirst = -1;
        EXPECT_TRUE(oTerminal.WaitUntil([&](const tNames& aScreen) {
            nFirst = MegabytesDone(aScreen);
            return nFirst >= 0;
        })) << testing::PrintToString(oTerminal.Screen());
        EXPECT_TRUE(oTerminal.WaitUntil([&](const tNames& aScreen) { return MegabytesDone(aScreen) > nFirst; }))
            << testing::PrintToString(oTerminal.Screen());
    }
}

TEST_F(CatalogTerminalTest, ShowsOneLineOfProgressWhileItWalks)
{
    // A directory is searched once for each pattern, which takes far longer than any test takes.
    for (int nFile = 0; nFile < 50; ++nFile)
        Write("tree/" + std::to_string(nFile), "x");
    Write("c.cat", CatalogVersion3({"tree"}, tNames(300000, "?"), {{0, "1", 1, 0}}));
    const std::regex oProgress("[0-9]+ files in [0-9]+ directories found");

    CTerminal oTerminal(Program({"verify", "c.cat"}));

    EXPECT_TRUE(oTerminal.WaitUntil([&](const tNames& aScreen) {
        return aScreen.size() == 1 && std::regex_match(aScreen[0], oProgress);
    })) << testing::PrintToString(oTerminal.Screen());
}

TEST_F(CatalogTerminalTest, TakesTheLineOfProgressAwayAtTheEnd)
{
    Write("c.cat", CatalogVersion3({"tree"}, {}, {{0, "big", ENDLESS_SIZE, 0}, {0, "gone", 1, 0}}));
    CTerminal oTerminal(Program({"verify", "c.cat"}));
    ASSERT_TRUE(oTerminal.WaitUntilItShows("MB/s"));

    CutFile(Path("tree/big"), 10);

    EXPECT_EQ(1, oTerminal.WaitForEnd());
    const tNames aScreen = oTerminal.Screen();
    ASSERT_EQ(3u, aScreen.size()) << testing::PrintToString(aScreen);
    EXPECT_EQ("missing    tree/gone", aScreen[0]);
    EXPECT_EQ("unreadable tree/big", aScreen[1]); // it was longer when it was found
    EXPECT_TRUE(std::regex_match(aScreen[2], std::regex("1 file, .* MB/s\\) verified: .* unreadable")));
}
