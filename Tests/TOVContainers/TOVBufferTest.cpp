// Buffers alone: their life, their size, elements in and out.
#include "Support/TOVLayout.h"
#include "Support/TOVPrivateMember.h"
#include "TOVContainers/TOVBufferInstruments.h"

#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

namespace
{
template<class T> class CTOVBufferTest : public CBufferFixture<T>
{
};
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
    EXPECT_EQ(nullptr, oBuffer.AddressOfBuffer());
    EXPECT_EQ(nullptr, oBuffer.GetBuffer());
    EXPECT_EQ(nullptr, oConst.GetBuffer());
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
    const CTOVBuffer<TypeParam> oNull(nullptr, 0);

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
    EXPECT_FALSE(oBuffer.IsValid());
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
    EXPECT_EQ(TypeParam(1), aRead[0]);
}

TYPED_TEST(CTOVBufferTest, CopyingNoElementsDoesNothing)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    TypeParam nRead = 1;

    EXPECT_NO_CHECK(oBuffer.SetElements(3, this->m_aTwo, 0));
    EXPECT_NO_CHECK(oBuffer.SetElements(0, nullptr, 0));
    EXPECT_NO_CHECK(oBuffer.SetElements(2, this->m_aTwo, -1));
    EXPECT_NO_CHECK(oBuffer.GetElements(3, &nRead, 0));
    EXPECT_NO_CHECK(oBuffer.GetElements(2, &nRead, -1));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
    EXPECT_EQ(TypeParam(1), nRead);
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

TYPED_TEST(CTOVBufferTest, HasADestructorThatCannotThrow)
{
    EXPECT_TRUE(std::is_nothrow_destructible_v<CTOVBuffer<TypeParam>>);
    EXPECT_TRUE(std::has_virtual_destructor_v<CTOVBuffer<TypeParam>>);
}

TYPED_TEST(CTOVBufferTest, LetsTheMemoryCheckTheCallersPointer)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    EXPECT_CHECK_AT(TOV_PLATFORM_SOURCE("TOVMemory"), "pSource != NULL", oBuffer.SetElements(0, nullptr, 1));
    EXPECT_CHECK_AT(TOV_PLATFORM_SOURCE("TOVMemory"), "pDestination != NULL", oBuffer.GetElements(0, nullptr, 1));

    EXPECT_TRUE(oBuffer == MakeBuffer<TypeParam>({5, 6, 7}));
}

TYPED_TEST(CTOVBufferTest, HoldsPointerAndSize)
{
    EXPECT_EQ((SizeWithMembers<CTOVSmartPointer<TypeParam>, long>()), sizeof(CTOVBuffer<TypeParam>));
}

namespace
{
TOV_PRIVATE_MEMBER(ArrayOf, CTOVBuffer<char>, CTOVSmartPointer<char>, m_pArray)
TOV_PRIVATE_MEMBER(SizeOf, CTOVBuffer<char>, long, m_lSize)
TOV_PRIVATE_MEMBER(BlockOf, CTOVSmartPointer<char>, CTOVRefCountObject<char>*, m_pObject)
TOV_PRIVATE_MEMBER(CountOf, CTOVRefCountObject<char>, long, m_lRefCount)
} // namespace

TEST(CTOVBufferMembersTest, HoldsThePointerInFrontOfTheSize)
{
    CTOVBuffer<char> oBuffer("text", 4);

    EXPECT_EQ(4, SizeOf(oBuffer));
    ExpectMembersInOrder(oBuffer, ArrayOf(oBuffer), SizeOf(oBuffer));
}

// Somebody has let go of the block too often.
TEST(CTOVBufferMembersTest, ABlockRefusesACountBelowZeroAndKeepsItsElements)
{
    CTOVBuffer<char> oBuffer("text", 4);
    CTOVRefCountObject<char>& oBlock = *BlockOf(ArrayOf(oBuffer));
    CountOf(oBlock) = 0;

    EXPECT_CHECK_AT("TOVDesignPatterns/TOVSharedBlock", "lRefCount >= 0", oBlock.Release());

    EXPECT_EQ(-1, oBlock.GetRefCount());
    EXPECT_EQ((std::vector<char>{'t', 'e', 'x', 't'}), Elements(oBuffer));
    CountOf(oBlock) = 1;
}

TEST(CTOVBufferMembersTest, AnAssignmentTellsOfABlockThatWasLetGoOfTooOften)
{
    CTOVBuffer<char> oBuffer("text", 4);
    const CTOVBuffer<char> oOther("other", 5);
    CTOVRefCountObject<char>& oBlock = *BlockOf(ArrayOf(oBuffer));
    CountOf(oBlock) = 0;

    EXPECT_CHECK_AT("TOVDesignPatterns/TOVSharedBlock", "lRefCount >= 0", oBuffer = oOther);

    EXPECT_EQ(-1, oBlock.GetRefCount());
    EXPECT_EQ((std::vector<char>{'o', 't', 'h', 'e', 'r'}), Elements(oBuffer));
    CountOf(oBlock) = 1;
    oBlock.Release();
}
