#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"
#include "Test/TOVControlledHost.h"
#include "Test/TOVRunFixture.h"

#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVEventCondition.h>
#include <Test/TOVTestRunner.h>

#include <stdexcept>
#include <type_traits>

using TOVTest::CTOVCountingTracker;
using TOVTest::CTOVTestCase;
using TOVTest::CTOVTestListener;
using TOVTest::CTOVTestRunner;
using TOVTest::CTOVTestSuite;
using TOVTest::CTOVTestSuiteFactory;
using TOVTest::CTOVTestTracker;

namespace
{
class CTOVTestRunnerTest : public CRunFixture
{
protected:
    tTexts Run()
    {
        m_oRecorder.m_aEvents.clear();
        CTOVTestRunner::RunAllTests(&m_oRecorder);
        return m_oRecorder.m_aEvents;
    }
};

// A number of cases, and no case for it.
class CPromisingSuite : public CTOVTestSuite
{
public:
    long GetNumTestCases() const override { return 1; }
};

class CPromisingCreator : public TOVTest::ITOVTestSuiteCreator
{
public:
    virtual ~CPromisingCreator() = default;
    CTOVTestSuite* New() override { return new CPromisingSuite; }
};

TOV_PRIVATE_MEMBER(HandlesOf, CTOVEventCondition, unsigned long long*, m_pEventHandles)

// Its end fails a check, as that of a suite with members can.
class CTornSuite : public CTOVTestSuite
{
public:
    CTornSuite() : m_oCondition(CTOVEventCondition::eConditionTypeAny, &m_oEvent, 1)
    {
        delete[] HandlesOf(m_oCondition);
        HandlesOf(m_oCondition) = nullptr;
    }

private:
    CTOVEvent m_oEvent;
    CTOVEventCondition m_oCondition;
};

class CTornCreator : public TOVTest::ITOVTestSuiteCreator
{
public:
    virtual ~CTornCreator() = default;
    CTOVTestSuite* New() override { return new CTornSuite; }
};
} // namespace

static_assert(std::is_empty_v<CTOVTestRunner>, "a runner has neither data nor virtual operations");
static_assert(!std::is_constructible_v<CTOVTestRunner, CTOVTestListener*>, "RunAllTests makes it");

TEST_F(CTOVTestRunnerTest, OpensAndClosesARunWithoutSuites)
{
    EXPECT_EQ((tTexts{"EnterEnvironment", "LeaveEnvironment"}), Run());
}

TEST_F(CTOVTestRunnerTest, TellsOfOneCaseInOrder)
{
    CFunctionSuite& oSuite = AddSuite("suite", {[this] { m_oRecorder.Remember("case"); }});
    oSuite.m_fnStartup = [this] { m_oRecorder.Remember("Startup"); };
    oSuite.m_fnClosedown = [this] { m_oRecorder.Remember("Closedown"); };

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|suite", "Startup", "EnterTestCase|first", "case",
                      "LeaveTestCase|first", "Closedown", "LeaveSuite|suite", "LeaveEnvironment"}),
              Run());
}

TEST_F(CTOVTestRunnerTest, StartsUpAndClosesDownAroundEachCase)
{
    CFunctionSuite& oSuite = AddSuite("suite", {[] {}, [] {}, [] {}});
    oSuite.m_fnStartup = [this] { m_oRecorder.Remember("Startup"); };
    oSuite.m_fnClosedown = [this] { m_oRecorder.Remember("Closedown"); };

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|suite",                                 //
                      "Startup", "EnterTestCase|first", "LeaveTestCase|first", "Closedown",   //
                      "Startup", "EnterTestCase|second", "LeaveTestCase|second", "Closedown", //
                      "Startup", "EnterTestCase|third", "LeaveTestCase|third", "Closedown",   //
                      "LeaveSuite|suite", "LeaveEnvironment"}),
              Run());
}

TEST_F(CTOVTestRunnerTest, EntersASuiteWithoutCases)
{
    CFunctionSuite& oSuite = AddSuite("empty", {});
    oSuite.m_fnStartup = [this] { m_oRecorder.Remember("Startup"); };
    oSuite.m_fnClosedown = [this] { m_oRecorder.Remember("Closedown"); };

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|empty", "LeaveSuite|empty", "LeaveEnvironment"}), Run());
}

TEST_F(CTOVTestRunnerTest, GoesThroughTheSuitesInTheFactorysOrder)
{
    AddSuite("one", {});
    AddSuite("two", {});
    AddSuite("three", {});

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|one", "LeaveSuite|one", "EnterSuite|two", "LeaveSuite|two",
                      "EnterSuite|three", "LeaveSuite|three", "LeaveEnvironment"}),
              Run());
}

TEST_F(CTOVTestRunnerTest, ReadsTheNumberOfCasesAnewAfterEachCase)
{
    long lCases = 1;
    CFunctionSuite& oSuite = AddSuite("suite", {[&] { lCases = 3; }, [&] { lCases = 2; }, [] { FAIL(); }});
    oSuite.m_fnNumTestCases = [&] { return lCases; };

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|suite", "EnterTestCase|first", "LeaveTestCase|first",
                      "EnterTestCase|second", "LeaveTestCase|second", "LeaveSuite|suite", "LeaveEnvironment"}),
              Run());
}

TEST_F(CTOVTestRunnerTest, SkipsASuiteThatIsNotMade)
{
    CBarrenCreator oBarren;
    AddSuite("before", {});
    AddCreator(&oBarren);
    AddCreator(nullptr);
    AddSuite("after", {});

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|before", "LeaveSuite|before", "EnterSuite|after",
                      "LeaveSuite|after", "LeaveEnvironment"}),
              Run());
    EXPECT_EQ(1, oBarren.m_nCalls);
}

TEST_F(CTOVTestRunnerTest, DoesNothingInAnInvalidCase)
{
    CPromisingCreator oCreator;
    AddCreator(&oCreator);

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|<Unkown test suite>", "EnterTestCase|<invalid test case>",
                      "LeaveTestCase|<invalid test case>", "LeaveSuite|<Unkown test suite>", "LeaveEnvironment"}),
              Run());
}

TEST_F(CTOVTestRunnerTest, DeletesEachSuiteAfterItsEnd)
{
    AddSuite("one", {});
    AddSuite("two", {});
    const int nBefore = CFunctionSuite::s_nAlive;
    std::vector<int> aAlive;
    m_oRecorder.m_fnOnEvent = [&](const std::string&) { aAlive.push_back(CFunctionSuite::s_nAlive - nBefore); };

    Run();

    EXPECT_EQ((std::vector<int>{0, 1, 1, 1, 1, 0}), aAlive);
}

TEST_F(CTOVTestRunnerTest, HandsTheRunningSuiteAndCaseToTheListener)
{
    const CTOVTestSuite* pSuite = nullptr;
    const CTOVTestCase* pCase = nullptr;
    AddSuite("suite", {[&] {
                 auto& oCounter = dynamic_cast<CTOVCountingTracker&>(CTOVTestTracker::Instance());
                 pSuite = &oCounter.GetCurrentTestSuite();
                 pCase = &oCounter.GetCurrentTestCase();
                 EXPECT_STREQ("suite", pSuite->GetDescription());
                 EXPECT_STREQ("first", pCase->GetDescription());
             }});

    Run();

    EXPECT_NE(nullptr, pSuite);
    EXPECT_EQ(&CTOVTestSuite::Null().GetTestCase(0), pCase);
}

TEST_F(CTOVTestRunnerTest, ShowsATrackerTheNullCaseEvenInACase)
{
    int nSeen = 0;
    AddSuite("suite", {[&] {
                 nSeen += &CTOVTestTracker::Instance().GetCurrentTestCase() == &CTOVTestCase::Null() ? 1 : 0;
                 nSeen += &CTOVTestTracker::Instance().GetCurrentTestSuite() == &CTOVTestSuite::Null() ? 1 : 0;
             }});

    Run();

    EXPECT_EQ(2, nSeen);
}

TEST_F(CTOVTestRunnerTest, CountsFailuresOfTheListenerInForce)
{
    AddSuite("suite", {[] { CTOVTestListener::Instance().FailedAssert("a.cpp", 1, "x"); }, [] {}});

    const tTexts aEvents = Run();

    ASSERT_EQ(9u, aEvents.size());
    EXPECT_EQ("FailedAssert|a.cpp|1|x", aEvents[3]);
    EXPECT_EQ(1, CTOVTestTracker::Instance().GetNumTotalFailedTests());
    EXPECT_EQ(1, CTOVTestTracker::Instance().GetNumFailedSuites());
}

TEST_F(CTOVTestRunnerTest, KeepsItsTotalsUntilTheNextRun)
{
    long lAtBegin = -1;
    AddFailingSuite(2);
    Run();
    EXPECT_EQ(2, CTOVTestTracker::Instance().GetNumTotalFailedTests());

    m_oRecorder.m_fnOnEvent = [&](const std::string& sEvent) {
        if (sEvent == "EnterEnvironment")
            lAtBegin = CTOVTestTracker::Instance().GetNumTotalFailedTests();
    };
    Run();

    EXPECT_EQ(0, lAtBegin);
    EXPECT_EQ(2, CTOVTestTracker::Instance().GetNumTotalFailedTests());
}

TEST_F(CTOVTestRunnerTest, PutsOneCounterInForceAndLeavesItThere)
{
    Run();

    auto* const pCounter = dynamic_cast<CTOVCountingTracker*>(&CTOVTestTracker::Instance());
    ASSERT_NE(nullptr, pCounter);
    EXPECT_EQ(pCounter, &CTOVTestListener::Instance());
    EXPECT_EQ(1, m_oHost.m_nSetListenerCalls);

    Run();
    EXPECT_EQ(pCounter, &CTOVTestTracker::Instance());
}

TEST_F(CTOVTestRunnerTest, PassesFailuresOnToItsListenerAfterTheRunToo)
{
    Run();
    m_oRecorder.m_aEvents.clear();

    CTOVTestListener::Instance().FailedTest("a.cpp", 1, "late");

    EXPECT_EQ(tTexts{"FailedTest|a.cpp|1|late"}, m_oRecorder.m_aEvents);
    EXPECT_EQ(1, CTOVTestTracker::Instance().GetNumFailedAsserts());
}

TEST_F(CTOVTestRunnerTest, TakesItsPlaceBackAtTheNextRun)
{
    CTOVTestListener oOther;
    CTOVTestTracker oTracker;
    AddFailingSuite(1);
    Run();
    CTOVTestListener::SetListener(&oOther);
    CTOVTestTracker::SetTracker(&oTracker);

    Run();

    EXPECT_NE(&oOther, &CTOVTestListener::Instance());
    EXPECT_EQ(1, CTOVTestTracker::Instance().GetNumTotalFailedTests());
}

TEST_F(CTOVTestRunnerTest, RunsForTheNullListenerWithoutOne)
{
    CEventRecorder oFormer;
    int nRuns = 0;
    AddSuite("suite", {[&] {
                 ++nRuns;
                 CTOVTestListener::Instance().FailedTest("a.cpp", 1, "broken");
             }});
    CTOVTestRunner::RunAllTests(&oFormer);
    oFormer.m_aEvents.clear();

    CTOVTestRunner::RunAllTests(0);

    EXPECT_EQ(2, nRuns);
    EXPECT_EQ(1, CTOVTestTracker::Instance().GetNumTotalFailedTests());
    EXPECT_EQ(tTexts(), oFormer.m_aEvents);
}

TEST_F(CTOVTestRunnerTest, EndsTheRunWithACaseThatThrows)
{
    CFunctionSuite& oSuite = AddSuite("suite", {[] {}, [] { throw std::runtime_error("past the checks"); }, [] {}});
    oSuite.m_fnClosedown = [this] { m_oRecorder.Remember("Closedown"); };
    AddSuite("after", {});

    EXPECT_THROW(Run(), std::runtime_error);

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|suite", "EnterTestCase|first", "LeaveTestCase|first", "Closedown",
                      "EnterTestCase|second"}),
              m_oRecorder.m_aEvents);
}

TEST_F(CTOVTestRunnerTest, LetsThroughTheVeryExceptionOfACase)
{
    AddSuite("suite", {[] { throw std::runtime_error("past the checks"); }});
    std::string sText;

    try
    {
        Run();
    }
    catch (const std::runtime_error& oException)
    {
        sText = oException.what();
    }

    EXPECT_EQ("past the checks", sText);
}

TEST_F(CTOVTestRunnerTest, EndsTheRunWithWhatThrowsAroundACase)
{
    CFunctionSuite& oSuite = AddSuite("suite", {[] {}});
    oSuite.m_fnStartup = [] { throw 7; };
    EXPECT_THROW(Run(), int);
    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|suite"}), m_oRecorder.m_aEvents);

    oSuite.m_fnStartup = nullptr;
    oSuite.m_fnClosedown = [] { throw 7; };
    EXPECT_THROW(Run(), int);
    EXPECT_EQ("LeaveTestCase|first", m_oRecorder.m_aEvents.back());
}

TEST_F(CTOVTestRunnerTest, GoesOnBehindASuiteWhoseEndFailsACheck)
{
    CTornCreator oCreator;
    AddCreator(&oCreator);
    AddSuite("after", {});

    EXPECT_TOLD_CHECK("m_pEventHandles != NULL", Run());

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|<Unkown test suite>", "LeaveSuite|<Unkown test suite>",
                      "EnterSuite|after", "LeaveSuite|after", "LeaveEnvironment"}),
              m_oRecorder.m_aEvents);
}

// The suite has gone with the exception, while the counter stays in force.
TEST_F(CTOVTestRunnerTest, KnowsNoSuiteAndNoCaseAfterARunThatThrew)
{
    AddSuite("suite", {[] { throw 7; }});
    EXPECT_THROW(Run(), int);

    CTOVCountingTracker& oCounter = static_cast<CTOVCountingTracker&>(CTOVTestListener::Instance());
    EXPECT_EQ(&CTOVTestSuite::Null(), &oCounter.GetCurrentTestSuite());
    EXPECT_EQ(&CTOVTestCase::Null(), &oCounter.GetCurrentTestCase());
}

TEST_F(CTOVTestRunnerTest, DeletesTheSuiteAndKeepsTheCountsWhenACaseThrows)
{
    const int nBefore = CFunctionSuite::s_nAlive;
    AddSuite("suite", {[] { CTOVTestListener::Instance().FailedTest("a.cpp", 1, "broken"); },
                       [] {
                           CTOVTestListener::Instance().FailedTest("a.cpp", 2, "broken");
                           throw 7;
                       }});
    const int nPattern = CFunctionSuite::s_nAlive - nBefore;

    EXPECT_THROW(Run(), int);

    const CTOVTestTracker& oTracker = CTOVTestTracker::Instance();
    EXPECT_EQ(nPattern, CFunctionSuite::s_nAlive - nBefore);
    EXPECT_EQ(1, oTracker.GetNumFailedAsserts());
    EXPECT_EQ(2, oTracker.GetNumFailedSuiteTests());
    EXPECT_EQ(1, oTracker.GetNumFailedSuites());
    EXPECT_EQ(2, oTracker.GetNumTotalFailedTests());
}

TEST_F(CTOVTestRunnerTest, StartsCleanAfterARunThatThrew)
{
    bool bThrows = true;
    AddSuite("suite", {[&] {
                 CTOVTestListener::Instance().FailedTest("a.cpp", 1, "broken");
                 if (bThrows)
                     throw 7;
             }});
    EXPECT_THROW(Run(), int);

    bThrows = false;
    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|suite", "EnterTestCase|first", "FailedTest|a.cpp|1|broken",
                      "LeaveTestCase|first", "LeaveSuite|suite", "LeaveEnvironment"}),
              Run());
    EXPECT_EQ(1, CTOVTestTracker::Instance().GetNumTotalFailedTests());
}

TEST_F(CTOVTestRunnerTest, SkipsASuiteThatIsUnregisteredAheadOfIt)
{
    AddSuite("one", {[this] { CTOVTestSuiteFactory::Unregister(NameOf(1)); }});
    AddSuite("two", {});
    AddSuite("three", {});

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|one", "EnterTestCase|first", "LeaveTestCase|first",
                      "LeaveSuite|one", "EnterSuite|three", "LeaveSuite|three", "LeaveEnvironment"}),
              Run());
}

TEST_F(CTOVTestRunnerTest, ClosesTheRunBehindASuiteThatUnregistersItself)
{
    AddSuite("one", {[this] { CTOVTestSuiteFactory::Unregister(NameOf(0)); }});
    AddSuite("two", {});

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|one", "EnterTestCase|first", "LeaveTestCase|first",
                      "LeaveSuite|one", "LeaveEnvironment"}),
              Run());
}
