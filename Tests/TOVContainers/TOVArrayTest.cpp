#include "Support/TOVAllocationCounter.h"
#include "Support/TOVTestSupport.h"

#include <TOVContainers/TOVArray.h>
#include <TOVString/TOVStringA.h>

#include <initializer_list>
#include <limits>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{
const char INDEX_CHECK[] = "(0 <= lIndex) && (lIndex < GetSize())";
const char FIRST_INDEX_CHECK[] = "(0 <= lIndex1) && (lIndex1 < GetSize())";
const char SECOND_INDEX_CHECK[] = "(0 <= lIndex2) && (lIndex2 < GetSize())";

typedef CTOVArray<int> tIntArray;
typedef std::vector<int> tInts;

tIntArray MakeArray(std::initializer_list<int> aElements)
{
    tIntArray oArray;
    for (const int nElement : aElements)
        oArray.Add(nElement);
    return oArray;
}

tInts Elements(const tIntArray& oArray)
{
    tInts aElements;
    for (long lIndex = 0; lIndex < oArray.GetSize(); ++lIndex)
        aElements.push_back(oArray.GetAt(lIndex));
    return aElements;
}

// The capacities that the array gets by the action, one after the other.
template<class TAction> std::vector<std::size_t> Capacities(tIntArray& oArray, int nTimes, TAction fnAction)
{
    std::vector<std::size_t> aCapacities;
    aCapacities.reserve(100);
    for (int nTime = 0; nTime < nTimes; ++nTime)
    {
        const CAllocationCounter oCounter;
        fnAction(oArray);
        if (oCounter.Taken() != 0)
            aCapacities.push_back(oCounter.Taken() == 1 ? oCounter.LastSize() / sizeof(int) : 0);
    }
    return aCapacities;
}

template<class TAction> std::size_t NewCapacity(tIntArray& oArray, TAction fnAction)
{
    const std::vector<std::size_t> aCapacities = Capacities(oArray, 1, fnAction);
    return aCapacities.empty() ? 0 : aCapacities[0];
}

// Counts its copies and can refuse to be copied.
struct sCopied
{
    sCopied(int nSetValue = 0) : nValue(nSetValue) {}
    sCopied(const sCopied& oOther) : nValue(oOther.nValue)
    {
        if (s_bRefuses)
            throw std::runtime_error("refused");
        ++s_nCopies;
    }
    sCopied& operator=(const sCopied& oOther)
    {
        nValue = oOther.nValue;
        ++s_nAssignments;
        return *this;
    }

    int nValue;
    static inline int s_nCopies = 0;
    static inline int s_nAssignments = 0;
    static inline bool s_bRefuses = false;
};

// Notes the virtual operations as they are called.
class CNotingArray : public tIntArray
{
public:
    bool SetAt(long lIndex, const int& nElement) override
    {
        m_oCalls << "SetAt " << lIndex << '=' << nElement << '\n';
        return tIntArray::SetAt(lIndex, nElement);
    }
    void Resize(long lNumElements) override
    {
        m_oCalls << "Resize " << lNumElements << '\n';
        tIntArray::Resize(lNumElements);
    }
    const int& GetAt(long lIndex) const override
    {
        m_oCalls << "GetAt " << lIndex << '\n';
        return tIntArray::GetAt(lIndex);
    }
    int& ElementAt(long lIndex) override
    {
        m_oCalls << "ElementAt " << lIndex << '\n';
        return tIntArray::ElementAt(lIndex);
    }

    std::string Calls() const { return m_oCalls.str(); }

private:
    mutable std::ostringstream m_oCalls;
};

// Tells another size than it has.
class CSizedArray : public tIntArray
{
public:
    explicit CSizedArray(long lShown) : m_lShown(lShown) {}

    long GetSize() const override { return m_lShown; }

private:
    const long m_lShown;
};

class CCountedArray : public tIntArray
{
public:
    long GetCount() const override { return 0; }
};
} // namespace

TEST(CTOVArrayTest, IsEmptyByDefault)
{
    const tIntArray oArray;

    EXPECT_EQ(0, oArray.GetSize());
    EXPECT_EQ(0, oArray.GetCount());
    EXPECT_TRUE(oArray.IsEmpty());
}

TEST(CTOVArrayTest, CopiesEmptyArrays)
{
    const tIntArray oArray;
    tIntArray oArray3;

    EXPECT_NO_CHECK({ tIntArray oArray2; });
    EXPECT_NO_CHECK({ tIntArray oArray2(oArray); });
    EXPECT_NO_CHECK(oArray3 = oArray);
    EXPECT_TRUE(oArray3.IsEmpty());
}

TEST(CTOVArrayTest, EmptyArrayRefusesEveryIndex)
{
    tIntArray oArray;
    const tIntArray& oConst = oArray;

    EXPECT_CHECK_AT("TOVContainers/TOVArray", INDEX_CHECK, oArray[0]);
    EXPECT_CHECK_AT("TOVContainers/TOVArray", INDEX_CHECK, oConst[0]);
    EXPECT_CHECK_AT("TOVContainers/TOVArray", INDEX_CHECK, oArray.GetAt(0));
    EXPECT_CHECK_AT("TOVContainers/TOVArray", INDEX_CHECK, oArray.ElementAt(0));
    EXPECT_CHECK_AT("TOVContainers/TOVArray", INDEX_CHECK, oArray.SetAt(0, 100));
    EXPECT_CHECK_AT("TOVContainers/TOVArray", INDEX_CHECK, oArray.RemoveAt(10));
    EXPECT_CHECK_AT("TOVContainers/TOVArray", FIRST_INDEX_CHECK, oArray.Swap(0, 1));
    EXPECT_ANY_THROW(oArray.InsertAt(10, 100));
    EXPECT_TRUE(oArray.IsEmpty());
}

TEST(CTOVArrayTest, RefusesIndicesOutOfRange)
{
    tIntArray oArray = MakeArray({100, 200});
    const tIntArray& oConst = oArray;

    for (const long lIndex : {-1L, 2L, std::numeric_limits<long>::max(), std::numeric_limits<long>::min()})
    {
        EXPECT_CHECK(INDEX_CHECK, oArray[lIndex]);
        EXPECT_CHECK(INDEX_CHECK, oConst[lIndex]);
        EXPECT_CHECK(INDEX_CHECK, oArray.GetAt(lIndex));
        EXPECT_CHECK(INDEX_CHECK, oArray.ElementAt(lIndex));
        EXPECT_CHECK(INDEX_CHECK, oArray.SetAt(lIndex, 1));
        EXPECT_CHECK(INDEX_CHECK, oArray.RemoveAt(lIndex));
    }
    EXPECT_EQ((tInts{100, 200}), Elements(oArray));
}

TEST(CTOVArrayTest, SwapRefusesIndicesOutOfRangeInTheirOrder)
{
    tIntArray oArray = MakeArray({100, 200});

    EXPECT_CHECK_AT("TOVContainers/TOVArray", FIRST_INDEX_CHECK, oArray.Swap(2, 0));
    EXPECT_CHECK(FIRST_INDEX_CHECK, oArray.Swap(-1, 2));
    EXPECT_CHECK_AT("TOVContainers/TOVArray", SECOND_INDEX_CHECK, oArray.Swap(0, 2));
    EXPECT_CHECK(SECOND_INDEX_CHECK, oArray.Swap(1, -1));
    EXPECT_EQ((tInts{100, 200}), Elements(oArray));
}

TEST(CTOVArrayTest, InsertAtRefusesAPlaceOutOfRange)
{
    tIntArray oArray = MakeArray({100, 200});

    EXPECT_ANY_THROW(oArray.InsertAt(3, 1));
    EXPECT_ANY_THROW(oArray.InsertAt(-1, 1));
    EXPECT_EQ((tInts{100, 200}), Elements(oArray));
}

TEST(CTOVArrayTest, AddGivesTheIndexOfTheNewElement)
{
    tIntArray oArray;

    EXPECT_EQ(0, oArray.Add(400));
    EXPECT_EQ(1, oArray.Add(300));
    EXPECT_EQ((tInts{400, 300}), Elements(oArray));
    EXPECT_FALSE(oArray.IsEmpty());
    EXPECT_EQ(2, oArray.GetCount());
}

TEST(CTOVArrayTest, InsertAtInsertsBeforeAnElementOrAtTheEnd)
{
    tIntArray oArray = MakeArray({100, 200, 300, 400});

    for (const long lIndex : {4, 3, 2, 1, 0})
        EXPECT_TRUE(oArray.InsertAt(lIndex, 1));

    EXPECT_EQ((tInts{1, 100, 1, 200, 1, 300, 1, 400, 1}), Elements(oArray));
}

TEST(CTOVArrayTest, SetAtAssigns)
{
    tIntArray oArray = MakeArray({100, 200});

    EXPECT_TRUE(oArray.SetAt(1, 7));
    oArray.ElementAt(0) = 8;

    EXPECT_EQ((tInts{8, 7}), Elements(oArray));
}

TEST(CTOVArrayTest, IndexReadsAndWrites)
{
    tIntArray oArray = MakeArray({100, 200});
    const tIntArray& oConst = oArray;

    oArray[1] = 7;

    EXPECT_EQ(7, oConst[1]);
    EXPECT_EQ(&oConst[1], &oArray[1]);
    EXPECT_EQ(&oConst.GetAt(1), &oArray.ElementAt(1));
}

TEST(CTOVArrayTest, RemoveAtMovesLaterElementsDown)
{
    tIntArray oArray = MakeArray({100, 200, 300, 400});

    oArray.RemoveAt(1);
    EXPECT_EQ((tInts{100, 300, 400}), Elements(oArray));

    oArray.RemoveAt(2);
    oArray.RemoveAt(0);
    EXPECT_EQ((tInts{300}), Elements(oArray));
}

TEST(CTOVArrayTest, RemoveAllKeepsTheStorage)
{
    tIntArray oArray = MakeArray({100, 200, 300});
    oArray.RemoveAll();
    EXPECT_TRUE(oArray.IsEmpty());

    const std::vector<std::size_t> aCapacities = Capacities(oArray, 3, [](tIntArray& o) { o.Add(1); });

    EXPECT_TRUE(aCapacities.empty());
}

TEST(CTOVArrayTest, ResizeCutsTheTailOff)
{
    tIntArray oArray = MakeArray({100, 200, 300});

    oArray.Resize(2);
    EXPECT_EQ((tInts{100, 200}), Elements(oArray));

    oArray.Resize(0);
    EXPECT_TRUE(oArray.IsEmpty());
}

TEST(CTOVArrayTest, ResizeAddsZeros)
{
    tIntArray oArray = MakeArray({100, 200, 300});
    oArray.Resize(1);

    oArray.Resize(4);

    EXPECT_EQ((tInts{100, 0, 0, 0}), Elements(oArray));
}

TEST(CTOVArrayTest, ResizeAddsDefaultConstructedElements)
{
    CTOVArray<CTOVStringA> oArray;
    oArray.Add("first");

    oArray.Resize(3);

    EXPECT_STREQ("first", oArray[0].GetString());
    EXPECT_EQ(NULL, oArray[1].GetString());
    EXPECT_EQ(NULL, oArray[2].GetString());
}

TEST(CTOVArrayTest, ResizeToTheSameSizeDoesNothing)
{
    tIntArray oArray = MakeArray({100, 200});
    const int* pFirst = &oArray[0];

    oArray.Resize(2);

    EXPECT_EQ(pFirst, &oArray[0]);
    EXPECT_EQ((tInts{100, 200}), Elements(oArray));
}

TEST(CTOVArrayTest, RefusesMoreThanTheLargestSize)
{
    tIntArray oArray = MakeArray({100, 200});
    for (const long lSize : {std::numeric_limits<long>::max(), 0x7FFFFFFFL, 0x20000000L, -1L})
    {
        try
        {
            oArray.Resize(lSize);
            ADD_FAILURE() << "no std::length_error for " << lSize;
        }
        catch (const std::length_error& oError)
        {
            EXPECT_STREQ("vector<T> too long", oError.what());
        }
    }
    EXPECT_EQ((tInts{100, 200}), Elements(oArray));
}

TEST(CTOVArrayTest, GrowsByOneHalf)
{
    tIntArray oArray;

    const std::vector<std::size_t> aCapacities = Capacities(oArray, 43, [](tIntArray& o) { o.Add(1); });

    EXPECT_EQ((std::vector<std::size_t>{1, 2, 3, 4, 6, 9, 13, 19, 28, 42, 63}), aCapacities);
}

TEST(CTOVArrayTest, MovesItsElementsOnlyWhenItGrows)
{
    tIntArray oArray = MakeArray({0});
    std::vector<long> aSizesOfMoves;
    for (const int* pFirst = &oArray[0]; oArray.GetSize() < 42; pFirst = &oArray[0])
    {
        oArray.Add(1);
        if (pFirst != &oArray[0])
            aSizesOfMoves.push_back(oArray.GetSize());
    }

    // One element more than fits in 1, 2, 3, 4, 6, 9, 13, 19 and 28.
    EXPECT_EQ((std::vector<long>{2, 3, 4, 5, 7, 10, 14, 20, 29}), aSizesOfMoves);
}

TEST(CTOVArrayTest, EveryInsertionGrowsByOneHalfOrToWhatIsNeeded)
{
    const tIntArray oTwo = MakeArray({1, 2});
    const tIntArray oThree = MakeArray({1, 2, 3});
    const auto Full = [] { return MakeArray({1, 2, 3, 4}); };
    tIntArray aArrays[] = {Full(), Full(), Full(), Full(), Full(), Full()};

    EXPECT_EQ(6u, NewCapacity(aArrays[0], [](tIntArray& o) { o.InsertAt(0, 1); }));
    EXPECT_EQ(6u, NewCapacity(aArrays[1], [](tIntArray& o) { o.Resize(5); }));
    EXPECT_EQ(7u, NewCapacity(aArrays[2], [](tIntArray& o) { o.Resize(7); }));
    EXPECT_EQ(6u, NewCapacity(aArrays[3], [&oTwo](tIntArray& o) { o.Append(oTwo); }));
    EXPECT_EQ(7u, NewCapacity(aArrays[4], [&oThree](tIntArray& o) { o.Append(oThree); }));
    EXPECT_EQ(6u, NewCapacity(aArrays[5], [&oThree](tIntArray& o) { o.Append(oThree, 2); }));
}

TEST(CTOVArrayTest, CapacityNeverShrinks)
{
    tIntArray oArray = MakeArray({1, 2, 3, 4, 5});
    oArray.Resize(1);
    oArray.RemoveAt(0);

    EXPECT_EQ(0u, NewCapacity(oArray, [](tIntArray& o) { o.Resize(6); }));
    EXPECT_EQ(9u, NewCapacity(oArray, [](tIntArray& o) { o.Add(1); }));
}

TEST(CTOVArrayTest, CopyTakesWhatIsNeeded)
{
    const tIntArray oSource = MakeArray({1, 2, 3, 4, 5});
    CAllocationCounter oCounter;
    const tIntArray oCopy(oSource);
    const unsigned long ulTaken = oCounter.Taken();
    const std::size_t nSize = oCounter.LastSize();

    EXPECT_EQ(1u, ulTaken);
    EXPECT_EQ(5 * sizeof(int), nSize);
    EXPECT_EQ(Elements(oSource), Elements(oCopy));
}

TEST(CTOVArrayTest, AssignmentGrowsByTheSameRule)
{
    const tIntArray oFive = MakeArray({1, 2, 3, 4, 5});
    const tIntArray oSeven = MakeArray({1, 2, 3, 4, 5, 6, 7});
    tIntArray oFirst = MakeArray({1, 2, 3, 4});
    tIntArray oSecond = MakeArray({1, 2, 3, 4});

    EXPECT_EQ(6u, NewCapacity(oFirst, [&oFive](tIntArray& o) { o = oFive; }));
    EXPECT_EQ(7u, NewCapacity(oSecond, [&oSeven](tIntArray& o) { o = oSeven; }));
    EXPECT_EQ(0u, NewCapacity(oSecond, [&oFive](tIntArray& o) { o = oFive; }));
    EXPECT_EQ(Elements(oFive), Elements(oFirst));
    EXPECT_EQ(Elements(oFive), Elements(oSecond));
}

TEST(CTOVArrayTest, AssignmentCopiesDeeply)
{
    tIntArray oArray = MakeArray({400, 300});
    tIntArray oArray2 = MakeArray({1, 2, 3});

    tIntArray& oResult = (oArray2 = oArray);
    oArray[0] = 1;
    oArray2.Swap(0, 1);

    EXPECT_EQ(&oArray2, &oResult);
    EXPECT_EQ((tInts{1, 300}), Elements(oArray));
    EXPECT_EQ((tInts{300, 400}), Elements(oArray2));
}

TEST(CTOVArrayTest, CopyIsDeep)
{
    tIntArray oArray = MakeArray({400, 300});
    tIntArray oCopy(oArray);

    oCopy[0] = 1;
    oArray.RemoveAt(1);

    EXPECT_EQ((tInts{400}), Elements(oArray));
    EXPECT_EQ((tInts{1, 300}), Elements(oCopy));
}

TEST(CTOVArrayTest, AssignmentToItselfChangesNothing)
{
    tIntArray oArray = MakeArray({400, 300});

    oArray = std::as_const(oArray);

    EXPECT_EQ((tInts{400, 300}), Elements(oArray));
}

TEST(CTOVArrayTest, AppendOfPlainElementsMakesTwiceAsMany)
{
    const int anElements[] = {7, 8};
    tIntArray oArray;

    EXPECT_TRUE(oArray.Append(anElements, 2));

    EXPECT_EQ((tInts{0, 0, 7, 8}), Elements(oArray));
}

TEST(CTOVArrayTest, AppendOfPlainElementsPadsAShorterArray)
{
    const int anElements[] = {7, 8, 9};
    tIntArray oArray = MakeArray({100});

    EXPECT_TRUE(oArray.Append(anElements, 3));

    EXPECT_EQ((tInts{100, 0, 0, 7, 8, 9}), Elements(oArray));
}

TEST(CTOVArrayTest, AppendOfPlainElementsCutsALongerArray)
{
    const int anElements[] = {7, 8};
    tIntArray oArray = MakeArray({100, 200, 300, 400, 500});

    EXPECT_TRUE(oArray.Append(anElements, 2));

    EXPECT_EQ((tInts{100, 200, 7, 8}), Elements(oArray));
}

TEST(CTOVArrayTest, AppendOfNoPlainElementsEmptiesTheArray)
{
    const int nElement = 7;
    tIntArray oArray = MakeArray({100, 200});

    EXPECT_TRUE(oArray.Append(&nElement, 0));

    EXPECT_TRUE(oArray.IsEmpty());
}

TEST(CTOVArrayTest, AppendOfPlainElementsAddsThemOneByOne)
{
    const int anElements[] = {1, 2, 3, 4};
    tIntArray oArray;
    oArray.Append(anElements, 4);

    // Room for 4 by Resize, then for 6 and 9.
    EXPECT_EQ((std::vector<std::size_t>{13}), Capacities(oArray, 2, [](tIntArray& o) { o.Add(1); }));
}

TEST(CTOVArrayTest, AppendOfPlainElementsResizesByTheVirtualOperation)
{
    const int anElements[] = {1, 2};
    CNotingArray oArray;
    static_cast<tIntArray&>(oArray).Append(anElements, 2);

    EXPECT_EQ("Resize 2\n", oArray.Calls());
}

TEST(CTOVArrayTest, AppendOfPlainElementsRefusesNoElementsAndNegativeNumbers)
{
    const int nElement = 7;
    tIntArray oArray = MakeArray({100});

    EXPECT_CHECK_AT("TOVContainers/TOVArray", "pElements != NULL", oArray.Append(NULL, 1));
    EXPECT_CHECK("pElements != NULL", oArray.Append(NULL, 0));
    EXPECT_CHECK("pElements != NULL", oArray.Append(NULL, -1));
    EXPECT_CHECK_AT("TOVContainers/TOVArray", "lNumElements >= 0", oArray.Append(&nElement, -1));
    EXPECT_EQ((tInts{100}), Elements(oArray));
}

TEST(CTOVArrayTest, AppendAddsAnArray)
{
    tIntArray oArray = MakeArray({100, 200});
    const tIntArray oArray2 = MakeArray({400, 300});

    oArray.Append(oArray2);

    EXPECT_EQ((tInts{100, 200, 400, 300}), Elements(oArray));
}

TEST(CTOVArrayTest, AppendAddsAPartOfAnArray)
{
    const tIntArray oArray2 = MakeArray({400, 300, 500});
    const struct
    {
        long lStart;
        long lCount;
        tInts aExpected;
    } aCases[] = {{1, 1, {100, 300}}, {0, 2, {100, 400, 300}}, {1, -1, {100, 300, 500}},    {2, 0, {100}},
                  {3, -1, {100}},     {3, 0, {100}},           {0, 3, {100, 400, 300, 500}}};

    for (const auto& oCase : aCases)
    {
        tIntArray oArray = MakeArray({100});
        oArray.Append(oArray2, oCase.lStart, oCase.lCount);
        EXPECT_EQ(oCase.aExpected, Elements(oArray)) << oCase.lStart << ' ' << oCase.lCount;
    }
}

TEST(CTOVArrayTest, AppendStartsWithTheArrayThatIsToGrow)
{
    tIntArray oArray = MakeArray({100, 200, 400, 300});
    const tIntArray oArray2 = MakeArray({400, 300});

    oArray.Resize(2);
    oArray.Append(oArray2, 1, 1);

    EXPECT_EQ((tInts{100, 200, 300}), Elements(oArray));
}

TEST(CTOVArrayTest, AppendAddsItself)
{
    tIntArray oArray = MakeArray({1, 2, 3});

    oArray.Append(oArray);
    oArray.Append(oArray, 4, 2);

    EXPECT_EQ((tInts{1, 2, 3, 1, 2, 3, 2, 3}), Elements(oArray));
}

TEST(CTOVArrayTest, AppendOfWhatIsNotThereReadsNothing)
{
    const tIntArray oArray2 = MakeArray({400, 300});
    const long lMax = std::numeric_limits<long>::max();
    tIntArray oArray = MakeArray({100});

    for (const auto& [lStart, lCount] :
         {std::pair<long, long>{3, -1}, {-1, 1}, {-1, -1}, {0, 3}, {2, 1}, {1, lMax}, {lMax, 1}, {0, -2}})
        EXPECT_THROW(oArray.Append(oArray2, lStart, lCount), std::out_of_range) << lStart << ' ' << lCount;

    EXPECT_EQ((tInts{100}), Elements(oArray));
}

TEST(CTOVArrayTest, TakesItsOwnElementsAsArguments)
{
    tIntArray oArray = MakeArray({1, 2, 3, 4});

    oArray.Add(oArray[0]);
    oArray.InsertAt(0, oArray[3]);
    oArray.InsertAt(0, oArray[2]);
    oArray.SetAt(1, oArray[1]);

    EXPECT_EQ((tInts{2, 4, 1, 2, 3, 4, 1}), Elements(oArray));
}

TEST(CTOVArrayTest, TakesItsOwnStringsAsArguments)
{
    CTOVArray<CTOVStringA> oArray;
    oArray.Add("first");

    for (int nIndex = 0; nIndex < 5; ++nIndex)
        oArray.InsertAt(0, oArray[oArray.GetSize() - 1]);

    for (long lIndex = 0; lIndex < 6; ++lIndex)
        EXPECT_STREQ("first", oArray[lIndex].GetString()) << lIndex;
}

TEST(CTOVArrayTest, SwapSwapsTwoElements)
{
    tIntArray oArray = MakeArray({400, 300, 200});

    oArray.Swap(0, 2);
    oArray.Swap(1, 1);

    EXPECT_EQ((tInts{200, 300, 400}), Elements(oArray));
}

TEST(CTOVArrayTest, SwapWritesTheSecondElementFirst)
{
    CNotingArray oArray;
    oArray.Add(10);
    oArray.Add(20);

    oArray.Swap(0, 1);

    const std::string sCalls = oArray.Calls();
    EXPECT_NE(std::string::npos, sCalls.find("GetAt 0\nSetAt 1=10\nSetAt 0=20\n")) << sCalls;
    EXPECT_EQ((tInts{20, 10}), Elements(oArray));
}

TEST(CTOVArrayTest, IndexGoesThroughGetAtAndElementAt)
{
    CNotingArray oArray;
    oArray.Add(10);
    const tIntArray& oConst = oArray;
    tIntArray& oBase = oArray;

    EXPECT_EQ(10, oConst[0]);
    EXPECT_EQ("GetAt 0\n", oArray.Calls());
    EXPECT_EQ(10, oBase[0]);
    EXPECT_EQ("GetAt 0\nElementAt 0\n", oArray.Calls());
}

TEST(CTOVArrayTest, CountGoesThroughSize)
{
    const CSizedArray oArray(7);

    EXPECT_EQ(7, oArray.GetCount());
    EXPECT_FALSE(oArray.IsEmpty());
}

TEST(CTOVArrayTest, EmptinessGoesThroughCount)
{
    CCountedArray oArray;
    oArray.Add(1);

    EXPECT_TRUE(oArray.IsEmpty());
    EXPECT_EQ(1, oArray.GetSize());
}

TEST(CTOVArrayTest, ChecksAskForTheSize)
{
    CSizedArray oArray(1);
    oArray.Add(10);
    oArray.Add(20);

    EXPECT_NO_CHECK(oArray.GetAt(0));
    EXPECT_CHECK(INDEX_CHECK, oArray.GetAt(1));
    EXPECT_CHECK(INDEX_CHECK, oArray.ElementAt(1));
    EXPECT_CHECK(INDEX_CHECK, oArray.SetAt(1, 1));
    EXPECT_CHECK(INDEX_CHECK, oArray.RemoveAt(1));
    EXPECT_CHECK(FIRST_INDEX_CHECK, oArray.Swap(1, 0));
    EXPECT_CHECK(SECOND_INDEX_CHECK, oArray.Swap(0, 1));
}

TEST(CTOVArrayTest, CopiesElementsByTheirOwnCopyAndAssignment)
{
    CTOVArray<sCopied> oArray;
    const sCopied oElement(7);
    oArray.Resize(4);
    oArray.RemoveAll();
    sCopied::s_nCopies = 0;
    sCopied::s_nAssignments = 0;

    oArray.Add(oElement);
    EXPECT_EQ(1, sCopied::s_nCopies);
    EXPECT_EQ(0, sCopied::s_nAssignments);

    oArray.SetAt(0, oElement);
    EXPECT_EQ(1, sCopied::s_nCopies);
    EXPECT_EQ(1, sCopied::s_nAssignments);
}

TEST(CTOVArrayTest, AccessCopiesAndAllocatesNothing)
{
    CTOVArray<sCopied> oArray;
    oArray.Resize(2);
    sCopied::s_nCopies = 0;
    CAllocationCounter oCounter;
    const int nSum = oArray[0].nValue + oArray.GetAt(1).nValue + oArray.ElementAt(0).nValue;
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(0, nSum);
    EXPECT_EQ(0, sCopied::s_nCopies);
    EXPECT_EQ(0u, ulTaken);
}

TEST(CTOVArrayTest, FailedCopyLeavesTheArrayAsItWas)
{
    CTOVArray<sCopied> oArray;
    oArray.Add(sCopied(1));
    oArray.Add(sCopied(2));
    const CTOVArray<sCopied> oOther(oArray);
    sCopied::s_bRefuses = true;

    EXPECT_THROW(oArray.Add(sCopied(3)), std::runtime_error);
    EXPECT_THROW(oArray.InsertAt(0, sCopied(3)), std::runtime_error);
    EXPECT_THROW(oArray.Append(oOther), std::runtime_error);

    sCopied::s_bRefuses = false;
    ASSERT_EQ(2, oArray.GetSize());
    EXPECT_EQ(1, oArray[0].nValue);
    EXPECT_EQ(2, oArray[1].nValue);
}

TEST(CTOVArrayTest, FailedCopyOfAnArrayLeavesItsTargetUsable)
{
    CTOVArray<sCopied> oSource;
    oSource.Resize(5);
    CTOVArray<sCopied> oTarget;
    oTarget.Resize(2);
    sCopied::s_bRefuses = true;

    EXPECT_THROW(oTarget = oSource, std::runtime_error);
    EXPECT_THROW(CTOVArray<sCopied> oCopy(oSource), std::runtime_error);

    sCopied::s_bRefuses = false;
    const long lSize = oTarget.GetSize();
    EXPECT_EQ(lSize, oTarget.Add(sCopied(7)));
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVArrayTest, ExhaustedMemoryLeavesTheArrayAsItWas)
{
    tIntArray oArray = MakeArray({1, 2, 3, 4});
    bool bThrew = false;
    try
    {
        const CAllocationFailure oFailure;
        oArray.Add(5);
    }
    catch (const std::bad_alloc&)
    {
        bThrew = true;
    }

    EXPECT_TRUE(bThrew);
    EXPECT_EQ((tInts{1, 2, 3, 4}), Elements(oArray));
}
#endif

TEST(CTOVArrayTest, EndsThroughItsBaseAndFreesEverything)
{
    CAllocationCounter oCounter;
    tIntArray* pArray = new CSizedArray(0);
    pArray->Add(1);
    delete pArray;

    EXPECT_EQ(0, oCounter.Kept());
}

TEST(CTOVArrayTest, HoldsItsVectorAlone)
{
    struct sLayout
    {
        void* pVirtualTable;
        std::vector<int> aArray;
    };

    EXPECT_EQ(sizeof(sLayout), sizeof(tIntArray));
    EXPECT_TRUE(std::has_virtual_destructor_v<tIntArray>);
}
