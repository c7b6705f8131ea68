#include "Support/TOVTestSupport.h"

#include <Test/TOVTestTracker.h>

#include <type_traits>

using TOVTest::CTOVTestCase;
using TOVTest::CTOVTestSuite;
using TOVTest::CTOVTestTracker;

namespace
{
class CFixedTracker : public CTOVTestTracker
{
public:
    CFixedTracker(long lAsserts, long lTests, long lSuites) : m_lAsserts(lAsserts), m_lTests(lTests), m_lSuites(lSuites)
    {
    }

    long GetNumFailedAsserts() const override { return m_lAsserts; }
    long GetNumFailedSuiteTests() const override { return m_lTests; }
    long GetNumFailedSuites() const override { return m_lSuites; }

    long m_lAsserts;
    long m_lTests;
    long m_lSuites;
};

// No tracker stays in force behind a test.
class CTOVTestTrackerTest : public testing::Test
{
protected:
    ~CTOVTestTrackerTest() override { CTOVTestTracker::SetTracker(nullptr); }
};

TOV_CHILD(AsksForATrackerBeforeOneWasSet)
{
    const bool bNull = &CTOVTestTracker::Instance() == &CTOVTestTracker::Null();
    std::exit(bNull ? 0 : 1);
}
} // namespace

static_assert(sizeof(CTOVTestTracker) == sizeof(void*), "a tracker has virtual operations and no data");
static_assert(!std::has_virtual_destructor_v<CTOVTestTracker>, "the base has no virtual destructor");

TEST_F(CTOVTestTrackerTest, CountsNothing)
{
    const CTOVTestTracker oTracker;

    EXPECT_EQ(0, oTracker.GetNumFailedAsserts());
    EXPECT_EQ(0, oTracker.GetNumFailedSuiteTests());
    EXPECT_EQ(0, oTracker.GetNumFailedSuites());
    EXPECT_EQ(0, oTracker.GetNumTotalFailedTests());
    EXPECT_FALSE(oTracker.HasTestFailed());
    EXPECT_FALSE(oTracker.HasSuiteFailed());
    EXPECT_FALSE(oTracker.HasEnvironmentFailed());
}

TEST_F(CTOVTestTrackerTest, KnowsTheNullObjects)
{
    const CTOVTestTracker oTracker;

    EXPECT_EQ(&CTOVTestCase::Null(), &oTracker.GetCurrentTestCase());
    EXPECT_EQ(&CTOVTestSuite::Null(), &oTracker.GetCurrentTestSuite());
}

TEST_F(CTOVTestTrackerTest, TellsEachFailureByItsCounter)
{
    EXPECT_TRUE(CFixedTracker(1, 0, 0).HasTestFailed());
    EXPECT_FALSE(CFixedTracker(0, 1, 1).HasTestFailed());
    EXPECT_TRUE(CFixedTracker(0, 2, 0).HasSuiteFailed());
    EXPECT_FALSE(CFixedTracker(1, 0, 1).HasSuiteFailed());
    EXPECT_TRUE(CFixedTracker(0, 0, 3).HasEnvironmentFailed());
    EXPECT_FALSE(CFixedTracker(1, 1, 0).HasEnvironmentFailed());
}

TEST_F(CTOVTestTrackerTest, TellsNoFailureByANegativeCounter)
{
    const CFixedTracker oTracker(-1, -1, -1);

    EXPECT_FALSE(oTracker.HasTestFailed());
    EXPECT_FALSE(oTracker.HasSuiteFailed());
    EXPECT_FALSE(oTracker.HasEnvironmentFailed());
}

TEST_F(CTOVTestTrackerTest, PutsATrackerInForce)
{
    CFixedTracker oTracker(1, 2, 3);

    CTOVTestTracker::SetTracker(&oTracker);

    EXPECT_EQ(&oTracker, &CTOVTestTracker::Instance());
    EXPECT_EQ(3, CTOVTestTracker::Instance().GetNumFailedSuites());
}

TEST_F(CTOVTestTrackerTest, PutsTheNullTrackerInForceForNull)
{
    CFixedTracker oTracker(1, 2, 3);
    CTOVTestTracker::SetTracker(&oTracker);

    CTOVTestTracker::SetTracker(nullptr);

    EXPECT_EQ(&CTOVTestTracker::Null(), &CTOVTestTracker::Instance());
}

TEST_F(CTOVTestTrackerTest, ReplacesAMissingTracker)
{
    CFixedTracker oTracker(1, 2, 3);

    EXPECT_EQ(&oTracker, CTOVTestTracker::GetSafeTracker(&oTracker));
    EXPECT_EQ(&CTOVTestTracker::Null(), CTOVTestTracker::GetSafeTracker(nullptr));
}

TEST_F(CTOVTestTrackerTest, HasTheNullTrackerInForceAtFirst)
{
    const sChildResult oResult = RunChild("AsksForATrackerBeforeOneWasSet");

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sOutput;
}
