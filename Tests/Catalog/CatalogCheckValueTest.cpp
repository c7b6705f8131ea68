// A file that ends in its own CRC-32 has the same CRC-32 as every other such file. A catalogue is not one of them.
#include "Catalog/CatalogInstruments.h"

#include <filesystem>
#include <set>

namespace
{
class CatalogCheckValueTest : public CatalogTest
{
protected:
    // The bytes of a catalogue of one file.
    std::string Catalogued(const std::string& sContents)
    {
        Write("tree/a", sContents);
        Create({"c.cat", "tree"});
        return Read("c.cat");
    }
};
} // namespace

TEST_F(CatalogCheckValueTest, MakesCataloguesOfOneSizeDifferInTheirChecksums)
{
    std::set<std::uint32_t> aChecksums;
    const std::size_t nSize = Catalogued("0").size();
    for (const char* szContents : {"0", "1", "2", "3", "4", "5", "6", "7"})
    {
        const std::string sCatalog = Catalogued(szContents);
        EXPECT_EQ(nSize, sCatalog.size());
        aChecksums.insert(Crc(sCatalog));
    }

    EXPECT_EQ(8u, aChecksums.size());
}

TEST_F(CatalogCheckValueTest, ShowsOneCatalogueInThePlaceOfAnother)
{
    Write("archive/c.cat", Catalogued("one"));
    Create({"of-archive.cat", "archive"});
    EXPECT_EQ(0, Run({"verify", "of-archive.cat"}).nExitCode);

    Write("archive/c.cat", Catalogued("two"));

    EXPECT_EQ((tNames{"changed archive/c.cat"}), Reports(Run({"verify", "of-archive.cat"})));
}
