// Files that are in another place than before.
#include "Catalog/CatalogInstruments.h"

#include <filesystem>

namespace
{
class CatalogMovedTest : public CatalogTest
{
protected:
    CatalogMovedTest()
    {
        Write("tree/a.txt", "hello");
        Write("tree/sub/b.txt", "world");
        Write("tree/sub/deep/c.doc", "more");
    }

    void Move(const std::string& sFrom, const std::string& sTo) { std::filesystem::rename(Path(sFrom), Path(sTo)); }
};
} // namespace

TEST_F(CatalogMovedTest, AreToldWithBothNames)
{
    Create({"c.cat", "tree"});
    Move("tree/a.txt", "tree/z.txt");

    const sRun oRun = Run({"verify", "c.cat"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{"moved tree/a.txt -> tree/z.txt"}), Reports(oRun));
    EXPECT_EQ("2 files, 9 bytes: verified: 0 changed, 1 moved, 0 missing, 0 new, 0 unreadable", Summary(oRun));
}

TEST_F(CatalogMovedTest, AreThoseOfARenamedDirectory)
{
    Write("tree/sub/deep/d.doc", "even more");
    Create({"c.cat", "tree"});
    Move("tree/sub/deep", "tree/other");

    EXPECT_EQ(
        (tNames{"moved tree/sub/deep/c.doc -> tree/other/c.doc", "moved tree/sub/deep/d.doc -> tree/other/d.doc"}),
        Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogMovedTest, AreFoundInOtherDirectoriesOfTheCatalogue)
{
    Write("other/x", "x");
    Create({"c.cat", "tree", "other"});
    Move("tree/a.txt", "other/a.txt");

    EXPECT_EQ((tNames{"moved tree/a.txt -> other/a.txt"}), Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogMovedTest, AreNotThoseWithOtherContents)
{
    Create({"c.cat", "tree"});
    Remove("tree/a.txt");
    Write("tree/same-size", "HELLO");
    Write("tree/longer", "hello ");

    EXPECT_EQ((tNames{"missing tree/a.txt", "new tree/longer", "new tree/same-size"}),
              Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogMovedTest, AreNotCopiesOfFilesThatAreStillThere)
{
    Create({"c.cat", "tree"});
    Write("tree/copy", "hello");

    EXPECT_EQ((tNames{"new tree/copy"}), Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogMovedTest, AreEachOneFile)
{
    Create({"c.cat", "tree"});
    Move("tree/a.txt", "tree/y");
    Write("tree/z", "hello");

    EXPECT_EQ((tNames{"moved tree/a.txt -> tree/y", "new tree/z"}), Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogMovedTest, ArePreferredWithTheSameName)
{
    Write("tree/1/name", "same");
    Write("tree/2/other", "same");
    Create({"c.cat", "tree"});
    MakeDirectory("tree/3");
    Move("tree/1/name", "tree/3/name");
    Move("tree/2/other", "tree/3/another");

    EXPECT_EQ((tNames{"moved tree/1/name -> tree/3/name", "moved tree/2/other -> tree/3/another"}),
              Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogMovedTest, AreEmptyOnlyWithTheSameName)
{
    Write("tree/marker", "");
    Write("tree/empty", "");
    Create({"c.cat", "tree"});
    Move("tree/marker", "tree/sub/marker");
    Move("tree/empty", "tree/void");

    EXPECT_EQ((tNames{"missing tree/empty", "moved tree/marker -> tree/sub/marker", "new tree/void"}),
              Reports(Run({"verify", "c.cat"})));
}
