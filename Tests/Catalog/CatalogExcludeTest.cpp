// What --exclude leaves out.
#include "Catalog/CatalogInstruments.h"

namespace
{
class CatalogExcludeTest : public CatalogTest
{
protected:
    CatalogExcludeTest()
    {
        Write("tree/a.txt", "hello");
        Write("tree/a.o", "object");
        Write("tree/.git/head", "x");
        Write("tree/sub/.git/deep/head", "x");
        Write("tree/sub/B.O", "object");
        Write("tree/sub/b.txt", "world");
    }
};

const tNames TEXTS{"3610a686 5 tree/a.txt", "3a771143 5 tree/sub/b.txt"};
} // namespace

TEST_F(CatalogExcludeTest, LeavesOutFilesAndWholeDirectories)
{
    Create({"c.cat", "tree", "--exclude", "*.o", "--exclude", ".git"});

    EXPECT_EQ(TEXTS, Listed());
}

TEST_F(CatalogExcludeTest, CountsMoreThanAPattern)
{
    Create({"c.cat", "tree", "--pattern", "*.txt", "--pattern", "head", "--exclude", ".g?t"});

    EXPECT_EQ(TEXTS, Listed());
}

TEST_F(CatalogExcludeTest, HoldsForVerifyToo)
{
    Create({"c.cat", "tree", "--exclude", "*.o", "--exclude", ".git"});
    Write("tree/sub/new.o", "x");
    Write("tree/other/.git/head", "x");
    Write("tree/a.o", "changed");
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);

    Write("tree/other/new.txt", "x");
    EXPECT_EQ((tNames{"new tree/other/new.txt"}), Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogExcludeTest, DoesNotConcernTheDirectoriesThemselves)
{
    Create({"c.cat", "tree/.git", "--exclude", ".git"});

    EXPECT_EQ((tNames{"8cdc1683 1 tree/.git/head"}), Listed());
}

TEST_F(CatalogExcludeTest, IsNamedWhereNothingIsLeft)
{
    EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "tree", "--exclude", "*"}), "no file in tree without *"));
    EXPECT_FALSE(Exists("c.cat"));
}

TEST_F(CatalogExcludeTest, IsKeptInTheDescribedFormat)
{
    Create({"c.cat", "tree", "--exclude", "*.o", "--exclude", ".git"});

    std::string sBytes = "TOVCATLG" + CatalogNumber(3) + CatalogNumber(2) + CatalogNumber(1) + CatalogText("tree") +
                         CatalogNumber(0) + CatalogNumber(2) + CatalogText("*.o") + CatalogText(".git") +
                         CatalogNumber(0);
    const std::string sPlain =
        CatalogVersion3({"tree"}, {}, {{0, "a.txt", 5, 0x3610a686}, {0, "sub/b.txt", 5, 0x3a771143}});
    const std::string sPlainHead =
        "TOVCATLG" + CatalogNumber(3) + CatalogNumber(1) + CatalogNumber(1) + CatalogText("tree") + CatalogNumber(0);
    sBytes += sPlain.substr(sPlainHead.size(), sPlain.size() - sPlainHead.size() - 4);
    EXPECT_EQ(Sealed(sBytes), Read("c.cat"));
}

TEST_F(CatalogExcludeTest, RefusesPathsAndNothing)
{
    for (const char* szPattern : {"sub/b.txt", "sub\\b.txt", ""})
    {
        EXPECT_TRUE(IsWrongUsage(Run({"create", "c.cat", "tree", "--exclude", szPattern}))) << szPattern;
        EXPECT_FALSE(Exists("c.cat"));
    }
}
