// A suite in the common pattern: its table, its texts, its creator.
#include "Support/TOVTestSupport.h"
#include "Test/TOVControlledHost.h"

#include <Test/TOVTestSuiteDefinition.h>

#include <memory>
#include <type_traits>

using TOVTest::CTOVTestCase;
using TOVTest::CTOVTestSuite;
using TOVTest::CTOVTestSuiteFactory;

class CPatternTest : public CTOVTestSuite
{
    TOV_TEST_SUITE(CPatternTest)
    void First() { s_sCalls += "1"; }
    void Second() { s_sCalls += "2"; }

public:
    static inline std::string s_sCalls;
};

constexpr unsigned long BEGIN_LINE = __LINE__ + 2;
// clang-format off
TOV_TEST_CASES_BEGIN(CPatternTest, "Pattern")
    TOV_TEST_CASE("the first", First)
    TOV_TEST_CASE("the second", Second)
TOV_TEST_CASES_END
// clang-format on

// With a place of its own, and registered in this program.
class CPlacedTest : public CTOVTestSuite
{
    TOV_TEST_SUITE(CPlacedTest)
    void Only() {}
};

// clang-format off
TOV_TEST_CASES_BEGIN_AT(CPlacedTest, "Placed Test", "Suites\\Placed", 33)
    TOV_TEST_CASE_AT("the only", Only, "Suites\\Placed", 47)
TOV_TEST_CASES_END
// clang-format on
TOV_REGISTER_TEST_SUITE(CPlacedTest)

// A table without a case.
class CEmptyTest : public CTOVTestSuite
{
    TOV_TEST_SUITE(CEmptyTest)
};

// clang-format off
TOV_TEST_CASES_BEGIN(CEmptyTest, "Empty")
TOV_TEST_CASES_END
// clang-format on

namespace
{
constexpr char PATTERN_NAME[] = "CPatternTest";
} // namespace

TOV_TEST_CREATOR(CPatternTest, PATTERN_NAME)

namespace
{
// The operations of a creator, slot by slot.
class ICreatorSlots
{
public:
    virtual CTOVTestSuite* First() = 0;
    virtual ~ICreatorSlots() = default;
};

void ExpectInvalid(const CTOVTestSuite& oSuite, long lIndex)
{
    const CTOVTestCase& oCase = oSuite.GetTestCase(lIndex);
    EXPECT_STREQ("<invalid test case>", oCase.GetDescription()) << lIndex;
    EXPECT_STREQ("<invalid file name", oCase.GetFileName()) << lIndex;
    EXPECT_EQ(0u, oCase.GetLine()) << lIndex;
    oCase.Run();
}
} // namespace

static_assert(sizeof(CPatternTest) == sizeof(CTOVTestSuite), "a suite of the pattern has no data");
static_assert(std::is_base_of_v<TOVTest::ITOVTestSuiteCreator, CTOVCreator_CPlacedTest>, "named after its suite");

TEST(TOVTestSuiteDefinitionTest, TellsOfTheSuite)
{
    const CPatternTest oSuite;

    EXPECT_STREQ("Pattern", oSuite.GetDescription());
    EXPECT_STREQ(__FILE__, oSuite.GetFileName());
    EXPECT_EQ(BEGIN_LINE, oSuite.GetLine());
}

TEST(TOVTestSuiteDefinitionTest, CountsTheCasesUpToTheTerminator)
{
    EXPECT_EQ(2, CPatternTest().GetNumTestCases());
    EXPECT_EQ(1, CPlacedTest().GetNumTestCases());
    EXPECT_EQ(0, CEmptyTest().GetNumTestCases());
}

TEST(TOVTestSuiteDefinitionTest, TellsOfEachCase)
{
    const CPatternTest oSuite;

    EXPECT_STREQ("the first", oSuite.GetTestCase(0).GetDescription());
    EXPECT_STREQ(__FILE__, oSuite.GetTestCase(0).GetFileName());
    EXPECT_EQ(BEGIN_LINE + 1, oSuite.GetTestCase(0).GetLine());
    EXPECT_STREQ("the second", oSuite.GetTestCase(1).GetDescription());
    EXPECT_EQ(BEGIN_LINE + 2, oSuite.GetTestCase(1).GetLine());
}

TEST(TOVTestSuiteDefinitionTest, TakesAPlaceOfItsOwn)
{
    const CPlacedTest oSuite;

    EXPECT_STREQ("Placed Test", oSuite.GetDescription());
    EXPECT_STREQ("Suites\\Placed", oSuite.GetFileName());
    EXPECT_EQ(33u, oSuite.GetLine());
    EXPECT_STREQ("the only", oSuite.GetTestCase(0).GetDescription());
    EXPECT_STREQ("Suites\\Placed", oSuite.GetTestCase(0).GetFileName());
    EXPECT_EQ(47u, oSuite.GetTestCase(0).GetLine());
}

TEST(TOVTestSuiteDefinitionTest, RunsTheFunctionOfTheCase)
{
    CPatternTest::s_sCalls.clear();
    const CPatternTest oSuite;

    oSuite.GetTestCase(1).Run();
    oSuite.GetTestCase(0).Run();

    EXPECT_EQ("21", CPatternTest::s_sCalls);
}

TEST(TOVTestSuiteDefinitionTest, GivesTheInvalidCaseOutsideOfTheTable)
{
    CPatternTest::s_sCalls.clear();

    for (const long lIndex : {2L, 3L, 1000000L, -1L, -1000000L})
        ExpectInvalid(CPatternTest(), lIndex);
    ExpectInvalid(CEmptyTest(), 0);

    EXPECT_EQ("", CPatternTest::s_sCalls);
}

TEST(TOVTestSuiteDefinitionTest, SharesTheOneCaseObject)
{
    const CTOVTestCase* const pCase = &CPatternTest().GetTestCase(0);

    EXPECT_EQ(pCase, &CPlacedTest().GetTestCase(0));
    EXPECT_EQ(pCase, &CPlacedTest().GetTestCase(9));
    EXPECT_EQ(pCase, &CTOVTestSuite::Null().GetTestCase(0));
}

TEST(TOVTestSuiteDefinitionTest, MakesANewSuiteAtEachCall)
{
    const CControlledHost oHost;
    CTOVCreator_CPatternTest oCreator;

    const std::unique_ptr<CTOVTestSuite> pFirst(oCreator.New());
    const std::unique_ptr<CTOVTestSuite> pSecond(oCreator.New());

    EXPECT_NE(pFirst, pSecond);
    EXPECT_NE(nullptr, dynamic_cast<CPatternTest*>(pFirst.get()));
    EXPECT_STREQ("Pattern", pFirst->GetDescription());
}

TEST(TOVTestSuiteDefinitionTest, UnregistersWithItsCreator)
{
    const CControlledHost oHost;
    {
        CTOVCreator_CPatternTest oCreator;
        CTOVTestSuiteFactory::Register(PATTERN_NAME, &oCreator);
        ASSERT_TRUE(CTOVTestSuiteFactory::HasClass(PATTERN_NAME));
    }

    EXPECT_FALSE(CTOVTestSuiteFactory::HasClass(PATTERN_NAME));
}

TEST(TOVTestSuiteDefinitionTest, DestroysACreatorThatWasNeverRegistered)
{
    const CControlledHost oHost;
    {
        const CTOVCreator_CPatternTest oCreator;
    }

    EXPECT_EQ(0, CTOVTestSuiteFactory::GetNumSuites());
}

TEST(TOVTestSuiteDefinitionTest, HasTheDestructorOfACreatorInTheSecondSlot)
{
    const CControlledHost oHost;
    const auto pCreator = new CTOVCreator_CPatternTest;
    CTOVTestSuiteFactory::Register(PATTERN_NAME, pCreator);
    TOVTest::ITOVTestSuiteCreator* const pBase = pCreator;
    ICreatorSlots* volatile pSlots = reinterpret_cast<ICreatorSlots*>(pBase);

    const std::unique_ptr<CTOVTestSuite> pSuite(pSlots->First());
    EXPECT_STREQ("Pattern", pSuite->GetDescription());

    delete pSlots;
    EXPECT_FALSE(CTOVTestSuiteFactory::HasClass(PATTERN_NAME));
}

TEST(TOVTestSuiteDefinitionTest, RegistersUnderItsClassNameAtLoad)
{
    int nFound = 0;
    const char* szName = nullptr;
    for (bool bFound = CTOVTestSuiteFactory::GetFirst(szName); bFound;
         bFound = CTOVTestSuiteFactory::GetNext(szName, szName))
        nFound += std::string("CPlacedTest") == szName ? 1 : 0;

    EXPECT_EQ(1, nFound);
}
