// Failures of create that only Windows can bring about.
#include "Catalog/CatalogInstruments.h"
#include "Catalog/Windows/CatalogHeldFile.h"

namespace
{
const char EXISTING[] = "an existing catalogue\n";

class CCatalogWindowsFailedCreateTest : public CCatalogTest
{
protected:
    CCatalogWindowsFailedCreateTest()
    {
        Write("tree/a", "a");
        Write("c.cat", EXISTING);
    }
};
} // namespace

TEST_F(CCatalogWindowsFailedCreateTest, LeavesItWhenAnotherHoldsIt)
{
    for (const DWORD dwShared : {0ul, static_cast<DWORD>(FILE_SHARE_READ)})
    {
        {
            const CHeldFile oHeld(Path("c.cat"), dwShared);
            EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "tree"}), "c.cat")) << dwShared;
        }
        EXPECT_EQ(EXISTING, Read("c.cat"));
        EXPECT_FALSE(Exists("c.cat.new"));
    }
}

TEST_F(CCatalogWindowsFailedCreateTest, LeavesItWhenAnotherHoldsTheNewOne)
{
    Write("c.cat.new", "half");
    const CHeldFile oHeld(Path("c.cat.new"), 0);

    EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "tree"}), "c.cat"));
    EXPECT_EQ(EXISTING, Read("c.cat"));
}
