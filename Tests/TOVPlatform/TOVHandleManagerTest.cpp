// The table of open files: its slots, its checks, and its lock.
#include "Support/TOVBlockableThread.h"
#include "Support/TOVLayout.h"
#include "Support/TOVNativeFile.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVRowName.h"
#include "TOVPlatform/TOVFileInstruments.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <type_traits>

namespace File = TOVPlatform::TOVFile;
using File::CTOVHandleManager;

namespace
{
TOV_PRIVATE_MEMBER(FilesOf, CTOVHandleManager, FILE**, m_pFiles)
TOV_PRIVATE_MEMBER(LockOf, CTOVHandleManager, CTOVCriticalSection, m_oLock)
TOV_PRIVATE_MEMBER(MaxHandlesOf, CTOVHandleManager, unsigned long, m_ulMaxHandles)

constexpr unsigned long SLOTS = 4;

// Only its address counts.
FILE* const ANY_FILE = stderr;

// The operations that check a handle.
struct sTableUser
{
    const char* szName;
    void (*fnUse)(CTOVHandleManager& oManager, unsigned long long hHandle);
};

const sTableUser TABLE_USERS[] = {
    {"SetFile", [](CTOVHandleManager& oManager, unsigned long long hHandle) { oManager.SetFile(hHandle, ANY_FILE); }},
    {"GetFile", [](CTOVHandleManager& oManager, unsigned long long hHandle) { oManager.GetFile(hHandle); }},
    {"ClearHandle", [](CTOVHandleManager& oManager, unsigned long long hHandle) { oManager.ClearHandle(hHandle); }},
};

class CTOVHandleManagerCheckTest : public testing::TestWithParam<sTableUser>
{
protected:
    CTOVHandleManagerCheckTest() : m_oManager(SLOTS) { m_oManager.SetFile(0, ANY_FILE); }

    CTOVHandleManager m_oManager;
};

class TOVPlatformFileTableTest : public CFileFixture
{
};

// The functions that take the handle of a file.
struct sHandleUser
{
    const char* szName;
    void (*fnUse)(unsigned long long hFile);
};

char s_szBuffer[8];

const sHandleUser HANDLE_USERS[] = {
    {"Close", [](unsigned long long hFile) { File::Close(hFile); }},
    {"Read", [](unsigned long long hFile) { File::Read(hFile, s_szBuffer, 1, 1); }},
    {"Write", [](unsigned long long hFile) { File::Write(hFile, s_szBuffer, 1, 1); }},
    {"Gets", [](unsigned long long hFile) { File::Gets(hFile, s_szBuffer, 8); }},
    {"Puts", [](unsigned long long hFile) { File::Puts(hFile, "x"); }},
    {"Printf", [](unsigned long long hFile) { File::Printf(hFile, "%d", 1); }},
    {"Vprintf", [](unsigned long long hFile) { CallVprintf(hFile, "%d", 1); }},
    {"Tell", [](unsigned long long hFile) { File::Tell(hFile); }},
    {"Seek", [](unsigned long long hFile) { File::Seek(hFile, 0, File::eSeekOriginStart); }},
    {"Flush", [](unsigned long long hFile) { File::Flush(hFile); }},
};

class TOVPlatformFileHandleTest : public testing::TestWithParam<sHandleUser>
{
protected:
    // What the function's check says of the handle. A process of its own each time, as the table stays locked.
    std::string CheckOf(unsigned long long hFile) const
    {
        return RunChild("UsesHandle", {GetParam().szName, std::to_string(hFile)}).sOutput;
    }
};

// Opens a file for each slot. Whether each got the next handle, from 0 on.
bool FillTheTable(const std::string& sPath)
{
    for (unsigned long long hExpected = 0; hExpected < FILE_SLOTS; ++hExpected)
    {
        if (File::Open(sPath.c_str(), "rb") != hExpected)
            return false;
    }
    return true;
}
} // namespace

TOV_CHILD(UsesHandle)
{
    const auto pUser = std::find_if(std::begin(HANDLE_USERS), std::end(HANDLE_USERS),
                                    [&](const sHandleUser& oUser) { return aArguments[0] == oUser.szName; });
    SayCheck([&] { pUser->fnUse(std::stoull(aArguments[1])); });
}

// Holds a second thread, started by the scenario, that may never end.
TOV_CHILD(KeepsTheTableLockedAfterAFailedCheck)
{
    const char* const szPath = aArguments[0].c_str();
    SayCheck([] { File::Tell(FILE_INVALID_HANDLE); });

    const unsigned long long hFile = File::Open(szPath, "rb");
    Say(File::Read(hFile, s_szBuffer, 1, 1) == 1 ? "this thread works on" : "this thread fails");
    CBlockableThread* const pOther = new CBlockableThread([szPath] { File::Open(szPath, "rb"); });
    Say(pOther->IsBlocked() ? "the other waits" : "the other works");
    std::_Exit(0);
}

TOV_CHILD(FillsTheTable)
{
    const std::string sOverflow = aArguments[0] + "-overflow";
    // A smaller table takes nothing from the library's own.
    CTOVHandleManager oSmall(SLOTS);

    Say(FillTheTable(aArguments[0]) ? "0 to 1023" : "out of order");
    Say(File::Open(sOverflow.c_str(), "wb") == FILE_INVALID_HANDLE ? "full" : "not full");
    Say(std::filesystem::exists(sOverflow) ? "made a file" : "made no file");

    for (const unsigned long long hFile : {700, 1023, 30})
        File::Close(hFile);
    for (int nTurn = 0; nTurn < 3; ++nTurn)
        Say(std::to_string(File::Open(aArguments[0].c_str(), "rb")));
    Say(File::Open(sOverflow.c_str(), "wb") == FILE_INVALID_HANDLE ? "full" : "not full");
}

TOV_CHILD(OpensItsFirstFiles)
{
    for (int nTurn = 0; nTurn < 3; ++nTurn)
        Say(std::to_string(File::Open(aArguments[0].c_str(), "rb")));
    Say(std::to_string(File::Open((aArguments[0] + "-missing").c_str(), "rb") == FILE_INVALID_HANDLE));
    File::Close(0);
    Say(std::to_string(File::Open(aArguments[0].c_str(), "rb")));
}

TEST(CTOVHandleManagerTest, HoldsFilesLockAndNumberInThisOrder)
{
    CTOVHandleManager oManager(SLOTS);

    ExpectMembersInOrder(oManager, FilesOf(oManager), LockOf(oManager), MaxHandlesOf(oManager));
    EXPECT_TRUE(std::has_virtual_destructor_v<CTOVHandleManager>);
}

TEST(CTOVHandleManagerTest, BeginsWithFreeSlots)
{
    CTOVHandleManager oManager(SLOTS);

    EXPECT_EQ(SLOTS, MaxHandlesOf(oManager));
    for (unsigned long long hHandle = 0; hHandle < SLOTS; ++hHandle)
        EXPECT_EQ(nullptr, oManager.GetFile(hHandle)) << hHandle;
}

TEST(CTOVHandleManagerTest, HasOneTableOf1024SlotsForTheLibrary)
{
    EXPECT_EQ(&CTOVHandleManager::Instance(), &CTOVHandleManager::Instance());
    EXPECT_EQ(FILE_SLOTS, MaxHandlesOf(CTOVHandleManager::Instance()));
}

TEST(CTOVHandleManagerTest, FindsTheLowestFreeSlotAndDoesNotReserveIt)
{
    CTOVHandleManager oManager(SLOTS);
    EXPECT_EQ(0u, oManager.FindFreeHandle());
    EXPECT_EQ(0u, oManager.FindFreeHandle());

    oManager.SetFile(0, ANY_FILE);
    oManager.SetFile(2, ANY_FILE);

    EXPECT_EQ(1u, oManager.FindFreeHandle());
    oManager.SetFile(1, ANY_FILE);
    EXPECT_EQ(3u, oManager.FindFreeHandle());
}

TEST(CTOVHandleManagerTest, FindsNoSlotWhenAllAreTaken)
{
    CTOVHandleManager oManager(SLOTS);
    for (unsigned long long hHandle = 0; hHandle < SLOTS; ++hHandle)
        oManager.SetFile(hHandle, ANY_FILE);

    EXPECT_EQ(FILE_INVALID_HANDLE, oManager.FindFreeHandle());

    oManager.ClearHandle(3);
    EXPECT_EQ(3u, oManager.FindFreeHandle());
    oManager.ClearHandle(1);
    EXPECT_EQ(1u, oManager.FindFreeHandle());
}

TEST(CTOVHandleManagerTest, FindsNoSlotInATableOfNone)
{
    CTOVHandleManager oManager(0);

    EXPECT_EQ(FILE_INVALID_HANDLE, oManager.FindFreeHandle());
    EXPECT_CHECK_AT(FILE_SOURCE, HANDLE_RANGE_CHECK, oManager.GetFile(0));
    EXPECT_EQ(FILE_INVALID_HANDLE, oManager.FindFreeHandle());
}

TEST(CTOVHandleManagerTest, KeepsAFileInItsSlot)
{
    CTOVHandleManager oManager(SLOTS);

    oManager.SetFile(2, stdin);
    oManager.SetFile(3, stdout);
    EXPECT_EQ(stdin, oManager.GetFile(2));
    EXPECT_EQ(stdout, oManager.GetFile(3));

    oManager.SetFile(2, stderr);
    oManager.ClearHandle(3);
    EXPECT_EQ(stderr, oManager.GetFile(2));
    EXPECT_EQ(nullptr, oManager.GetFile(3));
}

TEST(CTOVHandleManagerTest, LeavesFilesOpenAtItsEnd)
{
    const CTempFolder oFolder;
    FILE* const pFile = std::fopen(oFolder.File("kept").c_str(), "wb");
    auto pManager = std::make_unique<CTOVHandleManager>(SLOTS);
    pManager->SetFile(0, pFile);

    pManager.reset();

    EXPECT_LE(0, std::fputs("text", pFile));
    EXPECT_EQ(0, std::fclose(pFile));
    EXPECT_EQ("text", ReadWholeFile(oFolder.File("kept")));
}

TEST_P(CTOVHandleManagerCheckTest, RefusesTheInvalidHandle)
{
    EXPECT_CHECK_AT(FILE_SOURCE, INVALID_HANDLE_CHECK, GetParam().fnUse(m_oManager, FILE_INVALID_HANDLE));
}

TEST_P(CTOVHandleManagerCheckTest, RefusesAHandleBeyondTheSlots)
{
    for (const unsigned long long hHandle : {4ull, 5ull, 0x100000000ull, FILE_INVALID_HANDLE - 1})
        EXPECT_CHECK_AT(FILE_SOURCE, HANDLE_RANGE_CHECK, GetParam().fnUse(m_oManager, hHandle));
    EXPECT_EQ(1u, m_oManager.FindFreeHandle());
}

TEST_P(CTOVHandleManagerCheckTest, TakesTheFirstAndTheLastSlot)
{
    EXPECT_NO_CHECK(GetParam().fnUse(m_oManager, 0));
    EXPECT_NO_CHECK(GetParam().fnUse(m_oManager, SLOTS - 1));
}

TEST_P(CTOVHandleManagerCheckTest, ChangesNothingWhenItRefuses)
{
    EXPECT_THROW(GetParam().fnUse(m_oManager, SLOTS), TOVDebug::CTOVAssertException);

    EXPECT_EQ(ANY_FILE, m_oManager.GetFile(0));
    EXPECT_EQ(1u, m_oManager.FindFreeHandle());
}

// Settled: the lock stays entered by the thread that failed the check.
TEST_P(CTOVHandleManagerCheckTest, KeepsOthersOutAfterItRefused)
{
    EXPECT_THROW(GetParam().fnUse(m_oManager, FILE_INVALID_HANDLE), TOVDebug::CTOVAssertException);
    EXPECT_EQ(ANY_FILE, m_oManager.GetFile(0));
    CBlockableThread oOther([this] { m_oManager.FindFreeHandle(); });
    CBlockableThread oSame([this] { GetParam().fnUse(m_oManager, 1); });
    EXPECT_TRUE(oOther.IsBlocked());
    EXPECT_TRUE(oSame.IsBlocked());

    LockOf(m_oManager).Leave();

    EXPECT_TRUE(oOther.Finishes());
    EXPECT_TRUE(oSame.Finishes());
}

TEST_P(CTOVHandleManagerCheckTest, KeepsNobodyOutAfterItsWork)
{
    GetParam().fnUse(m_oManager, 0);
    CBlockableThread oOther([this] { m_oManager.FindFreeHandle(); });

    EXPECT_TRUE(oOther.Finishes());
}

INSTANTIATE_TEST_SUITE_P(Operations, CTOVHandleManagerCheckTest, testing::ValuesIn(TABLE_USERS), sRowName());

TEST_P(TOVPlatformFileHandleTest, RefusesTheInvalidHandle)
{
    EXPECT_EQ(std::string(INVALID_HANDLE_CHECK) + "; ", CheckOf(FILE_INVALID_HANDLE));
}

TEST_P(TOVPlatformFileHandleTest, RefusesAHandleOutOfRange)
{
    for (const unsigned long long hFile : {1024ull, 0x100000000ull, FILE_INVALID_HANDLE - 1})
        EXPECT_EQ(std::string(HANDLE_RANGE_CHECK) + "; ", CheckOf(hFile)) << hFile;
}

TEST_P(TOVPlatformFileHandleTest, TakesAnEmptySlot)
{
    EXPECT_NO_CHECK(GetParam().fnUse(FILE_SLOTS - 1));
}

INSTANTIATE_TEST_SUITE_P(Functions, TOVPlatformFileHandleTest, testing::ValuesIn(HANDLE_USERS), sRowName());

TEST_F(TOVPlatformFileTableTest, KeepsOtherThreadsOutAfterAFailedHandleCheck)
{
    WriteWholeFile(Path("file"), "text");

    const sChildResult oResult = RunChild("KeepsTheTableLockedAfterAFailedCheck", {Path("file")});

    EXPECT_EQ("hHandle != FILE_INVALID_HANDLE; this thread works on; the other waits; ", oResult.sOutput);
    EXPECT_EQ(0, oResult.nExitCode);
}

TEST_F(TOVPlatformFileTableTest, HoldsAFileInEachOf1024SlotsAndReusesTheLowest)
{
    WriteWholeFile(Path("file"), "text");
    CFewOpenFiles oFew;

    const sChildResult oResult = RunChild("FillsTheTable", {Path("file")});

    EXPECT_EQ("0 to 1023; full; made no file; 30; 700; 1023; full; ", oResult.sOutput);
    EXPECT_EQ(0, oResult.nExitCode);
}

TEST_F(TOVPlatformFileTableTest, GivesHandle0ToTheFirstFile)
{
    WriteWholeFile(Path("file"), "text");

    EXPECT_EQ("0; 1; 2; 1; 0; ", RunChild("OpensItsFirstFiles", {Path("file")}).sOutput);
}

TEST_F(TOVPlatformFileTableTest, GivesTheLowestFreeSlotAgain)
{
    const unsigned long long hFirst = OpenWith("text", "rb");
    const unsigned long long hSecond = Open("contents", "rb");
    const unsigned long long hThird = Open("contents", "rb");
    File::Close(hSecond);
    File::Close(hFirst);

    EXPECT_EQ(hFirst, Open("contents", "rb"));
    EXPECT_EQ(hSecond, Open("contents", "rb"));
    EXPECT_LT(hThird, Open("contents", "rb"));
}

TEST_F(TOVPlatformFileTableTest, GivesThreadsThatOpenTogetherFilesOfTheirOwn)
{
    const int nFiles = 60;
    std::vector<std::vector<unsigned long long>> aHandles(3);
    WriteWholeFile(Path("file"), "text");
    const auto fnOpenAll = [&](std::vector<unsigned long long>& aMine) {
        for (int nFile = 0; nFile < nFiles; ++nFile)
            aMine.push_back(File::Open(Path("file").c_str(), "rb"));
    };

    {
        CBlockableThread oFirst([&] { fnOpenAll(aHandles[0]); });
        CBlockableThread oSecond([&] { fnOpenAll(aHandles[1]); });
        CBlockableThread oThird([&] { fnOpenAll(aHandles[2]); });
    }

    int nClosed = 0;
    for (const std::vector<unsigned long long>& aMine : aHandles)
    {
        for (const unsigned long long hFile : aMine)
            nClosed += File::Close(hFile) == File::eFileSuccess ? 1 : 0;
    }
    EXPECT_EQ(3 * nFiles, nClosed);
}
