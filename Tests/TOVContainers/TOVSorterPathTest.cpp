// An array is sorted without virtual calls, a derived one with them: both beside each other, on the same elements.
#include "TOVContainers/TOVArrayInstruments.h"

#include <TOVString/TOVStringA.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace
{
struct sKeyed
{
    int nKey;
    int nName;
};

typedef std::vector<std::pair<int, int>> tPairs;

// Adds nothing to an array, and yet is a class of its own.
template<class T> class CDerivedArray : public CTOVArray<T>
{
};

// What a sort compares, by names, and then the names in the order of the result.
template<class TArray> tPairs StepsOfSort(const std::vector<int>& aKeys)
{
    TArray oArray;
    for (std::size_t nName = 0; nName < aKeys.size(); ++nName)
        oArray.Add(sKeyed{aKeys[nName], static_cast<int>(nName)});

    tPairs aSteps;
    oArray.Sort([&aSteps](const sKeyed& oA, const sKeyed& oB) {
        aSteps.emplace_back(oA.nName, oB.nName);
        return oA.nKey - oB.nKey;
    });
    for (long lIndex = 0; lIndex < oArray.GetSize(); ++lIndex)
        aSteps.emplace_back(oArray[lIndex].nKey, oArray[lIndex].nName);
    return aSteps;
}

std::vector<int> RandomKeys(std::mt19937& oRandom, std::size_t nSize, unsigned int nNumKeys)
{
    std::vector<int> aKeys(nSize);
    for (int& nKey : aKeys)
        nKey = static_cast<int>(oRandom() % nNumKeys);
    return aKeys;
}
} // namespace

TEST(CTOVSorterPathTest, BothPathsCompareTheSameElementsInTheSameOrder)
{
    std::mt19937 oRandom(1);
    for (std::size_t nSize = 0; nSize <= 70; ++nSize)
    {
        for (const unsigned int nNumKeys : {1u, 2u, 5u, 1000u})
        {
            const std::vector<int> aKeys = RandomKeys(oRandom, nSize, nNumKeys);
            ASSERT_EQ(StepsOfSort<CDerivedArray<sKeyed>>(aKeys), StepsOfSort<CTOVArray<sKeyed>>(aKeys)) << nSize;
        }
    }
}

namespace
{
// The numbers 0 to 999 in a random order, sorted by a comparison that gives 0, oResult or its negative.
template<class TResult> std::vector<int> SortBy(TResult oResult)
{
    std::vector<int> aNumbers(1000);
    std::iota(aNumbers.begin(), aNumbers.end(), 0);
    std::shuffle(aNumbers.begin(), aNumbers.end(), std::mt19937(4));
    CTOVArray<int> oArray;
    for (const int nNumber : aNumbers)
        oArray.Add(nNumber);

    oArray.Sort([=](const int& nA, const int& nB) {
        return static_cast<TResult>(nA < nB ? -oResult : (nA > nB ? oResult : TResult()));
    });
    return std::vector<int>(&oArray[0], &oArray[0] + oArray.GetSize());
}
} // namespace

TEST(CTOVSorterPathTest, ResultOfAComparisonMayBeAnySignedNumber)
{
    std::vector<int> aSorted(1000);
    std::iota(aSorted.begin(), aSorted.end(), 0);
    EXPECT_EQ(aSorted, SortBy<signed char>(1));
    EXPECT_EQ(aSorted, SortBy<short>(0x4000));
    EXPECT_EQ(aSorted, SortBy<int>(0x7FFFFFFF));
    EXPECT_EQ(aSorted, SortBy<long>(1));
    EXPECT_EQ(aSorted, SortBy<long long>(1LL << 32)); // has no bit in a shorter number
    EXPECT_EQ(aSorted, SortBy<long long>((1LL << 32) - 1));
    EXPECT_EQ(aSorted, SortBy<float>(0.25F));
    EXPECT_EQ(aSorted, SortBy<double>(1e-300));
}

TEST(CTOVSorterPathTest, BothPathsMakeTheSameOrderOfEqualsInLargeArrays)
{
    std::mt19937 oRandom(2);
    for (const unsigned int nNumKeys : {1u, 3u, 100u, 1000000u})
    {
        const std::vector<int> aKeys = RandomKeys(oRandom, 20011, nNumKeys);
        EXPECT_EQ(StepsOfSort<CDerivedArray<sKeyed>>(aKeys), StepsOfSort<CTOVArray<sKeyed>>(aKeys));
    }
}

TEST(CTOVSorterPathTest, BothPathsSortElementsThatShareBlocks)
{
    std::mt19937 oRandom(3);
    CTOVArray<CTOVStringA> oArray;
    CDerivedArray<CTOVStringA> oDerived;
    for (const int nKey : RandomKeys(oRandom, 500, 40))
    {
        oArray.Add(std::to_string(nKey).c_str());
        oDerived.Add(oArray[oArray.GetSize() - 1]);
    }
    const auto Compare = [](const CTOVStringA& oA, const CTOVStringA& oB) {
        return std::string(oA.GetString()).compare(oB.GetString());
    };

    oArray.Sort(Compare);
    oDerived.Sort(Compare);

    for (long lIndex = 0; lIndex < oArray.GetSize(); ++lIndex)
        ASSERT_EQ(oDerived[lIndex].GetString(), oArray[lIndex].GetString()) << lIndex;
}

TEST(CTOVSorterPathTest, AnArrayThatAComparisonShortensFailsTheCheckOfTheIndex)
{
    const auto ShortenAfter = [](tIntArray& oArray, int nComparisons) {
        oArray.Sort([&oArray, &nComparisons](const int& nA, const int& nB) {
            if (--nComparisons == 0)
                oArray.Resize(1);
            return nA < nB ? -1 : 1;
        });
    };
    for (int nComparisons = 1; nComparisons < 10; ++nComparisons)
    {
        tIntArray oArray = MakeArray({5, 3, 8, 1, 9, 2, 7});
        CDerivedArray<int> oDerived;
        oDerived.Append(MakeArray({5, 3, 8, 1, 9, 2, 7}));
        EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetSize())", ShortenAfter(oArray, nComparisons));
        EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetSize())", ShortenAfter(oDerived, nComparisons));
        EXPECT_EQ(1, oArray.GetSize());
        EXPECT_EQ(1, oDerived.GetSize());
    }
}

TEST(CTOVSorterPathTest, AnArrayMayGrowDuringAComparison)
{
    for (int nComparisons = 1; nComparisons < 10; ++nComparisons)
    {
        int nLeft = nComparisons;
        tIntArray oArray = MakeArray({5, 3, 8, 1, 9, 2, 7});
        oArray.Sort([&](const int& nFirst, const int& nSecond) {
            const int nA = nFirst;
            const int nB = nSecond;
            if (--nLeft == 0)
            {
                for (int nElement = 0; nElement < 100; ++nElement)
                    oArray.Add(10 + nElement);
            }
            return nA < nB ? -1 : nA > nB ? 1 : 0;
        });

        oArray.Resize(7);
        EXPECT_EQ((std::vector<int>{1, 2, 3, 5, 7, 8, 9}), Elements(oArray)) << nComparisons;
    }
}

TEST(CTOVSorterPathTest, OnlyTheClassItselfIsExact)
{
    const tIntArray oArray;
    const CDerivedArray<int> oDerived;

    EXPECT_TRUE(TOVIsExactly(oArray));
    EXPECT_FALSE(TOVIsExactly(static_cast<const tIntArray&>(oDerived)));
}
