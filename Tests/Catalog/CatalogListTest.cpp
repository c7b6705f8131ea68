// What list prints.
#include "Catalog/CatalogInstruments.h"

namespace
{
class CatalogListTest : public CatalogTest
{
};
} // namespace

TEST_F(CatalogListTest, PrintsChecksumSizeAndName)
{
    Write("c.cat", CatalogVersion3({"one", "two/"}, {},
                                   {{0, "a.txt", 6, 0x363a3020}, {0, "sub/b", 4000000000, 0}, {1, "c", 0, 0xFF}}));

    EXPECT_EQ((tNames{"363a3020 6 one/a.txt", "00000000 4000000000 one/sub/b", "000000ff 0 two/c"}), Listed());
}

TEST_F(CatalogListTest, EndsWithTheSum)
{
    Write("none.cat", CatalogVersion3({"one"}, {}, {}));
    Write("one.cat", CatalogVersion3({"one"}, {}, {{0, "a", 1, 0}}));
    Write("two.cat", CatalogVersion3({"one"}, {}, {{0, "a", 0xFFFFFFFF, 0}, {0, "b", 0xFFFFFFFF, 0}}));

    EXPECT_EQ("0 files, 0 bytes\n", Run({"list", "none.cat"}).sOutput);
    EXPECT_EQ("1 file, 1 bytes", Lines(Run({"list", "one.cat"}).sOutput).back());
    EXPECT_EQ("2 files, 8589934590 bytes", Lines(Run({"list", "two.cat"}).sOutput).back());
}

TEST_F(CatalogListTest, NeedsNoneOfTheFiles)
{
    Write("c.cat", CatalogVersion3({"nowhere"}, {"*.x"}, {{0, "gone.x", 6, 0x363a3020}}));

    EXPECT_EQ((tNames{"363a3020 6 nowhere/gone.x"}), Listed());
}

TEST_F(CatalogListTest, KeepsEachFileOnOneLine)
{
    Write("c.cat",
          CatalogVersion3({"tree"}, {}, {{0, "new\nline", 1, 1}, {0, "return\r", 1, 2}, {0, "esc\x1b[2J", 1, 3}}));

    const sRun oRun = Run({"list", "c.cat"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ(4u, Lines(oRun.sOutput).size());
    for (const char cCharacter : oRun.sOutput)
        EXPECT_TRUE(cCharacter == '\n' || static_cast<unsigned char>(cCharacter) >= ' ') << oRun.sOutput;
}
