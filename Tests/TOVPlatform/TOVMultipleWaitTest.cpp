#include "Support/TOVBlockableThread.h"
#include "Support/TOVRowName.h"
#include "Support/TOVWaitInstruments.h"

#include <TOVPlatform/TOVThread.h>

#include <climits>
#include <memory>

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
constexpr int MOST = 64;

// Both waits, and the ways to wait for ever.
struct sForm
{
    const char* szName;
    int (*fnWait)(unsigned long long* pHandles, int nCount, bool bWaitForAll);
};

template<unsigned long long ullTime> int TimedWait(unsigned long long* pHandles, int nCount, bool bWaitForAll)
{
    return Event::MultipleTimedWait(pHandles, nCount, bWaitForAll, static_cast<long>(ullTime));
}

const sForm FORMS[] = {
    {"Untimed", &Event::MultipleWait},
    {"Timed", &TimedWait<60000>},
    {"MinusOne", &TimedWait<~0ull>},
    {"Infinite", &TimedWait<0xFFFFFFFF>},
    {"AlmostInfinite", &TimedWait<0xFFFFFFFE>},
};

class TOVPlatformMultipleWaitTest : public testing::TestWithParam<sForm>
{
protected:
    static int ForAny(tHandles aHandles)
    {
        return GetParam().fnWait(aHandles.data(), static_cast<int>(aHandles.size()), false);
    }

    static int ForAll(tHandles aHandles)
    {
        return GetParam().fnWait(aHandles.data(), static_cast<int>(aHandles.size()), true);
    }
};

INSTANTIATE_TEST_SUITE_P(Form, TOVPlatformMultipleWaitTest, testing::ValuesIn(FORMS), sRowName());

unsigned long EndAtSignal(unsigned long long ullEvent)
{
    const unsigned long long* pEvent =
        reinterpret_cast<const unsigned long long*>(static_cast<std::uintptr_t>(ullEvent));
    Event::TimedWait(*pEvent, DEADLINE);
    return 0;
}

// 64 objects of all kinds, none of which can be had at first.
class CObjects
{
public:
    CObjects()
        : m_aHandles(MOST, 0), m_hThreadMayEnd(Event::Create(true, false, nullptr)),
          m_hThread(Thread::Create(&EndAtSignal, &m_hThreadMayEnd, nullptr))
    {
        for (int nObject = 0; nObject < MOST; ++nObject)
            At(nObject) = Create(nObject);
        m_oOwner.Do([this] {
            for (int nObject = 0; nObject < MOST; ++nObject)
            {
                if (IsMutex(nObject))
                    Mutex::Lock(At(nObject));
            }
        });
    }

    ~CObjects()
    {
        Event::Signal(m_hThreadMayEnd);
        Event::TimedWait(m_hThread, DEADLINE);
        for (int nObject = 0; nObject < MOST; ++nObject)
        {
            if (!IsThread(nObject))
                Event::Destroy(At(nObject));
        }
        Event::Destroy(m_hThreadMayEnd);
    }

    CObjects(const CObjects&) = delete;
    CObjects& operator=(const CObjects&) = delete;

    const tHandles& Handles() const { return m_aHandles; }

    static bool IsAutoEvent(int nObject) { return nObject % 4 == 0; }
    static bool IsManualEvent(int nObject) { return nObject % 4 == 1; }
    static bool IsMutex(int nObject) { return nObject % 4 == 2; }
    static bool IsSemaphore(int nObject) { return nObject % 4 == 3 && !IsThread(nObject); }
    static bool IsThread(int nObject) { return nObject == 31; }

    // Makes the object available: once, but for manual events and threads, which stay so.
    void Offer(int nObject)
    {
        if (IsThread(nObject))
        {
            Event::Signal(m_hThreadMayEnd);
            EXPECT_TRUE(Event::TimedWait(m_hThread, DEADLINE));
        }
        else if (IsSemaphore(nObject))
            EXPECT_EQ(0, Semaphore::Unlock(At(nObject), 1));
        else if (IsMutex(nObject))
            m_oOwner.Do([&] { Mutex::Unlock(At(nObject)); });
        else
            Event::Signal(At(nObject));
    }

    // Takes back what was offered and not taken.
    bool Withdraw(int nObject)
    {
        if (IsThread(nObject))
            return true;
        bool bCouldBeHad = false;
        m_oOwner.Do([&] { bCouldBeHad = TakesNow(At(nObject)); });
        if (IsManualEvent(nObject))
            Event::Reset(At(nObject));
        return bCouldBeHad;
    }

private:
    unsigned long long& At(int nObject) { return m_aHandles[static_cast<std::size_t>(nObject)]; }

    unsigned long long Create(int nObject) const
    {
        if (IsThread(nObject))
            return m_hThread;
        if (IsSemaphore(nObject))
            return Semaphore::Create(0, 1, nullptr);
        if (IsMutex(nObject))
            return Mutex::Create(false, nullptr);
        return Event::Create(IsManualEvent(nObject), false, nullptr);
    }

    tHandles m_aHandles;
    unsigned long long m_hThreadMayEnd;
    const unsigned long long m_hThread;
    CWorker m_oOwner;
};

// Signalled events of automatic reset.
class CSignalledEvents
{
public:
    explicit CSignalledEvents(int nCount)
    {
        for (int nEvent = 0; nEvent < nCount; ++nEvent)
            m_aHandles.push_back(Event::Create(false, true, nullptr));
    }

    ~CSignalledEvents()
    {
        for (const unsigned long long hEvent : m_aHandles)
            Event::Destroy(hEvent);
    }

    CSignalledEvents(const CSignalledEvents&) = delete;
    CSignalledEvents& operator=(const CSignalledEvents&) = delete;

    const tHandles& Handles() const { return m_aHandles; }

    int CountSignalled() const
    {
        int nCount = 0;
        for (const unsigned long long hEvent : m_aHandles)
            nCount += TakesNow(hEvent) ? 1 : 0;
        return nCount;
    }

private:
    tHandles m_aHandles;
};
} // namespace

TEST_P(TOVPlatformMultipleWaitTest, ForAnyGivesTheIndexOfTheObject)
{
    CObjects oObjects;
    for (int nObject = 0; nObject < MOST; ++nObject)
    {
        // A thread stays signalled and would be found from then on.
        tHandles aHandles = oObjects.Handles();
        if (nObject > 31)
            aHandles[31] = aHandles[0];
        oObjects.Offer(nObject);

        ASSERT_EQ(nObject, ForAny(aHandles));

        if (CObjects::IsMutex(nObject))
            Mutex::Unlock(aHandles[static_cast<std::size_t>(nObject)]);
        EXPECT_EQ(CObjects::IsManualEvent(nObject) || CObjects::IsMutex(nObject) || CObjects::IsThread(nObject),
                  oObjects.Withdraw(nObject))
            << nObject;
    }
}

TEST_P(TOVPlatformMultipleWaitTest, ForAnyTakesTheLowestOfSeveralAndNothingElse)
{
    const CSignalledEvents oEvents(MOST);

    EXPECT_EQ(0, ForAny(oEvents.Handles()));
    EXPECT_EQ(1, ForAny(oEvents.Handles()));
    Event::Reset(oEvents.Handles()[2]);
    EXPECT_EQ(3, ForAny(oEvents.Handles()));

    EXPECT_EQ(MOST - 4, oEvents.CountSignalled());
}

TEST_P(TOVPlatformMultipleWaitTest, ForAnyBlocksUntilOneCanBeHad)
{
    for (const int nObject : {0, 1, 2, 3, 31, 60, 61, 62, 63})
    {
        CObjects oObjects;
        int nResult = -9;
        CBlockableThread oWaiter([&] {
            nResult = ForAny(oObjects.Handles());
            if (CObjects::IsMutex(nObject))
                Mutex::Unlock(oObjects.Handles()[static_cast<std::size_t>(nObject)]);
        });
        EXPECT_TRUE(oWaiter.IsBlocked());

        oObjects.Offer(nObject);

        ASSERT_TRUE(oWaiter.Finishes());
        EXPECT_EQ(nObject, nResult);
    }
}

TEST_P(TOVPlatformMultipleWaitTest, ForAllTakesEveryObjectAtOnce)
{
    CObjects oObjects;
    for (int nObject = 0; nObject < MOST; ++nObject)
        oObjects.Offer(nObject);

    const int nResult = ForAll(oObjects.Handles());

    EXPECT_LE(0, nResult);
    EXPECT_GT(MOST, nResult);
    for (int nObject = 0; nObject < MOST; ++nObject)
    {
        EXPECT_EQ(CObjects::IsManualEvent(nObject) || CObjects::IsThread(nObject), oObjects.Withdraw(nObject))
            << nObject;
        if (CObjects::IsMutex(nObject))
            Mutex::Unlock(oObjects.Handles()[static_cast<std::size_t>(nObject)]);
    }
}

TEST_P(TOVPlatformMultipleWaitTest, ForAllTakesNothingWhileOneIsMissing)
{
    for (const int nMissing : {0, 1, 2, 3, 31, 60, 61, 62, 63})
    {
        CObjects oObjects;
        for (int nObject = 0; nObject < MOST; ++nObject)
        {
            if (nObject != nMissing)
                oObjects.Offer(nObject);
        }
        int nResult = -9;
        CBlockableThread oWaiter([&] { nResult = ForAll(oObjects.Handles()); });
        EXPECT_TRUE(oWaiter.IsBlocked());
        for (int nObject = 0; nObject < MOST; ++nObject)
        {
            if (nObject != nMissing && !CObjects::IsThread(nObject))
            {
                EXPECT_TRUE(oObjects.Withdraw(nObject)) << nObject << " without " << nMissing;
                oObjects.Offer(nObject);
            }
        }
        EXPECT_TRUE(oWaiter.IsBlocked());

        oObjects.Offer(nMissing);

        ASSERT_TRUE(oWaiter.Finishes());
        EXPECT_LE(0, nResult);
        EXPECT_GT(MOST, nResult);
        for (int nObject = 0; nObject < MOST; ++nObject)
        {
            if (CObjects::IsAutoEvent(nObject) || CObjects::IsSemaphore(nObject))
            {
                EXPECT_FALSE(oObjects.Withdraw(nObject)) << nObject << " after " << nMissing;
            }
        }
    }
}

TEST_P(TOVPlatformMultipleWaitTest, ForOneObjectIsLikeAPlainWait)
{
    const COwnHandle hEvent(Event::Create(false, true, nullptr));

    EXPECT_EQ(0, ForAny({hEvent}));
    EXPECT_FALSE(Event::TimedWait(hEvent, 0));
    Event::Signal(hEvent);
    EXPECT_EQ(0, ForAll({hEvent}));
    EXPECT_FALSE(Event::TimedWait(hEvent, 0));
}

TEST_P(TOVPlatformMultipleWaitTest, TakesOneUnitOfASemaphore)
{
    const COwnHandle hSemaphore(Semaphore::Create(3, 3, nullptr));
    const COwnHandle hEvent(Event::Create(true, true, nullptr));

    EXPECT_EQ(0, ForAny({hSemaphore, hEvent}));
    EXPECT_LE(0, ForAll({hSemaphore, hEvent}));

    EXPECT_EQ(1, Semaphore::Unlock(hSemaphore, 1));
}

TEST_P(TOVPlatformMultipleWaitTest, AddsALevelToAMutexOfTheCaller)
{
    const COwnHandle hMutex(Mutex::Create(true, nullptr));
    const COwnHandle hEvent(Event::Create(true, true, nullptr));

    EXPECT_EQ(0, ForAny({hMutex, hEvent}));
    EXPECT_LE(0, ForAll({hMutex, hEvent}));

    Mutex::Unlock(hMutex);
    Mutex::Unlock(hMutex);
    EXPECT_TRUE(IsLockedForOthers(hMutex));
    Mutex::Unlock(hMutex);
    EXPECT_FALSE(IsLockedForOthers(hMutex));
}

TEST_P(TOVPlatformMultipleWaitTest, ReleasesEveryWaiterForAnyOfAManualEvent)
{
    const int nWaiters = 6;
    const COwnHandle hNever(Event::Create(true, false, nullptr));
    const COwnHandle hAlways(Event::Create(true, false, nullptr));
    CTally oReleased;
    CThreadGroup oWaiters;
    oWaiters.Start(nWaiters, [&](int) {
        EXPECT_EQ(1, ForAny({hNever, hAlways}));
        oReleased.Add();
    });
    EXPECT_TRUE(oReleased.Stays(0));

    Event::Signal(hAlways);

    EXPECT_TRUE(oReleased.Reaches(nWaiters));
}

TEST_P(TOVPlatformMultipleWaitTest, ReleasesOneWaiterASignalOfAnAutomaticEvent)
{
    const int nWaiters = 4;
    const COwnHandle hNever(Event::Create(true, false, nullptr));
    const COwnHandle hEvent(Event::Create(false, false, nullptr));
    CTally oReleased;
    CThreadGroup oWaiters;
    oWaiters.Start(nWaiters, [&](int) {
        EXPECT_EQ(1, ForAny({hNever, hEvent}));
        oReleased.Add();
    });

    for (int nSignal = 1; nSignal <= nWaiters; ++nSignal)
    {
        EXPECT_TRUE(oReleased.Stays(nSignal - 1));
        Event::Signal(hEvent);
        EXPECT_TRUE(oReleased.Reaches(nSignal));
    }
    EXPECT_FALSE(Event::TimedWait(hEvent, 0));
}

TEST_P(TOVPlatformMultipleWaitTest, ForAllWakesWithTheLastObjectInAnyOrder)
{
    const std::vector<std::vector<std::size_t>> aOrders = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2},
                                                           {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
    for (const std::vector<std::size_t>& aOrder : aOrders)
    {
        const CSignalledEvents oEvents(3);
        ASSERT_EQ(3, oEvents.CountSignalled()); // and none of them from here on
        CBlockableThread oWaiter([&] { EXPECT_LE(0, ForAll(oEvents.Handles())); });

        Event::Signal(oEvents.Handles()[aOrder[0]]);
        Event::Signal(oEvents.Handles()[aOrder[1]]);
        EXPECT_TRUE(oWaiter.IsBlocked());
        Event::Signal(oEvents.Handles()[aOrder[2]]);

        EXPECT_TRUE(oWaiter.Finishes());
        EXPECT_EQ(0, oEvents.CountSignalled());
    }
}

TEST_P(TOVPlatformMultipleWaitTest, FailsForABadHandleWithoutTakingAnything)
{
    const CSignalledEvents oEvents(3);
    for (const sBadHandle& oBad : BadHandles())
    {
        for (std::size_t nPlace = 0; nPlace < 3; ++nPlace)
        {
            tHandles aHandles = oEvents.Handles();
            aHandles[nPlace] = oBad.hObject;
            EXPECT_EQ(-1, ForAny(aHandles)) << oBad.szWhat << " at " << nPlace;
            EXPECT_EQ(-1, ForAll(aHandles)) << oBad.szWhat << " at " << nPlace;
        }
        EXPECT_EQ(-1, ForAny({oBad.hObject})) << oBad.szWhat;
        EXPECT_EQ(-1, ForAll({oBad.hObject})) << oBad.szWhat;
    }
    EXPECT_EQ(3, oEvents.CountSignalled());
}

TEST_P(TOVPlatformMultipleWaitTest, FailsForMoreThan64ObjectsWithoutTakingAnything)
{
    for (const int nCount : {65, 66, 128, 1000})
    {
        const CSignalledEvents oEvents(nCount);
        EXPECT_EQ(-1, ForAny(oEvents.Handles())) << nCount;
        EXPECT_EQ(-1, ForAll(oEvents.Handles())) << nCount;
        EXPECT_EQ(nCount, oEvents.CountSignalled());
    }
}

TEST_P(TOVPlatformMultipleWaitTest, FailsForACountThatNoTableHas)
{
    const COwnHandle hEvent(Event::Create(true, true, nullptr));
    unsigned long long aHandles[] = {hEvent};
    for (const int nCount : {0, -1, -64, INT_MIN, INT_MAX})
    {
        EXPECT_EQ(-1, GetParam().fnWait(aHandles, nCount, false)) << nCount;
        EXPECT_EQ(-1, GetParam().fnWait(aHandles, nCount, true)) << nCount;
    }
    EXPECT_EQ(-1, GetParam().fnWait(nullptr, 0, false));
    EXPECT_EQ(-1, GetParam().fnWait(nullptr, 0, true));
    EXPECT_EQ(-1, GetParam().fnWait(nullptr, 1, false));
    EXPECT_EQ(-1, GetParam().fnWait(nullptr, 1, true));
}

TEST_P(TOVPlatformMultipleWaitTest, LeavesTheTableOfHandlesAlone)
{
    const CSignalledEvents oEvents(5);
    tHandles aHandles = oEvents.Handles();

    GetParam().fnWait(aHandles.data(), 5, false);
    GetParam().fnWait(aHandles.data() + 1, 4, true);

    EXPECT_EQ(oEvents.Handles(), aHandles);
}

TEST_P(TOVPlatformMultipleWaitTest, ForAnyMayNameAnObjectTwice)
{
    const COwnHandle hOther(Event::Create(false, false, nullptr));
    const COwnHandle hEvent(Event::Create(false, true, nullptr));

    EXPECT_EQ(1, ForAny({hOther, hEvent, hEvent}));

    EXPECT_FALSE(Event::TimedWait(hEvent, 0));
}

TEST_P(TOVPlatformMultipleWaitTest, ForAllRefusesAnObjectTwice)
{
    const COwnHandle hOther(Event::Create(false, true, nullptr));
    const COwnHandle hEvent(Event::Create(false, true, nullptr));

    EXPECT_EQ(-1, ForAll({hEvent, hOther, hEvent}));

    EXPECT_TRUE(Event::TimedWait(hOther, 0));
    EXPECT_TRUE(Event::TimedWait(hEvent, 0));
}

TEST_P(TOVPlatformMultipleWaitTest, CanWaitForThreadsAlone)
{
    const unsigned long long hMayEnd = Event::Create(true, false, nullptr);
    tHandles aThreads;
    for (int nThread = 0; nThread < MOST; ++nThread)
        aThreads.push_back(Thread::Create(&EndAtSignal, const_cast<unsigned long long*>(&hMayEnd), nullptr));
    EXPECT_EQ(-2, WaitForAny(aThreads, 0));
    EXPECT_EQ(-2, WaitForAll(aThreads, 0));

    Event::Signal(hMayEnd);

    const int nLast = ForAll(aThreads);
    EXPECT_LE(0, nLast);
    EXPECT_GT(MOST, nLast);
    EXPECT_EQ(0, ForAny(aThreads)) << "an ended thread stays so";
    EXPECT_LE(0, ForAll(aThreads));
    Event::Destroy(hMayEnd);
}

TEST(TOVPlatformMultipleTimedWaitTest, RunsOutWithoutTakingAnything)
{
    const CSignalledEvents oEvents(3);
    const COwnHandle hMissing(Event::Create(false, false, nullptr));
    tHandles aHandles = oEvents.Handles();
    aHandles.push_back(hMissing);
    for (const long lTime : {0l, 1l, 20l})
    {
        EXPECT_EQ(-2, WaitForAny({hMissing}, lTime)) << lTime;
        EXPECT_EQ(-2, WaitForAll(aHandles, lTime)) << lTime;
    }
    EXPECT_EQ(3, oEvents.CountSignalled());
}

TEST(TOVPlatformMultipleTimedWaitTest, ForAllThatRunsOutTakesNeitherMutexNorSemaphore)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    const COwnHandle hSemaphore(Semaphore::Create(2, 2, nullptr));
    const COwnHandle hMissing(Event::Create(false, false, nullptr));

    EXPECT_EQ(-2, WaitForAll({hMutex, hSemaphore, hMissing}, 0));
    EXPECT_EQ(-2, WaitForAll({hMissing, hSemaphore, hMutex}, 20));

    EXPECT_FALSE(IsLockedForOthers(hMutex));
    EXPECT_TRUE(TakesNow(hSemaphore));
    EXPECT_TRUE(TakesNow(hSemaphore));
    EXPECT_FALSE(TakesNow(hSemaphore));
}

TEST(TOVPlatformMultipleTimedWaitTest, LooksOnlyWithATimeOfZero)
{
    const CSignalledEvents oEvents(2);

    EXPECT_EQ(0, WaitForAny(oEvents.Handles(), 0));
    EXPECT_EQ(1, WaitForAny(oEvents.Handles(), 0));
    EXPECT_EQ(-2, WaitForAny(oEvents.Handles(), 0));
    EXPECT_EQ(-2, WaitForAll(oEvents.Handles(), 0));
}

TEST(TOVPlatformMultipleTimedWaitTest, KeepsTheLow32BitsOfTheTime)
{
    const COwnHandle hEvent(Event::Create(false, false, nullptr));
    volatile unsigned long long ullTime = 0x100000000;

    EXPECT_EQ(-2, WaitForAny({hEvent}, static_cast<long>(ullTime)));
    EXPECT_EQ(-2, WaitForAll({hEvent}, static_cast<long>(ullTime)));
}

TEST(TOVPlatformMultipleTimedWaitTest, FailsForABadHandleAtOnceWhateverTheTime)
{
    const COwnHandle hEvent(Event::Create(false, false, nullptr));
    for (const sBadHandle& oBad : BadHandles())
    {
        for (const long lTime : {0l, 1l, DEADLINE, -1l})
        {
            EXPECT_EQ(-1, WaitForAny({hEvent, oBad.hObject}, lTime)) << oBad.szWhat << ' ' << lTime;
            EXPECT_EQ(-1, WaitForAll({hEvent, oBad.hObject}, lTime)) << oBad.szWhat << ' ' << lTime;
        }
    }
}

TEST(TOVPlatformMultipleTimedWaitTest, LeavesNoWaiterBehindWhenItRunsOut)
{
    const COwnHandle hFirst(Event::Create(false, false, nullptr));
    const COwnHandle hSecond(Event::Create(false, false, nullptr));
    EXPECT_EQ(-2, WaitForAny({hFirst, hSecond}, 5));
    EXPECT_EQ(-2, WaitForAll({hFirst, hSecond}, 5));

    Event::Signal(hFirst);
    Event::Signal(hSecond);

    EXPECT_TRUE(TakesNow(hFirst));
    EXPECT_TRUE(TakesNow(hSecond));
}
