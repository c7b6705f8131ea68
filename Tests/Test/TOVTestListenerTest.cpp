#include "Support/TOVTestSupport.h"
#include "Test/TOVControlledHost.h"
#include "Test/TOVTestInstruments.h"

#include <type_traits>

using TOVTest::CTOVTestListener;

static_assert(sizeof(CTOVTestListener) == sizeof(void*), "a listener has virtual operations and no data");
static_assert(!std::has_virtual_destructor_v<CTOVTestListener>, "the base has no virtual destructor");

TEST(CTOVTestListenerTest, DoesNothingByDefault)
{
    CTOVTestListener oListener;

    EXPECT_NO_CHECK(RaiseAllEvents(oListener));
}

TEST(CTOVTestListenerTest, HearsEachEventByItsOwnOperation)
{
    CEventRecorder oRecorder;

    RaiseAllEvents(oRecorder);

    EXPECT_EQ(AllEvents(), oRecorder.m_aEvents);
}

TEST(CTOVTestListenerTest, AsksTheMainProgramForTheNullListener)
{
    CControlledHost oHost;

    EXPECT_EQ(&oHost.m_oNull, &CTOVTestListener::Null());
    EXPECT_EQ(1, oHost.m_nNullCalls);
}

TEST(CTOVTestListenerTest, AsksTheMainProgramForTheListenerInForce)
{
    CControlledHost oHost;
    CEventRecorder oRecorder;
    oHost.m_pListener = &oRecorder;

    EXPECT_EQ(&oRecorder, &CTOVTestListener::Instance());
    EXPECT_EQ(&oRecorder, &CTOVTestListener::Instance());
    EXPECT_EQ(2, oHost.m_nListenerCalls);
}

TEST(CTOVTestListenerTest, GivesTheListenerToTheMainProgram)
{
    CControlledHost oHost;
    CEventRecorder oRecorder;

    CTOVTestListener::SetListener(&oRecorder);

    EXPECT_EQ(&oRecorder, oHost.m_pLastSet);
    EXPECT_EQ(1, oHost.m_nSetListenerCalls);
    EXPECT_EQ(&oRecorder, &CTOVTestListener::Instance());
}

TEST(CTOVTestListenerTest, GivesNullToTheMainProgramAsItStands)
{
    CControlledHost oHost;

    CTOVTestListener::SetListener(nullptr);

    EXPECT_EQ(nullptr, oHost.m_pLastSet);
    EXPECT_EQ(&oHost.m_oNull, &CTOVTestListener::Instance());
}

TEST(CTOVTestListenerTest, ReplacesAMissingListener)
{
    CControlledHost oHost;
    CEventRecorder oRecorder;

    EXPECT_EQ(&oRecorder, CTOVTestListener::GetSafeListener(&oRecorder));
    EXPECT_EQ(&oHost.m_oNull, CTOVTestListener::GetSafeListener(nullptr));
}

TEST(CTOVTestListenerTest, FollowsAChangeOfTheMainProgram)
{
    CControlledHost oHost;
    {
        CControlledHost oOther;
        EXPECT_EQ(&oOther.m_oNull, &CTOVTestListener::Null());
        EXPECT_EQ(&oOther.m_oNull, &CTOVTestListener::Instance());
    }

    EXPECT_EQ(&oHost.m_oNull, &CTOVTestListener::Null());
    EXPECT_EQ(&oHost.m_oNull, &CTOVTestListener::Instance());
}
