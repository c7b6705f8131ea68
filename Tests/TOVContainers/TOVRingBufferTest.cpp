#include "Support/TOVAllocationCounter.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"

#include <TOVContainers/TOVRingBuffer.h>

#include <climits>
#include <deque>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace
{
typedef CTOVRingBuffer<int> tBuffer;
TOV_PRIVATE_MEMBER(PlacesOf, tBuffer, int*, m_pBuffer)
TOV_PRIVATE_MEMBER(ReadPosOf, tBuffer, long, m_lReadPos)
TOV_PRIVATE_MEMBER(WritePosOf, tBuffer, long, m_lWritePos)

// What a buffer says of itself.
struct sState
{
    long lCount;
    long lCapacity;
    bool bEmpty;
    bool bFull;
};

bool operator==(const sState& oFirst, const sState& oSecond)
{
    return oFirst.lCount == oSecond.lCount && oFirst.lCapacity == oSecond.lCapacity &&
           oFirst.bEmpty == oSecond.bEmpty && oFirst.bFull == oSecond.bFull;
}

void PrintTo(const sState& oState, std::ostream* pStream)
{
    *pStream << oState.lCount << " of " << oState.lCapacity << (oState.bEmpty ? ", empty" : "")
             << (oState.bFull ? ", full" : "");
}

const bool EMPTY = true;
const bool FULL = true;

template<class T> sState StateOf(const CTOVRingBuffer<T>& oBuffer)
{
    EXPECT_EQ(oBuffer.GetCount(), oBuffer.GetSize());
    return {oBuffer.GetCount(), oBuffer.GetCapacity(), oBuffer.IsEmpty(), oBuffer.IsFull()};
}

void WriteAll(tBuffer& oBuffer, const std::vector<int>& aValues)
{
    for (const int nValue : aValues)
        EXPECT_TRUE(oBuffer.Write(nValue)) << nValue;
}

// Takes all elements, oldest first.
template<class T> std::vector<T> ReadAll(CTOVRingBuffer<T>& oBuffer)
{
    std::vector<T> aValues;
    for (T oValue = T(); oBuffer.Read(oValue);)
        aValues.push_back(oValue);
    return aValues;
}

typedef std::vector<int> tValues;

// Counts what happens to its kind, and refuses an assignment on demand.
struct sCounted
{
    sCounted() { ++s_nAlive; }
    sCounted(const sCounted& oOther) : nValue(oOther.nValue) { ++s_nAlive; }
    sCounted& operator=(const sCounted& oOther)
    {
        if (s_nUntilRefusal-- == 0)
            throw std::runtime_error("refused");
        nValue = oOther.nValue;
        ++s_nAssignments;
        return *this;
    }
    ~sCounted() { --s_nAlive; }

    static void Reset()
    {
        s_nAssignments = 0;
        s_nUntilRefusal = INT_MAX;
    }

    int nValue = 0;
    static inline int s_nAlive = 0;
    static inline int s_nAssignments = 0;
    static inline int s_nUntilRefusal = INT_MAX;
};

sCounted CountedOf(int nValue)
{
    sCounted oCounted;
    oCounted.nValue = nValue;
    return oCounted;
}
} // namespace

TEST(CTOVRingBufferTest, HasNoCapacityAtFirst)
{
    const tBuffer oBuffer;

    EXPECT_EQ((sState{0, 0, EMPTY, FULL}), StateOf(oBuffer));
}

TEST(CTOVRingBufferTest, HoldsItsMembersInOrder)
{
    struct sLayout
    {
        virtual ~sLayout() = default;
        int* m_pBuffer;
        long m_lCount;
        long m_lCapacity;
        long m_lReadPos;
        long m_lWritePos;
    };
    tBuffer oBuffer(3);
    const char* const pBuffer = reinterpret_cast<const char*>(&oBuffer);
    WriteAll(oBuffer, {1, 2});

    EXPECT_EQ(sizeof(sLayout), sizeof(tBuffer));
    EXPECT_EQ(pBuffer + sizeof(void*), reinterpret_cast<const char*>(&PlacesOf(oBuffer)));
    EXPECT_EQ(pBuffer + 2 * sizeof(void*) + 2 * sizeof(long), reinterpret_cast<const char*>(&ReadPosOf(oBuffer)));
    EXPECT_EQ(&ReadPosOf(oBuffer) + 1, &WritePosOf(oBuffer));
    static_assert(std::has_virtual_destructor<tBuffer>::value);
}

TEST(CTOVRingBufferTest, HasNoArrayBeforeItsFirstCapacity)
{
    tBuffer oBuffer;
    EXPECT_EQ(NULL, PlacesOf(oBuffer));

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
        EXPECT_EQ((sState{0, 0, EMPTY, FULL}), StateOf(*pBuffer));
    }
    EXPECT_EQ(7, nValue);
}

TEST(CTOVRingBufferTest, IsMadeWithACapacity)
{
    const tBuffer oBuffer(10);

    EXPECT_EQ((sState{0, 10, EMPTY, !FULL}), StateOf(oBuffer));
}

TEST(CTOVRingBufferTest, WritesAndReads)
{
    tBuffer oBuffer(10);
    int nValue = 0;

    EXPECT_TRUE(oBuffer.Write(123));
    EXPECT_EQ((sState{1, 10, !EMPTY, !FULL}), StateOf(oBuffer));

    EXPECT_TRUE(oBuffer.Read(nValue));
    EXPECT_EQ(123, nValue);
    EXPECT_EQ((sState{0, 10, EMPTY, !FULL}), StateOf(oBuffer));
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
    EXPECT_EQ((sState{0, 10, EMPTY, !FULL}), StateOf(oBuffer));
}

TEST(CTOVRingBufferTest, RefusesToWriteIntoAFullBuffer)
{
    tBuffer oBuffer(16);

    for (int nValue = 1; nValue <= 16; ++nValue)
        EXPECT_TRUE(oBuffer.Write(nValue)) << nValue;
    EXPECT_FALSE(oBuffer.Write(17));

    EXPECT_EQ((sState{16, 16, !EMPTY, FULL}), StateOf(oBuffer));
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
    EXPECT_EQ((sState{3, 3, !EMPTY, FULL}), StateOf(oBuffer));

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

    EXPECT_EQ((sState{0, 16, EMPTY, !FULL}), StateOf(oBuffer));
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

    EXPECT_EQ((sState{0, 16, EMPTY, !FULL}), StateOf(oBuffer));
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

        EXPECT_EQ((sState{0, lCapacity, EMPTY, !FULL}), StateOf(oBuffer));
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

    EXPECT_EQ((sState{1, 3, !EMPTY, !FULL}), StateOf(oBuffer));
    EXPECT_EQ((tValues{1}), ReadAll(oBuffer));
}

TEST(CTOVRingBufferTest, RefusesToKeepTheData)
{
    tBuffer oBuffer(3);
    oBuffer.Write(1);

    EXPECT_CHECK("bKeepData == false", oBuffer.SetCapacity(16, true));
    EXPECT_CHECK("bKeepData == false", oBuffer.SetCapacity(0, true));

    EXPECT_EQ((sState{1, 3, !EMPTY, !FULL}), StateOf(oBuffer));
    EXPECT_EQ((tValues{1}), ReadAll(oBuffer));
}

TEST(CTOVRingBufferTest, ACopyHasElementsAndPositionsOfItsOwn)
{
    tBuffer oBuffer(16);
    WriteAll(oBuffer, {1, 2});

    tBuffer oCopy(oBuffer);

    EXPECT_EQ(StateOf(oBuffer), StateOf(oCopy));
    EXPECT_EQ((sState{2, 16, !EMPTY, !FULL}), StateOf(oCopy));
    EXPECT_EQ((tValues{1, 2}), ReadAll(oBuffer));
    EXPECT_EQ((sState{2, 16, !EMPTY, !FULL}), StateOf(oCopy));
    EXPECT_EQ((tValues{1, 2}), ReadAll(oCopy));
}

TEST(CTOVRingBufferTest, ACopyTakesThePlacesByIndexWhetherInUseOrNot)
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

TEST(CTOVRingBufferTest, AssignmentReplacesAllOfTheTarget)
{
    for (const long lCapacity : {0l, 2l, 3l, 20l})
    {
        tBuffer oBuffer(3);
        WriteAll(oBuffer, {1, 2});
        tBuffer oTarget(lCapacity);
        oTarget.Write(99);

        EXPECT_EQ(&oTarget, &(oTarget = oBuffer));

        EXPECT_EQ((sState{2, 3, !EMPTY, !FULL}), StateOf(oTarget));
        oTarget.Write(3);
        EXPECT_EQ((tValues{1, 2, 3}), ReadAll(oTarget));
        EXPECT_EQ((tValues{1, 2}), ReadAll(oBuffer));
    }
}

TEST(CTOVRingBufferTest, ToItselfIsAssignedUnchanged)
{
    tBuffer oBuffer(3);
    WriteAll(oBuffer, {1, 2});
    const tBuffer& oSame = oBuffer;

    oBuffer = oSame;

    EXPECT_EQ((sState{2, 3, !EMPTY, !FULL}), StateOf(oBuffer));
    EXPECT_EQ((tValues{1, 2}), ReadAll(oBuffer));
}

TEST(CTOVRingBufferTest, AFullBufferIsCopiedFull)
{
    tBuffer oBuffer(2);
    WriteAll(oBuffer, {1, 2});

    tBuffer oCopy(oBuffer);

    EXPECT_FALSE(oCopy.Write(3));
    EXPECT_EQ((sState{2, 2, !EMPTY, FULL}), StateOf(oCopy));
}

TEST(CTOVRingBufferTest, ABufferWithoutACapacityIsCopiedToo)
{
    const tBuffer oNever;
    const tBuffer oCopy(oNever);
    tBuffer oTarget(3);
    oTarget.Write(1);

    oTarget = oNever;

    EXPECT_EQ((sState{0, 0, EMPTY, FULL}), StateOf(oCopy));
    EXPECT_EQ((sState{0, 0, EMPTY, FULL}), StateOf(oTarget));
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

TEST(CTOVRingBufferTest, HoldsElementsThatOwnMemory)
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

TEST(CTOVRingBufferTest, MakesAndEndsAsManyElementsAsItHasPlaces)
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

TEST(CTOVRingBufferTest, CopiesOneElementAWriteAndARead)
{
    CTOVRingBuffer<sCounted> oBuffer(1);
    sCounted oElement = CountedOf(7);
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

TEST(CTOVRingBufferTest, ACopyThatFailsLeavesTheBufferAsItWas)
{
    CTOVRingBuffer<sCounted> oBuffer(3);
    sCounted oElement = CountedOf(7);
    sCounted::Reset();
    oBuffer.Write(oElement);

    sCounted::s_nUntilRefusal = 0;
    EXPECT_THROW(oBuffer.Write(oElement), std::runtime_error);
    EXPECT_EQ((sState{1, 3, !EMPTY, !FULL}), StateOf(oBuffer));

    sCounted::s_nUntilRefusal = 0;
    EXPECT_THROW(oBuffer.Read(oElement), std::runtime_error);
    EXPECT_EQ((sState{1, 3, !EMPTY, !FULL}), StateOf(oBuffer));

    sCounted::Reset();
    EXPECT_TRUE(oBuffer.Read(oElement));
    EXPECT_EQ(7, oElement.nValue);
}

TEST(CTOVRingBufferTest, AnAssignmentThatFailsLeavesTheTargetEmpty)
{
    CTOVRingBuffer<sCounted> oBuffer(3);
    CTOVRingBuffer<sCounted> oTarget(5);
    sCounted::Reset();
    oBuffer.Write(CountedOf(7));
    oTarget.Write(CountedOf(8));

    sCounted::s_nUntilRefusal = 1;
    EXPECT_THROW(oTarget = oBuffer, std::runtime_error);

    EXPECT_EQ((sState{0, 3, EMPTY, !FULL}), StateOf(oTarget));
    EXPECT_EQ((sState{1, 3, !EMPTY, !FULL}), StateOf(oBuffer));
}

TEST(CTOVRingBufferTest, ACopyThatCannotBeMadeLeavesNothingBehind)
{
    CTOVRingBuffer<sCounted> oBuffer(3);
    sCounted::s_nUntilRefusal = 1;

    EXPECT_THROW(CTOVRingBuffer<sCounted>{oBuffer}, std::runtime_error);

    EXPECT_EQ(3, sCounted::s_nAlive);
    sCounted::Reset();
}

TEST(CTOVRingBufferTest, ACapacityThatNoArrayCanHaveExhaustsTheMemory)
{
    tBuffer oBuffer(3);
    oBuffer.Write(1);

    EXPECT_THROW(oBuffer.SetCapacity(LONG_MAX), std::bad_alloc);

    EXPECT_EQ((sState{1, 3, !EMPTY, !FULL}), StateOf(oBuffer));
}

TEST(CTOVRingBufferTest, TakesMemoryForItsCapacityOnly)
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

TEST(CTOVRingBufferTest, GivesAllItsMemoryBack)
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
TEST(CTOVRingBufferTest, WithoutMemoryTheBufferStaysAsItWas)
{
    tBuffer oBuffer(3);
    WriteAll(oBuffer, {1, 2});
    bool bFailed = false;
    {
        const CAllocationFailure oFailure;
        try
        {
            oBuffer.SetCapacity(5);
        }
        catch (const std::bad_alloc&)
        {
            bFailed = true;
        }
    }

    EXPECT_TRUE(bFailed);
    EXPECT_EQ((sState{2, 3, !EMPTY, !FULL}), StateOf(oBuffer));
    EXPECT_EQ((tValues{1, 2}), ReadAll(oBuffer));
}
#endif
