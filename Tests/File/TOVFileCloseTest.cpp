// File objects that are closed, and copies of them.
#include "File/TOVOpenFile.h"
#include "Support/TOVFullDisk.h"
#include "Support/TOVNativeFile.h"
#include "Support/TOVPrivateMember.h"

#include <cstdio>

namespace File = TOVPlatform::TOVFile;

namespace
{
TOV_PRIVATE_MEMBER(HandleOf, CTOVFile, unsigned long long, m_hFile)

class CTOVFileCloseTest : public COpenFileFixture
{
};
} // namespace

TEST_F(CTOVFileCloseTest, FreesItsHandleWhenItCloses)
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

TEST_F(CTOVFileCloseTest, DoesNothingWhenItClosesAgain)
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

// Settled: the handle is forgotten although the platform fails to close the file.
TEST_F(CTOVFileCloseTest, GivesUpAFileThatThePlatformFailsToClose)
{
    const CFullDisk oFullDisk;
    CTOVFile oFile;
    oFile.Open(oFullDisk.Path(), WRITE);
    oFile.Write("0123", 4);
    const unsigned long long hFile = HandleOf(oFile);

    EXPECT_NO_CHECK(oFile.Close());

    EXPECT_FALSE(oFile.IsOpen());
    EXPECT_EQ(hFile, NextHandle());
    EXPECT_EQ(File::eFileFailure, File::Close(hFile));
}

TEST_F(CTOVFileCloseTest, OpensFilesHoweverOftenTheDiskWasFull)
{
    const CFullDisk oFullDisk;
    for (unsigned long ulFile = 0; ulFile <= FILE_SLOTS; ++ulFile)
    {
        CTOVFile oFile;
        ASSERT_NO_THROW(oFile.Open(oFullDisk.Path(), WRITE)) << "file " << ulFile;
        oFile.Write("0123", 4);
        oFile.Close();
    }

    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    EXPECT_EQ(4u, oFile.GetSize());
}

TEST_F(CTOVFileCloseTest, GivesTheDescriptorOfAFullDiskBack)
{
    const CFullDisk oFullDisk;
    int nDescriptor = -1;
    for (int nFile = 0; nFile < 3; ++nFile)
    {
        CTOVFile oFile; // closed by its destructor
        oFile.Open(oFullDisk.Path(), WRITE);
        oFile.Write("0123", 4);

        const int nOwn = DescriptorOf(File::CTOVHandleManager::Instance().GetFile(HandleOf(oFile)));
        EXPECT_TRUE(nDescriptor == -1 || nDescriptor == nOwn) << nDescriptor << " and " << nOwn;
        nDescriptor = nOwn;
    }
}

TEST_F(CTOVFileCloseTest, LeavesACopyWithAStaleHandleOnAFullDiskToo)
{
    const CFullDisk oFullDisk;
    CTOVFile oFile;
    oFile.Open(oFullDisk.Path(), WRITE);
    CTOVFile oCopy(oFile);
    oFile.Write("0123", 4);

    oFile.Close();

    EXPECT_EQ(0u, oCopy.Write("x", 1));
    EXPECT_NO_CHECK(oCopy.Close());
}

TEST_F(CTOVFileCloseTest, ClosesAtItsEnd)
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

TEST_F(CTOVFileCloseTest, OpensAgainAfterItClosed)
{
    CTOVFile oFile;
    OpenWith(oFile, "old", READ);
    oFile.Close();

    OpenWith(oFile, "newer", READ);

    EXPECT_EQ(5u, oFile.GetSize());
}

// Settled: copies are the same handle once more.
TEST_F(CTOVFileCloseTest, SharesItsHandleWithACopy)
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

TEST_F(CTOVFileCloseTest, LeavesACopyWithAStaleHandle)
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

TEST_F(CTOVFileCloseTest, LetsAStaleCopyReachWhatTookItsSlot)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    CTOVFile oCopy(oFile);
    oFile.Close();
    WriteWholeFile(Path("other"), "other text");

    Open(oFile, "other", READ);

    EXPECT_EQ(10u, oCopy.GetSize());
}

TEST_F(CTOVFileCloseTest, ClosesForItsCopiesToo)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    {
        CTOVFile oCopy(oFile);
    }

    EXPECT_TRUE(oFile.IsOpen());
    EXPECT_EQ(ALL_BITS, oFile.Tell());
}

TEST_F(CTOVFileCloseTest, AssignsTheHandleAlone)
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

TEST_F(CTOVFileCloseTest, StaysOpenWhenItIsAssignedToItself)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    const CTOVFile& oSame = oFile;

    oFile = oSame;

    EXPECT_EQ(4u, oFile.GetSize());
}

// The check leaves the table of handles locked for the thread, so it does not happen in this process.
TOV_CHILD(FileEndsWithAHandleThatIsNone)
{
    CLogRecorder oLog;
    {
        CTOVFile oFile;
        HandleOf(oFile) = 5000;
    }
    std::printf("went on, %s", oLog.DescribeChecks().c_str());
}

TEST(CTOVFileEndTest, OnlyTellsOfAHandleThatIsNone)
{
    const sChildResult oResult = RunChild("FileEndsWithAHandleThatIsNone");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_NE(std::string::npos, oResult.sOutput.find("went on")) << oResult.sOutput;
    EXPECT_NE(std::string::npos, oResult.sOutput.find("(0 <= hHandle) && (hHandle < m_ulMaxHandles)"))
        << oResult.sOutput;
}
