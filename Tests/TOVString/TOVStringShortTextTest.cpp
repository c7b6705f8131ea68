// The ways in which strings are made: short texts whose blocks come from the thread's lists are measured and copied
// without a call, all others by the plain functions. Both run on the same random texts, at every length around the
// bounds of the former and at every address within a vector.
#include "TOVString/TOVStringKinds.h"

#include <TOVDesignPatterns/TOVSharedBlock.h>
#include <TOVPlatform/TOVMemoryList.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

namespace
{
constexpr int MAX_LENGTH = 300;
constexpr int NUM_PLACES = 64;

// Texts of random characters, none of them zero.
template<class TUnit> class CRandomTexts
{
public:
    // The text lies in a block of its own, at nPlace of the buffer, among other random characters. In a build with
    // AddressSanitizer, the block ends with the terminator.
    const TUnit* Make(int nLength, int nPlace)
    {
        m_pUnits = std::make_unique<TUnit[]>(static_cast<std::size_t>(nPlace + nLength + 1));
        for (int nUnit = 0; nUnit < nPlace + nLength; ++nUnit)
            m_pUnits[nUnit] = Unit();
        m_pUnits[nPlace + nLength] = 0;
        return m_pUnits.get() + nPlace;
    }

    TUnit Unit() { return static_cast<TUnit>(m_oRandom() % 255 + 1); }
    int Below(int nLimit) { return static_cast<int>(m_oRandom() % static_cast<unsigned int>(nLimit)); }

private:
    std::mt19937 m_oRandom{91};
    std::unique_ptr<TUnit[]> m_pUnits;
};

template<class TString> class CTOVStringShortTextTest : public testing::Test
{
protected:
    typedef TString TypeParam;
    typedef tUnitOf<TString> tUnit;

    // Frees blocks of all sizes of the lists, so that each text finds one, and ends the lists after the test.
    CTOVStringShortTextTest() { TOVPlatform::TOVMemoryList::UseLists(true); }
    ~CTOVStringShortTextTest() override { TOVPlatform::TOVMemoryList::UseLists(true); }

    static void FillLists()
    {
        std::vector<TString> aStrings;
        for (int nLength = 1; nLength <= 2 * MAX_LENGTH; ++nLength)
        {
            aStrings.emplace_back();
            aStrings.back().AllocBuffer(nLength);
        }
    }

    // Runs fnTest with blocks in the lists, with empty lists, and without lists, as in a thread that ends.
    template<class TTest> static void ForEachWay(TTest fnTest)
    {
        FillLists();
        fnTest();
        TOVPlatform::TOVMemoryList::UseLists(false);
        fnTest();
        TOVPlatform::TOVMemoryList::UseLists(true);
        fnTest();
    }

    // Whether the string holds exactly this text, in a block that ends with the terminator, and with the zero that is
    // hidden after it.
    static bool HoldsText(const TString& oString, const tUnit* pText, int nLength)
    {
        if (nLength == 0)
            return oString.GetString() == nullptr && oString.GetLength() == 0 && CapacityOf(oString) == 0;
        const tUnit* const pOwn = oString.GetString();
        return pOwn != pText && oString.GetLength() == nLength && CapacityOf(oString) == nLength + 1 &&
               std::equal(pText, pText + nLength, pOwn) && pOwn[nLength] == 0 && pOwn[nLength + 1] == 0;
    }

    // The parts by the plain rule: those between the separators before the first zero, and the rest.
    static std::vector<sHeld> PartsOf(const tUnit* pText, int nLength, tUnit cSeparator)
    {
        std::vector<sHeld> aParts;
        int nStart = 0;
        const auto fnAdd = [&](int nEnd) {
            aParts.push_back({BytesOf(pText + nStart, nEnd - nStart), nEnd > nStart ? nEnd - nStart + 1 : 0});
            nStart = nEnd + 1;
        };
        for (int nUnit = 0; nUnit < nLength && pText[nUnit] != 0; ++nUnit)
        {
            if (pText[nUnit] == cSeparator)
                fnAdd(nUnit);
        }
        fnAdd(nLength);
        return aParts;
    }

    static std::vector<sHeld> StatesOf(const CTOVArray<TString>& oParts)
    {
        std::vector<sHeld> aStates;
        for (long lPart = 0; lPart < oParts.GetSize(); ++lPart)
            aStates.push_back(StateOf(oParts[lPart]));
        return aStates;
    }

    CRandomTexts<tUnit> m_oTexts;
};
TYPED_TEST_SUITE(CTOVStringShortTextTest, tStrings, sStringName);

// An array that counts what is added.
template<class TString> class CCountingArray : public CTOVArray<TString>
{
public:
    long Add(const TString& oElement) override
    {
        ++m_nAdded;
        return CTOVArray<TString>::Add(oElement);
    }

    int m_nAdded = 0;
};
} // namespace

TYPED_TEST(CTOVStringShortTextTest, HoldsATextOfEachLengthAtEachPlace)
{
    this->ForEachWay([this] {
        for (int nLength = 0; nLength <= MAX_LENGTH; ++nLength)
        {
            for (int nPlace = 0; nPlace < NUM_PLACES; ++nPlace)
            {
                const auto* const szText = this->m_oTexts.Make(nLength, nPlace);
                TypeParam oAssigned(TXT("before"));
                oAssigned = szText;
                ASSERT_TRUE(this->HoldsText(TypeParam(szText), szText, nLength)) << nLength << " " << nPlace;
                ASSERT_EQ(BytesOf(szText, nLength), VisibleOf(oAssigned)) << nLength << " " << nPlace;
            }
        }
    });
}

TYPED_TEST(CTOVStringShortTextTest, HoldsUnitsOfEachNumberAtEachPlace)
{
    this->ForEachWay([this] {
        for (int nLength = 1; nLength <= MAX_LENGTH; ++nLength)
        {
            for (int nPlace = 0; nPlace < NUM_PLACES; nPlace += 3)
            {
                const auto* const pText = this->m_oTexts.Make(nLength + 3, nPlace);
                TypeParam oFilled;
                oFilled.Copy(pText, nLength);
                TypeParam oRefilled(TXT("before"));
                oRefilled.AssignCopy(nLength, pText);
                ASSERT_TRUE(this->HoldsText(oFilled, pText, nLength)) << nLength << " " << nPlace;
                ASSERT_TRUE(this->HoldsText(oRefilled, pText, nLength)) << nLength << " " << nPlace;

                const TypeParam oWhole(pText);
                const TypeParam oPart = oWhole.Mid(2, nLength);
                ASSERT_TRUE(this->HoldsText(oPart, oWhole.GetString() + 2, nLength)) << nLength << " " << nPlace;
            }
        }
    });
}

TYPED_TEST(CTOVStringShortTextTest, HoldsTwoTextsOfAllLengths)
{
    this->ForEachWay([this] {
        for (int nLength1 = 0; nLength1 <= 70; ++nLength1)
        {
            for (int nLength2 = nLength1 == 0 ? 1 : 0; nLength2 <= 70; ++nLength2)
            {
                const int nSum = nLength1 + nLength2;
                const auto* const pText = this->m_oTexts.Make(nSum, (nLength1 + nLength2) % NUM_PLACES);
                TypeParam oJoined;
                oJoined.ConcatCopy(nLength1, pText, nLength2, pText + nLength1);
                ASSERT_TRUE(this->HoldsText(oJoined, pText, nSum)) << nLength1 << " " << nLength2;

                if (nLength1 == 0)
                    continue;
                TypeParam oFirst;
                oFirst.AssignCopy(nLength1, pText);
                TypeParam oAppended(oFirst);
                oAppended.ConcatInPlace(nLength2, pText + nLength1);
                ASSERT_TRUE(this->HoldsText(oAppended, pText, nSum)) << nLength1 << " " << nLength2;
                ASSERT_TRUE(this->HoldsText(oFirst, pText, nLength1)) << nLength1 << " " << nLength2;
            }
        }
    });
}

// The source is the string's own text, or a part of it.
TYPED_TEST(CTOVStringShortTextTest, HoldsItsOwnTextTwice)
{
    this->ForEachWay([this] {
        for (int nLength = 1; nLength <= MAX_LENGTH; ++nLength)
        {
            const auto* const szText = this->m_oTexts.Make(nLength, nLength % NUM_PLACES);
            const std::string sText = BytesOf(szText, nLength);
            const int nPart = this->m_oTexts.Below(nLength);
            TypeParam oSum(szText);
            oSum += oSum;
            TypeParam oJoined(szText);
            oJoined.ConcatCopy(nLength, oJoined.GetString(), nLength - nPart, oJoined.GetString() + nPart);
            TypeParam oTail(szText);
            oTail.AssignCopy(nLength - nPart, oTail.GetString() + nPart);

            ASSERT_EQ((sHeld{sText + sText, 2 * nLength + 1}), StateOf(oSum));
            ASSERT_EQ((sHeld{sText + sText.substr(nPart), 2 * nLength - nPart + 1}), StateOf(oJoined));
            ASSERT_EQ((sHeld{sText.substr(nPart), nLength - nPart + 1}), StateOf(oTail));
        }
    });
}

TYPED_TEST(CTOVStringShortTextTest, SplitsTextsOfAllLengths)
{
    this->ForEachWay([this] {
        for (int nLength = 1; nLength <= 2 * MAX_LENGTH; ++nLength)
        {
            // Few, some and only separators; in every third text, a zero hides those that follow.
            for (const int nEvery : {1, 2, 7, 60})
            {
                TypeParam oText(this->m_oTexts.Make(nLength, 0));
                for (int nUnit = 0; nUnit < nLength; ++nUnit)
                {
                    if (this->m_oTexts.Below(nEvery) == 0)
                        oText.SetAt(nUnit, ',');
                }
                if (nLength % 3 == 0)
                    oText.SetAt(this->m_oTexts.Below(nLength), 0);
                const auto aExpected = this->PartsOf(oText.GetString(), nLength, CHR(','));
                CTOVArray<TypeParam> oParts;
                CCountingArray<TypeParam> oCounting;

                ASSERT_EQ(static_cast<int>(aExpected.size()), oText.Split(oParts, ',')) << nLength << " " << nEvery;
                ASSERT_EQ(aExpected, this->StatesOf(oParts)) << nLength << " " << nEvery;
                ASSERT_EQ(static_cast<int>(aExpected.size()), oText.Split(oCounting, ',')) << nLength << " " << nEvery;
                ASSERT_EQ(aExpected, this->StatesOf(oCounting)) << nLength << " " << nEvery;
                ASSERT_EQ(static_cast<int>(aExpected.size()), oCounting.m_nAdded);
            }
        }
    });
}

// A text that goes on after its length, where a sharer of the block has written, is searched there for the end of the
// last part.
TYPED_TEST(CTOVStringShortTextTest, SplitsATextThatASharerHasMadeLonger)
{
    TypeParam oLonger(TXT("one,two,three"));
    TypeParam oText(oLonger);
    oText.ReleaseBuffer(5);
    oLonger.SetAt(5, 'w');
    CTOVArray<TypeParam> oParts;

    EXPECT_EQ(3, oText.Split(oParts, ','));

    EXPECT_EQ((std::vector<sHeld>{Holds("one", 4), Holds("two", 4), HoldsNothing()}), this->StatesOf(oParts));
}

// The last step fails for a part that is not there, as the capacity has no place for it.
TYPED_TEST(CTOVStringShortTextTest, SplitsATextThatFillsItsBlock)
{
    TypeParam oText(TXT("abc"));
    oText.ReleaseBuffer(4);
    CTOVArray<TypeParam> oParts;

    EXPECT_EQ(1, oText.Split(oParts, ','));

    EXPECT_EQ(oText.GetString(), oParts[0].GetString());
}

TYPED_TEST(CTOVStringShortTextTest, AppendsOneByOne)
{
    this->ForEachWay([this] {
        TypeParam oText;
        std::string sExpected;
        std::vector<TypeParam> aCopies;
        for (int nLength = 0; nLength < 3000; ++nLength)
        {
            if (nLength % 97 == 5)
                aCopies.push_back(oText);
            const auto cUnit = this->m_oTexts.Unit();
            oText += cUnit;
            sExpected += ByteOf(cUnit);
            ASSERT_EQ(nLength + 2, CapacityOf(oText));
            ASSERT_EQ(0, oText.GetString()[nLength + 1]);
        }
        EXPECT_EQ((sHeld{sExpected, 3001}), StateOf(oText));
        for (const TypeParam& oCopy : aCopies)
            EXPECT_EQ((sHeld{sExpected.substr(0, oCopy.GetLength()), oCopy.GetLength() + 1}), StateOf(oCopy));
    });
}

// A block that grows has room for an eighth more at least once in a while, and for a quarter more at most.
TEST(CTOVSharedBlockTest, GrowsByPartsOfItsSize)
{
    constexpr std::size_t HEADER = 40;
    std::size_t nLastRoom = 0;
    int nGrowths = 0;
    for (std::size_t nElements = 1; nElements < 100000; ++nElements)
    {
        CTOVSharedBlock<char>* const pBlock = CTOVSharedBlock<char>::Make(nElements, true);
        std::size_t nRoom = nElements;
        while (pBlock->HasRoom(nRoom + 1))
            ++nRoom;
        pBlock->Free();

        ASSERT_LE(nRoom, nElements + (TOV_ROUND_BLOCKS ? (nElements + HEADER) / 4 + 16 : HEADER));
        if (nElements > nLastRoom)
        {
            nLastRoom = nRoom;
            ++nGrowths;
        }
        if (nElements == 1002 && TOV_ROUND_BLOCKS && sizeof(void*) == 8)
        {
            EXPECT_EQ(1004u, nRoom); // the largest block of the lists
        }
    }
    if (TOV_ROUND_BLOCKS)
    {
        EXPECT_GE(70, nGrowths);
    }
}
