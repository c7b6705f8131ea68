#include "Examples/ExampleProgram.h"
#include "Support/TOVAllocationCounter.h"

#include "../Examples/WorkerPool/WorkerPool.h"

#include <Debug/TOVException.h>

#include <stdexcept>

TEST(WorkerPoolTest, DoesAllTasksBeforeItEnds)
{
    std::atomic<int> nSum(0);
    {
        CWorkerPool oPool(3);
        for (int i = 1; i <= 100; ++i)
            oPool.Add([&nSum, i] { nSum += i; });
    }

    EXPECT_EQ(5050, nSum);
}

TEST(WorkerPoolTest, WorksInSeveralThreadsAtOnce)
{
    CGate oFirst;
    CGate oSecond;
    std::atomic<bool> bMet(false);
    {
        CWorkerPool oPool(2);
        oPool.Add([&] {
            oFirst.Open();
            bMet = oSecond.Wait();
        });
        oPool.Add([&] {
            oSecond.Open();
            oFirst.Wait();
        });
    }

    EXPECT_TRUE(bMet);
}

TEST(WorkerPoolTest, DropsWaitingTasksWhenItIsCancelled)
{
    CGate oBegun;
    CGate oCancelled;
    std::atomic<int> nDone(0);
    {
        CWorkerPool oPool(1);
        oPool.Add([&] {
            oBegun.Open();
            oCancelled.Wait();
            ++nDone;
        });
        oPool.Add([&] { ++nDone; });
        ASSERT_TRUE(oBegun.Wait());
        oPool.Cancel();
        oCancelled.Open();
    }

    EXPECT_EQ(1, nDone);
}

TEST(WorkerPoolTest, LogsATaskThatThrowsAndBeginsTheNext)
{
    const CLogRecorder oRecorder;
    std::atomic<bool> bDone(false);
    {
        CWorkerPool oPool(1);
        oPool.Add([] { throw std::runtime_error("no paper"); });
        oPool.Add([] { throw CTOVMemoryException(); });
        oPool.Add([&] { bDone = true; });
    }

    EXPECT_TRUE(bDone);
    EXPECT_EQ(1, oRecorder.CountLines("a task has failed: no paper"));
    EXPECT_EQ(2, oRecorder.CountLines("a task has failed"));
}

TEST(WorkerPoolTest, RefusesToBeWithoutAThread)
{
    EXPECT_THROW(CWorkerPool(0), std::runtime_error);
}

TEST(WorkerPoolTest, DoesTheTasksThatTasksAddAtTheEnd)
{
    CGate oEnding;
    std::atomic<int> nDone(0);
    {
        CWorkerPool oPool(1);
        oPool.Add([&] {
            oEnding.Wait();
            oPool.Add([&nDone] { ++nDone; });
        });
        oEnding.Open();
    }

    EXPECT_EQ(1, nDone);
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(WorkerPoolTest, EndsWithoutMemory)
{
    std::atomic<int> nDone(0);
    auto pPool = std::make_unique<CWorkerPool>(3);
    for (int i = 0; i < 10; ++i)
        pPool->Add([&nDone] { ++nDone; });
    {
        const CAllocationFailure oFailure;
        pPool.reset();
    }

    EXPECT_EQ(10, nDone);
}

TEST(WorkerPoolTest, IsUnchangedByATaskForWhichThereIsNoMemory)
{
    std::atomic<int> nDone(0);
    unsigned long ulRefused = 0;
    {
        CWorkerPool oPool(1);
        const CWorkerPool::tTask fnTask = [&nDone] { ++nDone; };
        for (bool bAdded = false; !bAdded;)
        {
            const CAllocationFailure oFailure(ulRefused);
            try
            {
                oPool.Add(fnTask);
                bAdded = true;
            }
            catch (const std::bad_alloc&)
            {
                ++ulRefused;
            }
        }
    }

    EXPECT_GT(ulRefused, 0u);
    EXPECT_EQ(1, nDone);
}
#endif

TEST(WorkerPoolTest, CountsTheLinesOfAllFilesInTheirOrder)
{
    const CTempFolder oFolder;
    std::vector<std::string> aNames;
    std::string sExpected;
    for (int i = 0; i < 20; ++i)
    {
        aNames.push_back("file" + std::to_string(i));
        std::string sText;
        for (int nLine = 0; nLine < i * 1000; ++nLine)
            sText += "a line\r\n";
        WriteWholeFile(oFolder.File(aNames.back()), sText + "and no line end");
        std::string sCount = std::to_string(i * 1000);
        sExpected += std::string(8 - sCount.size(), ' ') + sCount + " " + aNames.back() + "\n";
    }

    const sChildResult oResult = RunExample("tovlines", aNames, oFolder.Path());

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sErrors;
    EXPECT_EQ(sExpected + "  190000 lines\n", oResult.sOutput);
}

TEST(WorkerPoolTest, NamesAFileThatCannotBeRead)
{
    const CTempFolder oFolder;
    WriteWholeFile(oFolder.File("one"), "1\n");

    const sChildResult oResult = RunExample("tovlines", {"missing", "one"}, oFolder.Path());

    EXPECT_EQ(1, oResult.nExitCode);
    EXPECT_EQ("       1 one\n       1 lines\n", oResult.sOutput);
    EXPECT_EQ("tovlines: missing cannot be read\n", oResult.sErrors);
}

TEST(WorkerPoolTest, ShowsTheControlCharactersOfNamesAsNumbers)
{
    const sChildResult oResult = RunExample("tovlines", {"a\x1b[2J"});

    EXPECT_EQ("tovlines: a\\x1b[2J cannot be read\n", oResult.sErrors);
}

TEST(WorkerPoolTest, TellsItsUsage)
{
    ExpectComplaint("usage: tovlines FILE...", 2, RunExample("tovlines", {}));
}
