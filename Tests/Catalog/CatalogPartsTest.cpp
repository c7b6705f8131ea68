// The parts of tovcatalog that its commands use in one way only.
#include "Support/TOVTestSupport.h"

#include <Catalog.h>
#include <CatalogFile.h>
#include <Console.h>
#include <FileSearch.h>
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
