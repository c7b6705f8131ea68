#include "Support/TOVTestSupport.h"

#include <Test/TOVTestCase.h>
#include <Test/TOVTestSuite.h>

#include <type_traits>

using TOVTest::CTOVTestCase;
using TOVTest::CTOVTestSuite;

namespace
{
// Opens the protected operation, and counts the runs of its case.
class COpenSuite : public CTOVTestSuite
{
public:
    using CTOVTestSuite::SetupTestCase;

    void Count() { ++m_nRuns; }

    CTOVTestCase& GetTestCase(long lIndex) const override
    {
        return SetupTestCase(this, COUNT, "counts", "open.cpp", 40 + static_cast<unsigned long>(lIndex));
    }

    static constexpr void (CTOVTestSuite::*COUNT)() = static_cast<void (CTOVTestSuite::*)()>(&COpenSuite::Count);

    int m_nRuns = 0;
};
} // namespace

static_assert(sizeof(CTOVTestSuite) == sizeof(void*), "a suite has virtual operations and no data");
static_assert(std::has_virtual_destructor_v<CTOVTestSuite>, "the runner deletes suites by their base");

TEST(CTOVTestSuiteTest, HasNoCasesByDefault)
{
    EXPECT_EQ(0, CTOVTestSuite().GetNumTestCases());
}

TEST(CTOVTestSuiteTest, TellsOfItselfInMisspeltTexts)
{
    const CTOVTestSuite oSuite;

    EXPECT_STREQ("<Unkown test suite>", oSuite.GetDescription());
    EXPECT_STREQ("<Unkown file name>", oSuite.GetFileName());
    EXPECT_EQ(0u, oSuite.GetLine());
}

TEST(CTOVTestSuiteTest, DoesNothingAroundCases)
{
    CTOVTestSuite oSuite;

    EXPECT_NO_CHECK(oSuite.Startup());
    EXPECT_NO_CHECK(oSuite.Closedown());
}

TEST(CTOVTestSuiteTest, GivesTheInvalidCaseForEachIndex)
{
    const CTOVTestSuite oSuite;

    for (const long lIndex : {-1L, 0L, 1L, 1000000L})
    {
        CTOVTestCase& oCase = oSuite.GetTestCase(lIndex);
        EXPECT_STREQ("<invalid test case>", oCase.GetDescription());
        EXPECT_STREQ("<invalid file name>", oCase.GetFileName());
        oCase.Run();
    }
}

TEST(CTOVTestSuiteTest, MakesTheFormerCaseInvalid)
{
    COpenSuite oSuite;
    CTOVTestCase& oCase = oSuite.GetTestCase(0);

    CTOVTestSuite().GetTestCase(0);
    oCase.Run();

    EXPECT_STREQ("<invalid test case>", oCase.GetDescription());
    EXPECT_EQ(0, oSuite.m_nRuns);
}

TEST(CTOVTestSuiteTest, SetsUpACaseOfAllFiveValues)
{
    COpenSuite oSuite;

    CTOVTestCase& oCase = COpenSuite::SetupTestCase(&oSuite, COpenSuite::COUNT, "counts", "open.cpp", 41);
    oCase.Run();

    EXPECT_STREQ("counts", oCase.GetDescription());
    EXPECT_STREQ("open.cpp", oCase.GetFileName());
    EXPECT_EQ(41u, oCase.GetLine());
    EXPECT_EQ(1, oSuite.m_nRuns);
}

TEST(CTOVTestSuiteTest, HasOneCaseObjectForAllSuites)
{
    const COpenSuite oFirst;
    const COpenSuite oSecond;
    const CTOVTestSuite oBase;

    const CTOVTestCase* const pCase = &oFirst.GetTestCase(0);

    EXPECT_EQ(pCase, &oFirst.GetTestCase(1));
    EXPECT_EQ(pCase, &oSecond.GetTestCase(0));
    EXPECT_EQ(pCase, &oBase.GetTestCase(0));
    EXPECT_EQ(pCase, &COpenSuite::SetupTestCase(nullptr, nullptr, nullptr, nullptr, 0));
    EXPECT_NE(pCase, &CTOVTestCase::Null());
}

TEST(CTOVTestSuiteTest, GivesACaseThatIsValidUntilTheNext)
{
    const COpenSuite oSuite;
    const CTOVTestCase& oCase = oSuite.GetTestCase(0);
    ASSERT_EQ(40u, oCase.GetLine());

    oSuite.GetTestCase(3);

    EXPECT_EQ(43u, oCase.GetLine());
}

TEST(CTOVTestSuiteTest, HasOneNullObject)
{
    EXPECT_EQ(&CTOVTestSuite::Null(), &CTOVTestSuite::Null());
    EXPECT_STREQ("<Unkown test suite>", CTOVTestSuite::Null().GetDescription());
    EXPECT_STREQ("<Unkown file name>", CTOVTestSuite::Null().GetFileName());
    EXPECT_EQ(0, CTOVTestSuite::Null().GetNumTestCases());
}

TEST(CTOVTestSuiteTest, IsCopiedWithItsData)
{
    COpenSuite oSuite;
    oSuite.Count();
    const COpenSuite oCopy(oSuite);
    COpenSuite oAssigned;
    oAssigned = oSuite;

    EXPECT_EQ(1, oCopy.m_nRuns);
    EXPECT_EQ(1, oAssigned.m_nRuns);
}
