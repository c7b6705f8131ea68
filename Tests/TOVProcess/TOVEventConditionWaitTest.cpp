// Waits for conditions over events.
#include "Support/TOVBlockableThread.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVWaitInstruments.h"
#include "TOVProcess/TOVConditionEvents.h"

namespace
{
TOV_PRIVATE_MEMBER(HandleOf, CTOVEvent, unsigned long long, m_hEvent)

class CTOVEventConditionWaitTest : public CConditionFixture
{
};
} // namespace

TEST_F(CTOVEventConditionWaitTest, AnyOfThemEndsTheWait)
{
    tCondition oCondition(ANY, m_aEvents, 4);
    EXPECT_EQ(-2, oCondition.TimedWait(0));

    m_aEvents[2].Signal();
    EXPECT_EQ(2, oCondition.Wait());

    m_aEvents[3].Signal();
    EXPECT_EQ(3, oCondition.TimedWait(DEADLINE));
    EXPECT_EQ(-2, oCondition.TimedWait(0));
}

TEST_F(CTOVEventConditionWaitTest, TheLowestOfSeveralEndsTheWaitAndIsClearedAlone)
{
    tCondition oCondition(ANY, m_aEvents, 4);
    m_aEvents[3].Signal();
    m_aEvents[1].Signal();
    m_aEvents[2].Signal();

    EXPECT_EQ(1, oCondition.Wait());
    EXPECT_EQ(2, oCondition.TimedWait(0));
    EXPECT_EQ(3, oCondition.Wait());
    EXPECT_EQ(-2, oCondition.TimedWait(0));
}

TEST_F(CTOVEventConditionWaitTest, AllOfThemHaveToBeSignalledAtOnce)
{
    tCondition oCondition(ALL, m_aEvents, 4);
    for (CTOVEvent& oEvent : m_aEvents)
    {
        EXPECT_EQ(-2, oCondition.TimedWait(0));
        oEvent.Signal();
    }

    const int nResult = oCondition.TimedWait(0);

    EXPECT_LE(0, nResult);
    EXPECT_GT(4, nResult);
    EXPECT_EQ(-2, oCondition.TimedWait(0));
}

TEST_F(CTOVEventConditionWaitTest, AWaitForAllClearsNothingUntilItEnds)
{
    tCondition oCondition(ALL, m_aEvents, 4);
    m_aEvents[0].Signal();

    EXPECT_EQ(-2, oCondition.TimedWait(0));
    EXPECT_TRUE(m_aEvents[0].TimedWait(0));

    for (CTOVEvent& oEvent : m_aEvents)
        oEvent.Signal();
    EXPECT_LE(0, oCondition.Wait());
    for (CTOVEvent& oEvent : m_aEvents)
        EXPECT_FALSE(oEvent.TimedWait(0));
}

TEST_F(CTOVEventConditionWaitTest, EventsWithManualResetStaySignalled)
{
    CTOVEvent aManual[2] = {CTOVEvent(true), CTOVEvent(true)};
    tCondition oAny(ANY, aManual, 2);
    tCondition oAll(ALL, aManual, 2);
    aManual[1].Signal();
    EXPECT_EQ(1, oAny.Wait());
    EXPECT_EQ(1, oAny.Wait());
    EXPECT_EQ(-2, oAll.TimedWait(0));

    aManual[0].Signal();
    EXPECT_LE(0, oAll.Wait());
    EXPECT_EQ(0, oAny.Wait());

    aManual[0].Reset();
    EXPECT_EQ(1, oAny.TimedWait(0));
}

TEST_F(CTOVEventConditionWaitTest, OneEventIsEnough)
{
    for (const tCondition::eConditionType eType : {ANY, ALL})
    {
        tCondition oCondition(eType, m_aEvents, 1);
        EXPECT_EQ(-2, oCondition.TimedWait(0));

        m_aEvents[1].Signal();
        EXPECT_EQ(-2, oCondition.TimedWait(0)) << "not one of its events";
        m_aEvents[0].Signal();
        EXPECT_EQ(0, oCondition.Wait());
    }
}

TEST_F(CTOVEventConditionWaitTest, ASignalFromBeforeItsTimeCountsToo)
{
    m_aEvents[1].Signal();

    tCondition oCondition(ANY, m_aEvents, 4);

    EXPECT_EQ(1, oCondition.Wait());
}

TEST_F(CTOVEventConditionWaitTest, OneEventMayStandThereTwice)
{
    CTOVEvent* aPointers[] = {&m_aEvents[0], &m_aEvents[1], &m_aEvents[1]};
    tCondition oCondition(ANY, aPointers, 3);

    m_aEvents[1].Signal();

    EXPECT_EQ(1, oCondition.Wait());
    EXPECT_EQ(-2, oCondition.TimedWait(0));
}

TEST_F(CTOVEventConditionWaitTest, EveryOtherTypeActsAsAny)
{
    for (const int nType : {2, 3, -1, 0x100, 0x101})
    {
        tCondition oCondition(static_cast<tCondition::eConditionType>(nType), m_aEvents, 4);
        EXPECT_EQ(-2, oCondition.TimedWait(0)) << nType;

        m_aEvents[1].Signal();
        EXPECT_EQ(1, oCondition.TimedWait(0)) << nType;
        m_aEvents[3].Signal();
        EXPECT_EQ(3, oCondition.Wait()) << nType;
    }
}

TEST_F(CTOVEventConditionWaitTest, BlocksUntilAnySignal)
{
    tCondition oCondition(ANY, m_aEvents, 4);
    int nResult = -100;
    CBlockableThread oWaiter([&] { nResult = oCondition.Wait(); });
    EXPECT_TRUE(oWaiter.IsBlocked());

    m_aEvents[3].Signal();

    ASSERT_TRUE(oWaiter.Finishes());
    EXPECT_EQ(3, nResult);
}

TEST_F(CTOVEventConditionWaitTest, BlocksUntilAllSignals)
{
    tCondition oCondition(ALL, m_aEvents, 4);
    int nResult = -100;
    CBlockableThread oWaiter([&] { nResult = oCondition.Wait(); });
    m_aEvents[0].Signal();
    m_aEvents[1].Signal();
    m_aEvents[3].Signal();
    EXPECT_TRUE(oWaiter.IsBlocked());

    m_aEvents[2].Signal();

    ASSERT_TRUE(oWaiter.Finishes());
    EXPECT_LE(0, nResult);
    EXPECT_GT(4, nResult);
}

TEST_F(CTOVEventConditionWaitTest, TimeRunsOut)
{
    tCondition oAny(ANY, m_aEvents, 4);
    tCondition oAll(ALL, m_aEvents, 4);
    m_aEvents[0].Signal();

    EXPECT_EQ(-2, oAll.TimedWait(20));
    EXPECT_EQ(0, oAny.TimedWait(20));
    EXPECT_EQ(-2, oAny.TimedWait(20));
}

TEST_F(CTOVEventConditionWaitTest, TheLargestTimeIsInfinite)
{
    tCondition oCondition(ANY, m_aEvents, 4);
    int nResult = -100;
    CBlockableThread oWaiter([&] { nResult = oCondition.TimedWait(0xFFFFFFFFul); });
    EXPECT_TRUE(oWaiter.IsBlocked());

    m_aEvents[0].Signal();

    ASSERT_TRUE(oWaiter.Finishes());
    EXPECT_EQ(0, nResult);
}

TEST_F(CTOVEventConditionWaitTest, ManyThreadsWaitOnOne)
{
    tCondition oCondition(ANY, m_aEvents, 4);
    CTally oEnded[4];
    CTally oAll;
    CThreadGroup oThreads;
    oThreads.Start(4, [&](int) {
        const int nResult = oCondition.TimedWait(DEADLINE);
        if (nResult >= 0)
            oEnded[nResult].Add();
        oAll.Add();
    });

    for (CTOVEvent& oEvent : m_aEvents)
        oEvent.Signal();

    EXPECT_TRUE(oAll.Reaches(4));
    for (const CTally& oTally : oEnded)
        EXPECT_EQ(1, oTally.Count());
}

TEST_F(CTOVEventConditionWaitTest, SixtyFourEventsCanBeWaitedForAndNotOneMore)
{
    CTOVEvent aMany[65];
    tCondition oMost(ANY, aMany, 64);
    tCondition oTooMany(ANY, aMany, 65);
    tCondition oTooManyForAll(ALL, aMany, 65);
    aMany[63].Signal();

    EXPECT_EQ(-1, oTooMany.Wait());
    EXPECT_EQ(-1, oTooMany.TimedWait(0));
    EXPECT_EQ(-1, oTooManyForAll.Wait());
    EXPECT_EQ(63, oMost.Wait());
    EXPECT_EQ(-2, oMost.TimedWait(0));
}

TEST_F(CTOVEventConditionWaitTest, AnEventWithoutAHandleMakesEachWaitFail)
{
    const unsigned long long hEvent = HandleOf(m_aEvents[1]);
    HandleOf(m_aEvents[1]) = 0;
    tCondition oAny(ANY, m_aEvents, 4);
    tCondition oAll(ALL, m_aEvents, 4);
    HandleOf(m_aEvents[1]) = hEvent;

    m_aEvents[0].Signal();

    EXPECT_EQ(-1, oAny.Wait());
    EXPECT_EQ(-1, oAny.TimedWait(0));
    EXPECT_EQ(-1, oAll.Wait());
    EXPECT_EQ(-1, oAll.TimedWait(DEADLINE));
    EXPECT_TRUE(m_aEvents[0].TimedWait(0)) << "not cleared";
}
