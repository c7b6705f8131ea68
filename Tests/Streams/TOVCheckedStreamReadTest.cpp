// The checked stream reads what is there, as every stream does.
#include "Streams/TOVCheckedStreamInstruments.h"

#include <File/TOVVirtualFileSystem.h>

namespace
{
class CTOVCheckedStreamReadTest : public CCheckedStreamFixture
{
};
} // namespace

TEST_F(CTOVCheckedStreamReadTest, LoadsInBinary)
{
    const CTOVCheckedStream oStream(Containing("abc"));

    EXPECT_EQ(ITOVStream::eStreamModeLoading, oStream.GetMode());
    EXPECT_TRUE(oStream.IsLoading());
    EXPECT_FALSE(oStream.IsStoring());
    EXPECT_TRUE(oStream.SupportsRead());
    EXPECT_FALSE(oStream.SupportsWrite());
    EXPECT_FALSE(oStream.SupportsSeek());
    EXPECT_TRUE(oStream.SupportsVersioning());
    EXPECT_EQ(3u, oStream.GetSize());
}

TEST_F(CTOVCheckedStreamReadTest, ReadsAFileOfSeveralBlocksInPiecesOfAnySize)
{
    const std::string sBytes = ManyBytes(3 * BLOCK + 5);
    CTOVCheckedStream oStream(Containing(sBytes));
    std::string sRead(sBytes.size(), '.');

    std::size_t nRead = 0;
    for (std::size_t nPart = 1; nRead < sBytes.size(); nPart = std::min(2 * nPart, sBytes.size() - nRead))
    {
        EXPECT_EQ(nRead, oStream.Tell());
        EXPECT_EQ(sBytes.size() - nRead, oStream.GetRest());
        oStream.Read(&sRead[nRead], nPart);
        nRead += nPart;
    }

    EXPECT_EQ(sBytes, sRead);
    EXPECT_EQ(0u, oStream.GetRest());
    EXPECT_NO_THROW(oStream.Finish());
}

TEST_F(CTOVCheckedStreamReadTest, ReadsSectionsAndTheirVersions)
{
    CTOVCheckedStream oStream(Containing(Bytes({7, 0, 0, 0, 8, 0, 0, 0, 2, 1, 0, 0})));
    int nValue = 0;
    EXPECT_EQ(-1, oStream.GetVersion());

    oStream.SerializeBegin(-1);
    EXPECT_EQ(7, oStream.GetVersion());
    oStream.SerializeBegin(-1);
    EXPECT_EQ(8, oStream.GetVersion());
    oStream >> nValue;
    oStream.SerializeEnd();
    EXPECT_EQ(7, oStream.GetVersion());
    oStream.SerializeEnd();

    EXPECT_EQ(-1, oStream.GetVersion());
    EXPECT_EQ(258, nValue);
    EXPECT_NO_THROW(oStream.SerializeEnd());
    EXPECT_NO_THROW(oStream.Finish());
}

TEST_F(CTOVCheckedStreamReadTest, RefusesAVersion)
{
    CTOVCheckedStream oStream(Containing(Bytes({7, 0, 0, 0})));

    EXPECT_CHECK("nDataFormatVersion == -1", oStream.SerializeBegin(3));
    EXPECT_EQ(0u, oStream.Tell());
}

TEST_F(CTOVCheckedStreamReadTest, RefusesNoBuffer)
{
    CTOVCheckedStream oStream(Containing("abc"));

    EXPECT_CHECK("pBuffer != NULL || ullSize == 0", oStream.Read(nullptr, 1));
    EXPECT_NO_CHECK(oStream.Read(nullptr, 0));
    EXPECT_EQ(3u, oStream.GetRest());
}

TEST_F(CTOVCheckedStreamReadTest, OpensAFileByAnAssignedName)
{
    Containing(Bytes({5, 0, 0, 0}));
    CTOVVirtualFileSystem::Instance().SetAssign("checked", m_oFolder.Path().c_str());
    const unsigned long long ullBefore = FreeSlot();
    int nValue = 0;
    {
        CTOVCheckedStream oStream("checked:checked.dat");
        EXPECT_NE(ullBefore, FreeSlot());
        oStream >> nValue;
    }

    EXPECT_EQ(5, nValue);
    EXPECT_EQ(ullBefore, FreeSlot());
}

TEST_F(CTOVCheckedStreamReadTest, ReadsAPartOfAnotherStream)
{
    CMemoryStream oOther(MODE_LOADING, "..abcdef");
    oOther.m_nPosition = 2;
    CTOVCheckedStream oStream(oOther, 4);
    char szRead[5] = "----";
    EXPECT_EQ(2u, oStream.Tell());

    oStream.Read(szRead, 4);

    EXPECT_STREQ("abcd", szRead);
    EXPECT_EQ(6u, oStream.Tell());
    EXPECT_EQ(4u, oStream.GetSize());
    EXPECT_NO_THROW(oStream.Finish());
    EXPECT_EQ(6u, oOther.m_nPosition);
}

TEST_F(CTOVCheckedStreamReadTest, UsesTheOtherStreamInBlocks)
{
    CMemoryStream oOther(MODE_LOADING, ManyBytes(BLOCK + 100));
    CTOVCheckedStream oStream(oOther, BLOCK + 100);
    int nValue = 0;

    for (int i = 0; i < (BLOCK + 100) / 4; ++i)
        oStream >> nValue;

    EXPECT_EQ(2, oOther.m_nReads);
    EXPECT_NO_THROW(oStream.Finish());
}

TEST_F(CTOVCheckedStreamReadTest, CountsAreReadIfTheirElementsFit)
{
    CTOVCheckedStream oStream(Containing(Bytes({0, 0, 0, 0, 3, 0, 0, 0, 'a', 'b', 'c', 'd', 'e', 'f'})));

    EXPECT_EQ(0, oStream.ReadCount(1000));
    EXPECT_EQ(3, oStream.ReadCount(2));
    EXPECT_EQ(6u, oStream.GetRest());
}

TEST_F(CTOVCheckedStreamReadTest, RefusesElementsWithoutASize)
{
    CTOVCheckedStream oStream(Containing(Bytes({1, 0, 0, 0, 'a'})));

    EXPECT_CHECK("ullSmallest > 0", oStream.ReadCount(0));
    EXPECT_EQ(0u, oStream.Tell());
}

TEST_F(CTOVCheckedStreamReadTest, SumsWhatHasBeenReadAndNothingElse)
{
    CTOVCheckedStream oStream(Containing("123456789" + ManyBytes(2 * BLOCK)));
    char szRead[9];
    std::string sRest(2 * BLOCK, '.');
    EXPECT_EQ(0u, oStream.GetCrc());

    oStream.Read(szRead, 9);
    EXPECT_EQ(0xCBF43926u, oStream.GetCrc()); // the check value of CRC-32
    oStream.Read(&sRest[0], sRest.size());

    EXPECT_EQ(~CRC32Generate(sRest.data(), sRest.size(), ~0xCBF43926u), oStream.GetCrc());
}

TEST_F(CTOVCheckedStreamReadTest, AnEmptyFileIsWhole)
{
    CTOVCheckedStream oStream(Containing(""));

    EXPECT_EQ(0u, oStream.GetRest());
    EXPECT_NO_THROW(oStream.Read(nullptr, 0));
    EXPECT_NO_THROW(oStream.Finish());
}
