// Changing both strings in place: replacing, case, order.
#include "TOVString/TOVStringKinds.h"

namespace
{
const char NO_END[] = "GetData()->GetBuffer()[nNewLength] == '\\0'";

template<class TString> class CTOVStringReplaceTest : public testing::Test
{
protected:
    static constexpr const tUnitOf<TString>* NO_TEXT = NULL;
};
TYPED_TEST_SUITE(CTOVStringReplaceTest, tStrings, sStringName);
} // namespace

TYPED_TEST(CTOVStringReplaceTest, ReplacesACharacterEverywhere)
{
    TypeParam oText(TXT("Das ist ein test"));

    EXPECT_EQ(3, oText.Replace(CHR(' '), CHR('_')));

    EXPECT_EQ(Holds("Das_ist_ein_test", 17), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, ReplacesACharacterAtBothEnds)
{
    TypeParam oText(TXT("xabx"));

    EXPECT_EQ(2, oText.Replace(CHR('x'), CHR('y')));
    EXPECT_EQ(0, oText.Replace(CHR('x'), CHR('y')));

    EXPECT_EQ(Holds("yaby", 5), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, ReplacesACharacterBehindZeros)
{
    TypeParam oText;
    oText.Copy(TXT("x\0x\0x"), 5);

    EXPECT_EQ(3, oText.Replace(CHR('x'), CHR('y')));

    EXPECT_EQ(Holds("y\0y\0y", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, ReplacesZerosInsideTheTextAndNotItsTerminator)
{
    TypeParam oText;
    oText.Copy(TXT("a\0b\0c"), 5);

    EXPECT_EQ(2, oText.Replace(CHR('\0'), CHR('-')));

    EXPECT_EQ(Holds("a-b-c", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, ReplacesNoCharacterBehindTheText)
{
    TypeParam oText(TXT("axbx"));
    oText.ReleaseBuffer(2);

    EXPECT_EQ(1, oText.Replace(CHR('x'), CHR('y')));

    EXPECT_EQ(std::string("ay\0x\0", 5), BlockOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, ReplacesNoCharacterByItself)
{
    TypeParam oText(TXT("xabx"));

    EXPECT_EQ(0, oText.Replace(CHR('x'), CHR('x')));

    EXPECT_EQ(Holds("xabx", 5), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, ReplacesNoCharacterOfAnEmptyString)
{
    TypeParam oNew;
    TypeParam oEmptied(TXT("xx"));
    oEmptied.Empty();

    EXPECT_EQ(0, oNew.Replace(CHR('x'), CHR('y')));
    EXPECT_EQ(0, oEmptied.Replace(CHR('\0'), CHR('y')));

    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
    EXPECT_EQ(Holds("", 3), StateOf(oEmptied));
}

TYPED_TEST(CTOVStringReplaceTest, RefusesACharacterOfZeroAsTheNewOne)
{
    TypeParam oText(TXT("xabx"));
    TypeParam oNew;

    EXPECT_SOURCE_CHECK("cNewChar > 0", oText.Replace(CHR('x'), CHR('\0')));
    EXPECT_SOURCE_CHECK("cNewChar > 0", oText.Replace(CHR('\0'), CHR('\0')));
    EXPECT_SOURCE_CHECK("cNewChar > 0", oNew.Replace(CHR('x'), CHR('\0')));

    EXPECT_EQ(Holds("xabx", 5), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, ReplacesATextOfTheSameLengthInPlace)
{
    TypeParam oText(TXT("Das ist ein test"));
    const auto* const pBlock = oText.GetString();

    EXPECT_EQ(1, oText.Replace(TXT("ein"), TXT("der")));

    EXPECT_EQ(Holds("Das ist der test", 17), StateOf(oText));
    EXPECT_EQ(pBlock, oText.GetString());
}

TYPED_TEST(CTOVStringReplaceTest, GrowsToTheExactSize)
{
    TypeParam oText(TXT("a.b.c."));

    EXPECT_EQ(3, oText.Replace(TXT("."), TXT("<->")));

    EXPECT_EQ(Holds("a<->b<->c<->", 13), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, GrowsInTheCapacityThatIsThere)
{
    TypeParam oText(TXT("a.b.......")); // capacity 11
    oText.ReleaseBuffer(4);
    const auto* const pBlock = oText.GetString();

    EXPECT_EQ(2, oText.Replace(TXT("."), TXT("1234")));

    EXPECT_EQ(Holds("a1234b1234", 11), StateOf(oText));
    EXPECT_EQ(pBlock, oText.GetString());
}

TYPED_TEST(CTOVStringReplaceTest, ShrinksInPlaceAndKeepsTheCapacity)
{
    TypeParam oText(TXT("<->a<->b<->"));
    const auto* const pBlock = oText.GetString();

    EXPECT_EQ(3, oText.Replace(TXT("<->"), TXT(".")));

    EXPECT_EQ(Holds(".a.b.", 12), StateOf(oText));
    EXPECT_EQ(pBlock, oText.GetString());
}

TYPED_TEST(CTOVStringReplaceTest, DeletesForNoNewText)
{
    for (const auto* const szNothing : {TXT(""), TestFixture::NO_TEXT})
    {
        TypeParam oText(TXT("a--b--c"));

        EXPECT_EQ(2, oText.Replace(TXT("--"), szNothing));

        EXPECT_EQ(Holds("abc", 8), StateOf(oText));
    }
}

TYPED_TEST(CTOVStringReplaceTest, DeletesTheWholeText)
{
    TypeParam oText(TXT("abab"));

    EXPECT_EQ(2, oText.Replace(TXT("ab"), TXT("")));

    EXPECT_EQ(Holds("", 5), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, FindsNothingForNoOldText)
{
    TypeParam oText(TXT("abc"));

    EXPECT_EQ(0, oText.Replace(TXT(""), TXT("x")));
    EXPECT_EQ(0, oText.Replace(TestFixture::NO_TEXT, TXT("x")));
    EXPECT_EQ(0, oText.Replace(TestFixture::NO_TEXT, TestFixture::NO_TEXT));
    EXPECT_EQ(0, oText.Replace(TXT("ABC"), TXT("x")));
    EXPECT_EQ(0, oText.Replace(TXT("abcd"), TXT("x")));

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, FindsNothingInAnEmptyString)
{
    TypeParam oNew;
    TypeParam oEmptied(TXT("xx"));
    oEmptied.Empty();

    EXPECT_EQ(0, oNew.Replace(TXT("x"), TXT("yy")));
    EXPECT_EQ(0, oEmptied.Replace(TXT("x"), TXT("yy")));

    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
    EXPECT_EQ(Holds("", 3), StateOf(oEmptied));
}

TYPED_TEST(CTOVStringReplaceTest, HitsDoNotOverlap)
{
    TypeParam oText(TXT("aaaaa"));

    EXPECT_EQ(2, oText.Replace(TXT("aa"), TXT("b")));

    EXPECT_EQ(Holds("bba", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, TheNewTextIsNotSearchedAgain)
{
    TypeParam oGrowing(TXT("xax"));
    EXPECT_EQ(1, oGrowing.Replace(TXT("a"), TXT("aaa")));
    EXPECT_EQ(Holds("xaaax", 6), StateOf(oGrowing));

    TypeParam oShrinking(TXT("abab"));
    EXPECT_EQ(2, oShrinking.Replace(TXT("ab"), TXT("a")));
    EXPECT_EQ(Holds("aa", 5), StateOf(oShrinking));

    TypeParam oJoined(TXT("aabb"));
    EXPECT_EQ(1, oJoined.Replace(TXT("ab"), TXT("")));
    EXPECT_EQ(Holds("ab", 5), StateOf(oJoined));
}

TYPED_TEST(CTOVStringReplaceTest, EverySegmentBetweenZerosIsSearched)
{
    TypeParam oGrowing;
    oGrowing.Copy(TXT("ein\0zwei\0\0ein!"), 14);
    EXPECT_EQ(2, oGrowing.Replace(TXT("ein"), TXT("drei")));
    EXPECT_EQ(Holds("drei\0zwei\0\0drei!", 17), StateOf(oGrowing));

    TypeParam oShrinking;
    oShrinking.Copy(TXT("\0ein\0ein\0"), 9);
    EXPECT_EQ(2, oShrinking.Replace(TXT("ein"), TXT("1")));
    EXPECT_EQ(Holds("\0001\0001\0", 10), StateOf(oShrinking));

    TypeParam oSame;
    oSame.Copy(TXT("ein\0ein"), 7);
    EXPECT_EQ(2, oSame.Replace(TXT("ein"), TXT("der")));
    EXPECT_EQ(Holds("der\0der", 8), StateOf(oSame));
}

TYPED_TEST(CTOVStringReplaceTest, SegmentsMovedBehindTheOldLengthAreReachedInAGrownBlock)
{
    TypeParam oText;
    oText.Copy(TXT("a\0a"), 3);

    EXPECT_EQ(2, oText.Replace(TXT("a"), TXT("12345")));

    EXPECT_EQ(Holds("12345\00012345", 12), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, SegmentsMovedBehindTheOldLengthAreNotReachedInPlace)
{
    TypeParam oText(TXT("0123456789ABCDEFGHI"));
    oText.Empty();
    oText.ConcatInPlace(3, TXT("a\0a"));

    EXPECT_EQ(2, oText.Replace(TXT("a"), TXT("12345")));

    EXPECT_EQ(Holds("12345\0a\0\0\0\0", 20), StateOf(oText));
}

// As before, but what the block held behind the text stands where the new end should be.
TYPED_TEST(CTOVStringReplaceTest, RefusesToEndInWhatTheBlockHeldBehindTheText)
{
    TypeParam oText(TXT("0123456789ABCDEFGHI"));
    oText.ReleaseBuffer(0);
    oText.ConcatInPlace(3, TXT("a\0a"));

    EXPECT_SOURCE_CHECK(NO_END, oText.Replace(TXT("a"), TXT("12345")));
}

TYPED_TEST(CTOVStringReplaceTest, ATextCutShorterIsSearchedToItsEndOnly)
{
    TypeParam oText(TXT("a.b.c.d"));
    oText.ReleaseBuffer(3);

    EXPECT_EQ(1, oText.Replace(TXT("."), TXT("--")));

    EXPECT_EQ(Holds("a--b", 8), StateOf(oText));
}

// The sharer that was appended to wrote over the shorter one's terminator. Of the two hits that the first pass now
// counts, the second is out of the second pass's reach.
TYPED_TEST(CTOVStringReplaceTest, RefusesAResultWithoutATerminatorAtItsEnd)
{
    TypeParam oShort(TXT("abcdef"));
    oShort.ReleaseBuffer(2);
    TypeParam oLong(oShort);
    oLong += TXT("xa");

    EXPECT_SOURCE_CHECK(NO_END, oShort.Replace(TXT("a"), TXT("")));
}

TYPED_TEST(CTOVStringReplaceTest, LowersAndRaises)
{
    TypeParam oText(TXT("UPPPERLETTERS"));

    oText.MakeLower();
    EXPECT_EQ(Holds("uppperletters", 14), StateOf(oText));

    oText.MakeUpper();
    EXPECT_EQ(Holds("UPPPERLETTERS", 14), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, TurnsRound)
{
    TypeParam oText(TXT("abcd"));

    oText.Reverse();

    EXPECT_EQ(Holds("dcba", 5), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, ChangesUpToTheFirstZero)
{
    TypeParam oText;
    oText.Copy(TXT("aB\0cD"), 5);

    oText.MakeUpper();
    EXPECT_EQ(Holds("AB\0cD", 6), StateOf(oText));
    oText.MakeLower();
    EXPECT_EQ(Holds("ab\0cD", 6), StateOf(oText));
    oText.Reverse();
    EXPECT_EQ(Holds("ba\0cD", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, ChangesNothingWithoutABlock)
{
    TypeParam oNew;

    oNew.MakeLower();
    oNew.MakeUpper();
    oNew.Reverse();

    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
}
