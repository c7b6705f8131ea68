// What the stream that reads a file and the one that writes it have alike: both open the file by its name.
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVLayout.h"
#include "Support/TOVPrivateMember.h"
#include "TOVStream/TOVFileStreamInstruments.h"

#include <File/TOVVirtualFileSystem.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <memory>
#include <new>
#include <type_traits>

namespace
{
TOV_PRIVATE_MEMBER(FileOfReader, CTOVReadFileStream, CTOVFile, m_oFile)
TOV_PRIVATE_MEMBER(InnerOfReader, CTOVReadFileStream, CTOVFileStream*, m_pStream)
TOV_PRIVATE_MEMBER(ModeOfReader, CTOVReadFileStream, int, m_nMode)
TOV_PRIVATE_MEMBER(FileOfWriter, CTOVWriteFileStream, CTOVFile, m_oFile)
TOV_PRIVATE_MEMBER(InnerOfWriter, CTOVWriteFileStream, CTOVFileStream*, m_pStream)
TOV_PRIVATE_MEMBER(ModeOfWriter, CTOVWriteFileStream, int, m_nMode)
TOV_PRIVATE_MEMBER(InnerFileOf, CTOVFileStream, CTOVFile*, m_pFile)
TOV_PRIVATE_MEMBER(InnerOptionOf, CTOVFileStream, unsigned long long, m_ullOption)

class CReading : public CTOVReadFileStream
{
public:
    typedef CTOVReadFileStream tClass;
    typedef ReadFileStreamException tException;

    explicit CReading(const char* szFileName, unsigned long long ullOption = 0)
        : CTOVReadFileStream(szFileName, ullOption)
    {
    }
    ~CReading() override { ++s_nEnds; }

    CTOVFile& File() { return FileOfReader(*this); }
    CTOVFileStream*& Inner() { return InnerOfReader(*this); }
    int& Mode() { return ModeOfReader(*this); }

    static inline int s_nEnds = 0;
    static constexpr const char* Source() { return "TOVStream/TOVReadFileStream.cpp"; }
    static constexpr int INNER_MODE = MODE_LOADING;
    static inline const std::vector<int> OTHER_MODES = {MODE_SAVING};
};

template<bool bAppend> class CWriting : public CTOVWriteFileStream
{
public:
    typedef CTOVWriteFileStream tClass;
    typedef WriteFileStreamException tException;

    explicit CWriting(const char* szFileName, unsigned long long ullOption = 0)
        : CTOVWriteFileStream(szFileName, bAppend, ullOption)
    {
    }
    ~CWriting() override { ++s_nEnds; }

    CTOVFile& File() { return FileOfWriter(*this); }
    CTOVFileStream*& Inner() { return InnerOfWriter(*this); }
    int& Mode() { return ModeOfWriter(*this); }

    static inline int s_nEnds = 0;
    static constexpr const char* Source() { return "TOVStream/TOVWriteFileStream.cpp"; }
    static constexpr int INNER_MODE = MODE_SAVING;
    static inline const std::vector<int> OTHER_MODES = {MODE_LOADING, MODE_NONE};
};

struct sNamesOfStreams
{
    template<class T> static std::string GetName(int)
    {
        return std::is_same_v<T, CReading> ? "Reading" : std::is_same_v<T, CWriting<false>> ? "Writing" : "Appending";
    }
};

template<class T> class TOVNamedFileStreamTest : public testing::Test
{
protected:
    TOVNamedFileStreamTest() : m_sFile(m_oFolder.File("stream.bin")) { WriteWholeFile(m_sFile, "ab"); }

    const char* Name() const { return m_sFile.c_str(); }

    const CTempFolder m_oFolder;
    const std::string m_sFile;
};
typedef testing::Types<CReading, CWriting<false>, CWriting<true>> tNamedStreams;
TYPED_TEST_SUITE(TOVNamedFileStreamTest, tNamedStreams, sNamesOfStreams);
} // namespace

TYPED_TEST(TOVNamedFileStreamTest, IsAStreamOfItsOwnThatHoldsAnother)
{
    typedef typename TypeParam::tClass tClass;
    TypeParam oStream(this->Name());

    EXPECT_TRUE((std::is_base_of_v<ITOVStream, tClass>));
    EXPECT_FALSE((std::is_base_of_v<CTOVFileStream, tClass>));
    EXPECT_TRUE(std::has_virtual_destructor_v<tClass>);
    ExpectMembersInOrder(static_cast<const tClass&>(oStream), oStream.File(), oStream.Inner(), oStream.Mode());
}

TYPED_TEST(TOVNamedFileStreamTest, GivesItsInnerStreamFileModeAndOption)
{
    TypeParam oStream(this->Name(), 0x1122334455667788ull);
    CTOVFileStream& oInner = *oStream.Inner();

    EXPECT_EQ(&oStream.File(), InnerFileOf(oInner));
    EXPECT_EQ(TypeParam::INNER_MODE, oInner.GetMode());
    EXPECT_EQ(oStream.File().GetSize(), oInner.GetSize());
    EXPECT_EQ(0x1122334455667788ull, InnerOptionOf(oInner));
}

TYPED_TEST(TOVNamedFileStreamTest, RefusesSectionsIfItsInnerStreamGoesAnotherWay)
{
    TypeParam oStream(this->Name());
    CTOVFileStream* const pBefore = oStream.Inner();

    for (const int nMode : TypeParam::OTHER_MODES)
    {
        CSpyFile oFile;
        CTOVFileStream oInner(&oFile, nMode, 0);
        oStream.Inner() = &oInner;

        EXPECT_STREAM_EXCEPTION(typename TypeParam::tException, 4, oStream.SerializeBegin(-1));
        EXPECT_STREAM_EXCEPTION(typename TypeParam::tException, 4, oStream.SerializeBegin(3));
        EXPECT_STREAM_EXCEPTION(typename TypeParam::tException, 4, oStream.SerializeEnd());
        EXPECT_EQ((std::vector<std::string>{"GetSize"}), oFile.m_aCalls) << "nothing but what a stream asks at first";
    }
    oStream.Inner() = pBefore;
}

TYPED_TEST(TOVNamedFileStreamTest, CannotBeOpenedInAMissingFolder)
{
    const unsigned long long hBefore = FreeSlot();
    const std::string sFile = this->m_oFolder.File("missing") + "/file";
    CLogRecorder oLog;

    EXPECT_STREAM_EXCEPTION(typename TypeParam::tException, 0, TypeParam(sFile.c_str()));

    ASSERT_EQ(1u, oLog.Lines().size());
    EXPECT_EQ("CTOVFile::Open() : Enhance the exception throwing. Should be more detailed, what exactly failed.",
              oLog.Lines()[0].sText);
    EXPECT_EQ(eSeverityTrace, oLog.Lines()[0].eSeverity);
    EXPECT_NE(std::string::npos, oLog.Lines()[0].sFile.find("TOVFile"));
    EXPECT_TRUE(oLog.Checks().empty());
    EXPECT_EQ(hBefore, FreeSlot());
}

TYPED_TEST(TOVNamedFileStreamTest, LetsOtherFailuresOfTheOpeningPass)
{
    CTOVVirtualFileSystem::Instance().SetAssign("namedstream", this->m_oFolder.Path().c_str());

    EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetLength())", TypeParam("namedstream:"));
}

TYPED_TEST(TOVNamedFileStreamTest, HoldsOneFileUntilItIsDestroyedThroughItsVirtualDestructor)
{
    const unsigned long long hBefore = FreeSlot();
    const int nEndsBefore = TypeParam::s_nEnds;
    std::unique_ptr<typename TypeParam::tClass> pStream = std::make_unique<TypeParam>(this->Name());
    EXPECT_NE(hBefore, FreeSlot());

    pStream.reset();

    EXPECT_EQ(nEndsBefore + 1, TypeParam::s_nEnds);
    EXPECT_EQ(hBefore, FreeSlot());
}

TYPED_TEST(TOVNamedFileStreamTest, IsDestroyedInSilenceAfterItsFileWasClosed)
{
    auto pStream = std::make_unique<TypeParam>(this->Name());
    pStream->File().Close();

    EXPECT_NO_CHECK(pStream.reset());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TYPED_TEST(TOVNamedFileStreamTest, LeavesNothingBehindWhereverTheMemoryEnds)
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
            const TypeParam oStream(this->Name());
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
    EXPECT_EQ(TypeParam::Source(), sFileOfCheck);
}
#endif
