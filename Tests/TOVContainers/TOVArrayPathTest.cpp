// The elements of an array are read and written without virtual calls, those of a derived one with them: both beside
// each other, at the same indexes.
#include "Support/TOVRefusal.h"
#include "TOVContainers/TOVArrayInstruments.h"

#include <TOVString/TOVStringA.h>

#include <limits>
#include <random>
#include <string>

namespace
{
// Overrides nothing, and yet is a class of its own.
class CDerivedArray : public tIntArray
{
};

// Passes each index on as an int, in the class's own words.
class CPassingArray : public tIntArray
{
public:
    const int& operator[](long lIndex) const override { return tIntArray::operator[](static_cast<int>(lIndex)); }
    int& operator[](long lIndex) override { return tIntArray::operator[](static_cast<int>(lIndex)); }
};

// The compiler knows nothing about the class of what this returns.
tIntArray& Unknown(tIntArray& oArray)
{
    tIntArray* volatile pArray = &oArray;
    return *pArray;
}

// Adds 2 to the element in the way that nWay says. Returns what it reads there, or -1 if a check fails.
int Exchange(tIntArray& oArray, unsigned int nWay, long lIndex)
{
    const tIntArray& oConst = oArray;
    int nRead = -1;
    const auto fnSet = [&] { oArray.SetAt(lIndex, nRead + 2); };
    const auto fnWays = [&] {
        switch (nWay)
        {
        case 0:
            nRead = oConst[lIndex];
            return fnSet();
        case 1:
            nRead = oConst.GetAt(lIndex);
            return fnSet();
        case 2:
            nRead = oArray.ElementAt(lIndex)++;
            ++oArray[lIndex];
            return;
        default:
            nRead = oArray[lIndex];
            oArray[lIndex] += 2;
        }
    };
    return FailsACheck(fnWays) ? -1 : nRead;
}

template<class TArray> class CTOVArrayElementsTest : public testing::Test
{
};

typedef testing::Types<tIntArray, CDerivedArray, CPassingArray> tArrays;
TYPED_TEST_SUITE(CTOVArrayElementsTest, tArrays, );
} // namespace

TYPED_TEST(CTOVArrayElementsTest, FindsTheElementsOfAVector)
{
    std::mt19937 oRandom(1);
    for (long lSize = 0; lSize <= 70; ++lSize)
    {
        TypeParam oArray;
        tInts aElements;
        for (long lIndex = 0; lIndex < lSize; ++lIndex)
            oArray.Add(aElements.emplace_back(static_cast<int>(oRandom() >> 2)));
        for (int nTime = 0; nTime < 200; ++nTime)
        {
            const long lIndex = static_cast<long>(oRandom() % 80) - 5;
            const bool bIsThere = lIndex >= 0 && lIndex < lSize;
            int* const pElement = bIsThere ? &aElements[static_cast<std::size_t>(lIndex)] : nullptr;
            ASSERT_EQ(bIsThere ? *pElement : -1, Exchange(Unknown(oArray), oRandom() % 4, lIndex)) << lIndex;
            if (bIsThere)
                *pElement += 2;
        }
        ASSERT_EQ(aElements, Elements(oArray));
    }
}

TYPED_TEST(CTOVArrayElementsTest, RefusesTheIndexesFarOutside)
{
    TypeParam oArray;
    oArray.Add(1);
    tIntArray& oUnknown = Unknown(oArray);

    for (const long lIndex : {std::numeric_limits<long>::min(), -1L, 1L, std::numeric_limits<long>::max() / 4 + 1,
                              std::numeric_limits<long>::max()})
    {
        EXPECT_CHECK(INDEX_CHECK, static_cast<const tIntArray&>(oUnknown).GetAt(lIndex));
        EXPECT_CHECK(INDEX_CHECK, oUnknown.ElementAt(lIndex));
        EXPECT_CHECK(INDEX_CHECK, oUnknown.SetAt(lIndex, 2));
    }
    EXPECT_CHECK(INDEX_CHECK, oUnknown[-1]);
    EXPECT_CHECK(INDEX_CHECK, static_cast<const tIntArray&>(oUnknown)[1]);
    EXPECT_EQ((tInts{1}), Elements(oArray));
}

TEST(CTOVArrayPathTest, ASizeThatIsOverriddenCounts)
{
    CSizedArray oSmall(1);
    oSmall.Add(10);
    oSmall.Add(20);
    tIntArray& oUnknown = Unknown(oSmall);

    EXPECT_EQ(10, oUnknown[0]);
    EXPECT_CHECK(INDEX_CHECK, oUnknown[1]);
    EXPECT_CHECK(INDEX_CHECK, oUnknown.GetAt(1));
    EXPECT_CHECK(INDEX_CHECK, oUnknown.ElementAt(1));
    EXPECT_CHECK(INDEX_CHECK, oUnknown.SetAt(1, 30));
}

TEST(CTOVArrayPathTest, OnlyTheClassItselfHasItsTable)
{
    tIntArray oArray;
    CDerivedArray oDerived;

    EXPECT_TRUE(TOVHasOwnTable(Unknown(oArray)));
    EXPECT_FALSE(TOVHasOwnTable(Unknown(oDerived)));
}

TEST(CTOVArrayPathTest, ArraysThatTheLibraryHasMadeAreReadInTheSameWay)
{
    CTOVArray<CTOVStringA> oParts;
    CTOVStringA("a,b,c").Split(oParts, ',');

    EXPECT_STREQ("c", oParts[2].GetString());
    EXPECT_CHECK(INDEX_CHECK, oParts[3]);
    EXPECT_CHECK(INDEX_CHECK, oParts.GetAt(-1));
}
