#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"

#include <Test/TOVTestCase.h>
#include <Test/TOVTestSuite.h>

#include <stdexcept>
#include <type_traits>

using TOVTest::CTOVTestCase;
using TOVTest::CTOVTestSuite;

namespace
{
typedef void (CTOVTestSuite::*tTestFunction)();

TOV_PRIVATE_MEMBER(FileName, CTOVTestCase, const char*, m_szFileName)
TOV_PRIVATE_MEMBER(Line, CTOVTestCase, unsigned long, m_ulLine)
TOV_PRIVATE_MEMBER(Description, CTOVTestCase, const char*, m_szDescription)
TOV_PRIVATE_MEMBER(Function, CTOVTestCase, tTestFunction, m_pfTest)
TOV_PRIVATE_MEMBER(Suite, CTOVTestCase, CTOVTestSuite*, m_pSuite)

class COpenCase : public CTOVTestCase
{
public:
    using CTOVTestCase::operator();
};

class CCountingSuite : public CTOVTestSuite
{
public:
    void Count() { ++m_nRuns; }
    void Throw() { throw std::runtime_error("thrown by the case"); }

    int m_nRuns = 0;
};

const tTestFunction COUNT = static_cast<tTestFunction>(&CCountingSuite::Count);
const tTestFunction THROW = static_cast<tTestFunction>(&CCountingSuite::Throw);

const void* Address(const void* pAddress)
{
    return pAddress;
}
} // namespace

static_assert(!std::is_polymorphic_v<CTOVTestCase>, "a test case has no virtual operations");

TEST(CTOVTestCaseTest, HasNothingByDefault)
{
    CTOVTestCase oCase;

    EXPECT_EQ(nullptr, FileName(oCase));
    EXPECT_EQ(0u, Line(oCase));
    EXPECT_EQ(nullptr, Description(oCase));
    EXPECT_EQ(nullptr, Function(oCase));
    EXPECT_EQ(nullptr, Suite(oCase));
}

TEST(CTOVTestCaseTest, ReadsAMissingFileNameAsAMisspeltText)
{
    const CTOVTestCase oCase;

    EXPECT_STREQ("<Unkown filename>", oCase.GetFileName());
    EXPECT_EQ(nullptr, oCase.GetDescription());
    EXPECT_EQ(0u, oCase.GetLine());
}

TEST(CTOVTestCaseTest, KeepsItsMembersInOrder)
{
    CTOVTestCase oCase;

    EXPECT_EQ(Address(&oCase), Address(&FileName(oCase)));
    EXPECT_LT(Address(&FileName(oCase)), Address(&Line(oCase)));
    EXPECT_LT(Address(&Line(oCase)), Address(&Description(oCase)));
    EXPECT_LT(Address(&Description(oCase)), Address(&Function(oCase)));
    EXPECT_LT(Address(&Function(oCase)), Address(&Suite(oCase)));
}

TEST(CTOVTestCaseTest, StoresAllFiveValues)
{
    CCountingSuite oSuite;
    COpenCase oCase;

    CTOVTestCase& oResult = oCase(&oSuite, COUNT, "counts", "counting.cpp", 12);

    EXPECT_EQ(&oCase, &oResult);
    EXPECT_STREQ("counts", oCase.GetDescription());
    EXPECT_STREQ("counting.cpp", oCase.GetFileName());
    EXPECT_EQ(12u, oCase.GetLine());
    EXPECT_EQ(COUNT, Function(oCase));
    EXPECT_EQ(&oSuite, Suite(oCase));
}

TEST(CTOVTestCaseTest, KeepsTheTextsItIsGivenAndNoCopies)
{
    char szDescription[] = "before";
    char szFileName[] = "before.cpp";
    COpenCase oCase;
    oCase(nullptr, nullptr, szDescription, szFileName, 1);

    EXPECT_EQ(szDescription, oCase.GetDescription());
    EXPECT_EQ(szFileName, oCase.GetFileName());
}

TEST(CTOVTestCaseTest, CallsItsFunctionOnItsSuiteAtEachRun)
{
    CCountingSuite oSuite;
    CCountingSuite oOther;
    COpenCase oCase;
    oCase(&oSuite, COUNT, "counts", "counting.cpp", 12);

    oCase.Run();
    oCase.Run();

    EXPECT_EQ(2, oSuite.m_nRuns);
    EXPECT_EQ(0, oOther.m_nRuns);
}

TEST(CTOVTestCaseTest, DoesNothingWithoutSuiteOrFunction)
{
    CCountingSuite oSuite;
    COpenCase oCase;

    oCase.Run();
    oCase(&oSuite, nullptr, "without a function", "counting.cpp", 1).Run();
    oCase(nullptr, COUNT, "without a suite", "counting.cpp", 1).Run();

    EXPECT_EQ(0, oSuite.m_nRuns);
}

TEST(CTOVTestCaseTest, LetsThroughWhatTheFunctionThrows)
{
    CCountingSuite oSuite;
    COpenCase oCase;
    oCase(&oSuite, THROW, "throws", "counting.cpp", 12);

    EXPECT_THROW(oCase.Run(), std::runtime_error);
}

TEST(CTOVTestCaseTest, CopiesItsMembers)
{
    CCountingSuite oSuite;
    COpenCase oCase;
    oCase(&oSuite, COUNT, "counts", "counting.cpp", 12);

    const CTOVTestCase oCopy(oCase);
    CTOVTestCase oAssigned;
    const CTOVTestCase* const pResult = &(oAssigned = oCase);
    oCase(nullptr, nullptr, nullptr, nullptr, 0);
    oCopy.Run();
    oAssigned.Run();

    EXPECT_EQ(&oAssigned, pResult);
    EXPECT_EQ(2, oSuite.m_nRuns);
    EXPECT_STREQ("counts", oAssigned.GetDescription());
    EXPECT_STREQ("counting.cpp", oAssigned.GetFileName());
    EXPECT_EQ(12u, oAssigned.GetLine());
}

TEST(CTOVTestCaseTest, HasOneNullObject)
{
    EXPECT_EQ(&CTOVTestCase::Null(), &CTOVTestCase::Null());
    EXPECT_STREQ("<Unkown filename>", CTOVTestCase::Null().GetFileName());
    EXPECT_EQ(nullptr, CTOVTestCase::Null().GetDescription());
    EXPECT_EQ(0u, CTOVTestCase::Null().GetLine());
    CTOVTestCase::Null().Run();
}
