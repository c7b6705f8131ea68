// The threads of the pool, which this system lists.
#include "Examples/ExampleProgram.h"
#include "Support/TOVAllocationCounter.h"

#include "../Examples/WorkerPool/WorkerPool.h"

#include <algorithm>
#include <stdexcept>
#include <thread>

#if TOV_CAN_FAIL_ALLOCATIONS
namespace
{
std::ptrdiff_t CountThreads()
{
    const std::filesystem::directory_iterator oThreads("/proc/self/task");
    return std::distance(begin(oThreads), end(oThreads));
}

// A thread that has ended stays in the list for a moment. It may have been of an earlier case, and among those that
// were counted first: then fewer are left, which is the number from there on.
bool AreNoMoreSoon(std::ptrdiff_t& nThreads)
{
    const auto oDeadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    std::ptrdiff_t nNow = CountThreads();
    for (; nNow > nThreads && std::chrono::steady_clock::now() < oDeadline; nNow = CountThreads())
        std::this_thread::yield();
    const bool bNoMore = nNow <= nThreads;
    nThreads = std::min(nThreads, nNow);
    return bNoMore;
}

// Returns whether a pool can be made while only so many blocks can be allocated.
bool CanBeMadeWith(unsigned long ulBlocks)
{
    try
    {
        const CAllocationFailure oFailure(ulBlocks);
        const CWorkerPool oPool(3);
        return true;
    }
    catch (const std::exception&)
    {
        return false;
    }
}
} // namespace

TEST(WorkerPoolThreadsTest, EndWhenTheMemoryForTheOthersIsExhausted)
{
    std::ptrdiff_t nThreads = CountThreads();
    unsigned long ulBlocks = 0;
    while (!CanBeMadeWith(ulBlocks))
    {
        ASSERT_TRUE(AreNoMoreSoon(nThreads)) << ulBlocks;
        ++ulBlocks;
    }

    EXPECT_GT(ulBlocks, 3u);
    EXPECT_TRUE(AreNoMoreSoon(nThreads));
}
#endif
