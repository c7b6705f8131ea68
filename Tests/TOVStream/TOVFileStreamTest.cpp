// A stream over a file of somebody else, and the form that its sections have on disk.
#include "Support/TOVPrivateMember.h"
#include "TOVStream/TOVStreamInstruments.h"

#include <memory>
#include <type_traits>

namespace
{
typedef CTOVFileStream::FileStreamException FileStreamException;

const int READ = ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary;
const int WRITE = ITOVFile::eFileOpenWrite | ITOVFile::eFileOpenBinary;
const int UPDATE = READ | WRITE;

TOV_PRIVATE_MEMBER(FileOf, CTOVFileStream, CTOVFile*, m_pFile)
TOV_PRIVATE_MEMBER(ReservedOf, CTOVFileStream, unsigned long long, m_ullReserved)
TOV_PRIVATE_MEMBER(SizeOf, CTOVFileStream, unsigned long long, m_ullSize)
TOV_PRIVATE_MEMBER(OptionOf, CTOVFileStream, unsigned long long, m_ullOption)
TOV_PRIVATE_MEMBER(ModeOf, CTOVFileStream, int, m_nMode)
TOV_PRIVATE_MEMBER(VersionOf, CTOVFileStream, int, m_nVersion)
TOV_PRIVATE_MEMBER(StackOf, CTOVFileStream, CTOVStack<int>, m_aVersionStack)

// Where a member stands in its object.
template<class TMember> long PlaceOf(const CTOVFileStream& oStream, const TMember& oMember)
{
    return static_cast<long>(reinterpret_cast<const char*>(&oMember) - reinterpret_cast<const char*>(&oStream));
}

// A file that remembers what it was asked for, and fails.
class CSpyFile : public CTOVFile
{
public:
    unsigned long long Read(void* pBuffer, unsigned long long ullSize) override
    {
        m_aCalls.push_back("Read");
        m_pBuffer = pBuffer;
        m_ullSize = ullSize;
        return 0;
    }

    unsigned long long Write(const void* pBuffer, unsigned long long ullSize) override
    {
        m_aCalls.push_back("Write");
        m_pBuffer = pBuffer;
        m_ullSize = ullSize;
        return 0;
    }

    void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) override
    {
        m_aCalls.push_back("Seek");
        m_llOffset = llOffset;
        m_eOrigin = eOrigin;
    }

    unsigned long long Tell() const override
    {
        m_aCalls.push_back("Tell");
        return 0x123456789ABull;
    }

    unsigned long long GetSize() const override
    {
        m_aCalls.push_back("GetSize");
        return 0xCDEF01234567ull;
    }

    void Close() override
    {
        m_aCalls.push_back("Close");
        CTOVFile::Close();
    }

    mutable std::vector<std::string> m_aCalls;
    const void* m_pBuffer = nullptr;
    unsigned long long m_ullSize = 0;
    long long m_llOffset = 0;
    TOVPlatform::TOVFile::eSeekOrigin m_eOrigin = TOVPlatform::TOVFile::eSeekOriginStart;
};

// Steered by its overridden queries.
class CSteeredStream : public CTOVFileStream
{
public:
    CSteeredStream(CTOVFile* pFile, int nMode) : CTOVFileStream(pFile, nMode, 0), m_nMode(nMode) {}

    int GetMode() const override { return m_nMode; }
    int GetVersion() const override { return m_bOwnVersion ? 42 : CTOVFileStream::GetVersion(); }

    void Write(const void* pBuffer, unsigned long long ullSize) override
    {
        ++m_nWrites;
        CTOVFileStream::Write(pBuffer, ullSize);
    }

    void Read(void* pBuffer, unsigned long long ullSize) override
    {
        ++m_nReads;
        CTOVFileStream::Read(pBuffer, ullSize);
    }

    int m_nMode;
    bool m_bOwnVersion = false;
    int m_nWrites = 0;
    int m_nReads = 0;
};

class CTOVFileStreamTest : public testing::Test
{
protected:
    CTOVFileStreamTest() : m_sFile(m_oFolder.File("stream.bin")) {}

    CTOVFile* OpenForReading(const std::string& sContents)
    {
        WriteWholeFile(m_sFile, sContents);
        m_oFile.Open(m_sFile.c_str(), READ);
        return &m_oFile;
    }

    CTOVFile* OpenForWriting()
    {
        m_oFile.Open(m_sFile.c_str(), WRITE);
        return &m_oFile;
    }

    CTOVFile* OpenForBoth(const std::string& sContents)
    {
        WriteWholeFile(m_sFile, sContents);
        m_oFile.Open(m_sFile.c_str(), UPDATE);
        return &m_oFile;
    }

    std::string Written()
    {
        m_oFile.Close();
        return ReadWholeFile(m_sFile);
    }

    CTempFolder m_oFolder;
    const std::string m_sFile;
    CTOVFile m_oFile;
};
} // namespace

TEST_F(CTOVFileStreamTest, HoldsItsMembersInTheirOrder)
{
    struct sLayout
    {
        void* pVirtualOperations;
        CTOVFile* pFile;
        unsigned long long ullReserved;
        unsigned long long ullSize;
        unsigned long long ullOption;
        int nMode;
        int nVersion;
        CTOVStack<int> aVersionStack;
    };
    CSpyFile oFile;
    CTOVFileStream oStream(&oFile, MODE_BOTH, 0);

    const std::vector<long> aPlaces = {PlaceOf(oStream, FileOf(oStream)), PlaceOf(oStream, ReservedOf(oStream)),
                                       PlaceOf(oStream, SizeOf(oStream)), PlaceOf(oStream, OptionOf(oStream)),
                                       PlaceOf(oStream, ModeOf(oStream)), PlaceOf(oStream, VersionOf(oStream)),
                                       PlaceOf(oStream, StackOf(oStream))};

    EXPECT_EQ(static_cast<long>(sizeof(void*)), aPlaces.front());
    EXPECT_TRUE(std::is_sorted(aPlaces.begin(), aPlaces.end()));
    EXPECT_EQ(sizeof(sLayout), sizeof(CTOVFileStream));
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
    EXPECT_CHECK_AT("TOVStream/TOVFileStream", "pFile != NULL", CTOVFileStream(NULL, MODE_LOADING, 0));
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
        FileOf(oStream) = NULL;

        EXPECT_CHECK_AT("TOVStream/TOVFileStream", "m_pFile != NULL", oStream.Read(&cByte, 1));
        EXPECT_CHECK_AT("TOVStream/TOVFileStream", "m_pFile != NULL", oStream.Write(&cByte, 1));
        EXPECT_CHECK_AT("TOVStream/TOVFileStream", "m_pFile != NULL",
                        oStream.Seek(0, TOVPlatform::TOVFile::eSeekOriginStart));
        EXPECT_CHECK_AT("TOVStream/TOVFileStream", "m_pFile != NULL", oStream.Tell());
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

TEST_F(CTOVFileStreamTest, ReadsWhatTheFileHolds)
{
    CTOVFileStream oStream(OpenForReading("0123456789"), MODE_LOADING, 0);
    char szBuffer[5] = "....";

    oStream.Read(szBuffer, 4);
    EXPECT_STREQ("0123", szBuffer);
    oStream.Read(szBuffer, 2);
    EXPECT_STREQ("4523", szBuffer);
    EXPECT_EQ(6u, oStream.Tell());
}

TEST_F(CTOVFileStreamTest, SeeksFromEachOrigin)
{
    CTOVFileStream oStream(OpenForReading("0123456789"), MODE_LOADING, 0);

    oStream.Seek(4, TOVPlatform::TOVFile::eSeekOriginStart);
    EXPECT_EQ(4u, oStream.Tell());
    oStream.Seek(-1, TOVPlatform::TOVFile::eSeekOriginCurrent);
    EXPECT_EQ(3u, oStream.Tell());
    oStream.Seek(-2, TOVPlatform::TOVFile::eSeekOriginEnd);
    EXPECT_EQ(8u, oStream.Tell());
}

TEST_F(CTOVFileStreamTest, ReadsPastTheEndInSilence)
{
    CLogRecorder oLog;
    CTOVFileStream oStream(OpenForReading("ab"), MODE_LOADING, 0);
    char szBuffer[5] = "....";

    EXPECT_NO_CHECK(oStream.Read(szBuffer, 4));
    EXPECT_STREQ("ab..", szBuffer); // partly filled
    EXPECT_NO_CHECK(oStream.Read(szBuffer, 4));
    EXPECT_STREQ("ab..", szBuffer);
    EXPECT_TRUE(oLog.Lines().empty());
}

TEST_F(CTOVFileStreamTest, WritesToAFileThatRefusesInSilence)
{
    CLogRecorder oLog;
    CTOVFileStream oStream(OpenForReading("ab"), MODE_SAVING, 0);

    EXPECT_NO_CHECK(oStream.Write("cd", 2));

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_EQ("ab", Written());
}

TEST_F(CTOVFileStreamTest, TransfersNothingWithAFileThatWasClosed)
{
    CTOVFileStream oStream(OpenForBoth("ab"), MODE_BOTH, 0);
    char cByte = '.';
    m_oFile.Close();

    EXPECT_NO_CHECK(oStream.Read(&cByte, 1));
    EXPECT_NO_CHECK(oStream.Write(&cByte, 1));

    EXPECT_EQ('.', cByte);
    EXPECT_EQ("ab", ReadWholeFile(m_sFile));
}

TEST_F(CTOVFileStreamTest, ReadsInEveryModeThatDoesNotSaveOnly)
{
    for (const int nMode : {MODE_NONE, MODE_LOADING, MODE_BOTH, 0x301, 0x011})
    {
        CTOVFileStream oStream(OpenForReading("a"), nMode, 0);
        char cByte = '.';

        EXPECT_NO_THROW(oStream.Read(&cByte, 1));

        EXPECT_EQ('a', cByte) << nMode;
        m_oFile.Close();
    }
}

TEST_F(CTOVFileStreamTest, WritesInEveryModeThatDoesNotLoadOnly)
{
    for (const int nMode : {MODE_NONE, MODE_SAVING, MODE_BOTH, 0x302, 0x012})
    {
        CTOVFileStream oStream(OpenForWriting(), nMode, 0);

        EXPECT_NO_THROW(oStream.Write("a", 1));

        EXPECT_EQ("a", Written()) << nMode;
    }
}

TEST_F(CTOVFileStreamTest, RefusesToReadWhileSavingOnly)
{
    for (const int nMode : {MODE_SAVING, 0x202, 0x012})
    {
        CSpyFile oFile;
        CTOVFileStream oStream(&oFile, nMode, 0);
        char cByte = '.';

        EXPECT_STREAM_EXCEPTION(FileStreamException, 4, oStream.Read(&cByte, 1));
        EXPECT_STREAM_EXCEPTION(FileStreamException, 4, oStream.Read(NULL, 0));
        EXPECT_EQ(1u, oFile.m_aCalls.size()) << "more than GetSize";
    }
}

TEST_F(CTOVFileStreamTest, RefusesToWriteWhileLoadingOnly)
{
    for (const int nMode : {MODE_LOADING, 0x201, 0x011})
    {
        CSpyFile oFile;
        CTOVFileStream oStream(&oFile, nMode, 0);

        EXPECT_STREAM_EXCEPTION(FileStreamException, 5, oStream.Write("a", 1));
        EXPECT_STREAM_EXCEPTION(FileStreamException, 5, oStream.Write(NULL, 0));
        EXPECT_EQ(1u, oFile.m_aCalls.size()) << "more than GetSize";
    }
}

TEST_F(CTOVFileStreamTest, TakesItsDirectionFromTheOverriddenModeWord)
{
    CSpyFile oFile;
    CSteeredStream oStream(&oFile, MODE_BOTH);
    char cByte = '.';

    oStream.m_nMode = MODE_SAVING;
    EXPECT_STREAM_EXCEPTION(FileStreamException, 4, oStream.Read(&cByte, 1));
    oStream.m_nMode = MODE_LOADING;
    EXPECT_STREAM_EXCEPTION(FileStreamException, 5, oStream.Write(&cByte, 1));
}

TEST_F(CTOVFileStreamTest, LaysASectionOutAsItsVersionAndThePayload)
{
    CTOVFileStream oStream(OpenForWriting(), MODE_SAVING, 0);

    oStream.SerializeBegin(3);
    oStream.Write("abcdef", 6);
    oStream.SerializeEnd();

    EXPECT_EQ(Bytes({3, 0, 0, 0}) + "abcdef", Written());
}

TEST_F(CTOVFileStreamTest, TakesFourBytesForASectionWithoutPayload)
{
    CTOVFileStream oStream(OpenForWriting(), MODE_SAVING, 0);

    oStream.SerializeBegin(5);
    oStream.SerializeEnd();

    EXPECT_EQ(Bytes({5, 0, 0, 0}), Written());
}

TEST_F(CTOVFileStreamTest, WritesEveryVersionButMinusOneInFourBytes)
{
    CTOVFileStream oStream(OpenForWriting(), MODE_SAVING, 0);

    oStream.SerializeBegin(0x01020304);
    oStream.SerializeBegin(-2);
    oStream.SerializeBegin(0);

    EXPECT_EQ(Bytes({4, 3, 2, 1, 0xFE, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0}), Written());
}

TEST_F(CTOVFileStreamTest, MixesValuesAndBytesWithoutAnythingBetweenThem)
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

TEST_F(CTOVFileStreamTest, KeepsNoVersionWhileStoring)
{
    CTOVFileStream oStream(OpenForWriting(), MODE_SAVING, 0);
    EXPECT_EQ(-1, oStream.GetVersion());

    oStream.SerializeBegin(3);
    EXPECT_EQ(-1, oStream.GetVersion());
    oStream.SerializeEnd();
    EXPECT_EQ(-1, oStream.GetVersion());
    EXPECT_EQ(4u, oStream.Tell());
}

TEST_F(CTOVFileStreamTest, BringsTheVersionsOfNestedSectionsBack)
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

TEST_F(CTOVFileStreamTest, BringsTheVersionsOfManySectionsBack)
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

TEST_F(CTOVFileStreamTest, ReadsSectionsOneBehindTheOther)
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

TEST_F(CTOVFileStreamTest, GoesToNoVersionForASurplusEnd)
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

TEST_F(CTOVFileStreamTest, RefusesNoVersionWhileStoring)
{
    for (const int nMode : {MODE_SAVING, MODE_BOTH, 0x102})
    {
        CTOVFileStream oStream(OpenForWriting(), nMode, 0);

        EXPECT_CHECK_AT("TOVStream/TOVFileStream", "nDataFormatVersion != -1", oStream.SerializeBegin(-1));

        EXPECT_EQ("", Written());
    }
}

TEST_F(CTOVFileStreamTest, RefusesAVersionWhileNotStoring)
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

TEST_F(CTOVFileStreamTest, ReadsSectionsInAModeOfNeitherDirection)
{
    CTOVFileStream oStream(OpenForReading(Bytes({7, 0, 0, 0})), MODE_NONE, 0);

    oStream.SerializeBegin(-1);
    EXPECT_EQ(7, oStream.GetVersion());
    oStream.SerializeEnd();
    EXPECT_EQ(-1, oStream.GetVersion());
}

TEST_F(CTOVFileStreamTest, WritesSectionsInAModeOfBothDirections)
{
    CTOVFileStream oStream(OpenForWriting(), MODE_BOTH, 0);

    oStream.SerializeBegin(7);
    EXPECT_EQ(-1, oStream.GetVersion());
    oStream.SerializeEnd();

    EXPECT_EQ(Bytes({7, 0, 0, 0}), Written());
}

TEST_F(CTOVFileStreamTest, KeepsTheEnclosingVersionWhereTheFileEnds)
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

TEST_F(CTOVFileStreamTest, HasNoVersionInASectionOfAnEmptyFile)
{
    CTOVFileStream oReader(OpenForReading(""), MODE_LOADING, 0);

    EXPECT_NO_CHECK(oReader.SerializeBegin(-1));

    EXPECT_EQ(-1, oReader.GetVersion());
}

TEST_F(CTOVFileStreamTest, LeavesTheVersionAsAPartialReadMadeIt)
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

TEST_F(CTOVFileStreamTest, LeavesNoVersionAsAPartialReadMadeIt)
{
    CTOVFileStream oReader(OpenForReading(Bytes({1, 2})), MODE_LOADING, 0);

    oReader.SerializeBegin(-1);

    EXPECT_EQ(static_cast<int>(0xFFFF0201u), oReader.GetVersion());
    oReader.SerializeEnd();
    EXPECT_EQ(-1, oReader.GetVersion());
}

TEST_F(CTOVFileStreamTest, WritesTheVersionAsTextInTheAsciiFormat)
{
    CTOVFileStream oStream(OpenForWriting(), 0x102, 0);

    oStream.SerializeBegin(12);
    oStream.Write("payload", 7);
    oStream << -34;
    oStream.SerializeEnd();

    EXPECT_EQ("12payload-34", Written());
}

TEST_F(CTOVFileStreamTest, RefusesToReadASectionInTheAsciiFormat)
{
    CTOVFileStream oReader(OpenForReading("12payload"), 0x101, 0);

    EXPECT_CHECK_AT("TOVStream/TOVStreamTraits", "false", oReader.SerializeBegin(-1));

    EXPECT_EQ(-1, oReader.GetVersion());
    EXPECT_EQ(0u, oReader.Tell());
}

TEST_F(CTOVFileStreamTest, RollsNothingBackWhenASectionCannotBeRead)
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

TEST_F(CTOVFileStreamTest, WritesTheVersionSilentlyInTheSecondBinaryFormat)
{
    CLogRecorder oLog;
    CTOVFileStream oStream(OpenForWriting(), 0x202, 0);

    oStream.SerializeBegin(12);

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_EQ(Bytes({12, 0, 0, 0}), Written());
}

TEST_F(CTOVFileStreamTest, WritesTheVersionInBinaryBehindALogLineInAnUnknownFormat)
{
    CLogRecorder oLog;
    CTOVFileStream oStream(OpenForWriting(), 0x402, 0);

    oStream.SerializeBegin(12);

    ASSERT_EQ(1u, oLog.Lines().size());
    EXPECT_EQ("operator <<: Unknown stream format '1024'. Using binary format.", oLog.Lines()[0].sText);
    EXPECT_EQ("TOVStream/TOVStream.h", oLog.Lines()[0].sFile);
    EXPECT_EQ(Bytes({12, 0, 0, 0}), Written());
}

TEST_F(CTOVFileStreamTest, TransfersTheVersionThroughTheVirtualOperations)
{
    CSteeredStream oWriter(OpenForWriting(), MODE_SAVING);
    oWriter.SerializeBegin(3);
    m_oFile.Close();
    CSteeredStream oReader(OpenForReading(Bytes({3, 0, 0, 0})), MODE_LOADING);
    oReader.SerializeBegin(-1);

    EXPECT_EQ(1, oWriter.m_nWrites);
    EXPECT_EQ(1, oReader.m_nReads);
}

TEST_F(CTOVFileStreamTest, StacksWhatGetVersionTells)
{
    CSteeredStream oReader(OpenForReading(Bytes({3, 0, 0, 0})), MODE_LOADING);

    oReader.m_bOwnVersion = true;
    oReader.SerializeBegin(-1);
    oReader.m_bOwnVersion = false;
    oReader.SerializeEnd();

    EXPECT_EQ(42, oReader.GetVersion());
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
