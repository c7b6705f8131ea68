// The form that the sections of streams over files have on disk, and their versions.
#include "TOVStream/TOVFileStreamInstruments.h"

namespace
{
class CTOVFileStreamSectionTest : public CFileStreamFixture
{
};
} // namespace

TEST_F(CTOVFileStreamSectionTest, LaysASectionOutAsItsVersionAndThePayload)
{
    CTOVFileStream oStream(OpenForWriting(), MODE_SAVING, 0);

    oStream.SerializeBegin(3);
    oStream.Write("abcdef", 6);
    oStream.SerializeEnd();

    EXPECT_EQ(Bytes({3, 0, 0, 0}) + "abcdef", Written());
}

TEST_F(CTOVFileStreamSectionTest, TakesFourBytesForASectionWithoutPayload)
{
    CTOVFileStream oStream(OpenForWriting(), MODE_SAVING, 0);

    oStream.SerializeBegin(5);
    oStream.SerializeEnd();

    EXPECT_EQ(Bytes({5, 0, 0, 0}), Written());
}

TEST_F(CTOVFileStreamSectionTest, WritesEveryVersionButMinusOneInFourBytes)
{
    CTOVFileStream oStream(OpenForWriting(), MODE_SAVING, 0);

    oStream.SerializeBegin(0x01020304);
    oStream.SerializeBegin(-2);
    oStream.SerializeBegin(0);

    EXPECT_EQ(Bytes({4, 3, 2, 1, 0xFE, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0}), Written());
}

TEST_F(CTOVFileStreamSectionTest, MixesValuesAndBytesWithoutAnythingBetweenThem)
{
    CTOVFileStream oStream(OpenForWriting(), MODE_SAVING, 0);

    oStream.SerializeBegin(1);
    oStream << 258;
    oStream.SerializeBegin(2);
    oStream.Write("\n\r\x1A", 3);
    oStream.SerializeEnd();
    oStream << -1;
    oStream.SerializeEnd();

    EXPECT_EQ(Bytes({1, 0, 0, 0, 2, 1, 0, 0, 2, 0, 0, 0, 0x0A, 0x0D, 0x1A, 0xFF, 0xFF, 0xFF, 0xFF}), Written());
}

TEST_F(CTOVFileStreamSectionTest, KeepsNoVersionWhileStoring)
{
    CTOVFileStream oStream(OpenForWriting(), MODE_SAVING, 0);
    EXPECT_EQ(-1, oStream.GetVersion());

    oStream.SerializeBegin(3);
    EXPECT_EQ(-1, oStream.GetVersion());
    oStream.SerializeEnd();
    EXPECT_EQ(-1, oStream.GetVersion());
    EXPECT_EQ(4u, oStream.Tell());
}

TEST_F(CTOVFileStreamSectionTest, BringsTheVersionsOfNestedSectionsBack)
{
    {
        CTOVFileStream oWriter(OpenForWriting(), MODE_SAVING, 0);
        oWriter.SerializeBegin(7);
        oWriter.SerializeBegin(8);
        oWriter.SerializeEnd();
        oWriter.SerializeEnd();
    }
    const std::string sContents = Written();
    CTOVFileStream oReader(OpenForReading(sContents), MODE_LOADING, 0);

    EXPECT_EQ(Bytes({7, 0, 0, 0, 8, 0, 0, 0}), sContents);
    EXPECT_EQ(-1, oReader.GetVersion());
    oReader.SerializeBegin(-1);
    EXPECT_EQ(7, oReader.GetVersion());
    oReader.SerializeBegin(-1);
    EXPECT_EQ(8, oReader.GetVersion());
    oReader.SerializeEnd();
    EXPECT_EQ(7, oReader.GetVersion());
    oReader.SerializeEnd();
    EXPECT_EQ(-1, oReader.GetVersion());
}

TEST_F(CTOVFileStreamSectionTest, BringsTheVersionsOfManySectionsBack)
{
    std::string sContents;
    for (int nVersion = 1; nVersion <= 100; ++nVersion)
        sContents += Bytes({nVersion, 0, 0, 0});
    CTOVFileStream oReader(OpenForReading(sContents), MODE_LOADING, 0);

    for (int nVersion = 1; nVersion <= 100; ++nVersion)
    {
        oReader.SerializeBegin(-1);
        EXPECT_EQ(nVersion, oReader.GetVersion());
    }
    for (int nVersion = 99; nVersion >= 1; --nVersion)
    {
        oReader.SerializeEnd();
        EXPECT_EQ(nVersion, oReader.GetVersion());
    }
}

TEST_F(CTOVFileStreamSectionTest, ReadsSectionsOneBehindTheOther)
{
    CTOVFileStream oReader(OpenForReading(Bytes({7, 0, 0, 0, 'a', 0xFE, 0xFF, 0xFF, 0xFF})), MODE_LOADING, 0);
    char cByte = '.';

    oReader.SerializeBegin(-1);
    oReader.Read(&cByte, 1);
    oReader.SerializeEnd();
    oReader.SerializeBegin(-1);

    EXPECT_EQ('a', cByte);
    EXPECT_EQ(-2, oReader.GetVersion());
    oReader.SerializeEnd();
    EXPECT_EQ(-1, oReader.GetVersion());
}

TEST_F(CTOVFileStreamSectionTest, GoesToNoVersionForASurplusEnd)
{
    CTOVFileStream oReader(OpenForReading(Bytes({7, 0, 0, 0, 8, 0, 0, 0})), MODE_LOADING, 0);

    EXPECT_NO_CHECK(oReader.SerializeEnd());
    EXPECT_EQ(-1, oReader.GetVersion());
    oReader.SerializeBegin(-1);
    oReader.SerializeEnd();
    EXPECT_NO_CHECK(oReader.SerializeEnd());
    EXPECT_EQ(-1, oReader.GetVersion());
    oReader.SerializeBegin(-1);
    EXPECT_EQ(8, oReader.GetVersion());
}

TEST_F(CTOVFileStreamSectionTest, RefusesNoVersionWhileStoring)
{
    for (const int nMode : {MODE_SAVING, MODE_BOTH, 0x102})
    {
        CTOVFileStream oStream(OpenForWriting(), nMode, 0);

        EXPECT_CHECK_AT("TOVStream/TOVFileStream", "nDataFormatVersion != -1", oStream.SerializeBegin(-1));

        EXPECT_EQ(-1, oStream.GetVersion());
        EXPECT_EQ("", Written());
    }
}

TEST_F(CTOVFileStreamSectionTest, RefusesAVersionWhileNotStoring)
{
    for (const int nMode : {MODE_NONE, MODE_LOADING})
    {
        CTOVFileStream oStream(OpenForReading(Bytes({7, 0, 0, 0, 8, 0, 0, 0})), nMode, 0);
        oStream.SerializeBegin(-1);

        for (const int nVersion : {3, 0, -2})
            EXPECT_CHECK_AT("TOVStream/TOVFileStream", "nDataFormatVersion == -1", oStream.SerializeBegin(nVersion));

        EXPECT_EQ(4u, oStream.Tell());
        EXPECT_EQ(7, oStream.GetVersion());
        oStream.SerializeEnd();
        EXPECT_EQ(-1, oStream.GetVersion()) << "a refused section was stacked";
        m_oFile.Close();
    }
}

TEST_F(CTOVFileStreamSectionTest, ReadsSectionsInAModeOfNeitherDirection)
{
    CTOVFileStream oStream(OpenForReading(Bytes({7, 0, 0, 0})), MODE_NONE, 0);

    oStream.SerializeBegin(-1);
    EXPECT_EQ(7, oStream.GetVersion());
    oStream.SerializeEnd();
    EXPECT_EQ(-1, oStream.GetVersion());
}

TEST_F(CTOVFileStreamSectionTest, WritesSectionsInAModeOfBothDirections)
{
    CTOVFileStream oStream(OpenForWriting(), MODE_BOTH, 0);

    oStream.SerializeBegin(7);
    EXPECT_EQ(-1, oStream.GetVersion());
    oStream.SerializeEnd();

    EXPECT_EQ(Bytes({7, 0, 0, 0}), Written());
}

TEST_F(CTOVFileStreamSectionTest, KeepsTheEnclosingVersionWhereTheFileEnds)
{
    CTOVFileStream oReader(OpenForReading(Bytes({7, 0, 0, 0})), MODE_LOADING, 0);
    oReader.SerializeBegin(-1);

    EXPECT_NO_CHECK(oReader.SerializeBegin(-1));

    EXPECT_EQ(7, oReader.GetVersion());
    oReader.SerializeEnd();
    EXPECT_EQ(7, oReader.GetVersion()); // the empty section was stacked all the same
    oReader.SerializeEnd();
    EXPECT_EQ(-1, oReader.GetVersion());
}

TEST_F(CTOVFileStreamSectionTest, HasNoVersionInASectionOfAnEmptyFile)
{
    CTOVFileStream oReader(OpenForReading(""), MODE_LOADING, 0);

    EXPECT_NO_CHECK(oReader.SerializeBegin(-1));

    EXPECT_EQ(-1, oReader.GetVersion());
}

TEST_F(CTOVFileStreamSectionTest, LeavesTheVersionAsAPartialReadMadeIt)
{
    const struct
    {
        std::string sRest;
        unsigned int nVersion; // of the enclosing 0x11223344, its low bytes overwritten
    } CASES[] = {
        {Bytes({0xA1}), 0x112233A1u}, {Bytes({0xA1, 0xB2}), 0x1122B2A1u}, {Bytes({0xA1, 0xB2, 0xC3}), 0x11C3B2A1u}};

    for (const auto& oCase : CASES)
    {
        CTOVFileStream oReader(OpenForReading(Bytes({0x44, 0x33, 0x22, 0x11}) + oCase.sRest), MODE_LOADING, 0);
        oReader.SerializeBegin(-1);

        EXPECT_NO_CHECK(oReader.SerializeBegin(-1));

        EXPECT_EQ(static_cast<int>(oCase.nVersion), oReader.GetVersion());
        oReader.SerializeEnd();
        EXPECT_EQ(0x11223344, oReader.GetVersion());
        m_oFile.Close();
    }
}

TEST_F(CTOVFileStreamSectionTest, LeavesNoVersionAsAPartialReadMadeIt)
{
    CTOVFileStream oReader(OpenForReading(Bytes({1, 2})), MODE_LOADING, 0);

    oReader.SerializeBegin(-1);

    EXPECT_EQ(static_cast<int>(0xFFFF0201u), oReader.GetVersion());
    oReader.SerializeEnd();
    EXPECT_EQ(-1, oReader.GetVersion());
}

TEST_F(CTOVFileStreamSectionTest, WritesTheVersionAsTextInTheAsciiFormat)
{
    CTOVFileStream oStream(OpenForWriting(), 0x102, 0);

    oStream.SerializeBegin(12);
    oStream.Write("payload", 7);
    oStream << -34;
    oStream.SerializeEnd();

    EXPECT_EQ("12payload-34", Written());
}

TEST_F(CTOVFileStreamSectionTest, RefusesToReadASectionInTheAsciiFormat)
{
    CTOVFileStream oReader(OpenForReading("12payload"), 0x101, 0);

    EXPECT_CHECK_AT("TOVStream/TOVStreamTraits", "false", oReader.SerializeBegin(-1));

    EXPECT_EQ(-1, oReader.GetVersion());
    EXPECT_EQ(0u, oReader.Tell());
}

TEST_F(CTOVFileStreamSectionTest, RollsNothingBackWhenASectionCannotBeRead)
{
    CSteeredStream oReader(OpenForReading(Bytes({7, 0, 0, 0, '1', '2'})), MODE_LOADING);
    oReader.SerializeBegin(-1);

    oReader.m_nMode = 0x101;
    EXPECT_THROW(oReader.SerializeBegin(-1), TOVDebug::CTOVAssertException);

    EXPECT_EQ(7, oReader.GetVersion());
    oReader.SerializeEnd();
    EXPECT_EQ(7, oReader.GetVersion()); // the version stacked for the failed one
    oReader.SerializeEnd();
    EXPECT_EQ(-1, oReader.GetVersion());
}

TEST_F(CTOVFileStreamSectionTest, WritesTheVersionSilentlyInTheSecondBinaryFormat)
{
    CLogRecorder oLog;
    CTOVFileStream oStream(OpenForWriting(), 0x202, 0);

    oStream.SerializeBegin(12);

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_EQ(Bytes({12, 0, 0, 0}), Written());
}

TEST_F(CTOVFileStreamSectionTest, WritesTheVersionInBinaryBehindALogLineInAnUnknownFormat)
{
    CLogRecorder oLog;
    CTOVFileStream oStream(OpenForWriting(), 0x402, 0);

    oStream.SerializeBegin(12);

    ASSERT_EQ(1u, oLog.Lines().size());
    EXPECT_EQ("operator <<: Unknown stream format '1024'. Using binary format.", oLog.Lines()[0].sText);
    EXPECT_EQ("TOVStream/TOVStream.h", oLog.Lines()[0].sFile);
    EXPECT_EQ(Bytes({12, 0, 0, 0}), Written());
}

TEST_F(CTOVFileStreamSectionTest, TransfersTheVersionThroughTheVirtualOperations)
{
    CSteeredStream oWriter(OpenForWriting(), MODE_SAVING);
    oWriter.SerializeBegin(3);
    m_oFile.Close();
    CSteeredStream oReader(OpenForReading(Bytes({3, 0, 0, 0})), MODE_LOADING);
    oReader.SerializeBegin(-1);

    EXPECT_EQ(1, oWriter.m_nWrites);
    EXPECT_EQ(1, oReader.m_nReads);
}

TEST_F(CTOVFileStreamSectionTest, StacksWhatGetVersionTells)
{
    CSteeredStream oReader(OpenForReading(Bytes({3, 0, 0, 0})), MODE_LOADING);

    oReader.m_bOwnVersion = true;
    oReader.SerializeBegin(-1);
    oReader.m_bOwnVersion = false;
    oReader.SerializeEnd();

    EXPECT_EQ(42, oReader.GetVersion());
}
