#include "Support/TOVAllocationCounter.h"
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"

#include <TOVContainers/TOVBitArray.h>

#include <climits>
#include <initializer_list>
#include <ostream>
#include <string>
#include <type_traits>

namespace
{
TOV_PRIVATE_MEMBER(StreamOf, CTOVBitArray, tByte*, m_pStream)
TOV_PRIVATE_MEMBER(SizeOf, CTOVBitArray, int, m_nSize)
TOV_PRIVATE_MEMBER(NumBitsOf, CTOVBitArray, int, m_nNumBits)

const char NO_SUCH_BIT[] = "(0 <= nPos) && (nPos <= m_nNumBits)";
const char NO_BYTES[] = "m_pStream != NULL";
const char OTHER_SIZE[] = "GetSize() == oSrc.GetSize()";

std::string BytesOf(const CTOVBitArray& oBits)
{
    return std::string(reinterpret_cast<const char*>(oBits.GetBuffer()), static_cast<std::size_t>(oBits.GetSize()));
}

// The first bits, as zeros and ones.
std::string BitsOf(const CTOVBitArray& oBits, int nCount)
{
    std::string sBits;
    for (int nPos = 0; nPos < nCount; ++nPos)
        sBits += oBits.GetBit(nPos) ? '1' : '0';
    return sBits;
}

CTOVBitArray WithBits(int nNumBits, std::initializer_list<int> aPositions)
{
    CTOVBitArray oBits(nNumBits);
    for (const int nPos : aPositions)
        oBits.SetBit(nPos);
    return oBits;
}

// The array as bytes and in both sizes.
struct sHeld
{
    std::string sBytes;
    int nNumBits;
};

bool operator==(const sHeld& oFirst, const sHeld& oSecond)
{
    return oFirst.sBytes == oSecond.sBytes && oFirst.nNumBits == oSecond.nNumBits;
}

void PrintTo(const sHeld& oHeld, std::ostream* pStream)
{
    *pStream << testing::PrintToString(oHeld.sBytes) << " of " << oHeld.nNumBits << " bits";
}

template<std::size_t nSize> sHeld Holds(const char (&szBytes)[nSize], int nNumBits)
{
    return {std::string(szBytes, nSize - 1), nNumBits};
}

sHeld StateOf(const CTOVBitArray& oBits)
{
    return {oBits.GetSize() == 0 ? "" : BytesOf(oBits), oBits.GetNumBits()};
}
} // namespace

TEST(CTOVBitArrayTest, HasNoBitsAtFirst)
{
    const CTOVBitArray oBits;

    EXPECT_EQ(0, oBits.GetSize());
    EXPECT_EQ(0, oBits.GetNumBits());
    EXPECT_EQ(NULL, oBits.GetBuffer());
    EXPECT_FALSE(oBits.IsAnyBitSet());
}

TEST(CTOVBitArrayTest, HoldsItsMembersInOrder)
{
    struct sLayout
    {
        virtual ~sLayout() = default;
        tByte* m_pStream;
        int m_nSize;
        int m_nNumBits;
    };
    CTOVBitArray oBits(9);

    EXPECT_EQ(sizeof(sLayout), sizeof(CTOVBitArray));
    EXPECT_EQ(reinterpret_cast<const char*>(&oBits) + sizeof(void*), reinterpret_cast<const char*>(&StreamOf(oBits)));
    EXPECT_EQ(static_cast<const void*>(&StreamOf(oBits) + 1), &SizeOf(oBits));
    EXPECT_EQ(&SizeOf(oBits) + 1, &NumBitsOf(oBits));
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

TEST(CTOVBitArrayTest, TheFirstBitIsTheTopOfTheFirstByte)
{
    for (int nPos = 0; nPos < 24; ++nPos)
    {
        const CTOVBitArray oBits = WithBits(24, {nPos});
        std::string sExpected(4, '\0');
        sExpected[static_cast<std::size_t>(nPos / 8)] = static_cast<char>(1 << (7 - nPos % 8));

        EXPECT_EQ(sExpected, BytesOf(oBits)) << nPos;
        EXPECT_TRUE(oBits.GetBit(nPos)) << nPos;
    }
}

TEST(CTOVBitArrayTest, SetsAndClearsSingleBits)
{
    CTOVBitArray oBits(8);

    oBits.SetBit(0);
    oBits.SetBit(1);
    oBits.SetBit(2);
    EXPECT_EQ("11100000", BitsOf(oBits, 8));

    oBits.SetBit(1, false);
    oBits.SetBit(7, true);
    oBits.SetBit(7, true);
    oBits.SetBit(6, false);
    EXPECT_EQ("10100001", BitsOf(oBits, 8));
    EXPECT_EQ(Holds("\xA1\0", 8), StateOf(oBits));
}

TEST(CTOVBitArrayTest, GivesABitByIndexToo)
{
    const CTOVBitArray oBits = WithBits(8, {1, 3});

    EXPECT_FALSE(oBits[0]);
    EXPECT_TRUE(oBits[1]);
    EXPECT_TRUE(oBits[3]);
    EXPECT_FALSE(oBits[8]);
    EXPECT_CHECK(NO_SUCH_BIT, oBits[9]);
    EXPECT_CHECK(NO_SUCH_BIT, oBits[-1]);
}

TEST(CTOVBitArrayTest, RefusesToReadOutsideTheBits)
{
    const CTOVBitArray oBits(8);

    for (const int nPos : {-1, -32, INT_MIN, 9, 10, INT_MAX})
        EXPECT_CHECK(NO_SUCH_BIT, oBits.GetBit(nPos));
}

TEST(CTOVBitArrayTest, RefusesToWriteOutsideTheBits)
{
    CTOVBitArray oBits(8);

    for (const int nPos : {-1, -32, INT_MIN})
        EXPECT_CHECK("(0 <= nPos)", oBits.SetBit(nPos));
    for (const int nPos : {9, 10, INT_MAX})
        EXPECT_CHECK(NO_SUCH_BIT, oBits.SetBit(nPos));

    EXPECT_EQ(Holds("\0\0", 8), StateOf(oBits));
}

TEST(CTOVBitArrayTest, TheBitBehindTheLastCanBeRead)
{
    EXPECT_FALSE(CTOVBitArray(8).GetBit(8));
    EXPECT_FALSE(CTOVBitArray(5).GetBit(5));

    CTOVBitArray oBits(5);
    oBits.QueryBuffer(1)[0] = 0x04;
    EXPECT_TRUE(oBits.GetBit(5));
}

TEST(CTOVBitArrayTest, TheBitBehindTheLastCanBeSetAndDoesNotMakeTheArrayGrow)
{
    for (const int nNumBits : {5, 8, 16})
    {
        CTOVBitArray oBits = WithBits(nNumBits, {0});
        const int nSize = oBits.GetSize();

        oBits.SetBit(nNumBits);

        EXPECT_TRUE(oBits.GetBit(nNumBits)) << nNumBits;
        EXPECT_TRUE(oBits.GetBit(0)) << nNumBits;
        EXPECT_EQ(nNumBits, oBits.GetNumBits());
        EXPECT_EQ(nSize, oBits.GetSize()) << nNumBits;
        EXPECT_CHECK(NO_SUCH_BIT, oBits.SetBit(nNumBits + 1));
    }
}

TEST(CTOVBitArrayTest, TheBitBehindTheLastTakesANewBlockWhereItChanges)
{
    CTOVBitArray oBits(8);
    const tByte* const pBefore = oBits.GetBuffer();

    oBits.SetBit(8, false);
    EXPECT_EQ(pBefore, oBits.GetBuffer()) << "it has that value";

    oBits.SetBit(8);
    const tByte* const pSet = oBits.GetBuffer();
    EXPECT_NE(pBefore, pSet);

    oBits.SetBit(7);
    EXPECT_EQ(pSet, oBits.GetBuffer()) << "inside the bits";
}

TEST(CTOVBitArrayTest, TheBitBehindAllBytesIsFalseAndSettingItAddsAByte)
{
    CTOVBitArray oBits;
    oBits.SetSize(2);
    oBits.QueryBuffer(2)[1] = 0xFF;
    EXPECT_EQ(16, oBits.GetNumBits());

    EXPECT_FALSE(oBits.GetBit(16));
    oBits.SetBit(16, false);
    EXPECT_EQ(Holds("\0\xFF", 16), StateOf(oBits));

    oBits.SetBit(16);
    EXPECT_EQ(Holds("\0\xFF\x80", 16), StateOf(oBits));
}

TEST(CTOVBitArrayTest, AnArrayWithoutABlockHasNoBitToReadOrWrite)
{
    CTOVBitArray oBits;

    EXPECT_CHECK(NO_BYTES, oBits.GetBit(0));
    EXPECT_CHECK(NO_BYTES, oBits[0]);
    EXPECT_CHECK(NO_BYTES, oBits.SetBit(0));
    EXPECT_CHECK(NO_BYTES, oBits.SetBit(0, false));
    EXPECT_CHECK(NO_BYTES, oBits.Complement(0));
    EXPECT_CHECK(NO_BYTES, oBits.SetBitRange(0, 0, true));
    EXPECT_CHECK(NO_SUCH_BIT, oBits.GetBit(1));
    EXPECT_CHECK("(0 <= nPos)", oBits.SetBit(-1));

    EXPECT_EQ(Holds("", 0), StateOf(oBits));
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

TEST(CTOVBitArrayTest, SetsARangeWithBothItsEnds)
{
    CTOVBitArray oBits(16);

    oBits.SetBitRange(2, 12, true);
    EXPECT_EQ("0011111111111000", BitsOf(oBits, 16));

    oBits.SetBitRange(7, 8, false);
    EXPECT_EQ("0011111001111000", BitsOf(oBits, 16));

    oBits.SetBitRange(15, 15, true);
    EXPECT_EQ("0011111001111001", BitsOf(oBits, 16));
}

TEST(CTOVBitArrayTest, ARangeThatEndsBeforeItsBeginningIsNothing)
{
    CTOVBitArray oBits(8);

    EXPECT_NO_CHECK(oBits.SetBitRange(3, 2, true));
    EXPECT_NO_CHECK(oBits.SetBitRange(100, -100, true));
    EXPECT_NO_CHECK(CTOVBitArray().SetBitRange(1, 0, true));

    EXPECT_FALSE(oBits.IsAnyBitSet());
}

TEST(CTOVBitArrayTest, ARangeIsSetUpToTheBitThatIsRefused)
{
    CTOVBitArray oBits(8);

    EXPECT_CHECK(NO_SUCH_BIT, oBits.SetBitRange(6, 12, true));
    EXPECT_EQ(Holds("\x03\x80", 8), StateOf(oBits));

    EXPECT_CHECK("(0 <= nPos)", oBits.SetBitRange(-1, 3, true));
    EXPECT_EQ(Holds("\x03\x80", 8), StateOf(oBits));
}

TEST(CTOVBitArrayTest, ClearKeepsTheSizes)
{
    CTOVBitArray oBits = WithBits(12, {0, 5, 11});
    const tByte* const pBuffer = oBits.GetBuffer();

    oBits.Clear();

    EXPECT_EQ(Holds("\0\0", 12), StateOf(oBits));
    EXPECT_EQ(pBuffer, oBits.GetBuffer());
    EXPECT_NO_CHECK(CTOVBitArray().Clear());
}

TEST(CTOVBitArrayTest, ComplementInvertsTheSpareBitsToo)
{
    CTOVBitArray oBits = WithBits(8, {0, 7});

    oBits.Complement();
    EXPECT_EQ(Holds("\x7E\xFF", 8), StateOf(oBits));

    oBits.Complement();
    EXPECT_EQ(Holds("\x81\0", 8), StateOf(oBits));
    EXPECT_NO_CHECK(CTOVBitArray().Complement());
}

TEST(CTOVBitArrayTest, TheComplementOperatorChangesTheArrayItself)
{
    CTOVBitArray oBits = WithBits(5, {0});
    static_assert(std::is_same<const CTOVBitArray&, decltype(~oBits)>::value);

    EXPECT_EQ(&oBits, &~oBits);

    EXPECT_EQ(Holds("\x7F", 5), StateOf(oBits));
}

TEST(CTOVBitArrayTest, ComplementsSingleBits)
{
    CTOVBitArray oBits;
    oBits.SetNumBits(45);
    oBits.SetBit(0, false);
    oBits.SetBit(1, true);
    oBits.SetBit(2, false);
    oBits.SetBit(3, false);

    for (int nPos = 0; nPos < 4; ++nPos)
        oBits.Complement(nPos);

    EXPECT_TRUE(oBits[0]);
    EXPECT_FALSE(oBits[1]);
    EXPECT_TRUE(oBits[2]);
    EXPECT_TRUE(oBits[3]);
    EXPECT_EQ("10110000", BitsOf(oBits, 8));
}

TEST(CTOVBitArrayTest, ComplementsTheBitBehindTheLastToo)
{
    CTOVBitArray oBits(8);

    oBits.Complement(8);
    EXPECT_EQ(Holds("\0\x80", 8), StateOf(oBits));

    oBits.Complement(8);
    EXPECT_EQ(Holds("\0\0", 8), StateOf(oBits));

    EXPECT_CHECK(NO_SUCH_BIT, oBits.Complement(9));
    EXPECT_CHECK(NO_SUCH_BIT, oBits.Complement(-1));
}

TEST(CTOVBitArrayTest, JoinsByAnd)
{
    const CTOVBitArray oMask = WithBits(8, {0, 1, 2});
    CTOVBitArray oBits = WithBits(8, {2, 3});

    oBits.And(oMask);
    EXPECT_EQ(Holds("\x20\0", 8), StateOf(oBits));
    EXPECT_EQ(Holds("\xE0\0", 8), StateOf(oMask));

    oBits.SetBit(4);
    EXPECT_TRUE(oBits.IsAnyBitSet());
    oBits &= oMask;
    EXPECT_EQ(Holds("\x20\0", 8), StateOf(oBits));
}

TEST(CTOVBitArrayTest, JoinsByOr)
{
    const CTOVBitArray oMask = WithBits(15, {0, 14});
    CTOVBitArray oBits = WithBits(15, {1, 8});

    oBits.Or(oMask);
    EXPECT_EQ(Holds("\xC0\x82", 15), StateOf(oBits));
    EXPECT_EQ(Holds("\x80\x02", 15), StateOf(oMask));

    oBits.Clear();
    oBits |= oMask;
    EXPECT_EQ(Holds("\x80\x02", 15), StateOf(oBits));
}

TEST(CTOVBitArrayTest, JoinsSpareBitsAndDoesNotAskForTheNumberOfBits)
{
    CTOVBitArray oFew(9);
    CTOVBitArray oMany(15);
    oFew.Complement();

    oMany.Or(oFew);
    EXPECT_EQ(Holds("\xFF\xFF", 15), StateOf(oMany));

    oMany.Clear();
    oFew.And(oMany);
    EXPECT_EQ(Holds("\0\0", 9), StateOf(oFew));
}

TEST(CTOVBitArrayTest, JoinsWithItselfAndWithoutBlocks)
{
    CTOVBitArray oBits = WithBits(8, {1, 3});
    CTOVBitArray oNone;

    oBits.And(oBits);
    oBits.Or(oBits);
    EXPECT_NO_CHECK(oNone.And(CTOVBitArray()));
    EXPECT_NO_CHECK(oNone.Or(CTOVBitArray()));

    EXPECT_EQ(Holds("\x50\0", 8), StateOf(oBits));
    EXPECT_EQ(Holds("", 0), StateOf(oNone));
}

TEST(CTOVBitArrayTest, RefusesToJoinArraysOfDifferentSizes)
{
    CTOVBitArray oBits = WithBits(8, {1});
    const CTOVBitArray oOther = WithBits(7, {1});

    EXPECT_CHECK(OTHER_SIZE, oBits.And(oOther));
    EXPECT_CHECK(OTHER_SIZE, oBits.Or(oOther));
    EXPECT_CHECK(OTHER_SIZE, oBits &= oOther);
    EXPECT_CHECK(OTHER_SIZE, oBits |= oOther);
    EXPECT_CHECK(OTHER_SIZE, oBits.And(CTOVBitArray()));

    EXPECT_EQ(Holds("\x40\0", 8), StateOf(oBits));
}

TEST(CTOVBitArrayTest, FindsAnyBitSpareOnesToo)
{
    CTOVBitArray oBits(8);
    EXPECT_FALSE(oBits.IsAnyBitSet());

    oBits.SetBit(7);
    EXPECT_TRUE(oBits.IsAnyBitSet());

    oBits.Clear();
    EXPECT_FALSE(oBits.IsAnyBitSet());

    oBits.QueryBuffer(2)[1] = 0x01;
    EXPECT_TRUE(oBits.IsAnyBitSet());
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

    EXPECT_EQ(NULL, oBits.QueryBuffer(0));
    EXPECT_EQ(NULL, oBits.QueryBuffer(-1));
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

TEST(CTOVBitArrayTest, ComparesTheBytesAndNotTheNumberOfBits)
{
    const CTOVBitArray oBits = WithBits(9, {0, 8});

    EXPECT_TRUE(oBits == WithBits(9, {0, 8}));
    EXPECT_TRUE(oBits == WithBits(15, {0, 8}));
    EXPECT_FALSE(oBits != WithBits(15, {0, 8}));
    EXPECT_TRUE(oBits == oBits);
    EXPECT_FALSE(oBits == WithBits(9, {0}));
    EXPECT_TRUE(oBits != WithBits(9, {0, 7}));
    EXPECT_FALSE(oBits == WithBits(16, {0, 8}));
    EXPECT_TRUE(oBits != WithBits(16, {0, 8}));
}

TEST(CTOVBitArrayTest, SpareBitsCountInAComparison)
{
    const CTOVBitArray oBits(5);
    CTOVBitArray oOther(5);
    EXPECT_TRUE(oBits == oOther);

    oOther.QueryBuffer(1)[0] = 0x01;

    EXPECT_EQ(BitsOf(oBits, 5), BitsOf(oOther, 5));
    EXPECT_FALSE(oBits == oOther);
    EXPECT_TRUE(oBits != oOther);
}

TEST(CTOVBitArrayTest, ArraysWithoutBlocksAreEqual)
{
    EXPECT_TRUE(CTOVBitArray() == CTOVBitArray());
    EXPECT_FALSE(CTOVBitArray() != CTOVBitArray());
    EXPECT_FALSE(CTOVBitArray() == CTOVBitArray(1));
    EXPECT_TRUE(CTOVBitArray(1) != CTOVBitArray());
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
    EXPECT_EQ(NULL, oCopy.GetBuffer());
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
        try
        {
            oBits.SetNumBits(100);
        }
        catch (const TOVDebug::CTOVAssertException&)
        {
            bRefused = true;
        }
    }

    EXPECT_TRUE(bRefused);
    EXPECT_STREQ("pNewStream != NULL", oRecorder.Text());
    EXPECT_EQ(Holds("\x41\0", 8), StateOf(oBits));
}
#endif
