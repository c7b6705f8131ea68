// The checked stream writes what every stream writes, and sums it.
#include "Streams/TOVCheckedStreamInstruments.h"

namespace
{
class CTOVCheckedStreamWriteTest : public CCheckedStreamFixture
{
};

class CFullStream : public CMemoryStream
{
public:
    CFullStream() : CMemoryStream(MODE_SAVING) {}
    void Write(const void*, unsigned long long) override { throw ITOVStream::StreamException(99); }
};
} // namespace

TEST_F(CTOVCheckedStreamWriteTest, StoresInTheFormatOfTheOtherStream)
{
    CMemoryStream oOther(MODE_SAVING | ITOVStream::eStreamFormatASCII);
    CTOVCheckedStream oStream(oOther);

    EXPECT_EQ(MODE_SAVING | ITOVStream::eStreamFormatASCII, oStream.GetMode());
    EXPECT_TRUE(oStream.IsStoring());
    EXPECT_FALSE(oStream.IsLoading());
    EXPECT_FALSE(oStream.SupportsRead());
    EXPECT_TRUE(oStream.SupportsWrite());
    EXPECT_EQ(0u, oStream.GetSize());
    EXPECT_EQ(0u, oStream.GetRest());
    oStream << 258;
    oStream.Finish();
    EXPECT_EQ("258", oOther.m_sBytes);
}

TEST_F(CTOVCheckedStreamWriteTest, WritesAFileLikeTheStreamOfTheLibrary)
{
    {
        CTOVWriteFileStream oFile(m_sFile.c_str());
        CTOVCheckedStream oStream(oFile);
        oStream.SerializeBegin(7);
        oStream << 258;
        EXPECT_EQ(-1, oStream.GetVersion());
        oStream.SerializeEnd();
        EXPECT_EQ(8u, oStream.Tell());
        oStream.Finish();
        EXPECT_EQ(8u, oFile.Tell());
    }

    EXPECT_EQ(Bytes({7, 0, 0, 0, 2, 1, 0, 0}), ReadWholeFile(m_sFile));
}

TEST_F(CTOVCheckedStreamWriteTest, RefusesASectionWithoutAVersion)
{
    CMemoryStream oOther(MODE_SAVING);
    CTOVCheckedStream oStream(oOther);

    EXPECT_CHECK("nDataFormatVersion != -1", oStream.SerializeBegin(-1));
    EXPECT_EQ(0u, oStream.Tell());
}

TEST_F(CTOVCheckedStreamWriteTest, RefusesNoBytes)
{
    CMemoryStream oOther(MODE_SAVING);
    CTOVCheckedStream oStream(oOther);

    EXPECT_CHECK("pBuffer != NULL || ullSize == 0", oStream.Write(nullptr, 1));
    EXPECT_NO_CHECK(oStream.Write(nullptr, 0));
}

TEST_F(CTOVCheckedStreamWriteTest, PassesOnWholeBlocksAndAtTheEndTheRest)
{
    const std::string sBytes = ManyBytes(2 * BLOCK + 100);
    CMemoryStream oOther(MODE_SAVING);
    CTOVCheckedStream oStream(oOther);

    oStream.Write(sBytes.data(), 10);
    oStream.Write(sBytes.data() + 10, sBytes.size() - 10);
    EXPECT_EQ(sBytes.size(), oStream.Tell());
    EXPECT_EQ(2, oOther.m_nWrites);
    EXPECT_EQ(2u * BLOCK, oOther.m_sBytes.size());
    oStream.Finish();
    oStream.Finish();

    EXPECT_EQ(3, oOther.m_nWrites);
    EXPECT_EQ(sBytes, oOther.m_sBytes);
}

TEST_F(CTOVCheckedStreamWriteTest, TheDestructorPassesOnWhatIsLeft)
{
    CMemoryStream oOther(MODE_SAVING);
    {
        CTOVCheckedStream oStream(oOther);
        oStream.Write("abc", 3);
        EXPECT_EQ("", oOther.m_sBytes);
    }

    EXPECT_EQ("abc", oOther.m_sBytes);
}

TEST_F(CTOVCheckedStreamWriteTest, TheDestructorThrowsNothing)
{
    CFullStream oOther;
    EXPECT_NO_THROW({
        CTOVCheckedStream oStream(oOther);
        oStream.Write("abc", 3);
    });

    CTOVCheckedStream oStream(oOther);
    oStream.Write("abc", 3);
    EXPECT_STREAM_EXCEPTION(ITOVStream::StreamException, 99, oStream.Finish());
}

TEST_F(CTOVCheckedStreamWriteTest, SumsWhatTheReaderSums)
{
    const std::string sBytes = ManyBytes(BLOCK + 1);
    unsigned int uWritten = 0;
    {
        CTOVWriteFileStream oFile(m_sFile.c_str());
        CTOVCheckedStream oStream(oFile);
        oStream.Write(sBytes.data(), sBytes.size());
        uWritten = oStream.GetCrc();
        oStream << static_cast<int>(uWritten);
    }
    CTOVCheckedStream oStream(m_sFile.c_str());
    std::string sRead(sBytes.size(), '.');
    int nFound = 0;

    oStream.Read(&sRead[0], sRead.size());
    EXPECT_EQ(uWritten, oStream.GetCrc());
    oStream >> nFound;

    EXPECT_EQ(uWritten, static_cast<unsigned int>(nFound));
    EXPECT_EQ(~CRC32Generate(sBytes.data(), sBytes.size(), 0xFFFFFFFF), uWritten);
    EXPECT_NO_THROW(oStream.Finish());
}
