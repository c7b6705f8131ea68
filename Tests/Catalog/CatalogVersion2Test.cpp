// Catalogues of version 2. Data/version-2.cat is such a catalogue, written by an earlier version of the program.
#include "Catalog/CatalogSample.h"

namespace
{
class CatalogVersion2Test : public CatalogSampleTest
{
protected:
    CatalogVersion2Test() : CatalogSampleTest("version-2.cat") {}
};
} // namespace

TEST_F(CatalogVersion2Test, HasTheDescribedFormat)
{
    EXPECT_EQ(CatalogVersion2({"tree"}, {"*"}, Files()), Sample());
}

TEST_F(CatalogVersion2Test, IsListed)
{
    EXPECT_EQ((tNames{"29058c73 256 tree/all-bytes", "00000000 0 tree/empty", "363a3020 6 tree/sub/hello.txt"}),
              Listed());
}

TEST_F(CatalogVersion2Test, IsVerified)
{
    const sRun oRun = Run({"verify", "c.cat"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ("3 files, 262 bytes: verified: all unchanged", Summary(oRun));
}

TEST_F(CatalogVersion2Test, ShowsDifferences)
{
    Write("tree/all-bytes", "less");
    Remove("tree/empty");
    Write("tree/more", "");

    EXPECT_EQ((tNames{"changed tree/all-bytes", "missing tree/empty", "new tree/more"}),
              Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogVersion2Test, IsRefusedWhereverItIsCutOffOrChanged)
{
    for (std::size_t nByte = 0; nByte < Sample().size(); ++nByte)
    {
        Write("c.cat", Sample().substr(0, nByte));
        EXPECT_TRUE(IsRefused(RunInSweep(nByte, "list"), "c.cat")) << nByte << " bytes";

        std::string sBytes = Sample();
        sBytes[nByte] = static_cast<char>(~sBytes[nByte]);
        Write("c.cat", sBytes);
        EXPECT_TRUE(IsRefused(RunInSweep(nByte, "list"), "c.cat")) << "byte " << nByte;
    }
}

TEST_F(CatalogVersion2Test, IsRefusedWithTheCheckValueOfTheNextVersion)
{
    Write("c.cat", Sealed(Sample().substr(0, Sample().size() - 4)));

    EXPECT_TRUE(IsRefused(Run({"list", "c.cat"}), "checksum"));
}

TEST_F(CatalogVersion2Test, IsReplacedByTheNewFormat)
{
    Create({"c.cat", "tree", "--pattern", "*"});

    EXPECT_EQ(CatalogVersion3({"tree"}, {"*"}, Files()), Read("c.cat"));
}
