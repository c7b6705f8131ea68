// The renderings of values.
#include "TOVStream/TOVStreamInstruments.h"

#include <TOVStream/TOVStreamTraits.h>

#include <climits>

namespace
{
constexpr int MODE_ASCII_SAVING = 0x102;
constexpr int MODE_ASCII_LOADING = 0x101;

// A type that an application brings its renderings for.
enum eColour : unsigned char
{
    eColourRed = 17
};
} // namespace

template<> class TOVStreamTraitsBinary<eColour> : public TOVStreamTraitsMemoryImage<eColour>
{
};

template<> inline void TOVStreamTraitsASCII<eColour>::Write(ITOVStream& oStream, const eColour& eValue)
{
    CTOVStringA oText;
    oText.Format("#%d", eValue);
    WriteText(oStream, oText);
}

TEST(TOVStreamTraitsTest, WritesAnIntAsDecimalText)
{
    const struct
    {
        int nValue;
        const char* szText;
    } CASES[] = {{1234, "1234"}, {-7, "-7"}, {0, "0"}, {100, "100"}, {INT_MAX, "2147483647"}, {INT_MIN, "-2147483648"}};

    for (const auto& oCase : CASES)
    {
        CMemoryStream oStream(MODE_ASCII_SAVING);

        oStream << oCase.nValue;

        EXPECT_EQ(oCase.szText, oStream.m_sBytes);
        EXPECT_EQ(1, oStream.m_nWrites);
    }
}

TEST(TOVStreamTraitsTest, WritesTextWithoutSeparator)
{
    CMemoryStream oStream(MODE_ASCII_SAVING);

    oStream << 1 << 2 << -3;

    EXPECT_EQ("12-3", oStream.m_sBytes);
}

TEST(TOVStreamTraitsTest, WritesTextInSilence)
{
    CLogRecorder oLog;
    CMemoryStream oStream(MODE_ASCII_SAVING);

    EXPECT_NO_CHECK(oStream << 1);

    EXPECT_TRUE(oLog.Lines().empty());
}

TEST(TOVStreamTraitsTest, RefusesToReadText)
{
    CMemoryStream oStream(MODE_ASCII_LOADING, "12");
    int nValue = 77;

    EXPECT_CHECK_AT("TOVStream/TOVStreamTraits", "false", oStream >> nValue);

    EXPECT_EQ(77, nValue);
    EXPECT_EQ(0, oStream.m_nReads);
}

TEST(TOVStreamTraitsTest, TellsTheLogBeforeItRefusesToReadText)
{
    CLogRecorder oLog;
    CMemoryStream oStream(MODE_ASCII_LOADING, "12");
    int nValue = 77;

    EXPECT_THROW(oStream >> nValue, TOVDebug::CTOVAssertException);

    ASSERT_EQ(1u, oLog.Lines().size());
    EXPECT_EQ("TOVStreamTraitsASCII::Read() Unsupported type.", oLog.Lines()[0].sText);
    EXPECT_EQ(eSeverityError, oLog.Lines()[0].eSeverity);
    EXPECT_EQ("TOVStream/TOVStreamTraits.h", oLog.Lines()[0].sFile);
    EXPECT_EQ("TOVStream/TOVStreamTraits.h", oLog.Checks()[0].sFile);
}

TEST(TOVStreamTraitsTest, TakesTheRenderingsOfAnApplicationsType)
{
    CMemoryStream oBinary(MODE_BOTH);
    CMemoryStream oText(MODE_ASCII_SAVING);
    eColour eRead = static_cast<eColour>(0);

    oBinary << eColourRed;
    oBinary >> eRead;
    oText << eColourRed;

    EXPECT_EQ(Bytes({17}), oBinary.m_sBytes);
    EXPECT_EQ(eColourRed, eRead);
    EXPECT_EQ("#17", oText.m_sBytes);
}

TEST(TOVStreamTraitsTest, RefusesToReadTheTextOfATypeWithoutAReader)
{
    CMemoryStream oStream(MODE_ASCII_LOADING, "#17");
    eColour eRead = static_cast<eColour>(3);

    EXPECT_CHECK_AT("TOVStream/TOVStreamTraits", "false", oStream >> eRead);
    EXPECT_EQ(3, eRead);
}

TEST(TOVStreamTraitsTest, WritesNothingForAnEmptyText)
{
    CMemoryStream oStream(MODE_ASCII_SAVING);

    TOVStreamTraitsASCII<int>::WriteText(oStream, CTOVStringA());

    EXPECT_EQ(0, oStream.m_nWrites);
}
