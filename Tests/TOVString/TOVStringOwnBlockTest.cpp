// Arguments that lie inside the string's own block: what they hold at the call counts, and no freed memory is read.
#include "TOVString/TOVStringKinds.h"

namespace
{
template<class TString> class CTOVStringOwnBlockTest : public testing::Test
{
};
TYPED_TEST_SUITE(CTOVStringOwnBlockTest, tStrings, sStringName);
} // namespace

TYPED_TEST(CTOVStringOwnBlockTest, ATailIsAssigned)
{
    TypeParam oText(TXT("abcdef"));

    oText = oText.GetString() + 2;
    EXPECT_EQ(Holds("cdef", 5), StateOf(oText));

    oText = oText.GetString();
    EXPECT_EQ(Holds("cdef", 5), StateOf(oText));

    oText = oText.GetString() + 4;
    EXPECT_EQ(Holds("", 5), StateOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, AMiddleIsCopied)
{
    TypeParam oText(TXT("abcdef"));

    oText.Copy(oText.GetString() + 1, 4);
    EXPECT_EQ(Holds("bcde", 5), StateOf(oText));

    oText.AssignCopy(2, oText.GetString() + 2);
    EXPECT_EQ(Holds("de", 3), StateOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, AStringIsAppendedToItself)
{
    TypeParam oText(TXT("abc"));

    oText += oText;
    EXPECT_EQ(Holds("abcabc", 7), StateOf(oText));

    oText += oText.GetString() + 4;
    EXPECT_EQ(Holds("abcabcbc", 9), StateOf(oText));

    oText.ConcatInPlace(2, oText.GetString() + 2);
    EXPECT_EQ(Holds("abcabcbcca", 11), StateOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, AStringIsAppendedToItselfInPlace)
{
    TypeParam oText(TXT("abcdefgh"));
    oText.ReleaseBuffer(2);
    const auto* const pBlock = oText.GetString();

    oText += oText;
    EXPECT_EQ(Holds("abab", 9), StateOf(oText));

    oText += oText.GetString() + 2;
    EXPECT_EQ(Holds("ababab", 9), StateOf(oText));
    EXPECT_EQ(pBlock, oText.GetString());
}

TYPED_TEST(CTOVStringOwnBlockTest, AnOverlapWithThePlaceBehindTheTextIsAppendedAsItWas)
{
    TypeParam oText(TXT("abcdefgh"));
    oText.ReleaseBuffer(3);

    oText.ConcatInPlace(4, oText.GetString() + 1);

    EXPECT_EQ(Holds("abcbc\0e", 9), StateOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, PartsAreJoined)
{
    TypeParam oText(TXT("abcdef"));
    const auto* const szText = oText.GetString();

    oText.ConcatCopy(2, szText + 4, 3, szText);

    EXPECT_EQ(Holds("efabc", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, PartsOfEqualSizeAreJoined)
{
    TypeParam oText(TXT("abcdef"));
    const auto* const szText = oText.GetString();

    oText.ConcatCopy(3, szText + 3, 3, szText);

    EXPECT_EQ(Holds("defabc", 7), StateOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, APartIsJoinedWithAnotherText)
{
    TypeParam oText(TXT("abcdef"));

    oText.ConcatCopy(2, oText.GetString() + 4, 3, TXT("xyz"));
    EXPECT_EQ(Holds("efxyz", 6), StateOf(oText));

    oText.ConcatCopy(1, TXT("<"), 3, oText.GetString() + 2);
    EXPECT_EQ(Holds("<xyz", 5), StateOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, TheWholeTextReplacesAPartThatMakesItGrow)
{
    TypeParam oText(TXT("a.b.c"));

    EXPECT_EQ(2, oText.Replace(TXT("."), oText.GetString()));

    EXPECT_EQ(Holds("aa.b.cba.b.cc", 14), StateOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, APartOfTheTextIsReplaced)
{
    TypeParam oText(TXT("xxaxx"));

    EXPECT_EQ(2, oText.Replace(oText.GetString() + 3, TXT("long")));

    EXPECT_EQ(Holds("longalong", 10), StateOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, APartOfTheTextIsReplacedInPlace)
{
    TypeParam oText(TXT("xxaxx"));

    EXPECT_EQ(2, oText.Replace(oText.GetString() + 3, TXT("y")));

    EXPECT_EQ(Holds("yay", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, APartOfTheTextIsTheReplacementInPlace)
{
    TypeParam oText(TXT("...ab"));

    EXPECT_EQ(3, oText.Replace(TXT("."), oText.GetString() + 4));

    EXPECT_EQ(Holds("bbbab", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, AShrinkingReplacementReadsTheTextAsItWas)
{
    TypeParam oText(TXT("---x---y"));

    EXPECT_EQ(2, oText.Replace(TXT("---"), oText.GetString() + 7));

    EXPECT_EQ(Holds("yxyy", 9), StateOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, AFormatThatGrowsReadsItsArgumentsAsTheyWere)
{
    TypeParam oText(TXT("text"));

    EXPECT_EQ(10, oText.Format(TXT("<%s%s>"), oText.GetString(), oText.GetString()));

    EXPECT_EQ("<texttext>", VisibleOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, AFormatThatGrowsMayBeTheTextItself)
{
    TypeParam oText(TXT("<%d>"));

    EXPECT_EQ(4, oText.Format(oText.GetString(), 42));

    EXPECT_EQ("<42>", VisibleOf(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, ASharersTextMayBeTheArgument)
{
    TypeParam oText(TXT("abc"));
    const TypeParam oSharer(oText);

    oText += oSharer;
    EXPECT_EQ(Holds("abcabc", 7), StateOf(oText));
    EXPECT_EQ(Holds("abc", 4), StateOf(oSharer));

    oText = oSharer;
    oText = oSharer.GetString() + 1;
    EXPECT_EQ(Holds("bc", 3), StateOf(oText));
    EXPECT_EQ(Holds("abc", 4), StateOf(oSharer));
}

TYPED_TEST(CTOVStringOwnBlockTest, AStringIsABeginningAndAnEndOfItself)
{
    const TypeParam oText(TXT("Test"));

    EXPECT_TRUE(oText.BeginsWith(oText));
    EXPECT_TRUE(oText.EndsWith(oText));
    EXPECT_TRUE(oText.BeginsWithNoCase(oText));
    EXPECT_TRUE(oText.EndsWithNoCase(oText));
    EXPECT_EQ(0, oText.Compare(oText));
}

TYPED_TEST(CTOVStringOwnBlockTest, AnElementIsSplitIntoItsOwnArray)
{
    CTOVArray<TypeParam> aTexts;
    aTexts.Add(TXT("a,b,c"));

    EXPECT_EQ(3, aTexts[0].Split(aTexts, ','));

    EXPECT_EQ(Holds("a", 2), StateOf(aTexts[0]));
    EXPECT_EQ(Holds("c", 2), StateOf(aTexts[2]));
}
