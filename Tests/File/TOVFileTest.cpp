// File objects that are opened.
#include "File/TOVOpenFile.h"
#include "Support/TOVLayout.h"
#include "Support/TOVPrivateMember.h"

#include <File/TOVVirtualFileSystem.h>

#include <cstring>
#include <type_traits>

namespace File = TOVPlatform::TOVFile;

namespace
{
TOV_PRIVATE_MEMBER(HandleOf, CTOVFile, unsigned long long, m_hFile)

class CTOVFileTest : public COpenFileFixture
{
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

constexpr int OTHER_FLAGS[] = {0x00, 0x08, 0x10, 0x18, 0x20, 0x40, 0x60, 0x28, 0x50, 0x78};

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
} // namespace

TEST_F(CTOVFileTest, IsAHandleBehindTheInterface)
{
    CTOVFile oFile;

    EXPECT_EQ(SizeWithMembers<unsigned long long>(), sizeof(CTOVFile));
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
    ExpectNotOpened(oFile, nullptr, WRITE);
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
