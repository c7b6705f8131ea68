// A thread from its start to its end: handle and id, its operations, parameter and priority.
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVLayout.h"
#include "Support/TOVNativeThread.h"
#include "TOVProcess/TOVScriptedThread.h"

#include <cstdio>
#include <type_traits>

namespace Thread = TOVPlatform::TOVThread;

namespace
{
static_assert(std::is_abstract<CTOVThread>::value);
static_assert(std::has_virtual_destructor<CTOVThread>::value);
} // namespace

namespace
{
// Reaches the members as any subclass may.
class CReachingThread : public CTOVThread
{
public:
    unsigned long Run() override { return 0; }

    std::string Print()
    {
        unsigned long& rThreadId = m_ulThreadId;
        unsigned long long& rThread = m_hThread;
        unsigned long* const pUserParam = &m_ulUserParam;
        bool* const pStopPending = &m_bStopPending;
        bool& rAutoDelete = m_bAutoDelete;
        char szText[128];
        std::snprintf(szText, sizeof(szText), "%lu %llu %lu %d %d", rThreadId, rThread, *pUserParam, *pStopPending,
                      rAutoDelete);
        return szText;
    }
};
} // namespace

TEST(CTOVThreadTest, HasMembersOfPlainTypesForItsSubclasses)
{
    CReachingThread oThread;

    EXPECT_EQ("0 0 0 0 0", oThread.Print());
    EXPECT_EQ((SizeWithMembers<unsigned long, unsigned long long, unsigned long, bool, bool>()), sizeof(CTOVThread));
}

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

    ASSERT_TRUE(oThread.GetsToWork());

    EXPECT_NE(0ull, oThread.Handle());
    EXPECT_NE(0u, oThread.Id());
    EXPECT_TRUE(oThread.IsRunning());
    EXPECT_FALSE(oThread.IsStopPending());
    EXPECT_FALSE(oThread.HasEnded());
}

TEST(CTOVThreadTest, KeepsHandleAndIdWhenAStopIsRequested)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.GetsToWork());
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

    ASSERT_TRUE(oThread.RunsToItsEnd());

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

    ASSERT_TRUE(oThread.RunsToItsEnd());

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
        ASSERT_TRUE(oThread.RunsToItsEnd(ulParam));
        EXPECT_EQ(ulParam, ulSeen);
        EXPECT_EQ(ulParam, oThread.GetUserParam());
    }
}

TEST(CTOVThreadTest, KeepsTheLow32BitsOfItsParameter)
{
    volatile unsigned long long ullParam = 0x1234567800000005;
    CScriptedThread oThread;

    ASSERT_TRUE(oThread.RunsToItsEnd(static_cast<unsigned long>(ullParam)));

    EXPECT_EQ(5u, oThread.GetUserParam());
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

    ASSERT_TRUE(oThread.RunsToItsEnd());

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
    ASSERT_TRUE(oThread.RunsToItsEnd());
    bReady = true;

    ASSERT_TRUE(oThread.RunsToItsEnd());

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

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVThreadTest, HasNothingWhenItsStartFails)
{
    for (const bool bStartedBefore : {false, true})
    {
        CScriptedThread oThread;
        if (bStartedBefore)
        {
            ASSERT_TRUE(oThread.RunsToItsEnd());
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
