// The end of thread objects and their copies, and of threads in ways of their own.
#include "Support/TOVNativeThread.h"
#include "TOVProcess/TOVScriptedThread.h"

#include <cstdio>
#include <exception>
#include <memory>

namespace Thread = TOVPlatform::TOVThread;

namespace
{
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
} // namespace

TEST(CTOVThreadEndTest, DeletesItselfAsItsLastAct)
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

TEST(CTOVThreadEndTest, DoesNotDeleteItselfWhenItsInitInstanceIsFalse)
{
    bool bDeleted = false;
    auto pThread = std::make_unique<CScriptedThread>(true);
    pThread->m_fnInit = [] { return false; };
    pThread->m_fnDelete = [&] { bDeleted = true; };

    ASSERT_TRUE(pThread->RunsToItsEnd());

    EXPECT_FALSE(bDeleted);
    EXPECT_NE(0u, pThread->Id());
}

TEST(CTOVThreadEndTest, DoesNotDeleteItselfUnlessAsked)
{
    bool bDeleted = false;
    CScriptedThread oThread;
    oThread.m_fnDelete = [&] { bDeleted = true; };

    ASSERT_TRUE(oThread.RunsToItsEnd());

    EXPECT_FALSE(bDeleted);
}

TEST(CTOVThreadEndTest, GivesAllItsMembersToACopyWithoutStartingAnything)
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

TEST(CTOVThreadEndTest, GivesAllItsMembersInAnAssignment)
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

TEST(CTOVThreadEndTest, IsOneThreadWithItsCopyButNotOneFlag)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.GetsToWork());
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

TEST(CTOVThreadEndTest, LeavesItsThreadAloneWhenDestroyed)
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

TEST(CTOVThreadEndTest, LeavesItsThreadAloneWhenACopyIsDestroyed)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.GetsToWork());
    {
        const CScriptedThread oCopy(oThread);
    }

    EXPECT_FALSE(oThread.HasEnded());
    EXPECT_TRUE(oThread.IsRunning());
    EXPECT_FALSE(oThread.IsStopPending());
}

TEST(CTOVThreadEndTest, LogsAThreadWithoutAnObjectAndEndsIt)
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

TOV_CHILD(LetsAnExceptionLeaveRun)
{
    CScriptedThread oThread;
    oThread.m_fnRun = [] { throw 5; };
    oThread.StartNormally();
    std::printf("%s\n", oThread.Ends() ? "ended" : "late");
    std::fflush(stdout);
}

TEST(CTOVThreadEndTest, EndsTheProcessWhenAnExceptionLeavesRun)
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

TEST(CTOVThreadEndTest, MayStartInItsConstructor)
{
    const std::string sOutput = RunChild("StartsInItsConstructor").sOutput;

    EXPECT_NE(std::string::npos, sOutput.find("is running, parameter 0, priority 1; started; ended")) << sOutput;
}
