#include "Support/TOVAllocationCounter.h"
#include "Support/TOVBlockableThread.h"
#include "Support/TOVLayout.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"

#include <TOVContainers/TOVSafeQueue.h>
#include <TOVString/TOVStringA.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace
{
constexpr char MUTEX_CHECK[] = "m_hMutex != NULL";

typedef CTOVSafeQueue<int> tIntQueue;

// Does something in its copy constructor, and counts the living.
struct sCopied
{
    sCopied() { ++s_nAlive; }
    sCopied(const sCopied&)
    {
        if (s_fnAction)
            s_fnAction();
        ++s_nAlive;
        ++s_nCopies;
    }
    sCopied& operator=(const sCopied&) = delete;
    ~sCopied() { --s_nAlive; }

    static inline std::function<void()> s_fnAction;
    static inline std::atomic<int> s_nAlive = 0;
    static inline std::atomic<int> s_nCopies = 0;
};

// While it lives, each copy of an sCopied runs this action.
class CCopyAction
{
public:
    explicit CCopyAction(std::function<void()> fnAction) { sCopied::s_fnAction = std::move(fnAction); }
    ~CCopyAction() { sCopied::s_fnAction = nullptr; }
    CCopyAction(const CCopyAction&) = delete;
    CCopyAction& operator=(const CCopyAction&) = delete;
};

typedef CTOVSafeQueue<sCopied> tCopiedQueue;

TOV_PRIVATE_MEMBER(ListOf, tIntQueue, std::list<int>, m_aQueue)
TOV_PRIVATE_MEMBER(MutexOf, tIntQueue, CTOVMutex, m_oMutex)
TOV_PRIVATE_MEMBER(EventOf, tIntQueue, CTOVEvent, m_oEvent)
TOV_PRIVATE_MEMBER(CopiedEventOf, tCopiedQueue, CTOVEvent, m_oEvent)
TOV_PRIVATE_MEMBER(HandleOf, CTOVMutex, unsigned long long, m_hMutex)

class CCountedQueue : public tIntQueue
{
public:
    long GetCount() const override { return 7; }
};

// Takes a number of elements on a thread of its own.
class CConsumer
{
public:
    CConsumer(tIntQueue& oQueue, int nElements)
        : m_oThread([this, &oQueue, nElements] {
              for (int nElement = 0; nElement < nElements; ++nElement)
                  m_aTaken.push_back(oQueue.Dequeue());
          })
    {
    }

    bool IsBlocked() { return m_oThread.IsBlocked(); }
    bool Finishes() { return m_oThread.Finishes(); }

    // After Finishes.
    const std::vector<int>& Taken() const { return m_aTaken; }

private:
    std::vector<int> m_aTaken;
    CBlockableThread m_oThread;
};

// The elements of many producers bear their producer's number and a number that rises.
constexpr int PRODUCER_FACTOR = 1000000;

bool RisesForEachProducer(const std::vector<int>& aTaken, int nProducers)
{
    for (int nProducer = 0; nProducer < nProducers; ++nProducer)
    {
        int nLast = -1;
        for (const int nElement : aTaken)
        {
            if (nElement / PRODUCER_FACTOR != nProducer)
                continue;
            if (nElement <= nLast)
                return false;
            nLast = nElement;
        }
    }
    return true;
}
} // namespace

TEST(CTOVSafeQueueTest, IsEmptyByDefault)
{
    const tIntQueue oQueue;

    EXPECT_TRUE(oQueue.IsEmpty());
    EXPECT_EQ(0, oQueue.GetCount());
    EXPECT_EQ(0, oQueue.GetSize());
}

TEST(CTOVSafeQueueTest, GivesTheOldestElementFirstWithoutBlocking)
{
    tIntQueue oQueue;
    for (const int nElement : {4, 5, 6})
        oQueue.Enqueue(nElement);
    EXPECT_EQ(3, oQueue.GetSize());
    EXPECT_EQ(3, oQueue.GetCount());
    EXPECT_FALSE(oQueue.IsEmpty());

    CConsumer oConsumer(oQueue, 3);

    ASSERT_TRUE(oConsumer.Finishes());
    EXPECT_EQ((std::vector<int>{4, 5, 6}), oConsumer.Taken());
    EXPECT_EQ(0, oQueue.GetSize());
    EXPECT_TRUE(oQueue.IsEmpty());
}

TEST(CTOVSafeQueueTest, HoldsStrings)
{
    CTOVSafeQueue<CTOVStringA> oQueue;
    oQueue.Enqueue("first");
    oQueue.Enqueue("second");

    EXPECT_STREQ("first", oQueue.Dequeue().GetString());
    EXPECT_STREQ("second", oQueue.Dequeue().GetString());
}

// The element for texts that the header shows.
TEST(CTOVSafeQueueTest, HandsTextsOverThatShareNothing)
{
    struct sLine
    {
        explicit sLine(const char* szText) : sText(szText) {}
        sLine(const sLine& oOther) : sText(~oOther.sText) {}
        const CTOVStringA sText;
    };
    constexpr int LINES = 1000;
    CTOVSafeQueue<sLine> oQueue;
    int nLines = 0;
    CBlockableThread oConsumer([&] {
        for (int nLine = 0; nLine < LINES; ++nLine)
        {
            const sLine oLine = oQueue.Dequeue();
            const sLine oCopy(oLine);
            nLines += std::string("line") == ~oCopy.sText ? 1 : 0;
        }
    });

    const sLine oKept("line");
    for (int nLine = 0; nLine < LINES; ++nLine)
        oQueue.Enqueue(nLine % 2 == 0 ? oKept : sLine("line"));

    ASSERT_TRUE(oConsumer.Finishes());
    EXPECT_EQ(LINES, nLines);
    EXPECT_STREQ("line", ~oKept.sText);
}

TEST(CTOVSafeQueueTest, ConsumerWaitsForAnElement)
{
    tIntQueue oQueue;
    CConsumer oConsumer(oQueue, 1);
    EXPECT_TRUE(oConsumer.IsBlocked());

    oQueue.Enqueue(7);

    ASSERT_TRUE(oConsumer.Finishes());
    EXPECT_EQ((std::vector<int>{7}), oConsumer.Taken());
}

TEST(CTOVSafeQueueTest, WaitingConsumerHoldsNoLock)
{
    tIntQueue oQueue;
    CConsumer oConsumer(oQueue, 1);
    EXPECT_TRUE(oConsumer.IsBlocked());
    {
        CBlockableThread oOther([&oQueue] { oQueue.GetCount(); });
        EXPECT_TRUE(oOther.Finishes());
    }
    oQueue.Enqueue(7);

    EXPECT_TRUE(oConsumer.Finishes());
}

TEST(CTOVSafeQueueTest, EveryOperationTakesTheMutex)
{
    typedef void (*tOperation)(tIntQueue&);
    const tOperation aOperations[] = {
        [](tIntQueue& oQueue) { oQueue.IsEmpty(); }, [](tIntQueue& oQueue) { oQueue.GetCount(); },
        [](tIntQueue& oQueue) { oQueue.GetSize(); }, [](tIntQueue& oQueue) { oQueue.Enqueue(8); },
        [](tIntQueue& oQueue) { oQueue.Dequeue(); }};
    for (const tOperation fnOperation : aOperations)
    {
        tIntQueue oQueue;
        oQueue.Enqueue(7);
        MutexOf(oQueue).Lock();
        CBlockableThread oOther([&oQueue, fnOperation] { fnOperation(oQueue); });
        EXPECT_TRUE(oOther.IsBlocked());

        MutexOf(oQueue).Unlock();
        EXPECT_TRUE(oOther.Finishes());
    }
}

TEST(CTOVSafeQueueTest, LateSignalDoesNotReleaseAConsumer)
{
    tIntQueue oQueue;
    EventOf(oQueue).Signal();
    CConsumer oConsumer(oQueue, 1);
    EXPECT_TRUE(oConsumer.IsBlocked());
    EXPECT_EQ(0, oQueue.GetCount());

    oQueue.Enqueue(7);

    ASSERT_TRUE(oConsumer.Finishes());
    EXPECT_EQ((std::vector<int>{7}), oConsumer.Taken());
}

TEST(CTOVSafeQueueTest, AnElementThatIsThereNeedsNoSignal)
{
    tIntQueue oQueue;
    oQueue.Enqueue(7);
    EXPECT_TRUE(EventOf(oQueue).TimedWait(0));

    CConsumer oConsumer(oQueue, 1);

    EXPECT_TRUE(oConsumer.Finishes());
    EXPECT_FALSE(EventOf(oQueue).TimedWait(0));
}

TEST(CTOVSafeQueueTest, OneSignalServesAsManyConsumersAsThereAreElements)
{
    tIntQueue oQueue;
    for (const int nElement : {1, 2, 3})
        oQueue.Enqueue(nElement);

    CConsumer oFirst(oQueue, 1);
    CConsumer oSecond(oQueue, 1);
    CConsumer oThird(oQueue, 1);

    EXPECT_TRUE(oFirst.Finishes() && oSecond.Finishes() && oThird.Finishes());
    EXPECT_TRUE(oQueue.IsEmpty());
}

TEST(CTOVSafeQueueTest, ElementsThatComeTogetherReachAllWaitingConsumers)
{
    tIntQueue oQueue;
    CConsumer oFirst(oQueue, 1);
    CConsumer oSecond(oQueue, 1);
    CConsumer oThird(oQueue, 1);
    EXPECT_TRUE(oFirst.IsBlocked() && oSecond.IsBlocked() && oThird.IsBlocked());

    for (const int nElement : {1, 2, 3})
        oQueue.Enqueue(nElement);

    ASSERT_TRUE(oFirst.Finishes() && oSecond.Finishes() && oThird.Finishes());
    std::vector<int> aTaken = {oFirst.Taken()[0], oSecond.Taken()[0], oThird.Taken()[0]};
    std::sort(aTaken.begin(), aTaken.end());
    EXPECT_EQ((std::vector<int>{1, 2, 3}), aTaken);
}

TEST(CTOVSafeQueueTest, EventStaysSetAsLongAsElementsRemain)
{
    tIntQueue oQueue;
    EXPECT_FALSE(EventOf(oQueue).TimedWait(0));
    oQueue.Enqueue(1);
    oQueue.Enqueue(2);

    oQueue.Dequeue();
    EXPECT_TRUE(EventOf(oQueue).TimedWait(0));
    EventOf(oQueue).Signal();

    oQueue.Dequeue();
    EXPECT_FALSE(EventOf(oQueue).TimedWait(0));
}

TEST(CTOVSafeQueueTest, SignalsOnlyAfterTheElementIsIn)
{
    tCopiedQueue oQueue;
    bool bSignalled = true;
    {
        const CCopyAction oAction([&] { bSignalled = CopiedEventOf(oQueue).TimedWait(0); });
        oQueue.Enqueue(sCopied());
    }

    EXPECT_FALSE(bSignalled);
    EXPECT_TRUE(CopiedEventOf(oQueue).TimedWait(0));
}

TEST(CTOVSafeQueueTest, CopiesAnElementOnceInAndOnceOut)
{
    tCopiedQueue oQueue;
    const sCopied oElement;
    sCopied::s_nCopies = 0;

    oQueue.Enqueue(oElement);
    EXPECT_EQ(1, sCopied::s_nCopies);

    const sCopied oTaken = oQueue.Dequeue();
    EXPECT_EQ(2, sCopied::s_nCopies);
    EXPECT_EQ(2, sCopied::s_nAlive);
}

TEST(CTOVSafeQueueTest, TakesOneNodeForAnElement)
{
    tIntQueue oQueue;
    oQueue.Enqueue(1);
    CAllocationCounter oCounter;
    oQueue.Enqueue(2);
    const unsigned long ulForEnqueue = oCounter.Taken();
    oQueue.Dequeue();
    oQueue.Dequeue();
    const unsigned long ulInAll = oCounter.Taken();
    const long lKept = oCounter.Kept();

    EXPECT_EQ(1u, ulForEnqueue);
    EXPECT_EQ(1u, ulInAll);
    EXPECT_EQ(-1, lKept);
}

TEST(CTOVSafeQueueTest, EndsWithTheElementsThatAreLeft)
{
    {
        tCopiedQueue oQueue;
        oQueue.Enqueue(sCopied());
        oQueue.Enqueue(sCopied());
        EXPECT_EQ(2, sCopied::s_nAlive);
    }

    EXPECT_EQ(0, sCopied::s_nAlive);
}

TEST(CTOVSafeQueueTest, FailedCopyInLeavesTheQueueAsItWas)
{
    tCopiedQueue oQueue;
    {
        const CCopyAction oAction([] { throw std::runtime_error("refused"); });
        EXPECT_THROW(oQueue.Enqueue(sCopied()), std::runtime_error);
    }

    CBlockableThread oOther([&oQueue] { oQueue.GetCount(); });
    EXPECT_TRUE(oOther.Finishes());
    EXPECT_TRUE(oQueue.IsEmpty());
    EXPECT_FALSE(CopiedEventOf(oQueue).TimedWait(0));
}

TEST(CTOVSafeQueueTest, FailedCopyOutLeavesTheElementToTheNextConsumer)
{
    tCopiedQueue oQueue;
    oQueue.Enqueue(sCopied());
    {
        const CCopyAction oAction([] { throw std::runtime_error("refused"); });
        EXPECT_THROW(oQueue.Dequeue(), std::runtime_error);
    }
    EXPECT_EQ(1, oQueue.GetCount());

    CBlockableThread oOther([&oQueue] { oQueue.Dequeue(); });
    const bool bFinishes = oOther.Finishes();
    if (!bFinishes)
        CopiedEventOf(oQueue).Signal();
    EXPECT_TRUE(bFinishes);
}

TEST(CTOVSafeQueueTest, LosesNoElementOfManyThreadsThoughCopiesFail)
{
    const int nThreads = 3;
    const int nElements = 1000;
    tCopiedQueue oQueue;
    std::atomic<int> nTaken(0);
    {
        std::atomic<int> nCopies(0);
        const CCopyAction oAction([&] {
            if (++nCopies % 7 == 0)
                throw std::runtime_error("refused");
        });
        // Repeats what is refused.
        const auto fnDo = [&](const std::function<void()>& fnStep) {
            for (bool bDone = false; !bDone;)
            {
                try
                {
                    fnStep();
                    bDone = true;
                }
                catch (const std::runtime_error&)
                {
                }
            }
        };
        std::vector<std::unique_ptr<CBlockableThread>> aThreads;
        for (int nThread = 0; nThread < 2 * nThreads; ++nThread)
            aThreads.push_back(std::make_unique<CBlockableThread>([&, nThread] {
                const sCopied oElement;
                for (int nElement = 0; nElement < nElements; ++nElement)
                    fnDo([&] {
                        if (nThread % 2 == 0)
                            oQueue.Enqueue(oElement);
                        else
                            oQueue.Dequeue();
                    });
                nTaken += nThread % 2 == 0 ? 0 : nElements;
            }));
        for (const std::unique_ptr<CBlockableThread>& pThread : aThreads)
            EXPECT_TRUE(pThread->Finishes());
    }

    EXPECT_EQ(nThreads * nElements, nTaken);
    EXPECT_TRUE(oQueue.IsEmpty());
}

TEST(CTOVSafeQueueTest, EveryOperationChecksTheMutex)
{
    tIntQueue oQueue;
    oQueue.Enqueue(7);
    const unsigned long long hMutex = HandleOf(MutexOf(oQueue));
    HandleOf(MutexOf(oQueue)) = 0;

    EXPECT_CHECK_AT("TOVProcess/TOVMutex", MUTEX_CHECK, oQueue.IsEmpty());
    EXPECT_CHECK_AT("TOVProcess/TOVMutex", MUTEX_CHECK, oQueue.GetCount());
    EXPECT_CHECK_AT("TOVProcess/TOVMutex", MUTEX_CHECK, oQueue.GetSize());
    EXPECT_CHECK_AT("TOVProcess/TOVMutex", MUTEX_CHECK, oQueue.Enqueue(8));
    EXPECT_CHECK_AT("TOVProcess/TOVMutex", MUTEX_CHECK, oQueue.Dequeue());

    HandleOf(MutexOf(oQueue)) = hMutex;
    EXPECT_EQ(1, oQueue.GetCount());
}

TEST(CTOVSafeQueueTest, OnlyTellsOfTheCheckOfItsMutexAtItsEnd)
{
    std::optional<CTOVMutex> oCloser;

    EXPECT_TOLD_CHECK_AT("TOVProcess/TOVMutex", MUTEX_CHECK, {
        tIntQueue oQueue;
        oCloser.emplace(MutexOf(oQueue));
        HandleOf(MutexOf(oQueue)) = 0;
    });
}

TEST(CTOVSafeQueueTest, SizeGoesThroughCount)
{
    const CCountedQueue oQueue;

    EXPECT_EQ(7, oQueue.GetSize());
    EXPECT_TRUE(oQueue.IsEmpty());
}

TEST(CTOVSafeQueueTest, KeepsTheOrderOfOneProducer)
{
    const int nElements = 5000;
    tIntQueue oQueue;
    CConsumer oConsumer(oQueue, nElements);
    for (int nElement = 0; nElement < nElements; ++nElement)
        oQueue.Enqueue(nElement);

    ASSERT_TRUE(oConsumer.Finishes());
    EXPECT_EQ(static_cast<std::size_t>(nElements), oConsumer.Taken().size());
    EXPECT_TRUE(std::is_sorted(oConsumer.Taken().begin(), oConsumer.Taken().end()));
}

TEST(CTOVSafeQueueTest, HandsEveryElementOfManyProducersToOneOfManyConsumers)
{
    const int nThreads = 4;
    const int nElements = 1500;
    tIntQueue oQueue;
    std::vector<std::unique_ptr<CConsumer>> aConsumers;
    std::vector<std::unique_ptr<CBlockableThread>> aProducers;
    for (int nThread = 0; nThread < nThreads; ++nThread)
    {
        aConsumers.push_back(std::make_unique<CConsumer>(oQueue, nElements));
        aProducers.push_back(std::make_unique<CBlockableThread>([&oQueue, nThread] {
            for (int nElement = 0; nElement < nElements; ++nElement)
                oQueue.Enqueue(nThread * PRODUCER_FACTOR + nElement);
        }));
    }

    std::vector<int> aTaken;
    for (const std::unique_ptr<CConsumer>& pConsumer : aConsumers)
    {
        ASSERT_TRUE(pConsumer->Finishes());
        EXPECT_TRUE(RisesForEachProducer(pConsumer->Taken(), nThreads));
        aTaken.insert(aTaken.end(), pConsumer->Taken().begin(), pConsumer->Taken().end());
    }
    std::sort(aTaken.begin(), aTaken.end());
    EXPECT_EQ(static_cast<std::size_t>(nThreads * nElements), aTaken.size());
    EXPECT_EQ(aTaken.end(), std::adjacent_find(aTaken.begin(), aTaken.end()));
    EXPECT_TRUE(oQueue.IsEmpty());
}

TEST(CTOVSafeQueueTest, HoldsItsMembersInTheirOrder)
{
    tIntQueue oQueue;

    ExpectMembersInOrder(oQueue, ListOf(oQueue), MutexOf(oQueue), EventOf(oQueue));
    EXPECT_FALSE(std::has_virtual_destructor_v<tIntQueue>);
}
