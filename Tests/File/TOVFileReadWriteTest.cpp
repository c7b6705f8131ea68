// What file objects read and write.
#include "File/TOVOpenFile.h"
#include "Support/TOVNativeFile.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVRowName.h"

#include <algorithm>
#include <iterator>

namespace File = TOVPlatform::TOVFile;

namespace
{
TOV_PRIVATE_MEMBER(HandleOf, CTOVFile, unsigned long long, m_hFile)

class CTOVFileReadWriteTest : public COpenFileFixture
{
};

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

// Settled: the result of Read and Write is a count of blocks.
TEST_F(CTOVFileReadWriteTest, CountsABlockAsOne)
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

TEST_F(CTOVFileReadWriteTest, KeepsTheBytesOfAShortRead)
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

TEST_F(CTOVFileReadWriteTest, MovesNothingForASizeOfZero)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", UPDATE);
    char szBuffer[] = "????";

    EXPECT_EQ(0u, oFile.Read(szBuffer, 0));
    EXPECT_EQ(0u, oFile.Write("x", 0));
    EXPECT_EQ(0u, oFile.Read(nullptr, 0));
    EXPECT_EQ(0u, oFile.Write(nullptr, 0));

    EXPECT_EQ(0u, oFile.Tell());
    EXPECT_STREQ("????", szBuffer);
    EXPECT_EQ("0123", CloseAndRead(oFile));
}

TEST_F(CTOVFileReadWriteTest, CutsASizeToItsLow32Bits)
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

TEST_F(CTOVFileReadWriteTest, ReportsNothingOfAWriteThatFails)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    CLogRecorder oLog;

    EXPECT_EQ(0u, oFile.Write("x", 1));

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_EQ("0123", CloseAndRead(oFile));
}

TEST_F(CTOVFileReadWriteTest, DoesNothingWhereItIsClosed)
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

    EXPECT_EQ("hHandle != FILE_INVALID_HANDLE; hHandle != FILE_INVALID_HANDLE; ", oResult.sOutput);
}

INSTANTIATE_TEST_SUITE_P(Operations, CTOVFileClosedTest, testing::ValuesIn(HANDLE_USERS), sRowName());

TEST_F(CTOVFileReadWriteTest, WritesOutWhatItFlushes)
{
    CTOVFile oFile;
    OpenWith(oFile, "", WRITE);
    oFile.Write("0123", 4);

    oFile.Flush();

    EXPECT_EQ("0123", ReadWholeFile(Path("contents")));
    EXPECT_TRUE(oFile.IsOpen());
}

TEST_F(CTOVFileReadWriteTest, IsSilentAboutAFlushThatFails)
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
