// Ring buffers alone: capacity, writing and reading.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVLayout.h"
#include "TOVContainers/TOVRingBufferInstruments.h"

#include <climits>
#include <deque>
#include <new>
#include <type_traits>

TEST(CTOVRingBufferTest, HasNoCapacityAtFirst)
{
    const tBuffer oBuffer;

    EXPECT_EQ((sRingState{0, 0, EMPTY, FULL}), StateOf(oBuffer));
}

TEST(CTOVRingBufferTest, HoldsItsMembersInOrder)
{
    tBuffer oBuffer(3);

    ExpectMembersInOrder(oBuffer, PlacesOf(oBuffer), CountOf(oBuffer), CapacityOf(oBuffer), ReadPosOf(oBuffer),
                         WritePosOf(oBuffer));
    static_assert(std::has_virtual_destructor<tBuffer>::value);
}

TEST(CTOVRingBufferTest, HasNoArrayBeforeItsFirstCapacity)
{
    tBuffer oBuffer;
    EXPECT_EQ(nullptr, PlacesOf(oBuffer));

    oBuffer.SetCapacity(3);
    EXPECT_NE(nullptr, PlacesOf(oBuffer));
}

TEST(CTOVRingBufferTest, RefusesAllWithoutACapacity)
{
    tBuffer oNever;
    tBuffer oZero(0);
    tBuffer oNoMore(5);
    oNoMore.SetCapacity(0);
    int nValue = 7;

    for (tBuffer* const pBuffer : {&oNever, &oZero, &oNoMore})
    {
        EXPECT_FALSE(pBuffer->Write(1));
        EXPECT_FALSE(pBuffer->Read(nValue));
        pBuffer->Clear();
        EXPECT_EQ((sRingState{0, 0, EMPTY, FULL}), StateOf(*pBuffer));
    }
    EXPECT_EQ(7, nValue);
}

TEST(CTOVRingBufferTest, IsMadeWithACapacity)
{
    const tBuffer oBuffer(10);

    EXPECT_EQ((sRingState{0, 10, EMPTY, !FULL}), StateOf(oBuffer));
}

TEST(CTOVRingBufferTest, WritesAndReads)
{
    tBuffer oBuffer(10);
    int nValue = 0;

    EXPECT_TRUE(oBuffer.Write(123));
    EXPECT_EQ((sRingState{1, 10, !EMPTY, !FULL}), StateOf(oBuffer));

    EXPECT_TRUE(oBuffer.Read(nValue));
    EXPECT_EQ(123, nValue);
    EXPECT_EQ((sRingState{0, 10, EMPTY, !FULL}), StateOf(oBuffer));
}

TEST(CTOVRingBufferTest, RefusesToReadFromAnEmptyBuffer)
{
    tBuffer oBuffer(10);
    int nValue = 7;

    EXPECT_FALSE(oBuffer.Read(nValue));
    EXPECT_EQ(7, nValue);

    oBuffer.Write(1);
    oBuffer.Read(nValue);
    EXPECT_FALSE(oBuffer.Read(nValue));
    EXPECT_EQ(1, nValue);
    EXPECT_EQ((sRingState{0, 10, EMPTY, !FULL}), StateOf(oBuffer));
}

TEST(CTOVRingBufferTest, RefusesToWriteIntoAFullBuffer)
{
    tBuffer oBuffer(16);

    for (int nValue = 1; nValue <= 16; ++nValue)
        EXPECT_TRUE(oBuffer.Write(nValue)) << nValue;
    EXPECT_FALSE(oBuffer.Write(17));

    EXPECT_EQ((sRingState{16, 16, !EMPTY, FULL}), StateOf(oBuffer));
    EXPECT_EQ((tValues{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}), ReadAll(oBuffer));
}

TEST(CTOVRingBufferTest, ARefusedWriteMovesNothing)
{
    tBuffer oBuffer(3);
    WriteAll(oBuffer, {1, 2, 3});

    oBuffer.Write(4);

    EXPECT_EQ(0, WritePosOf(oBuffer));
    EXPECT_EQ(0, ReadPosOf(oBuffer));
    EXPECT_EQ(1, PlacesOf(oBuffer)[0]);
}

TEST(CTOVRingBufferTest, PositionsWrapAtTheCapacity)
{
    tBuffer oBuffer(3);
    int nValue = 0;
    WriteAll(oBuffer, {1, 2});
    oBuffer.Read(nValue);
    EXPECT_EQ(1, ReadPosOf(oBuffer));
    EXPECT_EQ(2, WritePosOf(oBuffer));

    WriteAll(oBuffer, {3, 4});
    EXPECT_EQ(1, WritePosOf(oBuffer));
    EXPECT_EQ((sRingState{3, 3, !EMPTY, FULL}), StateOf(oBuffer));

    EXPECT_EQ((tValues{2, 3, 4}), ReadAll(oBuffer));
    EXPECT_EQ(1, ReadPosOf(oBuffer));
}

TEST(CTOVRingBufferTest, OnePlaceIsEnough)
{
    tBuffer oBuffer(1);
    int nValue = 0;

    for (int nRound = 1; nRound < 4; ++nRound)
    {
        EXPECT_TRUE(oBuffer.Write(nRound));
        EXPECT_FALSE(oBuffer.Write(99));
        EXPECT_TRUE(oBuffer.Read(nValue));
        EXPECT_EQ(nRound, nValue);
        EXPECT_FALSE(oBuffer.Read(nValue));
    }
}

// Every way of writing up to five and reading up to five, round after round, against a queue of the standard library.
TEST(CTOVRingBufferTest, StaysFirstInFirstOutHoweverOftenItWraps)
{
    tBuffer oBuffer(4);
    std::deque<int> aExpected;
    for (int nRound = 0; nRound < 36 * 5; ++nRound)
    {
        for (int nWrite = 0; nWrite < nRound % 6; ++nWrite)
        {
            const int nValue = nRound * 10 + nWrite;
            EXPECT_EQ(aExpected.size() < 4, oBuffer.Write(nValue));
            if (aExpected.size() < 4)
                aExpected.push_back(nValue);
        }
        for (int nRead = 0; nRead < nRound / 6 % 6; ++nRead)
        {
            int nValue = -1;
            EXPECT_EQ(!aExpected.empty(), oBuffer.Read(nValue));
            EXPECT_EQ(aExpected.empty() ? -1 : aExpected.front(), nValue);
            if (!aExpected.empty())
                aExpected.pop_front();
        }
        ASSERT_EQ(static_cast<long>(aExpected.size()), oBuffer.GetCount());
    }
}

TEST(CTOVRingBufferTest, ClearKeepsCapacityAndArray)
{
    tBuffer oBuffer(16);
    for (int nValue = 1; nValue <= 16; ++nValue)
        oBuffer.Write(nValue);
    const int* const pPlaces = PlacesOf(oBuffer);

    oBuffer.Clear();

    EXPECT_EQ((sRingState{0, 16, EMPTY, !FULL}), StateOf(oBuffer));
    EXPECT_EQ(pPlaces, PlacesOf(oBuffer));
    EXPECT_EQ(16, pPlaces[15]);
}

TEST(CTOVRingBufferTest, ClearBeginsAtTheFirstPlaceAgain)
{
    tBuffer oBuffer(3);
    int nValue = 0;
    WriteAll(oBuffer, {1, 2});
    oBuffer.Read(nValue);

    oBuffer.Clear();

    EXPECT_EQ(0, ReadPosOf(oBuffer));
    EXPECT_EQ(0, WritePosOf(oBuffer));
    WriteAll(oBuffer, {7, 8, 9});
    EXPECT_EQ((tValues{7, 8, 9}), ReadAll(oBuffer));
}

TEST(CTOVRingBufferTest, ANewCapacityEmptiesTheBuffer)
{
    tBuffer oBuffer(10);
    WriteAll(oBuffer, {100, 200, 300});

    oBuffer.SetCapacity(16);

    EXPECT_EQ((sRingState{0, 16, EMPTY, !FULL}), StateOf(oBuffer));
    EXPECT_EQ(0, ReadPosOf(oBuffer));
    EXPECT_EQ(0, WritePosOf(oBuffer));
}

TEST(CTOVRingBufferTest, ASmallerAndTheSameCapacityEmptyTheBufferToo)
{
    tBuffer oBuffer(10);
    for (const long lCapacity : {10l, 2l})
    {
        int nValue = 0;
        WriteAll(oBuffer, {100, 200});
        oBuffer.Read(nValue);

        oBuffer.SetCapacity(lCapacity, false);

        EXPECT_EQ((sRingState{0, lCapacity, EMPTY, !FULL}), StateOf(oBuffer));
        EXPECT_FALSE(oBuffer.Read(nValue));
        WriteAll(oBuffer, {1, 2});
        EXPECT_EQ((tValues{1, 2}), ReadAll(oBuffer));
    }
}

TEST(CTOVRingBufferTest, ANewCapacityIsSilent)
{
    const CLogRecorder oRecorder;
    tBuffer oBuffer(3);
    oBuffer.Write(1);

    oBuffer.SetCapacity(4);

    EXPECT_TRUE(oRecorder.Lines().empty());
    EXPECT_TRUE(oRecorder.Checks().empty());
}

TEST(CTOVRingBufferTest, RefusesANegativeCapacity)
{
    tBuffer oBuffer(3);
    oBuffer.Write(1);

    EXPECT_CHECK("lNumElements >= 0", oBuffer.SetCapacity(-1));
    EXPECT_CHECK("lNumElements >= 0", oBuffer.SetCapacity(-1, true));
    EXPECT_CHECK("lNumElements >= 0", tBuffer(-1));

    EXPECT_EQ((sRingState{1, 3, !EMPTY, !FULL}), StateOf(oBuffer));
    EXPECT_EQ((tValues{1}), ReadAll(oBuffer));
}

TEST(CTOVRingBufferTest, RefusesToKeepTheData)
{
    tBuffer oBuffer(3);
    oBuffer.Write(1);

    EXPECT_CHECK("bKeepData == false", oBuffer.SetCapacity(16, true));
    EXPECT_CHECK("bKeepData == false", oBuffer.SetCapacity(0, true));

    EXPECT_EQ((sRingState{1, 3, !EMPTY, !FULL}), StateOf(oBuffer));
    EXPECT_EQ((tValues{1}), ReadAll(oBuffer));
}

TEST(CTOVRingBufferTest, GetSizeForwardsToGetCount)
{
    class CPretender : public tBuffer
    {
    public:
        CPretender() : tBuffer(5) {}
        long GetCount() const override { return 5; }
    };
    CPretender oBuffer;

    EXPECT_EQ(5, oBuffer.GetSize());
    EXPECT_FALSE(oBuffer.IsEmpty());
    EXPECT_TRUE(oBuffer.IsFull());
    EXPECT_FALSE(oBuffer.Write(1));
}

// Clang leaves it to the heap to refuse an array that is too large.
#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVRingBufferTest, ACapacityThatNoArrayCanHaveExhaustsTheMemory)
{
    tBuffer oBuffer(3);
    oBuffer.Write(1);

    EXPECT_THROW(oBuffer.SetCapacity(LONG_MAX), std::bad_alloc);

    EXPECT_EQ((sRingState{1, 3, !EMPTY, !FULL}), StateOf(oBuffer));
}
#endif
