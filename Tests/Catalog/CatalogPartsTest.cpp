// The parts of tovcatalog that its commands use in one way only.
#include "Support/TOVTestSupport.h"

#include <Catalog.h>
#include <CatalogFile.h>
#include <Workers.h>

#include <atomic>
#include <stdexcept>

TEST(CatalogPartsTest, WorkersHandTheirExceptionToTheCaller)
{
    std::atomic<int> nCalls(0);
    const auto Fail = [&nCalls] {
        ++nCalls;
        throw std::runtime_error("no more");
    };

    EXPECT_THROW(RunWorkers(3, Fail, [] {}), std::runtime_error);

    EXPECT_EQ(3, nCalls) << "one ends, the others go on";
}

TEST(CatalogPartsTest, NoWorkersDoNothing)
{
    EXPECT_FALSE(RunWorkers(
        0, [] { ADD_FAILURE(); }, [] {}));
}

TEST(CatalogPartsTest, ANameWithoutADirectoryStandsAtTheRoot)
{
    CTOVStringA oNoDirectory("/");
    oNoDirectory.Empty();

    EXPECT_STREQ("/name", JoinPath(oNoDirectory, "name").GetString());
    EXPECT_STREQ("/name", JoinPath(CTOVStringA(), "name").GetString());
}

TEST(CatalogPartsTest, ACatalogueAtTheRootIsLookedForThere)
{
    EXPECT_THROW(LoadCatalog("/there is no such catalogue"), CCatalogError);
}
