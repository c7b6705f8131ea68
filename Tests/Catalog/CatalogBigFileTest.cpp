// A file of more than two gigabytes is read whole.
#include "Catalog/CatalogFiles.h"
#include "Catalog/CatalogInstruments.h"

namespace
{
class CatalogBigFileTest : public CatalogTest
{
};
} // namespace

TEST_F(CatalogBigFileTest, IsReadToItsEndWithoutAWordOfProgress)
{
    const unsigned long long ullZeros = 2147483648;
    ASSERT_EQ(Crc(std::string(100000, '\0') + "tail"), CReferenceCrc().AddZeros(100000).Add("tail").Value());
    MakeDirectory("tree");
    WriteSparseFile(Path("tree/big"), ullZeros, "the tail");

    const sRun oRun = Run({"create", "c.cat", "tree"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ(CatalogVersion3({"tree"}, {},
                              {{0, "big", ullZeros + 8, CReferenceCrc().AddZeros(ullZeros).Add("the tail").Value()}}),
              Read("c.cat"));
    EXPECT_EQ("1 file, 2147483656 bytes: catalogued", Summary(oRun));

    // This took long, but a pipe has no user who would want to see progress.
    EXPECT_EQ("", oRun.sErrors);
    EXPECT_EQ(1u, Lines(oRun.sOutput).size());
    EXPECT_EQ(std::string::npos, oRun.sOutput.find('\r'));
}
