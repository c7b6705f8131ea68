#include "Support/TOVBlockableThread.h"
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVNativeThread.h"
#include "Support/TOVWaitInstruments.h"

#include <TOVPlatform/TOVThread.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <set>

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
typedef std::function<void()> tAction;

// The parameter is a pointer's worth of low bits.
template<class T> T* FromParameter(unsigned long long ullParameter)
{
    return reinterpret_cast<T*>(static_cast<std::uintptr_t>(ullParameter));
}

unsigned long RunAction(unsigned long long ullAction)
{
    (*FromParameter<const tAction>(ullAction))();
    return 0;
}

unsigned long RunActionAndExit(unsigned long long ullAction)
{
    (*FromParameter<const tAction>(ullAction))();
    Thread::Exit(5);
}

bool Ends(unsigned long long hThread)
{
    return hThread != 0 && Event::TimedWait(hThread, DEADLINE);
}

// A thread that runs an action, which has to outlive it.
unsigned long long StartThread(const tAction& fnAction, unsigned long* pulThreadId = nullptr)
{
    return Thread::Create(&RunAction, const_cast<tAction*>(&fnAction), pulThreadId);
}

// A thread that waits until it is let go.
class CHeldThread
{
public:
    CHeldThread() : m_fnAction([this] { m_oGate.Wait(); }), m_hThread(StartThread(m_fnAction, &m_ulId)) {}

    ~CHeldThread() { LetGo(); }

    CHeldThread(const CHeldThread&) = delete;
    CHeldThread& operator=(const CHeldThread&) = delete;

    unsigned long long Handle() const { return m_hThread; }
    unsigned long Id() const { return m_ulId; }

    void LetGo()
    {
        m_oGate.Open();
        EXPECT_TRUE(Ends(m_hThread));
    }

private:
    CGate m_oGate;
    tAction m_fnAction;
    unsigned long m_ulId = 0;
    const unsigned long long m_hThread;
};

// What the system has for a level. A thread for each: not every user may raise what has been lowered.
int NativeLevel(int nPriority)
{
    CHeldThread oThread;
    Thread::SetPriority(oThread.Handle(), static_cast<Thread::eThreadPriority>(nPriority));
    return NativePriority({oThread.Handle(), oThread.Id()});
}

int LowestNativeLevel()
{
    const std::vector<int> aLevels = NativePriorities();
    return *std::min_element(aLevels.begin(), aLevels.end());
}

// In a process whose own priority is the system's lowest, its threads cannot have less.
bool IsNormalTheLowestLevel()
{
    return NativeLevel(1) == LowestNativeLevel();
}

struct sCountsItsEnd
{
    explicit sCountsItsEnd(std::atomic<int>& nSetEnds) : nEnds(nSetEnds) {}
    ~sCountsItsEnd() { ++nEnds; }
    std::atomic<int>& nEnds;
};

// Stands in thread-local storage; its count does not.
struct sCountsItsRelease
{
    sCountsItsRelease() { ++s_nHeld; }
    ~sCountsItsRelease() { --s_nHeld; }
    void Touch() const {}
    static std::atomic<int> s_nHeld;
};

std::atomic<int> sCountsItsRelease::s_nHeld(0);

[[noreturn]] void ExitBelow(std::atomic<int>& nUnwound, int nDepth)
{
    const sCountsItsEnd oLocal(nUnwound);
    try
    {
        if (nDepth == 0)
            Thread::Exit(3);
        ExitBelow(nUnwound, nDepth - 1);
    }
    catch (...)
    {
        ++nUnwound;
        throw;
    }
}
} // namespace

TEST(TOVPlatformThreadTest, RunsItsEntryOnAThreadOfItsOwn)
{
    unsigned long ulIdInside = 0;
    const tAction fnAction = [&] { ulIdInside = NativeThreadId(); };

    const unsigned long long hThread = StartThread(fnAction);

    ASSERT_TRUE(Ends(hThread));
    EXPECT_NE(0u, ulIdInside);
    EXPECT_NE(NativeThreadId(), ulIdInside);
}

TEST(TOVPlatformThreadTest, GetsItsParameterInThePointersWorthOfLowBits)
{
    static std::uintptr_t s_nSeen;
    const Thread::tThreadEntry pEntry = [](unsigned long long ullParameter) -> unsigned long {
        s_nSeen = static_cast<std::uintptr_t>(ullParameter);
        return 0;
    };
    for (const std::uintptr_t nParameter : {std::uintptr_t(0), std::uintptr_t(1), UINTPTR_MAX, UINTPTR_MAX / 2 + 1})
    {
        s_nSeen = 12345;
        ASSERT_TRUE(Ends(Thread::Create(pEntry, reinterpret_cast<void*>(nParameter), nullptr)));
        EXPECT_EQ(nParameter, s_nSeen);
    }
}

TEST(TOVPlatformThreadTest, TellsTheSystemsIdBeforeItsEntryBegins)
{
    for (int nTurn = 0; nTurn < 50; ++nTurn)
    {
        std::atomic<unsigned long> ulSeen(0);
        std::atomic<unsigned long> ulInside(0);
        unsigned long ulId = 0;
        const tAction fnAction = [&] {
            ulSeen = ulId;
            ulInside = NativeThreadId();
        };
        ASSERT_TRUE(Ends(StartThread(fnAction, &ulId)));
        ASSERT_NE(0u, ulId);
        ASSERT_EQ(ulInside, ulSeen);
        ASSERT_EQ(ulInside, ulId);
    }
}

TEST(TOVPlatformThreadTest, HasAnIdAndAHandleOfItsOwn)
{
    CHeldThread aThreads[8];
    std::set<unsigned long> aIds;
    std::set<unsigned long long> aHandles;
    for (const CHeldThread& oThread : aThreads)
    {
        aIds.insert(oThread.Id());
        aHandles.insert(oThread.Handle());
    }

    EXPECT_EQ(8u, aIds.size());
    EXPECT_EQ(8u, aHandles.size());
    EXPECT_EQ(0u, aHandles.count(0));
}

TEST(TOVPlatformThreadTest, RunsAtOnce)
{
    CGate oRunning;
    CGate oMayEnd;
    const tAction fnAction = [&] {
        oRunning.Open();
        oMayEnd.Wait();
    };

    const unsigned long long hThread = StartThread(fnAction);

    EXPECT_TRUE(oRunning.Wait());
    oMayEnd.Open();
    EXPECT_TRUE(Ends(hThread));
}

TEST(TOVPlatformThreadTest, IsSignalledFromItsEndOn)
{
    CHeldThread oThread;
    EXPECT_FALSE(Event::TimedWait(oThread.Handle(), 0));
    EXPECT_EQ(-2, WaitForAny({oThread.Handle()}, 20));

    oThread.LetGo();

    EXPECT_TRUE(Event::TimedWait(oThread.Handle(), 0));
    EXPECT_EQ(0, WaitForAny({oThread.Handle()}, 0));
    EXPECT_EQ(0, WaitForAll({oThread.Handle()}, 0));
    Event::Wait(oThread.Handle());
}

TEST(TOVPlatformThreadTest, IsNoEvent)
{
    CHeldThread oThread;

    Event::Signal(oThread.Handle());
    EXPECT_FALSE(Event::TimedWait(oThread.Handle(), 0));
    oThread.LetGo();
    Event::Reset(oThread.Handle());

    EXPECT_EQ(0, WaitForAny({oThread.Handle()}, 0));
}

TEST(TOVPlatformThreadTest, IsWaitedForByAnyNumberOfThreads)
{
    const int nWaiters = 6;
    CHeldThread oThread;
    CTally oSeen;
    CThreadGroup oWaiters;
    oWaiters.Start(nWaiters, [&](int nWaiter) {
        if (nWaiter % 2 == 0)
            Thread::WaitForExitInfinite(oThread.Handle());
        else
            Thread::WaitForExit(oThread.Handle(), 0xFFFFFFFF);
        oSeen.Add();
    });
    EXPECT_TRUE(oSeen.Stays(0));

    oThread.LetGo();

    EXPECT_TRUE(oSeen.Reaches(nWaiters));
}

TEST(TOVPlatformThreadTest, WaitForExitReturnsWhenTheTimeRunsOut)
{
    CHeldThread oThread;

    Thread::WaitForExit(oThread.Handle(), 0);
    Thread::WaitForExit(oThread.Handle(), 20);

    EXPECT_FALSE(Event::TimedWait(oThread.Handle(), 0)) << "still running";
}

TEST(TOVPlatformThreadTest, WaitForExitTakesUnsignedMilliseconds)
{
    for (const unsigned long ulTime : {60000ul, 0x80000000ul, 0xFFFFFFFEul, 0xFFFFFFFFul})
    {
        CHeldThread oThread;
        CBlockableThread oWaiter([&] { Thread::WaitForExit(oThread.Handle(), ulTime); });
        EXPECT_TRUE(oWaiter.IsBlocked()) << ulTime;

        oThread.LetGo();

        EXPECT_TRUE(oWaiter.Finishes()) << ulTime;
    }
}

TEST(TOVPlatformThreadTest, WaitsReturnAtOnceAfterTheEnd)
{
    CHeldThread oThread;
    oThread.LetGo();

    Thread::WaitForExitInfinite(oThread.Handle());
    Thread::WaitForExit(oThread.Handle(), 0);
    Thread::WaitForExit(oThread.Handle(), 0xFFFFFFFF);
    Thread::WaitForExitInfinite(oThread.Handle());
}

TEST(TOVPlatformThreadTest, WritesAllThatItWroteBeforeItsEnd)
{
    // Seen by the waiter without any other agreement.
    for (const Thread::tThreadEntry pEntry : {&RunAction, &RunActionAndExit})
    {
        int nWritten = 0;
        const tAction fnAction = [&] { nWritten = 7; };
        const unsigned long long hThread = Thread::Create(pEntry, const_cast<tAction*>(&fnAction), nullptr);
        Thread::WaitForExitInfinite(hThread);
        EXPECT_EQ(7, nWritten);
    }
}

TEST(TOVPlatformThreadTest, ExitEndsTheThread)
{
    bool bBefore = false;
    bool bAfter = false;
    const tAction fnAction = [&] {
        bBefore = true;
        // Behind a value that the compiler cannot know, or it would drop the rest.
        volatile bool bAlways = true;
        if (bAlways)
            Thread::Exit(0);
        bAfter = true;
    };

    EXPECT_TRUE(Ends(StartThread(fnAction)));

    EXPECT_TRUE(bBefore);
    EXPECT_FALSE(bAfter);
}

TEST(TOVPlatformThreadTest, ExitDoesNotUnwindTheStack)
{
    std::atomic<int> nUnwound(0);
    const tAction fnAction = [&] { ExitBelow(nUnwound, 5); };

    EXPECT_TRUE(Ends(StartThread(fnAction)));

    EXPECT_EQ(0, nUnwound);
}

TEST(TOVPlatformThreadTest, ReleasesItsThreadLocalStorageHoweverItEnds)
{
    for (const Thread::tThreadEntry pEntry : {&RunAction, &RunActionAndExit})
    {
        int nHeldInside = 0;
        const tAction fnAction = [&] {
            static thread_local const sCountsItsRelease s_oFirst;
            static thread_local const sCountsItsRelease s_oSecond;
            s_oFirst.Touch();
            s_oSecond.Touch();
            nHeldInside = sCountsItsRelease::s_nHeld;
        };

        EXPECT_TRUE(Ends(Thread::Create(pEntry, const_cast<tAction*>(&fnAction), nullptr)));

        EXPECT_EQ(2, nHeldInside);
        EXPECT_EQ(0, sCountsItsRelease::s_nHeld);
    }
}

TEST(TOVPlatformThreadTest, ManyRunAndEndOneAfterTheOther)
{
    const int nThreads = 300;
    std::atomic<int> nRun(0);
    const tAction fnAction = [&] { ++nRun; };

    for (int nThread = 0; nThread < nThreads; ++nThread)
        ASSERT_TRUE(Ends(Thread::Create(nThread % 2 == 0 ? &RunAction : &RunActionAndExit,
                                        const_cast<tAction*>(&fnAction), nullptr)));

    EXPECT_EQ(nThreads, nRun);
}

TEST(TOVPlatformThreadTest, StartsThreadsThatStartThreads)
{
    std::atomic<int> nRun(0);
    const tAction fnInner = [&] { ++nRun; };
    const tAction fnOuter = [&] { nRun += Ends(StartThread(fnInner)) ? 1 : 0; };

    EXPECT_TRUE(Ends(StartThread(fnOuter)));

    EXPECT_EQ(2, nRun);
}

TEST(TOVPlatformThreadTest, KeepsItsHandleWhileLaterThreadsGetOthers)
{
    const tAction fnNothing = [] {};
    const unsigned long long hFirst = StartThread(fnNothing);
    ASSERT_TRUE(Ends(hFirst));
    std::set<unsigned long long> aHandles = {hFirst};
    for (int nThread = 0; nThread < 50; ++nThread)
    {
        const unsigned long long hThread = StartThread(fnNothing);
        ASSERT_TRUE(Ends(hThread));
        aHandles.insert(hThread);
    }

    EXPECT_EQ(51u, aHandles.size());
    EXPECT_EQ(0, WaitForAny({hFirst}, 0));
}

TOV_CHILD(EndsWithThreadsRunning)
{
    static const unsigned long long s_hNever = Event::Create(true, false, nullptr);
    static const tAction s_fnWait = [] { Event::Wait(s_hNever); };
    static CTally s_oBusy;
    static const tAction s_fnBusy = [] {
        s_oBusy.Add();
        for (;;)
            TakesNow(s_hNever);
    };
    StartThread(s_fnWait);
    StartThread(s_fnBusy);
    std::printf("%s\n", s_oBusy.Reaches(1) ? "running" : "late");
    std::fflush(stdout);
}

TEST(TOVPlatformThreadTest, DoesNotKeepItsProcessAlive)
{
    const sChildResult oResult = RunChild("EndsWithThreadsRunning");

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sOutput;
    EXPECT_NE(std::string::npos, oResult.sOutput.find("running"));
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(TOVPlatformThreadTest, IsZeroWhenTheSystemHasNoMore)
{
    bool bRun = false;
    const tAction fnAction = [&] { bRun = true; };
    unsigned long long hThread = 1;
    {
        CExhaustedSystem oNoMore;
        hThread = StartThread(fnAction);
    }
    EXPECT_EQ(0ull, hThread);
    EXPECT_FALSE(bRun);
}
#endif

TEST(TOVPlatformThreadTest, LogsNothing)
{
    CLogRecorder oLog;
    const tAction fnNothing = [] {};

    EXPECT_TRUE(Ends(Thread::Create(&RunActionAndExit, const_cast<tAction*>(&fnNothing), nullptr)));
    Thread::WaitForExitInfinite(0);
    Thread::SetPriority(0, Thread::eThreadPriorityHigh);

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST(TOVPlatformThreadPriorityTest, HasTheNumbersOfTheExportedDesign)
{
    EXPECT_EQ(0, Thread::eThreadPriorityLow);
    EXPECT_EQ(1, Thread::eThreadPriorityNormal);
    EXPECT_EQ(2, Thread::eThreadPriorityHigh);
    EXPECT_EQ(3, Thread::eThreadPriorityTimeCritical);
}

TEST(TOVPlatformThreadPriorityTest, IsNormalAtFirst)
{
    CHeldThread oThread;

    EXPECT_EQ(Thread::eThreadPriorityNormal, Thread::GetPriority(oThread.Handle()));
}

TEST(TOVPlatformThreadPriorityTest, ReadsBackAsItWasSet)
{
    CHeldThread oThread;
    for (const int nPriority : {3, 0, 2, 1, 3, 1, 0, 3, 2, 2, 0, 1})
    {
        Thread::SetPriority(oThread.Handle(), static_cast<Thread::eThreadPriority>(nPriority));
        EXPECT_EQ(nPriority, Thread::GetPriority(oThread.Handle()));
    }
}

TEST(TOVPlatformThreadPriorityTest, IsNormalForAnyOtherValue)
{
    CHeldThread oThread;
    for (const int nPriority : {7, 4, -1, -2, 15, 0x7FFFFFFF, -0x7FFFFFFF - 1})
    {
        Thread::SetPriority(oThread.Handle(), Thread::eThreadPriorityLow);
        Thread::SetPriority(oThread.Handle(), static_cast<Thread::eThreadPriority>(nPriority));
        EXPECT_EQ(Thread::eThreadPriorityNormal, Thread::GetPriority(oThread.Handle())) << nPriority;
    }
}

TEST(TOVPlatformThreadPriorityTest, BelongsToOneThread)
{
    CHeldThread oFirst;
    CHeldThread oSecond;

    Thread::SetPriority(oFirst.Handle(), Thread::eThreadPriorityLow);

    EXPECT_EQ(Thread::eThreadPriorityNormal, Thread::GetPriority(oSecond.Handle()));
    EXPECT_EQ(Thread::eThreadPriorityLow, Thread::GetPriority(oFirst.Handle()));
}

TEST(TOVPlatformThreadPriorityTest, ReachesTheSystemInTheOrderOfUrgency)
{
    EXPECT_EQ(IsNormalTheLowestLevel(), NativeLevel(0) == NativeLevel(1));
    EXPECT_LE(NativeLevel(0), NativeLevel(1));
    // Not every user may ask for more than normal.
    EXPECT_LE(NativeLevel(1), NativeLevel(2));
    EXPECT_LE(NativeLevel(2), NativeLevel(3));
}

TEST(TOVPlatformThreadPriorityTest, IsMinusOneForAPriorityOfTheSystemThatHasNoEnumerator)
{
    const std::set<int> aKnown = {NativeLevel(0), NativeLevel(1), NativeLevel(2), NativeLevel(3)};
    int nForeign = 0;
    for (const int nPriority : NativePriorities())
    {
        CHeldThread oThread;
        if (aKnown.count(nPriority) == 0 && SetNativePriority({oThread.Handle(), oThread.Id()}, nPriority))
        {
            ++nForeign;
            EXPECT_EQ(-1, Thread::GetPriority(oThread.Handle())) << nPriority;
        }
    }
    // Not every user may raise what is the lowest, or nearly.
    EXPECT_LE(std::min(3, *aKnown.begin() - LowestNativeLevel()), nForeign);
}

TEST(TOVPlatformThreadPriorityTest, IsReadFromTheSystem)
{
    CHeldThread oThread;

    ASSERT_TRUE(SetNativePriority({oThread.Handle(), oThread.Id()}, NativeLevel(0)));

    // Where the process has the lowest level itself, nothing has changed.
    EXPECT_EQ(IsNormalTheLowestLevel() ? Thread::eThreadPriorityNormal : Thread::eThreadPriorityLow,
              Thread::GetPriority(oThread.Handle()));
}
