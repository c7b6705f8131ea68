// What the file functions ask of the system, and what they make of its answers.
#include "Support/TOVBlockableThread.h"
#include "Support/TOVTestSupport.h"
#include "Support/Windows/TOVImportHook.h"

#include <TOVPlatform/TOVFile.h>

#include <cstdio>
#include <cstring>
#include <windows.h>

namespace File = TOVPlatform::TOVFile;

namespace
{
struct sBit
{
    unsigned long ulOwn;
    DWORD dwSystem;
};

const sBit BITS[] = {{0x01, 0x20}, {0x02, 0x800}, {0x04, 0x10}, {0x08, 0x02},
                     {0x10, 0x80}, {0x20, 0x01},  {0x40, 0x04}, {0x80, 0x100}};

const sBit ALL_BITS = {0xFF, 0x9B7};
const sBit UNTRANSLATED[] = {{0, 0}, {0xFFFFFFFF, 0xFFFFFFFF}};

DWORD s_dwAttributes;

DWORD WINAPI AnswerAttributes(LPCSTR)
{
    return s_dwAttributes;
}

BOOL s_bAnswer;

BOOL WINAPI RememberAttributes(LPCSTR, DWORD dwAttributes)
{
    s_dwAttributes = dwAttributes;
    return s_bAnswer;
}

unsigned long Read(DWORD dwAttributes)
{
    CImportHook oHook("GetFileAttributesA", &AnswerAttributes);
    s_dwAttributes = dwAttributes;
    return File::GetAttributes("name");
}

DWORD Written(unsigned long ulAttributes)
{
    CImportHook oHook("SetFileAttributesA", &RememberAttributes);
    s_bAnswer = TRUE;
    EXPECT_TRUE(File::SetAttributes("name", ulAttributes));
    return s_dwAttributes;
}

int s_nTransfers;

std::size_t CountRead(void*, std::size_t, std::size_t, FILE*)
{
    ++s_nTransfers;
    return 0;
}

std::size_t CountWrite(const void*, std::size_t, std::size_t, FILE*)
{
    ++s_nTransfers;
    return 0;
}

std::string s_sName;
std::string s_sMode;

CGate* s_pMayOpen;
CGate* s_pOpening;

// The file "slow" is opened when the test says so.
FILE* OpenWhenTold(const char* szName, const char* szMode)
{
    if (std::strstr(szName, "slow") != nullptr)
    {
        s_pOpening->Open();
        s_pMayOpen->Wait();
    }
    return std::fopen(szName, szMode);
}

FILE* RefuseToOpen(const char* szName, const char* szMode)
{
    s_sName = szName;
    s_sMode = szMode;
    return nullptr;
}

int s_nAccessMode;

int AnswerAccess(const char* szName, int nMode)
{
    s_sName = szName;
    s_nAccessMode = nMode;
    return s_sName == "there" ? 0 : -1;
}

WIN32_FIND_DATAA s_oEntry;
HANDLE s_hFind;
HANDLE s_hAsked;

HANDLE WINAPI AnswerFirst(LPCSTR szPattern, LPWIN32_FIND_DATAA pEntry)
{
    s_sName = szPattern;
    *pEntry = s_oEntry;
    return s_hFind;
}

BOOL WINAPI AnswerNext(HANDLE hFind, LPWIN32_FIND_DATAA pEntry)
{
    s_hAsked = hFind;
    *pEntry = s_oEntry;
    return s_bAnswer;
}

BOOL WINAPI AnswerClose(HANDLE hFind)
{
    s_hAsked = hFind;
    return TRUE;
}

class TOVPlatformWindowsFileSearchTest : public testing::Test
{
protected:
    TOVPlatformWindowsFileSearchTest()
        : m_oFirst("FindFirstFileA", &AnswerFirst), m_oNext("FindNextFileA", &AnswerNext),
          m_oClose("FindClose", &AnswerClose)
    {
        s_oEntry = WIN32_FIND_DATAA();
        s_oEntry.dwFileAttributes = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_READONLY;
        s_oEntry.ftCreationTime = {0x11111111, 0x22222222};
        s_oEntry.ftLastAccessTime = {0xF3333333, 0x44444444};
        s_oEntry.ftLastWriteTime = {0x55555555, 0xF6666666};
        s_oEntry.nFileSizeHigh = 0xF7777777;
        s_oEntry.nFileSizeLow = 0x88888888;
        std::strcpy(s_oEntry.cFileName, "name.ext");
        std::strcpy(s_oEntry.cAlternateFileName, "NAME~1.EXT");
        s_hFind = reinterpret_cast<HANDLE>(0x80000010);
        s_hAsked = nullptr;
        s_bAnswer = TRUE;
        std::memset(&m_oRecord, 0x55, sizeof(m_oRecord));
    }

    void ExpectTheEntry() const
    {
        EXPECT_EQ(0x21u, m_oRecord.ulAttributes);
        EXPECT_EQ(0x2222222211111111u, m_oRecord.ullCreationTime);
        EXPECT_EQ(0x44444444F3333333u, m_oRecord.ullLastAccessTime);
        EXPECT_EQ(0xF666666655555555u, m_oRecord.ullLastWriteTime);
        EXPECT_EQ(0xF777777788888888u, m_oRecord.ullSize);
        EXPECT_EQ("name.ext" + std::string(252, '\0'), std::string(m_oRecord.szName, 260));
    }

    CImportHook m_oFirst;
    CImportHook m_oNext;
    CImportHook m_oClose;
    File::sTOVFindData m_oRecord;
};
} // namespace

TEST(TOVPlatformWindowsFileAttributesTest, TranslatesEachBitOfTheSystem)
{
    for (const sBit& oBit : BITS)
        EXPECT_EQ(oBit.ulOwn, Read(oBit.dwSystem)) << oBit.dwSystem;
    EXPECT_EQ(ALL_BITS.ulOwn, Read(ALL_BITS.dwSystem));
    EXPECT_EQ(0x21u, Read(0x21));
}

TEST(TOVPlatformWindowsFileAttributesTest, TranslatesEachBitOfTheLibrary)
{
    for (const sBit& oBit : BITS)
        EXPECT_EQ(oBit.dwSystem, Written(oBit.ulOwn)) << oBit.ulOwn;
    EXPECT_EQ(ALL_BITS.dwSystem, Written(ALL_BITS.ulOwn));
    EXPECT_EQ(0x21u, Written(0x21));
}

TEST(TOVPlatformWindowsFileAttributesTest, PassesNothingAndEverythingOnAsTheyAre)
{
    for (const sBit& oValue : UNTRANSLATED)
    {
        EXPECT_EQ(oValue.ulOwn, Read(oValue.dwSystem));
        EXPECT_EQ(oValue.dwSystem, Written(oValue.ulOwn));
    }
}

TEST(TOVPlatformWindowsFileAttributesTest, DropsBitsWithoutAnEquivalent)
{
    EXPECT_EQ(0x20u, Read(0x7FFFF001));
    EXPECT_EQ(0x01u, Written(0x7FFFFF20));
}

TEST(TOVPlatformWindowsFileAttributesTest, GivesTheSystemsResult)
{
    CImportHook oHook("SetFileAttributesA", &RememberAttributes);
    s_bAnswer = FALSE;

    EXPECT_FALSE(File::SetAttributes("name", 0x20));
}

TEST(TOVPlatformWindowsFileOpenTest, PassesNameAndModeOnUnchanged)
{
    CImportHook oHook("fopen", &RefuseToOpen);
    for (const char* szAccess : {"w", "a", "r+", "a+"})
    {
        for (const char* szSuffix : {"", "t", "b", "c", "n", "tc", "tn", "bc", "bn"})
        {
            const std::string sMode = std::string(szAccess) + szSuffix;
            EXPECT_EQ(FILE_INVALID_HANDLE, File::Open("dir\\sub/name.ext", sMode.c_str()));
            EXPECT_EQ(sMode, s_sMode);
            EXPECT_EQ("dir\\sub/name.ext", s_sName);
        }
    }
}

// A stream that commits could not be flushed where it only reads, and so not be closed.
TEST(TOVPlatformWindowsFileOpenTest, LeavesCommittingToThoseThatWrite)
{
    CImportHook oHook("fopen", &RefuseToOpen);
    for (const char* szMode : {"r", "rt", "rb"})
    {
        for (const char* szSuffix : {"", "c", "n"})
        {
            File::Open("name", (std::string(szMode) + szSuffix).c_str());
            EXPECT_EQ(szMode, s_sMode);
        }
    }
}

TEST(TOVPlatformWindowsFileTransferTest, HandsNoNullBufferToTheRuntime)
{
    const CTempFolder oFolder;
    const unsigned long long hFile = File::Open(oFolder.File("file").c_str(), "w+b");
    s_nTransfers = 0;
    {
        const CImportHook oRead("fread", &CountRead);
        const CImportHook oWrite("fwrite", &CountWrite);
        File::Read(hFile, nullptr, 0, 1);
        File::Write(hFile, nullptr, 0, 1);
    }

    EXPECT_EQ(0, s_nTransfers);
    File::Close(hFile);
}

TEST(TOVPlatformWindowsFileExistsTest, AsksForExistenceAlone)
{
    CImportHook oHook("_access", &AnswerAccess);
    s_nAccessMode = -1;

    EXPECT_TRUE(File::DoesExist("there"));
    EXPECT_FALSE(File::DoesExist("elsewhere"));

    EXPECT_EQ(0, s_nAccessMode);
    EXPECT_EQ("elsewhere", s_sName);
}

TEST_F(TOVPlatformWindowsFileSearchTest, FillsTheRecordFromTheFirstEntry)
{
    EXPECT_NE(FILE_INVALID_HANDLE, File::FindFirst("dir\\*.ext", &m_oRecord));

    EXPECT_EQ("dir\\*.ext", s_sName);
    ExpectTheEntry();
}

TEST_F(TOVPlatformWindowsFileSearchTest, FillsTheRecordFromTheNextEntry)
{
    EXPECT_TRUE(File::FindNext(1, &m_oRecord));

    ExpectTheEntry();
}

TEST_F(TOVPlatformWindowsFileSearchTest, WidensTheHandleWithItsSign)
{
    EXPECT_EQ(0xFFFFFFFF80000010u, File::FindFirst("*", &m_oRecord));
    s_hFind = reinterpret_cast<HANDLE>(0x10);
    EXPECT_EQ(0x10u, File::FindFirst("*", &m_oRecord));
}

TEST_F(TOVPlatformWindowsFileSearchTest, HandsTheLowHalfOfAHandleBack)
{
    File::FindNext(0xFFFFFFFF80000010, &m_oRecord);
    EXPECT_EQ(reinterpret_cast<HANDLE>(0x80000010), s_hAsked);

    File::FindClose(0xFFFFFFFF80000020);
    EXPECT_EQ(reinterpret_cast<HANDLE>(0x80000020), s_hAsked);
}

TEST_F(TOVPlatformWindowsFileSearchTest, LeavesTheRecordWhenTheSystemFindsNothing)
{
    const File::sTOVFindData oBefore = m_oRecord;
    s_hFind = INVALID_HANDLE_VALUE;

    EXPECT_EQ(FILE_INVALID_HANDLE, File::FindFirst("*", &m_oRecord));

    EXPECT_EQ(0, std::memcmp(&oBefore, &m_oRecord, sizeof(m_oRecord)));
}

TEST_F(TOVPlatformWindowsFileSearchTest, EndsWhereTheSystemDoes)
{
    s_bAnswer = FALSE;

    EXPECT_FALSE(File::FindNext(1, &m_oRecord));
}

TEST_F(TOVPlatformWindowsFileSearchTest, CopiesNoMoreOfANameThanItsRecordHolds)
{
    std::memset(s_oEntry.cFileName, 'n', sizeof(s_oEntry.cFileName));
    std::memset(s_oEntry.cAlternateFileName, 'a', sizeof(s_oEntry.cAlternateFileName));

    File::FindFirst("*", &m_oRecord);

    EXPECT_EQ(std::string(260, 'n'), std::string(m_oRecord.szName, 260));
    EXPECT_EQ('\0', m_oRecord.cGuard);
}

// The table of files is free while the system is busy with one of them.
TEST(TOVPlatformWindowsFileTest, KeepsTheTableFreeWhileAFileIsBeingOpened)
{
    const CTempFolder oFolder;
    WriteWholeFile(oFolder.File("slow"), "s");
    WriteWholeFile(oFolder.File("quick"), "q");
    CGate oMayOpen;
    CGate oOpening;
    s_pMayOpen = &oMayOpen;
    s_pOpening = &oOpening;
    const CImportHook oHook("fopen", &OpenWhenTold);
    unsigned long long hSlow = FILE_INVALID_HANDLE;
    CBlockableThread oSlow([&] { hSlow = File::Open(oFolder.File("slow").c_str(), "rb"); });
    ASSERT_TRUE(oOpening.Wait());

    CBlockableThread oQuick([&] {
        char cRead = 0;
        const unsigned long long hQuick = File::Open(oFolder.File("quick").c_str(), "rb");
        EXPECT_EQ(1u, File::Read(hQuick, &cRead, 1, 1));
        EXPECT_EQ(File::eFileSuccess, File::Close(hQuick));
    });
    EXPECT_TRUE(oQuick.Finishes());

    oMayOpen.Open();
    ASSERT_TRUE(oSlow.Finishes());
    EXPECT_EQ(File::eFileSuccess, File::Close(hSlow));
}
