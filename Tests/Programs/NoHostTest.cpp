// Where the main program exports nothing, the framework has listener and map of its own, and no way to set a listener.
#include "Support/TOVLoadedModule.h"
#include "Support/TOVTestSupport.h"
#include "Test/TOVTestInstruments.h"

#include <Test/TOVSimpleTestRunner.h>
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestDynamicSingleton.h>
#include <Test/TOVTestHooks.h>
#include <Test/TOVTestRunner.h>

#include <cstdio>

using TOVTest::CTOVTestListener;
using TOVTest::CTOVTestSuiteFactory;

namespace
{
constexpr char NAME[] = "CNoHostTest";

// After each test, the library's listener is its null listener again.
class NoHostTest : public testing::Test
{
protected:
    ~NoHostTest() override { ::SetListener(nullptr); }
};

// Both streams of a child are one, and nothing of it may be lost when the child dies.
void Say(const char* szText)
{
    std::fputs(szText, stdout);
    std::fflush(stdout);
}

// A suite that is alone in the map, and whose case would be noticed.
void RegisterTellingSuite()
{
    static CCopyCreator s_oCreator(CFunctionSuite("telling", {[] { Say("case "); }}));
    ::GetCreatorMapDirect().clear();
    CTOVTestSuiteFactory::Register(NAME, &s_oCreator);
}

TOV_CHILD(SetsAListener)
{
    Say("before ");
    CTOVTestListener::SetListener(&CTOVTestListener::Null());
    Say("after ");
}

TOV_CHILD(SetsNoListener)
{
    Say("before ");
    CTOVTestListener::SetListener(nullptr);
    Say("after ");
}

TOV_CHILD(RunsAllTests)
{
    RegisterTellingSuite();
    Say("before ");
    TOVTest::CTOVTestRunner::RunAllTests(nullptr);
    Say("after ");
}

TOV_CHILD(RunsASimpleRunner)
{
    RegisterTellingSuite();
    Say("before ");
    TOVTest::CTOVSimpleTestRunner().Run();
    Say("after ");
}

TOV_CHILD(AsksAtFirst)
{
    const bool bNull = &CTOVTestListener::Instance() == &CTOVTestListener::Null() && &::GetListener() == &::GetNull();
    std::exit(bNull ? 0 : 1);
}

TOV_CHILD(EndsWithALoadedModule)
{
    new CLoadedModule(TOV_SUITE_MODULE);
    Say(CTOVTestSuiteFactory::GetNumSuites() >= 2 ? "loaded" : "not loaded");
}
} // namespace

class DeathWithoutSetListenerTest : public testing::TestWithParam<const char*>
{
};

// The process jumps to a null address. A sanitizer that catches this may say so after the output of the child.
TEST_P(DeathWithoutSetListenerTest, EndsTheProcessAtOnce)
{
    const sChildResult oResult = RunChild(GetParam());

    EXPECT_NE(0, oResult.nExitCode);
    EXPECT_EQ(0u, oResult.sOutput.find("before ")) << oResult.sOutput;
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("case ")) << oResult.sOutput;
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("after ")) << oResult.sOutput;
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("deadline")) << oResult.sOutput;
}

INSTANTIATE_TEST_SUITE_P(Calls, DeathWithoutSetListenerTest,
                         testing::Values("SetsAListener", "SetsNoListener", "RunsAllTests", "RunsASimpleRunner"));

TEST_F(NoHostTest, HasTheNullListenerInForceAtFirst)
{
    const sChildResult oResult = RunChild("AsksAtFirst");

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sOutput;
}

TEST_F(NoHostTest, FallsBackToTheLibrarysNullListener)
{
    EXPECT_EQ(&::GetNull(), &CTOVTestListener::Null());
    EXPECT_EQ(&::GetNull(), CTOVTestListener::GetSafeListener(nullptr));
}

TEST_F(NoHostTest, FallsBackToTheLibrarysListener)
{
    CEventRecorder oRecorder;

    ::SetListener(&oRecorder);

    EXPECT_EQ(&oRecorder, &::GetListener());
    EXPECT_EQ(&oRecorder, &CTOVTestListener::Instance());
}

TEST_F(NoHostTest, SetsTheLibrarysNullListenerForNull)
{
    CEventRecorder oRecorder;
    ::SetListener(&oRecorder);

    ::SetListener(nullptr);

    EXPECT_EQ(&::GetNull(), &::GetListener());
    EXPECT_EQ(&::GetNull(), &CTOVTestListener::Instance());
}

TEST_F(NoHostTest, TellsFailuresToTheLibrarysListener)
{
    CEventRecorder oRecorder;
    ::SetListener(&oRecorder);

    TOV_TEST_WARNING("heard");
    ::SetListener(nullptr);
    TOV_TEST_WARNING("not heard");

    ASSERT_EQ(1u, oRecorder.m_aEvents.size());
    EXPECT_NE(std::string::npos, oRecorder.m_aEvents[0].find("|heard"));
}

TEST_F(NoHostTest, FallsBackToTheLibrarysMap)
{
    CCopyCreator oCreator(CFunctionSuite("in the library's map"));
    const std::size_t nBefore = ::GetCreatorMapDirect().size();

    CTOVTestSuiteFactory::Register(NAME, &oCreator);
    EXPECT_EQ(nBefore + 1, ::GetCreatorMapDirect().size());
    EXPECT_EQ(&oCreator, ::GetCreatorMapDirect()[NAME]);
    EXPECT_EQ(static_cast<long>(nBefore + 1), CTOVTestSuiteFactory::GetNumSuites());

    CTOVTestSuiteFactory::Unregister(NAME);
    EXPECT_EQ(nBefore, ::GetCreatorMapDirect().size());
}

TEST_F(NoHostTest, HasTheLibrarysMapInItsHolder)
{
    EXPECT_EQ(&::GetCreatorMapDirect(), &::GetCreatorMapDirect());
    EXPECT_EQ(&::GetCreatorMapDirect(), &TOVTest::CTOVTestDynamicSingleton<TOVTest::tCreatorMap>::GetInstance());
}

TEST_F(NoHostTest, TakesTheSuitesOfAModuleIntoTheLibrarysMap)
{
    const long lBefore = CTOVTestSuiteFactory::GetNumSuites();
    {
        const CLoadedModule oModule(TOV_SUITE_MODULE);
        EXPECT_EQ(lBefore + 2, CTOVTestSuiteFactory::GetNumSuites());
        EXPECT_EQ(static_cast<std::size_t>(lBefore) + 2, ::GetCreatorMapDirect().size());
    }

    EXPECT_EQ(lBefore, CTOVTestSuiteFactory::GetNumSuites());
}

TEST_F(NoHostTest, EndsWellWithTheSuitesOfALoadedModule)
{
    const sChildResult oResult = RunChild("EndsWithALoadedModule");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("loaded", oResult.sOutput);
}
