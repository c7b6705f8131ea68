#include "Support/TOVLayout.h"
#include "Support/TOVTestSupport.h"
#include "TOVContainers/TOVCounted.h"

#include <TOVContainers/TOVQueue.h>
#include <TOVString/TOVStringA.h>

#include <deque>
#include <type_traits>

namespace
{
constexpr char EMPTY_CHECK[] = "m_aQueue.size() > 0";

typedef CTOVQueue<int> tIntQueue;
} // namespace

TEST(CTOVQueueTest, ComesAndGoes)
{
    EXPECT_NO_CHECK({ tIntQueue oQueue; });
}

TEST(CTOVQueueTest, IsEmptyByDefault)
{
    const tIntQueue oQueue;

    EXPECT_EQ(0, oQueue.GetSize());
    EXPECT_EQ(0, oQueue.GetCount());
    EXPECT_TRUE(oQueue.IsEmpty());
}

TEST(CTOVQueueTest, GivesTheOldestElementFirst)
{
    tIntQueue oQueue;
    for (const int nElement : {4, 5, 6})
        oQueue.Enqueue(nElement);
    EXPECT_EQ(3, oQueue.GetSize());
    EXPECT_EQ(3, oQueue.GetCount());
    EXPECT_FALSE(oQueue.IsEmpty());

    EXPECT_EQ(4, oQueue.Dequeue());
    oQueue.Enqueue(7);
    EXPECT_EQ(5, oQueue.Dequeue());
    EXPECT_EQ(6, oQueue.Dequeue());
    EXPECT_EQ(7, oQueue.Dequeue());
    EXPECT_TRUE(oQueue.IsEmpty());
}

TEST(CTOVQueueTest, EmptyQueueRefusesDequeue)
{
    tIntQueue oQueue;
    oQueue.Enqueue(1);
    oQueue.Dequeue();

    EXPECT_CHECK_AT("TOVContainers/TOVQueue", EMPTY_CHECK, oQueue.Dequeue());
    EXPECT_CHECK_AT("TOVContainers/TOVQueue", EMPTY_CHECK, oQueue.Dequeue());
    EXPECT_EQ(0, oQueue.GetSize());
}

TEST(CTOVQueueTest, CopiesDeeply)
{
    tIntQueue oQueue;
    oQueue.Enqueue(1);
    oQueue.Enqueue(2);
    tIntQueue oCopy(oQueue);
    tIntQueue oAssigned;
    oAssigned.Enqueue(9);
    oAssigned = oQueue;

    oQueue.Dequeue();

    EXPECT_EQ(2, oCopy.GetSize());
    EXPECT_EQ(1, oCopy.Dequeue());
    EXPECT_EQ(2, oAssigned.GetSize());
    EXPECT_EQ(1, oAssigned.Dequeue());
}

TEST(CTOVQueueTest, HoldsTypesWithCopiesOfTheirOwn)
{
    CTOVQueue<CTOVStringA> oQueue;
    oQueue.Enqueue("first");
    oQueue.Enqueue("second");

    EXPECT_STREQ("first", oQueue.Dequeue().GetString());
    EXPECT_STREQ("second", oQueue.Dequeue().GetString());
}

TEST(CTOVQueueTest, OwnsItsElements)
{
    {
        CTOVQueue<sCounted> oQueue;
        for (int nTime = 0; nTime < 3; ++nTime)
            oQueue.Enqueue(sCounted());
        EXPECT_EQ(3, sCounted::s_nAlive);

        oQueue.Dequeue();
        EXPECT_EQ(2, sCounted::s_nAlive);
    }

    EXPECT_EQ(0, sCounted::s_nAlive);
}

TEST(CTOVQueueTest, FailedCopyLeavesTheQueueAsItWas)
{
    CTOVQueue<sCounted> oQueue;
    oQueue.Enqueue(sCounted());
    sCounted::s_bRefusesCopies = true;

    EXPECT_THROW(oQueue.Enqueue(sCounted()), std::runtime_error);
    EXPECT_THROW(oQueue.Dequeue(), std::runtime_error);

    sCounted::s_bRefusesCopies = false;
    EXPECT_EQ(1, oQueue.GetSize());
}

TEST(CTOVQueueTest, HoldsItsDequeAlone)
{
    EXPECT_EQ(SizeWithMembers<std::deque<int>>(), sizeof(tIntQueue));
    EXPECT_TRUE(std::has_virtual_destructor_v<tIntQueue>);
}
