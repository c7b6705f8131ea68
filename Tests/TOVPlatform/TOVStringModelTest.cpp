// Texts of all short lengths and alignments, searched, compared and changed beside plain loops over their units.
#include "TOVPlatform/TOVStringApis.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <clocale>
#include <cwctype>
#include <random>
#include <string>
#include <vector>

namespace
{
constexpr int ROUNDS = 20000;
constexpr int MAX_LENGTH = 70;
constexpr int MAX_OFFSET = 17;

const char* const LOCALE = TOV_SYSTEM_WINDOWS ? "English_United States.1252" : "C.UTF-8";

int LowerOf(char cUnit)
{
    return static_cast<unsigned char>(std::tolower(static_cast<unsigned char>(cUnit)));
}

int UpperOf(char cUnit)
{
    return static_cast<unsigned char>(std::toupper(static_cast<unsigned char>(cUnit)));
}

int LowerOf(wchar_t cUnit)
{
    const unsigned int cLower = std::towlower(cUnit);
    return static_cast<int>(cLower <= 0xFFFF ? cLower : cUnit);
}

int UpperOf(wchar_t cUnit)
{
    const unsigned int cUpper = std::towupper(cUnit);
    return static_cast<int>(cUpper <= 0xFFFF ? cUpper : cUnit);
}

template<class TApi> class TOVPlatformModelTest : public testing::Test
{
protected:
    typedef typename TApi::tUnit tUnit;
    typedef std::vector<tUnit> tText;

    ~TOVPlatformModelTest() override { std::setlocale(LC_ALL, "C"); }

    int Random(int nBelow) { return static_cast<int>(m_oRandom() % static_cast<unsigned>(nBelow)); }

    // Units of few values, so that parts occur often, or of any value.
    tText RandomText(int nLength)
    {
        static constexpr int LETTERS[] = {'a', 'b', 'A',  'B',  'z',  'Z',  '@', '[',
                                          '`', '{', 0x7F, 0x80, 0xC4, 0xE4, 0xFF};
        const int nKinds = Random(4) == 0 ? static_cast<int>(std::size(LETTERS)) : 2 + Random(8);
        const bool bAny = !TApi::IS_NARROW && Random(8) == 0;
        tText sText;
        for (int nIndex = 0; nIndex < nLength; ++nIndex)
            sText.push_back(static_cast<tUnit>(bAny && Random(3) == 0 ? 1 + Random(0xD7FF) : LETTERS[Random(nKinds)]));
        return sText;
    }

    // Places the text somewhere in a block of units that are all in the text's way.
    tUnit* Place(const tText& aText)
    {
        const int nOffset = Random(MAX_OFFSET);
        m_aBlock.assign(static_cast<std::size_t>(nOffset), static_cast<tUnit>('a'));
        m_aBlock.insert(m_aBlock.end(), aText.begin(), aText.end());
        m_aBlock.push_back(0);
        m_aBlock.insert(m_aBlock.end(), 40, static_cast<tUnit>('b'));
        return m_aBlock.data() + nOffset;
    }

    static tText Terminated(tText aText)
    {
        aText.push_back(0);
        return aText;
    }

    tText PieceOf(const tText& aText, int nMostUnits)
    {
        const int nStart = Random(static_cast<int>(aText.size()));
        const int nCount = std::min(1 + Random(nMostUnits), static_cast<int>(aText.size()) - nStart);
        return tText(aText.begin() + nStart, aText.begin() + nStart + nCount);
    }

    // Where the iterator points, or -1 for the end.
    template<class TIterator> static long PlaceOf(const tText& aText, TIterator pPlace)
    {
        return pPlace == aText.end() ? -1 : static_cast<long>(pPlace - aText.begin());
    }

    static long FindPart(const tText& aText, const tText& aPart)
    {
        return PlaceOf(aText, std::search(aText.begin(), aText.end(), aPart.begin(), aPart.end()));
    }

    void ExpectTheFindingsOfTheModel()
    {
        for (int nRound = 0; nRound < ROUNDS; ++nRound)
        {
            const tText aText = RandomText(Random(MAX_LENGTH + 1));
            const tText aPart = Random(2) == 0 && !aText.empty() ? PieceOf(aText, 40) : RandomText(1 + Random(4));
            const tText aPartText = Terminated(aPart);
            const tUnit* const szPart = aPartText.data();
            tUnit* const szText = Place(aText);
            const long lLength = static_cast<long>(aText.size());
            const long lFirst = PlaceOf(aText, std::find(aText.begin(), aText.end(), aPart[0]));
            const long lLast = lLength - 1 - (std::find(aText.rbegin(), aText.rend(), aPart[0]) - aText.rbegin());
            const long lOneOf =
                PlaceOf(aText, std::find_first_of(aText.begin(), aText.end(), aPart.begin(), aPart.end()));

            ASSERT_EQ(lLength, TApi::Length(szText));
            ASSERT_EQ(lFirst, OffsetOf(TApi::FindCharacter(szText, aPart[0]), szText));
            ASSERT_EQ(lLast, OffsetOf(TApi::FindLastCharacter(szText, aPart[0]), szText));
            ASSERT_EQ(lLength, OffsetOf<tUnit>(TApi::FindCharacter(szText, 0), szText));
            ASSERT_EQ(lLength, OffsetOf<tUnit>(TApi::FindLastCharacter(szText, 0), szText));
            ASSERT_EQ(FindPart(aText, aPart), OffsetOf<tUnit>(TApi::FindString(szText, szPart), szText))
                << testing::PrintToString(aText) << ", " << testing::PrintToString(aPart);
            ASSERT_EQ(lOneOf, OffsetOf(TApi::FindOneOf(szText, szPart), szText));
        }
    }

    // Compares texts with their terminators.
    static int OrderOf(const tText& aText1, const tText& aText2)
    {
        for (std::size_t nIndex = 0;; ++nIndex)
        {
            const int nOrder = LowerOf(aText1[nIndex]) - LowerOf(aText2[nIndex]);
            if (nOrder != 0 || aText1[nIndex] == 0)
                return (nOrder > 0) - (nOrder < 0);
        }
    }

    // One of the runtimes has an order of its own for bytes above 127 in the "C" locale, and the others may differ.
    static int ToPromised(int nOrder) { return TOV_SYSTEM_WINDOWS && TApi::IS_NARROW ? (nOrder != 0 ? 1 : 0) : nOrder; }

    void ExpectText(const tText& aText, const tUnit* szText)
    {
        ASSERT_TRUE(std::equal(aText.begin(), aText.end(), szText) && szText[aText.size()] == 0)
            << testing::PrintToString(aText);
    }

    void ExpectTheCasesOfTheModel()
    {
        for (int nRound = 0; nRound < ROUNDS; ++nRound)
        {
            const tText aText = RandomText(Random(MAX_LENGTH + 1));
            tText aLower;
            tText aUpper;
            for (const tUnit cUnit : aText)
            {
                aLower.push_back(static_cast<tUnit>(LowerOf(cUnit)));
                aUpper.push_back(static_cast<tUnit>(UpperOf(cUnit)));
            }
            ExpectText(aLower, TApi::ToLower(Place(aText)));
            ExpectText(aUpper, TApi::ToUpper(Place(aText)));

            // Mostly equal, and sometimes different in one unit or in the length.
            tText aOther = Random(2) == 0 ? aLower : aUpper;
            if (Random(2) == 0 && !aOther.empty())
                aOther[static_cast<std::size_t>(Random(static_cast<int>(aOther.size())))] = RandomText(1)[0];
            if (Random(4) == 0)
                aOther.push_back('a');
            aOther = Terminated(aOther);
            ASSERT_EQ(ToPromised(OrderOf(Terminated(aText), aOther)),
                      ToPromised(SignOfCompareNoCase<TApi>(Place(aText), aOther.data())))
                << testing::PrintToString(aText) << ", " << testing::PrintToString(aOther);
        }
    }

    std::mt19937 m_oRandom{4711};
    tText m_aBlock;
};
TYPED_TEST_SUITE(TOVPlatformModelTest, tStringApis, );
} // namespace

TYPED_TEST(TOVPlatformModelTest, FindsWhatThePlainLoopsFind)
{
    this->ExpectTheFindingsOfTheModel();
}

TYPED_TEST(TOVPlatformModelTest, FindsTheSameUnderALocale)
{
    ASSERT_NE(nullptr, std::setlocale(LC_ALL, LOCALE));
    this->ExpectTheFindingsOfTheModel();
}

TYPED_TEST(TOVPlatformModelTest, ChangesAndIgnoresTheCaseAsThePlainLoopsDo)
{
    this->ExpectTheCasesOfTheModel();
}

TYPED_TEST(TOVPlatformModelTest, ChangesAndIgnoresTheCaseOfTheLocale)
{
    ASSERT_NE(nullptr, std::setlocale(LC_ALL, LOCALE));
    this->ExpectTheCasesOfTheModel();
}

// Such texts make a plain search compare nearly the whole part at each place.
TYPED_TEST(TOVPlatformModelTest, FindsPartsThatNearlyOccurEverywhere)
{
    constexpr int TEXT_LENGTH = 500;
    for (int nRound = 0; nRound < ROUNDS / 10; ++nRound)
    {
        // A few units repeated, of which some are changed.
        const auto aPeriod = this->RandomText(1 + this->Random(5));
        auto aText = aPeriod;
        while (aText.size() < TEXT_LENGTH)
            aText.insert(aText.end(), aPeriod.begin(), aPeriod.end());
        for (int nChanges = this->Random(4); nChanges > 0; --nChanges)
            aText[static_cast<std::size_t>(this->Random(TEXT_LENGTH))] = 'a';
        auto aPart = this->PieceOf(aText, 90);
        if (this->Random(2) == 0)
            aPart[static_cast<std::size_t>(this->Random(static_cast<int>(aPart.size())))] = 'b';
        const auto aPartText = this->Terminated(aPart);

        auto* const szText = this->Place(aText);
        auto* const szPlace = TypeParam::FindString(szText, aPartText.data());
        ASSERT_EQ(this->FindPart(aText, aPart), OffsetOf(szPlace, szText))
            << testing::PrintToString(aText) << ", " << testing::PrintToString(aPart);
    }
}

// A search that compares the part anew at each place does not end before the test's time is over.
TYPED_TEST(TOVPlatformModelTest, FindsAPartThatNearlyOccursEverywhereInALongText)
{
    constexpr int LONG_LENGTH = 1000000;
    auto oText = TypeParam::Text(std::string(LONG_LENGTH, 'a') + 'b');
    auto oPart = TypeParam::Text(std::string(LONG_LENGTH / 2, 'a') + 'c');

    EXPECT_EQ(nullptr, TypeParam::FindString(oText, oPart));
    oPart[LONG_LENGTH / 2] = 'b';
    EXPECT_EQ(LONG_LENGTH / 2, TypeParam::FindString(oText, oPart) - oText.Get());
}

TYPED_TEST(TOVPlatformModelTest, ReadsDecimalNumbersAsDigitByDigit)
{
    for (int nRound = 0; nRound < ROUNDS; ++nRound)
    {
        std::string sDigits;
        for (int nDigits = this->Random(25); nDigits > 0; --nDigits)
            sDigits += static_cast<char>(this->Random(3) == 0 ? '0' : '0' + this->Random(10));
        const bool bNegative = this->Random(2) == 0;
        double dExpected = 0; // exact far above the 32 bits
        for (const char cDigit : sDigits)
            dExpected = dExpected * 10 + (cDigit - '0');
        dExpected = bNegative ? std::max(-dExpected, 1.0 * INT_MIN) : std::min(dExpected, 1.0 * INT_MAX);

        auto oText = TypeParam::Text(std::string(this->Random(3), ' ') + (bNegative ? "-" : "") + sDigits + "x9");
        typename TypeParam::tUnit* pEnd = nullptr;
        ASSERT_EQ(static_cast<long>(dExpected), TypeParam::ToLong(oText, &pEnd, 10)) << sDigits;
        ASSERT_EQ(sDigits.empty() ? '\0' : 'x', sDigits.empty() ? '\0' : static_cast<char>(*pEnd));
    }
}

#if !TOV_SYSTEM_WINDOWS
TYPED_TEST(TOVPlatformModelTest, ReadsRealNumbersAsTheCLibraryDoes)
{
    static constexpr char UNITS[] = "00123456789999.e+-";
    for (int nRound = 0; nRound < ROUNDS; ++nRound)
    {
        std::string sText(1, static_cast<char>('0' + this->Random(10)));
        for (int nUnits = this->Random(this->Random(10) == 0 ? 90 : 25); nUnits > 0; --nUnits)
            sText += UNITS[this->Random(sizeof(UNITS) - 1)];

        char* szEnd = nullptr;
        const double dExpected = std::strtod(sText.c_str(), &szEnd);
        auto oText = TypeParam::Text(sText);
        typename TypeParam::tUnit* pEnd = nullptr;
        ASSERT_EQ(dExpected, TypeParam::ToDouble(oText, &pEnd)) << sText;
        ASSERT_EQ(szEnd - sText.c_str(), pEnd - oText.Get()) << sText;
    }
}
#endif
