// What arrays take from the heap, how they grow, and how often they copy their elements.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVRefusal.h"
#include "TOVContainers/TOVArrayInstruments.h"
#include "TOVContainers/TOVCounted.h"

#include <vector>

TEST(CTOVArrayMemoryTest, GrowsByOneHalf)
{
    tIntArray oArray;

    const std::vector<std::size_t> aCapacities = Capacities(oArray, 43, [](tIntArray& o) { o.Add(1); });

    EXPECT_EQ((std::vector<std::size_t>{1, 2, 3, 4, 6, 9, 13, 19, 28, 42, 63}), aCapacities);
}

TEST(CTOVArrayMemoryTest, MovesItsElementsOnlyWhenItGrows)
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

TEST(CTOVArrayMemoryTest, EveryInsertionGrowsByOneHalfOrToWhatIsNeeded)
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

TEST(CTOVArrayMemoryTest, CapacityNeverShrinks)
{
    tIntArray oArray = MakeArray({1, 2, 3, 4, 5});
    oArray.Resize(1);
    oArray.RemoveAt(0);

    EXPECT_EQ(0u, NewCapacity(oArray, [](tIntArray& o) { o.Resize(6); }));
    EXPECT_EQ(9u, NewCapacity(oArray, [](tIntArray& o) { o.Add(1); }));
}

TEST(CTOVArrayMemoryTest, CopyTakesWhatIsNeeded)
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

TEST(CTOVArrayMemoryTest, AssignmentGrowsByTheSameRule)
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

TEST(CTOVArrayMemoryTest, CopiesElementsByTheirOwnCopyAndAssignment)
{
    CTOVArray<sCounted> oArray;
    const sCounted oElement(7);
    oArray.Resize(4);
    oArray.RemoveAll();
    sCounted::Reset();

    oArray.Add(oElement);
    EXPECT_EQ(1, sCounted::s_nCopies);
    EXPECT_EQ(0, sCounted::s_nAssignments);

    oArray.SetAt(0, oElement);
    EXPECT_EQ(1, sCounted::s_nCopies);
    EXPECT_EQ(1, sCounted::s_nAssignments);
}

TEST(CTOVArrayMemoryTest, AccessCopiesAndAllocatesNothing)
{
    CTOVArray<sCounted> oArray;
    oArray.Resize(2);
    sCounted::Reset();
    CAllocationCounter oCounter;
    const int nSum = oArray[0].nValue + oArray.GetAt(1).nValue + oArray.ElementAt(0).nValue;
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(0, nSum);
    EXPECT_EQ(0, sCounted::s_nCopies);
    EXPECT_EQ(0u, ulTaken);
}

TEST(CTOVArrayMemoryTest, FailedCopyLeavesTheArrayAsItWas)
{
    CTOVArray<sCounted> oArray;
    oArray.Add(sCounted(1));
    oArray.Add(sCounted(2));
    const CTOVArray<sCounted> oOther(oArray);
    sCounted::s_bRefusesCopies = true;

    EXPECT_THROW(oArray.Add(sCounted(3)), std::runtime_error);
    EXPECT_THROW(oArray.InsertAt(0, sCounted(3)), std::runtime_error);
    EXPECT_THROW(oArray.Append(oOther), std::runtime_error);

    sCounted::s_bRefusesCopies = false;
    ASSERT_EQ(2, oArray.GetSize());
    EXPECT_EQ(1, oArray[0].nValue);
    EXPECT_EQ(2, oArray[1].nValue);
}

TEST(CTOVArrayMemoryTest, FailedCopyOfAnArrayLeavesItsTargetUsable)
{
    CTOVArray<sCounted> oSource;
    oSource.Resize(5);
    CTOVArray<sCounted> oTarget;
    oTarget.Resize(2);
    sCounted::s_bRefusesCopies = true;

    EXPECT_THROW(oTarget = oSource, std::runtime_error);
    EXPECT_THROW(CTOVArray<sCounted> oCopy(oSource), std::runtime_error);

    sCounted::s_bRefusesCopies = false;
    const long lSize = oTarget.GetSize();
    EXPECT_EQ(lSize, oTarget.Add(sCounted(7)));
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVArrayMemoryTest, ExhaustedMemoryLeavesTheArrayAsItWas)
{
    tIntArray oArray = MakeArray({1, 2, 3, 4});
    EXPECT_TRUE(RunsOutOfMemory([&] { oArray.Add(5); }));
    EXPECT_EQ((tInts{1, 2, 3, 4}), Elements(oArray));
}
#endif

TEST(CTOVArrayMemoryTest, EndsThroughItsBaseAndFreesEverything)
{
    CAllocationCounter oCounter;
    tIntArray* pArray = new CSizedArray(0);
    pArray->Add(1);
    delete pArray;

    EXPECT_EQ(0, oCounter.Kept());
}
