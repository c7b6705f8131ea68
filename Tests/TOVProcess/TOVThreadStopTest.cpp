// Threads that are stopped and started again.
#include "Support/TOVBlockableThread.h"
#include "TOVProcess/TOVScriptedThread.h"

#include <algorithm>

TEST(CTOVThreadStopTest, RunsAgainAfterItsEnd)
{
    std::vector<unsigned long> aParams;
    CScriptedThread oThread;
    oThread.m_fnRun = [&] { aParams.push_back(oThread.GetUserParam()); };
    ASSERT_TRUE(oThread.RunsToItsEnd(1));
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

TEST(CTOVThreadStopTest, CanBeRestartedManyTimes)
{
    const int nStarts = 200;
    int nRuns = 0; // each start waits for the run before it
    CScriptedThread oThread;
    oThread.m_fnRun = [&] { ++nRuns; };

    for (int nStart = 0; nStart < nStarts; ++nStart)
        ASSERT_TRUE(oThread.RunsToItsEnd());

    EXPECT_EQ(nStarts, nRuns);
}

TEST(CTOVThreadStopTest, WaitsForTheRunBeforeItWhenRestarted)
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

TEST(CTOVThreadStopTest, AsksTheOldThreadToStopAndGivesIt10SecondsWhenRestarted)
{
    CRecordingThread oThread;
    ASSERT_TRUE(oThread.StartNormally());
    EXPECT_EQ((tRecord{"IsRunning"}), oThread.m_aRecord);
    ASSERT_TRUE(oThread.Ends());
    oThread.m_aRecord.clear();

    ASSERT_TRUE(oThread.RunsToItsEnd());

    EXPECT_EQ((tRecord{"IsRunning", "Stop 1 10000", "IsRunning"}), oThread.m_aRecord);
}

TEST(CTOVThreadStopTest, StopsNothingInAStartIfItsIsRunningIsFalse)
{
    CRecordingThread oThread;
    ASSERT_TRUE(oThread.RunsToItsEnd());
    oThread.m_bAnswers = true;
    oThread.m_aRecord.clear();

    ASSERT_TRUE(oThread.RunsToItsEnd());

    EXPECT_EQ((tRecord{"IsRunning"}), oThread.m_aRecord);
}

TEST(CTOVThreadStopTest, StartsWhateverItsStopGives)
{
    bool bRun = false;
    CRecordingThread oThread;
    oThread.m_fnRun = [&] { bRun = true; };
    oThread.m_bAnswers = true;
    oThread.m_bRunning = true;
    oThread.m_bStops = false;

    ASSERT_TRUE(oThread.RunsToItsEnd());

    EXPECT_EQ((tRecord{"IsRunning", "Stop 1 10000"}), oThread.m_aRecord);
    EXPECT_TRUE(bRun);
}

TEST(CTOVThreadStopTest, StartsASecondThreadWhenTheFirstDoesNotStop)
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

TEST(CTOVThreadStopTest, IsHeldUpBySuchAThreadFor10Seconds)
{
    CStubbornThread oThread;
    ASSERT_TRUE(oThread.GetsToWork());
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

TEST(CTOVThreadStopTest, HasNothingToStopBeforeItsFirstStart)
{
    CScriptedThread oThread;

    EXPECT_TRUE(oThread.Stop(false, 0));
    EXPECT_TRUE(oThread.Stop(true, 0));
    EXPECT_TRUE(oThread.Stop(true, 0xFFFFFFFF));

    EXPECT_FALSE(oThread.IsStopPending());
}

TEST(CTOVThreadStopTest, StopsNothingIfItsIsRunningIsFalse)
{
    CRecordingThread oThread;
    ASSERT_TRUE(oThread.RunsToItsEnd());
    oThread.m_bAnswers = true;

    EXPECT_TRUE(oThread.Stop(true, 0));

    EXPECT_FALSE(oThread.IsStopPending());
}

TEST(CTOVThreadStopTest, IsStoppedWithSuccessWithoutAWaitAndWhenTheTimeRunsOut)
{
    const struct
    {
        bool bWait;
        unsigned long ulTimeout;
    } aRows[] = {{false, 0}, {false, 10000}, {false, 0xFFFFFFFF}, {true, 0}, {true, 1}, {true, 20}};
    for (const auto& oRow : aRows)
    {
        CStubbornThread oThread;
        ASSERT_TRUE(oThread.GetsToWork());

        EXPECT_TRUE(oThread.Stop(oRow.bWait, oRow.ulTimeout));

        EXPECT_TRUE(oThread.IsStopPending()) << oRow.bWait << ' ' << oRow.ulTimeout;
        EXPECT_FALSE(oThread.HasEnded()) << oRow.bWait << ' ' << oRow.ulTimeout;
    }
}

TEST(CTOVThreadStopTest, WaitsForTheEndIfAsked)
{
    for (const unsigned long ulTimeout : {60000ul, 0xFFFFFFFEul, 0xFFFFFFFFul})
    {
        CStubbornThread oThread;
        ASSERT_TRUE(oThread.GetsToWork());
        bool bStopped = false;
        CBlockableThread oStopper([&] { bStopped = oThread.Stop(true, ulTimeout); });
        EXPECT_TRUE(oStopper.IsBlocked()) << ulTimeout;

        oThread.LetGo();

        ASSERT_TRUE(oStopper.Finishes()) << ulTimeout;
        EXPECT_TRUE(bStopped) << ulTimeout;
    }
}

TEST(CTOVThreadStopTest, IsStoppedAtOnceWhenItHasEnded)
{
    CScriptedThread oThread;
    ASSERT_TRUE(oThread.RunsToItsEnd());

    EXPECT_TRUE(oThread.Stop(true, 0xFFFFFFFF));

    EXPECT_TRUE(oThread.IsStopPending());
}

TEST(CTOVThreadStopTest, LetsRunSeeTheRequestToStop)
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

// Often, since the new thread is not always the first to go on.
TEST(CTOVThreadStopTest, IsRunningAndMayStopItselfFromItsFirstInstructionOn)
{
    const int nStarts = 2000;
    int nRunning = 0;
    int nPending = 0;
    for (int nStart = 0; nStart < nStarts; ++nStart)
    {
        CScriptedThread oThread;
        oThread.m_fnInit = [&] {
            nRunning += oThread.IsRunning() ? 1 : 0;
            return oThread.Stop(false, 0);
        };
        oThread.m_fnRun = [&] { nPending += oThread.IsStopPending() ? 1 : 0; };
        ASSERT_TRUE(oThread.RunsToItsEnd());
    }

    EXPECT_EQ(nStarts, nRunning);
    EXPECT_EQ(nStarts, nPending);
}
