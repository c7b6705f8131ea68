// Texts under a locale other than "C".
#include "TOVPlatform/TOVStringApis.h"

#include <clocale>

namespace
{
const char* const LOCALE = TOV_SYSTEM_WINDOWS ? "English_United States.1252" : "C.UTF-8";

// The process's locale while a test runs.
template<class TApi> class TOVPlatformLocaleTest : public testing::Test
{
protected:
    TOVPlatformLocaleTest() { EXPECT_NE(nullptr, std::setlocale(LC_ALL, LOCALE)); }

    ~TOVPlatformLocaleTest() override { std::setlocale(LC_ALL, "C"); }
};
TYPED_TEST_SUITE(TOVPlatformLocaleTest, tStringApis, );

typedef TOVPlatformLocaleTest<sNarrowApi> TOVPlatformNarrowLocaleTest;
typedef TOVPlatformLocaleTest<sWideApi> TOVPlatformWideLocaleTest;
} // namespace

TYPED_TEST(TOVPlatformLocaleTest, CollatesWithoutCase)
{
    const sOrder aOrders[] = {
        {"abc", "ABC", 0}, {"ABC", "abd", -1}, {"abc", "ABD", -1}, {"", "A", -1}, {"Test", "tesT", 0}, {"a", "B", -1},
    };
    ExpectOrders<TypeParam>(SignOfCollateNoCase<TypeParam>, aOrders);
}

TYPED_TEST(TOVPlatformLocaleTest, CollatesToMinusOneZeroOrOne)
{
    auto oFirst = TypeParam::Text("abc");
    auto oSecond = TypeParam::Text("xyz");

    EXPECT_EQ(-1, TypeParam::Collate(oFirst, oSecond));
    EXPECT_EQ(1, TypeParam::Collate(oSecond, oFirst));
    EXPECT_EQ(0, TypeParam::Collate(oFirst, oFirst));
}

// The dictionary's order where the locale has one, and that of the code points where it has none. Compare knows
// neither.
TYPED_TEST(TOVPlatformLocaleTest, CollatesByTheLocaleAndComparesByUnits)
{
    auto oSmall = TypeParam::Text("a");
    auto oCapital = TypeParam::Text("B");

    EXPECT_EQ(TOV_SYSTEM_WINDOWS ? -1 : 1, TypeParam::Collate(oSmall, oCapital));
    EXPECT_EQ(1, TypeParam::Compare(oSmall, oCapital));
}

TEST_F(TOVPlatformWideLocaleTest, KnowsTheCaseOfLettersAbove127)
{
    wchar_t szText[] = L"\xC4\xD6z\x0416\xDF";
    wchar_t szOther[] = L"\xE4\xF6Z\x0436\xDF";

    EXPECT_EQ(0, TOVPlatform::TOVStringW::CompareNoCase(szText, szOther));
    EXPECT_EQ(0, TOVPlatform::TOVStringW::CollateNoCase(szText, szOther));
    EXPECT_NE(0, TOVPlatform::TOVStringW::Compare(szText, szOther));

    TOVPlatform::TOVStringW::ToLower(szText);
    EXPECT_EQ(0, TOVPlatform::TOVStringW::Compare(L"\xE4\xF6z\x0436\xDF", szText));
    TOVPlatform::TOVStringW::ToUpper(szText);
    EXPECT_EQ(0, TOVPlatform::TOVStringW::Compare(L"\xC4\xD6Z\x0416\xDF", szText));
}

// Bytes above 127 are letters of the code page on Windows, and parts of characters in UTF-8.
TEST_F(TOVPlatformNarrowLocaleTest, KnowsTheCaseOfTheCodePagesLetters)
{
    char szText[] = "\xC4z";
    const char* const szLower = TOV_SYSTEM_WINDOWS ? "\xE4z" : "\xC4z";

    EXPECT_EQ(TOV_SYSTEM_WINDOWS ? 0 : -1, TOVPlatform::TOVStringA::CompareNoCase(szText, "\xE4Z"));
    TOVPlatform::TOVStringA::ToLower(szText);

    EXPECT_STREQ(szLower, szText);
}

#if !TOV_SYSTEM_WINDOWS
TEST_F(TOVPlatformNarrowLocaleTest, AByteThatBeginsNoWholeCharacterIsOneByItself)
{
    char szText[] = "\xC3z\xC3\xA4\xFF\xE2\x82";

    EXPECT_EQ(szText + 1, TOVPlatform::TOVStringA::Inc(szText));
    EXPECT_EQ(szText + 2, TOVPlatform::TOVStringA::NInc(szText, 2));
    EXPECT_EQ(szText + 4, TOVPlatform::TOVStringA::NInc(szText, 3));
    EXPECT_EQ(szText + 5, TOVPlatform::TOVStringA::NInc(szText, 4));
    EXPECT_EQ(szText + 6, TOVPlatform::TOVStringA::NInc(szText, 5));
    EXPECT_EQ(szText + 7, TOVPlatform::TOVStringA::NInc(szText, 100));
}

// A character of two units lies above all that have one, though its units do not.
TEST_F(TOVPlatformWideLocaleTest, CollatesCharactersOfTwoUnitsAsOne)
{
    const wchar_t szPair[] = L"a\xD83D\xDE00";
    const wchar_t szLaterPair[] = L"a\xD83D\xDE01";
    const wchar_t szWide[] = L"a\xFF01";
    const wchar_t szLoneHigh[] = L"a\xD83Dz";

    EXPECT_EQ(1, TOVPlatform::TOVStringW::Collate(szPair, szWide));
    EXPECT_EQ(-1, TOVPlatform::TOVStringW::Collate(szWide, szPair));
    EXPECT_EQ(-1, TOVPlatform::TOVStringW::Collate(szPair, szLaterPair));
    EXPECT_EQ(-1, TOVPlatform::TOVStringW::Collate(szLoneHigh, szWide));
    EXPECT_LT(0, TOVPlatform::TOVStringW::CollateNoCase(szPair, szWide));
    EXPECT_EQ(-1, TOVPlatform::TOVStringW::Compare(szPair, szWide));
}
#else
TYPED_TEST(TOVPlatformLocaleTest, ReadsAndPrintsTheLocalesDecimalPoint)
{
    ASSERT_NE(nullptr, std::setlocale(LC_ALL, "German_Germany.1252"));
    auto oText = TypeParam::Text("1,5.");
    typename TypeParam::tUnit* pStop = nullptr;

    EXPECT_EQ(1.5, TypeParam::ToDouble(oText, &pStop));
    EXPECT_EQ(3, pStop - oText.Get());
    EXPECT_EQ("1,50", Print<TypeParam>("%.2f", 1.5));
}
#endif
