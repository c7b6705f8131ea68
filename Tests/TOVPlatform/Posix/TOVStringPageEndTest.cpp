// Texts that begin or end where the next page of memory cannot be read.
#include "Support/Posix/TOVLonePage.h"
#include "TOVPlatform/TOVStringApis.h"

#include <algorithm>

namespace
{
constexpr int MAX_LENGTH = 70;

template<class TApi> class TOVPlatformPageEndTest : public testing::Test
{
protected:
    typedef typename TApi::tUnit tUnit;

    // Searches, compares and changes a text of nLength units, each of which is an 'a'.
    static void ExpectAllOf(tUnit* szText, int nLength)
    {
        std::fill_n(szText, nLength, static_cast<tUnit>('a'));
        szText[nLength] = 0;
        const std::string sLetters(static_cast<std::size_t>(nLength), 'a');

        ASSERT_EQ(nLength, TApi::Length(szText));
        ASSERT_EQ(nullptr, TApi::FindCharacter(szText, 'b'));
        ASSERT_EQ(szText + nLength, TApi::FindLastCharacter(szText, 0));
        ASSERT_EQ(nullptr, TApi::FindString(szText, TApi::Text("ab")));
        ASSERT_EQ(nullptr, TApi::FindString(szText, TApi::Text("b")));
        ASSERT_EQ(szText, TApi::FindString(szText, TApi::Text(sLetters)));
        ASSERT_EQ(nullptr, TApi::FindString(szText, TApi::Text(sLetters + "a")));
        ASSERT_EQ(0, TApi::CompareNoCase(szText, TApi::Text(std::string(sLetters.size(), 'A'))));
        ASSERT_GT(0, TApi::CompareNoCase(szText, TApi::Text(sLetters + "a")));
        ASSERT_EQ('A', TApi::ToUpper(szText)[0] | (nLength == 0 ? 'A' : 0));
        ASSERT_EQ(0, TApi::CompareNoCase(TApi::Text(sLetters), TApi::ToLower(szText)));
    }

    CLonePage m_oPage;
};
TYPED_TEST_SUITE(TOVPlatformPageEndTest, tStringApis, );
} // namespace

TYPED_TEST(TOVPlatformPageEndTest, ATextMayEndWithItsPage)
{
    for (int nLength = 0; nLength <= MAX_LENGTH; ++nLength)
        this->ExpectAllOf(reinterpret_cast<typename TypeParam::tUnit*>(this->m_oPage.GetEnd()) - nLength - 1, nLength);
}

TYPED_TEST(TOVPlatformPageEndTest, ATextMayBeginWithItsPage)
{
    for (int nLength = 0; nLength <= MAX_LENGTH; ++nLength)
        this->ExpectAllOf(reinterpret_cast<typename TypeParam::tUnit*>(this->m_oPage.GetStart()), nLength);
}
