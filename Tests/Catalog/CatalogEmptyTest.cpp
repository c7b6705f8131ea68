// Catalogues without a directory or a file would agree with everything.
#include "Catalog/CatalogInstruments.h"

namespace
{
class CatalogEmptyTest : public CatalogTest
{
protected:
    CatalogEmptyTest()
    {
        MakeDirectory("empty/more");
        Write("tree/a.txt", "x");
        Write("c.cat", EXISTING);
    }
};
} // namespace

TEST_F(CatalogEmptyTest, IsNotWrittenForADirectoryWithoutFiles)
{
    EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "empty"}), "no file in empty"));
    EXPECT_EQ(EXISTING, Read("c.cat"));
}

TEST_F(CatalogEmptyTest, IsNotWrittenForPatternsThatNothingMatches)
{
    const sRun oRun = Run({"create", "c.cat", "tree", "empty", "--pattern", "*.none", "--pattern", "*.\ndoc"});

    EXPECT_TRUE(IsRefused(oRun, "no file in tree, empty matches *.none, *.\\x0adoc"));
    EXPECT_EQ(EXISTING, Read("c.cat"));
}

TEST_F(CatalogEmptyTest, IsNotWrittenWhereAllIsLeftOut)
{
    EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "tree", "--exclude", "*.txt", "--exclude", "x"}),
                          "no file in tree without *.txt, x: c.cat is not written"));
    EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "tree", "--pattern", "a*", "--exclude", "*.txt"}),
                          "no file in tree matches a* without *.txt"));
    EXPECT_EQ(EXISTING, Read("c.cat"));
}

TEST_F(CatalogEmptyTest, IsNotWrittenWhereTheCatalogueIsTheOnlyFile)
{
    Write("empty/c.cat", EXISTING);

    EXPECT_TRUE(IsRefused(Run({"create", "empty/c.cat", "empty"}), "empty/c.cat"));
    EXPECT_EQ(EXISTING, Read("empty/c.cat"));
}

TEST_F(CatalogEmptyTest, IsWrittenAndVerifiedWhenItIsAllowed)
{
    const sRun oRun = Run({"create", "c.cat", "empty", "--allow-empty"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ("0 files, 0 bytes: catalogued", Summary(oRun));
    EXPECT_EQ(CatalogVersion3({"empty"}, {}, {}), Read("c.cat"));
    EXPECT_EQ(tNames(), Listed());
    EXPECT_EQ(0, Run({"verify", "--allow-empty", "c.cat"}).nExitCode);
    Write("empty/new", "x");
    EXPECT_EQ((tNames{"new empty/new"}), Reports(Run({"verify", "--allow-empty", "c.cat"})));
}

TEST_F(CatalogEmptyTest, IsNotVerified)
{
    for (const std::string& sEmpty : {CatalogVersion3({"empty"}, {}, {}), CatalogVersion2({"empty"}, {"*"}, {}),
                                      CatalogVersion1("empty", {}), CatalogVersion3({}, {}, {})})
    {
        Write("c.cat", sEmpty);
        EXPECT_TRUE(IsRefused(Run({"verify", "c.cat"}), "c.cat holds no file"));
    }
}

TEST_F(CatalogEmptyTest, IsNotWhatAFileMakesWithOtherThingsThatGaveNothing)
{
    const sRun oRun = Run({"create", "c.cat", "empty", "tree", "--pattern", "*.none", "--pattern", "*.TXT"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ((tNames{"empty      empty", "unmatched  *.none"}), Lines(oRun.sErrors));
    EXPECT_EQ((tNames{"8cdc1683 1 tree/a.txt"}), Listed());
}

TEST_F(CatalogEmptyTest, IsNotHelpedByADirectoryThatMatchesAPattern)
{
    const sRun oRun = Run({"create", "c.cat", "tree", "empty", "--pattern", "mor?", "--pattern", "a*"});

    EXPECT_EQ((tNames{"empty      empty", "unmatched  mor?"}), Lines(oRun.sErrors));
}
