// A mutex whose owner ends without an unlock: the next wait gets it, and is told so where its result can tell.
#include "Support/TOVBlockableThread.h"
#include "Support/TOVRowName.h"
#include "Support/TOVWaitInstruments.h"

#include <TOVPlatform/TOVThread.h>

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
constexpr int ABANDONED = 0x80;

typedef std::function<void()> tAction;

unsigned long ReturnFromEntry(unsigned long long ullAction)
{
    (*reinterpret_cast<const tAction*>(static_cast<std::uintptr_t>(ullAction)))();
    return 0;
}

unsigned long ExitFromEntry(unsigned long long ullAction)
{
    ReturnFromEntry(ullAction);
    Thread::Exit(7);
}

// Runs the action on a thread of the library and waits for the thread's end.
void OnLibraryThread(Thread::tThreadEntry pEntry, const tAction& fnAction)
{
    const unsigned long long hThread = Thread::Create(pEntry, const_cast<tAction*>(&fnAction), nullptr);
    ASSERT_NE(0ull, hThread);
    ASSERT_TRUE(Event::TimedWait(hThread, DEADLINE));
}

void OnReturningThread(const tAction& fnAction)
{
    OnLibraryThread(&ReturnFromEntry, fnAction);
}

void OnExitingThread(const tAction& fnAction)
{
    OnLibraryThread(&ExitFromEntry, fnAction);
}

void OnStandardThread(const tAction& fnAction)
{
    OnAnotherThread(fnAction);
}

// Acts when its thread's storage is released. What it does stands elsewhere: it does not look at its own storage.
struct sLateActor
{
    ~sLateActor() { (*s_pAction)(); }
    void Appoint(const tAction& fnAction) { s_pAction = &fnAction; }
    static const tAction* s_pAction;
};

const tAction* sLateActor::s_pAction;

// The thread has not used the library before its storage is released.
void AtReleaseOfThreadStorage(const tAction& fnAction)
{
    OnAnotherThread([&] {
        static thread_local sLateActor s_oActor;
        s_oActor.Appoint(fnAction);
    });
}

// The thread has used the library, but not kept anything, before.
void AtReleaseOfUsedThreadStorage(const tAction& fnAction)
{
    OnAnotherThread([&] {
        static thread_local sLateActor s_oActor;
        s_oActor.Appoint(fnAction);
        const COwnHandle hOther(Mutex::Create(true, nullptr));
        Mutex::Unlock(hOther);
    });
}

// Runs an action on a thread that ends behind it, and waits for that end.
struct sWayToEnd
{
    const char* szName;
    void (*fnRun)(const tAction& fnAction);
};

const sWayToEnd WAYS_TO_END[] = {
    {"Returns", &OnReturningThread},
    {"Exits", &OnExitingThread},
    {"IsForeign", &OnStandardThread},
    {"LocksLate", &AtReleaseOfThreadStorage},
    {"LocksLateAgain", &AtReleaseOfUsedThreadStorage},
};

class TOVPlatformMutexOwnerDeathTest : public testing::TestWithParam<sWayToEnd>
{
protected:
    TOVPlatformMutexOwnerDeathTest() : m_hMutex(Mutex::Create(false, nullptr)) {}

    void LockAndEnd(int nLevels = 1)
    {
        GetParam().fnRun([&] {
            for (int nLevel = 0; nLevel < nLevels; ++nLevel)
                Mutex::Lock(m_hMutex);
        });
    }

    const COwnHandle m_hMutex;
};

INSTANTIATE_TEST_SUITE_P(Owner, TOVPlatformMutexOwnerDeathTest, testing::ValuesIn(WAYS_TO_END), sRowName());
} // namespace

TEST_P(TOVPlatformMutexOwnerDeathTest, IsToldByAWaitForMany)
{
    const COwnHandle hEvent(Event::Create(false, false, nullptr));
    LockAndEnd();

    EXPECT_EQ(ABANDONED + 1, WaitForAny({hEvent, m_hMutex}));

    EXPECT_TRUE(IsLockedForOthers(m_hMutex)) << "owned by the waiter";
    Mutex::Unlock(m_hMutex);
    EXPECT_FALSE(IsLockedForOthers(m_hMutex));
}

TEST_P(TOVPlatformMutexOwnerDeathTest, IsToldByAWaitForAll)
{
    const COwnHandle hEvent(Event::Create(false, true, nullptr));
    LockAndEnd();

    const int nResult = WaitForAll({hEvent, m_hMutex});

    EXPECT_LE(ABANDONED, nResult);
    EXPECT_GT(ABANDONED + 2, nResult);
    EXPECT_FALSE(Event::TimedWait(hEvent, 0)) << "taken with it";
    EXPECT_TRUE(IsLockedForOthers(m_hMutex));
    Mutex::Unlock(m_hMutex);
}

TEST_P(TOVPlatformMutexOwnerDeathTest, MakesATimedWaitTrue)
{
    LockAndEnd();

    EXPECT_TRUE(Event::TimedWait(m_hMutex, 0));

    EXPECT_TRUE(IsLockedForOthers(m_hMutex));
    Mutex::Unlock(m_hMutex);
}

TEST_P(TOVPlatformMutexOwnerDeathTest, LetsAPlainLockThrough)
{
    LockAndEnd();

    Mutex::Lock(m_hMutex);

    EXPECT_TRUE(IsLockedForOthers(m_hMutex));
    Mutex::Unlock(m_hMutex);
    EXPECT_FALSE(IsLockedForOthers(m_hMutex));
}

TEST_P(TOVPlatformMutexOwnerDeathTest, CountsAsLockedForTheOneWhoOwnsItFromThenOn)
{
    LockAndEnd();

    EXPECT_TRUE(Mutex::IsLocked(m_hMutex));

    EXPECT_TRUE(IsLockedForOthers(m_hMutex));
    EXPECT_FALSE(Mutex::IsLocked(m_hMutex)) << "held by the caller";
    Mutex::Unlock(m_hMutex);
    Mutex::Unlock(m_hMutex);
    EXPECT_FALSE(IsLockedForOthers(m_hMutex));
}

TEST_P(TOVPlatformMutexOwnerDeathTest, LeavesNoLevelsToTheNextOwner)
{
    LockAndEnd(3);

    EXPECT_EQ(ABANDONED, WaitForAny({m_hMutex}));
    Mutex::Unlock(m_hMutex);

    EXPECT_FALSE(IsLockedForOthers(m_hMutex));
}

TEST_P(TOVPlatformMutexOwnerDeathTest, IsToldOnce)
{
    LockAndEnd();

    EXPECT_EQ(ABANDONED, WaitForAny({m_hMutex}));
    EXPECT_EQ(0, WaitForAny({m_hMutex})) << "by its owner";
    Mutex::Unlock(m_hMutex);
    Mutex::Unlock(m_hMutex);

    EXPECT_EQ(0, WaitForAny({m_hMutex}));
    Mutex::Unlock(m_hMutex);
}

TEST_P(TOVPlatformMutexOwnerDeathTest, IsToldEachTime)
{
    for (int nDeath = 0; nDeath < 50; ++nDeath)
    {
        LockAndEnd();
        ASSERT_EQ(ABANDONED, WaitForAny({m_hMutex})) << nDeath;
        Mutex::Unlock(m_hMutex);
    }
}

TEST_P(TOVPlatformMutexOwnerDeathTest, IsPassedOverByAThreadThatEndedAsAFormerOwner)
{
    GetParam().fnRun([&] {
        Mutex::Lock(m_hMutex);
        Mutex::Lock(m_hMutex);
        Mutex::Unlock(m_hMutex);
        Mutex::Unlock(m_hMutex);
    });

    EXPECT_EQ(0, WaitForAny({m_hMutex}));
    Mutex::Unlock(m_hMutex);
}

TEST_P(TOVPlatformMutexOwnerDeathTest, IsNotUndoneByAnUnlockOfAnotherThread)
{
    for (int nDeath = 0; nDeath < 20; ++nDeath)
    {
        LockAndEnd();
        // The new thread may have the ended one's id or storage.
        GetParam().fnRun([&] { Mutex::Unlock(m_hMutex); });

        ASSERT_EQ(ABANDONED, WaitForAny({m_hMutex})) << nDeath;
        Mutex::Unlock(m_hMutex);
    }
}

TEST_P(TOVPlatformMutexOwnerDeathTest, MakesNoOwnerOfANewThread)
{
    for (int nDeath = 0; nDeath < 20; ++nDeath)
    {
        LockAndEnd();
        bool bLocked = false;
        GetParam().fnRun([&] {
            bLocked = Mutex::IsLocked(m_hMutex);
            Mutex::Unlock(m_hMutex);
        });
        ASSERT_TRUE(bLocked) << nDeath;
        ASSERT_EQ(0, WaitForAny({m_hMutex})) << nDeath;
        Mutex::Unlock(m_hMutex);
    }
}

TEST_P(TOVPlatformMutexOwnerDeathTest, ReachesAWaiterOfEachForm)
{
    int nAny = 0;
    bool bTimed = false;
    const tAction aWaits[] = {
        [&] { nAny = WaitForAny({m_hMutex}); },
        [&] { bTimed = Event::TimedWait(m_hMutex, -1); },
        [&] { Mutex::Lock(m_hMutex); },
    };
    for (const tAction& fnWait : aWaits)
    {
        const COwnHandle hOwned(Event::Create(true, false, nullptr));
        const COwnHandle hEnd(Event::Create(false, false, nullptr));
        // Started first: Windows starts no thread while the storage of another is being released.
        CBlockableThread oWaiter([&] {
            Event::TimedWait(hOwned, DEADLINE);
            fnWait();
            Mutex::Unlock(m_hMutex);
        });
        EXPECT_TRUE(oWaiter.IsBlocked());
        CBlockableThread oOwner([&] {
            GetParam().fnRun([&] {
                Mutex::Lock(m_hMutex);
                Event::Signal(hOwned);
                Event::TimedWait(hEnd, DEADLINE);
            });
        });
        ASSERT_TRUE(Event::TimedWait(hOwned, DEADLINE));
        EXPECT_TRUE(oWaiter.IsBlocked());

        Event::Signal(hEnd);

        EXPECT_TRUE(oWaiter.Finishes()) << (&fnWait - aWaits);
        EXPECT_TRUE(oOwner.Finishes());
    }
    EXPECT_EQ(ABANDONED, nAny);
    EXPECT_TRUE(bTimed);
}

TEST_P(TOVPlatformMutexOwnerDeathTest, LeavesEachOfManyMutexes)
{
    tHandles aMutexes;
    for (int nMutex = 0; nMutex < 64; ++nMutex)
        aMutexes.push_back(Mutex::Create(false, nullptr));

    GetParam().fnRun([&] { EXPECT_EQ(0, WaitForAll(aMutexes)); });

    for (int nMutex = 0; nMutex < 64; ++nMutex)
        EXPECT_EQ(ABANDONED, WaitForAny(tHandles(aMutexes.begin() + nMutex, aMutexes.end()))) << nMutex;
    OnAnotherThread([&] { EXPECT_EQ(-2, WaitForAny(aMutexes, 0)); });
    for (const unsigned long long hMutex : aMutexes)
        EXPECT_TRUE(Mutex::Destroy(hMutex));
}

TEST(TOVPlatformAbandonedMutexTest, IsToldOfTheLowestObjectThatCanBeHad)
{
    const COwnHandle hEvent(Event::Create(true, true, nullptr));
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    OnAnotherThread([&] { Mutex::Lock(hMutex); });

    EXPECT_EQ(0, WaitForAny({hEvent, hMutex}));
    EXPECT_EQ(ABANDONED, WaitForAny({hMutex, hEvent}));

    Mutex::Unlock(hMutex);
}

TEST(TOVPlatformAbandonedMutexTest, IsKeptByAWaitForAllThatRunsOut)
{
    const COwnHandle hEvent(Event::Create(false, false, nullptr));
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    OnAnotherThread([&] { Mutex::Lock(hMutex); });

    EXPECT_EQ(-2, WaitForAll({hEvent, hMutex}, 20));

    EXPECT_EQ(ABANDONED, WaitForAny({hMutex})) << "still untold";
    Mutex::Unlock(hMutex);
}
