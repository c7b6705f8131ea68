// The stream that reads a file, opened by name.
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVPrivateMember.h"
#include "TOVStream/TOVStreamInstruments.h"

#include <File/TOVVirtualFileSystem.h>
#include <TOVStream/TOVReadFileStream.h>

#include <memory>
#include <new>
#include <type_traits>

namespace
{
typedef CTOVReadFileStream::ReadFileStreamException ReadFileStreamException;

TOV_PRIVATE_MEMBER(FileOf, CTOVReadFileStream, CTOVFile, m_oFile)
TOV_PRIVATE_MEMBER(InnerStreamOf, CTOVReadFileStream, CTOVFileStream*, m_pStream)
TOV_PRIVATE_MEMBER(ModeOf, CTOVReadFileStream, int, m_nMode)
TOV_PRIVATE_MEMBER(InnerFileOf, CTOVFileStream, CTOVFile*, m_pFile)
TOV_PRIVATE_MEMBER(InnerOptionOf, CTOVFileStream, unsigned long long, m_ullOption)

// Where a member stands in its object.
template<class TMember> long PlaceOf(const CTOVReadFileStream& oStream, const TMember& oMember)
{
    return static_cast<long>(reinterpret_cast<const char*>(&oMember) - reinterpret_cast<const char*>(&oStream));
}

// Puts another inner stream into a reader for a while.
class CInnerStreamGuard
{
public:
    CInnerStreamGuard(CTOVReadFileStream& oStream, CTOVFileStream* pInner)
        : m_oStream(oStream), m_pBefore(InnerStreamOf(oStream))
    {
        InnerStreamOf(m_oStream) = pInner;
    }

    ~CInnerStreamGuard() { InnerStreamOf(m_oStream) = m_pBefore; }

private:
    CTOVReadFileStream& m_oStream;
    CTOVFileStream* const m_pBefore;
};

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

TEST_F(CTOVReadFileStreamTest, IsAStreamOfItsOwnThatHoldsAnother)
{
    EXPECT_TRUE((std::is_base_of<ITOVStream, CTOVReadFileStream>::value));
    EXPECT_FALSE((std::is_base_of<CTOVFileStream, CTOVReadFileStream>::value));
    EXPECT_TRUE(std::has_virtual_destructor<CTOVReadFileStream>::value);
}

TEST_F(CTOVReadFileStreamTest, HoldsItsMembersInTheirOrder)
{
    struct sLayout
    {
        void* pVirtualOperations;
        CTOVFile oFile;
        CTOVFileStream* pStream;
        int nMode;
    };
    CTOVReadFileStream oStream(Containing(""), 0);

    EXPECT_LT(0, PlaceOf(oStream, FileOf(oStream)));
    EXPECT_LT(PlaceOf(oStream, FileOf(oStream)), PlaceOf(oStream, InnerStreamOf(oStream)));
    EXPECT_LT(PlaceOf(oStream, InnerStreamOf(oStream)), PlaceOf(oStream, ModeOf(oStream)));
    EXPECT_EQ(sizeof(sLayout), sizeof(CTOVReadFileStream));
}

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
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 4, oStream.Write(NULL, 0));
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 4, oStream << 1);
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 4, oStream.Seek(0, TOVPlatform::TOVFile::eSeekOriginStart));
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 4, oStream.Seek(1, TOVPlatform::TOVFile::eSeekOriginEnd));
    EXPECT_EQ(0u, oStream.Tell());
}

TEST_F(CTOVReadFileStreamTest, RefusesSectionsIfItsInnerStreamIsStoring)
{
    CTOVReadFileStream oStream(Containing("ab"), 0);
    CTOVFile oFile;
    oFile.Open(m_oFolder.File("other.bin").c_str(), ITOVFile::eFileOpenWrite | ITOVFile::eFileOpenBinary);
    CTOVFileStream oInner(&oFile, MODE_SAVING, 0);
    CInnerStreamGuard oGuard(oStream, &oInner);

    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 4, oStream.SerializeBegin(-1));
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 4, oStream.SerializeBegin(3));
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 4, oStream.SerializeEnd());
    EXPECT_EQ(0u, oInner.Tell());
}

TEST_F(CTOVReadFileStreamTest, GivesItsInnerStreamFileModeAndOption)
{
    CTOVReadFileStream oStream(Containing("ab"), 0x1122334455667788ull);
    CTOVFileStream& oInner = *InnerStreamOf(oStream);

    EXPECT_EQ(&FileOf(oStream), InnerFileOf(oInner));
    EXPECT_EQ(1, oInner.GetMode());
    EXPECT_EQ(2u, oInner.GetSize());
    EXPECT_EQ(0x1122334455667788ull, InnerOptionOf(oInner));
}

TEST_F(CTOVReadFileStreamTest, CannotBeOpenedOnAMissingFile)
{
    CLogRecorder oLog;

    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 0, CTOVReadFileStream(m_sFile.c_str(), 0));

    ASSERT_EQ(1u, oLog.Lines().size());
    EXPECT_EQ("CTOVFile::Open() : Enhance the exception throwing. Should be more detailed, what exactly failed.",
              oLog.Lines()[0].sText);
    EXPECT_EQ(eSeverityTrace, oLog.Lines()[0].eSeverity);
    EXPECT_NE(std::string::npos, oLog.Lines()[0].sFile.find("TOVFile"));
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST_F(CTOVReadFileStreamTest, CannotBeOpenedWithoutAName)
{
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 0, CTOVReadFileStream("", 0));
    EXPECT_STREAM_EXCEPTION(ReadFileStreamException, 0, CTOVReadFileStream(NULL, 0));
}

TEST_F(CTOVReadFileStreamTest, LetsOtherFailuresOfTheOpeningPass)
{
    CTOVVirtualFileSystem::Instance().SetAssign("readfilestream", m_oFolder.Path().c_str());

    EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetLength())", CTOVReadFileStream("readfilestream:", 0));
}

TEST_F(CTOVReadFileStreamTest, HoldsOneFileFromItsConstructionToItsEnd)
{
    const unsigned long long hBefore = FreeSlot();
    {
        const CTOVReadFileStream oStream(Containing(""), 0);
        EXPECT_NE(hBefore, FreeSlot());
    }

    EXPECT_EQ(hBefore, FreeSlot());
}

TEST_F(CTOVReadFileStreamTest, ClosesItsFileWhenDestroyedThroughItsVirtualDestructor)
{
    class CDerived : public CTOVReadFileStream
    {
    public:
        CDerived(const char* szFileName, bool& bDestroyed) : CTOVReadFileStream(szFileName, 0), m_bDestroyed(bDestroyed)
        {
        }
        ~CDerived() override { m_bDestroyed = true; }

    private:
        bool& m_bDestroyed;
    };
    const unsigned long long hBefore = FreeSlot();
    bool bDestroyed = false;
    std::unique_ptr<CTOVReadFileStream> pStream = std::make_unique<CDerived>(Containing(""), bDestroyed);

    pStream.reset();

    EXPECT_TRUE(bDestroyed);
    EXPECT_EQ(hBefore, FreeSlot());
}

TEST_F(CTOVReadFileStreamTest, IsDestroyedInSilenceBehindAClosedFile)
{
    auto pStream = std::make_unique<CTOVReadFileStream>(Containing("ab"), 0);
    FileOf(*pStream).Close();

    EXPECT_NO_CHECK(pStream.reset());
}

TEST_F(CTOVReadFileStreamTest, LeavesNothingBehindWhenItCannotBeOpened)
{
    const unsigned long long hBefore = FreeSlot();

    EXPECT_THROW(CTOVReadFileStream(m_sFile.c_str(), 0), ReadFileStreamException);

    EXPECT_EQ(hBefore, FreeSlot());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST_F(CTOVReadFileStreamTest, LeavesNothingBehindWhereverTheMemoryEnds)
{
    const std::string sFile = Containing("ab");
    const unsigned long long hBefore = FreeSlot();
    CQuietRecorder oLog;
    bool bOpened = false;
    std::string sFileOfCheck;

    for (unsigned long ulSuccesses = 0; !bOpened && ulSuccesses < 1000; ++ulSuccesses)
    {
        try
        {
            CAllocationFailure oFailure(ulSuccesses);
            const CTOVReadFileStream oStream(sFile.c_str(), 0);
            bOpened = true;
        }
        catch (const std::bad_alloc&)
        {
        }
        catch (const CTOVException&) // a check, or no file
        {
        }
        EXPECT_EQ(hBefore, FreeSlot()) << ulSuccesses;
        if (std::string(oLog.Text()) == "m_pStream != NULL")
            sFileOfCheck = oLog.File();
    }

    EXPECT_TRUE(bOpened);
    EXPECT_EQ("TOVStream/TOVReadFileStream.cpp", sFileOfCheck);
}
#endif

TEST_F(CTOVReadFileStreamTest, SharesFileAndInnerStreamWithItsCopy)
{
    CTOVReadFileStream oStream(Containing(Bytes({7, 0, 0, 0, 'a', 'b'})), 0);
    alignas(CTOVReadFileStream) char aCopy[sizeof(CTOVReadFileStream)];
    CTOVReadFileStream& oCopy = *new (aCopy) CTOVReadFileStream(oStream); // never destroyed: the source frees both
    char szBuffer[3] = "..";

    oCopy.SerializeBegin(-1);
    oStream.Read(szBuffer, 1);
    oCopy.Read(szBuffer + 1, 1);

    EXPECT_EQ(7, oStream.GetVersion());
    EXPECT_STREQ("ab", szBuffer);
    EXPECT_EQ(6u, oStream.Tell());
    EXPECT_EQ(0x11, oCopy.GetMode());
}

TEST_F(CTOVReadFileStreamTest, TakesFileAndInnerStreamOfAnotherByAssignment)
{
    const CTOVReadFileStream oSource(Containing("ab"), 0);
    WriteWholeFile(m_oFolder.File("other.bin"), "xy");
    alignas(CTOVReadFileStream) char aTarget[sizeof(CTOVReadFileStream)];
    CTOVReadFileStream& oTarget = *new (aTarget) CTOVReadFileStream(m_oFolder.File("other.bin").c_str(), 0);
    const CTOVReadFileStream oOwnerOfWhatTheTargetHeld(oTarget);
    char cByte = '.';

    EXPECT_EQ(&oTarget, &(oTarget = oSource));
    oTarget.Read(&cByte, 1);

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
