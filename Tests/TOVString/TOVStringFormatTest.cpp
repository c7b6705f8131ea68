// Formatting of both strings.
#include "TOVString/TOVStringKinds.h"

#include <cmath>
#include <cstdarg>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace
{
constexpr char PLATFORM_SOURCE[] = TOV_PLATFORM_SOURCE("TOVString");

template<class TString> class CTOVStringFormatTest : public testing::Test
{
protected:
    typedef tUnitOf<TString> tUnit;

    static int FormatByList(TString& oText, const tUnit* szFormat, ...)
    {
        va_list pArguments;
        va_start(pArguments, szFormat);
        const int nCount = oText.FormatV(szFormat, pArguments);
        va_end(pArguments);
        return nCount;
    }
};
TYPED_TEST_SUITE(CTOVStringFormatTest, tStrings, sStringName);
} // namespace

TYPED_TEST(CTOVStringFormatTest, GivesTheTextAndItsLength)
{
    TypeParam oText;

    EXPECT_EQ(16, oText.Format(TXT("%d, %s and %c%x"), 42, TXT("text"), 'z', 0xAB));

    EXPECT_EQ("42, text and zab", VisibleOf(oText));
    EXPECT_EQ(16, oText.GetLength());
}

TYPED_TEST(CTOVStringFormatTest, TakesAnArgumentList)
{
    TypeParam oText;

    EXPECT_EQ(7, TestFixture::FormatByList(oText, TXT("<%5d>"), -12));

    EXPECT_EQ("<  -12>", VisibleOf(oText));
    EXPECT_EQ(7, oText.GetLength());
}

TYPED_TEST(CTOVStringFormatTest, TakesTheEstimatedSizeAndOneMore)
{
    TypeParam oLiteral;
    EXPECT_EQ(4, oLiteral.Format(TXT("Test")));
    EXPECT_EQ(Holds("Test", 11), StateOf(oLiteral));

    TypeParam oNumber;
    EXPECT_EQ(1, oNumber.Format(TXT("%d"), 1));
    EXPECT_EQ(Holds("1", 33), StateOf(oNumber));

    TypeParam oCharacter;
    EXPECT_EQ(1, oCharacter.Format(TXT("%c"), 'x'));
    EXPECT_EQ(Holds("x", 3), StateOf(oCharacter));

    TypeParam oPercent;
    EXPECT_EQ(1, oPercent.Format(TXT("%%")));
    EXPECT_EQ(Holds("%", 2), StateOf(oPercent));
}

TYPED_TEST(CTOVStringFormatTest, ATextThatFillsTheEstimateIsTerminated)
{
    TypeParam oText;

    EXPECT_EQ(6, oText.Format(TXT("%s"), TXT("abcdef")));

    EXPECT_EQ(Holds("abcdef", 7), StateOf(oText));
}

TYPED_TEST(CTOVStringFormatTest, AnEmptyArgumentGivesAnEmptyText)
{
    TypeParam oText;

    EXPECT_EQ(0, oText.Format(TXT("%s"), TXT("")));

    EXPECT_EQ(Holds("", 2), StateOf(oText));
}

TYPED_TEST(CTOVStringFormatTest, ALongTextIsWhole)
{
    const TypeParam oLong = TypeParam(TXT("0123456789")) += TXT("0123456789");
    TypeParam oText;
    TypeParam oExpected;
    for (int nTimes = 0; nTimes < 300; ++nTimes)
        oExpected += oLong;

    EXPECT_EQ(6000, oText.Format(TXT("%s"), oExpected.GetString()));

    EXPECT_EQ(0, oText.Compare(oExpected));
    EXPECT_EQ(6001, CapacityOf(oText));
}

// Precisions stay below 30 here: for wide text, Wine's runtime then writes behind a block of its own.
TYPED_TEST(CTOVStringFormatTest, WidthsAndPrecisionsFit)
{
    TypeParam oText;

    EXPECT_EQ(50, oText.Format(TXT("%50d"), 1));
    EXPECT_EQ((sHeld{std::string(49, ' ') + "1", 51}), StateOf(oText));

    EXPECT_EQ(60, oText.Format(TXT("%-60.20d"), 1));
    EXPECT_EQ((sHeld{std::string(19, '0') + "1" + std::string(40, ' '), 81}), StateOf(oText));
}

TYPED_TEST(CTOVStringFormatTest, RealNumbersFit)
{
    TypeParam oText;

    EXPECT_EQ(8, oText.Format(TXT("%f"), 3.25));
    EXPECT_EQ("3.250000", VisibleOf(oText));

    EXPECT_EQ(9, oText.Format(TXT("%+f"), 3.25));
    EXPECT_EQ("+3.250000", VisibleOf(oText));

    EXPECT_EQ(101 + 1 + 6, oText.Format(TXT("%f"), 1e100));
}

TYPED_TEST(CTOVStringFormatTest, AHeldCapacityIsUsedInPlace)
{
    TypeParam oText(TXT("a text of some length, long enough for a number"));
    const auto* const pBlock = oText.GetString();
    const long lCapacity = CapacityOf(oText);

    EXPECT_EQ(2, oText.Format(TXT("%d"), 42));

    EXPECT_EQ((sHeld{"42", lCapacity}), StateOf(oText));
    EXPECT_EQ(pBlock, oText.GetString());
}

TYPED_TEST(CTOVStringFormatTest, TheEstimateDecidesWhatFits)
{
    TypeParam oText(TXT("0123456789012345678901234567890")); // capacity 32, one too small for a number

    oText.Format(TXT("%d"), 7);

    EXPECT_EQ(Holds("7", 33), StateOf(oText));
}

// Plain formats are printed in one pass, others are measured first. FormatV measures all.
TYPED_TEST(CTOVStringFormatTest, GivesTheSameTextAndCapacityInOnePass)
{
    static constexpr const char* PIECES[] = {"?", "?", "a", " and ", "", "%%", "%5?", "%.2?", "\xC4"};
    std::mt19937 oRandom(4711);
    for (int nRound = 0; nRound < 5000; ++nRound)
    {
        // Most formats are plain. Some have texts and others numbers only, as all have the same arguments.
        const int nKinds = nRound % 2 == 0 ? 5 : static_cast<int>(std::size(PIECES));
        const std::string sType = std::vector<std::string>{"s", "d", "i", "u"}[oRandom() % 4];
        std::string sFormat = nRound % 16 == 0 ? std::string(oRandom() % 300, 'x') : "";
        for (auto nPieces = oRandom() % 9; nPieces > 0; --nPieces)
        {
            std::string sPiece = PIECES[oRandom() % static_cast<unsigned>(nKinds)];
            if (!sPiece.empty() && sPiece.back() == '?')
                sPiece = (sPiece[0] == '?' ? "%" : sPiece.substr(0, sPiece.size() - 1)) + sType;
            sFormat += sPiece;
        }
        const TypeParam oFormat = StringOf<TypeParam>(sFormat + ".");

        TypeParam oOnePass;
        TypeParam oMeasured;
        const auto FormatBoth = [&](auto oValue, auto oOther) {
            return std::pair(oOnePass.Format(~oFormat, oValue, oOther, oValue, oValue, oOther, oValue, oOther, oOther),
                             TestFixture::FormatByList(oMeasured, ~oFormat, oValue, oOther, oValue, oValue, oOther,
                                                       oValue, oOther, oOther));
        };
        const TypeParam oText = StringOf<TypeParam>(std::string(oRandom() % (nRound % 32 == 0 ? 300 : 9), 'x') + "y");
        const auto oLengths = sType == "s" ? FormatBoth(~oText, ~oFormat)
                                           : FormatBoth(static_cast<int>(oRandom()), static_cast<int>(oRandom() % 9));
        ASSERT_EQ(oLengths.second, oLengths.first) << sFormat;
        ASSERT_EQ(StateOf(oMeasured), StateOf(oOnePass)) << sFormat;
    }
}

TYPED_TEST(CTOVStringFormatTest, GivesTheSameTextAndCapacityOfRealsInOnePass)
{
    std::mt19937 oRandom(4711);
    for (int nRound = 0; nRound < 20000; ++nRound)
    {
        // Few digits make ties and carries.
        const double dScale = std::pow(10, static_cast<int>(oRandom() % 18) - 8);
        const double dValue = (static_cast<int>(oRandom() % 20001) - 10000) / dScale;
        const double dOther = nRound % 2 == 0 ? std::round(dScale) - 1 / dScale : dValue + std::ldexp(dValue, -50);
        std::string sFormat = nRound % 3 == 0 ? "%f, %.?f" : "<%.?f> %.2f";
        sFormat.replace(sFormat.find('?'), 1, std::to_string(oRandom() % 11));

        const TypeParam oFormat = StringOf<TypeParam>(sFormat);
        TypeParam oOnePass;
        TypeParam oMeasured;
        ASSERT_EQ(TestFixture::FormatByList(oMeasured, ~oFormat, dValue, dOther),
                  oOnePass.Format(~oFormat, dValue, dOther));
        ASSERT_EQ(StateOf(oMeasured), StateOf(oOnePass)) << sFormat << ": " << dValue << ", " << dOther;
    }
}

TYPED_TEST(CTOVStringFormatTest, TakesAnArgumentFromItsOwnBlock)
{
    TypeParam oText(TXT("a text that is longer than the bound of the format, which therefore fits into it"));

    EXPECT_EQ(9, oText.Format(TXT("<%s>"), oText.GetString() + oText.GetLength() - 7));

    EXPECT_EQ("<into it>", VisibleOf(oText));
}

TYPED_TEST(CTOVStringFormatTest, RefusesAFormatThatYieldsNothing)
{
    TypeParam oText(TXT("abc"));
    TypeParam oNew;

    EXPECT_CHECK_AT(PLATFORM_SOURCE, "nCount > 0", oText.Format(TXT("")));
    EXPECT_CHECK_AT(PLATFORM_SOURCE, "nCount > 0", oNew.Format(TXT("")));

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
    EXPECT_EQ(Holds("", 1), StateOf(oNew));
}

TYPED_TEST(CTOVStringFormatTest, RefusesAFormatWhoseTextIsTooLongForAString)
{
    TypeParam oText(TXT("abc"));

    EXPECT_SOURCE_CHECK("nNumExpectedCharacters != -1", oText.Format(TXT("%2000000000d%2000000000d"), 1, 2));

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
}

// The euro sign has no form in the "C" locale.
TEST(CTOVStringAFormatTest, KeepsTheLengthWhenAPrintFails)
{
    for (const char* szText : {"abc", "a text of some length, long enough for what is printed into it"})
    {
        CTOVStringA oText(szText);
        const long lLength = oText.GetLength();

        EXPECT_CHECK("nNumCharacters != -1", oText.Format("%S", L"\x20AC"));
        EXPECT_EQ(lLength, oText.GetLength());
        EXPECT_LE(lLength + 1, CapacityOf(oText));

        oText = "new";
        EXPECT_EQ(Holds("new", 4), StateOf(oText));
    }
}

TYPED_TEST(CTOVStringFormatTest, RefusesNullAndUnknownConversions)
{
    const tUnitOf<TypeParam>* const szNull = nullptr;
    TypeParam oText(TXT("abc"));

    EXPECT_CHECK_AT(PLATFORM_SOURCE, "szFormat != NULL", oText.Format(szNull));
    EXPECT_CHECK_AT(PLATFORM_SOURCE, "FALSE", oText.Format(TXT("%y"), 1));
    EXPECT_CHECK_AT(PLATFORM_SOURCE, "FALSE", oText.Format(TXT("100%")));

    EXPECT_EQ(Holds("abc", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringFormatTest, ATextWithAZeroFromACharacterEndsBehindIt)
{
    TypeParam oText;

    EXPECT_EQ(3, oText.Format(TXT("a%cb"), 0));

    EXPECT_EQ(3, oText.GetLength());
    EXPECT_EQ("a", VisibleOf(oText));
    EXPECT_EQ('b', oText.GetAt(2));
}
