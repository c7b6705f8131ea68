#include "Support/TOVAllocationCounter.h"
#include "Support/TOVTestSupport.h"

#include <TOVContainers/TOVBuffer.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{
const char VALID_CHECK[] = "m_pArray.IsValid()";
const char RANGE_CHECK[] = "(0 <= lIndex) && (lIndex+lSize <= GetSize())";
const char SIZE_CHECK[] = "lNumElements >= 0";
const char FIRST_INDEX_CHECK[] = "(0 <= lIndex1) && (lIndex1 < GetSize())";
const char SECOND_INDEX_CHECK[] = "(0 <= lIndex2) && (lIndex2 < GetSize())";

template<class T> CTOVBuffer<T> MakeBuffer(const std::vector<T>& aElements)
{
    return CTOVBuffer<T>(aElements.data(), static_cast<long>(aElements.size()));
}

template<class T> std::vector<T> Elements(const CTOVBuffer<T>& oBuffer)
{
    return std::vector<T>(oBuffer.GetBuffer(), oBuffer.GetBuffer() + oBuffer.GetSize());
}

// What holds for every element type.
template<class T> class CTOVBufferTest : public testing::Test
{
protected:
    const T m_aThree[3] = {T(5), T(6), T(7)};
    const T m_aTwo[2] = {T(8), T(9)};
};

typedef testing::Types<tByte, char, wchar_t> tElementTypes;
TYPED_TEST_SUITE(CTOVBufferTest, tElementTypes);
} // namespace

TYPED_TEST(CTOVBufferTest, ComesAndGoes)
{
    EXPECT_NO_CHECK({ CTOVBuffer<TypeParam> oBuffer; });
}

TYPED_TEST(CTOVBufferTest, HasNoStorageByDefault)
{
    CTOVBuffer<TypeParam> oBuffer;
    const CTOVBuffer<TypeParam>& oConst = oBuffer;

    EXPECT_FALSE(oConst.IsValid());
    EXPECT_EQ(0, oConst.GetSize());
    EXPECT_EQ(NULL, oBuffer.AddressOfBuffer());
    EXPECT_EQ(NULL, oBuffer.GetBuffer());
    EXPECT_EQ(NULL, oConst.GetBuffer());
}

TYPED_TEST(CTOVBufferTest, DefaultBuffersAreEqual)
{
    EXPECT_TRUE(CTOVBuffer<TypeParam>() == CTOVBuffer<TypeParam>());
}

TYPED_TEST(CTOVBufferTest, HoldsACopyOfWhatItIsMadeOf)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    EXPECT_TRUE(oBuffer.IsValid());
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
    EXPECT_NE(this->m_aThree, oBuffer.GetBuffer());
    EXPECT_EQ(oBuffer.GetBuffer(), oBuffer.AddressOfBuffer());
    EXPECT_FALSE(oBuffer == CTOVBuffer<TypeParam>());
    EXPECT_FALSE(CTOVBuffer<TypeParam>() == oBuffer);
}

TYPED_TEST(CTOVBufferTest, MadeOfNoElementsHasNoStorage)
{
    const CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 0);
    const CTOVBuffer<TypeParam> oNull(NULL, 0);

    EXPECT_FALSE(oBuffer.IsValid());
    EXPECT_FALSE(oNull.IsValid());
    EXPECT_EQ(0, oBuffer.GetSize());
}

TYPED_TEST(CTOVBufferTest, RefusesToBeMadeOfANegativeNumber)
{
    EXPECT_CHECK_AT("TOVContainers/TOVBuffer", SIZE_CHECK, CTOVBuffer<TypeParam>(this->m_aThree, -1));
}

TYPED_TEST(CTOVBufferTest, ResizeGivesStorage)
{
    CTOVBuffer<TypeParam> oBuffer;
    oBuffer.Resize(3);

    EXPECT_EQ(3, oBuffer.GetSize());
    EXPECT_TRUE(oBuffer.IsValid());
    EXPECT_NE(nullptr, oBuffer.AddressOfBuffer());
    EXPECT_NE(nullptr, oBuffer.GetBuffer());
}

TYPED_TEST(CTOVBufferTest, ResizeKeepsTheElementsThatFit)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    oBuffer.Resize(5);
    EXPECT_EQ(5, oBuffer.GetSize());
    EXPECT_EQ(0, std::memcmp(this->m_aThree, oBuffer.GetBuffer(), sizeof this->m_aThree));

    oBuffer.Resize(2, true);
    EXPECT_EQ((std::vector<TypeParam>{5, 6}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, ResizeToTheSameSizeMovesToANewBlock)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const TypeParam* pOld = oBuffer.GetBuffer();

    oBuffer.Resize(3);

    EXPECT_NE(pOld, oBuffer.GetBuffer());
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, ResizeWithoutKeepingSetsTheSize)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    oBuffer.Resize(4, false);
    EXPECT_EQ(4, oBuffer.GetSize());
    EXPECT_TRUE(oBuffer.IsValid());

    oBuffer.SetSize(1, false);
    EXPECT_EQ(1, oBuffer.GetSize());
}

TYPED_TEST(CTOVBufferTest, ResizeToZeroGivesAValidBufferOfSizeZero)
{
    CTOVBuffer<TypeParam> oBuffer;
    CTOVBuffer<TypeParam> oOther(this->m_aThree, 3);

    oBuffer.Resize(0);
    oOther.Resize(0, false);

    EXPECT_TRUE(oBuffer.IsValid());
    EXPECT_TRUE(oOther.IsValid());
    EXPECT_EQ(0, oBuffer.GetSize());
    EXPECT_EQ(0, oOther.GetSize());
    EXPECT_NE(nullptr, oBuffer.GetBuffer());
}

TYPED_TEST(CTOVBufferTest, ValidBuffersOfSizeZeroEqualEachOtherOnly)
{
    CTOVBuffer<TypeParam> oFirst;
    CTOVBuffer<TypeParam> oSecond;
    oFirst.Resize(0);
    oSecond.Resize(0);

    EXPECT_NO_CHECK(EXPECT_TRUE(oFirst == oSecond));
    EXPECT_FALSE(oFirst == CTOVBuffer<TypeParam>());
    EXPECT_FALSE(CTOVBuffer<TypeParam>() == oFirst);
}

TYPED_TEST(CTOVBufferTest, ResizeRefusesANegativeSize)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const TypeParam* pOld = oBuffer.GetBuffer();

    EXPECT_CHECK_AT("TOVContainers/TOVBuffer", SIZE_CHECK, oBuffer.Resize(-1));
    EXPECT_CHECK(SIZE_CHECK, oBuffer.SetSize(-1, false));
    EXPECT_EQ(pOld, oBuffer.GetBuffer());
    EXPECT_EQ(3, oBuffer.GetSize());
}

TYPED_TEST(CTOVBufferTest, ResizeLeavesTheOtherSharerAlone)
{
    for (const bool bKeepData : {true, false})
    {
        for (const long lSize : {0, 2, 3, 7})
        {
            CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
            const CTOVBuffer<TypeParam> oSharer(oBuffer);
            const TypeParam* pOld = oSharer.GetBuffer();

            oBuffer.Resize(lSize, bKeepData);

            EXPECT_NE(pOld, oBuffer.GetBuffer());
            EXPECT_EQ(lSize, oBuffer.GetSize());
            EXPECT_EQ(pOld, oSharer.GetBuffer());
            EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oSharer));
        }
    }
}

TYPED_TEST(CTOVBufferTest, ResizeOfASharerKeepsItsElements)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(oBuffer);

    oBuffer.Resize(2);

    EXPECT_EQ((std::vector<TypeParam>{5, 6}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, ResizeOfASharerWithoutStorageLeavesTheOtherWithout)
{
    CTOVBuffer<TypeParam> oBuffer;
    const CTOVBuffer<TypeParam> oSharer(oBuffer);

    oBuffer.Resize(3);

    EXPECT_EQ(3, oBuffer.GetSize());
    EXPECT_FALSE(oSharer.IsValid());
    EXPECT_EQ(0, oSharer.GetSize());
}

TYPED_TEST(CTOVBufferTest, SetElementsWritesIntoTheBlock)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const TypeParam* pOld = oBuffer.GetBuffer();

    oBuffer.SetElements(1, this->m_aTwo, 2);

    EXPECT_EQ((std::vector<TypeParam>{5, 8, 9}), Elements(oBuffer));
    EXPECT_EQ(pOld, oBuffer.GetBuffer());
}

TYPED_TEST(CTOVBufferTest, SetElementsRefusesWhatDoesNotFit)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    EXPECT_NO_CHECK(oBuffer.SetElements(1, this->m_aTwo, 2));
    EXPECT_CHECK_AT("TOVContainers/TOVBuffer", RANGE_CHECK, oBuffer.SetElements(2, this->m_aTwo, 2));
    EXPECT_CHECK(RANGE_CHECK, oBuffer.SetElements(-1, this->m_aTwo, 2));
    EXPECT_CHECK(RANGE_CHECK, oBuffer.SetElements(4, this->m_aTwo, 0));
    EXPECT_CHECK(RANGE_CHECK, oBuffer.SetElements(std::numeric_limits<long>::max(), this->m_aTwo, 1));
    EXPECT_EQ((std::vector<TypeParam>{5, 8, 9}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, SetElementsWithoutStorageFailsItsFirstCheck)
{
    CTOVBuffer<TypeParam> oBuffer;

    EXPECT_CHECK_AT("TOVContainers/TOVBuffer", VALID_CHECK, oBuffer.SetElements(0, this->m_aTwo, 2));
    EXPECT_CHECK(VALID_CHECK, oBuffer.SetElements(-1, this->m_aTwo, 2));
    EXPECT_CHECK(VALID_CHECK, oBuffer.SetElements(0, this->m_aTwo, 0));
}

TYPED_TEST(CTOVBufferTest, GetElementsReadsFromTheBlock)
{
    const CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    TypeParam aRead[3] = {1, 1, 1};

    oBuffer.GetElements(1, aRead, 2);

    EXPECT_EQ(TypeParam(6), aRead[0]);
    EXPECT_EQ(TypeParam(7), aRead[1]);
    EXPECT_EQ(TypeParam(1), aRead[2]);
}

TYPED_TEST(CTOVBufferTest, GetElementsRefusesWhatIsNotThere)
{
    const CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    TypeParam aRead[3] = {1, 1, 1};

    EXPECT_CHECK_AT("TOVContainers/TOVBuffer", RANGE_CHECK, oBuffer.GetElements(2, aRead, 2));
    EXPECT_CHECK(RANGE_CHECK, oBuffer.GetElements(-1, aRead, 1));
    EXPECT_CHECK(RANGE_CHECK, oBuffer.GetElements(std::numeric_limits<long>::max(), aRead, 1));
    EXPECT_EQ(TypeParam(1), aRead[0]);
}

TYPED_TEST(CTOVBufferTest, GetElementsWithoutStorageFailsItsFirstCheck)
{
    const CTOVBuffer<TypeParam> oBuffer;
    TypeParam aRead[1] = {1};

    EXPECT_CHECK_AT("TOVContainers/TOVBuffer", VALID_CHECK, oBuffer.GetElements(0, aRead, 1));
    EXPECT_CHECK(VALID_CHECK, oBuffer.GetElements(-1, aRead, 0));
}

TYPED_TEST(CTOVBufferTest, CopyingNoElementsDoesNothing)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    TypeParam nRead = 1;

    EXPECT_NO_CHECK(oBuffer.SetElements(3, this->m_aTwo, 0));
    EXPECT_NO_CHECK(oBuffer.SetElements(0, NULL, 0));
    EXPECT_NO_CHECK(oBuffer.SetElements(2, this->m_aTwo, -1));
    EXPECT_NO_CHECK(oBuffer.GetElements(3, &nRead, 0));
    EXPECT_NO_CHECK(oBuffer.GetElements(2, &nRead, -1));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
    EXPECT_EQ(TypeParam(1), nRead);
}

TYPED_TEST(CTOVBufferTest, AssignmentSharesTheBlock)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aTwo, 2);
    CTOVBuffer<TypeParam> oBuffer2(this->m_aThree, 3);

    const CTOVBuffer<TypeParam>& oResult = (oBuffer = oBuffer2);

    EXPECT_EQ(&oBuffer, &oResult);
    EXPECT_EQ(oBuffer2.AddressOfBuffer(), oBuffer.AddressOfBuffer());
    EXPECT_EQ(oBuffer2.GetBuffer(), oBuffer.GetBuffer());
    EXPECT_EQ(3, oBuffer.GetSize());
    EXPECT_TRUE(oBuffer == oBuffer2);
}

TYPED_TEST(CTOVBufferTest, BlockLivesAsLongAsASharer)
{
    std::optional<CTOVBuffer<TypeParam>> oBuffer(std::in_place, this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(*oBuffer);

    oBuffer.reset();

    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oSharer));
}

TYPED_TEST(CTOVBufferTest, AssignmentToItselfChangesNothing)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    oBuffer = std::as_const(oBuffer);

    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, WritesInPlaceReachEverySharer)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(oBuffer);

    oBuffer.GetBuffer()[0] = 1;
    EXPECT_EQ((std::vector<TypeParam>{1, 6, 7}), Elements(oSharer));

    oBuffer.SetElements(1, this->m_aTwo, 1);
    EXPECT_EQ((std::vector<TypeParam>{1, 8, 7}), Elements(oSharer));

    oBuffer.Swap(0, 2);
    EXPECT_EQ((std::vector<TypeParam>{7, 8, 1}), Elements(oSharer));
    EXPECT_EQ(oBuffer.GetBuffer(), oSharer.GetBuffer());
}

TYPED_TEST(CTOVBufferTest, AssignReplacesTheContents)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(oBuffer);

    oBuffer.Assign(this->m_aTwo, 2);

    EXPECT_EQ((std::vector<TypeParam>{8, 9}), Elements(oBuffer));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oSharer));
}

TYPED_TEST(CTOVBufferTest, AssignOfNoElementsGivesAValidBufferOfSizeZero)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    oBuffer.Assign(this->m_aTwo, 0);

    EXPECT_TRUE(oBuffer.IsValid());
    EXPECT_EQ(0, oBuffer.GetSize());
}

TYPED_TEST(CTOVBufferTest, AssignRefusesANegativeNumber)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    EXPECT_CHECK(SIZE_CHECK, oBuffer.Assign(this->m_aTwo, -1));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, AssignTakesElementsOfItsOwnBlock)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    oBuffer.Assign(oBuffer.GetBuffer() + 1, 2);

    EXPECT_EQ((std::vector<TypeParam>{6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, AppendAddsElements)
{
    CTOVBuffer<TypeParam> oBuffer;

    oBuffer.Append(this->m_aTwo, 2);
    EXPECT_EQ((std::vector<TypeParam>{8, 9}), Elements(oBuffer));

    oBuffer.Append(this->m_aThree, 3);
    EXPECT_EQ((std::vector<TypeParam>{8, 9, 5, 6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, AppendAddsABuffer)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aTwo, 2);
    const CTOVBuffer<TypeParam> oOther(this->m_aThree, 3);

    oBuffer.Append(oOther);

    EXPECT_EQ((std::vector<TypeParam>{8, 9, 5, 6, 7}), Elements(oBuffer));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oOther));
}

TYPED_TEST(CTOVBufferTest, AppendAddsItself)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aTwo, 2);

    oBuffer.Append(oBuffer);
    EXPECT_EQ((std::vector<TypeParam>{8, 9, 8, 9}), Elements(oBuffer));

    oBuffer.Append(oBuffer.GetBuffer() + 1, 2);
    EXPECT_EQ((std::vector<TypeParam>{8, 9, 8, 9, 9, 8}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, AppendLeavesTheOtherSharerAlone)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(oBuffer);

    oBuffer.Append(this->m_aTwo, 2);
    oBuffer.Append(oSharer);

    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7, 8, 9, 5, 6, 7}), Elements(oBuffer));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oSharer));
}

TYPED_TEST(CTOVBufferTest, AppendOfNothingDoesNothing)
{
    CTOVBuffer<TypeParam> oBuffer;
    CTOVBuffer<TypeParam> oThree(this->m_aThree, 3);
    const TypeParam* pOld = oThree.GetBuffer();

    oBuffer.Append(this->m_aTwo, 0);
    oBuffer.Append(CTOVBuffer<TypeParam>());
    oThree.Append(NULL, 0);
    oThree.Append(oBuffer);

    EXPECT_FALSE(oBuffer.IsValid());
    EXPECT_EQ(pOld, oThree.GetBuffer());
    EXPECT_EQ(3, oThree.GetSize());
}

TYPED_TEST(CTOVBufferTest, AppendRefusesANegativeSizeInAll)
{
    CTOVBuffer<TypeParam> oBuffer;

    EXPECT_CHECK(SIZE_CHECK, oBuffer.Append(this->m_aTwo, -1));
    EXPECT_FALSE(oBuffer.IsValid());
}

TYPED_TEST(CTOVBufferTest, AppendRefusesASizePastTheLargest)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    EXPECT_CHECK(SIZE_CHECK, oBuffer.Append(this->m_aTwo, 0x7FFFFFFF));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, ZeroClearsEveryElement)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const TypeParam* pOld = oBuffer.GetBuffer();

    oBuffer.Zero();

    EXPECT_EQ((std::vector<TypeParam>{0, 0, 0}), Elements(oBuffer));
    EXPECT_EQ(pOld, oBuffer.GetBuffer());
}

TYPED_TEST(CTOVBufferTest, ZeroLeavesTheOtherSharerAlone)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(oBuffer);
    const TypeParam* pOld = oBuffer.GetBuffer();

    oBuffer.Zero();

    EXPECT_EQ((std::vector<TypeParam>{0, 0, 0}), Elements(oBuffer));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oSharer));
    EXPECT_EQ(pOld, oSharer.GetBuffer());
}

TYPED_TEST(CTOVBufferTest, ZeroOfNoElementsDoesNothing)
{
    CTOVBuffer<TypeParam> oDefault;
    CTOVBuffer<TypeParam> oEmpty;
    oEmpty.Resize(0);
    const CTOVBuffer<TypeParam> oSharer(oEmpty);

    oDefault.Zero();
    oEmpty.Zero();

    EXPECT_FALSE(oDefault.IsValid());
    EXPECT_EQ(oSharer.GetBuffer(), oEmpty.GetBuffer());
}

TYPED_TEST(CTOVBufferTest, FreeLetsGoOfTheBlock)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(oBuffer);

    oBuffer.Free();

    EXPECT_FALSE(oBuffer.IsValid());
    EXPECT_EQ(0, oBuffer.GetSize());
    EXPECT_EQ(NULL, oBuffer.GetBuffer());
    EXPECT_TRUE(oBuffer == CTOVBuffer<TypeParam>());
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oSharer));
}

TYPED_TEST(CTOVBufferTest, CanBeUsedAgainAfterFree)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    oBuffer.Free();
    oBuffer.Free();

    oBuffer.Append(this->m_aTwo, 2);

    EXPECT_EQ((std::vector<TypeParam>{8, 9}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, SwapSwapsTwoElements)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    oBuffer.Swap(0, 2);
    EXPECT_EQ((std::vector<TypeParam>{7, 6, 5}), Elements(oBuffer));

    oBuffer.Swap(1, 1);
    EXPECT_EQ((std::vector<TypeParam>{7, 6, 5}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, SwapRefusesIndicesOutOfRangeInTheirOrder)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    EXPECT_CHECK_AT("TOVContainers/TOVBuffer", FIRST_INDEX_CHECK, oBuffer.Swap(3, 0));
    EXPECT_CHECK(FIRST_INDEX_CHECK, oBuffer.Swap(-1, 3));
    EXPECT_CHECK_AT("TOVContainers/TOVBuffer", SECOND_INDEX_CHECK, oBuffer.Swap(0, 3));
    EXPECT_CHECK(SECOND_INDEX_CHECK, oBuffer.Swap(2, -1));
    EXPECT_CHECK(FIRST_INDEX_CHECK, CTOVBuffer<TypeParam>().Swap(0, 0));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, ComparesSizeAndEveryElement)
{
    const CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    EXPECT_TRUE(oBuffer == MakeBuffer<TypeParam>({5, 6, 7}));
    EXPECT_FALSE(oBuffer == MakeBuffer<TypeParam>({5, 6}));
    EXPECT_FALSE(oBuffer == MakeBuffer<TypeParam>({1, 6, 7}));
    EXPECT_FALSE(oBuffer == MakeBuffer<TypeParam>({5, 6, 1}));
    EXPECT_FALSE(MakeBuffer<TypeParam>({5, 0, 6}) == MakeBuffer<TypeParam>({5, 0, 7}));
}

TYPED_TEST(CTOVBufferTest, KeepsAHiddenElementBehindTheLast)
{
    CTOVBuffer<TypeParam> oBuffer;
    for (const long lSize : {0, 3, 5, 1})
    {
        CAllocationCounter oCounter;
        oBuffer.Resize(lSize);
        const std::size_t nBlockSize = oCounter.LastSize();

        EXPECT_EQ((static_cast<std::size_t>(lSize) + 1) * sizeof(TypeParam), nBlockSize);
        EXPECT_EQ(TypeParam(0), oBuffer.GetBuffer()[lSize]);
        oBuffer.GetBuffer()[lSize] = 1;
        EXPECT_EQ(lSize, oBuffer.GetSize());
    }
}

TYPED_TEST(CTOVBufferTest, DefaultConstructionTakesOneBlock)
{
    CAllocationCounter oCounter;
    const CTOVBuffer<TypeParam> oBuffer;
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(1u, ulTaken);
}

TYPED_TEST(CTOVBufferTest, CopyingTakesNoMemory)
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

TYPED_TEST(CTOVBufferTest, ResizeTakesOneBlock)
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

TYPED_TEST(CTOVBufferTest, AppendAndAssignTakeOneBlock)
{
    CTOVBuffer<TypeParam> oBuffer;
    CAllocationCounter oCounter;
    oBuffer.Append(this->m_aThree, 3);
    oBuffer.Append(this->m_aTwo, 2);
    oBuffer.Assign(this->m_aTwo, 2);
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(3u, ulTaken);
}

TYPED_TEST(CTOVBufferTest, SharerTakesABlockAndAControlBlock)
{
    CTOVBuffer<TypeParam> oResized(this->m_aThree, 3);
    CTOVBuffer<TypeParam> oCleared(oResized);
    const CTOVBuffer<TypeParam> oSharer(oResized);
    CAllocationCounter oCounter;
    oResized.Resize(9);
    const unsigned long ulForResize = oCounter.Taken();
    oCleared.Zero();
    const unsigned long ulForBoth = oCounter.Taken();

    EXPECT_EQ(2u, ulForResize);
    EXPECT_EQ(4u, ulForBoth);
}

TYPED_TEST(CTOVBufferTest, AccessTakesNoMemory)
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

TYPED_TEST(CTOVBufferTest, EndTakesNoMemoryAndFreesEverything)
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

TYPED_TEST(CTOVBufferTest, RefusesTwoGigabytes)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const long lLargest = 0x7FFFFFFF;

    EXPECT_THROW(oBuffer.Resize(lLargest), std::bad_alloc);
    EXPECT_THROW(oBuffer.Resize(lLargest, false), std::bad_alloc);
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferTest, HasADestructorThatCannotThrow)
{
    EXPECT_TRUE(std::is_nothrow_destructible_v<CTOVBuffer<TypeParam>>);
    EXPECT_TRUE(std::has_virtual_destructor_v<CTOVBuffer<TypeParam>>);
}

TYPED_TEST(CTOVBufferTest, HoldsPointerAndSize)
{
    struct sLayout
    {
        void* pVirtualTable;
        CTOVSmartPointer<TypeParam> pArray;
        long lSize;
    };

    EXPECT_EQ(sizeof(sLayout), sizeof(CTOVBuffer<TypeParam>));
}

#if TOV_CAN_FAIL_ALLOCATIONS
TYPED_TEST(CTOVBufferTest, ExhaustedMemoryLeavesABufferAsItWas)
{
    typedef CTOVBuffer<TypeParam> tBuffer;
    typedef void (*tAction)(tBuffer&);
    const tAction aActions[] = {
        [](tBuffer& oBuffer) { oBuffer.Resize(9); }, [](tBuffer& oBuffer) { oBuffer.Resize(1, false); },
        [](tBuffer& oBuffer) { oBuffer.Zero(); }, [](tBuffer& oBuffer) { oBuffer.Append(oBuffer); },
        [](tBuffer& oBuffer) { oBuffer.Assign(oBuffer.GetBuffer(), 2); }};

    for (const tAction fnAction : aActions)
    {
        for (unsigned long ulSuccesses = 0; ulSuccesses < 2; ++ulSuccesses)
        {
            tBuffer oBuffer(this->m_aThree, 3);
            const tBuffer oSharer(oBuffer);
            try
            {
                const CAllocationFailure oFailure(ulSuccesses);
                fnAction(oBuffer);
                FAIL() << "no std::bad_alloc";
            }
            catch (const std::bad_alloc&)
            {
            }
            EXPECT_EQ(oSharer.GetBuffer(), oBuffer.GetBuffer()) << ulSuccesses;
            EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer)) << ulSuccesses;
        }
    }
}
#endif

TEST(CTOVBufferOwnersTest, StringsHaveDestructorsThatCannotThrow)
{
    EXPECT_TRUE(std::is_nothrow_destructible_v<CTOVStringA>);
    EXPECT_TRUE(std::is_nothrow_destructible_v<CTOVStringW>);
}

namespace
{
// Notes the virtual operations as they are called.
class CNotingBuffer : public CTOVBuffer<char>
{
public:
    using CTOVBuffer<char>::operator=;

    void SetElements(long lIndex, const char* pElements, long lSize) override
    {
        m_oCalls << "SetElements " << lIndex << ' ' << lSize << '\n';
        CTOVBuffer<char>::SetElements(lIndex, pElements, lSize);
    }
    using CTOVBuffer<char>::Append;
    void Append(const char* pElements, long lSize) override
    {
        m_oCalls << "Append " << lSize << '\n';
        CTOVBuffer<char>::Append(pElements, lSize);
    }
    void Resize(long lNumElements, bool bKeepData) override
    {
        m_oCalls << "Resize " << lNumElements << ' ' << bKeepData << '\n';
        CTOVBuffer<char>::Resize(lNumElements, bKeepData);
    }
    void SetSize(long lNumElements, bool bKeepData) override
    {
        m_oCalls << "SetSize " << lNumElements << ' ' << bKeepData << '\n';
        CTOVBuffer<char>::SetSize(lNumElements, bKeepData);
    }

    std::string Calls() const { return m_oCalls.str(); }

private:
    std::ostringstream m_oCalls;
};

// Shows less than it has.
class CShortBuffer : public CTOVBuffer<char>
{
public:
    CShortBuffer(const char* szText, long lShown)
        : CTOVBuffer<char>(szText, static_cast<long>(std::strlen(szText))), m_lShown(lShown)
    {
    }

    using CTOVBuffer<char>::operator=;
    long GetSize() const override { return m_lShown; }

private:
    const long m_lShown;
};

// Keeps its elements elsewhere.
class CElsewhereBuffer : public CTOVBuffer<char>
{
public:
    CElsewhereBuffer() { Resize(2); }

    using CTOVBuffer<char>::operator=;
    char* GetBuffer() override { return m_acWritten; }
    const char* GetBuffer() const override { return m_acRead; }

    char m_acWritten[2] = {'a', 'b'};
    const char m_acRead[2] = {'c', 'd'};
};
} // namespace

TEST(CTOVBufferDispatchTest, AssignGoesThroughSetSizeAndSetElements)
{
    CNotingBuffer oBuffer;
    oBuffer.Assign("abc", 3);

    EXPECT_EQ("SetSize 3 0\nResize 3 0\nSetElements 0 3\n", oBuffer.Calls());
}

TEST(CTOVBufferDispatchTest, AppendGoesThroughSetSizeAndSetElements)
{
    CNotingBuffer oBuffer;
    oBuffer.Append("abc", 3);
    oBuffer.Append("de", 2);

    EXPECT_EQ("Append 3\nSetSize 3 1\nResize 3 1\nSetElements 0 3\n"
              "Append 2\nSetSize 5 1\nResize 5 1\nSetElements 3 2\n",
              oBuffer.Calls());
}

TEST(CTOVBufferDispatchTest, AppendOfABufferGoesThroughAppendOfElements)
{
    CNotingBuffer oBuffer;
    const CShortBuffer oOther("xyz", 2);

    oBuffer.Append(oOther);

    EXPECT_EQ("Append 2\nSetSize 2 1\nResize 2 1\nSetElements 0 2\n", oBuffer.Calls());
    EXPECT_EQ((std::vector<char>{'x', 'y'}), Elements(oBuffer));
}

TEST(CTOVBufferDispatchTest, ChecksAskForTheSize)
{
    CShortBuffer oBuffer("xyz", 1);
    char cRead = 0;

    EXPECT_CHECK(RANGE_CHECK, oBuffer.SetElements(1, "a", 1));
    EXPECT_CHECK(RANGE_CHECK, oBuffer.GetElements(1, &cRead, 1));
    EXPECT_CHECK(FIRST_INDEX_CHECK, oBuffer.Swap(1, 0));
    EXPECT_CHECK(SECOND_INDEX_CHECK, oBuffer.Swap(0, 1));
}

TEST(CTOVBufferDispatchTest, ZeroAsksForTheSize)
{
    CShortBuffer oBuffer("xyz", 0);
    oBuffer.Zero();

    EXPECT_EQ('x', oBuffer.GetBuffer()[0]);
}

TEST(CTOVBufferDispatchTest, SwapReadsAndWritesThroughGetBuffer)
{
    CElsewhereBuffer oBuffer;
    oBuffer.Swap(0, 1);

    // The second element is read for keeping through the form for reading, the rest goes through the writing one.
    EXPECT_EQ('d', oBuffer.m_acWritten[0]);
    EXPECT_TRUE(oBuffer.m_acWritten[1] == 'a' || oBuffer.m_acWritten[1] == 'c');
}

TEST(CTOVBufferDispatchTest, EndsThroughItsBase)
{
    CAllocationCounter oCounter;
    CTOVBuffer<char>* pBuffer = new CShortBuffer("xyz", 1);
    delete pBuffer;

    EXPECT_EQ(0, oCounter.Kept());
}
