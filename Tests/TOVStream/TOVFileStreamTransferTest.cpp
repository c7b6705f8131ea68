// What streams over files read and write, and in which modes.
#include "TOVStream/TOVFileStreamInstruments.h"

namespace
{
class CTOVFileStreamTransferTest : public CFileStreamFixture
{
};
} // namespace

TEST_F(CTOVFileStreamTransferTest, ReadsWhatTheFileHolds)
{
    CTOVFileStream oStream(OpenForReading("0123456789"), MODE_LOADING, 0);
    char szBuffer[5] = "....";

    oStream.Read(szBuffer, 4);
    EXPECT_STREQ("0123", szBuffer);
    oStream.Read(szBuffer, 2);
    EXPECT_STREQ("4523", szBuffer);
    EXPECT_EQ(6u, oStream.Tell());
}

TEST_F(CTOVFileStreamTransferTest, SeeksFromEachOrigin)
{
    CTOVFileStream oStream(OpenForReading("0123456789"), MODE_LOADING, 0);

    oStream.Seek(4, TOVPlatform::TOVFile::eSeekOriginStart);
    EXPECT_EQ(4u, oStream.Tell());
    oStream.Seek(-1, TOVPlatform::TOVFile::eSeekOriginCurrent);
    EXPECT_EQ(3u, oStream.Tell());
    oStream.Seek(-2, TOVPlatform::TOVFile::eSeekOriginEnd);
    EXPECT_EQ(8u, oStream.Tell());
}

TEST_F(CTOVFileStreamTransferTest, ReadsPastTheEndInSilence)
{
    CLogRecorder oLog;
    CTOVFileStream oStream(OpenForReading("ab"), MODE_LOADING, 0);
    char szBuffer[5] = "....";

    EXPECT_NO_CHECK(oStream.Read(szBuffer, 4));
    EXPECT_STREQ("ab..", szBuffer); // partly filled
    EXPECT_NO_CHECK(oStream.Read(szBuffer, 4));
    EXPECT_STREQ("ab..", szBuffer);
    EXPECT_TRUE(oLog.Lines().empty());
}

TEST_F(CTOVFileStreamTransferTest, WritesToAFileThatRefusesInSilence)
{
    CLogRecorder oLog;
    CTOVFileStream oStream(OpenForReading("ab"), MODE_SAVING, 0);

    EXPECT_NO_CHECK(oStream.Write("cd", 2));

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_EQ("ab", Written());
}

TEST_F(CTOVFileStreamTransferTest, TransfersNothingWithAFileThatWasClosed)
{
    CTOVFileStream oStream(OpenForBoth("ab"), MODE_BOTH, 0);
    char cByte = '.';
    m_oFile.Close();

    EXPECT_NO_CHECK(oStream.Read(&cByte, 1));
    EXPECT_NO_CHECK(oStream.Write(&cByte, 1));

    EXPECT_EQ('.', cByte);
    EXPECT_EQ("ab", ReadWholeFile(m_sFile));
}

TEST_F(CTOVFileStreamTransferTest, ReadsInEveryModeThatDoesNotSaveOnly)
{
    for (const int nMode : {MODE_NONE, MODE_LOADING, MODE_BOTH, 0x301, 0x011})
    {
        CTOVFileStream oStream(OpenForReading("a"), nMode, 0);
        char cByte = '.';

        EXPECT_NO_THROW(oStream.Read(&cByte, 1));

        EXPECT_EQ('a', cByte) << nMode;
        m_oFile.Close();
    }
}

TEST_F(CTOVFileStreamTransferTest, WritesInEveryModeThatDoesNotLoadOnly)
{
    for (const int nMode : {MODE_NONE, MODE_SAVING, MODE_BOTH, 0x302, 0x012})
    {
        CTOVFileStream oStream(OpenForWriting(), nMode, 0);

        EXPECT_NO_THROW(oStream.Write("a", 1));

        EXPECT_EQ("a", Written()) << nMode;
    }
}

TEST_F(CTOVFileStreamTransferTest, RefusesToReadWhileSavingOnly)
{
    for (const int nMode : {MODE_SAVING, 0x202, 0x012})
    {
        CSpyFile oFile;
        CTOVFileStream oStream(&oFile, nMode, 0);
        char cByte = '.';

        EXPECT_STREAM_EXCEPTION(FileStreamException, 4, oStream.Read(&cByte, 1));
        EXPECT_STREAM_EXCEPTION(FileStreamException, 4, oStream.Read(nullptr, 0));
        EXPECT_EQ(1u, oFile.m_aCalls.size()) << "more than GetSize";
    }
}

TEST_F(CTOVFileStreamTransferTest, RefusesToWriteWhileLoadingOnly)
{
    for (const int nMode : {MODE_LOADING, 0x201, 0x011})
    {
        CSpyFile oFile;
        CTOVFileStream oStream(&oFile, nMode, 0);

        EXPECT_STREAM_EXCEPTION(FileStreamException, 5, oStream.Write("a", 1));
        EXPECT_STREAM_EXCEPTION(FileStreamException, 5, oStream.Write(nullptr, 0));
        EXPECT_EQ(1u, oFile.m_aCalls.size()) << "more than GetSize";
    }
}

TEST_F(CTOVFileStreamTransferTest, TakesItsDirectionFromTheOverriddenModeWord)
{
    CSpyFile oFile;
    CSteeredStream oStream(&oFile, MODE_BOTH);
    char cByte = '.';

    oStream.m_nMode = MODE_SAVING;
    EXPECT_STREAM_EXCEPTION(FileStreamException, 4, oStream.Read(&cByte, 1));
    oStream.m_nMode = MODE_LOADING;
    EXPECT_STREAM_EXCEPTION(FileStreamException, 5, oStream.Write(&cByte, 1));
}
