// What fills and empties buffers.
#include "TOVContainers/TOVBufferInstruments.h"

#include <vector>

namespace
{
template<class T> class CTOVBufferContentsTest : public CBufferFixture<T>
{
};
TYPED_TEST_SUITE(CTOVBufferContentsTest, tElementTypes);
} // namespace

TYPED_TEST(CTOVBufferContentsTest, AssignReplacesTheContents)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(oBuffer);

    oBuffer.Assign(this->m_aTwo, 2);

    EXPECT_EQ((std::vector<TypeParam>{8, 9}), Elements(oBuffer));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oSharer));
}

TYPED_TEST(CTOVBufferContentsTest, AssignOfNoElementsGivesAValidBufferOfSizeZero)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    oBuffer.Assign(this->m_aTwo, 0);

    EXPECT_TRUE(oBuffer.IsValid());
    EXPECT_EQ(0, oBuffer.GetSize());
}

TYPED_TEST(CTOVBufferContentsTest, AssignRefusesANegativeNumber)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    EXPECT_CHECK(SIZE_CHECK, oBuffer.Assign(this->m_aTwo, -1));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferContentsTest, AssignTakesElementsOfItsOwnBlock)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    oBuffer.Assign(oBuffer.GetBuffer() + 1, 2);

    EXPECT_EQ((std::vector<TypeParam>{6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferContentsTest, AppendAddsElements)
{
    CTOVBuffer<TypeParam> oBuffer;

    oBuffer.Append(this->m_aTwo, 2);
    EXPECT_EQ((std::vector<TypeParam>{8, 9}), Elements(oBuffer));

    oBuffer.Append(this->m_aThree, 3);
    EXPECT_EQ((std::vector<TypeParam>{8, 9, 5, 6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferContentsTest, AppendAddsABuffer)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aTwo, 2);
    const CTOVBuffer<TypeParam> oOther(this->m_aThree, 3);

    oBuffer.Append(oOther);

    EXPECT_EQ((std::vector<TypeParam>{8, 9, 5, 6, 7}), Elements(oBuffer));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oOther));
}

TYPED_TEST(CTOVBufferContentsTest, AppendAddsItself)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aTwo, 2);

    oBuffer.Append(oBuffer);
    EXPECT_EQ((std::vector<TypeParam>{8, 9, 8, 9}), Elements(oBuffer));

    oBuffer.Append(oBuffer.GetBuffer() + 1, 2);
    EXPECT_EQ((std::vector<TypeParam>{8, 9, 8, 9, 9, 8}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferContentsTest, AppendOfNothingDoesNothing)
{
    CTOVBuffer<TypeParam> oBuffer;
    CTOVBuffer<TypeParam> oThree(this->m_aThree, 3);
    const TypeParam* pOld = oThree.GetBuffer();

    oBuffer.Append(this->m_aTwo, 0);
    oBuffer.Append(CTOVBuffer<TypeParam>());
    oThree.Append(nullptr, 0);
    oThree.Append(oBuffer);

    EXPECT_FALSE(oBuffer.IsValid());
    EXPECT_EQ(pOld, oThree.GetBuffer());
    EXPECT_EQ(3, oThree.GetSize());
}

TYPED_TEST(CTOVBufferContentsTest, AppendRefusesANegativeSizeInAll)
{
    CTOVBuffer<TypeParam> oBuffer;

    EXPECT_CHECK(SIZE_CHECK, oBuffer.Append(this->m_aTwo, -1));
    EXPECT_FALSE(oBuffer.IsValid());
}

TYPED_TEST(CTOVBufferContentsTest, AppendRefusesASizePastTheLargest)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);

    EXPECT_CHECK(SIZE_CHECK, oBuffer.Append(this->m_aTwo, 0x7FFFFFFF));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oBuffer));
}

TYPED_TEST(CTOVBufferContentsTest, ZeroClearsEveryElement)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const TypeParam* pOld = oBuffer.GetBuffer();

    oBuffer.Zero();

    EXPECT_EQ((std::vector<TypeParam>{0, 0, 0}), Elements(oBuffer));
    EXPECT_EQ(pOld, oBuffer.GetBuffer());
}

TYPED_TEST(CTOVBufferContentsTest, ZeroOfNoElementsDoesNothing)
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

TYPED_TEST(CTOVBufferContentsTest, FreeLetsGoOfTheBlock)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    const CTOVBuffer<TypeParam> oSharer(oBuffer);

    oBuffer.Free();

    EXPECT_FALSE(oBuffer.IsValid());
    EXPECT_EQ(0, oBuffer.GetSize());
    EXPECT_EQ(nullptr, oBuffer.GetBuffer());
    EXPECT_TRUE(oBuffer == CTOVBuffer<TypeParam>());
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Elements(oSharer));
}

TYPED_TEST(CTOVBufferContentsTest, CanBeUsedAgainAfterFree)
{
    CTOVBuffer<TypeParam> oBuffer(this->m_aThree, 3);
    oBuffer.Free();
    oBuffer.Free();

    oBuffer.Append(this->m_aTwo, 2);

    EXPECT_EQ((std::vector<TypeParam>{8, 9}), Elements(oBuffer));
}
