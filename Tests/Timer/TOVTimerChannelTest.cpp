// Definition, names and states of the channels.
#include "Support/TOVAllocationCounter.h"
#include "Timer/TOVTimerInstruments.h"

#include <TOVString/TOVResourceLoader.h>

#include <cstddef>
#include <type_traits>

namespace
{
class CTOVTimerChannelTest : public CTimerFixture
{
};

// A way of calling an operation, with its name for messages.
struct sOperation
{
    const char* szName;
    void (*fnCall)(CTOVTimer& oTimer, int nChannel);
};

#define TOV_OPERATION(Call)                                                                                            \
    {                                                                                                                  \
#Call, [](CTOVTimer & oTimer, int nChannel) { static_cast<void>(oTimer.Call); }                                \
    }

const sOperation RANGE_OPERATIONS[] = {
    TOV_OPERATION(GetChannelName(nChannel)),
    TOV_OPERATION(IsDefined(nChannel)),
    TOV_OPERATION(IsRunning(nChannel)),
    TOV_OPERATION(IsPaused(nChannel)),
    TOV_OPERATION(IsDefinedAndRunning(nChannel)),
    TOV_OPERATION(GetTime(nChannel)),
    TOV_OPERATION(GetTimeInMs(nChannel)),
    TOV_OPERATION(IsFrameTimeEnabled(nChannel)),
    TOV_OPERATION(GetFrameTime(nChannel)),
    TOV_OPERATION(GetFPS(nChannel)),
    TOV_OPERATION(Update(nChannel)),
};

const sOperation DEFINED_OPERATIONS[] = {
    TOV_OPERATION(Start(nChannel)),
    TOV_OPERATION(Stop(nChannel)),
};

const sOperation RUNNING_OPERATIONS[] = {
    TOV_OPERATION(Reset(nChannel)),           TOV_OPERATION(SetTime(nChannel, 1.0)),
    TOV_OPERATION(Pause(nChannel)),           TOV_OPERATION(Continue(nChannel)),
    TOV_OPERATION(EnableFrameTime(nChannel)), TOV_OPERATION(DisableFrameTime(nChannel)),
};

// Notes whether a channel is defined when its name is asked for.
class CNotingLoader : public ITOVResourceLoader
{
public:
    explicit CNotingLoader(const CTOVTimer& oTimer) : m_oTimer(oTimer) { SetInstance(this); }
    virtual ~CNotingLoader() { SetInstance(nullptr); }
    CNotingLoader(const CNotingLoader&) = delete;
    CNotingLoader& operator=(const CNotingLoader&) = delete;

    bool LoadString(long, CTOVStringA& oString) override
    {
        m_bDefined = m_oTimer.IsDefined(1);
        oString = "Loaded";
        return true;
    }

    bool m_bDefined = false;

private:
    const CTOVTimer& m_oTimer;
};

const char* const STRING_ID = reinterpret_cast<const char*>(static_cast<std::size_t>(7));

constexpr int OUTSIDE[] = {-1, 4, 5, -2147483647 - 1, 2147483647};

// All that the timer tells of its channels.
std::string StatesOf(const CTOVTimer& oTimer)
{
    std::string sStates = std::to_string(oTimer.GetNumChannels());
    for (int nChannel = 0; nChannel < TOV_TIMER_MAX_TIME_CHANNELS; ++nChannel)
    {
        const char* const szName = oTimer.GetChannelName(nChannel);
        sStates += std::string("; ") + (szName != nullptr ? szName : "no name");
        for (const bool bState : {oTimer.IsDefined(nChannel), oTimer.IsRunning(nChannel), oTimer.IsPaused(nChannel),
                                  oTimer.IsFrameTimeEnabled(nChannel)})
            sStates += bState ? " yes" : " no";
    }
    return sStates;
}

template<int nCount> void ExpectChecks(CTOVTimer& oTimer, const sOperation (&aOperations)[nCount], const char* szCheck)
{
    const std::string sStates = StatesOf(oTimer);
    for (const sOperation& oOperation : aOperations)
        for (const int nChannel : OUTSIDE)
        {
            SCOPED_TRACE(testing::Message() << oOperation.szName << " of " << nChannel);
            EXPECT_CHECK_AT("TOVTimer", szCheck, oOperation.fnCall(oTimer, nChannel));
        }
    EXPECT_EQ(sStates, StatesOf(oTimer));
}

static_assert(TOV_TIMER_MAX_TIME_CHANNELS == 4);
static_assert(std::has_virtual_destructor<CTOVTimer>::value);
static_assert(std::is_same<decltype(CTOVTimer::Instance()), CTOVTimer&>::value);
static_assert(std::is_same<decltype(std::declval<const CTOVTimer&>().GetNumChannels()), int>::value);
static_assert(std::is_same<decltype(std::declval<const CTOVTimer&>().GetTime(0)), double>::value);
static_assert(std::is_same<decltype(std::declval<const CTOVTimer&>().GetTimeInMs(0)), unsigned long>::value);
static_assert(std::is_same<decltype(std::declval<const CTOVTimer&>().GetTimeDirect()), double>::value);
static_assert(std::is_same<decltype(std::declval<const CTOVTimer&>().GetTimeInMsDirect()), unsigned long>::value);
static_assert(std::is_same<decltype(std::declval<const CTOVTimer&>().GetChannelName(0)), const char*>::value);
} // namespace

TEST_F(CTOVTimerChannelTest, HasFourPlacesHoweverManyAreDefined)
{
    EXPECT_EQ(4, m_oTimer.GetNumChannels());
    m_oTimer.DefineChannel(2, "Two");
    EXPECT_EQ(4, m_oTimer.GetNumChannels());
}

TEST_F(CTOVTimerChannelTest, IsUndefinedAtFirst)
{
    for (int nChannel = 0; nChannel < 4; ++nChannel)
    {
        EXPECT_FALSE(m_oTimer.IsDefined(nChannel));
        EXPECT_FALSE(m_oTimer.IsDefinedAndRunning(nChannel));
        EXPECT_EQ(0.0, m_oTimer.GetTime(nChannel));
        EXPECT_EQ(0ul, m_oTimer.GetTimeInMs(nChannel));
    }
    EXPECT_EQ(-1, m_oTimer.GetChannelByName(""));
}

TEST_F(CTOVTimerChannelTest, IsStoppedOnceDefined)
{
    for (int nChannel = 0; nChannel < 4; ++nChannel)
    {
        EXPECT_TRUE(m_oTimer.DefineChannel(nChannel, "Clock"));
        EXPECT_TRUE(m_oTimer.IsDefined(nChannel));
        EXPECT_EQ("Clock", NameOf(nChannel));
        EXPECT_FALSE(m_oTimer.IsRunning(nChannel));
        EXPECT_FALSE(m_oTimer.IsPaused(nChannel));
        EXPECT_FALSE(m_oTimer.IsDefinedAndRunning(nChannel));
        EXPECT_FALSE(m_oTimer.IsFrameTimeEnabled(nChannel));
        EXPECT_EQ(0.0, m_oTimer.GetTime(nChannel));
        EXPECT_EQ(0.0, m_oTimer.GetFrameTime(nChannel));
    }
}

TEST_F(CTOVTimerChannelTest, IsNotDefinedOutsideTheFourPlaces)
{
    for (const int nChannel : OUTSIDE)
    {
        EXPECT_NO_CHECK(EXPECT_FALSE(m_oTimer.DefineChannel(nChannel, "Clock")));
        EXPECT_NO_CHECK(EXPECT_FALSE(m_oTimer.UndefineChannel(nChannel)));
    }
    EXPECT_EQ(-1, m_oTimer.GetChannelByName("Clock"));
}

TEST_F(CTOVTimerChannelTest, IsNotDefinedTwice)
{
    StartChannel(1, "First");
    m_oClock.AdvanceMs(500);

    EXPECT_FALSE(m_oTimer.DefineChannel(1, "Second"));

    EXPECT_EQ("First", NameOf(1));
    EXPECT_TRUE(m_oTimer.IsRunning(1));
    EXPECT_EQ(0.5, m_oTimer.GetTime(1));
}

TEST_F(CTOVTimerChannelTest, CanBeDefinedAgainAfterItsEnd)
{
    StartChannel(1, "First");
    m_oTimer.Pause(1);

    EXPECT_TRUE(m_oTimer.UndefineChannel(1));
    EXPECT_FALSE(m_oTimer.IsDefined(1));
    EXPECT_EQ("", NameOf(1));
    EXPECT_TRUE(m_oTimer.DefineChannel(1, "Second"));

    EXPECT_EQ("Second", NameOf(1));
    EXPECT_FALSE(m_oTimer.IsRunning(1));
    EXPECT_FALSE(m_oTimer.IsPaused(1));
}

TEST_F(CTOVTimerChannelTest, CanBeUndefinedWithoutBeingDefined)
{
    EXPECT_TRUE(m_oTimer.UndefineChannel(0));
    EXPECT_TRUE(m_oTimer.UndefineChannel(3));
    EXPECT_FALSE(m_oTimer.IsDefined(3));
}

TEST_F(CTOVTimerChannelTest, KeepsItsOtherFlagsWhenUndefined)
{
    StartChannel(2);
    m_oTimer.EnableFrameTime(2);
    m_oTimer.Pause(2);

    m_oTimer.UndefineChannel(2);

    EXPECT_TRUE(m_oTimer.IsRunning(2));
    EXPECT_TRUE(m_oTimer.IsPaused(2));
    EXPECT_TRUE(m_oTimer.IsFrameTimeEnabled(2));
    EXPECT_FALSE(m_oTimer.IsDefinedAndRunning(2));
    EXPECT_EQ(0.0, m_oTimer.GetTime(2));
}

TEST_F(CTOVTimerChannelTest, ForgetsWhatItWasWhenDefinedAgain)
{
    StartChannel(2);
    m_oTimer.EnableFrameTime(2);
    m_oClock.AdvanceMs(250);
    m_oTimer.Update(2);
    m_oTimer.Pause(2);
    m_oTimer.UndefineChannel(2);
    m_oTimer.DefineChannel(2, "Again");

    EXPECT_FALSE(m_oTimer.IsRunning(2));
    EXPECT_FALSE(m_oTimer.IsPaused(2));
    EXPECT_FALSE(m_oTimer.IsFrameTimeEnabled(2));
    EXPECT_EQ(4.0, m_oTimer.GetFPS(2)); // the rate alone stays
}

// Settled: a channel is defined first and named then.
TEST_F(CTOVTimerChannelTest, IsDefinedBeforeItIsNamed)
{
    const CNotingLoader oLoader(m_oTimer);

    EXPECT_TRUE(m_oTimer.DefineChannel(1, STRING_ID));

    EXPECT_TRUE(oLoader.m_bDefined);
    EXPECT_EQ("Loaded", NameOf(1));
}

TEST_F(CTOVTimerChannelTest, IsDefinedAlthoughItCannotBeNamed)
{
    EXPECT_CHECK("m_pInstance != NULL", m_oTimer.DefineChannel(1, STRING_ID)); // there is no loader

    EXPECT_TRUE(m_oTimer.IsDefined(1));
    EXPECT_EQ("", NameOf(1));
    EXPECT_FALSE(m_oTimer.DefineChannel(1, "Again"));
    EXPECT_TRUE(m_oTimer.UndefineChannel(1));
    EXPECT_TRUE(m_oTimer.DefineChannel(1, "Again"));
}

TEST_F(CTOVTimerChannelTest, IsFoundByItsNameWithoutRegardToCase)
{
    m_oTimer.DefineChannel(0, "World");
    m_oTimer.DefineChannel(3, "Interface");

    EXPECT_EQ(0, m_oTimer.GetChannelByName("World"));
    EXPECT_EQ(3, m_oTimer.GetChannelByName("iNTERFACE"));
    EXPECT_EQ(-1, m_oTimer.GetChannelByName("Interfac"));
    EXPECT_EQ(-1, m_oTimer.GetChannelByName("Interfaces"));
    EXPECT_EQ(-1, m_oTimer.GetChannelByName(""));
}

TEST_F(CTOVTimerChannelTest, IsNoLongerFoundOnceUndefined)
{
    m_oTimer.DefineChannel(0, "World");
    m_oTimer.UndefineChannel(0);

    EXPECT_EQ(-1, m_oTimer.GetChannelByName("World"));
    EXPECT_EQ(-1, m_oTimer.GetChannelByName(""));
}

TEST_F(CTOVTimerChannelTest, SharesItsNameAndTheLowestIsFound)
{
    EXPECT_TRUE(m_oTimer.DefineChannel(3, "Same"));
    EXPECT_TRUE(m_oTimer.DefineChannel(1, "SAME"));
    EXPECT_TRUE(m_oTimer.DefineChannel(2, "same"));
    EXPECT_EQ(1, m_oTimer.GetChannelByName("Same"));

    m_oTimer.UndefineChannel(1);

    EXPECT_EQ(2, m_oTimer.GetChannelByName("Same"));
}

TEST_F(CTOVTimerChannelTest, HasAnEmptyNameForNull)
{
    EXPECT_TRUE(m_oTimer.DefineChannel(1, nullptr));

    EXPECT_EQ("", NameOf(1));
    EXPECT_EQ(1, m_oTimer.GetChannelByName(nullptr));
    EXPECT_EQ(1, m_oTimer.GetChannelByName(""));
    EXPECT_EQ(-1, m_oTimer.GetChannelByName("1"));
}

TEST_F(CTOVTimerChannelTest, IsFoundByNullIfItsNameIsEmpty)
{
    m_oTimer.DefineChannel(0, "World");
    m_oTimer.DefineChannel(2, "");

    EXPECT_EQ(2, m_oTimer.GetChannelByName(nullptr));
}

TEST_F(CTOVTimerChannelTest, HasANameOfItsOwn)
{
    char szName[] = "World";
    m_oTimer.DefineChannel(0, szName);

    szName[0] = 'w';

    EXPECT_EQ("World", NameOf(0));
}

TEST_F(CTOVTimerChannelTest, LosesNoNameToAnother)
{
    m_oTimer.DefineChannel(0, "World");
    m_oTimer.DefineChannel(1, m_oTimer.GetChannelName(0));

    m_oTimer.UndefineChannel(0);

    EXPECT_EQ("World", NameOf(1));
}

TEST_F(CTOVTimerChannelTest, IsCheckedToBeOneOfTheFour)
{
    ExpectChecks(m_oTimer, RANGE_OPERATIONS, RANGE_CHECK);
    ExpectChecks(m_oTimer, DEFINED_OPERATIONS, DEFINED_CHECK);
    ExpectChecks(m_oTimer, RUNNING_OPERATIONS, RUNNING_CHECK);
}

TEST_F(CTOVTimerChannelTest, IsCheckedToBeDefined)
{
    const std::string sStates = StatesOf(m_oTimer);
    for (const sOperation& oOperation : DEFINED_OPERATIONS)
    {
        SCOPED_TRACE(oOperation.szName);
        EXPECT_CHECK_AT("TOVTimer", DEFINED_CHECK, oOperation.fnCall(m_oTimer, 0));
    }
    EXPECT_EQ(sStates, StatesOf(m_oTimer));
}

TEST_F(CTOVTimerChannelTest, IsCheckedToBeRunning)
{
    m_oTimer.DefineChannel(1, "Stopped");
    const std::string sStates = StatesOf(m_oTimer);
    for (const sOperation& oOperation : RUNNING_OPERATIONS)
        for (const int nChannel : {0, 1})
        {
            SCOPED_TRACE(testing::Message() << oOperation.szName << " of " << nChannel);
            EXPECT_CHECK_AT("TOVTimer", RUNNING_CHECK, oOperation.fnCall(m_oTimer, nChannel));
        }
    EXPECT_EQ(sStates, StatesOf(m_oTimer));
}

TEST_F(CTOVTimerChannelTest, IsNotRunningOnceUndefined)
{
    StartChannel(0);
    m_oTimer.UndefineChannel(0);

    for (const sOperation& oOperation : RUNNING_OPERATIONS)
        EXPECT_CHECK_AT("TOVTimer", RUNNING_CHECK, oOperation.fnCall(m_oTimer, 0));
}

TEST_F(CTOVTimerChannelTest, IsAskedInAnyStateWithoutACheck)
{
    m_oTimer.DefineChannel(1, "Stopped");
    for (int nChannel = 0; nChannel < 2; ++nChannel)
        for (const sOperation& oOperation : RANGE_OPERATIONS)
        {
            SCOPED_TRACE(testing::Message() << oOperation.szName << " of " << nChannel);
            EXPECT_NO_CHECK(oOperation.fnCall(m_oTimer, nChannel));
        }
}

TEST_F(CTOVTimerChannelTest, StaysAsItIsAfterAFailedCheck)
{
    m_oTimer.DefineChannel(1, "Stopped");
    for (const sOperation& oOperation : RUNNING_OPERATIONS)
        EXPECT_THROW(oOperation.fnCall(m_oTimer, 1), TOVDebug::CTOVAssertException);

    EXPECT_FALSE(m_oTimer.IsRunning(1));
    EXPECT_FALSE(m_oTimer.IsPaused(1));
    EXPECT_FALSE(m_oTimer.IsFrameTimeEnabled(1));
}

TEST_F(CTOVTimerChannelTest, TakesMemoryForItsNameAlone)
{
    m_oTimer.DefineChannel(0, "World");
    const CAllocationCounter oCounter;
    for (const sOperation& oOperation : DEFINED_OPERATIONS)
        oOperation.fnCall(m_oTimer, 0);
    m_oTimer.Start(0);
    for (const sOperation& oOperation : RUNNING_OPERATIONS)
        oOperation.fnCall(m_oTimer, 0);
    for (const sOperation& oOperation : RANGE_OPERATIONS)
        oOperation.fnCall(m_oTimer, 0);
    m_oTimer.UpdateAll();
    m_oTimer.GetTimeDirect();
    m_oTimer.GetTimeInMsDirect();
    m_oTimer.GetChannelByName("wORLD");
    m_oTimer.UndefineChannel(0);

    EXPECT_EQ(0u, oCounter.Taken());
}

TEST_F(CTOVTimerChannelTest, IsUndefinedForItselfWhereACopySharesItsName)
{
    m_oTimer.DefineChannel(0, "World");
    const CTOVTimer oCopy(m_oTimer);

    EXPECT_TRUE(m_oTimer.UndefineChannel(0));

    EXPECT_EQ("", NameOf(0));
    EXPECT_STREQ("World", oCopy.GetChannelName(0));
}

TEST_F(CTOVTimerChannelTest, TakesNoMemoryForALineInTheLog)
{
    StartChannel(0);
    m_oTimer.Pause(0);
    const CAllocationCounter oCounter;
    m_oTimer.Pause(0);
    m_oTimer.Continue(0);
    m_oTimer.Continue(0);
    m_oClock.FailCounter();
    m_oTimer.GetTime(0);

    EXPECT_EQ(0u, oCounter.Taken());
}

TEST_F(CTOVTimerChannelTest, IsCopiedWithEverythingThatItHolds)
{
    StartChannel(0, "Paused");
    StartChannel(3, "Frames");
    m_oClock.AdvanceMs(250);
    m_oTimer.EnableFrameTime(3);
    m_oTimer.Update(3);
    m_oTimer.Pause(0);
    m_oClock.AdvanceMs(500);
    const CTOVTimer oCopy(m_oTimer);

    EXPECT_STREQ("Paused", oCopy.GetChannelName(0));
    EXPECT_TRUE(oCopy.IsPaused(0));
    EXPECT_EQ(0.25, oCopy.GetTime(0));
    EXPECT_FALSE(oCopy.IsDefined(1));
    EXPECT_STREQ("Frames", oCopy.GetChannelName(3));
    EXPECT_EQ(0.75, oCopy.GetTime(3));
    EXPECT_TRUE(oCopy.IsFrameTimeEnabled(3));
    EXPECT_EQ(0.25, oCopy.GetFrameTime(3));
    EXPECT_EQ(4.0, oCopy.GetFPS(3));
}

TEST_F(CTOVTimerChannelTest, IsReplacedByAnAssignment)
{
    CTOVTimer oOther;
    oOther.DefineChannel(0, "Old");
    oOther.Start(0);
    oOther.DefineChannel(1, "Gone");
    StartChannel(0, "New");
    m_oClock.AdvanceMs(250);
    m_oTimer.Update(0);
    m_oTimer.Stop(0);

    CTOVTimer& oResult = (oOther = m_oTimer);

    EXPECT_EQ(&oOther, &oResult);
    EXPECT_STREQ("New", oOther.GetChannelName(0));
    EXPECT_FALSE(oOther.IsRunning(0));
    EXPECT_EQ(4.0, oOther.GetFPS(0));
    EXPECT_FALSE(oOther.IsDefined(1));
}

TEST_F(CTOVTimerChannelTest, GoesItsOwnWayAfterACopy)
{
    StartChannel(0, "Both");
    CTOVTimer oCopy(m_oTimer);

    m_oTimer.UndefineChannel(0);
    oCopy.Pause(0);
    m_oClock.AdvanceMs(250);

    EXPECT_STREQ("Both", oCopy.GetChannelName(0));
    EXPECT_EQ(0.0, oCopy.GetTime(0));
    EXPECT_FALSE(m_oTimer.IsPaused(0));
}

TEST_F(CTOVTimerChannelTest, IsItselfAfterAnAssignmentToItself)
{
    StartChannel(0, "Same");
    m_oClock.AdvanceMs(250);
    const CTOVTimer& oSame = m_oTimer;

    m_oTimer = oSame;

    EXPECT_EQ("Same", NameOf(0));
    EXPECT_EQ(0.25, m_oTimer.GetTime(0));
}
