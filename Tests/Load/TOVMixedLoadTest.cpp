// All that the library has, at once and in turn: a short share of what Attacks/Soak does for long.
#include "Soak/LoadParts.h"
#include "Soak/MixedLoad.h"
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVTestSupport.h"
#include "Threads/ThreadScenarios.h"

#include <TOVPlatform/TOVFile.h>
#include <Test/TOVTestHost.h>

#include <thread>

TOV_TEST_HOST

TEST(TOVMixedLoadTest, IsRightWhileOtherThreadsAreAtWork)
{
    CThreadReport oReport;
    RunMixedRound({4, 20}, true, oReport);
    StartAndStopThread(oReport);

    EXPECT_EQ(0, oReport.GetNumWrong()) << oReport.GetTexts();
}

// A line of another load has other arguments, which are no numbers of threads.
TEST(TOVMixedLoadTest, CountsNoLineOfAnotherLoad)
{
    CThreadReport oReport;
    std::atomic<bool> bOver(false);
    std::thread oOther([&] {
        while (!bOver)
            RunListeners(oReport);
    });
    RunLog({4, 200}, oReport);
    bOver = true;
    oOther.join();

    EXPECT_EQ(0, oReport.GetNumWrong()) << oReport.GetTexts();
}

TEST(TOVMixedLoadTest, LeavesNoFileOpen)
{
    CThreadReport oReport;
    RunQuietRound(oReport);

    EXPECT_EQ(0u, TOVPlatform::TOVFile::CTOVHandleManager::Instance().FindFreeHandle());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(TOVMixedLoadTest, LeavesNoBlockBehind)
{
    CThreadReport oReport;
    RunQuietRound(oReport); // makes what stays for the life of the process
    RunSuites(oReport);

    const CAllocationCounter oCounter;
    RunQuietRound(oReport);
    RunSuites(oReport);
    const long lKept = oCounter.Kept();

    EXPECT_EQ(0, lKept);
    EXPECT_EQ(0, oReport.GetNumWrong()) << oReport.GetTexts();
}
#endif
