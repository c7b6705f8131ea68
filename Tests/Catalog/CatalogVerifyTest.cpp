// What verify reports.
#include "Catalog/CatalogInstruments.h"

#include <filesystem>

namespace
{
class CatalogVerifyTest : public CatalogTest
{
protected:
    CatalogVerifyTest()
    {
        Write("tree/a.txt", "hello");
        Write("tree/sub/b.txt", "world");
        Write("tree/sub/deep/c.doc", "more");
    }
};
} // namespace

TEST_F(CatalogVerifyTest, FindsNothingWhereNothingChanged)
{
    Create({"c.cat", "tree"});

    const sRun oRun = Run({"verify", "c.cat"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ("3 files, 14 bytes: verified: all unchanged", Summary(oRun));
    EXPECT_EQ(1u, Lines(oRun.sOutput).size());
    EXPECT_EQ("", oRun.sErrors);
}

TEST_F(CatalogVerifyTest, ReportsEachChangeByNameAndCount)
{
    Write("tree/kept", "kept");
    Create({"c.cat", "tree"});
    Write("tree/a.txt", "hellO");
    Write("tree/sub/b.txt", "world and more");
    Remove("tree/sub/deep/c.doc");
    Write("tree/other/d", "");

    const sRun oRun = Run({"verify", "c.cat"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ(
        (tNames{"changed tree/a.txt", "changed tree/sub/b.txt", "missing tree/sub/deep/c.doc", "new tree/other/d"}),
        Reports(oRun));
    EXPECT_NE(std::string::npos, Summary(oRun).find(" verified: 2 changed, 1 missing, 1 new, 0 unreadable"))
        << Summary(oRun);
    EXPECT_EQ("", oRun.sErrors);
}

TEST_F(CatalogVerifyTest, FailsForASingleDifferenceOfAnyKind)
{
    const struct
    {
        const char* szName;
        const char* szContents; // null: the file is removed
        const char* szReport;
    } aCases[] = {
        {"tree/a.txt", "hellp", "changed tree/a.txt"},     // the last bit
        {"tree/a.txt", "iello", "changed tree/a.txt"},     // the first one
        {"tree/a.txt", "", "changed tree/a.txt"},          // emptied
        {"tree/a.txt", "hell", "changed tree/a.txt"},      // shorter
        {"tree/a.txt", "hello\n", "changed tree/a.txt"},   // longer
        {"tree/a.txt", nullptr, "missing tree/a.txt"},     //
        {"tree/sub/new", "", "new tree/sub/new"},          //
        {"tree/new/sub/new", "x", "new tree/new/sub/new"}, //
    };

    for (const auto& oCase : aCases)
    {
        Remove("tree/new");
        Remove("tree/sub/new");
        Write("tree/a.txt", "hello");
        Create({"c.cat", "tree"});
        if (oCase.szContents != nullptr)
            Write(oCase.szName, oCase.szContents);
        else
            Remove(oCase.szName);

        const sRun oRun = Run({"verify", "c.cat"});
        EXPECT_EQ(1, oRun.nExitCode) << oCase.szReport;
        EXPECT_EQ(tNames{oCase.szReport}, Reports(oRun));
    }
}

TEST_F(CatalogVerifyTest, ReportsAChangeThatKeepsTheChecksumButNotTheSize)
{
    // Four bytes after any text can bring its CRC-32 to any value; these do so for the empty text.
    const std::string sSameChecksum("\xFF\xFF\xFF\xFF", 4);
    ASSERT_EQ(0xFFFFFFFFu, Crc(sSameChecksum));
    Write("tree/a.txt", sSameChecksum);
    Write("c.cat", CatalogVersion3({"tree"}, {"a.txt"}, {{0, "a.txt", 5, 0xFFFFFFFF}}));

    EXPECT_EQ((tNames{"changed tree/a.txt"}), Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogVerifyTest, ReportsAFileWhosePlaceADirectoryHasTaken)
{
    Create({"c.cat", "tree"});
    Remove("tree/a.txt");
    Write("tree/a.txt/inside", "x");

    EXPECT_EQ((tNames{"missing tree/a.txt", "new tree/a.txt/inside"}), Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogVerifyTest, ReportsAllFilesOfADirectoryThatIsGone)
{
    Write("other/x", "x");
    Create({"c.cat", "tree", "other"});
    Remove("tree");

    const sRun oRun = Run({"verify", "c.cat"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ(
        (tNames{"missing tree/a.txt", "missing tree/sub/b.txt", "missing tree/sub/deep/c.doc", "unreadable tree"}),
        Reports(oRun));
}

TEST_F(CatalogVerifyTest, CaresForContentsAlone)
{
    Create({"c.cat", "tree"});
    std::filesystem::last_write_time(Path("tree/a.txt"),
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1000));
    std::filesystem::rename(Path("tree/sub/b.txt"), Path("b.txt"));
    std::filesystem::copy_file(Path("b.txt"), Path("tree/sub/b.txt"));
    MakeDirectory("tree/empty");

    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
}

TEST_F(CatalogVerifyTest, GoesByTheCataloguesPatterns)
{
    Create({"c.cat", "tree", "--pattern", "*.txt", "--pattern", "*.md"});
    Write("tree/ignored.doc", "x");
    Write("tree/sub/deep/c.doc", "changed");
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);

    Write("tree/seen.MD", "x");
    EXPECT_EQ((tNames{"new tree/seen.MD"}), Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogVerifyTest, TellsDirectoriesApart)
{
    Write("other/a.txt", "hello");
    Create({"c.cat", "tree", "other"});
    Write("other/a.txt", "HELLO");

    EXPECT_EQ((tNames{"changed other/a.txt"}), Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogVerifyTest, FindsTheSameWithAnyNumberOfThreads)
{
    tNames aExpected;
    for (int nFile = 100; nFile < 160; ++nFile)
        Write("tree/" + std::to_string(nFile), std::string(nFile * 301, 'x'));
    Create({"c.cat", "tree", "--threads", "8"});
    for (int nFile = 100; nFile < 160; nFile += 3)
    {
        Write("tree/" + std::to_string(nFile), std::string(nFile * 301, 'y'));
        aExpected.push_back("changed tree/" + std::to_string(nFile));
    }

    const sRun oOne = Run({"verify", "c.cat", "--threads", "1"});
    EXPECT_EQ(aExpected, Reports(oOne));
    for (const char* szThreads : {"2", "8", "256"})
    {
        const sRun oMany = Run({"verify", "--threads", szThreads, "c.cat"});
        EXPECT_EQ(aExpected, Reports(oMany));
        EXPECT_EQ(Summary(oOne), Summary(oMany));
    }
}

TEST_F(CatalogVerifyTest, CountsRelativeDirectoriesFromWhereItIsStarted)
{
    Create({"c.cat", "tree"});
    MakeDirectory("copy");
    std::filesystem::copy(Path("tree"), Path("copy/tree"), std::filesystem::copy_options::recursive);
    EXPECT_EQ(0, RunCatalog({"verify", "../c.cat"}, Path("copy")).nExitCode);

    Write("copy/tree/a.txt", "HELLO");
    EXPECT_EQ((tNames{"changed tree/a.txt"}), Reports(RunCatalog({"verify", Path("c.cat")}, Path("copy"))));
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
}

TEST_F(CatalogVerifyTest, LeavesTheCatalogueAsItIs)
{
    Create({"c.cat", "tree"});
    const std::string sBefore = Read("c.cat");
    Write("tree/a.txt", "HELLO");

    Run({"verify", "c.cat"});
    Run({"list", "c.cat"});

    EXPECT_EQ(sBefore, Read("c.cat"));
    EXPECT_EQ((tNames{"c.cat", "tree"}), NamesInFolder());
}

TEST_F(CatalogVerifyTest, ReadsSizesBeyondFourGigabytes)
{
    Write("c.cat", CatalogVersion3({"tree"}, {"a.txt"}, {{0, "a.txt", 0x300000005, Crc("hello")}}));

    EXPECT_EQ((tNames{"3610a686 12884901893 tree/a.txt"}), Listed());
    EXPECT_EQ((tNames{"changed tree/a.txt"}), Reports(Run({"verify", "c.cat"})));
}
