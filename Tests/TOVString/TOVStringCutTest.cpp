// Cutting and splitting of both strings. Parts are measured against the capacity, not against the length.
#include "TOVString/TOVStringKinds.h"

#include <climits>
#include <memory>
#include <vector>

namespace
{
template<class TString> class CTOVStringCutTest : public testing::Test
{
protected:
    typedef TString TypeParam;

    CTOVStringCutTest() : m_oText(TXT("Das ist ein test")), m_oSpare(TXT("abcdef")) { m_oSpare.ReleaseBuffer(2); }

    // A part that is not the whole has a block of its own.
    void ExpectPart(const sHeld& oExpected, const TString& oPart) const
    {
        EXPECT_EQ(oExpected, StateOf(oPart));
        EXPECT_NE(m_oText.GetString(), oPart.GetString());
        EXPECT_NE(m_oSpare.GetString(), oPart.GetString());
    }

    void ExpectWhole(const TString& oText, const TString& oPart) const
    {
        EXPECT_EQ(oText.GetString(), oPart.GetString());
        EXPECT_EQ(oText.GetLength(), oPart.GetLength());
    }

    const TString m_oText; // capacity 17
    TString m_oSpare;      // "ab", capacity 7, "def" behind the terminator
    const TString m_oNew;
};
TYPED_TEST_SUITE(CTOVStringCutTest, tStrings, sStringName);

template<class TString> class CTOVStringSplitTest : public testing::Test
{
protected:
    typedef TString TypeParam;

    std::vector<sHeld> Split(const TString& oText)
    {
        const int nCount = oText.Split(m_aParts, ',');
        EXPECT_EQ(m_aParts.GetSize(), nCount);
        std::vector<sHeld> aStates;
        for (long lPart = 0; lPart < m_aParts.GetSize(); ++lPart)
            aStates.push_back(StateOf(m_aParts[lPart]));
        return aStates;
    }

    typedef std::vector<sHeld> tParts;

private:
    // Apart, since destructors that check cannot be those of a fixture's members.
    const std::unique_ptr<CTOVArray<TString>> m_pParts = std::make_unique<CTOVArray<TString>>();

protected:
    CTOVArray<TString>& m_aParts = *m_pParts;
};
TYPED_TEST_SUITE(CTOVStringSplitTest, tStrings, sStringName);
} // namespace

TYPED_TEST(CTOVStringCutTest, LeftOfLessThanOneIsEmpty)
{
    for (const int nCount : {0, -1, INT_MIN})
    {
        this->ExpectPart(HoldsNothing(), this->m_oText.Left(nCount));
        this->ExpectPart(HoldsNothing(), this->m_oText.Right(nCount));
        this->ExpectPart(HoldsNothing(), this->m_oText.Mid(0, nCount));
        this->ExpectPart(HoldsNothing(), this->m_oText.Mid(100, nCount));
    }
}

TYPED_TEST(CTOVStringCutTest, LeftCopiesTheFirstCharacters)
{
    this->ExpectPart(Holds("Das", 4), this->m_oText.Left(3));
    this->ExpectPart(Holds("D", 2), this->m_oText.Left(1));
    this->ExpectPart(Holds("Das ist ein tes", 16), this->m_oText.Left(15));
}

TYPED_TEST(CTOVStringCutTest, LeftOfTheLengthIsACopyAndOfOneMoreIsShared)
{
    this->ExpectPart(Holds("Das ist ein test", 17), this->m_oText.Left(16));
    this->ExpectWhole(this->m_oText, this->m_oText.Left(17));
    this->ExpectWhole(this->m_oText, this->m_oText.Left(18));
    this->ExpectWhole(this->m_oText, this->m_oText.Left(INT_MAX));
}

TYPED_TEST(CTOVStringCutTest, LeftCopiesWhatLiesBehindTheTerminator)
{
    this->ExpectPart(Holds("ab", 3), this->m_oSpare.Left(2));
    this->ExpectPart(Holds("ab\0", 4), this->m_oSpare.Left(3));
    this->ExpectPart(Holds("ab\0def", 7), this->m_oSpare.Left(6));
    this->ExpectWhole(this->m_oSpare, this->m_oSpare.Left(7));
}

TYPED_TEST(CTOVStringCutTest, RightTakesTheTerminatorWithIt)
{
    const TypeParam oRight = this->m_oText.Right(5);

    this->ExpectPart(Holds("test\0", 6), oRight);
    EXPECT_EQ(5, oRight.GetLength());
    EXPECT_EQ(0, oRight.Compare(TXT("test")));
    this->ExpectPart(Holds("\0", 2), this->m_oText.Right(1));
    this->ExpectPart(Holds("as ist ein test\0", 17), this->m_oText.Right(16));
}

TYPED_TEST(CTOVStringCutTest, RightOfTheCapacityAndMoreIsShared)
{
    this->ExpectWhole(this->m_oText, this->m_oText.Right(17));
    this->ExpectWhole(this->m_oText, this->m_oText.Right(18));
    this->ExpectWhole(this->m_oText, this->m_oText.Right(INT_MAX));
}

TYPED_TEST(CTOVStringCutTest, RightCountsFromTheEndOfTheCapacity)
{
    this->ExpectPart(Holds("f\0", 3), this->m_oSpare.Right(2));
    this->ExpectPart(Holds("b\0def\0", 7), this->m_oSpare.Right(6));
    this->ExpectWhole(this->m_oSpare, this->m_oSpare.Right(7));
}

TYPED_TEST(CTOVStringCutTest, MidCopiesAPart)
{
    this->ExpectPart(Holds("ist ein", 8), this->m_oText.Mid(4, 7));
    this->ExpectPart(Holds("D", 2), this->m_oText.Mid(0, 1));
    this->ExpectPart(Holds("t", 2), this->m_oText.Mid(15, 1));
    this->ExpectPart(Holds("ist ein test", 13), this->m_oText.Mid(4, 12));
}

TYPED_TEST(CTOVStringCutTest, AMidThatReachesTheEndTakesTheTerminatorWithIt)
{
    const TypeParam oTail = this->m_oText.Mid(4);

    this->ExpectPart(Holds("ist ein test\0", 14), oTail);
    EXPECT_EQ(13, oTail.GetLength());
    EXPECT_EQ(0, oTail.Compare(TXT("ist ein test")));
    this->ExpectPart(Holds("ist ein test\0", 14), this->m_oText.Mid(4, 13));
    this->ExpectPart(Holds("ist ein test\0", 14), this->m_oText.Mid(4, 14));
    this->ExpectPart(Holds("ist ein test\0", 14), this->m_oText.Mid(4, 1000));
    this->ExpectPart(Holds("\0", 2), this->m_oText.Mid(16));
    this->ExpectPart(Holds("\0", 2), this->m_oText.Mid(16, 1));
}

TYPED_TEST(CTOVStringCutTest, AMidOfTheLargestCountReachesTheEnd)
{
    this->ExpectPart(Holds("ist ein test\0", 14), this->m_oText.Mid(4, INT_MAX));
    this->ExpectWhole(this->m_oText, this->m_oText.Mid(0, INT_MAX));
}

TYPED_TEST(CTOVStringCutTest, MidOfTheLengthIsACopyAndOfOneMoreIsShared)
{
    this->ExpectPart(Holds("Das ist ein test", 17), this->m_oText.Mid(0, 16));
    this->ExpectWhole(this->m_oText, this->m_oText.Mid(0, 17));
    this->ExpectWhole(this->m_oText, this->m_oText.Mid(0, 18));
    this->ExpectWhole(this->m_oText, this->m_oText.Mid(0));
}

TYPED_TEST(CTOVStringCutTest, MidBeginsAtTheStartForANegativeFirst)
{
    this->ExpectPart(Holds("Das", 4), this->m_oText.Mid(-2, 3));
    this->ExpectPart(Holds("Das", 4), this->m_oText.Mid(INT_MIN, 3));
    this->ExpectWhole(this->m_oText, this->m_oText.Mid(-1, 17));
    this->ExpectWhole(this->m_oText, this->m_oText.Mid(-1));
}

TYPED_TEST(CTOVStringCutTest, MidCopiesWhatLiesBehindTheTerminator)
{
    this->ExpectPart(Holds("b\0d", 4), this->m_oSpare.Mid(1, 3));
    this->ExpectPart(Holds("def\0", 5), this->m_oSpare.Mid(3));
    this->ExpectPart(Holds("ab\0def", 7), this->m_oSpare.Mid(0, 6));
    this->ExpectWhole(this->m_oSpare, this->m_oSpare.Mid(0));
}

TYPED_TEST(CTOVStringCutTest, MidToTheEndIsEmptyFromTheCapacityOn)
{
    for (const int nFirst : {17, 18, 1000, INT_MAX})
        this->ExpectPart(HoldsNothing(), this->m_oText.Mid(nFirst));
}

TYPED_TEST(CTOVStringCutTest, RefusesAMidOfCharactersFromTheCapacityOn)
{
    for (const int nFirst : {17, 18, 1000, INT_MAX})
        EXPECT_THROW(this->m_oText.Mid(nFirst, 1), TOVDebug::CTOVAssertException) << nFirst;
    EXPECT_THROW(this->m_oNew.Mid(1, 1), TOVDebug::CTOVAssertException);
}

TYPED_TEST(CTOVStringCutTest, PartsOfAStringWithoutABlockAreEmpty)
{
    this->ExpectPart(HoldsNothing(), this->m_oNew.Left(3));
    this->ExpectPart(HoldsNothing(), this->m_oNew.Right(3));
    this->ExpectPart(HoldsNothing(), this->m_oNew.Mid(0, 3));
    this->ExpectPart(HoldsNothing(), this->m_oNew.Mid(-1, 3));
    this->ExpectPart(HoldsNothing(), this->m_oNew.Mid(0));
    this->ExpectPart(HoldsNothing(), this->m_oNew.Mid(1));
}

TYPED_TEST(CTOVStringCutTest, PartsOfAnEmptiedStringAreZeros)
{
    TypeParam oEmptied(TXT("abc"));
    oEmptied.Empty();

    this->ExpectPart(Holds("\0\0", 3), oEmptied.Left(2));
    this->ExpectPart(Holds("\0\0\0", 4), oEmptied.Right(3));
    this->ExpectWhole(oEmptied, oEmptied.Left(4));
}

TYPED_TEST(CTOVStringSplitTest, GivesThePartsInTheirExactSize)
{
    const typename TestFixture::tParts aExpected = {Holds("one", 4), Holds("two", 4), Holds("three", 6)};

    EXPECT_EQ(aExpected, this->Split(TXT("one,two,three")));
}

TYPED_TEST(CTOVStringSplitTest, GivesATextWithoutSeparatorsAsACopy)
{
    const TypeParam oText(TXT("one"));

    EXPECT_EQ((typename TestFixture::tParts{Holds("one", 4)}), this->Split(oText));

    EXPECT_NE(oText.GetString(), this->m_aParts[0].GetString());
}

TYPED_TEST(CTOVStringSplitTest, GivesEmptyPartsToo)
{
    typedef typename TestFixture::tParts tStates;

    EXPECT_EQ((tStates{Holds("a", 2), Holds("b", 2), HoldsNothing()}), this->Split(TXT("a,b,")));
    EXPECT_EQ((tStates{Holds("a", 2), HoldsNothing(), Holds("b", 2)}), this->Split(TXT("a,,b")));
    EXPECT_EQ((tStates{HoldsNothing(), Holds("a", 2)}), this->Split(TXT(",a")));
    EXPECT_EQ((tStates{HoldsNothing(), HoldsNothing()}), this->Split(TXT(",")));
}

TYPED_TEST(CTOVStringSplitTest, AnEmptyStringHasNoPart)
{
    TypeParam oEmptied(TXT("x"));
    oEmptied.Empty();
    this->Split(TXT("a,b"));

    EXPECT_EQ(typename TestFixture::tParts(), this->Split(TypeParam()));

    this->Split(TXT("a,b"));
    EXPECT_EQ(typename TestFixture::tParts(), this->Split(oEmptied));
}

TYPED_TEST(CTOVStringSplitTest, ReplacesWhatTheArrayHeld)
{
    this->Split(TXT("a,b,c"));

    EXPECT_EQ((typename TestFixture::tParts{Holds("d", 2)}), this->Split(TXT("d")));
}

TYPED_TEST(CTOVStringSplitTest, TheLastPartEndsWithTheLengthNotTheCapacity)
{
    TypeParam oText(TXT("a,b,c,d"));
    oText.ReleaseBuffer(3);

    EXPECT_EQ((typename TestFixture::tParts{Holds("a", 2), Holds("b", 2)}), this->Split(oText));
}

TYPED_TEST(CTOVStringSplitTest, ASeparatorBehindAZeroStaysInsideThePart)
{
    TypeParam oText;
    oText.Copy(TXT("a,b\0,c"), 6);

    EXPECT_EQ((typename TestFixture::tParts{Holds("a", 2), Holds("b\0,c", 5)}), this->Split(oText));
}

TYPED_TEST(CTOVStringSplitTest, RefusesASeparatorOfZeroAfterEmptyingTheArray)
{
    this->Split(TXT("a,b"));
    const TypeParam oText(TXT("abc"));

    EXPECT_SOURCE_CHECK(NO_CHARACTER_TO_FIND, oText.Split(this->m_aParts, '\0'));

    EXPECT_EQ(0, this->m_aParts.GetSize());
    EXPECT_EQ(0, TypeParam().Split(this->m_aParts, '\0'));
}
