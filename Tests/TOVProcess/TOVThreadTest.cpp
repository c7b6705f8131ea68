#include "TOVProcess/TOVScriptedThread.h"

#include "Support/TOVBlockableThread.h"
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVNativeThread.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <type_traits>

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
static_assert(std::is_abstract<CTOVThread>::value);
static_assert(std::has_virtual_destructor<CTOVThread>::value);

// Opens the private entry function of every thread.
typedef unsigned long (*tThreadProcess)(unsigned long long ullParam);
struct sThreadProcess
{
    friend tThreadProcess ReachFunction(sThreadProcess);
};
template<tThreadProcess pFunction> struct sThreadProcessOpener
{
    friend tThreadProcess ReachFunction(sThreadProcess) { return pFunction; }
};
template struct sThreadProcessOpener<&CTOVThread::ThreadProcess>;

typedef std::vector<std::string> tRecord;

// Records the virtual calls that it gets; its answers can be set.
class CRecordingThread : public CScriptedThread
{
public:
    bool Stop(bool bWait, unsigned long ulTimeout) override
    {
        m_aRecord.push_back("Stop " + std::to_string(bWait) + ' ' + std::to_string(ulTimeout));
        // Less time than asked for: a stubborn Run need not hold the test up.
        return m_bStops ? CTOVThread::Stop(bWait, 0) : false;
    }

    bool IsRunning() const override
    {
        m_aRecord.push_back("IsRunning");
        return m_bAnswers ? m_bRunning : CTOVThread::IsRunning();
    }

    mutable tRecord m_aRecord;
    bool m_bStops = true;
    bool m_bAnswers = false;
    bool m_bRunning = false;
};
} // namespace

TEST(CTOVThreadTest, HasNothingBeforeItsFirstStart)
{
    const CScriptedThread oThread;

    EXPECT_EQ(0ull, oThread.Handle());
    EXPECT_EQ(0u, oThread.Id());
    EXPECT_EQ(0u, oThread.GetUserParam());
    EXPECT_FALSE(oThread.IsRunning());
    EXPECT_FALSE(oThread.IsStopPending());
    EXPECT_FALSE(oThread.DeletesItself());
}

TEST(CTOVThreadTest, HasHandleAndIdWhileItWorks)
{
    CStubbornThread oThread;

    EXPECT_TRUE(oThread.StartNormally());
    EXPECT_TRUE(oThread.m_oEntered.Reaches(1));

    EXPECT_NE(0ull, oThread.Handle());
    EXPECT_NE(0u, oThread.Id());
    EXPECT_TRUE(oThread.IsRunning());
    EXPECT_FALSE(oThread.IsStopPending());
    EXPECT_FALSE(oThread.HasEnded());
}

TEST(CTOVThreadTest, KeepsHandleAndIdWhenAStopIsRequested)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.m_oEntered.Reaches(1));
    const unsigned long ulId = oThread.Id();
    const unsigned long long hThread = oThread.Handle();

    EXPECT_TRUE(oThread.Stop(false, 0));

    EXPECT_EQ(hThread, oThread.Handle());
    EXPECT_EQ(ulId, oThread.Id());
    EXPECT_TRUE(oThread.IsRunning());
    EXPECT_TRUE(oThread.IsStopPending());
}

TEST(CTOVThreadTest, KeepsItsHandleButNotItsIdWhenItHasEnded)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.StartNormally());
    const unsigned long long hThread = oThread.Handle();

    oThread.LetGo();

    EXPECT_EQ(hThread, oThread.Handle());
    EXPECT_EQ(0u, oThread.Id());
    EXPECT_TRUE(oThread.IsRunning());
    EXPECT_FALSE(oThread.IsStopPending());
}

TEST(CTOVThreadTest, RunsItsOperationsInOrderOnTheNewThread)
{
    tRecord aRecord;
    unsigned long aIds[3] = {0, 0, 0};
    CScriptedThread oThread;
    oThread.m_fnInit = [&] {
        aRecord.push_back("init");
        aIds[0] = NativeThreadId();
        return true;
    };
    oThread.m_fnRun = [&] {
        aRecord.push_back("run");
        aIds[1] = NativeThreadId();
    };
    oThread.m_fnExit = [&] {
        aRecord.push_back("exit");
        aIds[2] = NativeThreadId();
    };

    EXPECT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());

    EXPECT_EQ((tRecord{"init", "run", "exit"}), aRecord);
    EXPECT_NE(NativeThreadId(), aIds[0]);
    EXPECT_EQ(aIds[0], aIds[1]);
    EXPECT_EQ(aIds[0], aIds[2]);
}

TEST(CTOVThreadTest, HoldsTheSystemsIdUntilItsLastOperationHasReturned)
{
    unsigned long aHeld[3] = {0, 0, 0};
    unsigned long ulNative = 0;
    CScriptedThread oThread;
    oThread.m_fnInit = [&] {
        ulNative = NativeThreadId();
        aHeld[0] = oThread.Id();
        return true;
    };
    oThread.m_fnRun = [&] { aHeld[1] = oThread.Id(); };
    oThread.m_fnExit = [&] { aHeld[2] = oThread.Id(); };

    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());

    for (const unsigned long ulHeld : aHeld)
        EXPECT_EQ(ulNative, ulHeld);
    EXPECT_EQ(0u, oThread.Id());
}

TEST(CTOVThreadTest, GivesItsParameterToRun)
{
    for (const unsigned long ulParam : {7ul, 0ul, 0x80000000ul, 0xFFFFFFFFul})
    {
        unsigned long ulSeen = 12345;
        CScriptedThread oThread;
        oThread.m_fnRun = [&] { ulSeen = oThread.GetUserParam(); };
        ASSERT_TRUE(oThread.StartNormally(ulParam));
        ASSERT_TRUE(oThread.Ends());
        EXPECT_EQ(ulParam, ulSeen);
        EXPECT_EQ(ulParam, oThread.GetUserParam());
    }
}

TEST(CTOVThreadTest, KeepsTheLow32BitsOfItsParameter)
{
    volatile unsigned long long ullParam = 0x1234567800000005;
    CScriptedThread oThread;

    ASSERT_TRUE(oThread.StartNormally(static_cast<unsigned long>(ullParam)));
    ASSERT_TRUE(oThread.Ends());

    EXPECT_EQ(5u, oThread.GetUserParam());
}

TEST(CTOVThreadTest, RunsAgainAfterItsEnd)
{
    std::vector<unsigned long> aParams;
    CScriptedThread oThread;
    oThread.m_fnRun = [&] { aParams.push_back(oThread.GetUserParam()); };
    ASSERT_TRUE(oThread.StartNormally(1));
    ASSERT_TRUE(oThread.Ends());
    const unsigned long long hFirst = oThread.Handle();
    EXPECT_TRUE(oThread.Stop(false, 0));
    EXPECT_TRUE(oThread.IsStopPending());

    EXPECT_TRUE(oThread.StartNormally(2));
    EXPECT_FALSE(oThread.IsStopPending());
    ASSERT_TRUE(oThread.Ends());

    EXPECT_EQ((std::vector<unsigned long>{1, 2}), aParams);
    EXPECT_NE(hFirst, oThread.Handle());
    EXPECT_TRUE(CScriptedThread::HasEnded(hFirst, 0)) << "not closed";
}

TEST(CTOVThreadTest, CanBeRestartedManyTimes)
{
    const int nStarts = 200;
    int nRuns = 0; // each start waits for the run before it
    CScriptedThread oThread;
    oThread.m_fnRun = [&] { ++nRuns; };

    for (int nStart = 0; nStart < nStarts; ++nStart)
        ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());

    EXPECT_EQ(nStarts, nRuns);
}

TEST(CTOVThreadTest, WaitsForTheRunBeforeItWhenRestarted)
{
    std::atomic<int> nRunning(0);
    std::atomic<int> nMost(0);
    CTally oEntered;
    CScriptedThread oThread;
    oThread.m_fnRun = [&] {
        nMost = std::max<int>(nMost, ++nRunning);
        oEntered.Add();
        while (!oThread.IsStopPending())
            std::this_thread::yield();
        --nRunning;
    };
    for (int nStart = 1; nStart <= 5; ++nStart)
    {
        ASSERT_TRUE(oThread.StartNormally());
        ASSERT_TRUE(oEntered.Reaches(nStart));
    }

    EXPECT_TRUE(oThread.Stop(true, 0xFFFFFFFF));

    EXPECT_EQ(1, nMost);
    EXPECT_EQ(0, nRunning);
}

TEST(CTOVThreadTest, AsksTheOldThreadToStopAndGivesIt10SecondsWhenRestarted)
{
    CRecordingThread oThread;
    ASSERT_TRUE(oThread.StartNormally());
    EXPECT_EQ((tRecord{"IsRunning"}), oThread.m_aRecord);
    ASSERT_TRUE(oThread.Ends());
    oThread.m_aRecord.clear();

    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());

    EXPECT_EQ((tRecord{"IsRunning", "Stop 1 10000", "IsRunning"}), oThread.m_aRecord);
}

TEST(CTOVThreadTest, StopsNothingInAStartIfItsIsRunningIsFalse)
{
    CRecordingThread oThread;
    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());
    oThread.m_bAnswers = true;
    oThread.m_aRecord.clear();

    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());

    EXPECT_EQ((tRecord{"IsRunning"}), oThread.m_aRecord);
}

TEST(CTOVThreadTest, StartsWhateverItsStopGives)
{
    bool bRun = false;
    CRecordingThread oThread;
    oThread.m_fnRun = [&] { bRun = true; };
    oThread.m_bAnswers = true;
    oThread.m_bRunning = true;
    oThread.m_bStops = false;

    EXPECT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());

    EXPECT_EQ((tRecord{"IsRunning", "Stop 1 10000"}), oThread.m_aRecord);
    EXPECT_TRUE(bRun);
}

TEST(CTOVThreadTest, StartsASecondThreadWhenTheFirstDoesNotStop)
{
    CTally oEntered;
    CGate oMayEnd;
    CRecordingThread oThread;
    oThread.m_fnRun = [&] {
        oEntered.Add();
        oMayEnd.Wait();
    };
    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oEntered.Reaches(1));
    const unsigned long long hFirst = oThread.Handle();

    EXPECT_TRUE(oThread.StartNormally());

    EXPECT_TRUE(oEntered.Reaches(2));
    EXPECT_FALSE(oThread.IsStopPending());
    EXPECT_EQ(-2, WaitForAny({hFirst, oThread.Handle()}, 0)) << "both at work";
    EXPECT_NE(hFirst, oThread.Handle());
    oMayEnd.Open();
    EXPECT_LE(0, WaitForAll({hFirst, oThread.Handle()}));
}

TEST(CTOVThreadTest, IsHeldUpBySuchAThreadFor10Seconds)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.m_oEntered.Reaches(1));
    const unsigned long long hFirst = oThread.Handle();
    bool bStarted = false;
    CBlockableThread oStarter([&] { bStarted = oThread.StartNormally(); });
    EXPECT_TRUE(oStarter.IsBlocked());
    EXPECT_TRUE(oThread.IsStopPending());

    EXPECT_TRUE(oStarter.Finishes());

    EXPECT_TRUE(bStarted);
    EXPECT_TRUE(oThread.m_oEntered.Reaches(2));
    EXPECT_FALSE(oThread.IsStopPending());
    EXPECT_EQ(-2, WaitForAny({hFirst, oThread.Handle()}, 0)) << "both at work";
    oThread.LetGo();
    EXPECT_TRUE(CScriptedThread::HasEnded(hFirst, DEADLINE));
}

TEST(CTOVThreadTest, HasNothingToStopBeforeItsFirstStart)
{
    CScriptedThread oThread;

    EXPECT_TRUE(oThread.Stop(false, 0));
    EXPECT_TRUE(oThread.Stop(true, 0));
    EXPECT_TRUE(oThread.Stop(true, 0xFFFFFFFF));

    EXPECT_FALSE(oThread.IsStopPending());
}

TEST(CTOVThreadTest, StopsNothingIfItsIsRunningIsFalse)
{
    CRecordingThread oThread;
    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());
    oThread.m_bAnswers = true;

    EXPECT_TRUE(oThread.Stop(true, 0));

    EXPECT_FALSE(oThread.IsStopPending());
}

TEST(CTOVThreadTest, DoesNotWaitForTheEndUnlessAsked)
{
    for (const unsigned long ulTimeout : {0ul, 10000ul, 0xFFFFFFFFul})
    {
        CStubbornThread oThread;
        ASSERT_TRUE(oThread.StartNormally());
        ASSERT_TRUE(oThread.m_oEntered.Reaches(1));

        EXPECT_TRUE(oThread.Stop(false, ulTimeout));

        EXPECT_TRUE(oThread.IsStopPending()) << ulTimeout;
        EXPECT_FALSE(oThread.HasEnded()) << ulTimeout;
    }
}

TEST(CTOVThreadTest, IsStoppedWithSuccessAlsoWhenTheTimeRunsOut)
{
    for (const unsigned long ulTimeout : {0ul, 1ul, 20ul})
    {
        CStubbornThread oThread;
        ASSERT_TRUE(oThread.StartNormally());
        ASSERT_TRUE(oThread.m_oEntered.Reaches(1));

        EXPECT_TRUE(oThread.Stop(true, ulTimeout));

        EXPECT_TRUE(oThread.IsStopPending()) << ulTimeout;
        EXPECT_FALSE(oThread.HasEnded()) << ulTimeout;
    }
}

TEST(CTOVThreadTest, WaitsForTheEndIfAsked)
{
    for (const unsigned long ulTimeout : {60000ul, 0xFFFFFFFEul, 0xFFFFFFFFul})
    {
        CStubbornThread oThread;
        ASSERT_TRUE(oThread.StartNormally());
        ASSERT_TRUE(oThread.m_oEntered.Reaches(1));
        bool bStopped = false;
        CBlockableThread oStopper([&] { bStopped = oThread.Stop(true, ulTimeout); });
        EXPECT_TRUE(oStopper.IsBlocked()) << ulTimeout;

        oThread.LetGo();

        ASSERT_TRUE(oStopper.Finishes()) << ulTimeout;
        EXPECT_TRUE(bStopped) << ulTimeout;
    }
}

TEST(CTOVThreadTest, IsStoppedAtOnceWhenItHasEnded)
{
    CScriptedThread oThread;
    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());

    EXPECT_TRUE(oThread.Stop(true, 0xFFFFFFFF));

    EXPECT_TRUE(oThread.IsStopPending());
}

TEST(CTOVThreadTest, LetsRunSeeTheRequestToStop)
{
    bool bSeen = false;
    CGate oEntered;
    CScriptedThread oThread;
    oThread.m_fnRun = [&] {
        oEntered.Open();
        while (!oThread.IsStopPending())
            std::this_thread::yield();
        bSeen = true;
    };
    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oEntered.Wait());

    EXPECT_TRUE(oThread.Stop(true, 0xFFFFFFFF));

    EXPECT_TRUE(bSeen);
}

TEST(CTOVThreadTest, MayAskItselfToStop)
{
    bool bPending = false;
    CGate oStarted; // the object has its handle from the end of Start on
    CScriptedThread oThread;
    oThread.m_fnRun = [&] {
        EXPECT_TRUE(oStarted.Wait());
        EXPECT_TRUE(oThread.Stop(false, 0));
        bPending = oThread.IsStopPending();
    };

    ASSERT_TRUE(oThread.StartNormally());
    oStarted.Open();
    ASSERT_TRUE(oThread.Ends());

    EXPECT_TRUE(bPending);
}

TEST(CTOVThreadTest, StartsWithThePriorityThatIsGiven)
{
    const struct
    {
        int nGiven;
        int nExpected;
    } aRows[] = {{0, 0}, {1, 1}, {2, 2}, {3, 3}, {7, 1}, {-1, 1}};
    for (const auto& oRow : aRows)
    {
        CStubbornThread oThread;
        ASSERT_TRUE(oThread.Start(0, static_cast<Thread::eThreadPriority>(oRow.nGiven)));
        EXPECT_EQ(oRow.nExpected, oThread.GetPriority()) << oRow.nGiven;
        EXPECT_EQ(oRow.nExpected, Thread::GetPriority(oThread.Handle())) << oRow.nGiven;
    }
}

TEST(CTOVThreadTest, CanChangeItsPriority)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.StartNormally());
    for (const int nPriority : {3, 0, 2, 1})
    {
        oThread.SetPriority(static_cast<Thread::eThreadPriority>(nPriority));
        EXPECT_EQ(nPriority, oThread.GetPriority());
    }
    oThread.SetPriority(static_cast<Thread::eThreadPriority>(7));
    EXPECT_EQ(Thread::eThreadPriorityNormal, oThread.GetPriority());
}

TEST(CTOVThreadTest, HasNoPriorityBeforeItsFirstStart)
{
    CScriptedThread oThread;

    EXPECT_NO_CHECK(oThread.SetPriority(Thread::eThreadPriorityHigh));

    EXPECT_EQ(-1, oThread.GetPriority());
}

TEST(CTOVThreadTest, EndsAtOnceWhenItsInitInstanceIsFalse)
{
    CLogRecorder oLog;
    unsigned long ulId = 0;
    bool bWorked = false;
    CScriptedThread oThread;
    oThread.m_fnInit = [&] {
        ulId = oThread.Id();
        return false;
    };
    oThread.m_fnRun = oThread.m_fnExit = [&] { bWorked = true; };

    EXPECT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());

    EXPECT_FALSE(bWorked);
    EXPECT_TRUE(oThread.IsRunning());
    EXPECT_NE(0u, oThread.Id());
    EXPECT_EQ(ulId, oThread.Id());
    ASSERT_EQ(1u, oLog.Lines().size());
    const sLogLine oLine = oLog.Lines()[0];
    EXPECT_EQ("CTOVThread::ThreadProcess() : CTOVThread::InitInstance() failed.", oLine.sText);
    EXPECT_EQ(500, oLine.eSeverity);
    EXPECT_NE(std::string::npos, oLine.sFile.find("TOVThread"));
    EXPECT_LT(0u, oLine.ulLine);
}

TEST(CTOVThreadTest, RunsWhenItIsRestartedAfterAFailedInitInstance)
{
    bool bReady = false;
    int nRuns = 0;
    CScriptedThread oThread;
    oThread.m_fnInit = [&] { return bReady; };
    oThread.m_fnRun = [&] { ++nRuns; };
    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());
    bReady = true;

    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());

    EXPECT_EQ(1, nRuns);
    EXPECT_EQ(0u, oThread.Id());
}

TEST(CTOVThreadTest, LogsNothingInAWholeLife)
{
    CLogRecorder oLog;
    CScriptedThread oThread;

    EXPECT_TRUE(oThread.StartNormally());
    EXPECT_TRUE(oThread.Stop(true, 0xFFFFFFFF));
    EXPECT_TRUE(oThread.StartNormally());
    EXPECT_TRUE(oThread.Ends());

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST(CTOVThreadTest, DeletesItselfAsItsLastAct)
{
    tRecord aRecord;
    unsigned long ulIdAtExit = 0;
    unsigned long ulIdAtDelete = 1;
    unsigned long ulNative = 0;
    CGate oMayRun;
    CScriptedThread* pThread = new CScriptedThread(true);
    pThread->m_fnRun = [&] { oMayRun.Wait(); };
    pThread->m_fnExit = [&, pThread] {
        aRecord.push_back("exit");
        ulIdAtExit = pThread->Id();
    };
    pThread->m_fnDelete = [&, pThread] {
        aRecord.push_back("delete");
        ulIdAtDelete = pThread->Id();
        ulNative = NativeThreadId();
    };
    EXPECT_TRUE(pThread->DeletesItself());
    ASSERT_TRUE(pThread->StartNormally());
    const unsigned long long hThread = pThread->Handle();

    oMayRun.Open();
    ASSERT_TRUE(CScriptedThread::HasEnded(hThread, DEADLINE));

    EXPECT_EQ((tRecord{"exit", "delete"}), aRecord);
    EXPECT_EQ(ulNative, ulIdAtExit) << "on the new thread";
    EXPECT_EQ(0u, ulIdAtDelete);
}

TEST(CTOVThreadTest, DoesNotDeleteItselfWhenItsInitInstanceIsFalse)
{
    bool bDeleted = false;
    auto pThread = std::make_unique<CScriptedThread>(true);
    pThread->m_fnInit = [] { return false; };
    pThread->m_fnDelete = [&] { bDeleted = true; };

    ASSERT_TRUE(pThread->StartNormally());
    ASSERT_TRUE(pThread->Ends());

    EXPECT_FALSE(bDeleted);
    EXPECT_NE(0u, pThread->Id());
}

TEST(CTOVThreadTest, DoesNotDeleteItselfUnlessAsked)
{
    bool bDeleted = false;
    CScriptedThread oThread;
    oThread.m_fnDelete = [&] { bDeleted = true; };

    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());

    EXPECT_FALSE(bDeleted);
}

TEST(CTOVThreadTest, GivesAllItsMembersToACopyWithoutStartingAnything)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.Start(9, Thread::eThreadPriorityLow));
    ASSERT_TRUE(oThread.m_oEntered.Reaches(1));
    ASSERT_TRUE(oThread.Stop(false, 0));

    const CScriptedThread oCopy(oThread);

    EXPECT_EQ(oThread.Handle(), oCopy.Handle());
    EXPECT_EQ(oThread.Id(), oCopy.Id());
    EXPECT_EQ(9u, oCopy.GetUserParam());
    EXPECT_TRUE(oCopy.IsStopPending());
    EXPECT_TRUE(oCopy.IsRunning());
    EXPECT_EQ(Thread::eThreadPriorityLow, oCopy.GetPriority());
    EXPECT_FALSE(oCopy.DeletesItself());
    EXPECT_EQ(1, oThread.m_oEntered.Count());
    const CScriptedThread oDeleting(true);
    const CScriptedThread oDeletingCopy(oDeleting);
    EXPECT_TRUE(oDeletingCopy.DeletesItself());
}

TEST(CTOVThreadTest, GivesAllItsMembersInAnAssignment)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.Start(9, Thread::eThreadPriorityLow));
    ASSERT_TRUE(oThread.m_oEntered.Reaches(1));
    CScriptedThread oTarget;

    EXPECT_EQ(&oTarget, &(oTarget = oThread));

    EXPECT_EQ(oThread.Handle(), oTarget.Handle());
    EXPECT_EQ(oThread.Id(), oTarget.Id());
    EXPECT_EQ(9u, oTarget.GetUserParam());
    EXPECT_FALSE(oTarget.IsStopPending());
    EXPECT_EQ(Thread::eThreadPriorityLow, oTarget.GetPriority());
    oTarget = CScriptedThread(true);
    EXPECT_TRUE(oTarget.DeletesItself());
    EXPECT_EQ(0ull, oTarget.Handle());
}

TEST(CTOVThreadTest, IsOneThreadWithItsCopyButNotOneFlag)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.m_oEntered.Reaches(1));
    CScriptedThread oCopy(oThread);

    oCopy.SetPriority(Thread::eThreadPriorityLow);
    EXPECT_TRUE(oCopy.Stop(true, 0));

    EXPECT_EQ(Thread::eThreadPriorityLow, oThread.GetPriority());
    EXPECT_TRUE(oCopy.IsStopPending());
    EXPECT_FALSE(oThread.IsStopPending());
    oThread.LetGo();
    EXPECT_TRUE(oCopy.HasEnded());
    EXPECT_NE(0u, oCopy.Id()) << "only the object that was started is told of the end";
}

TEST(CTOVThreadTest, LeavesItsThreadAloneWhenDestroyed)
{
    static CGate s_oEntered;
    static CGate s_oMayEnd;
    auto pThread = std::make_unique<CScriptedThread>();
    // Touches the object no more, and ends without going back to it.
    pThread->m_fnRun = [] {
        s_oEntered.Open();
        s_oMayEnd.Wait();
        Thread::Exit(0);
    };
    ASSERT_TRUE(pThread->StartNormally());
    ASSERT_TRUE(s_oEntered.Wait());
    const unsigned long long hThread = pThread->Handle();

    pThread.reset();

    EXPECT_EQ(-2, WaitForAny({hThread}, 20)) << "neither stopped, nor waited for, nor closed";
    s_oMayEnd.Open();
    EXPECT_TRUE(CScriptedThread::HasEnded(hThread, DEADLINE));
}

TEST(CTOVThreadTest, LeavesItsThreadAloneWhenACopyIsDestroyed)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.m_oEntered.Reaches(1));
    {
        const CScriptedThread oCopy(oThread);
    }

    EXPECT_FALSE(oThread.HasEnded());
    EXPECT_TRUE(oThread.IsRunning());
    EXPECT_FALSE(oThread.IsStopPending());
}

TEST(CTOVThreadTest, LogsAThreadWithoutAnObjectAndEndsIt)
{
    CLogRecorder oLog;

    const unsigned long long hThread = Thread::Create(ReachFunction(sThreadProcess()), nullptr, nullptr);

    ASSERT_TRUE(CScriptedThread::HasEnded(hThread, DEADLINE));
    ASSERT_EQ(1u, oLog.Lines().size());
    const sLogLine oLine = oLog.Lines()[0];
    EXPECT_EQ("CTOVThread::ThreadProcess() : Invalid thread object pointer specified.", oLine.sText);
    EXPECT_EQ(500, oLine.eSeverity);
    EXPECT_NE(std::string::npos, oLine.sFile.find("TOVThread"));
}

TEST(CTOVThreadTest, IsTheOwnerOfWhatItsRunLeavesLocked)
{
    const COwnHandle hMutex(Mutex::Create(false, nullptr));
    CScriptedThread oThread;
    oThread.m_fnRun = [&] { Mutex::Lock(hMutex); };

    ASSERT_TRUE(oThread.StartNormally());
    ASSERT_TRUE(oThread.Ends());

    EXPECT_EQ(0x80, WaitForAny({hMutex}, 0));
    Mutex::Unlock(hMutex);
}

TEST(CTOVThreadTest, CanBeWaitedForWithManyOthers)
{
    std::vector<std::unique_ptr<CStubbornThread>> aThreads;
    tHandles aHandles;
    for (int nThread = 0; nThread < 64; ++nThread)
    {
        aThreads.push_back(std::make_unique<CStubbornThread>());
        ASSERT_TRUE(aThreads.back()->StartNormally());
        aHandles.push_back(aThreads.back()->Handle());
    }
    EXPECT_EQ(-2, WaitForAny(aHandles, 0));

    aThreads[41]->LetGo();
    EXPECT_EQ(41, WaitForAny(aHandles));
    for (const auto& pThread : aThreads)
        pThread->m_oMayEnd.Open();
    EXPECT_LE(0, WaitForAll(aHandles));
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVThreadTest, HasNothingWhenItsStartFails)
{
    for (const bool bStartedBefore : {false, true})
    {
        CScriptedThread oThread;
        if (bStartedBefore)
        {
            ASSERT_TRUE(oThread.StartNormally());
            ASSERT_TRUE(oThread.Ends());
        }
        bool bStarted = true;
        {
            CExhaustedSystem oNoMore;
            bStarted = oThread.StartNormally(5);
        }
        EXPECT_FALSE(bStarted);
        EXPECT_EQ(0ull, oThread.Handle());
        EXPECT_EQ(0u, oThread.Id());
        EXPECT_EQ(5u, oThread.GetUserParam());
        EXPECT_FALSE(oThread.IsRunning());
        EXPECT_FALSE(oThread.IsStopPending());
    }
}
#endif

TOV_CHILD(LetsAnExceptionLeaveRun)
{
    CScriptedThread oThread;
    oThread.m_fnRun = [] { throw 5; };
    oThread.StartNormally();
    std::printf("%s\n", oThread.Ends() ? "ended" : "late");
    std::fflush(stdout);
}

TEST(CTOVThreadTest, EndsTheProcessWhenAnExceptionLeavesRun)
{
    const sChildResult oResult = RunChild("LetsAnExceptionLeaveRun");

    EXPECT_NE(0, oResult.nExitCode);
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("ended")) << oResult.sOutput;
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("late")) << oResult.sOutput;
}

namespace
{
CGate s_oStartedInside;

// Starts in the constructor of its base class, so that its Run may not be there yet.
class CEarlyThread : public CTOVThread
{
public:
    CEarlyThread() : CTOVThread(false, true) {}

    unsigned long Run() override
    {
        s_oStartedInside.Open();
        return 0;
    }

    unsigned long long Handle() const { return m_hThread; }
};

// The pure Run of the base class ends here.
void EndWithoutRun()
{
    s_oStartedInside.Open();
    Thread::Exit(0);
}
} // namespace

TOV_CHILD(StartsInItsConstructor)
{
    std::set_terminate(&EndWithoutRun);
    CEarlyThread oThread;
    std::printf("%s running, parameter %lu, priority %d; ", oThread.IsRunning() ? "is" : "not", oThread.GetUserParam(),
                static_cast<int>(oThread.GetPriority()));
    std::printf("%s; ", s_oStartedInside.Wait() ? "started" : "late");
    std::printf("%s\n", CScriptedThread::HasEnded(oThread.Handle(), DEADLINE) ? "ended" : "late");
    std::fflush(stdout);
    std::_Exit(0);
}

TEST(CTOVThreadTest, MayStartInItsConstructor)
{
    const std::string sOutput = RunChild("StartsInItsConstructor").sOutput;

    EXPECT_NE(std::string::npos, sOutput.find("is running, parameter 0, priority 1; started; ended")) << sOutput;
}
