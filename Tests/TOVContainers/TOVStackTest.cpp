#include "Support/TOVLayout.h"
#include "Support/TOVTestSupport.h"
#include "TOVContainers/TOVCounted.h"

#include <TOVContainers/TOVStack.h>
#include <TOVString/TOVStringA.h>

#include <deque>
#include <type_traits>
#include <utility>

namespace
{
constexpr char EMPTY_CHECK[] = "m_aStack.size() > 0";

typedef CTOVStack<int> tIntStack;

void PopTwice(tIntStack& oStack)
{
    oStack.Pop();
    oStack.Pop();
}
} // namespace

TEST(CTOVStackTest, IsEmptyByDefault)
{
    const tIntStack oStack;

    EXPECT_EQ(0, oStack.GetSize());
    EXPECT_EQ(0, oStack.GetCount());
    EXPECT_TRUE(oStack.IsEmpty());
}

TEST(CTOVStackTest, GivesTheLatestElementFirst)
{
    tIntStack oStack;
    for (const int nElement : {4, 5, 6, 7, 8})
        oStack.Push(nElement);

    EXPECT_EQ(8, oStack.GetTop());
    PopTwice(oStack);
    EXPECT_EQ(6, oStack.GetTop());
    PopTwice(oStack);
    EXPECT_EQ(4, oStack.GetTop());
    oStack.Pop();
    EXPECT_TRUE(oStack.IsEmpty());
    EXPECT_EQ(0, oStack.GetSize());
    EXPECT_EQ(0, oStack.GetCount());
}

TEST(CTOVStackTest, CountsItsElements)
{
    tIntStack oStack;
    oStack.Push(1);
    oStack.Push(1);

    EXPECT_EQ(2, oStack.GetSize());
    EXPECT_EQ(2, oStack.GetCount());
    EXPECT_FALSE(oStack.IsEmpty());
}

TEST(CTOVStackTest, EmptyStackRefusesPopAndTop)
{
    tIntStack oStack;
    oStack.Push(1);
    oStack.Pop();

    EXPECT_CHECK_AT("TOVContainers/TOVStack", EMPTY_CHECK, oStack.Pop());
    EXPECT_CHECK_AT("TOVContainers/TOVStack", EMPTY_CHECK, oStack.Pop());
    EXPECT_CHECK_AT("TOVContainers/TOVStack", EMPTY_CHECK, oStack.GetTop());
    EXPECT_EQ(0, oStack.GetSize());
}

TEST(CTOVStackTest, TopCanBeWrittenTo)
{
    tIntStack oStack;
    oStack.Push(1);
    oStack.Push(2);

    oStack.GetTop() = 7;

    EXPECT_EQ(7, oStack.GetTop());
    EXPECT_EQ(2, oStack.GetSize());
    oStack.Pop();
    EXPECT_EQ(1, oStack.GetTop());
}

TEST(CTOVStackTest, ClearRemovesAllElements)
{
    tIntStack oStack;
    oStack.Push(1);
    oStack.Push(2);

    for (int nTime = 0; nTime < 2; ++nTime)
    {
        oStack.Clear();
        EXPECT_EQ(0, oStack.GetSize());
        EXPECT_EQ(0, oStack.GetCount());
        EXPECT_TRUE(oStack.IsEmpty());
    }
    oStack.Push(3);
    EXPECT_EQ(3, oStack.GetTop());
}

TEST(CTOVStackTest, CopiesDeeply)
{
    tIntStack oStack;
    oStack.Push(1);
    tIntStack oCopy(oStack);
    tIntStack oAssigned;
    oAssigned.Push(9);
    oAssigned = oStack;

    oStack.GetTop() = 7;

    EXPECT_EQ(1, oCopy.GetTop());
    EXPECT_EQ(1, oAssigned.GetTop());
    EXPECT_EQ(1, oAssigned.GetSize());
}

TEST(CTOVStackTest, PushesItsOwnElements)
{
    CTOVStack<CTOVStringA> oStack;
    oStack.Push("text");

    for (int nTime = 0; nTime < 1000; ++nTime)
        oStack.Push(oStack.GetTop());

    EXPECT_EQ(1001, oStack.GetSize());
    EXPECT_STREQ("text", oStack.GetTop().GetString());
}

TEST(CTOVStackTest, OwnsItsElements)
{
    {
        CTOVStack<sCounted> oStack;
        for (int nTime = 0; nTime < 3; ++nTime)
            oStack.Push(sCounted());
        EXPECT_EQ(3, sCounted::s_nAlive);

        oStack.Pop();
        EXPECT_EQ(2, sCounted::s_nAlive);
    }

    EXPECT_EQ(0, sCounted::s_nAlive);
}

TEST(CTOVStackTest, FailedCopyLeavesTheStackAsItWas)
{
    CTOVStack<sCounted> oStack;
    oStack.Push(sCounted());
    sCounted::s_bRefusesCopies = true;

    EXPECT_THROW(oStack.Push(sCounted()), std::runtime_error);

    sCounted::s_bRefusesCopies = false;
    EXPECT_EQ(1, oStack.GetSize());
}

TEST(CTOVStackTest, HoldsItsDequeAlone)
{
    EXPECT_EQ(SizeWithMembers<std::deque<int>>(), sizeof(tIntStack));
    EXPECT_TRUE(std::has_virtual_destructor_v<tIntStack>);
}
