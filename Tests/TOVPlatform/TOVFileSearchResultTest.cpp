// Whether a search has come to its end or has failed.
#include "Support/TOVDirectoryFault.h"
#include "TOVPlatform/TOVFileInstruments.h"

#include <cstring>

namespace File = TOVPlatform::TOVFile;

namespace
{
class TOVPlatformFileSearchResultTest : public CFileFixture
{
protected:
    TOVPlatformFileSearchResultTest()
    {
        for (int nFile = 100; nFile < 108; ++nFile)
            WriteWholeFile(Path("file" + std::to_string(nFile)), "");
    }

    // How a search for a pattern of the folder begins. It must be given to FindClose unless it found nothing.
    File::eFindResult Begin(const std::string& sPattern)
    {
        std::memset(&m_oRecord, 0x55, sizeof(m_oRecord));
        return File::FindFirstEntry(Path(sPattern).c_str(), &m_oRecord, &m_hFind);
    }

    // Goes through all entries of a pattern. Returns how the search ends.
    File::eFindResult Search(const std::string& sPattern)
    {
        m_nFound = 0;
        File::eFindResult eResult = Begin(sPattern);
        const unsigned long long hFind = m_hFind;
        for (; eResult == File::eFindEntry; eResult = File::FindNextEntry(hFind, &m_oRecord))
            ++m_nFound;
        File::FindClose(hFind);
        return eResult;
    }

    void ExpectUntouchedRecord() const
    {
        File::sTOVFindData oUntouched;
        std::memset(&oUntouched, 0x55, sizeof(oUntouched));
        EXPECT_EQ(0, std::memcmp(&oUntouched, &m_oRecord, sizeof(m_oRecord)));
    }

    File::sTOVFindData m_oRecord;
    unsigned long long m_hFind = 0;
    int m_nFound = 0;
};
} // namespace

TEST_F(TOVPlatformFileSearchResultTest, IsTheEndAfterTheLastEntry)
{
    EXPECT_EQ(File::eFindEnd, Search("*"));
    EXPECT_EQ(10, m_nFound);
    EXPECT_EQ(File::eFindEnd, Search("file10?"));
    EXPECT_EQ(8, m_nFound);
    EXPECT_EQ(File::eFindEnd, Search("FILE105"));
    EXPECT_EQ(1, m_nFound);
}

TEST_F(TOVPlatformFileSearchResultTest, IsTheEndWhereNothingIsFound)
{
    for (const char* szPattern : {"*.none", "none", "nowhere/*", "nowhere/none", "file100/*", "f*/*", ""})
    {
        EXPECT_EQ(File::eFindEnd, Begin(szPattern)) << szPattern;
        EXPECT_EQ(FILE_INVALID_HANDLE, m_hFind) << szPattern;
        ExpectUntouchedRecord();
    }
    EXPECT_EQ(File::eFindEnd, File::FindFirstEntry(nullptr, &m_oRecord, &m_hFind));
    EXPECT_EQ(FILE_INVALID_HANDLE, m_hFind);
}

TEST_F(TOVPlatformFileSearchResultTest, HasNoZeroValueLikeTheOtherResults)
{
    EXPECT_EQ(1, File::eFindEntry);
    EXPECT_EQ(2, File::eFindEnd);
    EXPECT_EQ(-1, File::eFindFailure);
}

TEST_F(TOVPlatformFileSearchResultTest, IsAFailureForAHandleThatIsNone)
{
    std::memset(&m_oRecord, 0x55, sizeof(m_oRecord));
    for (const unsigned long long hFind : {0ull, FILE_INVALID_HANDLE})
    {
        EXPECT_EQ(File::eFindFailure, File::FindNextEntry(hFind, &m_oRecord)) << hFind;
        ExpectUntouchedRecord();
    }
}

TEST_F(TOVPlatformFileSearchResultTest, IsAFailureWhereverReadingTheDirectoryFails)
{
    for (unsigned long ulGood = 1; ulGood < 10; ++ulGood)
    {
        const CDirectoryFault oFault(ulGood);
        EXPECT_EQ(File::eFindFailure, Search("*")) << ulGood;
        EXPECT_GT(10, m_nFound) << ulGood;
    }
    EXPECT_EQ(File::eFindEnd, Search("*"));
}

TEST_F(TOVPlatformFileSearchResultTest, IsAFailureWhereReadingFailsBeforeTheFirstEntry)
{
    const CDirectoryFault oFault(0);

    EXPECT_EQ(File::eFindFailure, Begin("file*"));
    EXPECT_EQ(FILE_INVALID_HANDLE, m_hFind);
    ExpectUntouchedRecord();
}

TEST_F(TOVPlatformFileSearchResultTest, LooksLikeTheEndToFindNextAlone)
{
    ASSERT_EQ(File::eFindEntry, Begin("*"));
    const unsigned long long hFind = m_hFind;
    ASSERT_TRUE(File::FindNext(hFind, &m_oRecord));
    {
        const CDirectoryFault oFault(0);
        EXPECT_FALSE(File::FindNext(hFind, &m_oRecord));
    }
    File::FindClose(hFind);
}
