// A main program with the ready-made exports has the one listener and the one map of the process.
#include "Support/TOVTestSupport.h"
#include "Test/TOVTestInstruments.h"

#include <TOVKernel.h>
#include <Test/TOVSimpleTestRunner.h>
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestDynamicSingleton.h>
#include <Test/TOVTestHooks.h>
#include <Test/TOVTestHost.h>
#include <Test/TOVTestSuiteDefinition.h>
#include <Test/TOVTestTracker.h>

TOV_TEST_HOST

using TOVTest::CTOVTestListener;
using TOVTest::CTOVTestSuiteFactory;
using TOVTest::CTOVTestTracker;

class CMacroHostSuite : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CMacroHostSuite)
    void Passes() { TOV_TEST_CHECK(true); }
    void Fails() { TOV_TEST_CHECK(false); }
};

// clang-format off
TOV_TEST_CASES_BEGIN(CMacroHostSuite, "Of the program")
    TOV_TEST_CASE("passes", Passes)
    TOV_TEST_CASE("fails", Fails)
TOV_TEST_CASES_END
// clang-format on
TOV_REGISTER_TEST_SUITE(CMacroHostSuite)

namespace
{
TOVTest::tCreatorMap& LibrarysOwnMap()
{
    return TOVTest::CTOVTestDynamicSingleton<TOVTest::tCreatorMap>::GetInstance();
}

// The one suite of this program, without those of the library.
class MacroHostTest : public testing::Test
{
protected:
    MacroHostTest() : m_aFormer(GetCreatorMapDirect())
    {
        for (const auto& oEntry : m_aFormer)
        {
            if (std::string(oEntry.first) != "CMacroHostSuite")
                GetCreatorMapDirect().erase(oEntry.first);
        }
    }

    ~MacroHostTest() override
    {
        GetCreatorMapDirect() = m_aFormer;
        SetListener(nullptr);
        CTOVTestTracker::SetTracker(nullptr);
    }

    const TOVTest::tCreatorMap m_aFormer;
};
} // namespace

TEST_F(MacroHostTest, HasTheNullListenerInForceAtFirst)
{
    EXPECT_EQ(&GetNull(), &GetListener());
    EXPECT_EQ(&GetNull(), &CTOVTestListener::Null());
    EXPECT_EQ(&GetNull(), &CTOVTestListener::Instance());
}

TEST_F(MacroHostTest, HoldsTheListenerOfTheProcess)
{
    CEventRecorder oRecorder;

    CTOVTestListener::SetListener(&oRecorder);
    EXPECT_EQ(&oRecorder, &GetListener());
    EXPECT_EQ(&oRecorder, &CTOVTestListener::Instance());

    CTOVTestListener::SetListener(nullptr);
    EXPECT_EQ(&GetNull(), &CTOVTestListener::Instance());
}

TEST_F(MacroHostTest, HoldsAllSuitesOfTheProcess)
{
    EXPECT_EQ(1, CTOVTestSuiteFactory::GetNumSuites());
    EXPECT_EQ(1u, GetCreatorMapDirect().size());
    EXPECT_NE(&GetCreatorMapDirect(), &LibrarysOwnMap());
    EXPECT_TRUE(LibrarysOwnMap().empty());
}

TEST_F(MacroHostTest, RunsAndCounts)
{
    CEventRecorder oRecorder;
    TOVTest::CTOVSimpleTestRunner oRunner;
    oRunner.AddListener(oRecorder);

    EXPECT_EQ(1, oRunner.Run());

    ASSERT_EQ(9u, oRecorder.m_aEvents.size());
    EXPECT_EQ("EnterSuite|Of the program", oRecorder.m_aEvents[1]);
    EXPECT_EQ("EnterTestCase|fails", oRecorder.m_aEvents[4]);
    EXPECT_EQ(0u, oRecorder.m_aEvents[5].find("FailedAssert|"));
}

TOV_CHILD(EndsBehindARun)
{
    TOVTest::CTOVSimpleTestRunner oRunner;
    oRunner.Run();
}

TEST_F(MacroHostTest, EndsWellBehindARun)
{
    const sChildResult oResult = RunChild("EndsBehindARun");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("", oResult.sOutput);
}
