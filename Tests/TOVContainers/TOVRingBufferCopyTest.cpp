// Ring buffers copied, of elements that have to be looked after, and what they take from the heap.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVRefusal.h"
#include "TOVContainers/TOVCounted.h"
#include "TOVContainers/TOVRingBufferInstruments.h"

#include <string>
#include <vector>

TEST(CTOVRingBufferCopyTest, ACopyHasElementsAndPositionsOfItsOwn)
{
    tBuffer oBuffer(16);
    WriteAll(oBuffer, {1, 2});

    tBuffer oCopy(oBuffer);

    EXPECT_EQ(StateOf(oBuffer), StateOf(oCopy));
    EXPECT_EQ((sRingState{2, 16, !EMPTY, !FULL}), StateOf(oCopy));
    EXPECT_EQ((tValues{1, 2}), ReadAll(oBuffer));
    EXPECT_EQ((sRingState{2, 16, !EMPTY, !FULL}), StateOf(oCopy));
    EXPECT_EQ((tValues{1, 2}), ReadAll(oCopy));
}

TEST(CTOVRingBufferCopyTest, ACopyTakesThePlacesByIndexWhetherInUseOrNot)
{
    tBuffer oBuffer(3);
    int nValue = 0;
    WriteAll(oBuffer, {1, 2, 3});
    oBuffer.Read(nValue);
    oBuffer.Read(nValue);
    oBuffer.Write(4);

    tBuffer oCopy(oBuffer);

    EXPECT_NE(PlacesOf(oBuffer), PlacesOf(oCopy));
    EXPECT_EQ((tValues{4, 2, 3}), tValues(PlacesOf(oCopy), PlacesOf(oCopy) + 3));
    EXPECT_EQ(ReadPosOf(oBuffer), ReadPosOf(oCopy));
    EXPECT_EQ(WritePosOf(oBuffer), WritePosOf(oCopy));
    EXPECT_EQ((tValues{3, 4}), ReadAll(oCopy));
}

TEST(CTOVRingBufferCopyTest, AssignmentReplacesAllOfTheTarget)
{
    for (const long lCapacity : {0l, 2l, 3l, 20l})
    {
        tBuffer oBuffer(3);
        WriteAll(oBuffer, {1, 2});
        tBuffer oTarget(lCapacity);
        oTarget.Write(99);

        EXPECT_EQ(&oTarget, &(oTarget = oBuffer));

        EXPECT_EQ((sRingState{2, 3, !EMPTY, !FULL}), StateOf(oTarget));
        oTarget.Write(3);
        EXPECT_EQ((tValues{1, 2, 3}), ReadAll(oTarget));
        EXPECT_EQ((tValues{1, 2}), ReadAll(oBuffer));
    }
}

TEST(CTOVRingBufferCopyTest, ToItselfIsAssignedUnchanged)
{
    tBuffer oBuffer(3);
    WriteAll(oBuffer, {1, 2});
    const tBuffer& oSame = oBuffer;

    oBuffer = oSame;

    EXPECT_EQ((sRingState{2, 3, !EMPTY, !FULL}), StateOf(oBuffer));
    EXPECT_EQ((tValues{1, 2}), ReadAll(oBuffer));
}

TEST(CTOVRingBufferCopyTest, AFullBufferIsCopiedFull)
{
    tBuffer oBuffer(2);
    WriteAll(oBuffer, {1, 2});

    tBuffer oCopy(oBuffer);

    EXPECT_FALSE(oCopy.Write(3));
    EXPECT_EQ((sRingState{2, 2, !EMPTY, FULL}), StateOf(oCopy));
}

TEST(CTOVRingBufferCopyTest, ABufferWithoutACapacityIsCopiedToo)
{
    const tBuffer oNever;
    const tBuffer oCopy(oNever);
    tBuffer oTarget(3);
    oTarget.Write(1);

    oTarget = oNever;

    EXPECT_EQ((sRingState{0, 0, EMPTY, FULL}), StateOf(oCopy));
    EXPECT_EQ((sRingState{0, 0, EMPTY, FULL}), StateOf(oTarget));
}

TEST(CTOVRingBufferCopyTest, HoldsElementsThatOwnMemory)
{
    CTOVRingBuffer<std::string> oBuffer(2);
    const std::string sLong(100, 'x');
    oBuffer.Write(sLong);
    oBuffer.Write("b");

    CTOVRingBuffer<std::string> oCopy(oBuffer);
    oBuffer.SetCapacity(1);

    EXPECT_EQ((std::vector<std::string>{sLong, "b"}), ReadAll(oCopy));
    EXPECT_TRUE(oBuffer.IsEmpty());
}

TEST(CTOVRingBufferCopyTest, MakesAndEndsAsManyElementsAsItHasPlaces)
{
    sCounted::Reset();
    {
        CTOVRingBuffer<sCounted> oBuffer(3);
        EXPECT_EQ(3, sCounted::s_nAlive);

        oBuffer.SetCapacity(5);
        EXPECT_EQ(5, sCounted::s_nAlive);

        oBuffer.Clear();
        EXPECT_EQ(5, sCounted::s_nAlive);

        const CTOVRingBuffer<sCounted> oCopy(oBuffer);
        EXPECT_EQ(10, sCounted::s_nAlive);
    }
    EXPECT_EQ(0, sCounted::s_nAlive);
}

TEST(CTOVRingBufferCopyTest, CopiesOneElementAWriteAndARead)
{
    CTOVRingBuffer<sCounted> oBuffer(1);
    sCounted oElement(7);
    sCounted::Reset();

    oBuffer.Write(oElement);
    EXPECT_EQ(1, sCounted::s_nAssignments);
    oBuffer.Write(oElement);
    EXPECT_EQ(1, sCounted::s_nAssignments) << "refused";
    oBuffer.Read(oElement);
    EXPECT_EQ(2, sCounted::s_nAssignments);
    oBuffer.Read(oElement);
    EXPECT_EQ(2, sCounted::s_nAssignments) << "refused";
}

TEST(CTOVRingBufferCopyTest, ACopyThatFailsLeavesTheBufferAsItWas)
{
    CTOVRingBuffer<sCounted> oBuffer(3);
    sCounted oElement(7);
    sCounted::Reset();
    oBuffer.Write(oElement);

    sCounted::s_nAssignmentsUntilRefusal = 0;
    EXPECT_THROW(oBuffer.Write(oElement), std::runtime_error);
    EXPECT_EQ((sRingState{1, 3, !EMPTY, !FULL}), StateOf(oBuffer));

    sCounted::s_nAssignmentsUntilRefusal = 0;
    EXPECT_THROW(oBuffer.Read(oElement), std::runtime_error);
    EXPECT_EQ((sRingState{1, 3, !EMPTY, !FULL}), StateOf(oBuffer));

    sCounted::Reset();
    EXPECT_TRUE(oBuffer.Read(oElement));
    EXPECT_EQ(7, oElement.nValue);
}

TEST(CTOVRingBufferCopyTest, AnAssignmentThatFailsLeavesTheTargetEmpty)
{
    CTOVRingBuffer<sCounted> oBuffer(3);
    CTOVRingBuffer<sCounted> oTarget(5);
    sCounted::Reset();
    oBuffer.Write(sCounted(7));
    oTarget.Write(sCounted(8));

    sCounted::s_nAssignmentsUntilRefusal = 1;
    EXPECT_THROW(oTarget = oBuffer, std::runtime_error);

    EXPECT_EQ((sRingState{0, 3, EMPTY, !FULL}), StateOf(oTarget));
    EXPECT_EQ((sRingState{1, 3, !EMPTY, !FULL}), StateOf(oBuffer));
}

TEST(CTOVRingBufferCopyTest, ACopyThatCannotBeMadeLeavesNothingBehind)
{
    CTOVRingBuffer<sCounted> oBuffer(3);
    sCounted::s_nAssignmentsUntilRefusal = 1;

    EXPECT_THROW(CTOVRingBuffer<sCounted>{oBuffer}, std::runtime_error);

    EXPECT_EQ(3, sCounted::s_nAlive);
    sCounted::Reset();
}

TEST(CTOVRingBufferCopyTest, TakesMemoryForItsCapacityOnly)
{
    tBuffer oBuffer;
    int nValue = 0;
    CAllocationCounter oCapacity;
    oBuffer.SetCapacity(4);
    const unsigned long ulOfCapacity = oCapacity.Taken();

    CAllocationCounter oUse;
    for (int nRound = 0; nRound < 20; ++nRound)
    {
        oBuffer.Write(nRound);
        oBuffer.Read(nValue);
    }
    oBuffer.Clear();
    const unsigned long ulOfUse = oUse.Taken();

    EXPECT_EQ(1u, ulOfCapacity);
    EXPECT_EQ(0u, ulOfUse);
}

TEST(CTOVRingBufferCopyTest, GivesAllItsMemoryBack)
{
    const CAllocationCounter oCounter;
    {
        tBuffer oBuffer(10);
        oBuffer.SetCapacity(20);
        oBuffer.SetCapacity(0);
        oBuffer.SetCapacity(5);
        tBuffer oCopy(oBuffer);
        oCopy = oBuffer;
    }
    EXPECT_EQ(0, oCounter.Kept());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVRingBufferCopyTest, WithoutMemoryTheBufferStaysAsItWas)
{
    tBuffer oBuffer(3);
    WriteAll(oBuffer, {1, 2});
    EXPECT_TRUE(RunsOutOfMemory([&] { oBuffer.SetCapacity(5); }));
    EXPECT_EQ((sRingState{2, 3, !EMPTY, !FULL}), StateOf(oBuffer));
    EXPECT_EQ((tValues{1, 2}), ReadAll(oBuffer));
}
#endif
