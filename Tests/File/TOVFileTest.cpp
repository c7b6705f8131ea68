#include "Support/TOVNativeFile.h"
#include "Support/TOVPrivateMember.h"
#include "TOVPlatform/TOVFileInstruments.h"

#include <File/TOVFile.h>
#include <File/TOVVirtualFileSystem.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <type_traits>
#include <typeinfo>

namespace File = TOVPlatform::TOVFile;

namespace
{
TOV_PRIVATE_MEMBER(HandleOf, CTOVFile, unsigned long long, m_hFile)

const int READ = 0x11;
const int WRITE = 0x12;
const int UPDATE = 0x13;
const unsigned long long ALL_BITS = 0xFFFFFFFFFFFFFFFF;
const unsigned long long GIBIBYTE = 1ull << 30;
const char OPEN_FAILED[] =
    "CTOVFile::Open() : Enhance the exception throwing. Should be more detailed, what exactly failed.";

class CTOVFileTest : public CFileFixture
{
protected:
    // The file that holds these bytes, opened by the flags.
    void OpenWith(CTOVFile& oFile, const std::string& sContents, int nFlags) const
    {
        WriteWholeFile(Path("contents"), sContents);
        oFile.Open(Path("contents").c_str(), nFlags);
    }

    void Open(CTOVFile& oFile, const std::string& sName, int nFlags) const { oFile.Open(Path(sName).c_str(), nFlags); }

    std::string CloseAndRead(CTOVFile& oFile) const
    {
        oFile.Close();
        return ReadWholeFile(Path("contents"));
    }

    // Opening fails as it is told to: one log line, the exception, a closed object.
    void ExpectNotOpened(CTOVFile& oFile, const char* szName, int nFlags) const
    {
        CLogRecorder oLog;
        try
        {
            oFile.Open(szName, nFlags);
            ADD_FAILURE() << "opened " << szName << " by " << nFlags;
        }
        catch (ITOVFile::Exception& oException)
        {
            EXPECT_TRUE(typeid(oException) == typeid(CTOVFile::FileException));
            EXPECT_EQ(CTOVException::eClassFile, oException.GetClass());
            EXPECT_EQ(0u, oException.GetCode());
        }
        EXPECT_FALSE(oFile.IsOpen());
        ASSERT_EQ(1u, oLog.Lines().size());
        EXPECT_NE(std::string::npos, oLog.Lines()[0].sFile.find("TOVFile"));
        EXPECT_EQ(eSeverityTrace, oLog.Lines()[0].eSeverity);
        EXPECT_EQ(OPEN_FAILED, oLog.Lines()[0].sText);
        EXPECT_TRUE(oLog.Checks().empty());
    }
};

// What the three flags of access do to a file, whatever stands beside them.
struct sAccess
{
    int nFlags;
    bool bNeedsAFile;
    const char* szReads;  // of "12345", from its start on
    const char* szLeaves; // of "12345", when nothing is written
    const char* szWrites; // of "12345", when "xy" is written at its start
};

const sAccess ACCESSES[] = {
    {0x01, true, "12345", "12345", "12345"},    {0x02, false, "", "", "xy"},
    {0x03, true, "12345", "12345", "xy345"},    {0x04, false, "", "12345", "12345xy"},
    {0x05, false, "12345", "12345", "12345xy"}, {0x06, false, "", "12345", "12345xy"},
    {0x07, false, "12345", "12345", "12345xy"},
};

const int OTHER_FLAGS[] = {0x00, 0x08, 0x10, 0x18, 0x20, 0x40, 0x60, 0x28, 0x50, 0x78};

class CTOVFileAccessTest : public CTOVFileTest, public testing::WithParamInterface<sAccess>
{
protected:
    template<class TUse> void ForEachMode(TUse fnUse) const
    {
        for (const int nOtherFlags : OTHER_FLAGS)
        {
            SCOPED_TRACE(nOtherFlags);
            CTOVFile oFile;
            OpenWith(oFile, "12345", GetParam().nFlags | nOtherFlags);
            fnUse(oFile);
        }
    }
};

std::string AccessName(const testing::TestParamInfo<sAccess>& oInfo)
{
    return std::to_string(oInfo.param.nFlags);
}

// The operations that do not ask whether the file is open.
struct sHandleUser
{
    const char* szName;
    void (*fnUse)(CTOVFile& oFile);
};

const sHandleUser HANDLE_USERS[] = {
    {"Seek", [](CTOVFile& oFile) { oFile.Seek(0, File::eSeekOriginStart); }},
    {"Tell", [](CTOVFile& oFile) { oFile.Tell(); }},
    {"GetSize", [](CTOVFile& oFile) { oFile.GetSize(); }},
    {"IsEof", [](CTOVFile& oFile) { oFile.IsEof(); }},
};

class CTOVFileClosedTest : public testing::TestWithParam<sHandleUser>
{
};

// Counts the calls that come through the slots, and answers as it is told to.
class CCountingFile : public CTOVFile
{
public:
    unsigned long long GetSize() const override
    {
        ++nGetSizes;
        return ullSize;
    }

    unsigned long long Tell() const override
    {
        ++nTells;
        return ullPosition;
    }

    void Seek(long long, File::eSeekOrigin) override { ++nSeeks; }

    unsigned long long ullSize = 0;
    unsigned long long ullPosition = 0;
    mutable int nGetSizes = 0;
    mutable int nTells = 0;
    int nSeeks = 0;
};
} // namespace

TOV_CHILD(UsesAClosedFile)
{
    const auto pUser = std::find_if(std::begin(HANDLE_USERS), std::end(HANDLE_USERS),
                                    [&](const sHandleUser& oUser) { return aArguments[0] == oUser.szName; });
    CTOVFile oFile;
    SayCheck([&] { pUser->fnUse(oFile); });

    oFile.Open(aArguments[1].c_str(), READ);
    oFile.Close();
    SayCheck([&] { pUser->fnUse(oFile); });
}

TEST_F(CTOVFileTest, IsAHandleBehindTheInterface)
{
    CTOVFile oFile;
    struct sLayout
    {
        void* pVirtualTable;
        unsigned long long hFile;
    };

    EXPECT_EQ(sizeof(sLayout), sizeof(CTOVFile));
    EXPECT_TRUE(std::has_virtual_destructor_v<CTOVFile>);
    EXPECT_EQ(&oFile, static_cast<ITOVFile*>(&oFile));
}

TEST_F(CTOVFileTest, BeginsClosed)
{
    CTOVFile oFile;

    EXPECT_FALSE(oFile.IsOpen());
    EXPECT_EQ(FILE_INVALID_HANDLE, HandleOf(oFile));
}

TEST_F(CTOVFileTest, HoldsTheHandleOfThePlatform)
{
    CTOVFile oFile;
    const unsigned long long hNext = NextHandle();

    OpenWith(oFile, "text", READ);

    EXPECT_TRUE(oFile.IsOpen());
    EXPECT_EQ(hNext, HandleOf(oFile));
    EXPECT_NE(hNext, NextHandle());
}

TEST_P(CTOVFileAccessTest, MakesAMissingFileUnlessItNeedsOne)
{
    for (const int nOtherFlags : OTHER_FLAGS)
    {
        CTOVFile oFile;
        const std::string sName = "new" + std::to_string(nOtherFlags);
        if (GetParam().bNeedsAFile)
            EXPECT_THROW(Open(oFile, sName, GetParam().nFlags | nOtherFlags), CTOVFile::FileException);
        else
            EXPECT_NO_THROW(Open(oFile, sName, GetParam().nFlags | nOtherFlags));

        EXPECT_EQ(!GetParam().bNeedsAFile, oFile.IsOpen());
        EXPECT_EQ(!GetParam().bNeedsAFile, std::filesystem::exists(Path(sName)));
    }
}

TEST_P(CTOVFileAccessTest, KeepsOrCutsWhatAFileHolds)
{
    ForEachMode([this](CTOVFile& oFile) { EXPECT_EQ(GetParam().szLeaves, CloseAndRead(oFile)); });
}

TEST_P(CTOVFileAccessTest, ReadsIfItMay)
{
    ForEachMode([](CTOVFile& oFile) {
        const std::size_t nLength = std::strlen(GetParam().szReads);
        char szBuffer[8] = "";
        oFile.Seek(0, File::eSeekOriginStart);

        EXPECT_EQ(nLength > 0 ? 1u : 0u, oFile.Read(szBuffer, nLength > 0 ? nLength : 1));
        EXPECT_STREQ(GetParam().szReads, szBuffer);
    });
}

TEST_P(CTOVFileAccessTest, WritesIfItMay)
{
    ForEachMode([this](CTOVFile& oFile) {
        oFile.Seek(0, File::eSeekOriginStart);

        EXPECT_EQ(GetParam().nFlags == 0x01 ? 0u : 1u, oFile.Write("xy", 2));
        EXPECT_EQ(GetParam().szWrites, CloseAndRead(oFile));
    });
}

INSTANTIATE_TEST_SUITE_P(Flags, CTOVFileAccessTest, testing::ValuesIn(ACCESSES), AccessName);

TEST_F(CTOVFileTest, TranslatesLineEndsIfTextIsAsked)
{
    for (const int nFlags : {0x08, 0x10, 0x18, 0x28, 0x50})
    {
        CTOVFile oFile;
        OpenWith(oFile, "", ITOVFile::eFileOpenWrite | nFlags);
        EXPECT_EQ(1u, oFile.Write("a\nb", 3));

        EXPECT_EQ((nFlags & 0x08) != 0 ? std::string("a") + LINE_END + "b" : "a\nb", CloseAndRead(oFile)) << nFlags;
    }
}

TEST_F(CTOVFileTest, OpensNothingWithoutAWayOfAccess)
{
    for (const int nFlags : {0x00, 0x08, 0x10, 0x18, 0x20, 0x40, 0x78})
    {
        CTOVFile oFile;
        ExpectNotOpened(oFile, Path("new").c_str(), nFlags);
        EXPECT_FALSE(std::filesystem::exists(Path("new")));
    }
}

TEST_F(CTOVFileTest, LogsAndThrowsWhateverKeepsItFromOpening)
{
    CTOVFile oFile;
    std::filesystem::create_directory(Path("folder"));

    ExpectNotOpened(oFile, Path("missing").c_str(), READ);
    ExpectNotOpened(oFile, Path("missing/new").c_str(), WRITE);
    ExpectNotOpened(oFile, Path("folder").c_str(), UPDATE);
    ExpectNotOpened(oFile, "", READ);
    ExpectNotOpened(oFile, NULL, WRITE);
}

TEST_F(CTOVFileTest, LogsNothingWhenItOpens)
{
    CLogRecorder oLog;
    CTOVFile oFile;

    OpenWith(oFile, "text", READ);

    EXPECT_TRUE(oLog.Lines().empty());
}

TEST_F(CTOVFileTest, TakesASmallNumberForAStringId)
{
    CTOVFile oFile;

    EXPECT_CHECK("m_pInstance != NULL", oFile.Open(reinterpret_cast<const char*>(5), READ));
    EXPECT_FALSE(oFile.IsOpen());
}

TEST_F(CTOVFileTest, OpensWhatLiesBelowAnAssign)
{
    WriteWholeFile(Path("inner"), "text");
    CTOVVirtualFileSystem::Instance().SetAssign("file-test", m_oFolder.Path().c_str());
    CTOVFile oFile;
    char szBuffer[5] = "";

    oFile.Open("file-test:inner", READ);
    EXPECT_EQ(1u, oFile.Read(szBuffer, 4));
    EXPECT_STREQ("text", szBuffer);

    CTOVFile oNew;
    oNew.Open("file-test:new", WRITE);
    EXPECT_TRUE(std::filesystem::exists(Path("new")));

    CTOVFile oMissing;
    ExpectNotOpened(oMissing, "file-test:missing", READ);
}

TEST_F(CTOVFileTest, RaisesForAnAssignAndNothingBehindIt)
{
    CTOVVirtualFileSystem::Instance().SetAssign("file-test", m_oFolder.Path().c_str());
    CTOVFile oFile;

    EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetLength())", oFile.Open("file-test:", READ));
}

// Settled: the handle that was held is overwritten and stays open.
TEST_F(CTOVFileTest, LeaksItsHandleWhenItOpensAgain)
{
    CTOVFile oFile;
    OpenWith(oFile, "text", READ);
    const unsigned long long hFirst = HandleOf(oFile);

    Open(oFile, "contents", READ);

    EXPECT_NE(hFirst, HandleOf(oFile));
    oFile.Close();
    EXPECT_EQ(File::eFileSuccess, File::Close(hFirst));
}

TEST_F(CTOVFileTest, LeaksItsHandleWhenItFailsToOpenAgain)
{
    CTOVFile oFile;
    OpenWith(oFile, "text", READ);
    const unsigned long long hFirst = HandleOf(oFile);

    ExpectNotOpened(oFile, Path("missing").c_str(), READ);

    EXPECT_EQ(FILE_INVALID_HANDLE, HandleOf(oFile));
    EXPECT_EQ(File::eFileSuccess, File::Close(hFirst));
}

// Settled: the result of Read and Write is a count of blocks.
TEST_F(CTOVFileTest, CountsABlockAsOne)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123456789", UPDATE);
    char szBuffer[5] = "";

    EXPECT_EQ(1u, oFile.Read(szBuffer, 4));
    EXPECT_STREQ("0123", szBuffer);
    oFile.Seek(0, File::eSeekOriginCurrent);
    EXPECT_EQ(1u, oFile.Write("xyz", 3));

    EXPECT_EQ("0123xyz789", CloseAndRead(oFile));
}

TEST_F(CTOVFileTest, KeepsTheBytesOfAShortRead)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123456789", READ);
    oFile.Seek(6, File::eSeekOriginStart);
    char szBuffer[] = "??????????";
    CLogRecorder oLog;

    EXPECT_EQ(0u, oFile.Read(szBuffer, 10));

    EXPECT_STREQ("6789??????", szBuffer);
    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_EQ(0u, oFile.Read(szBuffer, 1));
}

TEST_F(CTOVFileTest, MovesNothingForASizeOfZero)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", UPDATE);
    char szBuffer[] = "????";

    EXPECT_EQ(0u, oFile.Read(szBuffer, 0));
    EXPECT_EQ(0u, oFile.Write("x", 0));

    EXPECT_EQ(0u, oFile.Tell());
    EXPECT_STREQ("????", szBuffer);
    EXPECT_EQ("0123", CloseAndRead(oFile));
}

TEST_F(CTOVFileTest, CutsASizeToItsLow32Bits)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123456789", UPDATE);
    char szBuffer[] = "??????";

    EXPECT_EQ(1u, oFile.Read(szBuffer, 0x100000004));
    EXPECT_STREQ("0123??", szBuffer);
    EXPECT_EQ(0u, oFile.Read(szBuffer, 0x100000000));
    oFile.Seek(0, File::eSeekOriginCurrent);
    EXPECT_EQ(1u, oFile.Write("xyz", 0xFFFFFFFF00000003));

    EXPECT_EQ("0123xyz789", CloseAndRead(oFile));
}

TEST_F(CTOVFileTest, ReportsNothingOfAWriteThatFails)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    CLogRecorder oLog;

    EXPECT_EQ(0u, oFile.Write("x", 1));

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_EQ("0123", CloseAndRead(oFile));
}

TEST_F(CTOVFileTest, DoesNothingWhereItIsClosed)
{
    CTOVFile oFile;
    CLogRecorder oLog;
    char cRead = '?';

    EXPECT_EQ(0u, oFile.Read(&cRead, 1));
    EXPECT_EQ(0u, oFile.Write("x", 1));
    EXPECT_NO_THROW(oFile.Flush());
    EXPECT_NO_THROW(oFile.Close());
    EXPECT_NO_THROW(oFile.Close());

    EXPECT_EQ('?', cRead);
    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

// In a process of its own: the table of handles stays locked.
TEST_P(CTOVFileClosedTest, FailsTheCheckOfTheHandle)
{
    const CTempFolder oFolder;
    WriteWholeFile(oFolder.File("file"), "text");

    const sChildResult oResult = RunChild("UsesAClosedFile", {GetParam().szName, oFolder.File("file")});

    EXPECT_EQ("hHandle != FILE_INVALID_HANDLE;hHandle != FILE_INVALID_HANDLE;", oResult.sOutput);
}

INSTANTIATE_TEST_SUITE_P(Operations, CTOVFileClosedTest, testing::ValuesIn(HANDLE_USERS),
                         [](const testing::TestParamInfo<sHandleUser>& oInfo) { return oInfo.param.szName; });

TEST_F(CTOVFileTest, SeeksFromEachOrigin)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123456789", READ);

    oFile.Seek(4, File::eSeekOriginStart);
    EXPECT_EQ(4u, oFile.Tell());
    oFile.Seek(3, File::eSeekOriginCurrent);
    EXPECT_EQ(7u, oFile.Tell());
    oFile.Seek(-2, File::eSeekOriginCurrent);
    EXPECT_EQ(5u, oFile.Tell());
    oFile.Seek(-1, File::eSeekOriginEnd);
    EXPECT_EQ(9u, oFile.Tell());
    oFile.Seek(2, static_cast<File::eSeekOrigin>(9));
    EXPECT_EQ(2u, oFile.Tell());
}

TEST_F(CTOVFileTest, CutsAnOffsetToItsLow32Bits)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123456789", READ);

    oFile.Seek(0x100000003, File::eSeekOriginStart);
    EXPECT_EQ(3u, oFile.Tell());
    oFile.Seek(0xFFFFFFFF, File::eSeekOriginCurrent);
    EXPECT_EQ(2u, oFile.Tell());
    oFile.Seek(-0x100000000, File::eSeekOriginEnd);
    EXPECT_EQ(10u, oFile.Tell());
}

// Settled: the exception with code 5 is never thrown, since no result of the platform is 0.
TEST_F(CTOVFileTest, IsSilentAboutASeekThatFails)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123456789", READ);
    oFile.Seek(4, File::eSeekOriginStart);
    CLogRecorder oLog;

    EXPECT_NO_THROW(oFile.Seek(-1, File::eSeekOriginStart));
    EXPECT_NO_THROW(oFile.Seek(-5, File::eSeekOriginCurrent));
    EXPECT_NO_THROW(oFile.Seek(0x80000000, File::eSeekOriginStart));

    EXPECT_EQ(4u, oFile.Tell());
    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST_F(CTOVFileTest, TellsWhatItReadAndWrote)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", UPDATE);
    char cRead;
    EXPECT_EQ(0u, oFile.Tell());

    oFile.Read(&cRead, 1);
    EXPECT_EQ(1u, oFile.Tell());
    oFile.Seek(0, File::eSeekOriginEnd);
    oFile.Write("45", 2);
    EXPECT_EQ(6u, oFile.Tell());
}

TEST_F(CTOVFileTest, GetsTheSizeAndKeepsThePosition)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123456789", READ);
    oFile.Seek(4, File::eSeekOriginStart);
    char cRead = '?';

    EXPECT_EQ(10u, oFile.GetSize());

    EXPECT_EQ(4u, oFile.Tell());
    EXPECT_EQ(1u, oFile.Read(&cRead, 1));
    EXPECT_EQ('4', cRead);
}

TEST_F(CTOVFileTest, CountsWhatIsNotYetWrittenOutInTheSize)
{
    CTOVFile oFile;
    OpenWith(oFile, "", WRITE);
    oFile.Write("0123", 4);

    EXPECT_EQ(4u, oFile.GetSize());
    EXPECT_EQ(4u, oFile.Tell());
}

TEST_F(CTOVFileTest, KeepsAPositionBeyondTheEnd)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    oFile.Seek(3, File::eSeekOriginEnd);

    EXPECT_EQ(4u, oFile.GetSize());
    EXPECT_EQ(7u, oFile.Tell());
}

TEST_F(CTOVFileTest, AsksThePlatformForTheSizeAndNotItsOwnSlots)
{
    CCountingFile oFile;
    OpenWith(oFile, "0123", READ);

    EXPECT_EQ(4u, oFile.CTOVFile::GetSize());

    EXPECT_EQ(0, oFile.nTells);
    EXPECT_EQ(0, oFile.nSeeks);
}

TEST_F(CTOVFileTest, IsAtTheEndWherePositionAndSizeAreEqual)
{
    CTOVFile oEmpty;
    OpenWith(oEmpty, "", READ);
    EXPECT_TRUE(oEmpty.IsEof());

    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    EXPECT_FALSE(oFile.IsEof());
    oFile.Seek(0, File::eSeekOriginEnd);
    EXPECT_TRUE(oFile.IsEof());
    oFile.Seek(1, File::eSeekOriginEnd);
    EXPECT_FALSE(oFile.IsEof());
}

TEST_F(CTOVFileTest, IsAtTheEndAsSoonAsAllIsRead)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    char szBuffer[4];

    EXPECT_EQ(1u, oFile.Read(szBuffer, 4));

    EXPECT_TRUE(oFile.IsEof());
}

TEST_F(CTOVFileTest, AsksItsSlotsWhetherItIsAtTheEnd)
{
    CCountingFile oFile;

    EXPECT_TRUE(oFile.IsEof());

    EXPECT_EQ(1, oFile.nGetSizes);
    EXPECT_EQ(1, oFile.nTells);
}

TEST_F(CTOVFileTest, ComparesPositionAndSizeIn64Bits)
{
    CCountingFile oFile;
    oFile.ullSize = 0x100000005;
    oFile.ullPosition = 5;
    EXPECT_FALSE(oFile.IsEof());

    oFile.ullPosition = 0x100000005;
    EXPECT_TRUE(oFile.IsEof());
}

TEST_F(CTOVFileTest, HasNoSizeBeyond32Bits)
{
    MakeBigFile(Path("big"), 3 * GIBIBYTE);
    CTOVFile oFile;
    Open(oFile, "big", READ);
    oFile.Seek(5, File::eSeekOriginStart);

    EXPECT_EQ(ALL_BITS, oFile.GetSize());
    EXPECT_EQ(5u, oFile.Tell());
    EXPECT_FALSE(oFile.IsEof());

    oFile.Seek(0, File::eSeekOriginEnd);
    EXPECT_EQ(ALL_BITS, oFile.Tell());
}

TEST_F(CTOVFileTest, TellsTheLargestPositionOf32Bits)
{
    MakeBigFile(Path("big"), 0x7FFFFFFF);
    CTOVFile oFile;
    Open(oFile, "big", READ);

    EXPECT_EQ(0x7FFFFFFFu, oFile.GetSize());
    oFile.Seek(0x7FFFFFFF, File::eSeekOriginStart);
    EXPECT_EQ(0x7FFFFFFFu, oFile.Tell());
    EXPECT_TRUE(oFile.IsEof());
}

TEST_F(CTOVFileTest, WritesOutWhatItFlushes)
{
    CTOVFile oFile;
    OpenWith(oFile, "", WRITE);
    oFile.Write("0123", 4);

    oFile.Flush();

    EXPECT_EQ("0123", ReadWholeFile(Path("contents")));
    EXPECT_TRUE(oFile.IsOpen());
}

TEST_F(CTOVFileTest, IsSilentAboutAFlushThatFails)
{
    CTOVFile oFile;
    OpenWith(oFile, "", WRITE);
    oFile.Write("0123", 4);
    CLogRecorder oLog;
    {
        CUnusableStream oUnusable(File::CTOVHandleManager::Instance().GetFile(HandleOf(oFile)));
        EXPECT_NO_THROW(oFile.Flush());
    }

    EXPECT_TRUE(oFile.IsOpen());
    EXPECT_TRUE(oLog.Lines().empty());
}

TEST_F(CTOVFileTest, FreesItsHandleWhenItCloses)
{
    CTOVFile oFile;
    OpenWith(oFile, "", WRITE);
    oFile.Write("0123", 4);
    const unsigned long long hFile = HandleOf(oFile);

    oFile.Close();

    EXPECT_FALSE(oFile.IsOpen());
    EXPECT_EQ(FILE_INVALID_HANDLE, HandleOf(oFile));
    EXPECT_EQ("0123", ReadWholeFile(Path("contents")));
    EXPECT_EQ(File::eFileFailure, File::Close(hFile));
}

TEST_F(CTOVFileTest, DoesNothingWhenItClosesAgain)
{
    CTOVFile oFile;
    OpenWith(oFile, "text", READ);
    oFile.Close();
    CTOVFile oOther;
    Open(oOther, "contents", READ);

    oFile.Close();

    EXPECT_TRUE(oOther.IsOpen());
    EXPECT_EQ(4u, oOther.GetSize());
}

// Settled: the handle is forgotten even when the platform keeps the file.
TEST_F(CTOVFileTest, ForgetsAHandleThatThePlatformFailsToClose)
{
    CTOVFile oFile;
    OpenWith(oFile, "", WRITE);
    oFile.Write("0123", 4);
    const unsigned long long hFile = HandleOf(oFile);
    {
        CUnusableStream oUnusable(File::CTOVHandleManager::Instance().GetFile(hFile));
        EXPECT_NO_THROW(oFile.Close());
    }

    EXPECT_FALSE(oFile.IsOpen());
    EXPECT_EQ(File::eFileSuccess, File::Close(hFile));
}

TEST_F(CTOVFileTest, ClosesAtItsEnd)
{
    unsigned long long hFile;
    {
        CTOVFile oFile;
        OpenWith(oFile, "", WRITE);
        oFile.Write("0123", 4);
        hFile = HandleOf(oFile);
    }

    EXPECT_EQ("0123", ReadWholeFile(Path("contents")));
    EXPECT_EQ(File::eFileFailure, File::Close(hFile));
}

TEST_F(CTOVFileTest, OpensAgainAfterItClosed)
{
    CTOVFile oFile;
    OpenWith(oFile, "old", READ);
    oFile.Close();

    OpenWith(oFile, "newer", READ);

    EXPECT_EQ(5u, oFile.GetSize());
}

// Settled: copies are the same handle once more.
TEST_F(CTOVFileTest, SharesItsHandleWithACopy)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    CTOVFile oCopy(oFile);
    char cRead = '?';

    EXPECT_EQ(HandleOf(oFile), HandleOf(oCopy));
    oFile.Seek(2, File::eSeekOriginStart);
    EXPECT_EQ(1u, oCopy.Read(&cRead, 1));
    EXPECT_EQ('2', cRead);
    EXPECT_EQ(3u, oFile.Tell());
}

TEST_F(CTOVFileTest, LeavesACopyWithAStaleHandle)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    CTOVFile oCopy(oFile);
    char cRead = '?';

    oFile.Close();

    EXPECT_TRUE(oCopy.IsOpen());
    EXPECT_EQ(0u, oCopy.Read(&cRead, 1));
    EXPECT_EQ(0u, oCopy.Write("x", 1));
    EXPECT_NO_THROW(oCopy.Seek(0, File::eSeekOriginStart));
    EXPECT_EQ(ALL_BITS, oCopy.Tell());
    EXPECT_EQ(ALL_BITS, oCopy.GetSize());
    EXPECT_TRUE(oCopy.IsEof());
    EXPECT_NO_CHECK(oCopy.Flush(); oCopy.Close());
}

TEST_F(CTOVFileTest, LetsAStaleCopyReachWhatTookItsSlot)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    CTOVFile oCopy(oFile);
    oFile.Close();
    WriteWholeFile(Path("other"), "other text");

    Open(oFile, "other", READ);

    EXPECT_EQ(10u, oCopy.GetSize());
}

TEST_F(CTOVFileTest, ClosesForItsCopiesToo)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    {
        CTOVFile oCopy(oFile);
    }

    EXPECT_TRUE(oFile.IsOpen());
    EXPECT_EQ(ALL_BITS, oFile.Tell());
}

TEST_F(CTOVFileTest, AssignsTheHandleAlone)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    CTOVFile oTarget;
    Open(oTarget, "contents", READ);
    const unsigned long long hOverwritten = HandleOf(oTarget);

    EXPECT_EQ(&oTarget, &(oTarget = oFile));

    EXPECT_EQ(HandleOf(oFile), HandleOf(oTarget));
    EXPECT_EQ(File::eFileSuccess, File::Close(hOverwritten));

    oTarget = CTOVFile();
    EXPECT_FALSE(oTarget.IsOpen());
    EXPECT_EQ(4u, oFile.GetSize());
}

TEST_F(CTOVFileTest, StaysOpenWhenItIsAssignedToItself)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    const CTOVFile& oSame = oFile;

    oFile = oSame;

    EXPECT_EQ(4u, oFile.GetSize());
}
