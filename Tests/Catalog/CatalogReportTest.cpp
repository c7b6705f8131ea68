// The forms of a report: quiet, and JSON. That the JSON is valid, check-json asks another program.
#include "Catalog/CatalogInstruments.h"

#include <Console.h>
#include <TreeWalker.h>

#include <algorithm>
#include <regex>

namespace
{
class CatalogReportTest : public CatalogTest
{
protected:
    CatalogReportTest()
    {
        Write("tree/a.txt", "hello");
        Write("tree/b.txt", "world");
        Create({"c.cat", "tree"});
    }
};

std::string Json(const char* szName)
{
    bool bExact = false;
    return JsonText(szName, bExact);
}
} // namespace

TEST_F(CatalogReportTest, SaysNothingOfWhatIsSameWhenQuiet)
{
    Write("list", "tree/a.txt 3610A686\n");

    for (const tNames& aCommand :
         {tNames{"create", "new.cat", "tree", "--quiet"}, {"verify", "c.cat", "--quiet"}, {"check", "list", "--quiet"}})
    {
        const sRun oRun = Run(aCommand);
        EXPECT_EQ(0, oRun.nExitCode) << aCommand[0];
        EXPECT_EQ("", oRun.sOutput + oRun.sErrors) << aCommand[0];
    }
    EXPECT_EQ(Read("c.cat"), Read("new.cat"));
}

TEST_F(CatalogReportTest, SaysEachDifferenceWhenQuiet)
{
    Write("tree/b.txt", "WORLD");
    Write("tree/c.txt", "x");

    const sRun oRun = Run({"verify", "c.cat", "--quiet"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{"new        tree/c.txt", "changed    tree/b.txt"}), Lines(oRun.sOutput));
}

TEST_F(CatalogReportTest, IsAnObjectOfFindingsInJson)
{
    Write("tree/a.txt", "HELLO");
    Write("tree/c.txt", "world");
    Remove("tree/b.txt");

    const sRun oRun = Run({"verify", "c.cat", "--json"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ("{\n"
              "  \"catalog\": \"c.cat\",\n"
              "  \"findings\": [\n"
              "    {\"kind\": \"moved\", \"name\": \"tree/c.txt\", \"from\": \"tree/b.txt\"},\n"
              "    {\"kind\": \"changed\", \"name\": \"tree/a.txt\"}\n"
              "  ],\n"
              "  \"changed\": 1,\n"
              "  \"moved\": 1,\n"
              "  \"missing\": 0,\n"
              "  \"new\": 0,\n"
              "  \"unreadable\": 0,\n"
              "  \"files\": 1,\n"
              "  \"bytes\": 5,\n"
              "  \"seconds\": #\n"
              "}\n",
              std::regex_replace(oRun.sOutput, std::regex("[0-9]+\\.[0-9]{3}\n"), "#\n"));
}

TEST_F(CatalogReportTest, IsAListOfFilesInJson)
{
    EXPECT_EQ("{\n"
              "  \"files\": [\n"
              "    {\"name\": \"tree/a.txt\", \"size\": 5, \"crc32\": \"3610a686\"},\n"
              "    {\"name\": \"tree/b.txt\", \"size\": 5, \"crc32\": \"3a771143\"}\n"
              "  ],\n"
              "  \"catalog\": \"c.cat\",\n"
              "  \"directories\": [\"tree\"],\n"
              "  \"patterns\": [],\n"
              "  \"excludes\": [],\n"
              "  \"bytes\": 10\n"
              "}\n",
              Run({"list", "c.cat", "--json"}).sOutput);
}

TEST_F(CatalogReportTest, IsValidJsonWithoutFilesAndWithSeveralPatterns)
{
    Write("none.cat", CatalogVersion3({"one", "two"}, {"*.a", "*.b", "*.c"}, {}));

    EXPECT_EQ("{\n"
              "  \"files\": [],\n"
              "  \"catalog\": \"none.cat\",\n"
              "  \"directories\": [\"one\", \"two\"],\n"
              "  \"patterns\": [\"*.a\", \"*.b\", \"*.c\"],\n"
              "  \"excludes\": [],\n"
              "  \"bytes\": 0\n"
              "}\n",
              Run({"list", "none.cat", "--json"}).sOutput);
}

TEST_F(CatalogReportTest, HasTheSha256InJsonWhereItIsKnown)
{
    Create({"c.cat", "tree", "--sha256"});

    const std::string sList = Run({"list", "c.cat", "--json"}).sOutput;

    EXPECT_NE(std::string::npos,
              sList.find("{\"name\": \"tree/a.txt\", \"size\": 5, \"crc32\": \"3610a686\", \"sha256\": "
                         "\"2cf24dba5fb0a30e26e83b2ac5b9e29e1b161e5c1fa7425e73043362938b9824\"}"))
        << sList;
}

TEST_F(CatalogReportTest, EscapesWhatJsonOrATerminalCannotShow)
{
    EXPECT_EQ("\"plain\"", Json("plain"));
    EXPECT_EQ("\"a\\\"b\\\\c/d\"", Json("a\"b\\c/d"));
    EXPECT_EQ("\"\\u000a\\u001b\\u007f\"", Json("\n\x1b\x7f"));
    EXPECT_EQ("\"\"", Json(""));
}

TEST_F(CatalogReportTest, TellsTheFilesThatAWalkHasFoundAfterEachLevel)
{
    Write("tree/sub/c", "x");
    Write("tree/sub/deep/d", "x");
    CTOVArray<sFileRecord> aFiles;
    CTextStore oPaths;
    tUnreadable aUnreadable;
    const CNameList aPatterns;
    const std::atomic<bool> bNoStop(false);
    for (const int nThreads : {1, 2})
    {
        std::vector<std::pair<long, long>> aTold;
        CTreeWalker oWalker(aPatterns, aFiles, oPaths, aUnreadable, bNoStop, nThreads);
        oWalker.TellProgress(
            [&](const sWalkProgress& oProgress) { aTold.emplace_back(oProgress.lFiles, oProgress.lDirectories); });
        oWalker.Walk(0, Path("tree").c_str());

        for (const std::pair<long, long>& oLevel : {std::make_pair(2L, 1L), {3L, 2L}, {4L, 3L}})
            EXPECT_LE(1, std::count(aTold.begin(), aTold.end(), oLevel)) << oLevel.first;
    }
}
