#include "TOVContainers/TOVArrayInstruments.h"

#include <TOVContainers/TOVSorter.h>
#include <TOVString/TOVStringA.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace
{
typedef int (*tIntOrder)(const int&, const int&);

int CompareInts(const int& nA, const int& nB)
{
    return nA < nB ? -1 : nA > nB ? 1 : 0;
}

// Notes what a sort writes, and in between what it compares.
class CWatchedArray : public tIntArray
{
public:
    explicit CWatchedArray(const tInts& aElements) : tIntArray(MakeArray(aElements)) {}

    bool SetAt(long lIndex, const int& nElement) override
    {
        m_oCalls << lIndex << '=' << nElement << ' ';
        return tIntArray::SetAt(lIndex, nElement);
    }
    void Swap(long lIndex1, long lIndex2) override
    {
        m_oCalls << "swap" << lIndex1 << ',' << lIndex2 << ' ';
        tIntArray::Swap(lIndex1, lIndex2);
    }

    std::string CallsOfSort()
    {
        Sort([this](const int& nA, const int& nB) {
            m_oCalls << nA << '?' << nB << ' ';
            return CompareInts(nA, nB);
        });
        return m_oCalls.str();
    }

private:
    std::ostringstream m_oCalls;
};

// Shows its elements in reverse.
class CReversedArray : public tIntArray
{
public:
    const int& GetAt(long lIndex) const override { return tIntArray::GetAt(GetSize() - 1 - lIndex); }
    bool SetAt(long lIndex, const int& nElement) override { return tIntArray::SetAt(GetSize() - 1 - lIndex, nElement); }

    int GetStored(long lIndex) const { return tIntArray::GetAt(lIndex); }
};

struct sKeyed
{
    int nKey;
    char cName;
};

std::string SortedNames(const std::string& sKeysAndNames)
{
    CTOVArray<sKeyed> oArray;
    for (std::size_t nIndex = 0; nIndex < sKeysAndNames.size(); nIndex += 2)
        oArray.Add(sKeyed{sKeysAndNames[nIndex], sKeysAndNames[nIndex + 1]});
    oArray.Sort([](const sKeyed& oA, const sKeyed& oB) { return oA.nKey - oB.nKey; });

    std::string sNames;
    for (long lIndex = 0; lIndex < oArray.GetSize(); ++lIndex)
        sNames += oArray[lIndex].cName;
    return sNames;
}
} // namespace

TEST(CTOVSorterTest, SortsAnEmptyArray)
{
    tIntArray oArray;

    EXPECT_NO_CHECK(oArray.Sort(&CompareInts));
    EXPECT_TRUE(oArray.IsEmpty());
}

TEST(CTOVSorterTest, SortsOneElement)
{
    tIntArray oArray = MakeArray({400});

    EXPECT_NO_CHECK(oArray.Sort(&CompareInts));
    EXPECT_EQ((std::vector<int>{400}), Elements(oArray));
}

TEST(CTOVSorterTest, SortsInAscendingOrder)
{
    tIntArray oArray = MakeArray({400, 300});
    oArray.Resize(4);
    oArray[2] = 200;
    oArray[3] = 100;

    oArray.Sort(&CompareInts);

    EXPECT_EQ((std::vector<int>{100, 200, 300, 400}), Elements(oArray));
}

TEST(CTOVSorterTest, SortsEveryArrangementOfFewElements)
{
    std::vector<int> aElements = {1, 2, 2, 3, 4, 5};
    const std::vector<int> aSorted = aElements;
    do
    {
        tIntArray oArray = MakeArray(aElements);
        oArray.Sort(&CompareInts);
        ASSERT_EQ(aSorted, Elements(oArray)) << testing::PrintToString(aElements);
    } while (std::next_permutation(aElements.begin(), aElements.end()));
}

TEST(CTOVSorterTest, SortsManyElements)
{
    std::mt19937 oRandom(1);
    for (const int nSize : {2, 3, 10, 100, 1001, 4096})
    {
        std::vector<int> aElements(static_cast<std::size_t>(nSize));
        for (int& nElement : aElements)
            nElement = static_cast<int>(oRandom() % 1000);
        tIntArray oArray = MakeArray(aElements);

        oArray.Sort(&CompareInts);

        std::sort(aElements.begin(), aElements.end());
        EXPECT_EQ(aElements, Elements(oArray)) << nSize;
    }
}

TEST(CTOVSorterTest, SortsByTheCallersOrder)
{
    tIntArray oArray = MakeArray({2, 3, 1, 5, 4});
    const int nSign = -1;

    oArray.Sort([&](const int& nA, const int& nB) { return nSign * CompareInts(nA, nB); });

    EXPECT_EQ((std::vector<int>{5, 4, 3, 2, 1}), Elements(oArray));
}

TEST(CTOVSorterTest, TakesTheSignOfAComparisonAlone)
{
    tIntArray oArray = MakeArray({20, 300, 1, 4000});

    oArray.Sort([](const int& nA, const int& nB) { return nA - nB; });

    EXPECT_EQ((std::vector<int>{1, 20, 300, 4000}), Elements(oArray));
}

TEST(CTOVSorterTest, SortsStrings)
{
    CTOVArray<CTOVStringA> oArray;
    for (const char* szText : {"pear", "apple", "quince", "fig"})
        oArray.Add(szText);

    oArray.Sort([](const CTOVStringA& oA, const CTOVStringA& oB) {
        return std::string(oA.GetString()).compare(oB.GetString());
    });

    EXPECT_STREQ("apple", oArray[0].GetString());
    EXPECT_STREQ("fig", oArray[1].GetString());
    EXPECT_STREQ("pear", oArray[2].GetString());
    EXPECT_STREQ("quince", oArray[3].GetString());
}

TEST(CTOVSorterTest, ComparesAndWritesInTheStepsOfTheHeapSort)
{
    // "2?3" is a comparison, "0=3" a SetAt; a swap writes its second element first.
    const struct
    {
        std::vector<int> aElements;
        const char* szCalls;
    } aCases[] = {
        {{}, ""},
        {{7}, "swap0,0 0=7 0=7 0=7 "},
        {{1, 2}, "1?2 0=2 1=1 swap0,1 1=2 0=1 0=1 "},
        {{2, 1}, "2?1 0=2 swap0,1 1=2 0=1 0=1 "},
        {{1, 2, 3}, "2?3 1?3 0=3 2=1 swap0,2 2=3 0=1 1?2 0=2 1=1 swap0,1 1=2 0=1 0=1 "},
        {{3, 2, 1}, "2?1 3?2 0=3 swap0,2 2=3 0=1 1?2 0=2 1=1 swap0,1 1=2 0=1 0=1 "},
        {{1, 2, 3, 4},
         "2?4 1=4 3=2 4?3 1?4 0=4 1?2 1=2 3=1 "
         "swap0,3 3=4 0=1 2?3 1?3 0=3 2=1 "
         "swap0,2 2=3 0=1 1?2 0=2 1=1 "
         "swap0,1 1=2 0=1 0=1 "},
    };

    for (const auto& oCase : aCases)
        EXPECT_EQ(oCase.szCalls, CWatchedArray(oCase.aElements).CallsOfSort());
}

TEST(CTOVSorterTest, EqualKeysKeepMovingDown)
{
    EXPECT_EQ("ab", SortedNames("1a1b"));
    EXPECT_EQ("cab", SortedNames("1a1b1c"));
    EXPECT_EQ("xcab", SortedNames("1a1b1c0x"));
}

TEST(CTOVSorterTest, SortsADerivedArrayAsItShowsItself)
{
    CReversedArray oArray;
    for (const int nElement : {2, 4, 1, 3})
        oArray.Add(nElement);

    oArray.Sort(&CompareInts);

    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), Elements(oArray));
    EXPECT_EQ(4, oArray.GetStored(0));
    EXPECT_EQ(1, oArray.GetStored(3));
}

TEST(CTOVSorterTest, NeedsNoMoreMemoryForMoreElements)
{
    tIntArray oArray;
    oArray.Resize(2000);
    CAllocationCounter oCounter;
    oArray.Sort(&CompareInts);
    const unsigned long ulTaken = oCounter.Taken();
    const long lKept = oCounter.Kept();

    // The sorter and the control block of its pointer.
    EXPECT_LE(ulTaken, 2u);
    EXPECT_EQ(0, lKept);
}

TEST(CTOVSorterTest, FailedComparisonGoesThrough)
{
    tIntArray oArray = MakeArray({3, 1, 2});
    CAllocationCounter oCounter;
    EXPECT_THROW(oArray.Sort([](const int&, const int&) -> int { throw std::runtime_error("refused"); }),
                 std::runtime_error);

    EXPECT_EQ(0, oCounter.Kept());
    EXPECT_EQ(3, oArray.GetSize());
}

TEST(CTOVSorterTest, HeapSortIsASorterOfAnArrayThatItDoesNotOwn)
{
    tIntArray oArray = MakeArray({3, 1, 2});
    {
        tIntArray::CHeapSort<tIntOrder> oHeapSort(&oArray);
        ISorter<tIntOrder>& oSorter = oHeapSort;
        oSorter.Sort(&CompareInts);
    }

    EXPECT_EQ((std::vector<int>{1, 2, 3}), Elements(oArray));
}

TEST(CTOVSorterTest, NeedsNoDestructor)
{
    EXPECT_FALSE(std::has_virtual_destructor_v<ISorter<tIntOrder>>);
    EXPECT_TRUE(std::is_trivially_destructible_v<tIntArray::CHeapSort<tIntOrder>>);
    EXPECT_EQ(sizeof(void*), sizeof(ISorter<tIntOrder>));
    EXPECT_EQ(2 * sizeof(void*), sizeof(tIntArray::CHeapSort<tIntOrder>));
}
