// Arrays as ranges of the standard library, and their unsigned indexes.
#include "Support/TOVTestSupport.h"

#include <TOVContainers/TOVArray.h>
#include <TOVString/TOVStringA.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <numeric>

namespace
{
// 3, 1, 2
CTOVArray<int> Numbers()
{
    CTOVArray<int> aNumbers;
    for (const int nNumber : {3, 1, 2})
        aNumbers.Add(nNumber);
    return aNumbers;
}
} // namespace

TEST(CTOVArrayRangeTest, LoopGoesOverAllElements)
{
    const CTOVArray<int> aNumbers = Numbers();
    std::vector<int> aSeen;
    for (const int& nNumber : aNumbers)
    {
        EXPECT_EQ(&aNumbers[static_cast<long>(aSeen.size())], &nNumber);
        aSeen.push_back(nNumber);
    }

    EXPECT_EQ((std::vector<int>{3, 1, 2}), aSeen);
}

TEST(CTOVArrayRangeTest, LoopChangesElements)
{
    CTOVArray<CTOVStringA> aTexts;
    aTexts.Add("a");
    aTexts.Add("b");
    for (CTOVStringA& oText : aTexts)
        oText += "!";

    EXPECT_STREQ("a!", ~aTexts[0]);
    EXPECT_STREQ("b!", ~aTexts[1]);
}

TEST(CTOVArrayRangeTest, EmptyArrayIsAnEmptyRange)
{
    CTOVArray<int> aNumbers;
    const CTOVArray<int>& aConstant = aNumbers;

    EXPECT_EQ(begin(aNumbers), end(aNumbers));
    EXPECT_EQ(begin(aConstant), end(aConstant));
}

TEST(CTOVArrayRangeTest, AlgorithmsTakeIt)
{
    CTOVArray<int> aNumbers = Numbers();
    std::sort(begin(aNumbers), end(aNumbers));

    EXPECT_TRUE(std::is_sorted(begin(aNumbers), end(aNumbers)));
    EXPECT_EQ(6, std::accumulate(begin(aNumbers), end(aNumbers), 0));
    EXPECT_EQ(3, end(aNumbers) - begin(aNumbers));
}

TEST(CTOVArrayRangeTest, UnsignedIndexIsTaken)
{
    CTOVArray<int> aNumbers = Numbers();
    aNumbers[std::size_t(1)] = 5;
    const CTOVArray<int>& aConstant = aNumbers;

    EXPECT_EQ(5, aConstant[std::size_t(1)]);
    EXPECT_EQ(2, aConstant[2U]);
    EXPECT_EQ(3, aNumbers[std::uint64_t(0)]);
}

TEST(CTOVArrayRangeTest, UnsignedIndexThatIsTooLargeIsRefused)
{
    CTOVArray<int> aNumbers = Numbers();

    EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetSize())", aNumbers[std::size_t(3)]);
    EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetSize())", aNumbers[std::numeric_limits<unsigned>::max()]);
    EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetSize())", aNumbers[(std::uint64_t(1) << 32U) + 1]);
    EXPECT_CHECK("(0 <= lIndex) && (lIndex < GetSize())", aNumbers[std::numeric_limits<std::uint64_t>::max()]);
}
