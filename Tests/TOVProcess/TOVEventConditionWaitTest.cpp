// Waits for conditions over events.
#include "Support/TOVBlockableThread.h"
#include "TOVProcess/TOVConditionEvents.h"
#include "TOVProcess/TOVLockInstruments.h"

namespace
{
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

TEST_F(CTOVEventConditionWaitTest, AnEventWithoutAHandleMakesEachWaitFail)
{
    const CLostHandle oLost(HandleOf(m_aEvents[1]));
    tCondition oAny(ANY, m_aEvents, 4);
    tCondition oAll(ALL, m_aEvents, 4);
    m_aEvents[0].Signal();

    EXPECT_EQ(-1, oAny.Wait());
    EXPECT_EQ(-1, oAny.TimedWait(0));
    EXPECT_EQ(-1, oAll.Wait());
    EXPECT_EQ(-1, oAll.TimedWait(DEADLINE));
    EXPECT_TRUE(m_aEvents[0].TimedWait(0)) << "not cleared";
}
