// A stream over a file of somebody else.
#include "Support/TOVLayout.h"
#include "Support/TOVPrivateMember.h"
#include "TOVStream/TOVFileStreamInstruments.h"

#include <memory>
#include <type_traits>

namespace
{
TOV_PRIVATE_MEMBER(FileOf, CTOVFileStream, CTOVFile*, m_pFile)
TOV_PRIVATE_MEMBER(ReservedOf, CTOVFileStream, unsigned long long, m_ullReserved)
TOV_PRIVATE_MEMBER(SizeOf, CTOVFileStream, unsigned long long, m_ullSize)
TOV_PRIVATE_MEMBER(OptionOf, CTOVFileStream, unsigned long long, m_ullOption)
TOV_PRIVATE_MEMBER(ModeOf, CTOVFileStream, int, m_nMode)
TOV_PRIVATE_MEMBER(VersionOf, CTOVFileStream, int, m_nVersion)
TOV_PRIVATE_MEMBER(StackOf, CTOVFileStream, CTOVStack<int>, m_aVersionStack)

class CTOVFileStreamTest : public CFileStreamFixture
{
};
} // namespace

TEST_F(CTOVFileStreamTest, HoldsItsMembersInTheirOrder)
{
    CSpyFile oFile;
    CTOVFileStream oStream(&oFile, MODE_BOTH, 0);

    ExpectMembersInOrder(oStream, FileOf(oStream), ReservedOf(oStream), SizeOf(oStream), OptionOf(oStream),
                         ModeOf(oStream), VersionOf(oStream), StackOf(oStream));
}

TEST_F(CTOVFileStreamTest, BeginsWithWhatItWasGivenAndNoVersion)
{
    CSpyFile oFile;
    CTOVFileStream oStream(&oFile, 0x203, 0x1122334455667788ull);

    EXPECT_EQ(&oFile, FileOf(oStream));
    EXPECT_EQ(0u, ReservedOf(oStream));
    EXPECT_EQ(0xCDEF01234567ull, SizeOf(oStream));
    EXPECT_EQ(0x1122334455667788ull, OptionOf(oStream));
    EXPECT_EQ(0x203, ModeOf(oStream));
    EXPECT_EQ(-1, VersionOf(oStream));
    EXPECT_TRUE(StackOf(oStream).IsEmpty());
}

TEST_F(CTOVFileStreamTest, IsAStreamWithAVirtualDestructor)
{
    EXPECT_TRUE((std::is_base_of<ITOVStream, CTOVFileStream>::value));
    EXPECT_TRUE(std::has_virtual_destructor<CTOVFileStream>::value);
}

TEST_F(CTOVFileStreamTest, AsksTheFileForItsSizeAndNothingElseAtFirst)
{
    CSpyFile oFile;
    const CTOVFileStream oStream(&oFile, MODE_BOTH, 0);

    EXPECT_EQ((std::vector<std::string>{"GetSize"}), oFile.m_aCalls);
    EXPECT_EQ(0xCDEF01234567ull, oStream.GetSize());
    EXPECT_EQ(1u, oFile.m_aCalls.size());
}

TEST_F(CTOVFileStreamTest, ForwardsInFullWidth)
{
    CSpyFile oFile;
    CTOVFileStream oStream(&oFile, MODE_BOTH, 0);
    char szBuffer[1];

    oStream.Read(szBuffer, 0x100000002ull);
    EXPECT_EQ(szBuffer, oFile.m_pBuffer);
    EXPECT_EQ(0x100000002ull, oFile.m_ullSize);
    oStream.Write(szBuffer + 1, 0x300000004ull);
    EXPECT_EQ(szBuffer + 1, oFile.m_pBuffer);
    EXPECT_EQ(0x300000004ull, oFile.m_ullSize);
    oStream.Seek(-0x500000006ll, TOVPlatform::TOVFile::eSeekOriginEnd);
    EXPECT_EQ(-0x500000006ll, oFile.m_llOffset);
    EXPECT_EQ(TOVPlatform::TOVFile::eSeekOriginEnd, oFile.m_eOrigin);
    EXPECT_EQ(0x123456789ABull, oStream.Tell());
    EXPECT_EQ((std::vector<std::string>{"GetSize", "Read", "Write", "Seek", "Tell"}), oFile.m_aCalls);
}

TEST_F(CTOVFileStreamTest, RefusesToStandOnNoFile)
{
    EXPECT_CHECK_AT("TOVStream/TOVFileStream", "pFile != NULL", CTOVFileStream(nullptr, MODE_LOADING, 0));
}

TEST_F(CTOVFileStreamTest, RefusesToStandOnAClosedFile)
{
    // In a process of its own: the check leaves the lock of the handle table taken.
    const sChildResult oResult = RunChild("OpensAStreamOnAClosedFile");

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sOutput;
}

TOV_CHILD(OpensAStreamOnAClosedFile)
{
    CLogRecorder oLog;
    CTOVFile oFile;
    try
    {
        const CTOVFileStream oStream(&oFile, MODE_LOADING, 0);
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        if (oLog.SawCheck("TOVFile", "hHandle != FILE_INVALID_HANDLE"))
            exit(0);
    }
    printf("heard: %s\n", oLog.DescribeChecks().c_str());
    exit(1);
}

TEST_F(CTOVFileStreamTest, RefusesToWorkOnNoFile)
{
    for (const int nMode : {MODE_NONE, MODE_LOADING, MODE_SAVING, MODE_BOTH})
    {
        CSpyFile oFile;
        CTOVFileStream oStream(&oFile, nMode, 0);
        char cByte = 'x';
        FileOf(oStream) = nullptr;

        EXPECT_CHECK_AT("TOVStream/TOVFileStream", "m_pFile != NULL", oStream.Read(&cByte, 1));
        EXPECT_CHECK_AT("TOVStream/TOVFileStream", "m_pFile != NULL", oStream.Write(&cByte, 1));
        EXPECT_CHECK_AT("TOVStream/TOVFileStream", "m_pFile != NULL",
                        oStream.Seek(0, TOVPlatform::TOVFile::eSeekOriginStart));
        EXPECT_CHECK_AT("TOVStream/TOVFileStream", "m_pFile != NULL", oStream.Tell());
        EXPECT_EQ('x', cByte);
        EXPECT_EQ(nMode, ModeOf(oStream));
    }
}

TEST_F(CTOVFileStreamTest, LeavesTheFileOpenAndWhereItWas)
{
    OpenForBoth("0123456789");
    m_oFile.Seek(3, TOVPlatform::TOVFile::eSeekOriginStart);
    {
        const CTOVFileStream oStream(&m_oFile, MODE_LOADING, 0);
        EXPECT_EQ(10u, oStream.GetSize());
        EXPECT_EQ(3u, oStream.Tell());
    }

    EXPECT_TRUE(m_oFile.IsOpen());
    EXPECT_EQ(3u, m_oFile.Tell());
}

TEST_F(CTOVFileStreamTest, DoesNotLookAtTheFileWhenDestroyed)
{
    auto pFile = std::make_unique<CSpyFile>();
    auto pStream = std::make_unique<CTOVFileStream>(pFile.get(), MODE_BOTH, 0);

    pFile.reset();

    EXPECT_NO_CHECK(pStream.reset());
}

TEST_F(CTOVFileStreamTest, SupportsEverythingWhateverTheMode)
{
    for (const int nMode : {MODE_NONE, MODE_LOADING, MODE_SAVING, MODE_BOTH, 0x402})
    {
        CSpyFile oFile;
        const CTOVFileStream oStream(&oFile, nMode, 0);

        EXPECT_TRUE(oStream.SupportsRead());
        EXPECT_TRUE(oStream.SupportsWrite());
        EXPECT_TRUE(oStream.SupportsSeek());
        EXPECT_TRUE(oStream.SupportsVersioning());
        EXPECT_EQ(nMode, oStream.GetMode());
    }
}

TEST_F(CTOVFileStreamTest, KeepsTheSizeOfItsBeginning)
{
    CTOVFileStream oStream(OpenForWriting(), MODE_SAVING, 0);

    oStream.Write("text", 4);

    EXPECT_EQ(0u, oStream.GetSize());
    EXPECT_EQ(4u, oStream.Tell());
}

TEST_F(CTOVFileStreamTest, CopiesEveryMember)
{
    CTOVFileStream oSource(OpenForReading(Bytes({7, 0, 0, 0, 8, 0, 0, 0})), 0x201, 99);
    oSource.SerializeBegin(-1);
    CSpyFile oOtherFile;
    CTOVFileStream oAssigned(&oOtherFile, MODE_SAVING, 1);

    ReservedOf(oSource) = 5;

    CTOVFileStream oCopy(oSource);
    EXPECT_EQ(&oAssigned, &(oAssigned = oSource));

    for (CTOVFileStream* pCopy : {&oCopy, &oAssigned})
    {
        EXPECT_EQ(&m_oFile, FileOf(*pCopy));
        EXPECT_EQ(5u, ReservedOf(*pCopy));
        EXPECT_EQ(8u, pCopy->GetSize());
        EXPECT_EQ(99u, OptionOf(*pCopy));
        EXPECT_EQ(0x201, pCopy->GetMode());
        EXPECT_EQ(7, pCopy->GetVersion());
        EXPECT_EQ(1, StackOf(*pCopy).GetSize());
    }
}

TEST_F(CTOVFileStreamTest, LeavesTheReservedValueAndTheOptionAlone)
{
    CTOVFileStream oStream(OpenForBoth(Bytes({7, 0, 0, 0})), MODE_NONE, 99);
    int nValue = 0;

    oStream.SerializeBegin(-1);
    oStream.Seek(0, TOVPlatform::TOVFile::eSeekOriginStart);
    oStream >> nValue;
    oStream.SerializeEnd();

    EXPECT_EQ(0u, ReservedOf(oStream));
    EXPECT_EQ(99u, OptionOf(oStream));
}

TEST_F(CTOVFileStreamTest, CopiesTheStackOfVersionsByValue)
{
    CTOVFileStream oSource(OpenForReading(Bytes({7, 0, 0, 0, 8, 0, 0, 0})), MODE_LOADING, 0);
    oSource.SerializeBegin(-1);
    oSource.SerializeBegin(-1);

    CTOVFileStream oCopy(oSource);
    oSource.SerializeEnd();
    oSource.SerializeEnd();

    EXPECT_EQ(8, oCopy.GetVersion());
    oCopy.SerializeEnd();
    EXPECT_EQ(7, oCopy.GetVersion());
    oCopy.SerializeEnd();
    EXPECT_EQ(-1, oCopy.GetVersion());
}

TEST_F(CTOVFileStreamTest, SharesTheFileWithItsCopy)
{
    CTOVFileStream oSource(OpenForReading("ab"), MODE_LOADING, 0);
    CTOVFileStream oCopy(oSource);
    char szBuffer[3] = "..";

    oCopy.Read(szBuffer, 1);
    oSource.Read(szBuffer + 1, 1);

    EXPECT_STREQ("ab", szBuffer);
    EXPECT_EQ(2u, oCopy.Tell());
}

TEST_F(CTOVFileStreamTest, SurvivesAssignmentToItself)
{
    CTOVFileStream oStream(OpenForReading(Bytes({7, 0, 0, 0})), MODE_LOADING, 0);
    CTOVFileStream& oSame = oStream;
    oStream.SerializeBegin(-1);

    oStream = oSame;

    EXPECT_EQ(7, oStream.GetVersion());
    oStream.SerializeEnd();
    EXPECT_EQ(-1, oStream.GetVersion());
}
