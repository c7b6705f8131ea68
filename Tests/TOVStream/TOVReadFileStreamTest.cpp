// The stream that reads a file, opened by name.
#include "Support/TOVUnended.h"
#include "TOVStream/TOVStreamInstruments.h"

#include <File/TOVVirtualFileSystem.h>

namespace
{
class CTOVReadFileStreamTest : public testing::Test
{
protected:
    CTOVReadFileStreamTest() : m_sFile(m_oFolder.File("stream.bin")) {}

    const char* Containing(const std::string& sContents)
    {
        WriteWholeFile(m_sFile, sContents);
        return m_sFile.c_str();
    }

    const CTempFolder m_oFolder;
    const std::string m_sFile;
};
} // namespace

TEST_F(CTOVReadFileStreamTest, LoadsInBinary)
{
    const CTOVReadFileStream oStream(Containing(""), 0);

    EXPECT_EQ(0x11, oStream.GetMode());
    EXPECT_EQ(0, oStream.GetFormat());
    EXPECT_TRUE(oStream.IsLoading());
    EXPECT_FALSE(oStream.IsSaving());
    EXPECT_FALSE(oStream.IsStoring());
}

TEST_F(CTOVReadFileStreamTest, SupportsReadingAndVersions)
{
    const CTOVReadFileStream oStream(Containing(""), 0);

    EXPECT_TRUE(oStream.SupportsRead());
    EXPECT_FALSE(oStream.SupportsWrite());
    EXPECT_FALSE(oStream.SupportsSeek());
    EXPECT_TRUE(oStream.SupportsVersioning());
}

TEST_F(CTOVReadFileStreamTest, HasASizeOfZeroAlways)
{
    CTOVReadFileStream oStream(Containing(std::string(100, 'x')), 0);
    char cByte = '.';
    EXPECT_EQ(0u, oStream.GetSize());

    oStream.Read(&cByte, 1);

    EXPECT_EQ(0u, oStream.GetSize());
}

TEST_F(CTOVReadFileStreamTest, ReadsEveryByteAsItIs)
{
    std::string sBytes;
    for (int nByte = 0; nByte < 256; ++nByte)
        sBytes += static_cast<char>(nByte);
    sBytes += "\r\n\x1A\n";
    CTOVReadFileStream oStream(Containing(sBytes), 0);
    std::string sRead(sBytes.size(), '.');

    oStream.Read(&sRead[0], sRead.size());

    EXPECT_EQ(sBytes, sRead);
    EXPECT_EQ(sBytes.size(), oStream.Tell());
}

TEST_F(CTOVReadFileStreamTest, ReadsPastTheEndInSilence)
{
    CTOVReadFileStream oStream(Containing("ab"), 0);
    char szBuffer[5] = "....";

    EXPECT_NO_CHECK(oStream.Read(szBuffer, 4));

    EXPECT_STREQ("ab..", szBuffer);
}

TEST_F(CTOVReadFileStreamTest, ReadsValues)
{
    CTOVReadFileStream oStream(Containing(Bytes({2, 1, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF})), 0);
    int nFirst = 0;
    int nSecond = 0;

    oStream >> nFirst >> nSecond;

    EXPECT_EQ(258, nFirst);
    EXPECT_EQ(-1, nSecond);
    EXPECT_EQ(8u, oStream.Tell());
}

TEST_F(CTOVReadFileStreamTest, YieldsTheVersionOfASection)
{
    CTOVReadFileStream oStream(Containing(Bytes({7, 0, 0, 0, 8, 0, 0, 0})), 0);
    EXPECT_EQ(-1, oStream.GetVersion());

    oStream.SerializeBegin(-1);
    EXPECT_EQ(7, oStream.GetVersion());
    oStream.SerializeBegin(-1);
    EXPECT_EQ(8, oStream.GetVersion());
    oStream.SerializeEnd();
    EXPECT_EQ(7, oStream.GetVersion());
    oStream.SerializeEnd();
    EXPECT_EQ(-1, oStream.GetVersion());
}

TEST_F(CTOVReadFileStreamTest, RefusesAVersion)
{
    CTOVReadFileStream oStream(Containing(Bytes({7, 0, 0, 0})), 0);

    EXPECT_CHECK_AT("TOVStream/TOVFileStream", "nDataFormatVersion == -1", oStream.SerializeBegin(3));
    EXPECT_EQ(0u, oStream.Tell());
}

TEST_F(CTOVReadFileStreamTest, RefusesToWriteAndToSeek)
{
    CTOVReadFileStream oStream(Containing("ab"), 0);

    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 4, oStream.Write("x", 1));
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 4, oStream.Write(nullptr, 0));
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 4, oStream << 1);
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 4, oStream.Seek(0, TOVPlatform::TOVFile::eSeekOriginStart));
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 4, oStream.Seek(1, TOVPlatform::TOVFile::eSeekOriginEnd));
    EXPECT_EQ(0u, oStream.Tell());
}

TEST_F(CTOVReadFileStreamTest, CannotBeOpenedOnAMissingFile)
{
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 0, CTOVReadFileStream(m_sFile.c_str(), 0));
}

TEST_F(CTOVReadFileStreamTest, CannotBeOpenedWithoutAName)
{
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 0, CTOVReadFileStream("", 0));
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 0, CTOVReadFileStream(nullptr, 0));
}

TEST_F(CTOVReadFileStreamTest, SharesFileAndInnerStreamWithItsCopy)
{
    CTOVReadFileStream oStream(Containing(Bytes({7, 0, 0, 0, 'a', 'b'})), 0);
    CUnended<CTOVReadFileStream> oCopy(oStream); // the source frees both
    char szBuffer[3] = "..";

    oCopy->SerializeBegin(-1);
    oStream.Read(szBuffer, 1);
    oCopy->Read(szBuffer + 1, 1);

    EXPECT_EQ(7, oStream.GetVersion());
    EXPECT_STREQ("ab", szBuffer);
    EXPECT_EQ(6u, oStream.Tell());
    EXPECT_EQ(0x11, oCopy->GetMode());
}

TEST_F(CTOVReadFileStreamTest, TakesFileAndInnerStreamOfAnotherByAssignment)
{
    const CTOVReadFileStream oSource(Containing("ab"), 0);
    WriteWholeFile(m_oFolder.File("other.bin"), "xy");
    CUnended<CTOVReadFileStream> oTarget(m_oFolder.File("other.bin").c_str(), 0);
    const CTOVReadFileStream oOwnerOfWhatTheTargetHeld(*oTarget);
    char cByte = '.';

    EXPECT_EQ(&*oTarget, &(*oTarget = oSource));
    oTarget->Read(&cByte, 1);

    EXPECT_EQ('a', cByte);
    EXPECT_EQ(1u, oSource.Tell());
}

TEST_F(CTOVReadFileStreamTest, LoadsAVersionedValueByAnAssignedName)
{
    Containing(Bytes({4, 0, 0, 0, 2, 1, 0, 0, 0xF9, 0xFF, 0xFF, 0xFF}));
    CTOVVirtualFileSystem::Instance().SetAssign("data", m_oFolder.Path().c_str());
    const unsigned long long hBefore = FreeSlot();
    int nFirst = 0;
    int nSecond = 0;
    {
        CTOVReadFileStream oStream("data:stream.bin", 0);
        EXPECT_NE(hBefore, FreeSlot());

        oStream.SerializeBegin(-1);
        EXPECT_EQ(4, oStream.GetVersion());
        oStream >> nFirst >> nSecond;
        oStream.SerializeEnd();
        EXPECT_EQ(-1, oStream.GetVersion());
    }

    EXPECT_EQ(258, nFirst);
    EXPECT_EQ(-7, nSecond);
    EXPECT_EQ(hBefore, FreeSlot());
}
