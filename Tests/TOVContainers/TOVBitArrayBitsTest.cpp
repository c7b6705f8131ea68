// The bits of bit arrays: reading, writing, joining, comparing.
#include "TOVContainers/TOVBitArrayInstruments.h"

#include <climits>
#include <string>
#include <type_traits>

TEST(CTOVBitArrayBitsTest, TheFirstBitIsTheTopOfTheFirstByte)
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

TEST(CTOVBitArrayBitsTest, SetsAndClearsSingleBits)
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

TEST(CTOVBitArrayBitsTest, GivesABitByIndexToo)
{
    const CTOVBitArray oBits = WithBits(8, {1, 3});

    EXPECT_FALSE(oBits[0]);
    EXPECT_TRUE(oBits[1]);
    EXPECT_TRUE(oBits[3]);
    EXPECT_FALSE(oBits[8]);
    EXPECT_CHECK(NO_SUCH_BIT, oBits[9]);
    EXPECT_CHECK(NO_SUCH_BIT, oBits[-1]);
}

TEST(CTOVBitArrayBitsTest, RefusesToReadOutsideTheBits)
{
    const CTOVBitArray oBits(8);

    for (const int nPos : {-1, -32, INT_MIN, 9, 10, INT_MAX})
        EXPECT_CHECK(NO_SUCH_BIT, oBits.GetBit(nPos));
}

TEST(CTOVBitArrayBitsTest, RefusesToWriteOutsideTheBits)
{
    CTOVBitArray oBits(8);

    for (const int nPos : {-1, -32, INT_MIN})
        EXPECT_CHECK("(0 <= nPos)", oBits.SetBit(nPos));
    for (const int nPos : {9, 10, INT_MAX})
        EXPECT_CHECK(NO_SUCH_BIT, oBits.SetBit(nPos));

    EXPECT_EQ(Holds("\0\0", 8), StateOf(oBits));
}

TEST(CTOVBitArrayBitsTest, TheBitBehindTheLastCanBeRead)
{
    EXPECT_FALSE(CTOVBitArray(8).GetBit(8));
    EXPECT_FALSE(CTOVBitArray(5).GetBit(5));

    CTOVBitArray oBits(5);
    oBits.QueryBuffer(1)[0] = 0x04;
    EXPECT_TRUE(oBits.GetBit(5));
}

TEST(CTOVBitArrayBitsTest, TheBitBehindTheLastCanBeSetAndDoesNotMakeTheArrayGrow)
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

TEST(CTOVBitArrayBitsTest, TheBitBehindTheLastTakesANewBlockWhereItChanges)
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

TEST(CTOVBitArrayBitsTest, TheBitBehindAllBytesIsFalseAndSettingItAddsAByte)
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

TEST(CTOVBitArrayBitsTest, AnArrayWithoutABlockHasNoBitToReadOrWrite)
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

TEST(CTOVBitArrayBitsTest, SetsARangeWithBothItsEnds)
{
    CTOVBitArray oBits(16);

    oBits.SetBitRange(2, 12, true);
    EXPECT_EQ("0011111111111000", BitsOf(oBits, 16));

    oBits.SetBitRange(7, 8, false);
    EXPECT_EQ("0011111001111000", BitsOf(oBits, 16));

    oBits.SetBitRange(15, 15, true);
    EXPECT_EQ("0011111001111001", BitsOf(oBits, 16));
}

TEST(CTOVBitArrayBitsTest, ARangeThatEndsBeforeItsBeginningIsNothing)
{
    CTOVBitArray oBits(8);

    EXPECT_NO_CHECK(oBits.SetBitRange(3, 2, true));
    EXPECT_NO_CHECK(oBits.SetBitRange(100, -100, true));
    EXPECT_NO_CHECK(CTOVBitArray().SetBitRange(1, 0, true));

    EXPECT_FALSE(oBits.IsAnyBitSet());
}

TEST(CTOVBitArrayBitsTest, ARangeIsSetUpToTheBitThatIsRefused)
{
    CTOVBitArray oBits(8);

    EXPECT_CHECK(NO_SUCH_BIT, oBits.SetBitRange(6, 12, true));
    EXPECT_EQ(Holds("\x03\x80", 8), StateOf(oBits));

    EXPECT_CHECK("(0 <= nPos)", oBits.SetBitRange(-1, 3, true));
    EXPECT_EQ(Holds("\x03\x80", 8), StateOf(oBits));
}

TEST(CTOVBitArrayBitsTest, ClearKeepsTheSizes)
{
    CTOVBitArray oBits = WithBits(12, {0, 5, 11});
    const tByte* const pBuffer = oBits.GetBuffer();

    oBits.Clear();

    EXPECT_EQ(Holds("\0\0", 12), StateOf(oBits));
    EXPECT_EQ(pBuffer, oBits.GetBuffer());
    EXPECT_NO_CHECK(CTOVBitArray().Clear());
}

TEST(CTOVBitArrayBitsTest, ComplementInvertsTheSpareBitsToo)
{
    CTOVBitArray oBits = WithBits(8, {0, 7});

    oBits.Complement();
    EXPECT_EQ(Holds("\x7E\xFF", 8), StateOf(oBits));

    oBits.Complement();
    EXPECT_EQ(Holds("\x81\0", 8), StateOf(oBits));
    EXPECT_NO_CHECK(CTOVBitArray().Complement());
}

TEST(CTOVBitArrayBitsTest, TheComplementOperatorChangesTheArrayItself)
{
    CTOVBitArray oBits = WithBits(5, {0});
    static_assert(std::is_same<const CTOVBitArray&, decltype(~oBits)>::value);

    EXPECT_EQ(&oBits, &~oBits);

    EXPECT_EQ(Holds("\x7F", 5), StateOf(oBits));
}

TEST(CTOVBitArrayBitsTest, ComplementsSingleBits)
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

TEST(CTOVBitArrayBitsTest, ComplementsTheBitBehindTheLastToo)
{
    CTOVBitArray oBits(8);

    oBits.Complement(8);
    EXPECT_EQ(Holds("\0\x80", 8), StateOf(oBits));

    oBits.Complement(8);
    EXPECT_EQ(Holds("\0\0", 8), StateOf(oBits));

    EXPECT_CHECK(NO_SUCH_BIT, oBits.Complement(9));
    EXPECT_CHECK(NO_SUCH_BIT, oBits.Complement(-1));
}

TEST(CTOVBitArrayBitsTest, JoinsByAnd)
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

TEST(CTOVBitArrayBitsTest, JoinsByOr)
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

TEST(CTOVBitArrayBitsTest, JoinsSpareBitsAndDoesNotAskForTheNumberOfBits)
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

TEST(CTOVBitArrayBitsTest, JoinsWithItselfAndWithoutBlocks)
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

TEST(CTOVBitArrayBitsTest, RefusesToJoinArraysOfDifferentSizes)
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

TEST(CTOVBitArrayBitsTest, FindsAnyBitSpareOnesToo)
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

TEST(CTOVBitArrayBitsTest, ComparesTheBytesAndNotTheNumberOfBits)
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

TEST(CTOVBitArrayBitsTest, SpareBitsCountInAComparison)
{
    const CTOVBitArray oBits(5);
    CTOVBitArray oOther(5);
    EXPECT_TRUE(oBits == oOther);

    oOther.QueryBuffer(1)[0] = 0x01;

    EXPECT_EQ(BitsOf(oBits, 5), BitsOf(oOther, 5));
    EXPECT_FALSE(oBits == oOther);
    EXPECT_TRUE(oBits != oOther);
}

TEST(CTOVBitArrayBitsTest, ArraysWithoutBlocksAreEqual)
{
    EXPECT_TRUE(CTOVBitArray() == CTOVBitArray());
    EXPECT_FALSE(CTOVBitArray() != CTOVBitArray());
    EXPECT_FALSE(CTOVBitArray() == CTOVBitArray(1));
    EXPECT_TRUE(CTOVBitArray(1) != CTOVBitArray());
}
