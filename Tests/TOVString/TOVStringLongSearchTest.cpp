// Tests for ends and replacing in long texts, beside plain models of their steps.
#include "Support/TOVMultiByte.h"
#include "TOVString/TOVStringKinds.h"

#include <algorithm>
#include <random>
#include <vector>

namespace
{
constexpr char NO_END[] = "GetData()->GetBuffer()[nNewLength] == '\\0'";

// At this length, work that grows with its square does not end before the test's time is over.
#if TOV_ADDRESS_SANITIZER
constexpr int LONG_LENGTH = 20000; // it reads the rest of a text to its end at each search
#else
constexpr int LONG_LENGTH = 2000000;
#endif
constexpr int ROUNDS = 20000;

template<class TString> class CTOVStringLongSearchTest : public testing::Test
{
protected:
    typedef tUnitOf<TString> tUnit;
    typedef std::vector<tUnit> tUnits;

    int Random(int nBelow) { return static_cast<int>(m_oRandom() % static_cast<unsigned>(nBelow)); }

    tUnits RandomUnits(int nLength, const tUnits& aLetters)
    {
        tUnits aUnits;
        for (int nIndex = 0; nIndex < nLength; ++nIndex)
            aUnits.push_back(aLetters[static_cast<std::size_t>(Random(static_cast<int>(aLetters.size())))]);
        return aUnits;
    }

    // A string of few letters with zeros inside. Some have more in their block than their text, and of some the text
    // goes on after their length, as a sharer has written there.
    TString RandomString(int nMostUnits, const tUnits& aLetters)
    {
        const int nLength = 1 + Random(nMostUnits);
        tUnits aUnits = RandomUnits(nLength, aLetters);
        TString oString;
        oString.Copy(aUnits.data(), nLength);
        if (Random(2) == 0)
            oString.ReleaseBuffer(Random(nLength + 1));
        if (Random(4) == 0)
        {
            aUnits = RandomUnits(2, aLetters);
            TString(oString).ConcatInPlace(2, aUnits.data());
        }
        return oString;
    }

    // The last position by searches that each begin at the start of the text.
    static bool EndsWithByItsSteps(const TString& oString, const TString& oEnd, long lDifference)
    {
        int nPosition = -1;
        for (int nHit; (nHit = oString.Find(oEnd.GetString(), nPosition + 1)) > nPosition;)
            nPosition = nHit;
        return nPosition == lDifference;
    }

    static TString Lowered(const TString& oString)
    {
        TString oLowered(oString.GetString());
        oLowered.MakeLower();
        return oLowered;
    }

    // Compares with the steps for strings of these letters. Ends are pieces of the text more often than not.
    void ExpectTheEndsOfTheSteps(const tUnits& aLetters)
    {
        for (int nRound = 0; nRound < ROUNDS; ++nRound)
        {
            // Most are short, so that few letters have many forms.
            const int nMostUnits = nRound % 4 == 0 ? 70 : 10;
            const TString oString = RandomString(nMostUnits, aLetters);
            TString oEnd = RandomString(3, aLetters);
            if (Random(2) == 0)
                oEnd = oString.Right(1 + Random(nMostUnits / 2));
            const long lDifference = oString.GetLength() - oEnd.GetLength();
            const std::string sCase = testing::PrintToString(BlockOf(oString)) + " of " +
                                      std::to_string(oString.GetLength()) + ", " +
                                      testing::PrintToString(BlockOf(oEnd)) + " of " + std::to_string(oEnd.GetLength());

            ASSERT_EQ(EndsWithByItsSteps(oString, oEnd, lDifference), oString.EndsWith(oEnd)) << sCase;
            ASSERT_EQ(oString.Find(oEnd.GetString()) == 0, oString.BeginsWith(oEnd)) << sCase;
            const TString oBegin = oString.Left(1 + Random(nMostUnits));
            ASSERT_EQ(oString.Find(oBegin.GetString()) == 0, oString.BeginsWith(oBegin)) << sCase;

            const TString oLowered = Lowered(oString);
            const TString oLoweredEnd = Lowered(oEnd);
            if (oLoweredEnd.GetString() != nullptr)
            {
                ASSERT_EQ(EndsWithByItsSteps(oLowered, oLoweredEnd, lDifference), oString.EndsWithNoCase(oEnd))
                    << sCase;
            }
        }
    }

    std::mt19937 m_oRandom{4711};
};
TYPED_TEST_SUITE(CTOVStringLongSearchTest, tStrings, sStringName);

// What a replacement makes of a string: the block, the length, the result.
template<class tUnit> struct sReplaced
{
    std::vector<tUnit> aBlock;
    long lLength;
    int nHits;
    const char* szCheck;  // the check that refuses it; nullptr if none does
    std::size_t nDefined; // units of the block that have a value
};

template<class tUnit> std::size_t LengthAt(const std::vector<tUnit>& aBlock, std::size_t nStart)
{
    return static_cast<std::size_t>(std::find(aBlock.begin() + static_cast<long>(nStart), aBlock.end(), tUnit()) -
                                    aBlock.begin()) -
           nStart;
}

// The first place from nStart on, up to the next zero, at which the text stands; -1 if there is no such place.
template<class tUnit> long FindAt(const std::vector<tUnit>& aBlock, std::size_t nStart, const std::vector<tUnit>& aText)
{
    const auto pBegin = aBlock.begin() + static_cast<long>(nStart);
    const auto pEnd = pBegin + static_cast<long>(LengthAt(aBlock, nStart));
    const auto pHit = std::search(pBegin, pEnd, aText.begin(), aText.end());
    return pHit == pEnd ? -1 : pHit - aBlock.begin();
}

// Two passes in place, with the rest of the text moved for each hit.
template<class TString>
sReplaced<tUnitOf<TString>> ReplaceByItsSteps(const TString& oString, const std::vector<tUnitOf<TString>>& aOld,
                                              const std::vector<tUnitOf<TString>>& aNew)
{
    typedef tUnitOf<TString> tUnit;
    const long lOld = static_cast<long>(aOld.size());
    const long lDifference = static_cast<long>(aNew.size()) - lOld;
    std::vector<tUnit> aBlock(oString.GetString(), oString.GetString() + CapacityOf(oString));
    std::size_t nCapacity = aBlock.size();
    long lEnd = oString.GetLength();
    sReplaced<tUnit> oResult = {aBlock, lEnd, 0, nullptr, nCapacity};
    aBlock.push_back(0); // follows each block

    for (std::size_t nSegment = 0; static_cast<long>(nSegment) < lEnd; nSegment += LengthAt(aBlock, nSegment) + 1)
    {
        for (long lHit; (lHit = FindAt(aBlock, nSegment, aOld)) != -1; ++oResult.nHits)
            nSegment = static_cast<std::size_t>(lHit + lOld);
    }

    long lRunning = lEnd;
    const long lNewLength = lEnd + lDifference * oResult.nHits;
    if (lNewLength < 0)
    {
        oResult.szCheck = "nLength >= 0";
        return oResult;
    }
    if (oResult.nHits > 0 && static_cast<long>(nCapacity) < lNewLength + 1)
    {
        const bool bEnded = aBlock[static_cast<std::size_t>(lEnd)] == 0;
        nCapacity = static_cast<std::size_t>(lNewLength) + 1;
        aBlock.resize(nCapacity + 1, 0);
        aBlock[static_cast<std::size_t>(lNewLength)] = 0;
        lEnd = lNewLength;
        oResult.lLength = lNewLength;
        oResult.nDefined = bEnded ? nCapacity : 0;
    }

    for (std::size_t nSegment = 0; oResult.nHits > 0 && static_cast<long>(nSegment) < lEnd;
         nSegment += LengthAt(aBlock, nSegment) + 1)
    {
        for (long lHit; (lHit = FindAt(aBlock, nSegment, aOld)) != -1 && lHit + lOld <= lRunning;)
        {
            const std::vector<tUnit> aRest(aBlock.begin() + lHit + lOld, aBlock.begin() + lRunning);
            std::copy(aNew.begin(), aNew.end(), aBlock.begin() + lHit);
            nSegment = static_cast<std::size_t>(lHit) + aNew.size();
            std::copy(aRest.begin(), aRest.end(), aBlock.begin() + static_cast<long>(nSegment));
            lRunning += lDifference;
            aBlock[static_cast<std::size_t>(lRunning)] = 0;
        }
    }

    if (oResult.nHits > 0)
    {
        oResult.szCheck = aBlock[static_cast<std::size_t>(lNewLength)] != 0 ? NO_END : nullptr;
        if (oResult.szCheck == nullptr)
            oResult.lLength = lNewLength;
    }
    aBlock.resize(nCapacity);
    oResult.aBlock = aBlock;
    oResult.nDefined = std::max(oResult.nDefined, static_cast<std::size_t>(oResult.nHits > 0 ? lRunning + 1 : 0));
    return oResult;
}

std::string Repeated(const std::string& sText, int nTimes)
{
    std::string sRepeated;
    for (int nTime = 0; nTime < nTimes; ++nTime)
        sRepeated += sText;
    return sRepeated;
}

// A text of bytes in either width.
} // namespace

// The search goes on after the length where a sharer has written there, and ends at the first zero.
TYPED_TEST(CTOVStringLongSearchTest, FindsTheCharacterThatAPlainLoopFinds)
{
    for (int nRound = 0; nRound < ROUNDS; ++nRound)
    {
        const TypeParam oString =
            this->RandomString(nRound % 4 == 0 ? 400 : 40, {'a', 'b', 'b', 'b', 'b', 'b', 'b', 0});
        const int nStart = this->Random(static_cast<int>(oString.GetLength()) + 2);
        int nExpected = -1;
        if (nStart < oString.GetLength())
        {
            nExpected = nStart;
            while (oString.GetString()[nExpected] != 'a' && oString.GetString()[nExpected] != 0)
                ++nExpected;
            nExpected = oString.GetString()[nExpected] != 0 ? nExpected : -1;
        }
        ASSERT_EQ(nExpected, oString.Find('a', nStart)) << nStart;
    }
}

TYPED_TEST(CTOVStringLongSearchTest, EndsAsItsStepsTell)
{
    this->ExpectTheEndsOfTheSteps({'a', 'a', 'B', 0});
    this->ExpectTheEndsOfTheSteps({'a', 'b', 'A'});
}

TEST(CTOVStringALongSearchTest, EndsAsItsStepsTellInAMultiByteCodePage)
{
    class CSteps : public CTOVStringLongSearchTest<CTOVStringA>
    {
    public:
        using CTOVStringLongSearchTest::ExpectTheEndsOfTheSteps;
        void TestBody() override {}
    };
    const CMultiByteCodePage oCodePage;
    const char* const szCharacter = oCodePage.Character();

    CSteps().ExpectTheEndsOfTheSteps({'a', 'b', szCharacter[0], szCharacter[1], szCharacter[0], szCharacter[1], 0});
    CSteps().ExpectTheEndsOfTheSteps({'a', szCharacter[0], szCharacter[1]});
}

// On Windows a step stays before such a character.
TEST(CTOVStringALongSearchTest, EndsWithACharacterThatTheTerminatorCutsOff)
{
    const CMultiByteCodePage oCodePage;
    const CTOVStringA oCut(oCodePage.Character()[0], 1);
    CTOVStringA oText("a");
    oText += oCut;

    EXPECT_TRUE(oText.EndsWith(oCut));
    EXPECT_TRUE(oCut.EndsWith(oCut));
}

TYPED_TEST(CTOVStringLongSearchTest, ReplacesAsItsStepsTell)
{
    for (int nRound = 0; nRound < ROUNDS; ++nRound)
    {
        // Some have more hits than are remembered.
        const bool bLong = nRound % 64 == 0;
        TypeParam oString = bLong && nRound % 128 == 0 ? this->RandomString(1000, {'a', 'a', 'b'})
                                                       : this->RandomString(bLong ? 1000 : 16, {'a', 'a', 'b', 0});
        auto aOld = this->RandomUnits(1 + this->Random(3), {'a', 'b'});
        auto aNew = this->RandomUnits(this->Random(5), {'a', 'b', 'c'});
        const auto oExpected = ReplaceByItsSteps(oString, aOld, aNew);
        const std::string sCase = testing::PrintToString(BlockOf(oString)) + " of " +
                                  std::to_string(oString.GetLength()) + ", " +
                                  BytesOf(aOld.data(), static_cast<long>(aOld.size())) + " by " +
                                  BytesOf(aNew.data(), static_cast<long>(aNew.size()));
        aOld.push_back(0);
        aNew.push_back(0);

        if (oExpected.szCheck != nullptr)
        {
            EXPECT_SOURCE_CHECK(oExpected.szCheck, oString.Replace(aOld.data(), aNew.data())) << sCase;
        }
        else
        {
            ASSERT_EQ(oExpected.nHits, oString.Replace(aOld.data(), aNew.data())) << sCase;
        }

        ASSERT_EQ(oExpected.lLength, oString.GetLength()) << sCase;
        ASSERT_EQ(static_cast<long>(oExpected.aBlock.size()), CapacityOf(oString)) << sCase;
        const long lDefined = static_cast<long>(oExpected.nDefined);
        ASSERT_EQ(BytesOf(oExpected.aBlock.data(), lDefined), BytesOf(oString.GetString(), lDefined)) << sCase;
    }
}

TYPED_TEST(CTOVStringLongSearchTest, EndsWithOneLetterThatIsRepeated)
{
    const std::string sText(LONG_LENGTH, 'a');
    const TypeParam oText = StringOf<TypeParam>(sText);

    EXPECT_TRUE(oText.EndsWith(TXT("a")));
    EXPECT_TRUE(oText.EndsWithNoCase(TXT("AAA")));
    EXPECT_FALSE(oText.EndsWith(TXT("aab")));
    EXPECT_TRUE(oText.EndsWith(StringOf<TypeParam>(sText.substr(LONG_LENGTH / 2))));
    EXPECT_TRUE(oText.EndsWith(oText));
}

TEST(CTOVStringALongSearchTest, EndsWithOneLetterThatIsRepeatedInAMultiByteCodePage)
{
    const CMultiByteCodePage oCodePage;
    const CTOVStringA oText((oCodePage.Character() + std::string(LONG_LENGTH, 'a')).c_str());

    // Settled: after the first character, each search leaves one unit out.
    EXPECT_TRUE(oText.EndsWith("aa"));
    EXPECT_FALSE(oText.EndsWith("a"));
}

TYPED_TEST(CTOVStringLongSearchTest, ReplacesManyHits)
{
    TypeParam oText = StringOf<TypeParam>(Repeated("ab", LONG_LENGTH / 2));

    EXPECT_EQ(LONG_LENGTH / 2, oText.Replace(TXT("b"), TXT("xyz")));
    EXPECT_TRUE(StringOf<TypeParam>(Repeated("axyz", LONG_LENGTH / 2)) == oText);

    EXPECT_EQ(LONG_LENGTH / 2, oText.Replace(TXT("xyz"), TXT("uvw")));
    EXPECT_TRUE(StringOf<TypeParam>(Repeated("auvw", LONG_LENGTH / 2)) == oText);

    EXPECT_EQ(LONG_LENGTH / 2, oText.Replace(TXT("uvw"), TXT("")));
    EXPECT_TRUE(StringOf<TypeParam>(std::string(LONG_LENGTH / 2, 'a')) == oText);
}
