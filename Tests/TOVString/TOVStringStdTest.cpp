// Strings beside those of the standard library: views, hashes, and unsigned indexes.
#include "TOVString/TOVStringKinds.h"

#include <TOVString/TOVStringStd.h>

#include <cstdint>
#include <limits>
#include <unordered_map>
#include <unordered_set>

using namespace std::string_view_literals;

namespace
{
template<class T> class CTOVStringStdTest : public testing::Test
{
};
TYPED_TEST_SUITE(CTOVStringStdTest, tStrings, sStringName);

template<class TString> TString TextWithAZero()
{
    if constexpr (sStringTraits<TString>::IS_NARROW)
        return TOVStandard::TextOf("text\0more"sv);
    else
        return TOVStandard::WideTextOf(u"text\0more"sv);
}

// A view that is longer than any string. Nobody reads it.
template<class TUnit> std::basic_string_view<TUnit> TooLong(const TUnit* pText)
{
    return std::basic_string_view<TUnit>(pText, static_cast<std::size_t>(std::numeric_limits<int>::max()));
}
} // namespace

TEST(TOVStandardTest, ViewHasTheWholeText)
{
    CTOVStringA oText;
    oText.Copy("ab\0cd", 5);

    EXPECT_EQ("ab\0cd"sv, TOVStandard::ViewOf(oText));
    EXPECT_EQ(oText.GetString(), TOVStandard::ViewOf(oText).data());
}

TEST(TOVStandardTest, ViewOfAStringWithoutABlockIsEmpty)
{
    EXPECT_EQ(""sv, TOVStandard::ViewOf(CTOVStringA()));
    EXPECT_NE(nullptr, TOVStandard::ViewOf(CTOVStringA()).data());
}

TEST(TOVStandardTest, TextHasTheWholeView)
{
    const CTOVStringA oText = TOVStandard::TextOf("ab\0cd"sv);

    EXPECT_EQ(5, oText.GetLength());
    EXPECT_EQ("ab\0cd"sv, TOVStandard::ViewOf(oText));
    EXPECT_EQ(0, oText.GetString()[5]);
}

TEST(TOVStandardTest, TextIsOfAPartThatHasNoTerminator)
{
    EXPECT_STREQ("cd", ~TOVStandard::TextOf("abcdef"sv.substr(2, 2)));
}

TEST(TOVStandardTest, TextOfAnEmptyViewHasNoBlock)
{
    EXPECT_EQ(nullptr, TOVStandard::TextOf(std::string_view()).GetString());
    EXPECT_EQ(nullptr, TOVStandard::WideTextOf(std::u16string_view()).GetString());
}

TEST(TOVStandardTest, TextThatIsTooLongIsRefused)
{
    EXPECT_CHECK("nLength <= INT_MAX-1", TOVStandard::TextOf(TooLong("text")));
    EXPECT_CHECK("nLength <= INT_MAX-1", TOVStandard::WideTextOf(TooLong(u"text")));
}

TEST(TOVStandardTest, WideTextGoesAndComes)
{
    const std::u16string sText(u"a\0\u20AC\U0001F600\uFFFF", 6);
    const CTOVStringW oText = TOVStandard::WideTextOf(sText);

    EXPECT_EQ(6, oText.GetLength());
    EXPECT_EQ(0x20AC, oText.GetAt(2));
    EXPECT_EQ(0, oText.GetString()[6]);
    EXPECT_EQ(sText, TOVStandard::Utf16Of(oText));
    EXPECT_EQ(std::u16string(), TOVStandard::Utf16Of(CTOVStringW()));
}

TYPED_TEST(CTOVStringStdTest, EqualStringsHaveTheSameHash)
{
    const std::hash<TypeParam> oHash;
    TypeParam oEmptied = StringOf<TypeParam>("text");
    oEmptied.Empty();

    EXPECT_EQ(oHash(StringOf<TypeParam>("text")), oHash(StringOf<TypeParam>("text")));
    EXPECT_EQ(oHash(TypeParam()), oHash(oEmptied));
    // These are equal for the operator ==.
    ASSERT_EQ(9, TextWithAZero<TypeParam>().GetLength());
    ASSERT_TRUE(StringOf<TypeParam>("text") == TextWithAZero<TypeParam>());
    EXPECT_EQ(oHash(StringOf<TypeParam>("text")), oHash(TextWithAZero<TypeParam>()));
}

TYPED_TEST(CTOVStringStdTest, OtherStringsHaveOtherHashes)
{
    std::unordered_set<std::size_t> oHashes;
    for (int nText = 0; nText < 1000; ++nText)
        oHashes.insert(std::hash<TypeParam>()(StringOf<TypeParam>(std::to_string(nText))));

    EXPECT_EQ(1000U, oHashes.size());
}

TYPED_TEST(CTOVStringStdTest, StringIsAKey)
{
    std::unordered_map<TypeParam, int> oNumbers;
    oNumbers[StringOf<TypeParam>("one")] = 1;
    oNumbers[StringOf<TypeParam>("two")] = 2;

    EXPECT_EQ(2, oNumbers.at(StringOf<TypeParam>("two")));
    EXPECT_EQ(0U, oNumbers.count(StringOf<TypeParam>("three")));
}

TYPED_TEST(CTOVStringStdTest, UnsignedIndexIsTaken)
{
    const TypeParam oText = StringOf<TypeParam>("abc");

    EXPECT_EQ('b', oText[std::size_t(1)]);
    EXPECT_EQ('c', oText[2U]);
    EXPECT_EQ('a', oText[std::uint64_t(0)]);
    EXPECT_EQ('b', oText[static_cast<unsigned char>(1)]);
}

TYPED_TEST(CTOVStringStdTest, UnsignedIndexThatIsTooLargeIsRefused)
{
    const TypeParam oText = StringOf<TypeParam>("abc");

    EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetLength())", oText[std::size_t(3)]);
    EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetLength())", oText[std::numeric_limits<unsigned>::max()]);
    EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetLength())", oText[(std::uint64_t(1) << 32U) + 1]);
    EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetLength())", oText[std::numeric_limits<std::uint64_t>::max()]);
}
