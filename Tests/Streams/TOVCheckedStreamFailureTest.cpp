// What the checked stream reports, and in which words.
#include "Streams/TOVCheckedStreamInstruments.h"
#include "Support/TOVAllocationCounter.h"

#include <cerrno>
#include <filesystem>

namespace
{
class CTOVCheckedStreamFailureTest : public CCheckedStreamFixture
{
protected:
    std::string Text(const std::string& sProblem) const { return m_sFile + " " + sProblem; }
};

// Of this stream, so many blocks can be read. The next one fails as a disk does, and the one after it can be read.
class CFailingStream : public CMemoryStream
{
public:
    CFailingStream(const std::string& sBytes, int nGoodBlocks, int nError)
        : CMemoryStream(MODE_LOADING, sBytes), m_nGoodBlocks(nGoodBlocks), m_nError(nError)
    {
    }

    void Read(void* pBuffer, unsigned long long ullSize) override
    {
        if (m_nGoodBlocks-- != 0)
            CMemoryStream::Read(pBuffer, ullSize);
        else
            errno = m_nError;
    }

private:
    int m_nGoodBlocks;
    const int m_nError;
};
} // namespace

TEST_F(CTOVCheckedStreamFailureTest, AFileThatEndsTooEarlyIsReportedAndNotReadAsZeros)
{
    CTOVCheckedStream oStream(Containing(Bytes({2, 0, 0, 0, 3})));
    int nValue = 77;

    oStream.SerializeBegin(-1);
    EXPECT_EQ(Text("ends too early: after byte 4 there should be 4 bytes; bytes left: 1"),
              TextOfFailure([&] { oStream >> nValue; }));

    EXPECT_EQ(77, nValue);
    EXPECT_EQ(4u, oStream.Tell());
    EXPECT_EQ(1u, oStream.GetRest());
    EXPECT_STREAM_EXCEPTION(CheckedStreamException, CTOVCheckedStream::eFailureTooShort, oStream >> nValue);
}

TEST_F(CTOVCheckedStreamFailureTest, EachCutOfAFileIsReported)
{
    const std::string sWhole = ManyBytes(BLOCK + 8);
    for (const std::size_t nSize : {0, 3, BLOCK - 1, BLOCK, BLOCK + 1, BLOCK + 7})
    {
        CTOVCheckedStream oStream(Containing(sWhole.substr(0, nSize)));
        std::string sRead(sWhole.size(), '.');

        EXPECT_STREAM_EXCEPTION(CheckedStreamException, CTOVCheckedStream::eFailureTooShort,
                                oStream.Read(&sRead[0], sRead.size()));
        EXPECT_EQ(std::string(sWhole.size(), '.'), sRead) << nSize;
    }
}

TEST_F(CTOVCheckedStreamFailureTest, ASectionWithoutAVersionHasNotBegun)
{
    CTOVCheckedStream oStream(Containing(Bytes({2, 0, 0, 0, 9, 9})));

    oStream.SerializeBegin(-1);
    EXPECT_STREAM_EXCEPTION(CheckedStreamException, CTOVCheckedStream::eFailureTooShort, oStream.SerializeBegin(-1));
    EXPECT_EQ(2, oStream.GetVersion());
    oStream.SerializeEnd();

    EXPECT_EQ(-1, oStream.GetVersion());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST_F(CTOVCheckedStreamFailureTest, WithoutMemoryForItsVersionASectionHasNotBegun)
{
    CTOVCheckedStream oStream(Containing(Bytes({2, 0, 0, 0, 9})));
    {
        const CAllocationFailure oFailure;
        EXPECT_THROW(oStream.SerializeBegin(-1), std::bad_alloc);
    }
    EXPECT_EQ(0u, oStream.Tell());

    oStream.SerializeBegin(-1);
    EXPECT_EQ(2, oStream.GetVersion());
}
#endif

TEST_F(CTOVCheckedStreamFailureTest, ASizeBeyondAllBoundsIsTooShortAndNotAWrap)
{
    CTOVCheckedStream oStream(Containing("abc"));
    char cByte = '.';

    EXPECT_STREAM_EXCEPTION(CheckedStreamException, CTOVCheckedStream::eFailureTooShort, oStream.Read(&cByte, ~0ull));
    EXPECT_EQ('.', cByte);
}

TEST_F(CTOVCheckedStreamFailureTest, BytesAtTheEndAreReported)
{
    CTOVCheckedStream oStream(Containing("abc"));
    char szRead[2];
    oStream.Read(szRead, 2);

    EXPECT_EQ(Text("goes on after its end, which is byte 2"), TextOfFailure([&] { oStream.Finish(); }));
    EXPECT_STREAM_EXCEPTION(CheckedStreamException, CTOVCheckedStream::eFailureTooLong, oStream.Finish());
    oStream.Read(szRead, 1);
    EXPECT_NO_THROW(oStream.Finish());
}

TEST_F(CTOVCheckedStreamFailureTest, ACountThatTheRestCannotHoldIsReported)
{
    CTOVCheckedStream oStream(Containing(Bytes({4, 0, 0, 0, 'a', 'b', 'c', 'd', 'e', 'f', 'g'})));

    EXPECT_EQ(Text("ends too early: after byte 4 there should be 4 elements of 2 bytes or more; bytes left: 7"),
              TextOfFailure([&] { oStream.ReadCount(2); }));
}

TEST_F(CTOVCheckedStreamFailureTest, LargeCountsOfLargeElementsDoNotWrap)
{
    CTOVCheckedStream oStream(Containing(Bytes({0xFF, 0xFF, 0xFF, 0x7F, 'a'})));

    EXPECT_STREAM_EXCEPTION(CheckedStreamException, CTOVCheckedStream::eFailureTooShort, oStream.ReadCount(~0ull));
}

TEST_F(CTOVCheckedStreamFailureTest, ANegativeCountIsReported)
{
    CTOVCheckedStream oStream(Containing(Bytes({0xFE, 0xFF, 0xFF, 0xFF, 'a', 'b'})));

    EXPECT_EQ(Text("is damaged: it has a count of -2"), TextOfFailure([&] { oStream.ReadCount(1); }));
    CTOVCheckedStream oAgain(m_sFile.c_str());
    EXPECT_STREAM_EXCEPTION(CheckedStreamException, CTOVCheckedStream::eFailureBadCount, oAgain.ReadCount(1));
}

TEST_F(CTOVCheckedStreamFailureTest, AFailedReadIsReportedWithTheReasonOfTheSystem)
{
    CFailingStream oOther(ManyBytes(BLOCK + 4), 1, EIO);
    CTOVCheckedStream oStream(oOther, BLOCK + 4);
    std::string sRead(BLOCK, '.');
    int nValue = 77;

    oStream.Read(&sRead[0], sRead.size());
    EXPECT_EQ(std::string("the stream cannot be read: ") + std::strerror(EIO),
              TextOfFailure([&] { oStream >> nValue; }));

    EXPECT_EQ(77, nValue);
    EXPECT_EQ(4u, oStream.GetRest());
}

TEST_F(CTOVCheckedStreamFailureTest, AFailedReadCanBeTriedAgain)
{
    const std::string sBytes = ManyBytes(4);
    CFailingStream oOther(sBytes, 0, 0);
    CTOVCheckedStream oStream(oOther, 4);
    std::string sRead(4, '.');

    EXPECT_EQ("the stream cannot be read", TextOfFailure([&] { oStream.Read(&sRead[0], 4); }));
    oStream.Read(&sRead[0], 4);

    EXPECT_EQ(sBytes, sRead);
    EXPECT_EQ(~CRC32Generate(sBytes.data(), 4, 0xFFFFFFFF), oStream.GetCrc());
}

TEST_F(CTOVCheckedStreamFailureTest, AFileThatIsCutWhileItIsReadCannotBeRead)
{
    CTOVCheckedStream oStream(Containing(ManyBytes(3 * BLOCK)));
    std::string sRead(3 * BLOCK, '.');
    oStream.Read(&sRead[0], BLOCK);
    std::filesystem::resize_file(m_sFile, BLOCK + 1000);

    EXPECT_STREAM_EXCEPTION(CheckedStreamException, CTOVCheckedStream::eFailureUnreadable,
                            oStream.Read(&sRead[0], 2 * BLOCK));
}

TEST_F(CTOVCheckedStreamFailureTest, AMissingFileCannotBeOpened)
{
    EXPECT_EQ(Text("cannot be opened"), TextOfFailure([&] { CTOVCheckedStream oStream(m_sFile.c_str()); }));
    EXPECT_EQ("a file without a name cannot be opened", TextOfFailure([] { CTOVCheckedStream oStream(nullptr); }));
    EXPECT_STREAM_EXCEPTION(CheckedStreamException, CTOVCheckedStream::eFailureNotOpened, CTOVCheckedStream("missing"));
}

TEST_F(CTOVCheckedStreamFailureTest, TheOtherDirectionIsRefused)
{
    CTOVCheckedStream oReader(Containing("abcd"));
    CMemoryStream oOther(MODE_SAVING);
    CTOVCheckedStream oWriter(oOther);
    int nValue = 1;

    EXPECT_EQ(Text("is read, not written"), TextOfFailure([&] { oReader << nValue; }));
    EXPECT_EQ("the stream is written, not read", TextOfFailure([&] { oWriter >> nValue; }));
    EXPECT_STREAM_EXCEPTION(CheckedStreamException, CTOVCheckedStream::eFailureWrongDirection, oWriter.ReadCount(1));
    EXPECT_STREAM_EXCEPTION(CheckedStreamException, CTOVCheckedStream::eFailureWrongDirection,
                            oReader.Seek(0, TOVPlatform::TOVFile::eSeekOriginStart));
    EXPECT_EQ(1, nValue);
    EXPECT_EQ("", oOther.m_sBytes);
    EXPECT_EQ(4u, oReader.GetRest());
}

TEST_F(CTOVCheckedStreamFailureTest, IsAnExceptionOfTheLibraryAndOfTheStandardLibrary)
{
    const auto fnFail = [this] { CTOVCheckedStream oStream(m_sFile.c_str()); };

    EXPECT_TRUE(IsCaughtAs<CTOVException>(fnFail));
    EXPECT_TRUE(IsCaughtAs<std::runtime_error>(fnFail));
    EXPECT_TRUE(IsCaughtAs<std::exception>(fnFail));
}

TEST_F(CTOVCheckedStreamFailureTest, TellsTheProblemWithoutTheName)
{
    const CheckedStreamException oFailure(CTOVCheckedStream::eFailureTooLong, "my file", "goes on");
    const CheckedStreamException oCopy(oFailure);

    EXPECT_STREQ("my file goes on", oCopy.what());
    EXPECT_STREQ("goes on", oCopy.GetProblem());
}
