// Elements of arrays: access, insertion, removal, size, copies; the virtual operations that arrays go through.
#include "Support/TOVLayout.h"
#include "TOVContainers/TOVArrayInstruments.h"

#include <TOVString/TOVStringA.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{
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
    EXPECT_EQ(nullptr, oArray[1].GetString());
    EXPECT_EQ(nullptr, oArray[2].GetString());
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

TEST(CTOVArrayTest, HoldsItsVectorAlone)
{
    EXPECT_EQ(SizeWithMembers<std::vector<int>>(), sizeof(tIntArray));
    EXPECT_TRUE(std::has_virtual_destructor_v<tIntArray>);
}
