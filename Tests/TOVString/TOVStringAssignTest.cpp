// Assignment and appending of both strings, Copy and Empty.
#include "TOVString/TOVStringKinds.h"

namespace
{
template<class TString> class CTOVStringAssignTest : public testing::Test
{
};
TYPED_TEST_SUITE(CTOVStringAssignTest, tStrings, sStringName);
} // namespace

TYPED_TEST(CTOVStringAssignTest, AStringIsSharedWithItsLength)
{
    const TypeParam oText(TXT("BCD"));
    TypeParam oOther(TXT("something else"));

    EXPECT_EQ(&oOther, &(oOther = oText));

    EXPECT_EQ(oText.GetString(), oOther.GetString());
    EXPECT_EQ(Holds("BCD", 4), StateOf(oOther));
}

TYPED_TEST(CTOVStringAssignTest, AStringWithoutABlockTakesTheBlockAway)
{
    TypeParam oText(TXT("BCD"));

    oText = TypeParam();

    EXPECT_EQ(HoldsNothing(), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, ToItselfDoesNothing)
{
    TypeParam oText(TXT("BCD"));
    const TypeParam& oSame = oText;

    oText = oSame;

    EXPECT_EQ(Holds("BCD", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, OfTwoStringsOnOneBlockLeavesTheirLengthsApart)
{
    TypeParam oLong(TXT("abcdef"));
    TypeParam oShort(oLong);
    oShort.ReleaseBuffer(2);

    oLong = oShort;

    EXPECT_EQ(6, oLong.GetLength());
    EXPECT_EQ(2, oShort.GetLength());
}

TYPED_TEST(CTOVStringAssignTest, OfTwoStringsWithoutBlocksLeavesThemOnTheirOwn)
{
    TypeParam oFirst;
    TypeParam oSecond;

    oSecond = oFirst;
    oFirst.AllocBuffer(3);

    EXPECT_EQ(HoldsNothing(), StateOf(oSecond));
}

TYPED_TEST(CTOVStringAssignTest, ATextIsCopiedIntoItsExactSize)
{
    TypeParam oText;

    EXPECT_EQ(&oText, &(oText = TXT("BCD")));
    EXPECT_EQ(Holds("BCD", 4), StateOf(oText));

    oText = TXT("longer text");
    EXPECT_EQ(Holds("longer text", 12), StateOf(oText));

    oText = TXT("x");
    EXPECT_EQ(Holds("x", 2), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, ATextOfEqualLengthTakesANewBlockAllTheSame)
{
    TypeParam oText(TXT("BCD"));
    const auto* const pBlock = oText.GetString();

    oText = TXT("xyz");

    EXPECT_NE(pBlock, oText.GetString());
    EXPECT_EQ(Holds("xyz", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, NoTextEmptiesTheString)
{
    for (const auto* const szNothing : {TXT(""), static_cast<const tUnitOf<TypeParam>*>(nullptr)})
    {
        TypeParam oText(TXT("BCD"));
        const auto* const pBlock = oText.GetString();

        oText = szNothing;

        EXPECT_EQ(Holds("", 4), StateOf(oText));
        EXPECT_EQ(std::string(4, '\0'), BlockOf(oText));
        EXPECT_EQ(pBlock, oText.GetString());
    }
}

TYPED_TEST(CTOVStringAssignTest, NoTextMakesNoBlock)
{
    TypeParam oText;

    oText = TXT("");
    EXPECT_EQ(HoldsNothing(), StateOf(oText));

    oText = static_cast<const tUnitOf<TypeParam>*>(nullptr);
    EXPECT_EQ(HoldsNothing(), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, ACharacterBecomesAText)
{
    for (int nCharacter = 1; nCharacter < 128; ++nCharacter)
    {
        const auto cCharacter = static_cast<tUnitOf<TypeParam>>(nCharacter);
        TypeParam oText(TXT("BCD"));

        EXPECT_EQ(&oText, &(oText = cCharacter));

        EXPECT_EQ((sHeld{std::string(1, static_cast<char>(nCharacter)), 2}), StateOf(oText));
    }
}

TYPED_TEST(CTOVStringAssignTest, ACharacterOfZeroEmptiesTheString)
{
    TypeParam oText(TXT("BCD"));
    TypeParam oNew;

    oText = CHR('\0');
    oNew = CHR('\0');

    EXPECT_EQ(Holds("", 4), StateOf(oText));
    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
}

TYPED_TEST(CTOVStringAssignTest, AppendsAString)
{
    TypeParam oText(TXT("abc"));
    const TypeParam oMore(TXT("de"));

    EXPECT_EQ(&oText, &(oText += oMore));

    EXPECT_EQ(Holds("abcde", 6), StateOf(oText));
    EXPECT_EQ(Holds("de", 3), StateOf(oMore));
}

TYPED_TEST(CTOVStringAssignTest, AppendsAStringWithTheZerosInIt)
{
    TypeParam oText(TXT("abc"));
    TypeParam oMore;
    oMore.Copy(TXT("d\0e"), 4);

    oText += oMore;

    EXPECT_EQ(Holds("abcd\0e\0", 8), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, AppendsAText)
{
    TypeParam oText;

    EXPECT_EQ(&oText, &(oText += TXT("abc")));
    EXPECT_EQ(Holds("abc", 4), StateOf(oText));

    oText += TXT("de");
    EXPECT_EQ(Holds("abcde", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, AppendsACharacter)
{
    TypeParam oText(TXT("abc"));

    EXPECT_EQ(&oText, &(oText += CHR('d')));
    EXPECT_EQ(Holds("abcd", 5), StateOf(oText));

    oText += CHR('\xE4');
    EXPECT_EQ(Holds("abcd\xE4", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, AppendsAZeroAsItStands)
{
    TypeParam oText(TXT("abc"));

    oText += CHR('\0');
    oText += CHR('d');

    EXPECT_EQ(Holds("abc\0d", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, AppendingNothingChangesNothing)
{
    TypeParam oText(TXT("abc"));
    const auto* const pBlock = oText.GetString();

    oText += TXT("");
    oText += TypeParam();

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
    EXPECT_EQ(pBlock, oText.GetString());

    TypeParam oNew;
    oNew += TXT("");
    oNew += TypeParam();
    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
}

TYPED_TEST(CTOVStringAssignTest, AppendsInPlaceWhereThereIsRoom)
{
    TypeParam oText(TXT("abcdef"));
    oText.ReleaseBuffer(1);
    const auto* const pBlock = oText.GetString();

    oText += TXT("xyz");
    EXPECT_EQ(Holds("axyz", 7), StateOf(oText));

    oText += TXT("12");
    EXPECT_EQ(Holds("axyz12", 7), StateOf(oText));
    EXPECT_EQ(pBlock, oText.GetString());

    oText += CHR('3');
    EXPECT_EQ(Holds("axyz123", 8), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, RefusesToAppendNull)
{
    TypeParam oText(TXT("abc"));

    EXPECT_HEADER_CHECK("szString != NULL", oText += static_cast<const tUnitOf<TypeParam>*>(nullptr));

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, CopyTakesTheCountAsGiven)
{
    TypeParam oText;

    oText.Copy(TXT("CopyData"), 9);

    EXPECT_EQ(Holds("CopyData\0", 10), StateOf(oText));
    EXPECT_EQ(9, oText.GetLength());
    EXPECT_EQ(0, oText.Compare(TXT("CopyData")));

    oText.Copy(TXT("CopyData"), 4);
    EXPECT_EQ(Holds("Copy", 5), StateOf(oText));

    oText.Copy(TXT("a\0b\0c"), 5);
    EXPECT_EQ(Holds("a\0b\0c", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, CopyRefusesNullFirstAndThenNoLength)
{
    TypeParam oText(TXT("abc"));

    EXPECT_SOURCE_CHECK("szSrcString != NULL", oText.Copy(nullptr, 3));
    EXPECT_SOURCE_CHECK("szSrcString != NULL", oText.Copy(nullptr, 0));
    EXPECT_SOURCE_CHECK("nStringLength > 0", oText.Copy(TXT("x"), 0));
    EXPECT_SOURCE_CHECK("nStringLength > 0", oText.Copy(TXT("x"), -1));

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringAssignTest, EmptyKeepsTheCapacityAndClearsAllOfIt)
{
    TypeParam oText(TXT("abcdef"));
    oText.ReleaseBuffer(2);
    const auto* const pBlock = oText.GetString();

    oText.Empty();

    EXPECT_TRUE(oText.IsEmpty());
    EXPECT_EQ(Holds("", 7), StateOf(oText));
    EXPECT_EQ(std::string(7, '\0'), BlockOf(oText));
    EXPECT_EQ(pBlock, oText.GetString());
}

TYPED_TEST(CTOVStringAssignTest, EmptyLeavesAStringOfLengthZeroAlone)
{
    TypeParam oText(TXT("abcdef"));
    oText.ReleaseBuffer(0);
    TypeParam oNew;

    oText.Empty();
    oNew.Empty();

    EXPECT_EQ(std::string("\0bcdef\0", 7), BlockOf(oText));
    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
}
