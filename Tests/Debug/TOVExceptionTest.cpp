#include "Support/TOVAllocationCounter.h"
#include "Support/TOVTestSupport.h"

#include <Debug/TOVException.h>
#include <File/TOVFile.h>
#include <File/TOVFileInterface.h>
#include <File/TOVVirtualFileSystem.h>
#include <TOVStream/TOVFileStream.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVStream.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <cstring>
#include <exception>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace
{
// The class and direct base of each exception that is made from a 16-bit code.
template<class TException, class TBase, CTOVException::eErrorClass eClass> struct sFamilyMember
{
    typedef TException tException;
    typedef TBase tBase;
    static constexpr CTOVException::eErrorClass ERROR_CLASS = eClass;
};

template<class T> class TOVExceptionFamilyTest : public testing::Test
{
};

typedef testing::Types<
    sFamilyMember<CTOVMemoryException, CTOVException, CTOVException::eClassSystem>,
    sFamilyMember<ITOVStream::StreamException, CTOVException, CTOVException::eClassStream>,
    sFamilyMember<ITOVFile::Exception, CTOVException, CTOVException::eClassFile>,
    sFamilyMember<CTOVFile::FileException, ITOVFile::Exception, CTOVException::eClassFile>,
    sFamilyMember<CTOVVirtualFileSystem::Exception, CTOVException, CTOVException::eClassFile>,
    sFamilyMember<CTOVFileStream::FileStreamException, CTOVException, CTOVException::eClassStream>,
    sFamilyMember<CTOVWriteFileStream::WriteFileStreamException, CTOVException, CTOVException::eClassStream>,
    sFamilyMember<CTOVReadFileStream::ReadFileStreamException, CTOVException, CTOVException::eClassStream>>
    tFamily;
TYPED_TEST_SUITE(TOVExceptionFamilyTest, tFamily, );

// Whether GetClass and GetCode can be called on a const object.
template<class T, class = void> struct sHasConstGetClass : std::false_type
{
};
template<class T>
struct sHasConstGetClass<T, std::void_t<decltype(std::declval<const T&>().GetClass())>> : std::true_type
{
};
template<class T, class = void> struct sHasConstGetCode : std::false_type
{
};
template<class T> struct sHasConstGetCode<T, std::void_t<decltype(std::declval<const T&>().GetCode())>> : std::true_type
{
};

// An application's own exception, which answers for itself.
class CAnsweringException : public CTOVException
{
public:
    CAnsweringException() : CTOVException(eClassFile, 1) {}

    eErrorClass GetClass() override { return eClassStream; }

    unsigned long GetCode() const override { return 99; }
};
} // namespace

TEST(CTOVExceptionTest, NumbersItsErrorClasses)
{
    EXPECT_EQ(1, static_cast<int>(CTOVException::eClassSystem));
    EXPECT_EQ(5, static_cast<int>(CTOVException::eClassFile));
    EXPECT_EQ(10, static_cast<int>(CTOVException::eClassStream));
    EXPECT_EQ(4u, sizeof(CTOVException::eErrorClass));
}

TEST(CTOVExceptionTest, StoresClassAndCode)
{
    CTOVException oException(CTOVException::eClassFile, 0x12345678);

    EXPECT_EQ(CTOVException::eClassFile, oException.GetClass());
    EXPECT_EQ(0x12345678ul, oException.GetCode());
}

TEST(CTOVExceptionTest, HoldsTheClassInFrontOfTheCode)
{
    const CTOVException oException(CTOVException::eClassStream, 0x1234);
    struct sLayout
    {
        const void* pVirtualTable;
        CTOVException::eErrorClass eErrorClass;
        unsigned long ulErrorCode;
    } oLayout;
    ASSERT_EQ(sizeof(oLayout), sizeof(oException));

    std::memcpy(static_cast<void*>(&oLayout), static_cast<const void*>(&oException), sizeof(oLayout));

    EXPECT_EQ(CTOVException::eClassStream, oLayout.eErrorClass);
    EXPECT_EQ(0x1234ul, oLayout.ulErrorCode);
}

TEST(CTOVExceptionTest, TakesACodeOf32Bits)
{
    EXPECT_EQ(0xFFFFFFFFul, CTOVException(CTOVException::eClassSystem, 0xFFFFFFFFul).GetCode());
}

TEST(CTOVExceptionTest, HasOneConstAndOneNonConstQuery)
{
    EXPECT_FALSE(sHasConstGetClass<CTOVException>::value);
    EXPECT_TRUE(sHasConstGetCode<CTOVException>::value);
}

TEST(CTOVExceptionTest, AsksTheDynamicTypeForClassAndCode)
{
    CAnsweringException oException;
    CTOVException& oBase = oException;

    EXPECT_EQ(CTOVException::eClassStream, oBase.GetClass());
    EXPECT_EQ(99ul, oBase.GetCode());
}

TEST(CTOVExceptionTest, HasNoVirtualDestructorAndNoForeignBase)
{
    EXPECT_TRUE(std::is_polymorphic_v<CTOVException>);
    EXPECT_FALSE(std::has_virtual_destructor_v<CTOVException>);
    EXPECT_FALSE((std::is_base_of_v<std::exception, CTOVException>));
}

TEST(CTOVExceptionTest, CopiesClassAndCode)
{
    const CTOVException oSource(CTOVException::eClassStream, 77);
    CTOVException oCopy(oSource);

    EXPECT_EQ(CTOVException::eClassStream, oCopy.GetClass());
    EXPECT_EQ(77ul, oCopy.GetCode());
}

TEST(CTOVExceptionTest, AssignsAndReturnsItself)
{
    const CTOVException oSource(CTOVException::eClassStream, 77);
    CTOVException oTarget(CTOVException::eClassSystem, 1);

    EXPECT_EQ(&oTarget, &(oTarget = oSource));
    EXPECT_EQ(CTOVException::eClassStream, oTarget.GetClass());
    EXPECT_EQ(77ul, oTarget.GetCode());
}

TEST(CTOVExceptionTest, AssignsNoVirtualAnswersWithTheNumbers)
{
    CTOVException oTarget(CTOVException::eClassSystem, 5);

    oTarget = CAnsweringException();

    EXPECT_EQ(CTOVException::eClassFile, oTarget.GetClass());
    EXPECT_EQ(1ul, oTarget.GetCode());
}

TEST(CTOVMemoryExceptionTest, HasTheCodeZeroByDefault)
{
    CTOVMemoryException oException;

    EXPECT_EQ(CTOVException::eClassSystem, oException.GetClass());
    EXPECT_EQ(0ul, oException.GetCode());
}

TEST(CTOVAssertExceptionTest, AlwaysHasTheSameClassAndCode)
{
    TOVDebug::CTOVAssertException oException;
    TOVDebug::CTOVAssertException oCopy(oException);

    EXPECT_EQ(CTOVException::eClassSystem, oCopy.GetClass());
    EXPECT_EQ(0xfffful, oCopy.GetCode());
    EXPECT_EQ(sizeof(CTOVException), sizeof(TOVDebug::CTOVAssertException));
    EXPECT_FALSE(std::has_virtual_destructor_v<TOVDebug::CTOVAssertException>);
    EXPECT_FALSE(sHasConstGetClass<TOVDebug::CTOVAssertException>::value);
}

TEST(CTOVAssertExceptionTest, AssignsTheNumbersOfItsSource)
{
    TOVDebug::CTOVAssertException oTarget;
    TOVDebug::CTOVAssertException oSource;
    static_cast<CTOVException&>(oSource) = CTOVException(CTOVException::eClassFile, 3);

    EXPECT_EQ(&oTarget, &(oTarget = oSource));
    EXPECT_EQ(CTOVException::eClassFile, oTarget.GetClass());
    EXPECT_EQ(3ul, oTarget.GetCode());
}

TEST(CTOVAssertExceptionTest, IsCaughtByTypeAndByRoot)
{
    EXPECT_THROW(throw TOVDebug::CTOVAssertException(), TOVDebug::CTOVAssertException);
    EXPECT_THROW(throw TOVDebug::CTOVAssertException(), CTOVException);
}

TYPED_TEST(TOVExceptionFamilyTest, DerivesDirectlyFromItsBase)
{
    typedef typename TypeParam::tException tException;
    typedef typename TypeParam::tBase tBase;

    EXPECT_TRUE((std::is_base_of_v<tBase, tException> && std::is_convertible_v<tException*, tBase*>));
    EXPECT_EQ((std::is_same_v<tBase, ITOVFile::Exception> || std::is_same_v<tException, ITOVFile::Exception>),
              (std::is_base_of_v<ITOVFile::Exception, tException>));
    EXPECT_EQ((std::is_same_v<tException, ITOVStream::StreamException>),
              (std::is_base_of_v<ITOVStream::StreamException, tException>));
}

TYPED_TEST(TOVExceptionFamilyTest, AddsNeitherMemberNorVirtualDestructor)
{
    typedef typename TypeParam::tException tException;

    EXPECT_EQ(sizeof(CTOVException), sizeof(tException));
    EXPECT_FALSE(std::has_virtual_destructor_v<tException>);
    EXPECT_FALSE(sHasConstGetClass<tException>::value);
    EXPECT_EQ((std::is_same_v<tException, CTOVMemoryException>), std::is_default_constructible_v<tException>);
}

TYPED_TEST(TOVExceptionFamilyTest, PassesItsClassAndItsCode)
{
    typename TypeParam::tException oException(7);

    EXPECT_EQ(TypeParam::ERROR_CLASS, oException.GetClass());
    EXPECT_EQ(7ul, oException.GetCode());
}

TYPED_TEST(TOVExceptionFamilyTest, WidensItsCodeWithoutSign)
{
    EXPECT_EQ(0xFFFFul, typename TypeParam::tException(0xFFFF).GetCode());
    EXPECT_EQ(0x8000ul, typename TypeParam::tException(0x8000).GetCode());
    EXPECT_EQ(0ul, typename TypeParam::tException(0).GetCode());
}

TYPED_TEST(TOVExceptionFamilyTest, CopiesAndAssigns)
{
    typedef typename TypeParam::tException tException;
    const tException oSource(42);
    tException oCopy(oSource);
    tException oTarget(1);

    EXPECT_EQ(&oTarget, &(oTarget = oSource));
    EXPECT_EQ(42ul, oCopy.GetCode());
    EXPECT_EQ(42ul, oTarget.GetCode());
    EXPECT_EQ(TypeParam::ERROR_CLASS, oCopy.GetClass());
    EXPECT_EQ(TypeParam::ERROR_CLASS, oTarget.GetClass());
}

TYPED_TEST(TOVExceptionFamilyTest, TakesClassAndCodeOfAnotherTypeAndStaysWhatItIs)
{
    typename TypeParam::tException oException(7);
    CTOVException& oBase = oException;

    oBase = TOVDebug::CTOVAssertException();

    EXPECT_EQ(CTOVException::eClassSystem, oException.GetClass());
    EXPECT_EQ(0xFFFFul, oException.GetCode());
    EXPECT_TRUE(typeid(typename TypeParam::tException) == typeid(oBase));
}

TYPED_TEST(TOVExceptionFamilyTest, IsCaughtByItsOwnTypeItsBaseAndTheRoot)
{
    typedef typename TypeParam::tException tException;

    EXPECT_THROW(throw tException(3), tException);
    EXPECT_THROW(throw tException(3), CTOVException);
    try
    {
        throw tException(3);
    }
    catch (typename TypeParam::tBase& oException)
    {
        EXPECT_EQ(TypeParam::ERROR_CLASS, oException.GetClass());
        EXPECT_EQ(3ul, oException.GetCode());
    }
}

TEST(CTOVExceptionTest, StreamExceptionsAreSiblings)
{
    typedef CTOVFileStream::FileStreamException tInner;
    typedef CTOVReadFileStream::ReadFileStreamException tRead;
    typedef CTOVWriteFileStream::WriteFileStreamException tWrite;

    EXPECT_FALSE((std::is_base_of_v<tInner, tRead> || std::is_base_of_v<tInner, tWrite>));
    EXPECT_FALSE((std::is_base_of_v<tRead, tInner> || std::is_base_of_v<tRead, tWrite>));
    EXPECT_FALSE((std::is_base_of_v<tWrite, tInner> || std::is_base_of_v<tWrite, tRead>));
}

TEST(CTOVExceptionTest, ConstructionAllocatesAndLogsNothing)
{
    CLogRecorder oLog;
    CAllocationCounter oCounter;

    CTOVFile::FileException oException(1);
    TOVDebug::CTOVAssertException oAssertion;
    CTOVException oCopy(oException);
    oCopy = oAssertion;

    EXPECT_EQ(0ul, oCounter.Taken());
    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}
