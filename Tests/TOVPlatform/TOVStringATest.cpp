// What narrow text has for itself: characters of several bytes, and exact orders.
#include "Support/TOVMultiByte.h"
#include "TOVPlatform/TOVStringApis.h"

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace TOVStringA = TOVPlatform::TOVStringA;

namespace
{
// "a", a character of two bytes, "b".
class TOVPlatformMultiByteTest : public testing::Test
{
protected:
    TOVPlatformMultiByteTest()
        : m_sCharacter(m_oCodePage.Character()), m_sLead(1, m_sCharacter[0]), m_sTrail(1, m_sCharacter[1]),
          m_sText("a" + m_sCharacter + "b"), m_szText(m_sText.c_str())
    {
    }

    const CMultiByteCodePage m_oCodePage;
    const std::string m_sCharacter;
    const std::string m_sLead;
    const std::string m_sTrail;
    const std::string m_sText;
    const char* const m_szText;
};
} // namespace

TEST(TOVPlatformStringATest, IsAlsoNamedAsItStandsInChecks)
{
    EXPECT_EQ(&TOVPlatform::TOVStringA::Length, &TOVPlatform::TOVString::Length);
}

TEST(TOVPlatformStringATest, ComparesWithoutCaseToExactlyMinusOneZeroOrOne)
{
    EXPECT_EQ(-1, TOVStringA::CompareNoCase("abc", "XYZ"));
    EXPECT_EQ(1, TOVStringA::CompareNoCase("XYZ", "abc"));
    EXPECT_EQ(0, TOVStringA::CompareNoCase("abc", "ABC"));
    EXPECT_EQ(-1, TOVStringA::CollateNoCase("abc", "XYZ"));
    EXPECT_EQ(1, TOVStringA::CollateNoCase("XYZ", "abc"));
    EXPECT_EQ(0, TOVStringA::CollateNoCase("abc", "ABC"));
}

TEST(TOVPlatformStringATest, LeavesBytesAbove127AloneInThePlainLocale)
{
    char szText[] = "\xC4\xE4\xFF";

    EXPECT_STREQ("\xC4\xE4\xFF", TOVStringA::ToLower(szText));
    EXPECT_STREQ("\xC4\xE4\xFF", TOVStringA::ToUpper(szText));
    EXPECT_NE(0, TOVStringA::CompareNoCase("\xC4", "\xE4"));
}

TEST(TOVPlatformStringATest, StepsByBytesWithoutACodePage)
{
    const char szText[] = "\xC3\xA9\x83\x5C";

    EXPECT_EQ(szText + 1, TOVStringA::Inc(szText));
    EXPECT_EQ(szText + 3, TOVStringA::NInc(szText, 3));
    EXPECT_EQ(szText + 1, TOVStringA::Dec(szText, szText + 2));
}

TEST(TOVPlatformStringATest, NIncStopsAtTheTerminator)
{
    const char szText[] = "ab\0cd";

    EXPECT_EQ(szText + 2, TOVStringA::NInc(szText, 2));
    EXPECT_EQ(szText + 2, TOVStringA::NInc(szText, 3));
    EXPECT_EQ(szText + 2, TOVStringA::NInc(szText, 1000000));
}

TEST(TOVPlatformStringATest, FindsACharacterGivenWithItsSign)
{
    const char szText[] = "a\xFF\xFE";

    EXPECT_EQ(szText + 1, TOVStringA::FindCharacter(szText, -1));
    EXPECT_EQ(szText + 2, TOVStringA::FindLastCharacter(szText, static_cast<char>(0xFE)));
}

TEST_F(TOVPlatformMultiByteTest, IncStepsOverAWholeCharacter)
{
    EXPECT_EQ(m_szText + 1, TOVStringA::Inc(m_szText));
    EXPECT_EQ(m_szText + 3, TOVStringA::Inc(m_szText + 1));
    EXPECT_EQ(m_szText + 4, TOVStringA::Inc(m_szText + 3));
}

TEST_F(TOVPlatformMultiByteTest, NIncCountsCharactersAndStopsAtTheTerminator)
{
    EXPECT_EQ(m_szText, TOVStringA::NInc(m_szText, 0));
    EXPECT_EQ(m_szText + 3, TOVStringA::NInc(m_szText, 2));
    EXPECT_EQ(m_szText + 4, TOVStringA::NInc(m_szText, 3));
    EXPECT_EQ(m_szText + 4, TOVStringA::NInc(m_szText, 4));
}

TEST_F(TOVPlatformMultiByteTest, NIncStaysInsideATextThatEndsInTheMiddleOfACharacter)
{
    const std::string sCut = "a" + m_sLead + std::string(1, '\0') + "bcd";

    EXPECT_LE(TOVStringA::NInc(sCut.c_str(), 9), sCut.c_str() + 2);
}

TEST_F(TOVPlatformMultiByteTest, DecBacksOverAWholeCharacter)
{
    EXPECT_EQ(m_szText + 3, TOVStringA::Dec(m_szText, m_szText + 4));
    EXPECT_EQ(m_szText + 1, TOVStringA::Dec(m_szText, m_szText + 3));
    EXPECT_EQ(m_szText, TOVStringA::Dec(m_szText, m_szText + 1));
    EXPECT_EQ(nullptr, TOVStringA::Dec(m_szText, m_szText));
}

TEST_F(TOVPlatformMultiByteTest, LengthCountsBytes)
{
    EXPECT_EQ(4, TOVStringA::Length(m_szText));
}

TEST_F(TOVPlatformMultiByteTest, FindNotOneOfLooksAtTheFirstByteOfEachCharacter)
{
    EXPECT_EQ(m_szText + 3, TOVStringA::FindNotOneOf(m_szText, ("a" + m_sLead).c_str()));
    EXPECT_EQ(m_szText + 1, TOVStringA::FindNotOneOf(m_szText, ("a" + m_sTrail).c_str()));
    EXPECT_EQ(nullptr, TOVStringA::FindNotOneOf(m_szText, ("ab" + m_sLead).c_str()));
}

TEST_F(TOVPlatformMultiByteTest, ReverseFindOneOfNeverLooksAtATrailByte)
{
    EXPECT_EQ(nullptr, TOVStringA::ReverseFindOneOf(m_szText, m_sTrail.c_str()));
    EXPECT_EQ(m_szText + 1, TOVStringA::ReverseFindOneOf(m_szText, m_sLead.c_str()));
    EXPECT_EQ(m_szText + 3, TOVStringA::ReverseFindOneOf(m_szText, "b"));
}

TEST_F(TOVPlatformMultiByteTest, ReverseFindNotOneOfNeverLooksAtATrailByte)
{
    EXPECT_EQ(nullptr, TOVStringA::ReverseFindNotOneOf(m_szText, ("b" + m_sLead).c_str()));
    EXPECT_EQ(m_szText + 1, TOVStringA::ReverseFindNotOneOf(m_szText, "ab"));
}

TEST_F(TOVPlatformMultiByteTest, ReverseSearchesNeverExamineAFirstCharacterOfTwoBytes)
{
    const std::string sText = m_sCharacter + "b";

    EXPECT_EQ(nullptr, TOVStringA::ReverseFindOneOf(sText.c_str(), m_sLead.c_str()));
    EXPECT_EQ(nullptr, TOVStringA::ReverseFindNotOneOf(sText.c_str(), "b"));
}

// In some character sets, the library walks forward instead.
TEST_F(TOVPlatformMultiByteTest, ReverseSearchesFindWhatAWalkBackFinds)
{
    std::mt19937 oRandom(4711);
    for (int nRound = 0; nRound < 5000; ++nRound)
    {
        std::string sText;
        for (auto nCharacters = oRandom() % 20; nCharacters > 0; --nCharacters)
            sText += std::vector<std::string>{"a", "b", "c", m_sCharacter}[oRandom() % 4];
        const std::string sSet = std::vector<std::string>{"a", "bc", "b" + m_sLead, m_sTrail}[oRandom() % 4];

        const char* szInSet = nullptr;
        const char* szNotInSet = nullptr;
        const char* const szStart = sText.c_str();
        for (const char* szPlace = szStart + sText.size(); (szPlace = TOVStringA::Dec(szStart, szPlace)) > szStart;)
        {
            const char*& szFound = sSet.find(*szPlace) != std::string::npos ? szInSet : szNotInSet;
            szFound = szFound == nullptr ? szPlace : szFound;
        }
        ASSERT_EQ(szInSet, TOVStringA::ReverseFindOneOf(szStart, sSet.c_str())) << sText << ", " << sSet;
        ASSERT_EQ(szNotInSet, TOVStringA::ReverseFindNotOneOf(szStart, sSet.c_str())) << sText << ", " << sSet;
    }
}

TEST_F(TOVPlatformMultiByteTest, BoundsCountTheRemainderOncePerCharacter)
{
    EXPECT_EQ(2, BoundOf<sNarrowApi>(m_sCharacter));
    EXPECT_EQ(3 + 1, BoundOf<sNarrowApi>(m_sCharacter + "b"));
    EXPECT_EQ(4 + 3 + 1, BoundOf<sNarrowApi>(m_sText));
    EXPECT_EQ(4 + 32, BoundOf<sNarrowApi>(m_sCharacter + "%d", 7));
}
