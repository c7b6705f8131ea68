// What buffers take from the heap.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVRefusal.h"
#include "TOVContainers/TOVBufferInstruments.h"

#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

#include <new>
#include <type_traits>
#include <vector>

namespace
{
template<class T> class CTOVBufferMemoryTest : public CBufferFixture<T>
{
};
TYPED_TEST_SUITE(CTOVBufferMemoryTest, tElementTypes);

// The one allocation that holds control block and elements.
template<class T> const void* BlockOf(const CTOVBuffer<T>& oBuffer)
{
    return reinterpret_cast<const char*>(oBuffer.GetBuffer()) - 3 * sizeof(void*) - 4;
}
} // namespace

TYPED_TEST(CTOVBufferMemoryTest, KeepsAHiddenElementBehindTheLast)
{
    CTOVBuffer<TypeParam> oBuffer;
    for (const long lSize : {0, 3, 5, 1})
    {
        CAllocationCounter oCounter;
        oBuffer.Resize(lSize);
        const std::size_t nBlockSize = oCounter.LastSize();

        const auto* const pEnd = reinterpret_cast<const char*>(oBuffer.GetBuffer() + lSize + 1);
        const auto* const pBlock = reinterpret_cast<const char*>(BlockOf(oBuffer));
        EXPECT_LE(pEnd, pBlock + nBlockSize);
        EXPECT_EQ(TypeParam(0), oBuffer.GetBuffer()[lSize]);
        oBuffer.GetBuffer()[lSize] = 1;
        EXPECT_EQ(lSize, oBuffer.GetSize());
    }
}

TYPED_TEST(CTOVBufferMemoryTest, DefaultConstructionTakesOneBlock)
{
    CAllocationCounter oCounter;
    const CTOVBuffer<TypeParam> oBuffer;
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(1u, ulTaken);
}

TYPED_TEST(CTOVBufferMemoryTest, CopyingTakesNoMemory)
{
    const CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    CTOVBuffer<TypeParam> oTarget(this->m_aTwo, 2);
    CAllocationCounter oCounter;
    const CTOVBuffer<TypeParam> oCopy(oBuffer);
    oTarget = oBuffer;
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(0u, ulTaken);
    EXPECT_EQ(oBuffer.GetBuffer(), oTarget.GetBuffer());
}

TYPED_TEST(CTOVBufferMemoryTest, ResizeTakesOneBlock)
{
    CTOVBuffer<TypeParam> oBuffer;
    for (const long lSize : {3, 3, 9, 0})
    {
        for (const bool bKeepData : {true, false})
        {
            CAllocationCounter oCounter;
            oBuffer.Resize(lSize, bKeepData);
            const unsigned long ulTaken = oCounter.Taken();

            EXPECT_EQ(1u, ulTaken) << lSize;
        }
    }
}

TYPED_TEST(CTOVBufferMemoryTest, AppendAndAssignTakeOneBlock)
{
    CTOVBuffer<TypeParam> oBuffer;
    CAllocationCounter oCounter;
    oBuffer.Append(this->m_aThree, 3);
    oBuffer.Append(this->m_aTwo, 2);
    oBuffer.Assign(this->m_aTwo, 2);
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(3u, ulTaken);
}

TYPED_TEST(CTOVBufferMemoryTest, SharerTakesOneBlock)
{
    CTOVBuffer<TypeParam> oResized(this->m_aThree, 3);
    CTOVBuffer<TypeParam> oCleared(oResized);
    const CTOVBuffer<TypeParam> oSharer(oResized);
    CAllocationCounter oCounter;
    oResized.Resize(9);
    const unsigned long ulForResize = oCounter.Taken();
    oCleared.Zero();
    const unsigned long ulForBoth = oCounter.Taken();

    EXPECT_EQ(1u, ulForResize);
    EXPECT_EQ(2u, ulForBoth);
}

TYPED_TEST(CTOVBufferMemoryTest, AccessTakesNoMemory)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(oBuffer);
    TypeParam aRead[3];
    CAllocationCounter oCounter;
    oBuffer.SetElements(0, this->m_aTwo, 2);
    oBuffer.GetElements(0, aRead, 3);
    oBuffer.Swap(0, 1);
    oBuffer.GetBuffer()[2] = 1;
    const bool bEqual = oBuffer == oSharer;
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(0u, ulTaken);
    EXPECT_TRUE(bEqual);
}

TYPED_TEST(CTOVBufferMemoryTest, EndTakesNoMemoryAndFreesEverything)
{
    CAllocationCounter oCounter;
    unsigned long ulTaken = 0;
    {
        const CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
        const CTOVBuffer<TypeParam> oSharer(oBuffer);
        const CTOVBuffer<TypeParam> oDefault;
        ulTaken = oCounter.Taken();
    }
    const unsigned long ulTakenInAll = oCounter.Taken();
    const long lKept = oCounter.Kept();

    EXPECT_EQ(ulTaken, ulTakenInAll);
    EXPECT_EQ(0, lKept);
}

TYPED_TEST(CTOVBufferMemoryTest, RefusesTwoGigabytes)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const long lLargest = 0x7FFFFFFF;

    EXPECT_THROW(oBuffer.Resize(lLargest), std::bad_alloc);
    EXPECT_THROW(oBuffer.Resize(lLargest, false), std::bad_alloc);
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
}

#if TOV_CAN_FAIL_ALLOCATIONS
TYPED_TEST(CTOVBufferMemoryTest, ExhaustedMemoryLeavesABufferAsItWas)
{
    typedef CTOVBuffer<TypeParam> tBuffer;
    typedef void (*tAction)(tBuffer&);
    const tAction aActions[] = {[](tBuffer& oBuffer) { oBuffer.Resize(9); },
                                [](tBuffer& oBuffer) { oBuffer.Resize(1, false); },
                                [](tBuffer& oBuffer) { oBuffer.Zero(); },
                                [](tBuffer& oBuffer) { oBuffer.Append(oBuffer); },
                                [](tBuffer& oBuffer) { oBuffer.Assign(oBuffer.GetBuffer(), 2); },
                                [](tBuffer& oBuffer) { oBuffer.Free(); }};

    for (const tAction fnAction : aActions)
    {
        tBuffer oBuffer(this->m_aThree, 3);
        const tBuffer oSharer(oBuffer);
        ASSERT_TRUE(RunsOutOfMemory([&] { fnAction(oBuffer); }));
        EXPECT_EQ(oSharer.GetBuffer(), oBuffer.GetBuffer());
        EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
    }
}
#endif

TEST(CTOVBufferOwnersTest, StringsHaveDestructorsThatCannotThrow)
{
    EXPECT_TRUE(std::is_nothrow_destructible_v<CTOVStringA>);
    EXPECT_TRUE(std::is_nothrow_destructible_v<CTOVStringW>);
}
