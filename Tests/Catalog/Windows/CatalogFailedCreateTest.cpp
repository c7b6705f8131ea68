// Failures of create that only Windows can bring about.
#include "Catalog/CatalogInstruments.h"
#include "Catalog/Windows/CatalogHeldFile.h"

namespace
{
class CatalogWindowsFailedCreateTest : public CatalogTest
{
protected:
    CatalogWindowsFailedCreateTest()
    {
        Write("tree/a", "a");
        Write("c.cat", EXISTING);
    }
};
} // namespace

TEST_F(CatalogWindowsFailedCreateTest, LeavesItWhenAnotherHoldsIt)
{
    for (const DWORD dwShared : {0ul, static_cast<DWORD>(FILE_SHARE_READ)})
    {
        {
            const CHeldFile oHeld(Path("c.cat"), dwShared);
            EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "tree"}), "c.cat")) << dwShared;
        }
        EXPECT_EQ(EXISTING, Read("c.cat"));
        EXPECT_EQ((tNames{"c.cat", "tree"}), NamesInFolder());
    }
}

// A run that is writing its own catalogue holds its file in this way.
TEST_F(CatalogWindowsFailedCreateTest, TouchesNoUnfinishedOneThatAnotherHolds)
{
    Write("tovcatalog-1.new", "TOVCATLG");
    const CHeldFile oHeld(Path("tovcatalog-1.new"), FILE_SHARE_READ | FILE_SHARE_WRITE);

    Create({"c.cat", "tree"});

    EXPECT_EQ("TOVCATLG", Read("tovcatalog-1.new"));
    EXPECT_EQ((tNames{"c.cat", "tovcatalog-1.new", "tree"}), NamesInFolder());
}
