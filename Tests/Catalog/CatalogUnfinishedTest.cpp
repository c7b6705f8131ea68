// The file in which a catalogue is written before it takes its place, and others that stand in its way.
#include "Catalog/CatalogInstruments.h"
#include "Support/TOVAllocationCounter.h"

#include <UnfinishedCatalog.h>

#include <atomic>
#include <new>
#include <thread>

namespace
{
class CatalogUnfinishedTest : public CatalogTest
{
protected:
    CatalogUnfinishedTest() { Write("tree/a", "x"); }

    static std::string Good() { return CatalogVersion3({"tree"}, {}, {{0, "a", 1, 0x8cdc1683}}); }
};
} // namespace

TEST_F(CatalogUnfinishedTest, TakesTheNameOfNobodysFile)
{
    for (const char* szName : {"c.cat.new", "tovcatalog-1.new", "tovcatalog-3.new", "tovcatalog-.new"})
        Write(szName, "somebody's own");
    Write("tovcatalog-2x.new", Good());
    Write("tovcatalog-4.new.old", Good());
    MakeDirectory("tovcatalog-2.new");

    Create({"c.cat", "tree"});

    EXPECT_EQ(Good(), Read("c.cat"));
    for (const char* szName : {"c.cat.new", "tovcatalog-1.new", "tovcatalog-3.new", "tovcatalog-.new"})
        EXPECT_EQ("somebody's own", Read(szName)) << szName;
    EXPECT_EQ((tNames{"c.cat", "c.cat.new", "tovcatalog-.new", "tovcatalog-1.new", "tovcatalog-2.new",
                      "tovcatalog-2x.new", "tovcatalog-3.new", "tovcatalog-4.new.old", "tree"}),
              NamesInFolder());
}

TEST_F(CatalogUnfinishedTest, LeavesFilesOfItsKindInTheCatalogue)
{
    Write("tree/c.cat.new", "somebody's own");
    Write("tree/tovcatalog-1.new", "somebody's own");

    Create({"tree/c.cat", "tree"});

    EXPECT_EQ(3u, Listed("tree/c.cat").size());
    EXPECT_EQ(0, Run({"verify", "tree/c.cat"}).nExitCode);
}

// Interrupted runs leave such files.
TEST_F(CatalogUnfinishedTest, IsRemovedByTheNextRun)
{
    Write("tovcatalog-1.new", Good().substr(0, 20));

    Create({"c.cat", "tree"});

    EXPECT_EQ((tNames{"c.cat", "tree"}), NamesInFolder());
}

TEST_F(CatalogUnfinishedTest, IsNoFileOfACatalogue)
{
    Write("tree/tovcatalog-1.new", "TOVCATLG and more");
    Write("tree/sub/tovcatalog-23.new", "TOVC");
    Write("tree/tovcatalog-2.new", "");

    Create({"c.cat", "tree"});
    EXPECT_EQ((tNames{"8cdc1683 1 tree/a"}), Listed());
    Write("tree/tovcatalog-3.new", Good());
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
    EXPECT_EQ("TOVCATLG and more", Read("tree/tovcatalog-1.new"));
}

TEST_F(CatalogUnfinishedTest, IsLeftToTheRunThatIsWritingIt)
{
    Write("c.cat", "an existing catalogue");
    {
        const CUnfinishedCatalog oOfAnotherRun(CTOVStringA(Path("c.cat").c_str()));
        EXPECT_EQ(Path("tovcatalog-1.new"), ~oOfAnotherRun.GetName());

        Create({"c.cat", "tree"});

        EXPECT_EQ(Good(), Read("c.cat"));
        EXPECT_TRUE(Exists("tovcatalog-1.new"));
        EXPECT_FALSE(RemoveAbandonedFile(oOfAnotherRun.GetName()));
    }
    EXPECT_EQ((tNames{"c.cat", "tree"}), NamesInFolder());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST_F(CatalogUnfinishedTest, IsRemovedWithoutMemory)
{
    const CTOVStringA oName(Path("tovcatalog-1.new").c_str());
    const CTOVStringA oCatalog(Path("c.cat").c_str());
    bool bCreated = false;
    for (unsigned long ulSuccesses = 0; !bCreated; ++ulSuccesses)
    {
        try
        {
            const CAllocationFailure oFailure(ulSuccesses);
            const CNewFile oFile(oName, oCatalog);
            bCreated = oFile.IsOpen();
        }
        catch (const std::bad_alloc&)
        {
        }
        ASSERT_EQ((tNames{"tree"}), NamesInFolder()) << ulSuccesses;
        ASSERT_GT(100u, ulSuccesses);
    }
}
#endif

TEST_F(CatalogUnfinishedTest, LeavesNothingBrokenWhereManyRunsWriteOneCatalogue)
{
    std::atomic<int> nSucceeded{0};
    for (int nRound = 0; nRound < 5; ++nRound)
    {
        std::vector<std::thread> aRuns;
        for (int nRun = 0; nRun < 6; ++nRun)
            aRuns.emplace_back([&] { nSucceeded += Run({"create", "c.cat", "tree"}).nExitCode == 0 ? 1 : 0; });
        for (std::thread& oRun : aRuns)
            oRun.join();
        EXPECT_EQ(Good(), Read("c.cat"));
    }

    EXPECT_LT(0, nSucceeded);
    EXPECT_EQ((tNames{"c.cat", "tree"}), NamesInFolder());
}
