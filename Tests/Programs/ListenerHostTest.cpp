// SetListener is all that a main program must export. For the rest, the framework's own stands in, and what the
// program keeps to itself does not count.
#include "Support/TOVTestSupport.h"
#include "Test/TOVTestInstruments.h"

#include <Test/TOVSimpleTestRunner.h>
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestDynamicSingleton.h>
#include <Test/TOVTestTracker.h>

using TOVTest::CTOVTestListener;
using TOVTest::CTOVTestSuiteFactory;
using TOVTest::CTOVTestTracker;

namespace
{
CTOVTestListener* s_pLastSet = nullptr;
int s_nHiddenCalls = 0;
} // namespace

TOV_PLAIN_NAMES_BEGIN
TOV_PROGRAM_EXPORT void SetListener(CTOVTestListener* pListener);

CTOVTestListener& GetListener();
CTOVTestListener& GetNull();
TOVTest::tCreatorMap& GetCreatorMapDirect();
TOV_PLAIN_NAMES_END

void SetListener(CTOVTestListener* pListener)
{
    s_pLastSet = pListener;
}

CTOVTestListener& GetListener()
{
    static CTOVTestListener s_oListener;
    ++s_nHiddenCalls;
    return s_oListener;
}

CTOVTestListener& GetNull()
{
    ++s_nHiddenCalls;
    return GetListener();
}

TOVTest::tCreatorMap& GetCreatorMapDirect()
{
    static TOVTest::tCreatorMap* const s_pMap = new TOVTest::tCreatorMap;
    ++s_nHiddenCalls;
    return *s_pMap;
}

namespace
{
constexpr char NAME[] = "CListenerHostTest";

// The library's map, with one suite in it.
class ListenerHostTest : public testing::Test
{
protected:
    ListenerHostTest() : m_oCreator(CFunctionSuite("suite", {[] { TOV_TEST_CHECK(false); }}))
    {
        Map().swap(m_aFormer);
        CTOVTestSuiteFactory::Register(NAME, &m_oCreator);
    }

    ~ListenerHostTest() override
    {
        Map().swap(m_aFormer);
        CTOVTestTracker::SetTracker(nullptr);
    }

    static TOVTest::tCreatorMap& Map()
    {
        return TOVTest::CTOVTestDynamicSingleton<TOVTest::tCreatorMap>::GetInstance();
    }

    TOVTest::tCreatorMap m_aFormer;
    CCopyCreator m_oCreator;
};
} // namespace

TEST_F(ListenerHostTest, GetsTheListener)
{
    CEventRecorder oRecorder;

    CTOVTestListener::SetListener(&oRecorder);
    EXPECT_EQ(&oRecorder, s_pLastSet);

    CTOVTestListener::SetListener(nullptr);
    EXPECT_EQ(nullptr, s_pLastSet);
}

TEST_F(ListenerHostTest, LeavesTheRestToTheLibrary)
{
    CEventRecorder oRecorder;
    s_nHiddenCalls = 0;
    CTOVTestListener::SetListener(&oRecorder);

    EXPECT_EQ(&CTOVTestListener::Null(), &CTOVTestListener::Instance());
    EXPECT_EQ(&m_oCreator, Map()[NAME]);
    EXPECT_EQ(1, CTOVTestSuiteFactory::GetNumSuites());
    EXPECT_EQ(0, s_nHiddenCalls);
}

// The checks ask for the library's listener, which this program's SetListener does not know.
TEST_F(ListenerHostTest, RunsAndMissesTheChecks)
{
    CEventRecorder oRecorder;
    TOVTest::CTOVSimpleTestRunner oRunner;
    oRunner.AddListener(oRecorder);

    EXPECT_EQ(0, oRunner.Run());

    EXPECT_EQ((tTexts{"EnterEnvironment", "EnterSuite|suite", "EnterTestCase|first", "LeaveTestCase|first",
                      "LeaveSuite|suite", "LeaveEnvironment"}),
              oRecorder.m_aEvents);
    EXPECT_EQ(dynamic_cast<void*>(&CTOVTestTracker::Instance()), dynamic_cast<void*>(s_pLastSet));
}
