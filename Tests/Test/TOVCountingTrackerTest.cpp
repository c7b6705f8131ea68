#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"
#include "Test/TOVControlledHost.h"
#include "Test/TOVTestInstruments.h"

#include <Test/TOVCountingTracker.h>

#include <functional>
#include <type_traits>

using TOVTest::CTOVCountingTracker;
using TOVTest::CTOVTestCase;
using TOVTest::CTOVTestListener;
using TOVTest::CTOVTestSuite;
using TOVTest::CTOVTestTracker;

namespace
{
TOV_PRIVATE_MEMBER(Listener, CTOVCountingTracker, CTOVTestListener*, m_pListener)
TOV_PRIVATE_MEMBER(CurrentSuite, CTOVCountingTracker, const CTOVTestSuite*, m_pCurrentSuite)
TOV_PRIVATE_MEMBER(CurrentCase, CTOVCountingTracker, const CTOVTestCase*, m_pCurrentTestCase)
TOV_PRIVATE_MEMBER(FailedAsserts, CTOVCountingTracker, long, m_lFailedAsserts)
TOV_PRIVATE_MEMBER(FailedSuiteTests, CTOVCountingTracker, long, m_lFailedSuiteTests)
TOV_PRIVATE_MEMBER(FailedSuites, CTOVCountingTracker, long, m_lFailedSuites)
TOV_PRIVATE_MEMBER(TotalFailedTests, CTOVCountingTracker, long, m_lTotalFailedTests)

struct sCounts
{
    long lAsserts;
    long lSuiteTests;
    long lSuites;
    long lTotalTests;
};

bool operator==(const sCounts& oFirst, const sCounts& oSecond)
{
    return oFirst.lAsserts == oSecond.lAsserts && oFirst.lSuiteTests == oSecond.lSuiteTests &&
           oFirst.lSuites == oSecond.lSuites && oFirst.lTotalTests == oSecond.lTotalTests;
}

std::ostream& operator<<(std::ostream& oOutput, const sCounts& oCounts)
{
    return oOutput << oCounts.lAsserts << " asserts, " << oCounts.lSuiteTests << " tests of the suite, "
                   << oCounts.lSuites << " suites, " << oCounts.lTotalTests << " tests";
}

sCounts CountsOf(const CTOVTestTracker& oTracker)
{
    return {oTracker.GetNumFailedAsserts(), oTracker.GetNumFailedSuiteTests(), oTracker.GetNumFailedSuites(),
            oTracker.GetNumTotalFailedTests()};
}

// A counter that has begun a run, and passes its events to a listener.
class CTOVCountingTrackerTest : public testing::Test
{
protected:
    CTOVCountingTrackerTest()
    {
        m_oCounter.SetListener(&m_oRecorder);
        m_oCounter.EnterEnvironment();
    }

    // A case with so many failed checks.
    void RunCase(int nFailures)
    {
        m_oCounter.EnterTestCase(m_oCase);
        for (int i = 0; i < nFailures; ++i)
            m_oCounter.FailedAssert("a.cpp", 1, "x");
        m_oCounter.LeaveTestCase(m_oCase);
    }

    // A suite of cases with so many failed checks each.
    void RunSuite(const std::vector<int>& aFailures)
    {
        m_oCounter.EnterSuite(m_oSuite);
        for (const int nFailures : aFailures)
            RunCase(nFailures);
        m_oCounter.LeaveSuite(m_oSuite);
    }

    // What the counter tells at the time of the listener's event of this name.
    template<class T> void AtEvent(const std::string& sEvent, T fnLook)
    {
        m_oRecorder.m_fnOnEvent = [=](const std::string& sLine) {
            if (sLine.substr(0, sLine.find('|')) == sEvent)
                fnLook();
        };
    }

    CControlledHost m_oHost;
    CEventRecorder m_oRecorder;
    CTOVCountingTracker m_oCounter;
    CTOVTestSuite m_oSuite;
    CTOVTestCase m_oCase;
};

const void* Address(const void* pAddress)
{
    return pAddress;
}
} // namespace

static_assert(std::is_base_of_v<CTOVTestListener, CTOVCountingTracker>, "it listens");
static_assert(std::is_base_of_v<CTOVTestTracker, CTOVCountingTracker>, "it tracks");

TEST_F(CTOVCountingTrackerTest, KeepsItsMembersInOrderBehindItsBases)
{
    CTOVTestListener* const pListener = &m_oCounter;
    CTOVTestTracker* const pTracker = &m_oCounter;

    EXPECT_EQ(Address(&m_oCounter), Address(pListener));
    EXPECT_LT(Address(pListener), Address(pTracker));
    EXPECT_LT(Address(pTracker), Address(&Listener(m_oCounter)));
    EXPECT_LT(Address(&Listener(m_oCounter)), Address(&CurrentSuite(m_oCounter)));
    EXPECT_LT(Address(&CurrentSuite(m_oCounter)), Address(&CurrentCase(m_oCounter)));
    EXPECT_LT(Address(&CurrentCase(m_oCounter)), Address(&FailedAsserts(m_oCounter)));
    EXPECT_LT(Address(&FailedAsserts(m_oCounter)), Address(&FailedSuiteTests(m_oCounter)));
    EXPECT_LT(Address(&FailedSuiteTests(m_oCounter)), Address(&FailedSuites(m_oCounter)));
    EXPECT_LT(Address(&FailedSuites(m_oCounter)), Address(&TotalFailedTests(m_oCounter)));
}

TEST_F(CTOVCountingTrackerTest, BeginsWithoutCurrentObjects)
{
    CTOVCountingTracker oCounter;

    EXPECT_EQ(nullptr, CurrentSuite(oCounter));
    EXPECT_EQ(nullptr, CurrentCase(oCounter));
}

TEST_F(CTOVCountingTrackerTest, CanBeUsedWithoutAListener)
{
    CTOVCountingTracker oCounter;

    RaiseAllEvents(oCounter);

    EXPECT_EQ((sCounts{9, 1, 1, 1}), CountsOf(oCounter));
}

TEST_F(CTOVCountingTrackerTest, GivesTheNullObjectsBeforeTheFirstRun)
{
    CTOVCountingTracker oCounter;

    EXPECT_EQ(&CTOVTestSuite::Null(), &oCounter.GetCurrentTestSuite());
    EXPECT_EQ(&CTOVTestCase::Null(), &oCounter.GetCurrentTestCase());
}

TEST_F(CTOVCountingTrackerTest, PassesOnEveryEventWithItsArguments)
{
    m_oRecorder.m_aEvents.clear();

    RaiseAllEvents(m_oCounter);

    EXPECT_EQ(AllEvents(), m_oRecorder.m_aEvents);
}

TEST_F(CTOVCountingTrackerTest, CountsEachOfTheEightFailures)
{
    const tTexts aFailures = AllFailures();
    m_oCounter.EnterSuite(m_oSuite);
    m_oCounter.EnterTestCase(m_oCase);
    m_oRecorder.m_aEvents.clear();
    m_oRecorder.m_fnOnEvent = [this](const std::string& sEvent) {
        EXPECT_EQ(static_cast<long>(m_oRecorder.m_aEvents.size()), m_oCounter.GetNumFailedAsserts()) << sEvent;
    };

    RaiseAllFailures(m_oCounter);

    EXPECT_EQ(aFailures, m_oRecorder.m_aEvents);
    EXPECT_EQ((sCounts{static_cast<long>(aFailures.size()), 1, 1, 1}), CountsOf(m_oCounter));
}

TEST_F(CTOVCountingTrackerTest, CountsFailedChecksCasesAndSuites)
{
    const struct
    {
        const char* szWhat;
        std::vector<std::vector<int>> aSuites; // the failed checks of their cases
        sCounts oCounts;
    } aRows[] = {
        {"a failed case once", {{3}}, {3, 1, 1, 1}},        {"a failed suite once", {{1, 2}}, {2, 2, 1, 2}},
        {"each failed suite", {{1}, {0, 2}}, {2, 1, 2, 2}}, {"no case that passes", {{0, 1, 0}}, {0, 1, 1, 1}},
        {"a suite that passes", {{1}, {0}}, {0, 0, 1, 1}},
    };
    for (const auto& oRow : aRows)
    {
        m_oCounter.EnterEnvironment();
        for (const std::vector<int>& aFailures : oRow.aSuites)
            RunSuite(aFailures);

        EXPECT_EQ(oRow.oCounts, CountsOf(m_oCounter)) << oRow.szWhat;
    }
}

TEST_F(CTOVCountingTrackerTest, CountsAFailureBetweenTwoCasesForTheCaseBeforeIt)
{
    m_oCounter.EnterSuite(m_oSuite);
    m_oCounter.FailedAssertThrowsNot("File", 1, "in front of all cases");
    EXPECT_EQ((sCounts{1, 1, 1, 1}), CountsOf(m_oCounter));

    RunCase(1);
    m_oCounter.FailedAssertThrowsNot("File", 1, "behind a case that failed");
    EXPECT_EQ((sCounts{2, 2, 1, 2}), CountsOf(m_oCounter));

    RunCase(0);
    m_oCounter.FailedAssertThrowsNot("File", 1, "behind a case that passed");
    EXPECT_EQ((sCounts{1, 3, 1, 3}), CountsOf(m_oCounter));
}

TEST_F(CTOVCountingTrackerTest, CountsNoWarning)
{
    m_oCounter.EnterSuite(m_oSuite);
    m_oCounter.EnterTestCase(m_oCase);

    RaiseWarning(m_oCounter);

    EXPECT_EQ((sCounts{0, 0, 0, 0}), CountsOf(m_oCounter));
    EXPECT_FALSE(m_oCounter.HasTestFailed());
    EXPECT_FALSE(m_oCounter.HasSuiteFailed());
    EXPECT_FALSE(m_oCounter.HasEnvironmentFailed());
}

TEST_F(CTOVCountingTrackerTest, TellsWhatHasFailed)
{
    m_oCounter.EnterSuite(m_oSuite);
    RunCase(1);
    EXPECT_TRUE(m_oCounter.HasTestFailed());

    m_oCounter.EnterTestCase(m_oCase);
    EXPECT_FALSE(m_oCounter.HasTestFailed());
    EXPECT_TRUE(m_oCounter.HasSuiteFailed());

    m_oCounter.EnterSuite(m_oSuite);
    EXPECT_FALSE(m_oCounter.HasSuiteFailed());
    EXPECT_TRUE(m_oCounter.HasEnvironmentFailed());
}

TEST_F(CTOVCountingTrackerTest, KeepsItsTotalsUntilTheNextRun)
{
    RunSuite({1, 1});
    RunSuite({2});
    m_oCounter.LeaveEnvironment();
    EXPECT_EQ((sCounts{2, 1, 2, 3}), CountsOf(m_oCounter));

    m_oCounter.EnterEnvironment();
    EXPECT_EQ((sCounts{0, 0, 0, 0}), CountsOf(m_oCounter));
}

TEST_F(CTOVCountingTrackerTest, ClearsItsCountersBeforeItPassesOnABegin)
{
    const struct
    {
        const char* szEvent;
        std::function<void()> fnBegin;
        sCounts oExpected;
    } aRows[] = {
        {"EnterTestCase", [this] { m_oCounter.EnterTestCase(m_oCase); }, {0, 1, 1, 1}},
        {"EnterSuite", [this] { m_oCounter.EnterSuite(m_oSuite); }, {0, 0, 1, 1}},
        {"EnterEnvironment", [this] { m_oCounter.EnterEnvironment(); }, {0, 0, 0, 0}},
    };
    m_oCounter.EnterSuite(m_oSuite);
    RunCase(2);
    for (const auto& oRow : aRows)
    {
        sCounts oSeen = {-1, -1, -1, -1};
        AtEvent(oRow.szEvent, [&] { oSeen = CountsOf(m_oCounter); });

        oRow.fnBegin();

        EXPECT_EQ(oRow.oExpected, oSeen) << oRow.szEvent;
    }
}

TEST_F(CTOVCountingTrackerTest, KnowsTheSuiteFromItsBeginToItsEnd)
{
    const CTOVTestSuite* pAtBegin = nullptr;
    const CTOVTestSuite* pAtEnd = nullptr;
    AtEvent("EnterSuite", [&] { pAtBegin = &m_oCounter.GetCurrentTestSuite(); });
    m_oCounter.EnterSuite(m_oSuite);
    EXPECT_EQ(&m_oSuite, &m_oCounter.GetCurrentTestSuite());

    AtEvent("LeaveSuite", [&] { pAtEnd = &m_oCounter.GetCurrentTestSuite(); });
    m_oCounter.LeaveSuite(m_oSuite);

    EXPECT_EQ(&m_oSuite, pAtBegin);
    EXPECT_EQ(&m_oSuite, pAtEnd);
    EXPECT_EQ(&CTOVTestSuite::Null(), &m_oCounter.GetCurrentTestSuite());
    EXPECT_EQ(&CTOVTestSuite::Null(), CurrentSuite(m_oCounter));
}

TEST_F(CTOVCountingTrackerTest, KnowsTheCaseFromItsBeginToItsEnd)
{
    const CTOVTestCase* pAtBegin = nullptr;
    const CTOVTestCase* pAtEnd = nullptr;
    m_oCounter.EnterSuite(m_oSuite);
    AtEvent("EnterTestCase", [&] { pAtBegin = &m_oCounter.GetCurrentTestCase(); });
    m_oCounter.EnterTestCase(m_oCase);
    EXPECT_EQ(&m_oCase, &m_oCounter.GetCurrentTestCase());

    AtEvent("LeaveTestCase", [&] { pAtEnd = &m_oCounter.GetCurrentTestCase(); });
    m_oCounter.LeaveTestCase(m_oCase);

    EXPECT_EQ(&m_oCase, pAtBegin);
    EXPECT_EQ(&m_oCase, pAtEnd);
    EXPECT_EQ(&CTOVTestCase::Null(), &m_oCounter.GetCurrentTestCase());
    EXPECT_EQ(&CTOVTestCase::Null(), CurrentCase(m_oCounter));
}

TEST_F(CTOVCountingTrackerTest, ForgetsTheCaseAtTheEdgesOfASuite)
{
    m_oCounter.EnterTestCase(m_oCase);
    m_oCounter.EnterSuite(m_oSuite);
    EXPECT_EQ(&CTOVTestCase::Null(), &m_oCounter.GetCurrentTestCase());

    m_oCounter.EnterTestCase(m_oCase);
    m_oCounter.LeaveSuite(m_oSuite);
    EXPECT_EQ(&CTOVTestCase::Null(), &m_oCounter.GetCurrentTestCase());
}

TEST_F(CTOVCountingTrackerTest, ShowsTheNullObjectsToWhoKnowsATracker)
{
    const CTOVTestTracker* const pTracker = &m_oCounter;
    m_oCounter.EnterSuite(m_oSuite);
    m_oCounter.EnterTestCase(m_oCase);

    EXPECT_EQ(&CTOVTestCase::Null(), &pTracker->GetCurrentTestCase());
    EXPECT_EQ(&CTOVTestSuite::Null(), &pTracker->GetCurrentTestSuite());
    EXPECT_EQ(&m_oCase, &m_oCounter.GetCurrentTestCase());
    EXPECT_EQ(&m_oSuite, &m_oCounter.GetCurrentTestSuite());
}

TEST_F(CTOVCountingTrackerTest, ShowsItsCountsToWhoKnowsATracker)
{
    const CTOVTestTracker* const pTracker = &m_oCounter;
    RunSuite({2, 1});

    EXPECT_EQ((sCounts{1, 2, 1, 2}), CountsOf(*pTracker));
}

TEST_F(CTOVCountingTrackerTest, TakesTheNullListenerForNull)
{
    m_oRecorder.m_aEvents.clear();

    m_oCounter.SetListener(nullptr);
    RaiseAllEvents(m_oCounter);

    EXPECT_EQ(&m_oHost.m_oNull, Listener(m_oCounter));
    EXPECT_EQ(tTexts(), m_oRecorder.m_aEvents);
}

TEST_F(CTOVCountingTrackerTest, PassesEventsToItsLatestListener)
{
    CEventRecorder oOther;
    m_oRecorder.m_aEvents.clear();

    m_oCounter.SetListener(&oOther);
    m_oCounter.LeaveEnvironment();

    EXPECT_EQ(tTexts{"LeaveEnvironment"}, oOther.m_aEvents);
    EXPECT_EQ(tTexts(), m_oRecorder.m_aEvents);
}

TEST_F(CTOVCountingTrackerTest, CopiesAllMembers)
{
    RunSuite({1});
    m_oCounter.EnterSuite(m_oSuite);
    RunCase(1);
    m_oCounter.EnterTestCase(m_oCase);
    m_oCounter.FailedAssert("a.cpp", 1, "x");
    CTOVCountingTracker oAssigned;

    CTOVCountingTracker oCopy(m_oCounter);
    EXPECT_EQ(&oAssigned, &(oAssigned = m_oCounter));

    for (CTOVCountingTracker* pCopy : {&oCopy, &oAssigned})
    {
        EXPECT_EQ((sCounts{1, 2, 2, 3}), CountsOf(*pCopy));
        EXPECT_EQ(&m_oSuite, &pCopy->GetCurrentTestSuite());
        EXPECT_EQ(&m_oCase, &pCopy->GetCurrentTestCase());
        EXPECT_EQ(&m_oRecorder, Listener(*pCopy));
    }
}

TEST_F(CTOVCountingTrackerTest, CountsApartFromItsCopies)
{
    CTOVCountingTracker oCopy(m_oCounter);

    oCopy.FailedAssert("a.cpp", 1, "x");

    EXPECT_EQ(1, oCopy.GetNumFailedAsserts());
    EXPECT_EQ(0, m_oCounter.GetNumFailedAsserts());
}
