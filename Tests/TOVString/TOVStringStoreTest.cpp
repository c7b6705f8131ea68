// The low-level operations of both strings, from which the rest is built.
#include "TOVString/TOVStringKinds.h"

#include <algorithm>
#include <climits>
#include <new>

namespace
{
template<class TString> class CTOVStringStoreTest : public testing::Test
{
protected:
    typedef tUnitOf<TString> tUnit;

    // "abcdef" in a capacity of 7, cut to a length.
    static TString CutTo(int nLength)
    {
        TString oText;
        for (int nCharacter = 'a'; nCharacter <= 'f'; ++nCharacter)
            oText += static_cast<tUnit>(nCharacter);
        oText.ReleaseBuffer(nLength);
        return oText;
    }
};
TYPED_TEST_SUITE(CTOVStringStoreTest, tStrings, sStringName);
} // namespace

TYPED_TEST(CTOVStringStoreTest, AllocBufferTakesTheExactSizeAndTerminates)
{
    TypeParam oText(TXT("abcdefgh"));

    oText.AllocBuffer(5);
    EXPECT_EQ(5, oText.GetLength());
    EXPECT_EQ(6, CapacityOf(oText));
    EXPECT_EQ(0, oText.GetString()[5]);

    oText.AllocBuffer(20);
    EXPECT_EQ(20, oText.GetLength());
    EXPECT_EQ(21, CapacityOf(oText));
    EXPECT_EQ(0, oText.GetString()[20]);
}

TYPED_TEST(CTOVStringStoreTest, AllocBufferOfZeroLeavesTheStore)
{
    TypeParam oText(TXT("abc"));
    TypeParam oNew;

    oText.AllocBuffer(0);
    oNew.AllocBuffer(0);

    EXPECT_EQ(0, oText.GetLength());
    EXPECT_EQ(std::string("abc\0", 4), BlockOf(oText));
    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
}

TYPED_TEST(CTOVStringStoreTest, AllocBufferRefusesWhatIsNoLength)
{
    TypeParam oText(TXT("abc"));

    EXPECT_SOURCE_CHECK("nLength >= 0", oText.AllocBuffer(-1));
    EXPECT_SOURCE_CHECK("nLength >= 0", oText.AllocBuffer(INT_MIN));
    EXPECT_SOURCE_CHECK("nLength <= INT_MAX-1", oText.AllocBuffer(INT_MAX));

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, ALengthThatNoBlockCanHaveExhaustsTheMemory)
{
    TypeParam oText(TXT("abc"));

    EXPECT_THROW(oText.AllocBuffer(INT_MAX - 1), std::bad_alloc);

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, AssignCopyTakesTheExactSizeAlways)
{
    TypeParam oText(TXT("abcdef"));
    const auto* const pBlock = oText.GetString();

    oText.AssignCopy(6, TXT("123456"));
    EXPECT_EQ(Holds("123456", 7), StateOf(oText));
    EXPECT_NE(pBlock, oText.GetString());

    oText.AssignCopy(2, TXT("xyz"));
    EXPECT_EQ(Holds("xy", 3), StateOf(oText));

    oText.AssignCopy(4, TXT("a\0b"));
    EXPECT_EQ(Holds("a\0b\0", 5), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, AssignCopyOfNothingEndsTheTextInTheBlockAsItStands)
{
    TypeParam oText(TXT("abc"));
    const auto* const pBlock = oText.GetString();

    oText.AssignCopy(0, TXT("xyz"));

    EXPECT_EQ(Holds("", 4), StateOf(oText));
    EXPECT_EQ(std::string("\0bc\0", 4), BlockOf(oText));
    EXPECT_EQ(pBlock, oText.GetString());
}

TYPED_TEST(CTOVStringStoreTest, ConcatCopyJoinsTwoParts)
{
    TypeParam oText(TXT("something longer"));

    oText.ConcatCopy(2, TXT("abc"), 3, TXT("xyz"));
    EXPECT_EQ(Holds("abxyz", 6), StateOf(oText));

    oText.ConcatCopy(0, nullptr, 3, TXT("xyz"));
    EXPECT_EQ(Holds("xyz", 4), StateOf(oText));

    oText.ConcatCopy(2, TXT("abc"), 0, nullptr);
    EXPECT_EQ(Holds("ab", 3), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, ConcatCopyOfNothingLeavesTheString)
{
    TypeParam oText(TXT("abc"));

    oText.ConcatCopy(0, TXT("x"), 0, TXT("y"));

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, ConcatCopyRefusesASumThatIsNoLength)
{
    TypeParam oText(TXT("abc"));

    EXPECT_SOURCE_CHECK("nLength >= 0", oText.ConcatCopy(-3, TXT("x"), 1, TXT("y")));
    EXPECT_SOURCE_CHECK("nLength <= INT_MAX-1", oText.ConcatCopy(INT_MAX, TXT("x"), 0, TXT("y")));

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, ConcatInPlaceGrowsToTheExactSize)
{
    TypeParam oText(TXT("abc"));

    oText.ConcatInPlace(2, TXT("xyz"));
    EXPECT_EQ(Holds("abcxy", 6), StateOf(oText));

    oText.ConcatInPlace(3, TXT("1\0002"));
    EXPECT_EQ(Holds("abcxy1\0002", 9), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, ConcatInPlaceUsesTheCapacityThatIsThere)
{
    TypeParam oText = TestFixture::CutTo(2);
    const auto* const pBlock = oText.GetString();

    oText.ConcatInPlace(4, TXT("1234"));

    EXPECT_EQ(Holds("ab1234", 7), StateOf(oText));
    EXPECT_EQ(pBlock, oText.GetString());
}

TYPED_TEST(CTOVStringStoreTest, ConcatInPlaceOfNothingDoesNotLookAtTheText)
{
    TypeParam oText(TXT("abc"));

    oText.ConcatInPlace(0, nullptr);

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, GetBufferOfAHeldCapacityLeavesTheTextInIt)
{
    TypeParam oText(TXT("abcde"));
    const auto* const pBlock = oText.GetString();

    for (const int nLength : {3, 5, 0, -1})
        EXPECT_EQ(pBlock, oText.GetBuffer(nLength)) << nLength;

    EXPECT_EQ(Holds("abcde", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, GetBufferThatGrowsLosesTheTextAndLeavesTheLength)
{
    TypeParam oText(TXT("abcde"));

    const auto* const pBlock = oText.GetBuffer(7);

    EXPECT_EQ(pBlock, oText.GetString());
    EXPECT_EQ(8, CapacityOf(oText));
    EXPECT_EQ(0, pBlock[7]);
    EXPECT_EQ(5, oText.GetLength());
}

TYPED_TEST(CTOVStringStoreTest, TheLengthIsStaleBetweenGetBufferAndReleaseBuffer)
{
    TypeParam oText(TXT("abcde"));

    auto* const pBlock = oText.GetBuffer(7);
    std::fill_n(pBlock, 7, CHR('x'));
    EXPECT_EQ(5, oText.GetLength());
    EXPECT_EQ('x', oText.GetAt(4));
    EXPECT_EQ("xxxxxxx", VisibleOf(oText));

    oText.ReleaseBuffer(7);
    EXPECT_EQ(Holds("xxxxxxx", 8), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, GetBufferOfZeroMakesABlockForTheTerminator)
{
    TypeParam oText;

    EXPECT_EQ(0, *oText.GetBuffer(0));

    EXPECT_EQ(Holds("", 1), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, ReleaseBufferMeasuresTheTextForMinusOne)
{
    TypeParam oText;
    auto* const pBlock = oText.GetBuffer(10);
    pBlock[0] = 'a';
    pBlock[1] = 'b';
    pBlock[2] = 0;

    oText.ReleaseBuffer(-1);

    EXPECT_EQ(Holds("ab", 11), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, ReleaseBufferMeasuresUpToTheFirstZero)
{
    TypeParam oText;
    oText.Copy(TXT("ab\0cd"), 5);

    oText.ReleaseBuffer(-1);

    EXPECT_EQ(Holds("ab", 6), StateOf(oText));
    EXPECT_EQ(std::string("ab\0cd\0", 6), BlockOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, ReleaseBufferEndsTheTextWhereItIsTold)
{
    TypeParam oText(TXT("abcdef"));

    oText.ReleaseBuffer(4);
    EXPECT_EQ(Holds("abcd", 7), StateOf(oText));

    oText.ReleaseBuffer(6);
    EXPECT_EQ(Holds("abcd\0f", 7), StateOf(oText));

    oText.ReleaseBuffer(0);
    EXPECT_EQ(Holds("", 7), StateOf(oText));
    EXPECT_EQ(std::string("\0bcd\0f\0", 7), BlockOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, ReleaseBufferAtTheCapacityTerminatesOneBehindIt)
{
    TypeParam oText;
    std::fill_n(oText.GetBuffer(3), 4, CHR('x'));

    oText.ReleaseBuffer(4);

    EXPECT_EQ(Holds("xxxx", 4), StateOf(oText));
    EXPECT_EQ(0, oText.GetString()[4]);
    EXPECT_EQ('x', oText.GetAt(3));
}

TYPED_TEST(CTOVStringStoreTest, ATextThatFillsTheCapacityGrowsLikeAnyOther)
{
    TypeParam oText(TXT("abc"));
    oText.GetString()[3] = 'd';
    oText.ReleaseBuffer(4);

    oText += CHR('e');

    EXPECT_EQ(Holds("abcde", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringStoreTest, ReleaseBufferRefusesMoreThanTheCapacity)
{
    TypeParam oText(TXT("abc"));
    TypeParam oNew;

    EXPECT_SOURCE_CHECK("nNewLength <= m_oData.GetSize()", oText.ReleaseBuffer(5));
    EXPECT_SOURCE_CHECK("nNewLength <= m_oData.GetSize()", oText.ReleaseBuffer(INT_MAX));
    EXPECT_SOURCE_CHECK("nNewLength <= m_oData.GetSize()", oNew.ReleaseBuffer(1));

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
}

TYPED_TEST(CTOVStringStoreTest, ReleaseBufferCannotMeasureAStringWithoutABlock)
{
    TypeParam oNew;

    EXPECT_CHECK_AT(TOV_PLATFORM_SOURCE("TOVString"), "szString != NULL", oNew.ReleaseBuffer(-1));
}

TYPED_TEST(CTOVStringStoreTest, ReleaseBufferOfZeroLeavesAStringWithoutABlockAlone)
{
    TypeParam oNew;

    oNew.ReleaseBuffer(0);
    oNew.AssignCopy(0, nullptr);

    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
}

// What would lie outside every block is refused before anything is touched.
TYPED_TEST(CTOVStringStoreTest, RefusesLengthsThatNoTextCanHave)
{
    TypeParam oText(TXT("abc"));
    TypeParam oNew;
    typedef TOVDebug::CTOVAssertException tRefused;

    for (TypeParam* pText : {&oText, &oNew})
    {
        EXPECT_THROW(pText->ReleaseBuffer(-2), tRefused);
        EXPECT_THROW(pText->ReleaseBuffer(INT_MIN), tRefused);
        EXPECT_THROW(pText->AssignCopy(-1, TXT("x")), tRefused);
        EXPECT_THROW(pText->ConcatInPlace(-1, TXT("x")), tRefused);
        EXPECT_THROW(pText->GetBuffer(INT_MAX), tRefused);
    }
    EXPECT_THROW(oText.ConcatInPlace(INT_MAX, TXT("x")), tRefused);

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
}

TYPED_TEST(CTOVStringStoreTest, IsStillTerminatedAfterRefusingANullSource)
{
    TypeParam oText(TXT("abc"));
    typedef TOVDebug::CTOVAssertException tRefused;

    EXPECT_THROW(oText.AssignCopy(5, nullptr), tRefused);
    EXPECT_EQ(0, oText.GetString()[oText.GetLength()]);

    EXPECT_THROW(oText.ConcatInPlace(8, nullptr), tRefused);
    EXPECT_EQ(0, oText.GetString()[oText.GetLength()]);

    EXPECT_THROW(oText.ConcatCopy(2, nullptr, 3, TXT("abc")), tRefused);
    EXPECT_EQ(0, oText.GetString()[oText.GetLength()]);
}
