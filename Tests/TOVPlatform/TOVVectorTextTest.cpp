// The forms of the text functions that this processor has, beside plain loops.
#include <TOVPlatform/Vector/TOVVectorText.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace Vector = TOVPlatform::Vector;

namespace
{
constexpr std::size_t MOST_UNITS = 600; // several vectors, and several groups of them
constexpr std::size_t ADDRESSES = 64;

template<class TUnit> class TOVVectorTextTest : public testing::Test
{
protected:
    typedef std::vector<TUnit> tUnits;

    ~TOVVectorTextTest() override { Vector::UseWideVectors(true); }

    // Letters without a z. A vector of exactly this size lets a tool find a read beyond it.
    tUnits RandomLetters(std::size_t nCount)
    {
        tUnits aUnits(nCount);
        for (TUnit& cUnit : aUnits)
            cUnit = static_cast<TUnit>('a' + m_oRandom() % 25);
        return aUnits;
    }

    std::size_t Random(std::size_t nBelow) { return m_oRandom() % nBelow; }

    static const TUnit* FindPlainly(const TUnit* szText, TUnit cUnit)
    {
        while (*szText != cUnit && *szText != 0)
            ++szText;
        return *szText != 0 ? szText : nullptr;
    }

    // Calls the function with each form.
    template<class TFunction> static void WithEachForm(TFunction fnExpect)
    {
        for (const bool bWideVectors : {true, false})
        {
            Vector::UseWideVectors(bWideVectors);
            fnExpect();
        }
    }

    static void ExpectFound(const TUnit* szText, std::size_t nLength)
    {
        WithEachForm([=] {
            ASSERT_EQ(FindPlainly(szText, 'z'), Vector::FindUnit(szText, nLength, 'z')) << nLength << " units";
        });
    }

    static void ExpectSingleUnits(const TUnit* pUnits, std::size_t nCount)
    {
        const bool bExpected = std::all_of(pUnits, pUnits + nCount, [](TUnit cUnit) {
            return cUnit != 0 && (sizeof(TUnit) > 1 || static_cast<unsigned char>(cUnit) < 0x80);
        });
        WithEachForm([=] { ASSERT_EQ(bExpected, Vector::AreSingleUnits(pUnits, nCount)) << nCount << " units"; });
    }

private:
    std::mt19937 m_oRandom{20261122};
};

typedef testing::Types<char, wchar_t> tUnitTypes;
} // namespace

TYPED_TEST_SUITE(TOVVectorTextTest, tUnitTypes, );

TYPED_TEST(TOVVectorTextTest, FindsAUnitAtEachPlaceOfATextOfEachLength)
{
    for (std::size_t nLength = 0; nLength <= MOST_UNITS; nLength += nLength < 70 ? 1 : 23)
    {
        auto aText = this->RandomLetters(nLength + 1);
        aText[nLength] = 0;
        this->ExpectFound(aText.data(), nLength);
        for (std::size_t nPlace = 0; nPlace < nLength; nPlace += nPlace < 70 ? 1 : 3)
        {
            std::swap(aText[nPlace], aText[nLength]); // ends the text there
            this->ExpectFound(aText.data(), nLength);
            std::swap(aText[nPlace], aText[nLength]);
            const TypeParam cOld = aText[nPlace];
            aText[nPlace] = 'z';
            this->ExpectFound(aText.data(), nLength);
            aText[nPlace] = cOld;
        }
    }
}

TYPED_TEST(TOVVectorTextTest, FindsTheFirstOfManyUnitsAtEachAddress)
{
    for (std::size_t nRound = 0; nRound < 2000; ++nRound)
    {
        const std::size_t nOffset = this->Random(ADDRESSES);
        const std::size_t nLength = this->Random(MOST_UNITS);
        auto aText = this->RandomLetters(nOffset + nLength + 1);
        aText.back() = 0;
        for (std::size_t nHits = this->Random(4); nHits > 0 && nLength > 0; --nHits)
            aText[nOffset + this->Random(nLength)] = this->Random(3) == 0 ? 0 : 'z';
        this->ExpectFound(aText.data() + nOffset, nLength);
    }
}

TYPED_TEST(TOVVectorTextTest, FindsAUnitAfterTheLengthWhereTheTextGoesOn)
{
    for (std::size_t nLength = 0; nLength <= MOST_UNITS; ++nLength)
    {
        auto aText = this->RandomLetters(nLength + 20);
        aText.back() = 0;
        this->ExpectFound(aText.data(), nLength);
        aText[nLength + this->Random(19)] = 'z';
        this->ExpectFound(aText.data(), nLength);
    }
}

TYPED_TEST(TOVVectorTextTest, TellsSingleUnitsAtEachPlace)
{
    const TypeParam acOther[] = {0, static_cast<TypeParam>(0x80), static_cast<TypeParam>(0xFF), 0x7F, 1};
    for (std::size_t nCount = 0; nCount <= MOST_UNITS; nCount += nCount < 70 ? 1 : 23)
    {
        auto aUnits = this->RandomLetters(nCount);
        this->ExpectSingleUnits(aUnits.data(), nCount);
        for (std::size_t nPlace = 0; nPlace < nCount; nPlace += nPlace < 70 ? 1 : 3)
        {
            const TypeParam cOld = aUnits[nPlace];
            aUnits[nPlace] = acOther[this->Random(std::size(acOther))];
            this->ExpectSingleUnits(aUnits.data(), nCount);
            this->ExpectSingleUnits(aUnits.data() + this->Random(nPlace + 1), nCount - nPlace);
            aUnits[nPlace] = cOld;
        }
    }
}

TYPED_TEST(TOVVectorTextTest, TellsSingleUnitsAtEachAddress)
{
    for (std::size_t nRound = 0; nRound < 2000; ++nRound)
    {
        const std::size_t nOffset = this->Random(ADDRESSES);
        const std::size_t nCount = this->Random(MOST_UNITS);
        auto aUnits = this->RandomLetters(nOffset + nCount);
        if (nCount > 0 && this->Random(2) == 0)
            aUnits[nOffset + this->Random(nCount)] = 0;
        this->ExpectSingleUnits(aUnits.data() + nOffset, nCount);
    }
}
