#include <TestSuites/Test_TOVRtti.h>

#include <TOVRtti/TOVClassServer.h>
#include <Test/TOVTestChecks.h>
#include <TestSuites/Test_TOVRttiClasses.h>

constexpr char FILE_NAME[] = "TestSuites\\Test_TOVRtti";

// Settled: the file name and the lines of the table are given; they are not the places in this source.
// clang-format off
TOV_TEST_CASES_BEGIN_AT(CTOVRttiTest, "TOVRtti", FILE_NAME, 68)
    TOV_TEST_CASE_AT("CTOVClass", TestClass, FILE_NAME, 76)
    TOV_TEST_CASE_AT("CTOVClassServer", TestClassServer, FILE_NAME, 77)
TOV_TEST_CASES_END
// clang-format on

namespace TOVRttiTest
{
const CTOVClass& IInterface::GetClass()
{
    static const CTOVClass _s_oClass("IInterface");
    return _s_oClass;
}

// GCOVR_EXCL_START: every class below overrides these three, and they call none of their base.
const CTOVClass& IInterface::GetRuntimeClass() const
{
    return GetClass();
}

bool IInterface::IsInstanceOf(const CTOVClass& oClass) const
{
    return GetClass() == oClass;
}

bool IInterface::IsKindOf(const CTOVClass& oClass) const
{
    return GetClass().IsKindOf(oClass);
}
// GCOVR_EXCL_STOP

void* IInterface::QueryInterface(const CTOVClass& oClass)
{
    return oClass == GetClass() ? this : nullptr;
}

const CTOVClass& CBase::GetRuntimeClass() const
{
    return GetClass();
}

bool CBase::IsInstanceOf(const CTOVClass& oClass) const
{
    return GetClass() == oClass;
}

bool CBase::IsKindOf(const CTOVClass& oClass) const
{
    return GetClass().IsKindOf(oClass);
}

const CTOVClass& CClass::GetRuntimeClass() const
{
    return GetClass();
}

bool CClass::IsInstanceOf(const CTOVClass& oClass) const
{
    return GetClass() == oClass;
}

bool CClass::IsKindOf(const CTOVClass& oClass) const
{
    return GetClass().IsKindOf(oClass);
}

void* CClass::QueryInterface(const CTOVClass& oClass)
{
    return oClass == GetClass() ? this : IInterface::QueryInterface(oClass);
}
} // namespace TOVRttiTest

namespace
{
using TOVRttiTest::CBase;
using TOVRttiTest::CClass;
using TOVRttiTest::IInterface;

void CheckDescriptor()
{
    TOV_TEST_THROWS(CTOVClass(static_cast<const char*>(NULL)));
    TOV_TEST_THROWS_NOT(CTOVClass("Test"));

    const CTOVClass oClass("Test");
    TOV_TEST_EQUALS(CTOVClassServer::Instance().HasClass("Test"), true);
    TOV_TEST_EQUALS(CTOVStringA(oClass.GetName()) == "Test", true);
    TOV_TEST_EQUALS(CTOVStringA(static_cast<const tChar*>(oClass)) == "Test", true);
    TOV_TEST_EQUALS(oClass.operator CTOVStringA() == "Test", true);
    const CTOVStringA& oName = oClass.operator CTOVStringA();
    TOV_TEST_EQUALS(oName == "Test", true);
    TOV_TEST_EQUALS(oClass.HasSuperClasses(), false);
    TOV_TEST_THROWS(oClass.GetSuperClass(0));
}

void CheckBase()
{
    const CBase oBase;
    const CTOVClass& oClass = oBase.GetRuntimeClass();
    TOV_TEST_EQUALS(oClass == CBase::GetClass(), true);
    TOV_TEST_EQUALS(CTOVStringA(oClass.GetName()) == "CBase", true);
    TOV_TEST_EQUALS(oClass.GetNumSuperClasses(), 0);
    TOV_TEST_EQUALS(oClass.HasSuperClasses(), false);
    TOV_TEST_THROWS(oClass.GetSuperClass(0));

    TOV_TEST_EQUALS(oBase.IsKindOf(IInterface::GetClass()), false);
    TOV_TEST_EQUALS(oBase.IsKindOf(CBase::GetClass()), true);
    TOV_TEST_EQUALS(oBase.IsKindOf(CClass::GetClass()), false);
    TOV_TEST_EQUALS(oBase.IsInstanceOf(IInterface::GetClass()), false);
    TOV_TEST_EQUALS(oBase.IsInstanceOf(CBase::GetClass()), true);
    TOV_TEST_EQUALS(oBase.IsInstanceOf(CClass::GetClass()), false);
}

// Checks the class of an instance of CClass, which is passed as CClass or as one of its bases.
template<class T> void CheckClass(const T& oObject)
{
    const CTOVClass& oClass = oObject.GetRuntimeClass();
    TOV_TEST_EQUALS(oClass == CClass::GetClass(), true);
    TOV_TEST_EQUALS(CTOVStringA(oClass.GetName()) == "CClass", true);
    TOV_TEST_EQUALS(oClass.GetNumSuperClasses(), 2);
    TOV_TEST_EQUALS(oClass.HasSuperClasses(), true);
    TOV_TEST_EQUALS(oClass.GetSuperClass(0) == CBase::GetClass(), true);
    TOV_TEST_EQUALS(oClass.GetSuperClass(1) == IInterface::GetClass(), true);
    TOV_TEST_THROWS(oClass.GetSuperClass(2));

    TOV_TEST_EQUALS(oObject.IsKindOf(IInterface::GetClass()), true);
    TOV_TEST_EQUALS(oObject.IsKindOf(CBase::GetClass()), true);
    TOV_TEST_EQUALS(oObject.IsKindOf(CClass::GetClass()), true);
    TOV_TEST_EQUALS(oObject.IsInstanceOf(IInterface::GetClass()), false);
    TOV_TEST_EQUALS(oObject.IsInstanceOf(CBase::GetClass()), false);
    TOV_TEST_EQUALS(oObject.IsInstanceOf(CClass::GetClass()), true);
}

void CheckInterfaces()
{
    CClass oObject;
    TOV_TEST_EQUALS(oObject.QueryInterface(CClass::GetClass()) == &oObject, true);
    TOV_TEST_EQUALS(oObject.QueryInterface(IInterface::GetClass()) == static_cast<IInterface*>(&oObject), true);
    TOV_TEST_EQUALS(oObject.QueryInterface(CBase::GetClass()) == NULL, true);
}
} // namespace

void CTOVRttiTest::TestClass()
{
    CheckDescriptor();
    CheckBase();

    const CClass oObject;
    CheckClass(oObject);
    CheckClass<CBase>(oObject);
    CheckClass<IInterface>(oObject);
    CheckInterfaces();
}

void CTOVRttiTest::TestClassServer()
{
}
