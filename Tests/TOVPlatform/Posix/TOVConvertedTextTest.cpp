// Formats with text of the other width, in a code page whose characters have one to four bytes.
#include "TOVPlatform/TOVStringApis.h"

#include "Support/TOVMultiByte.h"

#include <climits>
#include <string>

namespace
{
// The same text in both widths: characters of one to four bytes, and of one and two wide units.
const wchar_t* const WIDE = L"a\xE9\x20AC\xD83D\xDE00z";
const char* const NARROW = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z";
constexpr int NARROW_LENGTH = 11;
constexpr int WIDE_LENGTH = 6;

class TOVConvertedTextTest : public testing::Test
{
    const CMultiByteCodePage m_oCodePage;
};

std::u16string Units(const wchar_t* szText)
{
    return std::u16string(szText, szText + TOVPlatform::TOVStringW::Length(szText));
}

std::u16string PrintWide(const wchar_t* szFormat, int nLimit, const char* szText)
{
    wchar_t szRoom[64] = L"";
    const int nCount = TOVPlatform::TOVStringW::SNPrintf(szRoom, 64, szFormat, nLimit, szText);
    EXPECT_EQ(nCount, TOVPlatform::TOVStringW::Length(szRoom));
    return Units(szRoom);
}

std::string PrintNarrow(const char* szFormat, int nLimit, const wchar_t* szText)
{
    char szRoom[64] = "";
    const int nCount = TOVPlatform::TOVStringA::SNPrintf(szRoom, 64, szFormat, nLimit, szText);
    EXPECT_EQ(nCount, static_cast<int>(std::string(szRoom).size()));
    return szRoom;
}
} // namespace

TEST_F(TOVConvertedTextTest, IsTheSameInBothWidths)
{
    EXPECT_EQ(NARROW, PrintNarrow("%.*ls", INT_MAX, WIDE));
    EXPECT_EQ(NARROW, PrintNarrow("%.*S", INT_MAX, WIDE));
    EXPECT_EQ(Units(WIDE), PrintWide(L"%.*hs", INT_MAX, NARROW));
    EXPECT_EQ(Units(WIDE), PrintWide(L"%.*S", INT_MAX, NARROW));
}

// The width of a field and a precision count units of the printed text.
TEST_F(TOVConvertedTextTest, HasNoPartOfACharacterAtItsPrecision)
{
    EXPECT_EQ("a", PrintNarrow("%.*ls", 2, WIDE));
    EXPECT_EQ("a\xC3\xA9", PrintNarrow("%.*ls", 3, WIDE));
    EXPECT_EQ("a\xC3\xA9", PrintNarrow("%.*ls", 5, WIDE));
    EXPECT_EQ("a\xC3\xA9\xE2\x82\xAC", PrintNarrow("%.*ls", 9, WIDE));
    EXPECT_EQ(NARROW, PrintNarrow("%.*ls", NARROW_LENGTH, WIDE));
    EXPECT_EQ(u"a\xE9\x20AC", PrintWide(L"%.*hs", 4, NARROW));
    EXPECT_EQ(u"a\xE9\x20AC\U0001F600", PrintWide(L"%.*hs", 5, NARROW));
}

TEST_F(TOVConvertedTextTest, FillsItsFieldByUnits)
{
    EXPECT_EQ("   a\xC3\xA9", PrintNarrow("%6.*ls", 3, WIDE));
    EXPECT_EQ("a\xC3\xA9   |", PrintNarrow("%-6.*ls|", 3, WIDE));
    EXPECT_EQ(u"    a\xE9", PrintWide(L"%6.*hs", 2, NARROW));
}

TEST_F(TOVConvertedTextTest, IsMeasuredAtLeastAsLongAsItIsPrinted)
{
    EXPECT_EQ(NARROW_LENGTH, BoundOf<sNarrowApi>("%ls", WIDE));
    EXPECT_EQ(NARROW_LENGTH, BoundOf<sNarrowApi>("%S", WIDE));
    EXPECT_EQ(NARROW_LENGTH, BoundOf<sWideApi>("%hs", NARROW)) << "each byte may be a character";
    EXPECT_LE(WIDE_LENGTH, BoundOf<sWideApi>("%S", NARROW));
    EXPECT_EQ(3, BoundOf<sNarrowApi>("%.3ls", WIDE));
    EXPECT_EQ(3, BoundOf<sNarrowApi>("%lc", 0x20AC));
    EXPECT_EQ(2, BoundOf<sNarrowApi>("%lc", 0xE9));
}

TEST_F(TOVConvertedTextTest, HasCharactersOfSeveralUnits)
{
    char szRoom[16];
    wchar_t szWideRoom[16];

    EXPECT_EQ(3, TOVPlatform::TOVStringA::SPrintf(szRoom, "%lc", 0x20AC));
    EXPECT_STREQ("\xE2\x82\xAC", szRoom);
    EXPECT_EQ(5, TOVPlatform::TOVStringA::SPrintf(szRoom, "%5C", 0xE9));
    EXPECT_STREQ("   \xC3\xA9", szRoom);
    EXPECT_EQ(1, TOVPlatform::TOVStringW::SPrintf(szWideRoom, L"%hc", 'a'));
    EXPECT_EQ(L'a', szWideRoom[0]);
}

// What is no character in the other width cannot be printed there as a text, and is left out as a character.
TEST_F(TOVConvertedTextTest, FailsAtWhatIsNoCharacter)
{
    char szRoom[16];
    wchar_t szWideRoom[16];

    EXPECT_EQ(-1, TOVPlatform::TOVStringA::SPrintf(szRoom, "%ls", L"a\xD83Dz")) << "a first half alone";
    EXPECT_EQ(-1, TOVPlatform::TOVStringA::SPrintf(szRoom, "%ls", L"a\xDE00")) << "a second half alone";
    EXPECT_EQ(0, TOVPlatform::TOVStringA::SPrintf(szRoom, "%lc", 0xD83D));
    EXPECT_EQ(-1, TOVPlatform::TOVStringW::SPrintf(szWideRoom, L"%hs", "a\xE2\x82")) << "cut in the middle";
    EXPECT_EQ(-1, TOVPlatform::TOVStringW::SPrintf(szWideRoom, L"%hs", "\xE9z")) << "no character begins so";
    EXPECT_EQ(0, TOVPlatform::TOVStringW::SPrintf(szWideRoom, L"%hc", 0xC3));
}

// A text that cannot be converted is measured by its units.
TEST_F(TOVConvertedTextTest, IsMeasuredByItsUnitsWhereItCannotBeConverted)
{
    EXPECT_EQ(3, BoundOf<sNarrowApi>("%ls", L"a\xD83Dz"));
    EXPECT_EQ(2, BoundOf<sNarrowApi>("%lc", 0xD83D));
    EXPECT_EQ(3, BoundOf<sWideApi>("%hs", "a\xE2\x82"));
}
