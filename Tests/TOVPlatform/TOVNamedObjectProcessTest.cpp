// Events, mutexes and semaphores that have a name, between processes.
#include "Support/TOVBlockableThread.h"
#include "Support/TOVSay.h"
#include "Support/TOVWaitInstruments.h"

#include <cstdio>
#include <cstdlib>

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

namespace
{
constexpr int ABANDONED = 0x80;

typedef std::vector<std::string> tArguments;

// How a process can end with objects open and mutexes owned.
const char* const WAYS_TO_END[] = {"return", "at once", "crash"};

void EndProcess(const std::string& sWay)
{
    if (sWay == "at once")
        std::_Exit(0);
    if (sWay == "crash")
        std::abort();
}

unsigned long long OpenEvent(const std::string& sName)
{
    return Event::Create(false, false, sName.c_str());
}

unsigned long long OpenMutex(const std::string& sName)
{
    return Mutex::Create(false, sName.c_str());
}

unsigned long long OpenSemaphore(const std::string& sName, long lInitial, long lMaximum)
{
    return Semaphore::Create(lInitial, lMaximum, sName.c_str());
}

// A child process that runs beside the test.
class CChild
{
public:
    CChild(const std::string& sScenario, const tArguments& aArguments)
        : m_oResult{-1, ""}, m_oThread([=] { m_oResult = RunChild(sScenario, aArguments); })
    {
    }

    ~CChild()
    {
        if (m_oThread.joinable())
            m_oThread.join();
    }

    CChild(const CChild&) = delete;
    CChild& operator=(const CChild&) = delete;

    // Waits for its end.
    const sChildResult& Result()
    {
        if (m_oThread.joinable())
            m_oThread.join();
        return m_oResult;
    }

private:
    sChildResult m_oResult;
    std::thread m_oThread; // last, since it uses the others at once
};
} // namespace

// Signals the event once.
TOV_CHILD(SignalsNamedEvent)
{
    Event::Signal(OpenEvent(aArguments[0]));
}

// Waits for the event.
TOV_CHILD(AwaitsNamedEvent)
{
    const unsigned long long hEvent = OpenEvent(aArguments[0]);
    Event::Signal(OpenEvent(aArguments[1]));
    std::exit(Event::TimedWait(hEvent, DEADLINE) ? 7 : 1);
}

// Owns the mutex from before it signals until it is told to end.
TOV_CHILD(OwnsNamedMutex)
{
    const unsigned long long hMutex = OpenMutex(aArguments[0]);
    Mutex::Lock(hMutex);
    Mutex::Lock(hMutex);
    Event::Signal(OpenEvent(aArguments[1]));
    Event::TimedWait(OpenEvent(aArguments[2]), DEADLINE);
    if (aArguments[3] == "unlock")
    {
        Mutex::Unlock(hMutex);
        Mutex::Unlock(hMutex);
    }
    EndProcess(aArguments[3]);
}

// Owns the mutex on a second thread, which ends long before the process.
TOV_CHILD(AbandonsNamedMutexByAThread)
{
    const unsigned long long hMutex = OpenMutex(aArguments[0]);
    OnAnotherThread([&] { Mutex::Lock(hMutex); });
    Event::Signal(OpenEvent(aArguments[1]));
    Event::TimedWait(OpenEvent(aArguments[2]), DEADLINE);
}

// Tells how it gets a mutex that somebody else has.
TOV_CHILD(AwaitsNamedMutex)
{
    const unsigned long long hMutex = OpenMutex(aArguments[0]);
    Say(Mutex::IsLocked(hMutex) ? "locked" : "free");
    Event::Signal(OpenEvent(aArguments[1]));
    Say(std::to_string(WaitForAny({hMutex})).c_str());
    Mutex::Unlock(hMutex);
}

// Raises a number in a file, under a mutex.
TOV_CHILD(CountsUnderNamedMutex)
{
    const unsigned long long hMutex = OpenMutex(aArguments[0]);
    for (int nTurn = 0; nTurn < 200; ++nTurn)
    {
        Mutex::Lock(hMutex);
        WriteWholeFile(aArguments[1], std::to_string(std::stoi(ReadWholeFile(aArguments[1])) + 1));
        Mutex::Unlock(hMutex);
    }
}

// Creates an object of each kind that cannot be had, and leaves them.
TOV_CHILD(LeavesNamedObjects)
{
    const unsigned long long hEvent = OpenEvent(aArguments[0]);
    const unsigned long long hMutex = OpenMutex(aArguments[1]);
    const unsigned long long hSemaphore = OpenSemaphore(aArguments[2], 0, 1);
    Mutex::Lock(hMutex);
    Say(hEvent != 0 && hMutex != 0 && hSemaphore != 0 ? "created" : "failed");
    EndProcess(aArguments[3]);
}

// Takes one unit of the semaphore and ends with it.
TOV_CHILD(TakesFromNamedSemaphore)
{
    Semaphore::Lock(OpenSemaphore(aArguments[0], 9, 9));
    EndProcess(aArguments[1]);
}

// Gives units to the semaphore.
TOV_CHILD(GivesToNamedSemaphore)
{
    std::exit(static_cast<int>(Semaphore::Unlock(OpenSemaphore(aArguments[0], 1, 1), 2)));
}

// Waits for all of three objects.
TOV_CHILD(AwaitsAllNamed)
{
    const unsigned long long hEvent = OpenEvent(aArguments[0]);
    const unsigned long long hMutex = OpenMutex(aArguments[1]);
    const unsigned long long hSemaphore = OpenSemaphore(aArguments[2], 0, 1);
    Event::Signal(OpenEvent(aArguments[3]));
    Say(WaitForAll({hEvent, hMutex, hSemaphore}) >= 0 ? "all" : "failed");
    Say(TakesNow(hEvent) || TakesNow(hSemaphore) ? "left over" : "taken");
    Mutex::Unlock(hMutex);
}

// Passes signals of one event on to another, for a number of turns.
TOV_CHILD(PassesSignalsOn)
{
    const unsigned long long hFrom = OpenEvent(aArguments[0]);
    const unsigned long long hTo = OpenEvent(aArguments[1]);
    for (int nTurn = 0; nTurn < std::stoi(aArguments[2]); ++nTurn)
    {
        if (!Event::TimedWait(hFrom, DEADLINE))
            std::exit(1);
        Event::Signal(hTo);
    }
}

class TOVPlatformNamedObjectProcessTest : public testing::Test
{
protected:
    const std::string m_sName = UniqueName();
    const std::string m_sReady = UniqueName();
    const std::string m_sGo = UniqueName();
    const COwnHandle m_hReady{OpenEvent(m_sReady)};
    const COwnHandle m_hGo{OpenEvent(m_sGo)};
};

TEST_F(TOVPlatformNamedObjectProcessTest, SignalsAnEventFromAnotherProcess)
{
    const COwnHandle hEvent(OpenEvent(m_sName));
    CChild oChild("SignalsNamedEvent", {m_sName});

    EXPECT_TRUE(Event::TimedWait(hEvent, DEADLINE));

    EXPECT_EQ(0, oChild.Result().nExitCode);
    EXPECT_FALSE(TakesNow(hEvent));
}

TEST_F(TOVPlatformNamedObjectProcessTest, ReleasesAWaiterOfAnotherProcess)
{
    const COwnHandle hEvent(OpenEvent(m_sName));
    CChild oChild("AwaitsNamedEvent", {m_sName, m_sReady});
    ASSERT_TRUE(Event::TimedWait(m_hReady, DEADLINE));

    Event::Signal(hEvent);

    EXPECT_EQ(7, oChild.Result().nExitCode);
    EXPECT_FALSE(TakesNow(hEvent));
}

TEST_F(TOVPlatformNamedObjectProcessTest, KeepsAnEventAsItWasMade)
{
    const COwnHandle hEvent(Event::Create(true, true, m_sName.c_str()));

    EXPECT_EQ(7, RunChild("AwaitsNamedEvent", {m_sName, m_sReady}).nExitCode);

    EXPECT_TRUE(TakesNow(hEvent));
}

TEST_F(TOVPlatformNamedObjectProcessTest, PassesSignalsBackAndForth)
{
    const std::string sThere = UniqueName();
    const std::string sBack = UniqueName();
    const COwnHandle hThere(OpenEvent(sThere));
    const COwnHandle hBack(OpenEvent(sBack));
    CChild oChild("PassesSignalsOn", {sThere, sBack, "500"});

    for (int nTurn = 0; nTurn < 500; ++nTurn)
    {
        Event::Signal(hThere);
        ASSERT_TRUE(Event::TimedWait(hBack, DEADLINE)) << nTurn;
    }

    EXPECT_EQ(0, oChild.Result().nExitCode);
}

TEST_F(TOVPlatformNamedObjectProcessTest, KeepsOthersOutWhileAProcessOwnsTheMutex)
{
    const COwnHandle hMutex(OpenMutex(m_sName));
    CChild oChild("OwnsNamedMutex", {m_sName, m_sReady, m_sGo, "unlock"});
    ASSERT_TRUE(Event::TimedWait(m_hReady, DEADLINE));

    EXPECT_TRUE(Mutex::IsLocked(hMutex));
    EXPECT_EQ(-2, WaitForAny({hMutex}, 20));
    Mutex::Unlock(hMutex);
    EXPECT_FALSE(Event::TimedWait(hMutex, 0)) << "not unlocked from here";
    Event::Signal(m_hGo);

    EXPECT_EQ(0, WaitForAny({hMutex}));
    Mutex::Unlock(hMutex);
    EXPECT_EQ(0, oChild.Result().nExitCode);
}

TEST_F(TOVPlatformNamedObjectProcessTest, TellsTheDeathOfAnOwnerThatWasAProcess)
{
    for (const char* szWay : WAYS_TO_END)
    {
        const COwnHandle hMutex(OpenMutex(m_sName));
        CChild oChild("OwnsNamedMutex", {m_sName, m_sReady, m_sGo, szWay});
        ASSERT_TRUE(Event::TimedWait(m_hReady, DEADLINE));
        Event::Signal(m_hGo);
        oChild.Result();

        EXPECT_EQ(ABANDONED, WaitForAny({hMutex})) << szWay;
        Mutex::Unlock(hMutex);
        EXPECT_FALSE(IsLockedForOthers(hMutex)) << szWay;
    }
}

TEST_F(TOVPlatformNamedObjectProcessTest, CountsTheMutexOfADeadProcessAsLocked)
{
    for (const char* szWay : WAYS_TO_END)
    {
        const COwnHandle hMutex(OpenMutex(m_sName));
        Event::Signal(m_hGo);
        RunChild("OwnsNamedMutex", {m_sName, m_sReady, m_sGo, szWay});

        EXPECT_TRUE(Mutex::IsLocked(hMutex)) << szWay;
        EXPECT_TRUE(IsLockedForOthers(hMutex)) << "owned from then on";
        Mutex::Unlock(hMutex);
    }
}

TEST_F(TOVPlatformNamedObjectProcessTest, ReachesAWaiterWhenTheOwningProcessEnds)
{
    for (const char* szWay : WAYS_TO_END)
    {
        const COwnHandle hMutex(OpenMutex(m_sName));
        const COwnHandle hNever(Event::Create(false, false, nullptr));
        CChild oChild("OwnsNamedMutex", {m_sName, m_sReady, m_sGo, szWay});
        ASSERT_TRUE(Event::TimedWait(m_hReady, DEADLINE));
        int nSingle = 0;
        int nMany = 0;
        CBlockableThread oSingle([&] {
            nSingle = WaitForAny({hMutex});
            Mutex::Unlock(hMutex);
        });
        CBlockableThread oMany([&] {
            nMany = WaitForAny({hNever, hMutex});
            Mutex::Unlock(hMutex);
        });
        EXPECT_TRUE(oSingle.IsBlocked());
        EXPECT_TRUE(oMany.IsBlocked());

        Event::Signal(m_hGo);

        ASSERT_TRUE(oSingle.Finishes()) << szWay;
        ASSERT_TRUE(oMany.Finishes()) << szWay;
        EXPECT_EQ(ABANDONED + 1, nSingle + nMany) << "one of them is told, " << szWay;
    }
}

TEST_F(TOVPlatformNamedObjectProcessTest, TellsTheDeathOfAThreadOfAnotherProcess)
{
    const COwnHandle hMutex(OpenMutex(m_sName));
    CChild oChild("AbandonsNamedMutexByAThread", {m_sName, m_sReady, m_sGo});
    ASSERT_TRUE(Event::TimedWait(m_hReady, DEADLINE));

    EXPECT_EQ(ABANDONED, WaitForAny({hMutex}));

    Mutex::Unlock(hMutex);
    Event::Signal(m_hGo);
    EXPECT_EQ(0, oChild.Result().nExitCode);
}

TEST_F(TOVPlatformNamedObjectProcessTest, GivesTheMutexToAnotherProcess)
{
    const COwnHandle hMutex(Mutex::Create(true, m_sName.c_str()));
    CChild oChild("AwaitsNamedMutex", {m_sName, m_sReady});
    ASSERT_TRUE(Event::TimedWait(m_hReady, DEADLINE));

    Mutex::Unlock(hMutex);

    EXPECT_EQ("locked; 0; ", oChild.Result().sOutput);
}

TEST_F(TOVPlatformNamedObjectProcessTest, TellsAnotherProcessOfTheDeathOfAThread)
{
    const COwnHandle hMutex(OpenMutex(m_sName));
    CWorker oOwner;
    oOwner.Do([&] { Mutex::Lock(hMutex); });
    CChild oChild("AwaitsNamedMutex", {m_sName, m_sReady});
    ASSERT_TRUE(Event::TimedWait(m_hReady, DEADLINE));

    oOwner.End();

    EXPECT_EQ("locked; 128; ", oChild.Result().sOutput);
}

TEST_F(TOVPlatformNamedObjectProcessTest, LetsOneProcessInAtATime)
{
    const int nChildren = 4;
    const CTempFolder oFolder;
    const std::string sFile = oFolder.File("count");
    WriteWholeFile(sFile, "0");
    const COwnHandle hMutex(OpenMutex(m_sName));
    CThreadGroup oThreads;

    oThreads.Start(nChildren, [&](int) {
        EXPECT_EQ(0, RunChild("CountsUnderNamedMutex", {m_sName, sFile}).nExitCode);
    });
    oThreads.Join();

    EXPECT_EQ(std::to_string(200 * nChildren), ReadWholeFile(sFile));
}

TEST_F(TOVPlatformNamedObjectProcessTest, IsGoneWithTheLastProcessThatHadIt)
{
    for (const char* szWay : WAYS_TO_END)
    {
        const std::string sMutex = UniqueName();
        const std::string sSemaphore = UniqueName();
        const sChildResult oResult = RunChild("LeavesNamedObjects", {m_sName, sMutex, sSemaphore, szWay});
        EXPECT_NE(std::string::npos, oResult.sOutput.find("created; ")) << oResult.sOutput;

        const COwnHandle hEvent(Event::Create(false, true, m_sName.c_str()));
        EXPECT_TRUE(TakesNow(hEvent)) << "made anew after: " << szWay;
        const COwnHandle hMutex(OpenMutex(sMutex));
        EXPECT_EQ(0, WaitForAny({hMutex}, 0)) << "not abandoned after: " << szWay;
        Mutex::Unlock(hMutex);
        const COwnHandle hSemaphore(OpenSemaphore(sSemaphore, 1, 1));
        EXPECT_TRUE(TakesNow(hSemaphore)) << "made anew after: " << szWay;
    }
}

TEST_F(TOVPlatformNamedObjectProcessTest, LeavesItsNameToAnotherKindWhenItsProcessHasEnded)
{
    for (const char* szWay : WAYS_TO_END)
    {
        const std::string sMutex = UniqueName();
        const std::string sSemaphore = UniqueName();
        RunChild("LeavesNamedObjects", {m_sName, sMutex, sSemaphore, szWay});

        const COwnHandle hMutex(Mutex::Create(false, m_sName.c_str()));
        const COwnHandle hSemaphore(Semaphore::Create(1, 1, sMutex.c_str()));
        const COwnHandle hEvent(Event::Create(false, false, sSemaphore.c_str()));
        EXPECT_NE(0ull, hMutex) << szWay;
        EXPECT_NE(0ull, hSemaphore) << szWay;
        EXPECT_NE(0ull, hEvent) << szWay;
    }
}

TEST_F(TOVPlatformNamedObjectProcessTest, OutlivesTheProcessThatCreatedIt)
{
    CChild oCreator("OwnsNamedMutex", {m_sName, m_sReady, m_sGo, "crash"});
    ASSERT_TRUE(Event::TimedWait(m_hReady, DEADLINE));
    const COwnHandle hMutex(OpenMutex(m_sName));
    Event::Signal(m_hGo);
    oCreator.Result();

    EXPECT_EQ("locked; 0; ", RunChild("AwaitsNamedMutex", {m_sName, m_sReady}).sOutput) << "abandoned, then its own";
}

TEST_F(TOVPlatformNamedObjectProcessTest, CountsUnitsThatAnotherProcessTook)
{
    for (const char* szWay : WAYS_TO_END)
    {
        const COwnHandle hSemaphore(OpenSemaphore(m_sName, 2, 5));

        RunChild("TakesFromNamedSemaphore", {m_sName, szWay});

        EXPECT_EQ(1, Semaphore::Unlock(hSemaphore, 1)) << "not given back at the end, " << szWay;
    }
}

TEST_F(TOVPlatformNamedObjectProcessTest, CountsUnitsThatAnotherProcessGave)
{
    const COwnHandle hSemaphore(OpenSemaphore(m_sName, 3, 5));

    EXPECT_EQ(3, RunChild("GivesToNamedSemaphore", {m_sName}).nExitCode) << "the count before";

    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, 1)) << "at its maximum";
}

TEST_F(TOVPlatformNamedObjectProcessTest, GivesAllObjectsOfAWaitToAnotherProcess)
{
    const std::string sMutex = UniqueName();
    const std::string sSemaphore = UniqueName();
    const COwnHandle hEvent(OpenEvent(m_sName));
    const COwnHandle hMutex(Mutex::Create(true, sMutex.c_str()));
    const COwnHandle hSemaphore(OpenSemaphore(sSemaphore, 0, 1));
    CChild oChild("AwaitsAllNamed", {m_sName, sMutex, sSemaphore, m_sReady});
    ASSERT_TRUE(Event::TimedWait(m_hReady, DEADLINE));

    Semaphore::Unlock(hSemaphore, 1);
    Event::Signal(hEvent);
    EXPECT_TRUE(TakesNow(hSemaphore)) << "not taken while the mutex is missing";
    EXPECT_EQ(0, Semaphore::Unlock(hSemaphore, 1));
    Mutex::Unlock(hMutex);

    EXPECT_EQ("all; taken; ", oChild.Result().sOutput);
}
