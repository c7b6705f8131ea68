// Searching in both strings, tests for beginnings and ends, comparison.
#include "Support/TOVSignOf.h"
#include "TOVString/TOVStringKinds.h"

#include <climits>

namespace
{
constexpr char PLATFORM_SOURCE[] = TOV_PLATFORM_SOURCE("TOVString");

template<class TString> class CTOVStringSearchTest : public testing::Test
{
protected:
    typedef TString TypeParam;
    typedef tUnitOf<TString> tUnit;

    CTOVStringSearchTest() : m_oText(TXT("Das ist ein test")), m_oTitle(TXT("Dies ist ein Test"))
    {
        m_oEmptied = TXT("x");
        m_oEmptied.Empty();
    }

    const TString m_oText;
    const TString m_oTitle;
    const TString m_oNew;
    TString m_oEmptied;
    static constexpr const tUnit* NO_TEXT = nullptr;
};
TYPED_TEST_SUITE(CTOVStringSearchTest, tStrings, sStringName);

// A text and what a test for it gives.
template<class TUnit> struct sAnswer
{
    const TUnit* szText;
    bool bAnswer;
};
} // namespace

TYPED_TEST(CTOVStringSearchTest, FindsACharacter)
{
    EXPECT_EQ(4, this->m_oText.Find(CHR('i')));
    EXPECT_EQ(0, this->m_oText.Find(CHR('D')));
    EXPECT_EQ(-1, this->m_oText.Find(CHR('z')));
    EXPECT_EQ(4, this->m_oText.Find(CHR('i'), 4));
    EXPECT_EQ(9, this->m_oText.Find(CHR('i'), 5));
    EXPECT_EQ(-1, this->m_oText.Find(CHR('i'), 10));
}

TYPED_TEST(CTOVStringSearchTest, FindsACharacterAbove127)
{
    const TypeParam oText(TXT("a\xE4z"));

    EXPECT_EQ(1, oText.Find(CHR('\xE4')));
    EXPECT_EQ(1, oText.ReverseFind(CHR('\xE4')));
    EXPECT_EQ(-1, oText.Find(CHR('\x64')));
}

TYPED_TEST(CTOVStringSearchTest, FindsNoCharacterFromTheLengthOn)
{
    EXPECT_EQ(15, this->m_oText.Find(CHR('t'), 15));
    EXPECT_EQ(-1, this->m_oText.Find(CHR('t'), 16));
    EXPECT_EQ(-1, this->m_oText.Find(CHR('t'), 17));
    EXPECT_EQ(-1, this->m_oText.Find(CHR('t'), INT_MAX));
    EXPECT_EQ(-1, this->m_oNew.Find(CHR('t')));
    EXPECT_EQ(-1, this->m_oEmptied.Find(CHR('x')));
}

TYPED_TEST(CTOVStringSearchTest, FindsACharacterUpToTheNextZero)
{
    TypeParam oText;
    oText.Copy(TXT("ab\0cd"), 5);

    EXPECT_EQ(-1, oText.Find(CHR('c')));
    EXPECT_EQ(-1, oText.Find(CHR('c'), 2));
    EXPECT_EQ(3, oText.Find(CHR('c'), 3));
}

TYPED_TEST(CTOVStringSearchTest, RefusesToFindTheTerminatorAndFromBeforeTheStart)
{
    EXPECT_SOURCE_CHECK(NO_CHARACTER_TO_FIND, this->m_oText.Find(CHR('\0')));
    EXPECT_SOURCE_CHECK(NO_CHARACTER_TO_FIND, this->m_oText.Find(CHR('i'), -1));
    EXPECT_SOURCE_CHECK(NO_CHARACTER_TO_FIND, this->m_oText.Find(CHR('i'), INT_MIN));
    EXPECT_SOURCE_CHECK(NO_CHARACTER_TO_FIND, this->m_oNew.Find(CHR('\0')));
    EXPECT_SOURCE_CHECK(NO_CHARACTER_TO_FIND, this->m_oNew.Find(CHR('i'), -1));
}

TYPED_TEST(CTOVStringSearchTest, FindsAText)
{
    EXPECT_EQ(8, this->m_oText.Find(TXT("ein")));
    EXPECT_EQ(-1, this->m_oText.Find(TXT("aber")));
    EXPECT_EQ(0, this->m_oText.Find(TXT("Das ist ein test")));
    EXPECT_EQ(-1, this->m_oText.Find(TXT("Das ist ein test!")));
    EXPECT_EQ(5, this->m_oText.Find(TXT("st"), 5));
    EXPECT_EQ(14, this->m_oText.Find(TXT("st"), 6));
    EXPECT_EQ(-1, this->m_oText.Find(TXT("st"), 15));
}

TYPED_TEST(CTOVStringSearchTest, FindsNoEmptyTextAndNothingInAnEmptyOne)
{
    EXPECT_EQ(-1, this->m_oText.Find(TXT("")));
    EXPECT_EQ(-1, this->m_oNew.Find(TXT("")));
    EXPECT_EQ(-1, this->m_oNew.Find(TXT("x")));
    EXPECT_EQ(-1, this->m_oEmptied.Find(TXT("x"), 3));
    EXPECT_EQ(-1, this->m_oEmptied.Find(TXT("")));
}

TYPED_TEST(CTOVStringSearchTest, FindsNoTextFromTheLengthOn)
{
    EXPECT_EQ(15, this->m_oText.Find(TXT("t"), 15));
    EXPECT_EQ(-1, this->m_oText.Find(TXT("t"), 16));
    EXPECT_EQ(-1, this->m_oText.Find(TXT("t"), 17));
    EXPECT_EQ(-1, this->m_oText.Find(TXT("t"), INT_MAX));
}

TYPED_TEST(CTOVStringSearchTest, RefusesToFindNullAndFromBeforeTheStart)
{
    EXPECT_SOURCE_CHECK(NO_TEXT_TO_FIND, this->m_oText.Find(this->NO_TEXT));
    EXPECT_SOURCE_CHECK(NO_TEXT_TO_FIND, this->m_oText.Find(TXT("ein"), -1));
    EXPECT_SOURCE_CHECK(NO_TEXT_TO_FIND, this->m_oNew.Find(this->NO_TEXT));
    EXPECT_SOURCE_CHECK(NO_TEXT_TO_FIND, this->m_oNew.Find(TXT(""), -1));
}

TYPED_TEST(CTOVStringSearchTest, FindsTheLastOfACharacter)
{
    EXPECT_EQ(13, this->m_oText.ReverseFind(CHR('e')));
    EXPECT_EQ(0, this->m_oText.ReverseFind(CHR('D')));
    EXPECT_EQ(15, this->m_oText.ReverseFind(CHR('t')));
    EXPECT_EQ(-1, this->m_oText.ReverseFind(CHR('z')));
    EXPECT_EQ(-1, this->m_oNew.ReverseFind(CHR('z')));
    EXPECT_EQ(-1, this->m_oEmptied.ReverseFind(CHR('x')));
}

TYPED_TEST(CTOVStringSearchTest, TheLastOfZeroIsTheTerminator)
{
    TypeParam oText;
    oText.Copy(TXT("ab\0cd"), 5);

    EXPECT_EQ(2, oText.ReverseFind(CHR('\0')));
    EXPECT_EQ(-1, oText.ReverseFind(CHR('d')));
    EXPECT_EQ(0, this->m_oEmptied.ReverseFind(CHR('\0')));
    EXPECT_EQ(-1, this->m_oNew.ReverseFind(CHR('\0')));
}

TYPED_TEST(CTOVStringSearchTest, FindsTheFirstOfASet)
{
    EXPECT_EQ(1, this->m_oText.FindOneOf(TXT("abe")));
    EXPECT_EQ(-1, this->m_oText.FindOneOf(TXT("zyw")));
    EXPECT_EQ(-1, this->m_oText.FindOneOf(TXT("")));
    EXPECT_EQ(8, this->m_oText.FindOneOf(TXT("abe"), 2));
    EXPECT_EQ(13, this->m_oText.FindOneOf(TXT("abe"), 9));
    EXPECT_EQ(-1, this->m_oText.FindOneOf(TXT("abe"), 14));
    EXPECT_EQ(-1, this->m_oText.FindOneOf(TXT("abe"), 16));
    EXPECT_EQ(-1, this->m_oEmptied.FindOneOf(TXT("x")));
}

TYPED_TEST(CTOVStringSearchTest, FindsTheFirstOutsideASet)
{
    EXPECT_EQ(2, this->m_oText.FindNotOneOf(TXT("aAbBcCdDeE")));
    EXPECT_EQ(-1, this->m_oText.FindNotOneOf(TXT("Das ist ein test")));
    EXPECT_EQ(0, this->m_oText.FindNotOneOf(TXT("")));
    EXPECT_EQ(4, this->m_oText.FindNotOneOf(TXT("Das "), 1));
    EXPECT_EQ(15, this->m_oText.FindNotOneOf(TXT("s"), 14));
    EXPECT_EQ(-1, this->m_oText.FindNotOneOf(TXT("x"), 16));
    EXPECT_EQ(-1, this->m_oEmptied.FindNotOneOf(TXT("x")));
}

TYPED_TEST(CTOVStringSearchTest, FindsNothingOfASetFarBehindTheText)
{
    for (const int nStart : {17, 18, 1000, INT_MAX})
    {
        EXPECT_EQ(-1, this->m_oText.FindOneOf(TXT("abe"), nStart)) << nStart;
        EXPECT_EQ(-1, this->m_oText.FindNotOneOf(TXT("abe"), nStart)) << nStart;
    }
}

TYPED_TEST(CTOVStringSearchTest, SearchesForASetRefuseNull)
{
    EXPECT_SOURCE_CHECK("szCharSet != NULL", this->m_oText.FindOneOf(nullptr));
    EXPECT_SOURCE_CHECK("szCharSet != NULL", this->m_oText.FindNotOneOf(nullptr));
    EXPECT_SOURCE_CHECK("szCharSet != NULL", this->m_oNew.FindOneOf(nullptr, -1));
    EXPECT_SOURCE_CHECK("szCharSet != NULL", this->m_oNew.FindNotOneOf(nullptr, -1));
}

TYPED_TEST(CTOVStringSearchTest, SearchesForASetNeedABlockAndAStartInFrontOfNothing)
{
    EXPECT_CHECK_AT(PLATFORM_SOURCE, "szString != NULL", this->m_oNew.FindOneOf(TXT("x")));
    EXPECT_CHECK_AT(PLATFORM_SOURCE, "szString != NULL", this->m_oNew.FindNotOneOf(TXT("x"), -1));
    EXPECT_CHECK_AT(PLATFORM_SOURCE, "nCount >= 0", this->m_oText.FindOneOf(TXT("x"), -1));
    EXPECT_CHECK_AT(PLATFORM_SOURCE, "nCount >= 0", this->m_oText.FindNotOneOf(TXT("x"), -1));
}

TYPED_TEST(CTOVStringSearchTest, FindsTheLastOfASet)
{
    EXPECT_EQ(13, this->m_oText.ReverseFindOneOf(TXT("abe")));
    EXPECT_EQ(-1, this->m_oText.ReverseFindOneOf(TXT("zyw")));
    EXPECT_EQ(1, this->m_oText.ReverseFindOneOf(TXT("a")));
    EXPECT_EQ(15, this->m_oText.ReverseFindOneOf(TXT("t"), 0));
}

TYPED_TEST(CTOVStringSearchTest, FindsTheLastOutsideASet)
{
    EXPECT_EQ(15, this->m_oText.ReverseFindNotOneOf(TXT("abcde")));
    EXPECT_EQ(-1, this->m_oText.ReverseFindNotOneOf(TXT("Das ist ein test")));
    EXPECT_EQ(10, this->m_oText.ReverseFindNotOneOf(TXT(" test"), 0));
}

TYPED_TEST(CTOVStringSearchTest, SearchesFromTheEndNeverLookAtTheFirstCharacter)
{
    EXPECT_EQ(-1, this->m_oText.ReverseFindOneOf(TXT("D")));
    EXPECT_EQ(-1, this->m_oText.ReverseFindNotOneOf(TXT("as itent")));
    EXPECT_EQ(-1, TypeParam(TXT("x")).ReverseFindOneOf(TXT("x")));
    EXPECT_EQ(-1, TypeParam(TXT("x")).ReverseFindNotOneOf(TXT("y")));
}

TYPED_TEST(CTOVStringSearchTest, SearchesFromTheEndFindNothingInNothing)
{
    for (const TypeParam* pText : {&this->m_oNew, static_cast<const TypeParam*>(&this->m_oEmptied)})
    {
        EXPECT_EQ(-1, pText->ReverseFindOneOf(TXT("x")));
        EXPECT_EQ(-1, pText->ReverseFindNotOneOf(TXT("x")));
        EXPECT_EQ(-1, pText->ReverseFindNotOneOf(TXT("")));
    }
}

TYPED_TEST(CTOVStringSearchTest, SearchesFromTheEndRefuseNullFirstAndThenAStart)
{
    for (const TypeParam* pText : {&this->m_oText, &this->m_oNew})
    {
        EXPECT_SOURCE_CHECK("szCharSet != NULL", pText->ReverseFindOneOf(nullptr, 1));
        EXPECT_SOURCE_CHECK("szCharSet != NULL", pText->ReverseFindNotOneOf(nullptr, 1));
        EXPECT_SOURCE_CHECK("nStartPos == 0", pText->ReverseFindOneOf(TXT("x"), 1));
        EXPECT_SOURCE_CHECK("nStartPos == 0", pText->ReverseFindNotOneOf(TXT("x"), -1));
    }
}

TYPED_TEST(CTOVStringSearchTest, BeginsWithATextOfTheSameCase)
{
    const sAnswer<tUnitOf<TypeParam>> aAnswers[] = {
        {TXT("D"), true},     {TXT("Dies"), true}, {TXT("Dies ist ein Test"), true},   {TXT("d"), false},
        {TXT("DIES"), false}, {TXT("ies"), false}, {TXT("Dies ist ein Test!"), false}, {TXT("Dies hall"), false},
        {TXT("ist"), false},
    };
    for (const auto& oAnswer : aAnswers)
        EXPECT_EQ(oAnswer.bAnswer, this->m_oTitle.BeginsWith(oAnswer.szText)) << VisibleOf(TypeParam(oAnswer.szText));
}

TYPED_TEST(CTOVStringSearchTest, BeginsWithATextOfAnyCase)
{
    const sAnswer<tUnitOf<TypeParam>> aAnswers[] = {
        {TXT("D"), true},    {TXT("d"), true},          {TXT("Dies"), true},
        {TXT("DIES"), true}, {TXT("Dies hall"), false}, {TXT("dIES IST EIN tEST"), true},
        {TXT("IST"), false},
    };
    for (const auto& oAnswer : aAnswers)
        EXPECT_EQ(oAnswer.bAnswer, this->m_oTitle.BeginsWithNoCase(oAnswer.szText))
            << VisibleOf(TypeParam(oAnswer.szText));
}

TYPED_TEST(CTOVStringSearchTest, ABeginningThatComesAgainStillIsOne)
{
    EXPECT_TRUE(TypeParam(TXT("aab")).BeginsWith(TXT("a")));
    EXPECT_FALSE(TypeParam(TXT("baa")).BeginsWith(TXT("a")));
}

TYPED_TEST(CTOVStringSearchTest, EndsWithATextOfTheSameCase)
{
    const sAnswer<tUnitOf<TypeParam>> aAnswers[] = {
        {TXT("t"), true},     {TXT("Test"), true},        {TXT(" ein Test"), true},  {TXT("T"), false},
        {TXT("TESt"), false}, {TXT(" ein  Test"), false}, {TXT("Dies hall"), false}, {TXT("Dies ist ein Test"), true},
        {TXT("Dies"), false},
    };
    for (const auto& oAnswer : aAnswers)
        EXPECT_EQ(oAnswer.bAnswer, this->m_oTitle.EndsWith(oAnswer.szText)) << VisibleOf(TypeParam(oAnswer.szText));
}

TYPED_TEST(CTOVStringSearchTest, EndsWithATextOfAnyCase)
{
    const sAnswer<tUnitOf<TypeParam>> aAnswers[] = {
        {TXT("t"), true},         {TXT("T"), true},           {TXT("Test"), true},       {TXT("TESt"), true},
        {TXT(" ein Test"), true}, {TXT(" ein  Test"), false}, {TXT("Dies hall"), false},
    };
    for (const auto& oAnswer : aAnswers)
        EXPECT_EQ(oAnswer.bAnswer, this->m_oTitle.EndsWithNoCase(oAnswer.szText))
            << VisibleOf(TypeParam(oAnswer.szText));
}

TYPED_TEST(CTOVStringSearchTest, EndsWithAnEndThatOverlapsItself)
{
    EXPECT_TRUE(TypeParam(TXT("aaa")).EndsWith(TXT("aa")));
    EXPECT_TRUE(TypeParam(TXT("xababa")).EndsWithNoCase(TXT("ABA")));
    EXPECT_FALSE(TypeParam(TXT("ababx")).EndsWith(TXT("ab")));
}

TYPED_TEST(CTOVStringSearchTest, AnEndThatIsOneLongerThanTheStringCountsAsFound)
{
    const TypeParam oText(TXT("abc"));

    EXPECT_TRUE(oText.EndsWith(TXT("abcd")));
    EXPECT_TRUE(oText.EndsWith(TXT("wxyz")));
    EXPECT_FALSE(oText.EndsWith(TXT("abcde")));
    EXPECT_FALSE(oText.EndsWith(TXT("xyz")));
    EXPECT_TRUE(oText.EndsWithNoCase(TXT("WXYZ")));
    EXPECT_FALSE(oText.EndsWithNoCase(TXT("ABCDE")));
}

TYPED_TEST(CTOVStringSearchTest, AnEmptyStringEndsWithAnyOneCharacter)
{
    for (const TypeParam* pText : {&this->m_oNew, static_cast<const TypeParam*>(&this->m_oEmptied)})
    {
        EXPECT_TRUE(pText->EndsWith(TXT("q")));
        EXPECT_TRUE(pText->EndsWithNoCase(TXT("q")));
        EXPECT_FALSE(pText->EndsWith(TXT("qq")));
        EXPECT_FALSE(pText->BeginsWith(TXT("q")));
        EXPECT_FALSE(pText->BeginsWithNoCase(TXT("q")));
    }
}

TYPED_TEST(CTOVStringSearchTest, AnEndIsMeasuredByItsWholeLength)
{
    const TypeParam oTail = this->m_oText.Right(5); // "test" and a zero

    EXPECT_FALSE(this->m_oText.EndsWith(oTail));
    EXPECT_TRUE(this->m_oText.BeginsWith(this->m_oText.Mid(0, 4)));
    EXPECT_FALSE(TypeParam(TXT("test")).EndsWith(oTail));
    EXPECT_FALSE(TypeParam(TXT("test")).EndsWithNoCase(oTail));
    EXPECT_TRUE(TypeParam(TXT("abcd")).EndsWith(oTail));
    EXPECT_TRUE(TypeParam(TXT("atest")).EndsWith(TXT("test")));
}

TYPED_TEST(CTOVStringSearchTest, AnEmptiedTextIsNoBeginningAndNoEnd)
{
    EXPECT_FALSE(this->m_oText.BeginsWith(this->m_oEmptied));
    EXPECT_FALSE(this->m_oText.EndsWith(this->m_oEmptied));
    EXPECT_FALSE(this->m_oEmptied.BeginsWith(this->m_oEmptied));
    EXPECT_FALSE(this->m_oEmptied.EndsWith(this->m_oEmptied));
    EXPECT_FALSE(this->m_oNew.BeginsWith(this->m_oEmptied));
    EXPECT_FALSE(this->m_oNew.EndsWith(this->m_oEmptied));
}

TYPED_TEST(CTOVStringSearchTest, RefusesABeginningAndAnEndWithoutABlock)
{
    for (const TypeParam* pText : {&this->m_oText, &this->m_oNew})
    {
        EXPECT_SOURCE_CHECK(NO_TEXT_TO_FIND, pText->BeginsWith(this->m_oNew));
        EXPECT_SOURCE_CHECK(NO_TEXT_TO_FIND, pText->BeginsWithNoCase(this->m_oNew));
        EXPECT_SOURCE_CHECK(NO_TEXT_TO_FIND, pText->EndsWith(this->m_oNew));
        EXPECT_SOURCE_CHECK(NO_TEXT_TO_FIND, pText->EndsWithNoCase(this->m_oNew));
    }
}

TYPED_TEST(CTOVStringSearchTest, TheFormsWithoutCaseRefuseAnEmptiedTextToo)
{
    EXPECT_SOURCE_CHECK(NO_TEXT_TO_FIND, this->m_oText.BeginsWithNoCase(this->m_oEmptied));
    EXPECT_SOURCE_CHECK(NO_TEXT_TO_FIND, this->m_oText.EndsWithNoCase(this->m_oEmptied));
}

TYPED_TEST(CTOVStringSearchTest, ComparesByUnsignedUnits)
{
    const TypeParam oText(TXT("BCD"));

    EXPECT_EQ(0, oText.Compare(TXT("BCD")));
    EXPECT_EQ(-1, oText.Compare(TXT("CCD")));
    EXPECT_EQ(1, oText.Compare(TXT("ACD")));
    EXPECT_EQ(1, oText.Compare(TXT("BC")));
    EXPECT_EQ(-1, oText.Compare(TXT("BCDE")));
    EXPECT_EQ(-1, oText.Compare(TXT("bcD")));
    EXPECT_EQ(-1, oText.Compare(TXT("\xE4")));
    EXPECT_EQ(1, TypeParam(TXT("\x80")).Compare(TXT("\x7F")));
}

TYPED_TEST(CTOVStringSearchTest, ComparesWithoutCase)
{
    const TypeParam oText(TXT("BCD"));

    EXPECT_EQ(0, oText.CompareNoCase(TXT("bcD")));
    EXPECT_EQ(-1, SignOf(oText.CompareNoCase(TXT("ccd"))));
    EXPECT_EQ(1, SignOf(oText.CompareNoCase(TXT("acd"))));
    EXPECT_EQ(1, SignOf(oText.CompareNoCase(TXT("bc"))));
}

TYPED_TEST(CTOVStringSearchTest, NothingComparesAsTheEmptyText)
{
    for (const TypeParam* pText : {&this->m_oNew, static_cast<const TypeParam*>(&this->m_oEmptied)})
    {
        EXPECT_EQ(0, pText->Compare(TXT("")));
        EXPECT_EQ(0, pText->Compare(nullptr));
        EXPECT_EQ(0, pText->CompareNoCase(TXT("")));
        EXPECT_EQ(0, pText->CompareNoCase(nullptr));
        EXPECT_EQ(-1, pText->Compare(TXT("a")));
        EXPECT_EQ(-1, SignOf(pText->CompareNoCase(TXT("a"))));
    }
    EXPECT_EQ(1, this->m_oText.Compare(nullptr));
    EXPECT_EQ(1, SignOf(this->m_oText.CompareNoCase(nullptr)));
}

TYPED_TEST(CTOVStringSearchTest, ComparesUpToTheFirstZero)
{
    TypeParam oText;
    oText.Copy(TXT("test\0x"), 6);

    EXPECT_EQ(0, oText.Compare(TXT("test")));
    EXPECT_EQ(0, oText.CompareNoCase(TXT("TEST")));
    EXPECT_EQ(0, oText.Collate(TXT("test")));
}

TYPED_TEST(CTOVStringSearchTest, OperatorsCompareTheText)
{
    const TypeParam oText(TXT("bcd"));
    const TypeParam oEqual(TXT("bcd"));
    const TypeParam oGreater(TXT("bce"));

    EXPECT_TRUE(oText == oEqual && oText == TXT("bcd") && TXT("bcd") == oText);
    EXPECT_TRUE(oText != oGreater && oText != TXT("x") && TXT("x") != oText);
    EXPECT_FALSE(oText != oEqual || oText == oGreater);
    EXPECT_TRUE(oText < oGreater && oGreater > oText && oText <= oEqual && oText >= oEqual);
    EXPECT_FALSE(oText < oEqual || oText > oEqual || oText >= oGreater);
    EXPECT_TRUE(this->m_oNew == this->m_oEmptied && this->m_oNew == TXT(""));
}

TYPED_TEST(CTOVStringSearchTest, Collates)
{
    const TypeParam oText(TXT("bcd"));

    EXPECT_EQ(0, oText.Collate(TXT("bcd")));
    EXPECT_EQ(-1, oText.Collate(TXT("ccd")));
    EXPECT_EQ(1, oText.Collate(TXT("acd")));
    EXPECT_EQ(0, oText.CollateNoCase(TXT("BcD")));
    EXPECT_EQ(-1, SignOf(oText.CollateNoCase(TXT("CCD"))));
    EXPECT_EQ(1, SignOf(oText.CollateNoCase(TXT("ACD"))));
    EXPECT_EQ(1, this->m_oText.Collate(TXT("")));
}

TYPED_TEST(CTOVStringSearchTest, RefusesToCollateNothing)
{
    EXPECT_CHECK_AT(PLATFORM_SOURCE, "szString2 != NULL", this->m_oText.Collate(nullptr));
    EXPECT_CHECK_AT(PLATFORM_SOURCE, "szString2 != NULL", this->m_oText.CollateNoCase(nullptr));
    EXPECT_CHECK_AT(PLATFORM_SOURCE, "szString1 != NULL", this->m_oNew.Collate(TXT("x")));
    EXPECT_CHECK_AT(PLATFORM_SOURCE, "szString1 != NULL", this->m_oNew.CollateNoCase(nullptr));
    EXPECT_EQ(0, this->m_oEmptied.Collate(TXT("")));
}
