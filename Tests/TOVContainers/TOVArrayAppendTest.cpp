// What is appended to arrays.
#include "TOVContainers/TOVArrayInstruments.h"

#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

TEST(CTOVArrayAppendTest, AppendOfPlainElementsMakesTwiceAsMany)
{
    const int anElements[] = {7, 8};
    tIntArray oArray;

    EXPECT_TRUE(oArray.Append(anElements, 2));

    EXPECT_EQ((tInts{0, 0, 7, 8}), Elements(oArray));
}

TEST(CTOVArrayAppendTest, AppendOfPlainElementsPadsAShorterArray)
{
    const int anElements[] = {7, 8, 9};
    tIntArray oArray = MakeArray({100});

    EXPECT_TRUE(oArray.Append(anElements, 3));

    EXPECT_EQ((tInts{100, 0, 0, 7, 8, 9}), Elements(oArray));
}

TEST(CTOVArrayAppendTest, AppendOfPlainElementsCutsALongerArray)
{
    const int anElements[] = {7, 8};
    tIntArray oArray = MakeArray({100, 200, 300, 400, 500});

    EXPECT_TRUE(oArray.Append(anElements, 2));

    EXPECT_EQ((tInts{100, 200, 7, 8}), Elements(oArray));
}

TEST(CTOVArrayAppendTest, AppendOfNoPlainElementsEmptiesTheArray)
{
    const int nElement = 7;
    tIntArray oArray = MakeArray({100, 200});

    EXPECT_TRUE(oArray.Append(&nElement, 0));

    EXPECT_TRUE(oArray.IsEmpty());
}

TEST(CTOVArrayAppendTest, AppendOfPlainElementsAddsThemOneByOne)
{
    const int anElements[] = {1, 2, 3, 4};
    tIntArray oArray;
    oArray.Append(anElements, 4);

    // Room for 4 by Resize, then for 6 and 9.
    EXPECT_EQ((std::vector<std::size_t>{13}), Capacities(oArray, 2, [](tIntArray& o) { o.Add(1); }));
}

TEST(CTOVArrayAppendTest, AppendOfPlainElementsResizesByTheVirtualOperation)
{
    const int anElements[] = {1, 2};
    CNotingArray oArray;
    static_cast<tIntArray&>(oArray).Append(anElements, 2);

    EXPECT_EQ("Resize 2\n", oArray.Calls());
}

TEST(CTOVArrayAppendTest, AppendOfPlainElementsRefusesNoElementsAndNegativeNumbers)
{
    const int nElement = 7;
    tIntArray oArray = MakeArray({100});

    EXPECT_CHECK_AT("TOVContainers/TOVArray", "pElements != NULL", oArray.Append(nullptr, 1));
    EXPECT_CHECK("pElements != NULL", oArray.Append(nullptr, 0));
    EXPECT_CHECK("pElements != NULL", oArray.Append(nullptr, -1));
    EXPECT_CHECK_AT("TOVContainers/TOVArray", "lNumElements >= 0", oArray.Append(&nElement, -1));
    EXPECT_EQ((tInts{100}), Elements(oArray));
}

TEST(CTOVArrayAppendTest, AppendAddsAnArray)
{
    tIntArray oArray = MakeArray({100, 200});
    const tIntArray oArray2 = MakeArray({400, 300});

    oArray.Append(oArray2);

    EXPECT_EQ((tInts{100, 200, 400, 300}), Elements(oArray));
}

TEST(CTOVArrayAppendTest, AppendAddsAPartOfAnArray)
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

TEST(CTOVArrayAppendTest, AppendStartsWithTheArrayThatIsToGrow)
{
    tIntArray oArray = MakeArray({100, 200, 400, 300});
    const tIntArray oArray2 = MakeArray({400, 300});

    oArray.Resize(2);
    oArray.Append(oArray2, 1, 1);

    EXPECT_EQ((tInts{100, 200, 300}), Elements(oArray));
}

TEST(CTOVArrayAppendTest, AppendAddsItself)
{
    tIntArray oArray = MakeArray({1, 2, 3});

    oArray.Append(oArray);
    oArray.Append(oArray, 4, 2);

    EXPECT_EQ((tInts{1, 2, 3, 1, 2, 3, 2, 3}), Elements(oArray));
}

TEST(CTOVArrayAppendTest, AppendOfWhatIsNotThereReadsNothing)
{
    const tIntArray oArray2 = MakeArray({400, 300});
    const long lMax = std::numeric_limits<long>::max();
    tIntArray oArray = MakeArray({100});

    for (const auto& [lStart, lCount] :
         {std::pair<long, long>{3, -1}, {-1, 1}, {-1, -1}, {0, 3}, {2, 1}, {1, lMax}, {lMax, 1}, {0, -2}})
        EXPECT_THROW(oArray.Append(oArray2, lStart, lCount), std::out_of_range) << lStart << ' ' << lCount;

    EXPECT_EQ((tInts{100}), Elements(oArray));
}
