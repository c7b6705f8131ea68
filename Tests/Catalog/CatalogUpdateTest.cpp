// Catalogues with the times of their files, by which an update knows what it need not read.
#include "Catalog/CatalogInstruments.h"

#include <CatalogFile.h>

#include <filesystem>

namespace
{
class CatalogUpdateTest : public CatalogTest
{
protected:
    CatalogUpdateTest()
    {
        WriteOld("tree/a.txt", "hello");
        WriteOld("tree/sub/b.txt", "world");
    }

    void SetAge(const std::string& sName, int nHours)
    {
        std::filesystem::last_write_time(Path(sName),
                                         std::filesystem::file_time_type::clock::now() - std::chrono::hours(nHours));
    }

    // Always the same age would not be the same time.
    void WriteOld(const std::string& sName, const std::string& sContents)
    {
        Write(sName, sContents);
        SetAge(sName, 2);
    }

    // Changes a file and keeps its time.
    void ChangeUnnoticed(const std::string& sName, const std::string& sContents)
    {
        const auto oTime = std::filesystem::last_write_time(Path(sName));
        Write(sName, sContents);
        std::filesystem::last_write_time(Path(sName), oTime);
    }

    // Runs an update and returns its summary.
    std::string Update(const std::vector<std::string>& aMore = {})
    {
        std::vector<std::string> aAll = {"create", "--update", "c.cat", "tree"};
        aAll.insert(aAll.end(), aMore.begin(), aMore.end());
        const sRun oRun = Run(aAll);
        EXPECT_EQ("", oRun.sErrors);
        return Summary(oRun);
    }
};
} // namespace

TEST_F(CatalogUpdateTest, ReadsAllFilesOnce)
{
    EXPECT_EQ("2 files, 10 bytes: catalogued, 0 known", Update());
    EXPECT_EQ("2 files, 0 bytes: catalogued, 2 known", Update());

    EXPECT_EQ((tNames{"3610a686 5 tree/a.txt", "3a771143 5 tree/sub/b.txt"}), Listed());
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
}

TEST_F(CatalogUpdateTest, ReadsAFileWithAnotherTimeOrSize)
{
    Update();
    WriteOld("tree/a.txt", "HELLO");
    SetAge("tree/a.txt", 1);
    ChangeUnnoticed("tree/sub/b.txt", "world and more");

    EXPECT_EQ("2 files, 19 bytes: catalogued, 0 known", Update());

    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
}

TEST_F(CatalogUpdateTest, DoesNotSeeAChangeThatKeepsTimeAndSizeButVerifyDoes)
{
    Update();
    ChangeUnnoticed("tree/a.txt", "HELLO");

    EXPECT_EQ("2 files, 0 bytes: catalogued, 2 known", Update());
    EXPECT_EQ((tNames{"changed tree/a.txt"}), Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogUpdateTest, ReadsAFileAgainThatHadJustChanged)
{
    Write("tree/fresh", "x");
    Update();
    ChangeUnnoticed("tree/fresh", "y");

    EXPECT_EQ("3 files, 1 bytes: catalogued, 2 known", Update());
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
}

TEST_F(CatalogUpdateTest, TakesNewFilesAndDropsMissingOnes)
{
    Update();
    Remove("tree/a.txt");
    WriteOld("tree/c.txt", "more");

    EXPECT_EQ("2 files, 4 bytes: catalogued, 1 known", Update());
    EXPECT_EQ((tNames{"8b52f27c 4 tree/c.txt", "3a771143 5 tree/sub/b.txt"}), Listed());
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
}

TEST_F(CatalogUpdateTest, KnowsADirectoryByItsNameWhateverItsNumber)
{
    WriteOld("other/a.txt", "other");
    ASSERT_EQ("3 files, 15 bytes: catalogued, 0 known", Update({"other"}));

    const sRun oRun = Run({"create", "--update", "c.cat", "other", "tree"});

    EXPECT_EQ("3 files, 0 bytes: catalogued, 3 known", Summary(oRun));
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
}

TEST_F(CatalogUpdateTest, ReadsAllForChecksumsThatTheCatalogueLacks)
{
    Update();

    EXPECT_EQ("2 files, 10 bytes: catalogued, 0 known", Update({"--sha256"}));
    EXPECT_EQ("2 files, 0 bytes: catalogued, 2 known", Update({"--sha256"}));
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
    EXPECT_EQ("2 files, 0 bytes: catalogued, 2 known", Update());
}

TEST_F(CatalogUpdateTest, ReadsAllAfterACatalogueWithoutTimes)
{
    Create({"c.cat", "tree"});

    EXPECT_EQ("2 files, 10 bytes: catalogued, 0 known", Update());
}

TEST_F(CatalogUpdateTest, RefusesABrokenCatalogueAndLeavesIt)
{
    Write("c.cat", EXISTING);

    EXPECT_TRUE(IsRefused(Run({"create", "--update", "c.cat", "tree"}), "c.cat is no catalogue"));
    EXPECT_EQ(EXISTING, Read("c.cat"));
}

TEST_F(CatalogUpdateTest, IsAskedForAndOtherwiseATimeChangesNoByte)
{
    Create({"c.cat", "tree"});
    const std::string sBefore = Read("c.cat");
    SetAge("tree/a.txt", 5);
    Create({"c.cat", "tree"});

    EXPECT_EQ(sBefore, Read("c.cat"));
}

TEST_F(CatalogUpdateTest, KeepsTimesInTheDescribedUnit)
{
    constexpr unsigned long long TICKS_PER_HOUR = 36000000000;
    constexpr unsigned long long HOURS_FROM_1601_TO_1970 = 3234576;
    SetAge("tree/sub/b.txt", 12);
    Update();

    const sCatalog oCatalog = LoadCatalog(Path("c.cat").c_str());
    ASSERT_EQ(2, oCatalog.aFiles.GetSize());
    const unsigned long long ullFirst = oCatalog.aFiles[0].GetTime();
    const unsigned long long ullSecond = oCatalog.aFiles[1].GetTime();
    const auto oNow = std::chrono::system_clock::now().time_since_epoch();
    const long long llHours = std::chrono::duration_cast<std::chrono::hours>(oNow).count();

    EXPECT_NEAR(10.0, static_cast<double>(ullFirst - ullSecond) / TICKS_PER_HOUR, 0.1);
    EXPECT_NEAR(static_cast<double>(llHours - 2),
                static_cast<double>(ullFirst / TICKS_PER_HOUR) - HOURS_FROM_1601_TO_1970, 1.1);
}
