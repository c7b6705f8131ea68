// The parts of tovcatalog that its commands use in one way only.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVTestSupport.h"

#include <Catalog.h>
#include <CatalogFile.h>
#include <Console.h>
#include <FileSearch.h>
#include <Workers.h>

#include <atomic>
#include <chrono>
#include <new>
#include <stdexcept>
#include <thread>

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

namespace
{
// Work that takes so long that a caller who does not wait for it is gone before its end.
class CLongWork
{
public:
    void Do()
    {
        ++m_nBegun;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        ++m_nEnded;
    }

    int Begun() const { return m_nBegun; }
    int Ended() const { return m_nEnded; }

private:
    std::atomic<int> m_nBegun{0};
    std::atomic<int> m_nEnded{0};
};
} // namespace

TEST(CatalogPartsTest, WorkersEndBeforeAnExceptionOfTheProgressReachesTheCaller)
{
    CLongWork oWork;
    CGate oTold;
    const auto fnWork = [&] {
        oTold.Wait();
        oWork.Do();
    };
    const auto fnTell = [&] {
        oTold.Open();
        throw std::runtime_error("cannot be told");
    };

    EXPECT_THROW(RunWorkers(3, fnWork, fnTell), std::runtime_error);

    EXPECT_EQ(3, oWork.Ended());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CatalogPartsTest, NoWorkerIsLeftRunningWhenMemoryIsExhausted)
{
    int nWorkers = 0;
    for (unsigned long ulSuccesses = 0; nWorkers < 3 && ulSuccesses < 200; ++ulSuccesses)
    {
        CLongWork oWork;
        int nEnded = 0;
        try
        {
            const std::function<void()> fnWork = [&] { oWork.Do(); };
            const std::function<void()> fnNothing = [] {};
            const CAllocationFailure oFailure(ulSuccesses);
            RunWorkers(3, fnWork, fnNothing);
            nEnded = nWorkers = oWork.Ended();
        }
        catch (const std::bad_alloc&)
        {
            nEnded = oWork.Ended();
            std::this_thread::sleep_for(std::chrono::milliseconds(20)); // a worker that is left would now begin
        }
        EXPECT_EQ(nEnded, oWork.Begun()) << ulSuccesses;
    }
    EXPECT_EQ(3, nWorkers);
}
#endif

TEST(CatalogPartsTest, NoWorkersDoNothing)
{
    EXPECT_FALSE(RunWorkers(
        0, [] { ADD_FAILURE(); }, [] {}));
}

static sFileRecord RecordOf(int nDirectory, const char* szPath)
{
    sFileRecord oRecord;
    oRecord.nDirectory = nDirectory;
    oRecord.szPath = szPath;
    return oRecord;
}

TEST(CatalogPartsTest, FilesAreReadByNobody)
{
    const sCatalog oCatalog;
    CTOVArray<sFileRecord> aFiles;
    aFiles.Add(RecordOf(0, "a"));
    sReadOptions oOptions;
    oOptions.nThreads = 0;
    oOptions.bQuiet = true;
    std::atomic<bool> bStop(false);

    EXPECT_THROW(ReadFiles(oCatalog, aFiles, oOptions, bStop), CCatalogError);
    oOptions.nThreads = 1;
    bStop = true;
    EXPECT_THROW(ReadFiles(oCatalog, aFiles, oOptions, bStop), CCatalogError);
}

TEST(CatalogPartsTest, RecordsAreSortedByDirectoryAndThenByPath)
{
    EXPECT_GT(0, CompareRecords(RecordOf(0, "b"), RecordOf(1, "a")));
    EXPECT_LT(0, CompareRecords(RecordOf(1, "a"), RecordOf(0, "b")));
    EXPECT_GT(0, CompareRecords(RecordOf(1, "a"), RecordOf(1, "b")));
    EXPECT_EQ(0, CompareRecords(RecordOf(1, "a"), RecordOf(1, "a")));

    CTOVArray<sFileRecord> aFiles;
    for (const sFileRecord& oFile : {RecordOf(1, "a"), RecordOf(0, "b"), RecordOf(1, "0"), RecordOf(0, "a")})
        aFiles.Add(oFile);
    SortFiles(aFiles);
    std::string sOrder;
    for (long l = 0; l < aFiles.GetSize(); ++l)
        sOrder += std::to_string(aFiles[l].nDirectory) + aFiles[l].szPath + " ";
    EXPECT_EQ("0a 0b 10 1a ", sOrder);
}

TEST(CatalogPartsTest, AnEmptyNameIsShownAsNothing)
{
    EXPECT_TRUE(Printable(CTOVStringA()).IsEmpty());
    EXPECT_TRUE(Printable("").IsEmpty());
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

TEST(CatalogPartsTest, ATextStaysWhereTheStoreHasPutIt)
{
    CTextStore oStore;
    std::vector<std::string> aTexts;
    std::vector<const char*> aszStored;
    for (std::size_t n = 0; n < 300; ++n)
    {
        const std::size_t nLength = n % 100 == 99 ? 100000 : n % 7 * 1000;
        aTexts.emplace_back(nLength, static_cast<char>('a' + n % 26));
        aszStored.push_back(oStore.Add(aTexts.back()));
    }

    for (std::size_t n = 0; n < aTexts.size(); ++n)
        EXPECT_EQ(aTexts[n], aszStored[n]) << n;
}

TEST(CatalogPartsTest, TwoCopiesOfAListOfNamesCanGrow)
{
    CNameList aFirst;
    aFirst.Add("both");
    CNameList aSecond = aFirst;
    aFirst.Add("first");
    aSecond.Add("second");

    ASSERT_EQ(2, aFirst.GetSize());
    ASSERT_EQ(2, aSecond.GetSize());
    EXPECT_STREQ("both", ~aSecond[0]);
    EXPECT_STREQ("first", ~aFirst[1]);
    EXPECT_STREQ("second", ~aSecond[1]);
}
