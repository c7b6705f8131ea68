// A library's suites come with it into the one map of the main program, and go with it.
#include "Support/TOVLoadedModule.h"
#include "Support/TOVTestSupport.h"
#include "Test/TOVControlledHost.h"
#include "Test/TOVTestInstruments.h"

#include <Test/TOVSimpleTestRunner.h>
#include <Test/TOVTestTracker.h>

#include <set>

using TOVTest::CTOVTestSuiteFactory;

namespace
{
class SuiteModuleTest : public testing::Test
{
protected:
    SuiteModuleTest() : m_oCreator(CFunctionSuite("of the program")) {}

    ~SuiteModuleTest() override { TOVTest::CTOVTestTracker::SetTracker(nullptr); }

    // The names of all suites, whatever their order.
    static std::set<std::string> Names()
    {
        std::set<std::string> aNames;
        const char* szName = nullptr;
        for (bool bFound = CTOVTestSuiteFactory::GetFirst(szName); bFound;
             bFound = CTOVTestSuiteFactory::GetNext(szName, szName))
            aNames.insert(szName);
        return aNames;
    }

    CControlledHost m_oHost;
    CCopyCreator m_oCreator;
};
} // namespace

TEST_F(SuiteModuleTest, BringsAndTakesItsSuites)
{
    CTOVTestSuiteFactory::Register("CProgramTest", &m_oCreator);
    {
        const CLoadedModule oModule(TOV_SUITE_MODULE);
        EXPECT_EQ((std::set<std::string>{"CModuleFirstTest", "CModuleSecondTest", "CProgramTest"}), Names());
        EXPECT_EQ(3u, m_oHost.m_aCreators.size());
    }

    EXPECT_EQ(std::set<std::string>{"CProgramTest"}, Names());
}

TEST_F(SuiteModuleTest, RunsItsSuitesWithTheOthers)
{
    CEventRecorder oRecorder;
    TOVTest::CTOVSimpleTestRunner oRunner;
    oRunner.AddListener(oRecorder);
    CTOVTestSuiteFactory::Register("CProgramTest", &m_oCreator);
    {
        const CLoadedModule oModule(TOV_SUITE_MODULE);
        EXPECT_EQ(1, oRunner.Run());
    }

    const std::set<std::string> aEvents(oRecorder.m_aEvents.begin(), oRecorder.m_aEvents.end());
    for (const char* szEvent : {"EnterSuite|First of the module", "LeaveTestCase|passes", "LeaveTestCase|fails",
                                "LeaveSuite|Second of the module", "LeaveSuite|of the program"})
        EXPECT_EQ(1u, aEvents.count(szEvent)) << szEvent;
}

TEST_F(SuiteModuleTest, ComesAsOftenAsItIsLoaded)
{
    for (int i = 0; i < 3; ++i)
    {
        const CLoadedModule oModule(TOV_SUITE_MODULE);
        EXPECT_EQ(2, CTOVTestSuiteFactory::GetNumSuites());
    }

    EXPECT_EQ(0, CTOVTestSuiteFactory::GetNumSuites());
    EXPECT_EQ(0, TOVTest::CTOVSimpleTestRunner().Run());
}
