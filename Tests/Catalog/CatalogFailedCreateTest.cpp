// A create that fails or is interrupted leaves an existing catalogue as it was.
#include "Catalog/CatalogFiles.h"
#include "Catalog/CatalogInstruments.h"
#include "Support/TOVTerminal.h"

#include <TOVPlatform/TOVFile.h>

namespace
{
class CatalogFailedCreateTest : public CatalogTest
{
protected:
    CatalogFailedCreateTest()
    {
        Write("tree/a", "x");
        Write("c.cat", EXISTING);
    }

    void WriteBigFile() { WriteSparseFile(Path("tree/big"), ENDLESS_SIZE, ""); }

    void ExpectThatTheNextOneSucceeds()
    {
        Remove("tree/big");
        Create({"c.cat", "tree"});
        EXPECT_EQ(CatalogVersion3({"tree"}, {}, {{0, "a", 1, 0x8cdc1683}}), Read("c.cat"));
        EXPECT_EQ((tNames{"c.cat", "tree"}), NamesInFolder());
    }
};
} // namespace

TEST_F(CatalogFailedCreateTest, LeavesACatalogueThatIsReadOnly)
{
    namespace File = TOVPlatform::TOVFile;
    Write("tree/a", "x");
    Write("c.cat", EXISTING);
    ASSERT_TRUE(File::SetAttributes(Path("c.cat").c_str(), File::eFileAttributeReadOnly));

    EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "tree"}), "c.cat cannot be written: it is read-only"));

    EXPECT_EQ(EXISTING, Read("c.cat"));
    EXPECT_EQ((tNames{"c.cat", "tree"}), NamesInFolder());
    ASSERT_TRUE(File::SetAttributes(Path("c.cat").c_str(), File::eFileAttributeNormal));
    Create({"c.cat", "tree"});
}

TEST_F(CatalogFailedCreateTest, LeavesItWhenADirectoryIsWrong)
{
    EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "tree", "nowhere"}), "nowhere"));
    EXPECT_EQ(EXISTING, Read("c.cat"));
}

TEST_F(CatalogFailedCreateTest, LeavesItWhenTheUserInterrupts)
{
    WriteBigFile();
    CTerminal oTerminal(Program({"create", "c.cat", "tree"}));
    ASSERT_TRUE(oTerminal.WaitUntilItShows("MB/s"));

    oTerminal.PressInterruptKeys();

    EXPECT_NE(0, oTerminal.WaitForEnd());
    EXPECT_EQ(EXISTING, Read("c.cat"));
    ExpectThatTheNextOneSucceeds();
}

TEST_F(CatalogFailedCreateTest, LeavesItWhenTheProcessIsKilled)
{
    WriteBigFile();
    CTerminal oTerminal(Program({"create", "c.cat", "tree"}));
    ASSERT_TRUE(oTerminal.WaitUntilItShows("MB/s"));

    oTerminal.Kill();

    EXPECT_EQ(-1, oTerminal.WaitForEnd());
    EXPECT_EQ(EXISTING, Read("c.cat"));
    ExpectThatTheNextOneSucceeds();
}
