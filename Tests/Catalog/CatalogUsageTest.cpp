// Wrong and right command lines.
#include "Catalog/CatalogInstruments.h"

#include <regex>

namespace
{
class CatalogUsageTest : public CatalogTest
{
protected:
    CatalogUsageTest()
    {
        Write("tree/a.txt", "x");
        Write("good.cat", CatalogVersion3({"tree"}, {}, {{0, "a.txt", 1, 0x8cdc1683}}));
    }
};
} // namespace

TEST_F(CatalogUsageTest, RefusesWrongCommandLines)
{
    const std::vector<std::string> aCommands[] = {
        {},
        {"unknown"},
        {"--unknown"},
        {"create"},
        {"create", "c.cat"},
        {"create", "c.cat", "--pattern", "*"},
        {"create", "c.cat", "tree", "--pattern"},
        {"create", "c.cat", "tree", "--unknown"},
        {"create", "c.cat", "tree", "--pattern", std::string(4097, '*')},
        {"create", "c.cat", "tree", "--threads"},
        {"create", "c.cat", "tree", "--threads", "0"},
        {"create", "c.cat", "tree", "--threads", "-1"},
        {"create", "c.cat", "tree", "--threads", "257"},
        {"create", "c.cat", "tree", "--threads", "many"},
        {"create", "c.cat", "tree", "--threads", "2x"},
        {"create", "c.cat", "tree", "--threads", "99999999999999999999"},
        {"verify"},
        {"verify", "good.cat", "tree"},
        {"verify", "good.cat", "--pattern", "*"},
        {"verify", "good.cat", "--threads", "0"},
        {"list"},
        {"list", "good.cat", "good.cat"},
        {"list", "good.cat", "--threads", "2"},
        {"list", "good.cat", "--allow-empty"},
        {"list", "good.cat", "--json", "--sfv"},
        {"list", "good.cat", "--json", "--sha256sums"},
        {"list", "good.cat", "--sfv", "--sha256sums"},
        {"create", "c.cat", "tree", "--json"},
        {"create", "c.cat", "--update"},
        {"verify", "good.cat", "--exclude", "*"},
        {"verify", "good.cat", "--relative-to"},
        {"check"},
        {"check", "good.cat", "--allow-empty"},
    };

    for (const std::vector<std::string>& aCommand : aCommands)
    {
        EXPECT_TRUE(IsWrongUsage(Run(aCommand))) << testing::PrintToString(aCommand);
        EXPECT_FALSE(Exists("c.cat")) << testing::PrintToString(aCommand);
    }
}

TEST_F(CatalogUsageTest, NamesItselfAndTheWordThatIsWrong)
{
    const struct
    {
        std::vector<std::string> aCommand;
        const char* szWord;
    } aCases[] = {
        {{"bogus"}, "bogus"},
        {{"--bogus"}, "--bogus"},
        {{"list", "good.cat", "bogus"}, "bogus"},
        {{"create", "c.cat", "tree", "--threads", "bogus"}, "bogus"},
        {{"verify"}, "CATALOG"},
        {{}, "create, verify, check or list"},
    };
    for (const auto& oCase : aCases)
    {
        const sRun oRun = Run(oCase.aCommand);
        EXPECT_TRUE(IsWrongUsage(oRun)) << oCase.szWord;
        EXPECT_EQ(0u, oRun.sErrors.find("tovcatalog: ")) << oRun.sErrors;
        EXPECT_NE(std::string::npos, oRun.sErrors.find(oCase.szWord)) << oRun.sErrors;
    }
}

TEST_F(CatalogUsageTest, ShowsTheControlCharactersOfAWrongArgumentEscaped)
{
    for (const std::vector<std::string>& aCommand :
         {std::vector<std::string>{"list", "good.cat", "esc\x1b[2J\nline"},
          std::vector<std::string>{"create", "c.cat", "tree", "--threads", "esc\x1b[2J\nline"}})
    {
        const sRun oRun = Run(aCommand);

        EXPECT_TRUE(IsWrongUsage(oRun)) << testing::PrintToString(aCommand);
        EXPECT_NE(std::string::npos, oRun.sErrors.find("esc\\x1b[2J\\x0aline")) << oRun.sErrors;
        EXPECT_EQ(std::string::npos, oRun.sErrors.find('\x1b')) << oRun.sErrors;
    }
}

TEST_F(CatalogUsageTest, NamesWhatIsWrongWithAnArgument)
{
    Write("file", "x");

    EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "nowhere"}), "nowhere"));
    EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "tree", "nowhere"}), "nowhere"));
    EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "file"}), "file"));
    EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "tree/a.txt"}), "tree/a.txt"));
    EXPECT_TRUE(IsRefused(Run({"create", "tree", "tree"}), "tree"));
    EXPECT_TRUE(IsRefused(Run({"create", "nowhere/c.cat", "tree"}), "nowhere/c.cat"));
    EXPECT_TRUE(IsRefused(Run({"create", "file/c.cat", "tree"}), "file/c.cat"));
    EXPECT_TRUE(IsRefused(Run({"verify", "nowhere.cat"}), "nowhere.cat"));
    EXPECT_TRUE(IsRefused(Run({"list", "nowhere.cat"}), "nowhere.cat"));
    EXPECT_TRUE(IsRefused(Run({"verify", "tree"}), "tree"));
    EXPECT_TRUE(IsRefused(Run({"list", "tree"}), "tree"));
    EXPECT_EQ((tNames{"file", "good.cat", "tree"}), NamesInFolder());
}

TEST_F(CatalogUsageTest, RefusesEmptyNamesInPlainWords)
{
    for (const std::vector<std::string>& aCommand : {std::vector<std::string>{"create", "", "tree"},
                                                     {"create", "c.cat", ""},
                                                     {"create", "c.cat", "tree", ""},
                                                     {"create", "c.cat", "tree", "--pattern", ""},
                                                     {"verify", ""},
                                                     {"list", ""}})
    {
        const sRun oRun = Run(aCommand);
        EXPECT_TRUE(IsWrongUsage(oRun)) << testing::PrintToString(aCommand);
        EXPECT_NE(std::string::npos, oRun.sErrors.find("empty")) << oRun.sErrors;
    }
    EXPECT_FALSE(Exists("c.cat"));
}

TEST_F(CatalogUsageTest, TellsItsVersion)
{
    const sRun oRun = Run({"--version"});
    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ("", oRun.sErrors);
    EXPECT_TRUE(std::regex_match(oRun.sOutput, std::regex("tovcatalog \\d+\\.\\d+\\.\\d+\n"))) << oRun.sOutput;
}

TEST_F(CatalogUsageTest, ExplainsItself)
{
    const sRun oRun = Run({"--help"});
    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ("", oRun.sErrors);
    for (const char* szWord : {"create", "verify", "check", "list", "Exit status"})
        EXPECT_NE(std::string::npos, oRun.sOutput.find(szWord)) << szWord;

    for (const char* szCommand : {"create", "verify", "list"})
    {
        const sRun oOfCommand = Run({szCommand, "--help"});
        EXPECT_EQ(0, oOfCommand.nExitCode);
        EXPECT_NE(std::string::npos, oOfCommand.sOutput.find("CATALOG")) << szCommand;
        EXPECT_EQ(std::string(szCommand) != "list", oOfCommand.sOutput.find("--threads") != std::string::npos);
        EXPECT_EQ(std::string(szCommand) != "list", oOfCommand.sOutput.find("--allow-empty") != std::string::npos);
        EXPECT_EQ(std::string(szCommand) == "create", oOfCommand.sOutput.find("--pattern") != std::string::npos);
    }
}
