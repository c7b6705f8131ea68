// Every class of the library mixed with ordinary ones: as bases and as members, in both orders. No destructor of the
// library throws, so that all of this compiles, which is half of the test. A new class takes one line in tMixable.
#include "Exports/TOVDemangled.h"
#include "Support/TOVLibraryImage.h"
#include "Support/TOVRowName.h"
#include "Support/TOVTestSupport.h"

#include <TOVKernel.h>

#include <algorithm>
#include <cctype>
#include <exception>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <typeinfo>
#include <vector>

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

// Ends a new mix through the interface.
void Live(const IDefaulted* pNew)
{
    const std::unique_ptr<const IDefaulted> pMix(pNew);
    EXPECT_EQ(IDefaulted::MARK, pMix->GetMark());
}

// What is asked of a class that can be made.
template<class T> void MixAsBaseAndMember()
{
    typedef typename sMade<T>::type tClass;

    // That these can be named as complete types is the test for the other two.
    static_assert(sizeof(sMixes<IWritten, tClass>) > 0 && sizeof(sMixes<IStandard, tClass>) > 0);

    typedef sMixes<IDefaulted, tClass> tMixes;
    Live(new typename tMixes::tClassFirst());
    Live(new typename tMixes::tClassLast());
    Live(new typename tMixes::tMember());
    Live(new typename tMixes::tMemberFirst());
    Live(new typename tMixes::tMemberLast());
    // Some of these have no virtual destructor.
    typename tMixes::tBaseOfMembers oBase;
    EXPECT_EQ(IDefaulted::MARK, oBase.m_oMember.GetMark());
}

template<class TInterface, class TClass> void MixAsBases()
{
    static_assert(std::is_nothrow_destructible_v<CBases<TClass, TInterface>>);
    static_assert(std::is_nothrow_destructible_v<CBases<TInterface, TClass>>);
    static_assert(std::is_nothrow_destructible_v<CHolderOfTwo<TClass, CTOVMutex, TInterface>>);
    EXPECT_TRUE((std::is_abstract_v<CBases<TClass, TInterface>>)) << "it can be made: it belongs into the other list";
}

// What is asked of an interface.
template<class T> void MixAsBase()
{
    MixAsBases<IDefaulted, T>();
    MixAsBases<IWritten, T>();
    MixAsBases<IStandard, T>();
}

// What is asked of a class whose destructor throws.
template<class T> void ThrowAtItsEnd()
{
    EXPECT_FALSE(std::is_nothrow_destructible_v<T>);
}

// A class of a list, with its question. Such rows compile in a third of the time of a typed suite.
struct sRow
{
    std::string szName;
    void (*pfTest)();
};

template<class T> sRow RowOf(void (*pfTest)())
{
    std::string sName = Demangle(typeid(T).name());
    std::replace_if(
        sName.begin(), sName.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return {sName, pfTest};
}

template<class... TClasses> std::vector<sRow> RowsOfMixable(sClasses<TClasses...>)
{
    return {RowOf<TClasses>(&MixAsBaseAndMember<TClasses>)...};
}

template<class... TClasses> std::vector<sRow> RowsOfInterfaces(sClasses<TClasses...>)
{
    return {RowOf<TClasses>(&MixAsBase<TClasses>)...};
}

template<class... TClasses> std::vector<sRow> RowsOfThrowing(sClasses<TClasses...>)
{
    return {RowOf<TClasses>(&ThrowAtItsEnd<TClasses>)...};
}

class TOVMixableClassTest : public testing::TestWithParam<sRow>
{
};

class TOVMixableInterfaceTest : public testing::TestWithParam<sRow>
{
};

class TOVThrowingClassTest : public testing::TestWithParam<sRow>
{
};

template<class... TClasses> void Collect(sClasses<TClasses...>, std::set<std::string>& aTables)
{
    (aTables.insert("_ZTV" + std::string(typeid(TClasses).name())), ...);
}
} // namespace

TEST_P(TOVMixableClassTest, MixesWithOrdinaryClassesAsBasesAndMembersInBothOrders)
{
    GetParam().pfTest();
}
INSTANTIATE_TEST_SUITE_P(Class, TOVMixableClassTest, testing::ValuesIn(RowsOfMixable(tMixable())), sRowName());

TEST_P(TOVMixableInterfaceTest, MixesWithOrdinaryClassesAsBasesInBothOrders)
{
    GetParam().pfTest();
}
INSTANTIATE_TEST_SUITE_P(Class, TOVMixableInterfaceTest, testing::ValuesIn(RowsOfInterfaces(tInterfaces())),
                         sRowName());

TEST_P(TOVThrowingClassTest, LetsThroughWhatAListenerThrows)
{
    GetParam().pfTest();
}
INSTANTIATE_TEST_SUITE_P(Class, TOVThrowingClassTest, testing::ValuesIn(RowsOfThrowing(tThrowing())), sRowName());

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
