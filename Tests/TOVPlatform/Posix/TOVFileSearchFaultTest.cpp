// Searches whose system calls fail one by one.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVDirectoryFault.h"
#include "TOVPlatform/TOVFileInstruments.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace File = TOVPlatform::TOVFile;

namespace
{
typedef std::vector<std::string> tNames;

class TOVPlatformFileSearchFaultTest : public CFileFixture
{
protected:
    TOVPlatformFileSearchFaultTest()
    {
        for (const char* szName : {"a", "bad", "c"})
            WriteWholeFile(Path(szName), "");
    }

    // The names that a search finds, sorted. m_eEnd tells how it ended.
    tNames Find(const std::string& sPattern)
    {
        tNames aNames;
        File::sTOVFindData oRecord;
        unsigned long long hFind = 0;
        m_eEnd = File::FindFirstEntry(Path(sPattern).c_str(), &oRecord, &hFind);
        for (; m_eEnd == File::eFindEntry; m_eEnd = File::FindNextEntry(hFind, &oRecord))
            aNames.push_back(oRecord.szName);
        File::FindClose(hFind);
        std::sort(aNames.begin(), aNames.end());
        return aNames;
    }

    static long CountDescriptors() { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); }

    File::eFindResult m_eEnd = File::eFindEntry;
};
} // namespace

TEST_F(TOVPlatformFileSearchFaultTest, PassesOverAnEntryThatCannotBeLookedAtAndFailsAtItsEnd)
{
    for (const int nError : {EIO, EACCES, ENOMEM, ESTALE})
    {
        const CStatusFault oFault("bad", nError);
        EXPECT_EQ(tNames({".", "..", "a", "c"}), Find("*")) << nError;
        EXPECT_EQ(File::eFindFailure, m_eEnd) << nError;
        EXPECT_EQ(tNames(), Find("b*")) << nError;
        EXPECT_EQ(File::eFindFailure, m_eEnd) << nError;
        EXPECT_EQ(tNames(), Find("bad")) << nError;
        EXPECT_EQ(File::eFindFailure, m_eEnd) << nError;
    }
}

TEST_F(TOVPlatformFileSearchFaultTest, CaresForNoEntryThatDoesNotMatch)
{
    const CStatusFault oFault("bad", EIO);

    EXPECT_EQ(tNames({"a"}), Find("a*"));
    EXPECT_EQ(File::eFindEnd, m_eEnd);
}

TEST_F(TOVPlatformFileSearchFaultTest, TakesAnEntryThatIsGoneByNowForNone)
{
    const CStatusFault oFault("bad", ENOENT);

    EXPECT_EQ(tNames({".", "..", "a", "c"}), Find("*"));
    EXPECT_EQ(File::eFindEnd, m_eEnd);
    EXPECT_EQ(tNames(), Find("bad"));
    EXPECT_EQ(File::eFindEnd, m_eEnd);
}

TEST_F(TOVPlatformFileSearchFaultTest, FindsALinkThatLeadsWhereNobodyCanLook)
{
    std::filesystem::create_symlink(std::string(5000, 'x').substr(0, 4000) + "/x", Path("link"));

    EXPECT_EQ(tNames({"link"}), Find("l*"));
    EXPECT_EQ(File::eFindEnd, m_eEnd);
}

TEST_F(TOVPlatformFileSearchFaultTest, TakesNoLinkForADeadOneWhoseTargetCannotBeLookedAt)
{
    std::filesystem::create_symlink("a", Path("link"));
    for (const int nError : {EACCES, EIO, ESTALE, ENOMEM})
    {
        const CStatusFault oFault("link", nError, CStatusFault::eTarget);
        EXPECT_EQ(tNames({".", "..", "a", "bad", "c"}), Find("*")) << nError;
        EXPECT_EQ(File::eFindFailure, m_eEnd) << nError;
        EXPECT_EQ(tNames(), Find("link")) << nError;
        EXPECT_EQ(File::eFindFailure, m_eEnd) << nError;
    }
    for (const int nError : {ENOENT, ENOTDIR, ELOOP, ENAMETOOLONG})
    {
        const CStatusFault oFault("link", nError, CStatusFault::eTarget);
        EXPECT_EQ(tNames({"link"}), Find("l*")) << nError;
        EXPECT_EQ(File::eFindEnd, m_eEnd) << nError;
        EXPECT_EQ(tNames({"link"}), Find("link")) << nError;
    }
}

TEST_F(TOVPlatformFileSearchFaultTest, FailsWhereADirectoryCannotBeOpened)
{
    std::string sLong;
    for (int nLevel = 0; nLevel < 20; ++nLevel)
        sLong += std::string(250, 'd') + "/";

    EXPECT_EQ(tNames(), Find(sLong + "*"));
    EXPECT_EQ(File::eFindFailure, m_eEnd);
}

TEST_F(TOVPlatformFileSearchFaultTest, FailsForAHandleThatWasNeverGiven)
{
    File::sTOVFindData oRecord;
    EXPECT_EQ(File::eFindFailure, File::FindNextEntry(0x7FFFFFFFFFFF, &oRecord));
}

TEST_F(TOVPlatformFileSearchFaultTest, FindsNothingForTheRootsOwnName)
{
    File::sTOVFindData oRecord;
    unsigned long long hFind = 0;
    EXPECT_EQ(File::eFindEnd, File::FindFirstEntry("/.", &oRecord, &hFind));
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST_F(TOVPlatformFileSearchFaultTest, KeepsNoDescriptorWhenThereIsNoMemory)
{
    const std::string sPattern = Path("*");
    const long lBefore = CountDescriptors();
    int nFailed = 0;
    for (unsigned long ulSuccesses = 0; ulSuccesses < 20; ++ulSuccesses)
    {
        File::sTOVFindData oRecord;
        unsigned long long hFind = FILE_INVALID_HANDLE;
        {
            const CAllocationFailure oFailure(ulSuccesses);
            nFailed += File::FindFirstEntry(sPattern.c_str(), &oRecord, &hFind) == File::eFindFailure ? 1 : 0;
        }
        File::FindClose(hFind);
    }

    EXPECT_LT(2, nFailed);
    EXPECT_EQ(lBefore, CountDescriptors());
}

TEST_F(TOVPlatformFileSearchFaultTest, FailsWhereThereIsNoMemoryForTheTranslationOfAName)
{
    std::filesystem::create_directories(Path("one/two"));
    for (const char* szName : {"*", "a", "A*"})
    {
        const std::string sPattern = Path("one\\two\\") + szName;
        File::sTOVFindData oRecord;
        unsigned long long hFind = FILE_INVALID_HANDLE;
        for (unsigned long ulSuccesses = 0; ulSuccesses < 3; ++ulSuccesses)
        {
            const CAllocationFailure oFailure(ulSuccesses);
            EXPECT_EQ(File::eFindFailure, File::FindFirstEntry(sPattern.c_str(), &oRecord, &hFind))
                << sPattern << ulSuccesses;
        }
    }
}
#endif
