#include "Support/TOVTestSupport.h"
#include "Test/TOVRunFixture.h"

#include <Test/TOVSimpleTestRunner.h>

#include <memory>
#include <type_traits>

using TOVTest::CTOVSimpleTestRunner;
using TOVTest::CTOVTestRouter;
using TOVTest::CTOVTestTracker;

namespace
{
class CTOVSimpleTestRunnerTest : public CRunFixture
{
};
} // namespace

static_assert(std::is_base_of_v<CTOVTestRouter, CTOVSimpleTestRunner>, "a runner is a router");
static_assert(sizeof(CTOVSimpleTestRunner) == sizeof(CTOVTestRouter), "no data of its own");

TEST_F(CTOVSimpleTestRunnerTest, TellsAllItsListeners)
{
    CEventRecorder oOther;
    AddSuite("suite", {[] {}});
    CTOVSimpleTestRunner oRunner;
    oRunner.AddListener(m_oRecorder);
    oRunner.AddListener(oOther);

    EXPECT_EQ(0, oRunner.Run());

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|suite", "EnterTestCase|first", "LeaveTestCase|first",
                      "LeaveSuite|suite", "LeaveEnvironment"}),
              m_oRecorder.m_aEvents);
    EXPECT_EQ(m_oRecorder.m_aEvents, oOther.m_aEvents);
}

TEST_F(CTOVSimpleTestRunnerTest, GivesTheNumberOfFailedCases)
{
    AddFailingSuite(2);
    AddSuite("passing", {[] {}});
    AddFailingSuite(1);
    CTOVSimpleTestRunner oRunner;
    oRunner.AddListener(m_oRecorder);

    EXPECT_EQ(3, oRunner.Run());
    EXPECT_EQ(2, CTOVTestTracker::Instance().GetNumFailedSuites());
}

TEST_F(CTOVSimpleTestRunnerTest, RunsWithoutListeners)
{
    AddFailingSuite(2);

    EXPECT_EQ(2, CTOVSimpleTestRunner().Run());
}

TEST_F(CTOVSimpleTestRunnerTest, RunsWithoutSuites)
{
    EXPECT_EQ(0, CTOVSimpleTestRunner().Run());
}

TEST_F(CTOVSimpleTestRunnerTest, CountsEachRunAnew)
{
    AddFailingSuite(2);
    CTOVSimpleTestRunner oRunner;

    EXPECT_EQ(2, oRunner.Run());
    EXPECT_EQ(2, oRunner.Run());
}

TEST_F(CTOVSimpleTestRunnerTest, CountsNoWarning)
{
    AddSuite("suite", {[] { RaiseWarning(TOVTest::CTOVTestListener::Instance()); }});

    EXPECT_EQ(0, CTOVSimpleTestRunner().Run());
}

TEST_F(CTOVSimpleTestRunnerTest, LetsThroughWhatACaseThrows)
{
    AddSuite("suite", {[] { throw 7; }});
    CTOVSimpleTestRunner oRunner;
    oRunner.AddListener(m_oRecorder);

    EXPECT_THROW(oRunner.Run(), int);
    EXPECT_EQ("EnterTestCase|first", m_oRecorder.m_aEvents.back());
}

TEST_F(CTOVSimpleTestRunnerTest, TellsAListenerThatIsAddedInTheRun)
{
    CEventRecorder oLate;
    CTOVSimpleTestRunner oRunner;
    AddSuite("suite", {[&] { oRunner.AddListener(oLate); }});

    oRunner.Run();

    EXPECT_EQ((tTexts{"LeaveTestCase|first", "LeaveSuite|suite", "LeaveEnvironment"}), oLate.m_aEvents);
}

TEST_F(CTOVSimpleTestRunnerTest, HasOneTrackerForAllRunners)
{
    CTOVSimpleTestRunner().Run();
    const CTOVTestTracker* const pTracker = &CTOVTestTracker::Instance();

    CTOVSimpleTestRunner().Run();

    EXPECT_EQ(pTracker, &CTOVTestTracker::Instance());
}

TEST_F(CTOVSimpleTestRunnerTest, CopiesItsListeners)
{
    CTOVSimpleTestRunner oRunner;
    oRunner.AddListener(m_oRecorder);
    CTOVSimpleTestRunner oCopy(oRunner);
    CTOVSimpleTestRunner oAssigned;
    EXPECT_EQ(&oAssigned, &(oAssigned = oRunner));

    oCopy.Run();
    oAssigned.Run();

    EXPECT_EQ((tTexts{"EnterEnvironment", "LeaveEnvironment", "EnterEnvironment", "LeaveEnvironment"}),
              m_oRecorder.m_aEvents);
}

TEST_F(CTOVSimpleTestRunnerTest, CanBeDeletedAsARouter)
{
    const std::unique_ptr<CTOVTestRouter> pRouter(new CTOVSimpleTestRunner);

    EXPECT_FALSE(pRouter->HasListeners());
}

// The counter stays in force behind a run, and this test would touch what is gone if it still knew the runner.
TEST_F(CTOVSimpleTestRunnerTest, IsForgottenAtItsEnd)
{
    {
        CTOVSimpleTestRunner oRunner;
        oRunner.AddListener(m_oRecorder);
        oRunner.Run();
    }
    m_oRecorder.m_aEvents.clear();

    TOVTest::CTOVTestListener::Instance().FailedTest("a.cpp", 1, "behind the run");

    EXPECT_EQ(tTexts(), m_oRecorder.m_aEvents);
    EXPECT_EQ(1, CTOVTestTracker::Instance().GetNumTotalFailedTests());
}
