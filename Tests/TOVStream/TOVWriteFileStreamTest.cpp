// The stream that writes a file, opened by name.
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVFullDisk.h"
#include "Support/TOVPrivateMember.h"
#include "TOVStream/TOVStreamInstruments.h"

#include <File/TOVVirtualFileSystem.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <memory>
#include <new>
#include <type_traits>

namespace
{
typedef CTOVWriteFileStream::WriteFileStreamException WriteFileStreamException;

TOV_PRIVATE_MEMBER(FileOf, CTOVWriteFileStream, CTOVFile, m_oFile)
TOV_PRIVATE_MEMBER(InnerStreamOf, CTOVWriteFileStream, CTOVFileStream*, m_pStream)
TOV_PRIVATE_MEMBER(ModeOf, CTOVWriteFileStream, int, m_nMode)
TOV_PRIVATE_MEMBER(InnerFileOf, CTOVFileStream, CTOVFile*, m_pFile)
TOV_PRIVATE_MEMBER(InnerOptionOf, CTOVFileStream, unsigned long long, m_ullOption)

// Where a member stands in its object.
template<class TMember> long PlaceOf(const CTOVWriteFileStream& oStream, const TMember& oMember)
{
    return static_cast<long>(reinterpret_cast<const char*>(&oMember) - reinterpret_cast<const char*>(&oStream));
}

// Puts another inner stream into a writer for a while.
class CInnerStreamGuard
{
public:
    CInnerStreamGuard(CTOVWriteFileStream& oStream, CTOVFileStream* pInner)
        : m_oStream(oStream), m_pBefore(InnerStreamOf(oStream))
    {
        InnerStreamOf(m_oStream) = pInner;
    }

    ~CInnerStreamGuard() { InnerStreamOf(m_oStream) = m_pBefore; }

private:
    CTOVWriteFileStream& m_oStream;
    CTOVFileStream* const m_pBefore;
};

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

TEST_F(CTOVWriteFileStreamTest, IsAStreamOfItsOwnThatHoldsAnother)
{
    EXPECT_TRUE((std::is_base_of<ITOVStream, CTOVWriteFileStream>::value));
    EXPECT_FALSE((std::is_base_of<CTOVFileStream, CTOVWriteFileStream>::value));
    EXPECT_TRUE(std::has_virtual_destructor<CTOVWriteFileStream>::value);
}

TEST_F(CTOVWriteFileStreamTest, HoldsItsMembersInTheirOrder)
{
    struct sLayout
    {
        void* pVirtualOperations;
        CTOVFile oFile;
        CTOVFileStream* pStream;
        int nMode;
    };
    CTOVWriteFileStream oStream(Name(), false, 0);

    EXPECT_LT(0, PlaceOf(oStream, FileOf(oStream)));
    EXPECT_LT(PlaceOf(oStream, FileOf(oStream)), PlaceOf(oStream, InnerStreamOf(oStream)));
    EXPECT_LT(PlaceOf(oStream, InnerStreamOf(oStream)), PlaceOf(oStream, ModeOf(oStream)));
    EXPECT_EQ(sizeof(sLayout), sizeof(CTOVWriteFileStream));
}

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
    }
}

TEST_F(CTOVWriteFileStreamTest, RefusesToReadAndToSeekUnderTwoCodes)
{
    for (const bool bAppend : {false, true})
    {
        CTOVWriteFileStream oStream(Name(), bAppend, 0);
        int nValue = 77;

        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 4, oStream.Read(&nValue, 4));
        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 4, oStream.Read(NULL, 0));
        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 4, oStream >> nValue);
        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 3, oStream.Seek(0, TOVPlatform::TOVFile::eSeekOriginStart));
        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 3, oStream.Seek(1, TOVPlatform::TOVFile::eSeekOriginEnd));
        EXPECT_EQ(77, nValue);
    }
}

TEST_F(CTOVWriteFileStreamTest, RefusesSectionsIfItsInnerStreamIsNotStoring)
{
    CTOVWriteFileStream oStream(Name(), false, 0);
    WriteWholeFile(m_oFolder.File("other.bin"), Bytes({7, 0, 0, 0}));
    CTOVFile oFile;
    oFile.Open(m_oFolder.File("other.bin").c_str(), ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);

    for (const int nMode : {MODE_LOADING, MODE_NONE})
    {
        CTOVFileStream oInner(&oFile, nMode, 0);
        CInnerStreamGuard oGuard(oStream, &oInner);

        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 4, oStream.SerializeBegin(3));
        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 4, oStream.SerializeBegin(-1));
        EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 4, oStream.SerializeEnd());
        EXPECT_EQ(0u, oInner.Tell());
    }
}

TEST_F(CTOVWriteFileStreamTest, GivesItsInnerStreamFileModeAndOption)
{
    for (const bool bAppend : {false, true})
    {
        CTOVWriteFileStream oStream(Name(), bAppend, 0x1122334455667788ull);
        CTOVFileStream& oInner = *InnerStreamOf(oStream);

        EXPECT_EQ(&FileOf(oStream), InnerFileOf(oInner));
        EXPECT_EQ(2, oInner.GetMode());
        EXPECT_TRUE(oInner.IsStoring());
        EXPECT_EQ(0x1122334455667788ull, InnerOptionOf(oInner));
    }
}

TEST_F(CTOVWriteFileStreamTest, CannotBeOpenedInAMissingFolder)
{
    CLogRecorder oLog;
    const std::string sFile = m_oFolder.File("missing") + "/file";

    EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 0, CTOVWriteFileStream(sFile.c_str(), false, 0));
    EXPECT_STREAM_EXCEPTION(WriteFileStreamException, 0, CTOVWriteFileStream(sFile.c_str(), true, 0));

    EXPECT_EQ(2u, oLog.Lines().size());
    EXPECT_EQ(2, oLog.CountLines("CTOVFile::Open() : Enhance the exception throwing. Should be more detailed, what "
                                 "exactly failed."));
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST_F(CTOVWriteFileStreamTest, LetsOtherFailuresOfTheOpeningPass)
{
    CTOVVirtualFileSystem::Instance().SetAssign("writefilestream", m_oFolder.Path().c_str());

    EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetLength())", CTOVWriteFileStream("writefilestream:", false, 0));
}

TEST_F(CTOVWriteFileStreamTest, HoldsOneFileFromItsConstructionToItsEnd)
{
    const unsigned long long hBefore = FreeSlot();
    {
        const CTOVWriteFileStream oStream(Name(), false, 0);
        EXPECT_NE(hBefore, FreeSlot());
    }

    EXPECT_EQ(hBefore, FreeSlot());
}

TEST_F(CTOVWriteFileStreamTest, IsDestroyedInSilenceBehindAClosedFile)
{
    auto pStream = std::make_unique<CTOVWriteFileStream>(Name(), false, 0);
    FileOf(*pStream).Close();

    EXPECT_NO_CHECK(pStream.reset());
}

TEST_F(CTOVWriteFileStreamTest, LeavesNothingBehindWhenItCannotBeOpened)
{
    const unsigned long long hBefore = FreeSlot();

    EXPECT_THROW(CTOVWriteFileStream(m_oFolder.Path().c_str(), false, 0), WriteFileStreamException);

    EXPECT_EQ(hBefore, FreeSlot());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST_F(CTOVWriteFileStreamTest, LeavesNothingBehindWhereverTheMemoryEnds)
{
    const unsigned long long hBefore = FreeSlot();
    CQuietRecorder oLog;
    bool bOpened = false;
    std::string sFileOfCheck;

    for (unsigned long ulSuccesses = 0; !bOpened && ulSuccesses < 1000; ++ulSuccesses)
    {
        try
        {
            CAllocationFailure oFailure(ulSuccesses);
            const CTOVWriteFileStream oStream(Name(), false, 0);
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
    EXPECT_EQ("TOVStream/TOVWriteFileStream.cpp", sFileOfCheck);
}
#endif

TEST_F(CTOVWriteFileStreamTest, HasItsDataOnDiskWhenDestroyedThroughItsVirtualDestructor)
{
    class CDerived : public CTOVWriteFileStream
    {
    public:
        explicit CDerived(const char* szFileName) : CTOVWriteFileStream(szFileName, false, 0) {}
    };
    std::unique_ptr<CTOVWriteFileStream> pStream = std::make_unique<CDerived>(Name());
    pStream->Write("text", 4);

    pStream.reset();

    EXPECT_EQ("text", Contents());
}

TEST_F(CTOVWriteFileStreamTest, SharesFileAndInnerStreamWithItsCopy)
{
    {
        CTOVWriteFileStream oStream(Name(), false, 0);
        alignas(CTOVWriteFileStream) char aCopy[sizeof(CTOVWriteFileStream)];
        CTOVWriteFileStream& oCopy = *new (aCopy) CTOVWriteFileStream(oStream); // never destroyed

        oStream.Write("a", 1);
        oCopy.Write("b", 1);

        EXPECT_EQ(2u, oStream.Tell());
        EXPECT_EQ(0x12, oCopy.GetMode());
    }
    EXPECT_EQ("ab", Contents());
}

TEST_F(CTOVWriteFileStreamTest, TakesFileAndInnerStreamOfAnotherByAssignment)
{
    {
        const CTOVWriteFileStream oSource(Name(), true, 0);
        alignas(CTOVWriteFileStream) char aTarget[sizeof(CTOVWriteFileStream)];
        CTOVWriteFileStream& oTarget =
            *new (aTarget) CTOVWriteFileStream(m_oFolder.File("other.bin").c_str(), false, 0);
        const CTOVWriteFileStream oOwnerOfWhatTheTargetHeld(oTarget);

        EXPECT_EQ(&oTarget, &(oTarget = oSource));
        oTarget.Write("ab", 2);

        EXPECT_EQ(0x14, oTarget.GetMode());
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
