// Catalogues of version 1. Data/version-1.cat is such a catalogue, made by Data/make-version-1.
#include "Catalog/CatalogSample.h"

namespace
{
class CatalogVersion1Test : public CatalogSampleTest
{
protected:
    CatalogVersion1Test() : CatalogSampleTest("version-1.cat") {}
};
} // namespace

TEST_F(CatalogVersion1Test, HasTheDescribedFormat)
{
    EXPECT_EQ(CatalogVersion1("tree", Files()), Sample());
}

TEST_F(CatalogVersion1Test, IsListed)
{
    EXPECT_EQ((tNames{"29058c73 256 tree/all-bytes", "00000000 0 tree/empty", "363a3020 6 tree/sub/hello.txt"}),
              Listed());
}

TEST_F(CatalogVersion1Test, IsVerified)
{
    const sRun oRun = Run({"verify", "c.cat"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ("3 files, 262 bytes: verified: all unchanged", Summary(oRun));
}

TEST_F(CatalogVersion1Test, ShowsDifferences)
{
    Write("tree/all-bytes", "less");
    Write("tree/sub/hello.txt", "hellO\n");
    Remove("tree/empty");
    Write("tree/more", "");

    EXPECT_EQ((tNames{"changed tree/all-bytes", "changed tree/sub/hello.txt", "missing tree/empty", "new tree/more"}),
              Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogVersion1Test, TakesSizesOfUpToFourGigabytes)
{
    Write("c.cat", CatalogVersion1("tree", {{0, "a", 0x80000000, 1}, {0, "b", 0xFFFFFFFF, 2}}));

    EXPECT_EQ((tNames{"00000001 2147483648 tree/a", "00000002 4294967295 tree/b"}), Listed());
}

TEST_F(CatalogVersion1Test, IsRefusedWhereverItIsCutOff)
{
    for (std::size_t nLength = 0; nLength < Sample().size(); ++nLength)
    {
        Write("c.cat", Sample().substr(0, nLength));
        EXPECT_TRUE(IsRefused(RunInSweep(nLength, "list"), "c.cat")) << nLength << " bytes";
        EXPECT_TRUE(IsRefused(RunInSweep(nLength, "verify"), "c.cat")) << nLength << " bytes";
    }
}

TEST_F(CatalogVersion1Test, IsRefusedWhenMoreFollows)
{
    Write("c.cat", Sample() + "x");
    EXPECT_TRUE(IsRefused(Run({"list", "c.cat"}), "c.cat"));
}

// The format has no checksum, so that some damage goes unnoticed. It must do no harm.
TEST_F(CatalogVersion1Test, IsReadOrRefusedWhicheverByteIsInverted)
{
    for (std::size_t nByte = 0; nByte < Sample().size(); ++nByte)
    {
        std::string sBytes = Sample();
        sBytes[nByte] = static_cast<char>(~sBytes[nByte]);
        Write("c.cat", sBytes);

        const sRun oRun = RunInSweep(nByte, "list");
        if (oRun.nExitCode == 0)
            EXPECT_EQ(4u, Lines(oRun.sOutput).size()) << "byte " << nByte;
        else
            EXPECT_TRUE(IsRefused(oRun, "c.cat")) << "byte " << nByte;
    }
}

TEST_F(CatalogVersion1Test, IsReplacedByTheNewFormat)
{
    Create({"c.cat", "tree"});

    EXPECT_EQ(
        CatalogVersion3({"tree"}, {},
                        {{0, "all-bytes", 256, 0x29058c73}, {0, "empty", 0, 0}, {0, "sub/hello.txt", 6, 0x363a3020}}),
        Read("c.cat"));
}
