// The stream that writes a file, opened by name.
#include "Support/TOVFullDisk.h"
#include "Support/TOVUnended.h"
#include "TOVStream/TOVStreamInstruments.h"

#include <File/TOVVirtualFileSystem.h>

#include <memory>

namespace
{
class CTOVWriteFileStreamTest : public testing::Test
{
protected:
    CTOVWriteFileStreamTest() : m_sFile(m_oFolder.File("stream.bin")) {}

    const char* Name() const { return m_sFile.c_str(); }

    std::string Contents() const { return ReadWholeFile(m_sFile); }

    const CTempFolder m_oFolder;
    const std::string m_sFile;
};
} // namespace

TEST_F(CTOVWriteFileStreamTest, SavesInBinary)
{
    const CTOVWriteFileStream oStream(Name(), false, 0);

    EXPECT_EQ(0x12, oStream.GetMode());
    EXPECT_EQ(0, oStream.GetFormat());
    EXPECT_TRUE(oStream.IsSaving());
    EXPECT_TRUE(oStream.IsStoring());
    EXPECT_FALSE(oStream.IsLoading());
}

TEST_F(CTOVWriteFileStreamTest, SaysItHasNoDirectionWhenAppending)
{
    const CTOVWriteFileStream oStream(Name(), true, 0);

    EXPECT_EQ(0x14, oStream.GetMode());
    EXPECT_EQ(0, oStream.GetFormat());
    EXPECT_FALSE(oStream.IsSaving());
    EXPECT_FALSE(oStream.IsStoring());
    EXPECT_FALSE(oStream.IsLoading());
}

TEST_F(CTOVWriteFileStreamTest, SupportsWritingAndVersions)
{
    for (const bool bAppend : {false, true})
    {
        const CTOVWriteFileStream oStream(Name(), bAppend, 0);

        EXPECT_FALSE(oStream.SupportsRead());
        EXPECT_TRUE(oStream.SupportsWrite());
        EXPECT_FALSE(oStream.SupportsSeek());
        EXPECT_TRUE(oStream.SupportsVersioning());
    }
}

TEST_F(CTOVWriteFileStreamTest, HasASizeOfZeroAlways)
{
    WriteWholeFile(m_sFile, "old");

    for (const bool bAppend : {true, false})
    {
        CTOVWriteFileStream oStream(Name(), bAppend, 0);
        EXPECT_EQ(0u, oStream.GetSize());
        oStream.Write("text", 4);
        EXPECT_EQ(0u, oStream.GetSize());
    }
}

TEST_F(CTOVWriteFileStreamTest, CreatesAFile)
{
    for (const bool bAppend : {false, true})
    {
        const std::string sFile = m_oFolder.File(bAppend ? "appended" : "written");
        {
            CTOVWriteFileStream oStream(sFile.c_str(), bAppend, 0);
            oStream.Write("text", 4);
            EXPECT_EQ(4u, oStream.Tell());
        }
        EXPECT_EQ("text", ReadWholeFile(sFile));
    }
}

TEST_F(CTOVWriteFileStreamTest, TruncatesAnExistingFile)
{
    WriteWholeFile(m_sFile, "old contents");
    {
        const CTOVWriteFileStream oStream(Name(), false, 0);
    }

    EXPECT_EQ("", Contents());
}

TEST_F(CTOVWriteFileStreamTest, AddsAtTheEndWhenAppending)
{
    WriteWholeFile(m_sFile, "old");
    {
        CTOVWriteFileStream oStream(Name(), true, 0);
        oStream.Write("new", 3);
    }

    EXPECT_EQ("oldnew", Contents());
}

TEST_F(CTOVWriteFileStreamTest, WritesEveryByteAsItIs)
{
    std::string sBytes;
    for (int nByte = 0; nByte < 256; ++nByte)
        sBytes += static_cast<char>(nByte);

    for (const bool bAppend : {false, true})
    {
        {
            CTOVWriteFileStream oStream(Name(), bAppend, 0);
            oStream.Write(sBytes.data(), sBytes.size());
        }
        EXPECT_EQ(bAppend ? sBytes + sBytes : sBytes, Contents());
    }
}

TEST_F(CTOVWriteFileStreamTest, WritesSectionsAndValues)
{
    for (const bool bAppend : {false, true})
    {
        const std::string sFile = m_oFolder.File(bAppend ? "appended" : "written");
        {
            CTOVWriteFileStream oStream(sFile.c_str(), bAppend, 0);
            oStream.SerializeBegin(3);
            EXPECT_EQ(-1, oStream.GetVersion());
            oStream << 258 << -1;
            oStream.SerializeEnd();
            EXPECT_EQ(-1, oStream.GetVersion());
            EXPECT_EQ(12u, oStream.Tell());
        }
        EXPECT_EQ(Bytes({3, 0, 0, 0, 2, 1, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF}), ReadWholeFile(sFile));
    }
}

TEST_F(CTOVWriteFileStreamTest, RefusesNoVersion)
{
    for (const bool bAppend : {false, true})
    {
        CTOVWriteFileStream oStream(Name(), bAppend, 0);

        EXPECT_CHECK_AT("TOVStream/TOVFileStream", "nDataFormatVersion != -1", oStream.SerializeBegin(-1));
        EXPECT_EQ(-1, oStream.GetVersion());
        EXPECT_EQ(0u, oStream.Tell());
    }
}

TEST_F(CTOVWriteFileStreamTest, RefusesToReadAndToSeekUnderTwoCodes)
{
    for (const bool bAppend : {false, true})
    {
        CTOVWriteFileStream oStream(Name(), bAppend, 0);
        int nValue = 77;

        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 4, oStream.Read(&nValue, 4));
        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 4, oStream.Read(nullptr, 0));
        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 4, oStream >> nValue);
        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 3, oStream.Seek(0, TOVPlatform::TOVFile::eSeekOriginStart));
        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 3, oStream.Seek(1, TOVPlatform::TOVFile::eSeekOriginEnd));
        EXPECT_EQ(77, nValue);
    }
}

TEST_F(CTOVWriteFileStreamTest, SharesFileAndInnerStreamWithItsCopy)
{
    {
        CTOVWriteFileStream oStream(Name(), false, 0);
        CUnended<CTOVWriteFileStream> oCopy(oStream); // the source frees both

        oStream.Write("a", 1);
        oCopy->Write("b", 1);

        EXPECT_EQ(2u, oStream.Tell());
        EXPECT_EQ(0x12, oCopy->GetMode());
    }
    EXPECT_EQ("ab", Contents());
}

TEST_F(CTOVWriteFileStreamTest, TakesFileAndInnerStreamOfAnotherByAssignment)
{
    {
        const CTOVWriteFileStream oSource(Name(), true, 0);
        CUnended<CTOVWriteFileStream> oTarget(m_oFolder.File("other.bin").c_str(), false, 0);
        const CTOVWriteFileStream oOwnerOfWhatTheTargetHeld(*oTarget);

        EXPECT_EQ(&*oTarget, &(*oTarget = oSource));
        oTarget->Write("ab", 2);

        EXPECT_EQ(0x14, oTarget->GetMode());
    }
    EXPECT_EQ("ab", Contents());
    EXPECT_EQ("", ReadWholeFile(m_oFolder.File("other.bin")));
}

TEST_F(CTOVWriteFileStreamTest, WritesWhatAReaderLoadsByTheSameAssignedName)
{
    CTOVVirtualFileSystem::Instance().SetAssign("saves", m_oFolder.Path().c_str());
    {
        CTOVWriteFileStream oWriter("saves:stream.bin", false, 0);
        oWriter.SerializeBegin(2);
        oWriter << 1234;
        oWriter.SerializeEnd();
    }
    CTOVReadFileStream oReader("saves:stream.bin", 0);
    int nValue = 0;

    oReader.SerializeBegin(-1);
    oReader >> nValue;

    EXPECT_EQ(2, oReader.GetVersion());
    EXPECT_EQ(1234, nValue);
    EXPECT_EQ(Bytes({2, 0, 0, 0, 0xD2, 4, 0, 0}), Contents());
}

TEST_F(CTOVWriteFileStreamTest, OpensFilesHoweverOftenTheDiskWasFull)
{
    const CFullDisk oFullDisk;
    for (int nFile = 0; nFile <= 1024; ++nFile)
    {
        std::unique_ptr<CTOVWriteFileStream> pStream;
        ASSERT_NO_THROW(pStream = std::make_unique<CTOVWriteFileStream>(oFullDisk.Path(), false, 0))
            << "file " << nFile;
        pStream->Write("0123", 4);
    }

    EXPECT_NO_THROW(CTOVWriteFileStream(Name(), false, 0));
}
