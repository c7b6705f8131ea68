// Conditions over events: what they are made of, what they hold, copies, memory.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVRefusal.h"
#include "Support/TOVUnended.h"
#include "Support/TOVWaitInstruments.h"
#include "TOVProcess/TOVConditionEvents.h"

#include <TOVContainers/TOVArray.h>

#include <climits>
#include <functional>
#include <memory>
#include <type_traits>

namespace
{
TOV_PRIVATE_MEMBER(TypeOf, tCondition, tCondition::eConditionType, m_eConditionType)
TOV_PRIVATE_MEMBER(HandlesOf, tCondition, unsigned long long*, m_pEventHandles)
TOV_PRIVATE_MEMBER(NumberOf, tCondition, int, m_nNumEvents)

static_assert(tCondition::eConditionTypeAny == 0);
static_assert(tCondition::eConditionTypeAll == 1);
static_assert(std::has_virtual_destructor<tCondition>::value);

// Nobody destroys these: copies share the array of handles, which belongs to the original.
typedef CUnended<tCondition> tCopy;

class CTOVEventConditionTest : public CConditionFixture
{
};
} // namespace

TEST_F(CTOVEventConditionTest, IsMadeOfPointersToEvents)
{
    CTOVEvent* aPointers[] = {&m_aEvents[3], &m_aEvents[0], &m_aEvents[1]};
    tCondition oAny(ANY, aPointers, 3);
    tCondition oAll(ALL, aPointers, 3);

    m_aEvents[2].Signal();
    EXPECT_EQ(-2, oAny.TimedWait(0)) << "not one of its events";
    m_aEvents[0].Signal();
    EXPECT_EQ(1, oAny.Wait());
    m_aEvents[3].Signal();
    EXPECT_EQ(0, oAny.Wait());

    EXPECT_EQ(-2, oAll.TimedWait(0));
    for (CTOVEvent* const pEvent : aPointers)
        pEvent->Signal();
    EXPECT_LE(0, oAll.Wait());
}

TEST_F(CTOVEventConditionTest, IsMadeOfAnArrayObject)
{
    CTOVArray<CTOVEvent> aEvents;
    aEvents.Resize(3);
    tCondition oAny(ANY, aEvents);
    tCondition oAll(ALL, aEvents);
    EXPECT_EQ(-2, oAny.TimedWait(0));

    aEvents[2].Signal();
    EXPECT_EQ(2, oAny.Wait());

    for (long lEvent = 0; lEvent < 3; ++lEvent)
    {
        EXPECT_EQ(-2, oAll.TimedWait(0));
        aEvents[lEvent].Signal();
    }
    EXPECT_LE(0, oAll.Wait());
}

// The array's own virtual operations are asked.
TEST_F(CTOVEventConditionTest, AsksTheArrayObjectForSizeAndElements)
{
    class CFirstTwice : public CTOVArray<CTOVEvent>
    {
    public:
        CFirstTwice() { Resize(1); }
        long GetSize() const override { return 2; }
        bool IsEmpty() const override { return false; }
        const CTOVEvent& GetAt(long) const override { return CTOVArray<CTOVEvent>::GetAt(0); }
        const CTOVEvent& operator[](long) const override { return CTOVArray<CTOVEvent>::GetAt(0); }
        CTOVEvent& operator[](long) override { return CTOVArray<CTOVEvent>::ElementAt(0); }
    };
    const CFirstTwice aEvents;

    tCondition oCondition(ANY, aEvents);

    EXPECT_EQ(2, NumberOf(oCondition));
    EXPECT_EQ(aEvents.GetAt(0).GetHandle(), HandlesOf(oCondition)[0]);
    EXPECT_EQ(aEvents.GetAt(0).GetHandle(), HandlesOf(oCondition)[1]);
}

TEST_F(CTOVEventConditionTest, HoldsTheHandlesAsTheyWere)
{
    tCondition oCondition(ALL, m_aEvents, 4);

    EXPECT_EQ(ALL, TypeOf(oCondition));
    EXPECT_EQ(4, NumberOf(oCondition));
    for (int nEvent = 0; nEvent < 4; ++nEvent)
        EXPECT_EQ(m_aEvents[nEvent].GetHandle(), HandlesOf(oCondition)[nEvent]) << nEvent;
}

TEST_F(CTOVEventConditionTest, TheArraysItIsMadeOfMayGo)
{
    auto pPointers = std::make_unique<CTOVEvent*[]>(2);
    pPointers[0] = &m_aEvents[0];
    pPointers[1] = &m_aEvents[1];
    tCondition oCondition(ANY, pPointers.get(), 2);
    pPointers.reset();

    m_aEvents[1].Signal();

    EXPECT_EQ(1, oCondition.Wait());
}

TEST_F(CTOVEventConditionTest, RefusesNoEvents)
{
    CTOVEvent* const pNone = nullptr;
    CTOVEvent** const ppNone = nullptr;
    CTOVEvent* aPointers[] = {&m_aEvents[0]};

    EXPECT_CHECK("pEvents != NULL", tCondition(ANY, pNone, 1));
    EXPECT_CHECK("pEvents != NULL", tCondition(ANY, pNone, 0));
    EXPECT_CHECK("pEvents != NULL", tCondition(ALL, ppNone, 1));
    EXPECT_CHECK("pEvents != NULL", tCondition(ALL, ppNone, -1));
    for (const int nNumber : {0, -1, INT_MIN})
    {
        EXPECT_CHECK("nNumEvents > 0", tCondition(ANY, m_aEvents, nNumber));
        EXPECT_CHECK("nNumEvents > 0", tCondition(ALL, aPointers, nNumber));
    }
    EXPECT_CHECK("!oEvents.IsEmpty()", tCondition(ANY, CTOVArray<CTOVEvent>()));
}

TEST_F(CTOVEventConditionTest, RefusesMoreEventsThanThereCanBeHandles)
{
    CTOVEvent* aPointers[] = {&m_aEvents[0]};

    EXPECT_CHECK("m_pEventHandles != NULL", tCondition(ANY, m_aEvents, INT_MAX));
    EXPECT_CHECK("m_pEventHandles != NULL", tCondition(ALL, aPointers, INT_MAX));
}

TEST_F(CTOVEventConditionTest, LeavesTheEventsAloneAtItsEnd)
{
    m_aEvents[1].Signal();
    {
        const tCondition oCondition(ALL, m_aEvents, 4);
    }

    EXPECT_TRUE(m_aEvents[1].TimedWait(0));
    EXPECT_EQ(-2, WaitForAny({m_aEvents[0], m_aEvents[1], m_aEvents[2], m_aEvents[3]}, 0));
}

TEST_F(CTOVEventConditionTest, ACopySharesTheArrayOfHandles)
{
    tCondition oCondition(ALL, m_aEvents, 4);
    tCopy oCopy(oCondition);

    EXPECT_EQ(ALL, TypeOf(*oCopy));
    EXPECT_EQ(HandlesOf(oCondition), HandlesOf(*oCopy));
    EXPECT_EQ(4, NumberOf(*oCopy));
    EXPECT_EQ(-2, oCopy->TimedWait(0));
    for (CTOVEvent& oEvent : m_aEvents)
        oEvent.Signal();
    EXPECT_LE(0, oCopy->Wait());
}

TEST_F(CTOVEventConditionTest, AssignmentDropsTheOldArrayWithoutReleasingIt)
{
    const tCondition oSource(ALL, m_aEvents, 2);
    tCondition oTarget(ANY, m_aEvents, 4);
    unsigned long long* const pOld = HandlesOf(oTarget);
    CAllocationCounter oCounter;
    oTarget = oSource;
    const unsigned long ulReleased = oCounter.Released();

    EXPECT_EQ(0u, ulReleased);
    EXPECT_EQ(ALL, TypeOf(oTarget));
    EXPECT_EQ(2, NumberOf(oTarget));
    EXPECT_NE(pOld, HandlesOf(oTarget));
    EXPECT_EQ(m_aEvents[3].GetHandle(), pOld[3]);
    EXPECT_EQ(-2, oTarget.TimedWait(0));

    HandlesOf(oTarget) = pOld; // so that each destructor has an array of its own
}

TEST_F(CTOVEventConditionTest, ToItselfIsAssignedUnchanged)
{
    tCondition oCondition(ANY, m_aEvents, 4);
    const tCondition& oSame = oCondition;

    EXPECT_EQ(&oCondition, &(oCondition = oSame));
    m_aEvents[2].Signal();

    EXPECT_EQ(2, oCondition.Wait());
}

TEST_F(CTOVEventConditionTest, WaitsRefuseAMissingArrayFirstAndThenANumberBelowOne)
{
    const tCondition oCondition(ANY, m_aEvents, 4);
    tCopy oNoArray(oCondition);
    HandlesOf(*oNoArray) = nullptr;
    NumberOf(*oNoArray) = 0;
    tCopy oNoNumber(oCondition);

    EXPECT_CHECK("m_pEventHandles != NULL", oNoArray->Wait());
    EXPECT_CHECK("m_pEventHandles != NULL", oNoArray->TimedWait(0));
    for (const int nNumber : {0, -1})
    {
        NumberOf(*oNoNumber) = nNumber;
        EXPECT_CHECK("m_nNumEvents > 0", oNoNumber->Wait());
        EXPECT_CHECK("m_nNumEvents > 0", oNoNumber->TimedWait(0));
        EXPECT_EQ(nNumber, NumberOf(*oNoNumber));
    }
    EXPECT_EQ(nullptr, HandlesOf(*oNoArray));
}

TEST_F(CTOVEventConditionTest, TellsAtItsEndThatItHasNoArray)
{
    const tCondition oCondition(ANY, m_aEvents, 4);
    tCopy oNoArray(oCondition);
    HandlesOf(*oNoArray) = nullptr;

    EXPECT_TOLD_CHECK_AT("TOVEventCondition", "m_pEventHandles != NULL", oNoArray.End());
}

TEST_F(CTOVEventConditionTest, TakesMemoryWhenItIsMadeOnly)
{
    CAllocationCounter oCounter;
    {
        tCondition oCondition(ANY, m_aEvents, 4);
        const unsigned long ulMade = oCounter.Taken();
        oCondition.TimedWait(0);
        m_aEvents[0].Signal();
        oCondition.Wait();
        const unsigned long ulWaited = oCounter.Taken();

        EXPECT_EQ(1u, ulMade);
        EXPECT_EQ(ulMade, ulWaited);
    }
    EXPECT_EQ(0, oCounter.Kept());
}

TEST_F(CTOVEventConditionTest, ARefusedOneLeavesNothingBehind)
{
    const CAllocationCounter oCounter;
    EXPECT_TRUE(FailsACheck([this] { tCondition oCondition(ANY, m_aEvents, 0); }));
    EXPECT_EQ(0, oCounter.Kept());
}

TEST_F(CTOVEventConditionTest, LeavesNothingBehindWhenTheArraysElementAccessThrows)
{
    class CThrowingArray : public CTOVArray<CTOVEvent>
    {
    public:
        CThrowingArray() { Resize(3); }
        using CTOVArray<CTOVEvent>::operator[];
        const CTOVEvent& operator[](long lIndex) const override
        {
            if (lIndex == 1)
                throw 7;
            return GetAt(lIndex);
        }
    };
    const CThrowingArray aEvents;
    bool bThrew = false;
    CAllocationCounter oCounter;
    try
    {
        tCondition oCondition(ANY, aEvents);
    }
    catch (int)
    {
        bThrew = true;
    }
    const long lKept = oCounter.Kept();

    EXPECT_TRUE(bThrew);
    EXPECT_EQ(0, lKept);
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST_F(CTOVEventConditionTest, IsNotMadeWithoutMemory)
{
    CTOVEvent* aPointers[] = {&m_aEvents[0]};
    CTOVArray<CTOVEvent> aEvents;
    aEvents.Resize(1);
    const std::function<void()> aWays[] = {[&] { tCondition(ANY, m_aEvents, 4); },
                                           [&] { tCondition(ALL, aPointers, 1); }, [&] { tCondition(ANY, aEvents); }};
    for (const auto& fnWay : aWays)
    {
        CQuietRecorder oRecorder;
        bool bRefused = false;
        {
            const CAllocationFailure oFailure;
            bRefused = FailsACheck(fnWay);
        }
        EXPECT_TRUE(bRefused);
        EXPECT_STREQ("m_pEventHandles != NULL", oRecorder.Text());
    }
}
#endif
