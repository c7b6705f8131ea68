// Catalogues that are links.
#include "Catalog/CatalogInstruments.h"

#include <filesystem>

namespace
{
class CatalogPosixLinkTest : public CatalogTest
{
protected:
    CatalogPosixLinkTest() { Write("tree/a", "x"); }

    void Link(const std::string& sName, const std::string& sTarget)
    {
        std::filesystem::create_symlink(sTarget, Path(sName));
    }

    bool IsLink(const std::string& sName) const { return std::filesystem::is_symlink(Path(sName)); }

    static std::string Good() { return CatalogVersion3({"tree"}, {}, {{0, "a", 1, 0x8cdc1683}}); }
};
} // namespace

TEST_F(CatalogPosixLinkTest, StayLinksAndTheirTargetsAreReplaced)
{
    Write("store/real.cat", EXISTING);
    Link("store/second", "real.cat");
    Link("c.cat", "store/second");

    Create({"c.cat", "tree"});

    EXPECT_TRUE(IsLink("c.cat"));
    EXPECT_TRUE(IsLink("store/second"));
    EXPECT_FALSE(IsLink("store/real.cat"));
    EXPECT_EQ(Good(), Read("store/real.cat"));
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
    EXPECT_EQ((tNames{"c.cat", "store", "tree"}), NamesInFolder());
}

TEST_F(CatalogPosixLinkTest, ThatLeadToNothingGetATarget)
{
    MakeDirectory("store");
    Link("c.cat", "store/real.cat");
    Link("absolute", Path("store/other.cat"));

    Create({"c.cat", "tree"});
    Create({"absolute", "tree"});

    EXPECT_TRUE(IsLink("c.cat"));
    EXPECT_EQ(Good(), Read("store/real.cat"));
    EXPECT_EQ(Good(), Read("store/other.cat"));
}

TEST_F(CatalogPosixLinkTest, ThatLeadToNoPlaceAreRefusedAndKept)
{
    Link("circle", "circle");
    Link("nowhere", "no folder/c.cat");

    EXPECT_TRUE(IsRefused(Run({"create", "circle", "tree"}), "circle is a link that cannot be followed"));
    EXPECT_TRUE(IsRefused(Run({"create", "nowhere", "tree"}), "nowhere cannot be written"));

    EXPECT_TRUE(IsLink("circle"));
    EXPECT_TRUE(IsLink("nowhere"));
}

TEST_F(CatalogPosixLinkTest, KeepTheirTargetsOutOfTheCatalogue)
{
    Write("tree/real.data", EXISTING);
    Link("c.cat", "tree/real.data");

    Create({"c.cat", "tree"});

    EXPECT_EQ(Good(), Read("tree/real.data"));
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
    EXPECT_EQ(0, Run({"verify", "tree/real.data"}).nExitCode);
}
