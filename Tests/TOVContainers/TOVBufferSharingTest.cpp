// Buffers that share a block.
#include "TOVContainers/TOVBufferInstruments.h"

#include <optional>
#include <utility>
#include <vector>

namespace
{
template<class T> class CTOVBufferSharingTest : public CBufferFixture<T>
{
};
TYPED_TEST_SUITE(CTOVBufferSharingTest, tElementTypes);
} // namespace

TYPED_TEST(CTOVBufferSharingTest, ResizeLeavesTheOtherSharerAlone)
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

TYPED_TEST(CTOVBufferSharingTest, ResizeOfASharerKeepsItsElements)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(oBuffer);

    oBuffer.Resize(2);

    EXPECT_EQ((std::vector<TypeParam>{5, 6}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferSharingTest, ResizeOfASharerWithoutStorageLeavesTheOtherWithout)
{
    CTOVBuffer<TypeParam> oBuffer;
    const CTOVBuffer<TypeParam> oSharer(oBuffer);

    oBuffer.Resize(3);

    EXPECT_EQ(3, oBuffer.GetSize());
    EXPECT_FALSE(oSharer.IsValid());
    EXPECT_EQ(0, oSharer.GetSize());
}

TYPED_TEST(CTOVBufferSharingTest, AssignmentSharesTheBlock)
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

TYPED_TEST(CTOVBufferSharingTest, BlockLivesAsLongAsASharer)
{
    std::optional<CTOVBuffer<TypeParam>> oBuffer(std::in_place, this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(*oBuffer);

    oBuffer.reset();

    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oSharer));
}

TYPED_TEST(CTOVBufferSharingTest, AssignmentToItselfChangesNothing)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    oBuffer = std::as_const(oBuffer);

    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferSharingTest, WritesInPlaceReachEverySharer)
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

TYPED_TEST(CTOVBufferSharingTest, AppendLeavesTheOtherSharerAlone)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(oBuffer);

    oBuffer.Append(this->m_aTwo, 2);
    oBuffer.Append(oSharer);

    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7, 8, 9, 5, 6, 7}), Elements(oBuffer));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oSharer));
}

TYPED_TEST(CTOVBufferSharingTest, ZeroLeavesTheOtherSharerAlone)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(oBuffer);
    const TypeParam* pOld = oBuffer.GetBuffer();

    oBuffer.Zero();

    EXPECT_EQ((std::vector<TypeParam>{0, 0, 0}), Elements(oBuffer));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oSharer));
    EXPECT_EQ(pOld, oSharer.GetBuffer());
}
