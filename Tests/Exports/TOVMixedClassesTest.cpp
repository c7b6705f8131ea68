// Every class of the library mixed with ordinary ones: as bases and as members, in both orders. No destructor of the
// library throws, so that all of this compiles, which is half of the test. A new class takes one line in tMixable.
#include "Support/TOVLibraryImage.h"
#include "Support/TOVTestSupport.h"

#include <TOVKernel.h>

#include <exception>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <typeinfo>

namespace
{
// Ordinary classes: an interface whose destructor the compiler writes, one whose destructor somebody wrote, and one of
// the standard library.
class IDefaulted
{
public:
    virtual ~IDefaulted() = default;
    virtual int GetMark() const { return MARK; }

    static constexpr int MARK = 42;
};

class IWritten
{
public:
    virtual ~IWritten() {}
};

class IStandard : public std::runtime_error
{
public:
    IStandard() : std::runtime_error("standard") {}
};

// Where a base's assignment is a virtual operation, the using-declarations keep it in sight.
template<class TFirst, class TSecond> class CBases : public TFirst, public TSecond
{
public:
    using TFirst::operator=;
    using TSecond::operator=;
};

// The base brings the virtual destructor.
template<class TBase, class TMember> class CHolder : public TBase
{
public:
    using TBase::operator=;

    TMember m_oMember;
};

template<class TBase, class TFirst, class TSecond> class CHolderOfTwo : public TBase
{
public:
    using TBase::operator=;

    TFirst m_oFirst;
    TSecond m_oSecond;
};

// The class in whose place another is made: one that has arguments of its own, or supplies what the class leaves open.
template<class T> struct sMade
{
    typedef T type;
};

template<class T> class CWithNumber : public T
{
public:
    CWithNumber() : T(1) {}
};

class CSystemException : public CTOVException
{
public:
    CSystemException() : CTOVException(eClassSystem, 1) {}
};

class CCondition : public CTOVEventCondition
{
public:
    CCondition() : CTOVEventCondition(eConditionTypeAny, &Event(), 1) {}

private:
    static CTOVEvent& Event()
    {
        static CTOVEvent s_oEvent;
        return s_oEvent;
    }
};

class CMemento : public ITOVMemento
{
};

class CWorker : public CTOVThread
{
public:
    unsigned long Run() override { return 0; }
};

// Streams over a file that is closed, and over one that is in a folder of their own.
class CClosedFileStream : public CTOVFileStream
{
public:
    CClosedFileStream() : CTOVFileStream(&File(), eStreamModeSaving) {}

private:
    static CTOVFile& File()
    {
        static CTempFolder s_oFolder;
        static CTOVFile s_oFile;
        if (!s_oFile.IsOpen())
            s_oFile.Open(s_oFolder.File("mixed").c_str(), ITOVFile::eFileOpenBinary | ITOVFile::eFileOpenWrite);
        return s_oFile;
    }
};

class CWriter : public CTOVWriteFileStream
{
public:
    CWriter() : CTOVWriteFileStream(Folder().File("mixed").c_str()) {}

    static CTempFolder& Folder()
    {
        static CTempFolder s_oFolder;
        return s_oFolder;
    }
};

class CReader : public CTOVReadFileStream
{
public:
    CReader() : CTOVReadFileStream(WrittenFile().c_str()) {}

private:
    static std::string WrittenFile()
    {
        const std::string sFile = CWriter::Folder().File("read");
        WriteWholeFile(sFile, "x");
        return sFile;
    }
};

typedef TOVPlatform::TOVFile::CTOVHandleManager tHandleManager;

template<> struct sMade<CTOVEventCondition> : sMade<CCondition>
{
};
template<> struct sMade<CTOVException> : sMade<CSystemException>
{
};
template<> struct sMade<CTOVFile::FileException> : sMade<CWithNumber<CTOVFile::FileException>>
{
};
template<> struct sMade<CTOVFileStream> : sMade<CClosedFileStream>
{
};
template<> struct sMade<CTOVFileStream::FileStreamException> : sMade<CWithNumber<CTOVFileStream::FileStreamException>>
{
};
template<> struct sMade<CTOVReadFileStream> : sMade<CReader>
{
};
template<>
struct sMade<CTOVReadFileStream::ReadFileStreamException>
    : sMade<CWithNumber<CTOVReadFileStream::ReadFileStreamException>>
{
};
template<> struct sMade<CTOVThread> : sMade<CWorker>
{
};
template<> struct sMade<CTOVVirtualFileSystem::Exception> : sMade<CWithNumber<CTOVVirtualFileSystem::Exception>>
{
};
template<> struct sMade<CTOVWriteFileStream> : sMade<CWriter>
{
};
template<>
struct sMade<CTOVWriteFileStream::WriteFileStreamException>
    : sMade<CWithNumber<CTOVWriteFileStream::WriteFileStreamException>>
{
};
template<> struct sMade<ITOVFile::Exception> : sMade<CWithNumber<ITOVFile::Exception>>
{
};
template<> struct sMade<ITOVMemento> : sMade<CMemento>
{
};
template<> struct sMade<ITOVStream::StreamException> : sMade<CWithNumber<ITOVStream::StreamException>>
{
};
template<> struct sMade<tHandleManager> : sMade<CWithNumber<tHandleManager>>
{
};
template<> struct sMade<TOVTest::CTOVTestText> : sMade<CWithNumber<TOVTest::CTOVTestText>>
{
};

template<class... TClasses> struct sClasses
{
    typedef testing::Types<TClasses...> tTests;
};

// The classes that can be made.
typedef sClasses<
    CTOVArray<CTOVPath>, CTOVArray<CTOVStringA>, CTOVArray<CTOVStringW>, CTOVArray<int>, CTOVBitArray, CTOVBuffer<char>,
    CTOVBuffer<tByte>, CTOVBuffer<wchar_t>, CTOVCriticalSection, CTOVDynamicSingleton<CTOVClassServer>,
    CTOVDynamicSingleton<CTOVPath>, CTOVDynamicSingleton<CTOVStringA>, CTOVDynamicSingleton<CTOVStringW>,
    CTOVDynamicSingleton<CTOVTimer>, CTOVDynamicSingleton<CTOVVirtualFileSystem>, CTOVDynamicSingleton<tHandleManager>,
    CTOVEvent, CTOVEventCondition, CTOVException, CTOVFile, CTOVFile::FileException, CTOVFileScanner, CTOVFileStream,
    CTOVFileStream::FileStreamException, CTOVFourCC, CTOVHandle, CTOVMemoryException, CTOVMutex, CTOVPath,
    CTOVQueue<int>, CTOVReadFileStream, CTOVReadFileStream::ReadFileStreamException, CTOVRefCount,
    CTOVRefCountObject<char>, CTOVRefCountObject<tByte>, CTOVRefCountObject<wchar_t>, CTOVRingBuffer<int>,
    CTOVSafeQueue<CTOVStringA>, CTOVSemaphore, CTOVSmartPointer<CTOVMutex>, CTOVStack<int>, CTOVStringA, CTOVStringW,
    CTOVThread, CTOVTimer, CTOVVirtualFileSystem, CTOVVirtualFileSystem::Exception, CTOVWriteFileStream,
    CTOVWriteFileStream::WriteFileStreamException, ITOVFile::Exception, ITOVMemento, ITOVStream::StreamException,
    TOVDebug::CTOVAssertException, TOVTest::CTOVCountingTracker, TOVTest::CTOVSimpleTestRunner, TOVTest::CTOVTestCase,
    TOVTest::CTOVTestDynamicSingleton<TOVTest::tCreatorMap>, TOVTest::CTOVTestListener, TOVTest::CTOVTestRouter,
    TOVTest::CTOVTestSuite, TOVTest::CTOVTestText, TOVTest::CTOVTestTracker, tHandleManager>
    tMixable;

// The interfaces, whose operations others supply: bases only.
typedef sClasses<ISorter<int (*)(const int&, const int&)>, ITOVFile, ITOVHandleDatabase, ITOVMementoCreator,
                 ITOVRefCount, ITOVResourceLoader, ITOVStream, ITOVVirtualFileSystem, TOVDebug::ITOVLogListener,
                 TOVTest::ITOVTestSuiteCreator>
    tInterfaces;

// Nobody derives from these or has them as members: what a listener throws at their end goes straight through.
typedef sClasses<CTOVClass, CTOVClassServer, TOVDebug::CTOVDebugServer, TOVDebug::CTOVMSDevLogger> tThrowing;

// The class as a base, and as a member beside another; in both orders.
template<class TInterface, class TClass> struct sMixes
{
    typedef CBases<TClass, TInterface> tClassFirst;
    typedef CBases<TInterface, TClass> tClassLast;
    typedef CHolder<TInterface, TClass> tMember;
    typedef CHolderOfTwo<TInterface, TClass, TInterface> tMemberFirst;
    typedef CHolderOfTwo<TInterface, TInterface, TClass> tMemberLast;
    // The class as the base, the interface, a lock and a shared pointer as members.
    typedef CHolder<CHolderOfTwo<TClass, CTOVMutex, CTOVSmartPointer<int>>, TInterface> tBaseOfMembers;

    static_assert(std::is_nothrow_destructible_v<tClassFirst> && std::has_virtual_destructor_v<tClassFirst>);
    static_assert(std::is_nothrow_destructible_v<tClassLast> && std::has_virtual_destructor_v<tClassLast>);
    static_assert(std::is_nothrow_destructible_v<tMember> && std::has_virtual_destructor_v<tMember>);
    static_assert(std::is_nothrow_destructible_v<tMemberFirst> && std::has_virtual_destructor_v<tMemberFirst>);
    static_assert(std::is_nothrow_destructible_v<tMemberLast> && std::has_virtual_destructor_v<tMemberLast>);
    static_assert(std::is_nothrow_destructible_v<tBaseOfMembers>);
};

// Makes one, and ends it through the interface.
template<class TMix> void Live()
{
    const std::unique_ptr<const IDefaulted> pMix = std::make_unique<const TMix>();
    EXPECT_EQ(IDefaulted::MARK, pMix->GetMark());
}

template<class TInterface, class TClass> void MixAsBases()
{
    static_assert(std::is_nothrow_destructible_v<CBases<TClass, TInterface>>);
    static_assert(std::is_nothrow_destructible_v<CBases<TInterface, TClass>>);
    static_assert(std::is_nothrow_destructible_v<CHolderOfTwo<TClass, CTOVMutex, TInterface>>);
    EXPECT_TRUE((std::is_abstract_v<CBases<TClass, TInterface>>)) << "it can be made: it belongs into the other list";
}

template<class T> class TOVMixableClassTest : public testing::Test
{
};
TYPED_TEST_SUITE(TOVMixableClassTest, tMixable::tTests);

template<class T> class TOVMixableInterfaceTest : public testing::Test
{
};
TYPED_TEST_SUITE(TOVMixableInterfaceTest, tInterfaces::tTests);

template<class T> class TOVThrowingClassTest : public testing::Test
{
};
TYPED_TEST_SUITE(TOVThrowingClassTest, tThrowing::tTests);

template<class... TClasses> void Collect(sClasses<TClasses...>, std::set<std::string>& aTables)
{
    (aTables.insert("_ZTV" + std::string(typeid(TClasses).name())), ...);
}
} // namespace

TYPED_TEST(TOVMixableClassTest, MixesWithOrdinaryClassesAsBasesAndMembersInBothOrders)
{
    typedef typename sMade<TypeParam>::type tClass;

    // That these can be named as complete types is the test for the other two.
    static_assert(sizeof(sMixes<IWritten, tClass>) > 0 && sizeof(sMixes<IStandard, tClass>) > 0);

    typedef sMixes<IDefaulted, tClass> tMixes;
    Live<typename tMixes::tClassFirst>();
    Live<typename tMixes::tClassLast>();
    Live<typename tMixes::tMember>();
    Live<typename tMixes::tMemberFirst>();
    Live<typename tMixes::tMemberLast>();
    const auto pBase = std::make_unique<const typename tMixes::tBaseOfMembers>();
    EXPECT_EQ(IDefaulted::MARK, pBase->m_oMember.GetMark());
}

TYPED_TEST(TOVMixableInterfaceTest, MixesWithOrdinaryClassesAsBasesInBothOrders)
{
    MixAsBases<IDefaulted, TypeParam>();
    MixAsBases<IWritten, TypeParam>();
    MixAsBases<IStandard, TypeParam>();
}

TYPED_TEST(TOVThrowingClassTest, LetsThroughWhatAListenerThrows)
{
    EXPECT_FALSE(std::is_nothrow_destructible_v<TypeParam>);
}

TEST(TOVMixedClassesTest, ListsEveryExportedClassThatHasVirtualOperations)
{
    std::set<std::string> aTables;
    Collect(tMixable(), aTables);
    Collect(tInterfaces(), aTables);
    Collect(tThrowing(), aTables);

    std::size_t nExported = 0;
    for (const std::string& sName : ExportedNames(eModuleLibrary))
    {
        // A build that is not optimised exports some of the standard library as well.
        if (sName.compare(0, 4, "_ZTV") != 0 || sName.compare(0, 6, "_ZTVSt") == 0)
            continue;
        ++nExported;
        EXPECT_EQ(1u, aTables.count(sName)) << sName;
    }
    EXPECT_LT(50u, nExported);
}

// Several of the library's classes at once, with an interface between them.
TEST(TOVMixedClassesTest, AThreadIsCountedAndHoldsLocksAndPointers)
{
    class CJob : public CTOVRefCount, public IDefaulted, public CTOVThread
    {
    public:
        explicit CJob(const CTOVSmartPointer<int>& pResult) : m_pResult(pResult) {}
        unsigned long Run() override { return 0; }

    private:
        CTOVMutex m_oMutex;
        CTOVSmartPointer<int> m_pResult;
        CTOVCriticalSection m_oSection;
    };
    const CTOVSmartPointer<int> pResult(new int(7));
    CJob* const pJob = new CJob(pResult);
    ASSERT_EQ(2, pResult.GetRefCount());

    EXPECT_EQ(0, pJob->Release());

    EXPECT_EQ(1, pResult.GetRefCount());
}
