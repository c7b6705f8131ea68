// Position, size and end of file objects.
#include "File/TOVOpenFile.h"

namespace File = TOVPlatform::TOVFile;

namespace
{
class CTOVFilePositionTest : public COpenFileFixture
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

TEST_F(CTOVFilePositionTest, SeeksFromEachOrigin)
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

TEST_F(CTOVFilePositionTest, CutsAnOffsetToItsLow32Bits)
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
TEST_F(CTOVFilePositionTest, IsSilentAboutASeekThatFails)
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

TEST_F(CTOVFilePositionTest, TellsWhatItReadAndWrote)
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

TEST_F(CTOVFilePositionTest, GetsTheSizeAndKeepsThePosition)
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

// The size of an unused file is found in another way.
TEST_F(CTOVFilePositionTest, GetsTheSameSizeBeforeAndAfterTheFirstUse)
{
    for (const std::size_t nSize : {0u, 1u, 10u, 5000u})
    {
        CTOVFile oFile;
        OpenWith(oFile, std::string(nSize, 'x'), READ);
        char cFirst = 0;

        EXPECT_EQ(nSize, oFile.GetSize());
        EXPECT_EQ(0u, oFile.Tell());
        oFile.Read(&cFirst, 1);
        EXPECT_EQ(nSize, oFile.GetSize());
        EXPECT_EQ(nSize > 0 ? 1u : 0u, oFile.Tell());
    }
}

TEST_F(CTOVFilePositionTest, CountsWhatIsNotYetWrittenOutInTheSize)
{
    CTOVFile oFile;
    OpenWith(oFile, "", WRITE);
    oFile.Write("0123", 4);

    EXPECT_EQ(4u, oFile.GetSize());
    EXPECT_EQ(4u, oFile.Tell());
}

TEST_F(CTOVFilePositionTest, KeepsAPositionBeyondTheEnd)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    oFile.Seek(3, File::eSeekOriginEnd);

    EXPECT_EQ(4u, oFile.GetSize());
    EXPECT_EQ(7u, oFile.Tell());
}

TEST_F(CTOVFilePositionTest, AsksThePlatformForTheSizeAndNotItsOwnSlots)
{
    CCountingFile oFile;
    OpenWith(oFile, "0123", READ);

    EXPECT_EQ(4u, oFile.CTOVFile::GetSize());

    EXPECT_EQ(0, oFile.nTells);
    EXPECT_EQ(0, oFile.nSeeks);
}

TEST_F(CTOVFilePositionTest, IsAtTheEndWherePositionAndSizeAreEqual)
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

TEST_F(CTOVFilePositionTest, IsAtTheEndAsSoonAsAllIsRead)
{
    CTOVFile oFile;
    OpenWith(oFile, "0123", READ);
    char szBuffer[4];

    EXPECT_EQ(1u, oFile.Read(szBuffer, 4));

    EXPECT_TRUE(oFile.IsEof());
}

TEST_F(CTOVFilePositionTest, AsksItsSlotsWhetherItIsAtTheEnd)
{
    CCountingFile oFile;

    EXPECT_TRUE(oFile.IsEof());

    EXPECT_EQ(1, oFile.nGetSizes);
    EXPECT_EQ(1, oFile.nTells);
}

TEST_F(CTOVFilePositionTest, ComparesPositionAndSizeIn64Bits)
{
    CCountingFile oFile;
    oFile.ullSize = 0x100000005;
    oFile.ullPosition = 5;
    EXPECT_FALSE(oFile.IsEof());

    oFile.ullPosition = 0x100000005;
    EXPECT_TRUE(oFile.IsEof());
}

TEST_F(CTOVFilePositionTest, HasNoSizeBeyond32Bits)
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

TEST_F(CTOVFilePositionTest, TellsTheLargestPositionOf32Bits)
{
    MakeBigFile(Path("big"), 0x7FFFFFFF);
    CTOVFile oFile;
    Open(oFile, "big", READ);

    EXPECT_EQ(0x7FFFFFFFu, oFile.GetSize());
    oFile.Seek(0x7FFFFFFF, File::eSeekOriginStart);
    EXPECT_EQ(0x7FFFFFFFu, oFile.Tell());
    EXPECT_TRUE(oFile.IsEof());
}
