// Relative names that count from another directory.
#include "Catalog/CatalogInstruments.h"

#include <filesystem>

namespace
{
class CatalogRelativeTest : public CatalogTest
{
protected:
    CatalogRelativeTest()
    {
        Write("tree/a.txt", "hello");
        Create({"c.cat", "tree"});
        Write("copy/tree/a.txt", "hello");
    }
};
} // namespace

TEST_F(CatalogRelativeTest, AreThoseOfAnotherCopy)
{
    Write("tree/a.txt", "HELLO");
    EXPECT_EQ(0, Run({"verify", "c.cat", "--relative-to", "copy"}).nExitCode);
    EXPECT_EQ(1, Run({"verify", "c.cat"}).nExitCode);

    Write("copy/tree/b.txt", "x");
    EXPECT_EQ((tNames{"new copy/tree/b.txt"}), Reports(Run({"verify", "c.cat", "--relative-to", "copy"})));
}

TEST_F(CatalogRelativeTest, AreFoundFromAnywhere)
{
    const sRun oRun = RunCatalog({"verify", "../c.cat", "--relative-to", ".."}, Path("copy"));

    EXPECT_EQ(0, oRun.nExitCode) << oRun.sOutput << oRun.sErrors;
    EXPECT_EQ("1 file, 5 bytes: verified: all unchanged", Summary(oRun));
}

TEST_F(CatalogRelativeTest, DoNotConcernAbsoluteOnes)
{
    Create({"absolute.cat", Path("tree")});

    EXPECT_EQ(0, Run({"verify", "absolute.cat", "--relative-to", "copy"}).nExitCode);
}

TEST_F(CatalogRelativeTest, CountFromADirectoryOnly)
{
    EXPECT_TRUE(IsRefused(Run({"verify", "c.cat", "--relative-to", "nowhere"}), "nowhere is no directory"));
    EXPECT_TRUE(IsRefused(Run({"verify", "c.cat", "--relative-to", "c.cat"}), "c.cat is no directory"));
    EXPECT_TRUE(IsWrongUsage(Run({"verify", "c.cat", "--relative-to", ""})));
}

TEST_F(CatalogRelativeTest, CountForListsToo)
{
    Write("c.sfv", "tree/a.txt 3610A686\n");
    Write("tree/a.txt", "HELLO");

    EXPECT_EQ(0, Run({"check", "c.sfv", "--relative-to", "copy"}).nExitCode);
    EXPECT_EQ((tNames{"changed tree/a.txt"}), Reports(Run({"check", "c.sfv"})));
}
