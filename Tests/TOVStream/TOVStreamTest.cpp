// The contract of streams and the dispatch of the operators by format.
#include "TOVStream/TOVStreamInstruments.h"

#include <type_traits>

namespace
{
// The four queries as a derived class sees and replaces them.
class CSavingStream : public CMemoryStream
{
public:
    CSavingStream() : CMemoryStream(MODE_NONE) {}

    bool IsSaving() const override { return true; }
};

struct sUnknownFormat
{
    int nMode;
    const char* szNumber;
};

const sUnknownFormat UNKNOWN_FORMATS[] = {{0x400, "1024"}, {0x500, "1280"}, {0x600, "1536"}, {0x700, "1792"},
                                          {0x800, "2048"}, {0x900, "2304"}, {0xA00, "2560"}, {0xB00, "2816"},
                                          {0xC00, "3072"}, {0xD00, "3328"}, {0xE00, "3584"}, {0xF00, "3840"}};
} // namespace

TEST(ITOVStreamTest, HasNoDataAndNoVirtualDestructor)
{
    EXPECT_EQ(sizeof(void*), sizeof(ITOVStream));
    EXPECT_FALSE(std::has_virtual_destructor<ITOVStream>::value);
    EXPECT_TRUE(std::is_abstract<ITOVStream>::value);
}

TEST(ITOVStreamTest, NamesTheFormats)
{
    EXPECT_EQ(0x000, ITOVStream::eStreamFormatBinary);
    EXPECT_EQ(0x100, ITOVStream::eStreamFormatASCII);
    EXPECT_EQ(0x200, ITOVStream::eStreamFormatBinary2);
    EXPECT_EQ(0x300, ITOVStream::eStreamFormatBinary3);
}

TEST(ITOVStreamTest, ReadsDirectionAndFormatFromTheModeWord)
{
    const struct
    {
        int nMode;
        int nFormat;
        bool bLoading;
        bool bSaving;
    } CASES[] = {{0x000, 0x000, false, false}, {0x001, 0x000, true, false},   {0x002, 0x000, false, true},
                 {0x003, 0x000, true, true},   {0x202, 0x200, false, true},   {0x101, 0x100, true, false},
                 {0x402, 0x400, false, true},  {0x0FC, 0x000, false, false},  {0xFFC, 0xF00, false, false},
                 {0x011, 0x000, true, false},  {0x1000, 0x000, false, false}, {-1, 0xF00, true, true}};

    for (const auto& oCase : CASES)
    {
        SCOPED_TRACE(oCase.nMode);
        const CMemoryStream oStream(oCase.nMode);

        EXPECT_EQ(oCase.nFormat, oStream.GetFormat());
        EXPECT_EQ(oCase.bLoading, oStream.IsLoading());
        EXPECT_EQ(oCase.bSaving, oStream.IsSaving());
        EXPECT_EQ(oCase.bSaving, oStream.IsStoring());
    }
}

TEST(ITOVStreamTest, AsksForTheModeWordEachTime)
{
    CMemoryStream oStream(MODE_LOADING);
    EXPECT_TRUE(oStream.IsLoading());

    oStream.m_nMode = MODE_SAVING;

    EXPECT_FALSE(oStream.IsLoading());
    EXPECT_TRUE(oStream.IsSaving());
    EXPECT_EQ(3, oStream.m_nModeCalls);
}

TEST(ITOVStreamTest, TakesStoringForAnotherWordForSaving)
{
    EXPECT_TRUE(CSavingStream().IsStoring());
}

TEST(ITOVStreamTest, CopiesNothingBeyondTheObject)
{
    const CMemoryStream oSource(MODE_LOADING, "bytes");
    CMemoryStream oTarget(MODE_SAVING);

    const CMemoryStream oCopy(oSource);
    ITOVStream& oResult = static_cast<ITOVStream&>(oTarget).operator=(oSource);

    EXPECT_EQ(MODE_LOADING, oCopy.GetMode());
    EXPECT_EQ(&oTarget, &oResult);
    EXPECT_EQ(MODE_SAVING, oTarget.GetMode());
    EXPECT_EQ("", oTarget.m_sBytes);
}

TEST(ITOVStreamTest, WritesTheMemoryOfAnInt)
{
    const int nValue = 258;
    CMemoryStream oStream(MODE_SAVING);

    oStream << nValue;

    EXPECT_EQ(Bytes({2, 1, 0, 0}), oStream.m_sBytes);
    EXPECT_EQ(1, oStream.m_nWrites);
    EXPECT_EQ(&nValue, oStream.m_pLast);
    EXPECT_EQ(4u, oStream.m_ullLastSize);
}

TEST(ITOVStreamTest, ReadsTheMemoryOfAnInt)
{
    int nValue = 0;
    CMemoryStream oStream(MODE_LOADING, Bytes({0xFE, 0xFF, 0xFF, 0xFF}));

    oStream >> nValue;

    EXPECT_EQ(-2, nValue);
    EXPECT_EQ(1, oStream.m_nReads);
    EXPECT_EQ(&nValue, oStream.m_pLast);
    EXPECT_EQ(4u, oStream.m_ullLastSize);
}

TEST(ITOVStreamTest, ChainsTheOperators)
{
    CMemoryStream oStream(MODE_BOTH);
    int nFirst = 0;
    int nSecond = 0;

    EXPECT_EQ(&oStream, &(oStream << 1 << 0x01020304));
    EXPECT_EQ(&oStream, &(oStream >> nFirst >> nSecond));

    EXPECT_EQ(Bytes({1, 0, 0, 0, 4, 3, 2, 1}), oStream.m_sBytes);
    EXPECT_EQ(1, nFirst);
    EXPECT_EQ(0x01020304, nSecond);
}

TEST(ITOVStreamTest, DoesNotLookAtTheDirectionInTheOperators)
{
    CMemoryStream oStream(MODE_NONE);
    int nValue = 0;

    oStream << 5;
    oStream >> nValue;

    EXPECT_EQ(5, nValue);
}

TEST(ITOVStreamTest, TakesTheTwoSilentFormatsForBinary)
{
    for (const int nMode : {0x002, 0x202, 0x302})
    {
        SCOPED_TRACE(nMode);
        CLogRecorder oLog;
        CMemoryStream oStream(nMode);
        int nValue = 0;

        oStream << 258;
        oStream >> nValue;

        EXPECT_EQ(Bytes({2, 1, 0, 0}), oStream.m_sBytes);
        EXPECT_EQ(258, nValue);
        EXPECT_TRUE(oLog.Lines().empty());
    }
}

TEST(ITOVStreamTest, AsksForTheFormatOnceWhereItIsKnown)
{
    for (const int nFormat : {0x000, 0x100, 0x200, 0x300})
    {
        CFormatSequence oStream({nFormat});
        oStream << 1;
        EXPECT_EQ(1, oStream.m_nFormatCalls) << nFormat;
    }
    for (const int nFormat : {0x000, 0x200, 0x300})
    {
        CFormatSequence oStream({nFormat}, Bytes({1, 0, 0, 0}));
        int nValue = 0;
        oStream >> nValue;
        EXPECT_EQ(1, oStream.m_nFormatCalls) << nFormat;
    }
}

TEST(ITOVStreamTest, WritesAnUnknownFormatInBinaryAndTellsTheLog)
{
    for (const sUnknownFormat& oFormat : UNKNOWN_FORMATS)
    {
        SCOPED_TRACE(oFormat.nMode);
        CLogRecorder oLog;
        CMemoryStream oStream(oFormat.nMode | MODE_SAVING);

        oStream << 258;

        EXPECT_EQ(Bytes({2, 1, 0, 0}), oStream.m_sBytes);
        ASSERT_EQ(1u, oLog.Lines().size());
        EXPECT_EQ("operator <<: Unknown stream format '" + std::string(oFormat.szNumber) + "'. Using binary format.",
                  oLog.Lines()[0].sText);
    }
}

TEST(ITOVStreamTest, ReadsAnUnknownFormatInBinaryAndTellsTheLog)
{
    for (const sUnknownFormat& oFormat : UNKNOWN_FORMATS)
    {
        SCOPED_TRACE(oFormat.nMode);
        CLogRecorder oLog;
        CMemoryStream oStream(oFormat.nMode | MODE_LOADING, Bytes({2, 1, 0, 0}));
        int nValue = 0;

        oStream >> nValue;

        EXPECT_EQ(258, nValue);
        ASSERT_EQ(1u, oLog.Lines().size());
        EXPECT_EQ("operator >>: Unknown stream format '" + std::string(oFormat.szNumber) + "'. Using binary format.",
                  oLog.Lines()[0].sText);
    }
}

TEST(ITOVStreamTest, WarnsUnderTheNameOfItsHeader)
{
    CLogRecorder oLog;
    CMemoryStream oStream(0x403, Bytes({0, 0, 0, 0}));
    int nValue = 0;

    oStream << 1;
    oStream >> nValue;

    ASSERT_EQ(2u, oLog.Lines().size());
    for (const sLogLine& oLine : oLog.Lines())
    {
        EXPECT_EQ("TOVStream/TOVStream.h", oLine.sFile);
        EXPECT_EQ(eSeverityWarning, oLine.eSeverity);
    }
}

TEST(ITOVStreamTest, AsksForAnUnknownFormatAgainForTheMessage)
{
    CLogRecorder oLog;
    CFormatSequence oWriter({0x400, 0x100, 0x000});
    CFormatSequence oReader({0x500, 0x100, 0x000}, Bytes({7, 0, 0, 0}));
    int nValue = 0;

    oWriter << 7;
    oReader >> nValue;

    EXPECT_EQ(2, oWriter.m_nFormatCalls);
    EXPECT_EQ(2, oReader.m_nFormatCalls);
    EXPECT_EQ(Bytes({7, 0, 0, 0}), oWriter.m_sBytes); // the second answer is for the message alone
    EXPECT_EQ(7, nValue);
    EXPECT_EQ(1, oLog.CountLines("operator <<: Unknown stream format '256'. Using binary format."));
    EXPECT_EQ(1, oLog.CountLines("operator >>: Unknown stream format '256'. Using binary format."));
}

TEST(ITOVStreamTest, LeavesTheVariableToAReadThatDeliversNothing)
{
    CMemoryStream oStream(MODE_LOADING);
    int nValue = 77;

    oStream >> nValue;

    EXPECT_EQ(77, nValue);
}
