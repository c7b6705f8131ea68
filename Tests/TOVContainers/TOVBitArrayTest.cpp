// Bit arrays as blocks of bytes: sizes, buffers, copies, memory.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVLayout.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVRefusal.h"
#include "TOVContainers/TOVBitArrayInstruments.h"

#include <climits>
#include <string>
#include <type_traits>

namespace
{
TOV_PRIVATE_MEMBER(StreamOf, CTOVBitArray, tByte*, m_pStream)
TOV_PRIVATE_MEMBER(SizeOf, CTOVBitArray, int, m_nSize)
TOV_PRIVATE_MEMBER(NumBitsOf, CTOVBitArray, int, m_nNumBits)
} // namespace

TEST(CTOVBitArrayTest, HasNoBitsAtFirst)
{
    const CTOVBitArray oBits;

    EXPECT_EQ(0, oBits.GetSize());
    EXPECT_EQ(0, oBits.GetNumBits());
    EXPECT_EQ(nullptr, oBits.GetBuffer());
    EXPECT_FALSE(oBits.IsAnyBitSet());
}

TEST(CTOVBitArrayTest, HoldsItsMembersInOrder)
{
    CTOVBitArray oBits(9);

    ExpectMembersInOrder(oBits, StreamOf(oBits), SizeOf(oBits), NumBitsOf(oBits));
    static_assert(std::has_virtual_destructor<CTOVBitArray>::value);
}

TEST(CTOVBitArrayTest, IsMadeWithBitsThatAreAllFalse)
{
    const CTOVBitArray oBits(45);

    EXPECT_EQ(45, oBits.GetNumBits());
    EXPECT_EQ(6, oBits.GetSize());
    EXPECT_EQ(std::string(45, '0'), BitsOf(oBits, 45));
}

TEST(CTOVBitArrayTest, HasASpareByteForAMultipleOfEight)
{
    EXPECT_EQ(1, CTOVBitArray(1).GetSize());
    EXPECT_EQ(1, CTOVBitArray(7).GetSize());
    EXPECT_EQ(2, CTOVBitArray(8).GetSize());
    EXPECT_EQ(2, CTOVBitArray(15).GetSize());
    EXPECT_EQ(3, CTOVBitArray(16).GetSize());
    EXPECT_EQ(16, CTOVBitArray(16).GetNumBits());
}

TEST(CTOVBitArrayTest, ASizeInBytesIsTheSizeInBitsToo)
{
    CTOVBitArray oBits;

    oBits.SetSize(10);
    EXPECT_EQ(10, oBits.GetSize());
    EXPECT_EQ(80, oBits.GetNumBits());

    oBits.SetSize(20);
    EXPECT_EQ(20, oBits.GetSize());
    EXPECT_EQ(160, oBits.GetNumBits());
    EXPECT_FALSE(oBits.IsAnyBitSet());
}

TEST(CTOVBitArrayTest, KeepsItsBytesWhenItGrowsAndClearsTheNewOnes)
{
    CTOVBitArray oBits = WithBits(16, {0, 9, 15});

    oBits.SetSize(5);
    EXPECT_EQ(Holds("\x80\x41\0\0\0", 40), StateOf(oBits));

    oBits.SetNumBits(45);
    EXPECT_EQ(Holds("\x80\x41\0\0\0\0", 45), StateOf(oBits));
}

TEST(CTOVBitArrayTest, KeepsItsFirstBytesWhenItShrinks)
{
    CTOVBitArray oBits = WithBits(24, {0, 9, 15, 23});

    oBits.SetSize(2);
    EXPECT_EQ(Holds("\x80\x41", 16), StateOf(oBits));

    oBits.SetNumBits(3);
    EXPECT_EQ(Holds("\x80", 3), StateOf(oBits));

    oBits.SetSize(3);
    EXPECT_EQ(Holds("\x80\0\0", 24), StateOf(oBits));
}

TEST(CTOVBitArrayTest, KeepsTheSpareBitsOfTheBytesItKeeps)
{
    CTOVBitArray oBits = WithBits(8, {1, 7});

    oBits.SetNumBits(2);

    EXPECT_EQ(Holds("\x41", 2), StateOf(oBits));
    oBits.SetNumBits(8);
    EXPECT_TRUE(oBits.GetBit(7));
}

TEST(CTOVBitArrayTest, RefusesSizesThatAreNotAboveZero)
{
    CTOVBitArray oBits = WithBits(8, {1});

    for (const int nSize : {0, -1, -1234, INT_MIN})
        EXPECT_CHECK("nSize > 0", oBits.SetSize(nSize));
    for (const int nNumBits : {0, -1, -1278324, INT_MIN})
    {
        EXPECT_CHECK("nNumBits > 0", oBits.SetNumBits(nNumBits));
        EXPECT_CHECK("nNumBits > 0", CTOVBitArray(nNumBits).GetSize());
    }

    EXPECT_EQ(Holds("\x40\0", 8), StateOf(oBits));
}

TEST(CTOVBitArrayTest, ABufferIsQueriedAndGrowsWhereItMust)
{
    CTOVBitArray oBits = WithBits(8, {0});
    const tByte* const pBefore = oBits.GetBuffer();

    for (const int nSize : {2, 1, 0, -1, INT_MIN})
        EXPECT_EQ(pBefore, oBits.QueryBuffer(nSize)) << nSize;
    EXPECT_EQ(Holds("\x80\0", 8), StateOf(oBits));

    tByte* const pGrown = oBits.QueryBuffer(3);
    EXPECT_EQ(pGrown, oBits.GetBuffer());
    pGrown[2] = 0x01;
    EXPECT_EQ(Holds("\x80\0\x01", 24), StateOf(oBits));
    EXPECT_TRUE(oBits.GetBit(23));
}

TEST(CTOVBitArrayTest, ABufferIsQueriedOfAnArrayWithoutABlock)
{
    CTOVBitArray oBits;

    EXPECT_EQ(nullptr, oBits.QueryBuffer(0));
    EXPECT_EQ(nullptr, oBits.QueryBuffer(-1));
    EXPECT_NE(nullptr, oBits.QueryBuffer(2));

    EXPECT_EQ(Holds("\0\0", 16), StateOf(oBits));
}

TEST(CTOVBitArrayTest, ReleasingTheBufferDoesNothing)
{
    CTOVBitArray oBits;
    EXPECT_NO_CHECK(oBits.ReleaseBuffer());

    oBits.QueryBuffer(2)[0] = 0x12;
    const tByte* const pBuffer = oBits.GetBuffer();
    oBits.ReleaseBuffer();

    EXPECT_EQ(Holds("\x12\0", 16), StateOf(oBits));
    EXPECT_EQ(pBuffer, oBits.GetBuffer());
}

TEST(CTOVBitArrayTest, ACopyHasABlockOfItsOwn)
{
    const CTOVBitArray oBits = WithBits(12, {0, 11});

    CTOVBitArray oCopy(oBits);
    EXPECT_EQ(Holds("\x80\x10", 12), StateOf(oCopy));
    EXPECT_NE(oBits.GetBuffer(), oCopy.GetBuffer());

    oCopy.SetBit(1);
    EXPECT_EQ(Holds("\x80\x10", 12), StateOf(oBits));
}

TEST(CTOVBitArrayTest, AnArrayWithoutABlockIsCopied)
{
    const CTOVBitArray oNone;
    const CTOVBitArray oCopy(oNone);

    EXPECT_EQ(Holds("", 0), StateOf(oCopy));
    EXPECT_EQ(nullptr, oCopy.GetBuffer());
}

TEST(CTOVBitArrayTest, IsAssignedWithBothSizes)
{
    const CTOVBitArray oSource = WithBits(12, {0, 11});
    CTOVBitArray oNone;
    CTOVBitArray oSmaller(3);
    CTOVBitArray oLarger = WithBits(45, {1, 12, 40});
    static_assert(std::is_same<const CTOVBitArray&, decltype(oNone = oSource)>::value);

    for (CTOVBitArray* const pTarget : {&oNone, &oSmaller, &oLarger})
    {
        EXPECT_EQ(pTarget, &(*pTarget = oSource));
        EXPECT_EQ(Holds("\x80\x10", 12), StateOf(*pTarget));
        EXPECT_NE(oSource.GetBuffer(), pTarget->GetBuffer());
    }
}

TEST(CTOVBitArrayTest, AssignmentNeverMakesTheBlockSmaller)
{
    CTOVBitArray oBits = WithBits(45, {1, 12, 40});
    const tByte* const pBlock = oBits.GetBuffer();

    oBits = WithBits(12, {0, 11});
    EXPECT_EQ(pBlock, oBits.GetBuffer());

    oBits = WithBits(15, {2});
    EXPECT_EQ(pBlock, oBits.GetBuffer());
    EXPECT_EQ(Holds("\x20\0", 15), StateOf(oBits));
}

TEST(CTOVBitArrayTest, AssigningAnArrayWithoutABlockLeavesTheBlockBehindASizeOfZero)
{
    CTOVBitArray oBits(8);
    const tByte* const pBlock = oBits.GetBuffer();

    oBits = CTOVBitArray();

    EXPECT_EQ(Holds("", 0), StateOf(oBits));
    EXPECT_EQ(pBlock, oBits.GetBuffer());
    EXPECT_TRUE(oBits == CTOVBitArray());
    EXPECT_FALSE(oBits.IsAnyBitSet());
}

TEST(CTOVBitArrayTest, NothingOfABlockBehindASizeOfZeroComesBack)
{
    CTOVBitArray oBits(8);
    oBits.Complement();
    oBits = CTOVBitArray();

    oBits.Complement();
    oBits.Clear();
    EXPECT_FALSE(oBits.IsAnyBitSet());
    EXPECT_EQ(Holds("", 0), StateOf(CTOVBitArray(oBits)));

    oBits.SetNumBits(12);
    EXPECT_EQ(Holds("\0\0", 12), StateOf(oBits));
}

TEST(CTOVBitArrayTest, NoBitIsSetInABlockBehindASizeOfZero)
{
    CTOVBitArray oBits(8);
    oBits = CTOVBitArray();

    EXPECT_CHECK("nNumBits > 0", oBits.SetBit(0));

    EXPECT_EQ(Holds("", 0), StateOf(oBits));
}

TEST(CTOVBitArrayTest, ToItselfIsAssignedUnchanged)
{
    CTOVBitArray oBits = WithBits(12, {0, 11});
    const CTOVBitArray& oSame = oBits;

    oBits = oSame;

    EXPECT_EQ(Holds("\x80\x10", 12), StateOf(oBits));
}

TEST(CTOVBitArrayTest, GivesAllItsMemoryBack)
{
    const CAllocationCounter oCounter;
    {
        CTOVBitArray oBits(100);
        oBits.SetSize(50);
        oBits.SetNumBits(7);
        oBits.QueryBuffer(9);
        oBits.SetBit(72);
        CTOVBitArray oCopy(oBits);
        oCopy = CTOVBitArray(500);
        oCopy = CTOVBitArray();
        oCopy.SetSize(1);
    }
    EXPECT_EQ(0, oCounter.Kept());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVBitArrayTest, WithoutMemoryTheArrayStaysAsItWas)
{
    CTOVBitArray oBits = WithBits(8, {1, 7});
    CQuietRecorder oRecorder;
    bool bRefused = false;
    {
        const CAllocationFailure oFailure;
        bRefused = FailsACheck([&oBits] { oBits.SetNumBits(100); });
    }

    EXPECT_TRUE(bRefused);
    EXPECT_STREQ("pNewStream != NULL", oRecorder.Text());
    EXPECT_EQ(Holds("\x41\0", 8), StateOf(oBits));
}
#endif
