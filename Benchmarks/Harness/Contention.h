// Declares the rows in which threads meet: a lock that four threads want, and a queue between threads. The threads are
// those of the standard library, so that the library and its peers differ in the lock and the queue alone.
#pragma once

#include <Bench.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <vector>

// Runs all parts at the same time, each in a thread of its own, and returns the seconds from their common start to the
// end of the last one.
inline double RunTogether(const std::vector<std::function<void()>>& aParts)
{
    using tClock = std::chrono::steady_clock;

    std::atomic<std::size_t> nReady(0);
    std::atomic<bool> bGo(false);
    std::vector<std::thread> aThreads;
    for (const std::function<void()>& fnPart : aParts)
    {
        aThreads.emplace_back([&nReady, &bGo, &fnPart] {
            ++nReady;
            while (!bGo)
                std::this_thread::yield();
            fnPart();
        });
    }
    while (nReady < aParts.size())
        std::this_thread::yield();

    const tClock::time_point oStart = tClock::now();
    bGo = true;
    for (std::thread& oThread : aThreads)
        oThread.join();
    return std::chrono::duration<double>(tClock::now() - oStart).count();
}

// Four threads take a lock in turn and change a number under it. TLock has Lock and Unlock.
template<class TLock> void MeasureContendedLock(benchmark::State& oState)
{
    constexpr int NUM_THREADS = 4;
    constexpr int NUM_ROUNDS = TOV_BENCH_MEETINGS / 4;

    for (auto _ : oState)
    {
        TLock oLock;
        long lNumber = 0;
        const auto fnPart = [&oLock, &lNumber] {
            for (int nRound = 0; nRound < NUM_ROUNDS; ++nRound)
            {
                oLock.Lock();
                Use(++lNumber);
                oLock.Unlock();
            }
        };
        oState.SetIterationTime(RunTogether(std::vector<std::function<void()>>(NUM_THREADS, fnPart)));
        if (lNumber != NUM_THREADS * NUM_ROUNDS)
            oState.SkipWithError("the lock let two threads in at once");
    }
    oState.SetItemsProcessed(oState.iterations() * NUM_THREADS * NUM_ROUNDS);
}

// Passes elements from producers to as many consumers. TQueue has Enqueue, and a Dequeue that waits for an element.
template<class TQueue, class TElement> void MeasureQueue(benchmark::State& oState, int nPairs, const TElement& oElement)
{
    constexpr int NUM_ELEMENTS = TOV_BENCH_MEETINGS;

    for (auto _ : oState)
    {
        TQueue oQueue;
        std::vector<std::function<void()>> aParts;
        for (int nPair = 0; nPair < nPairs; ++nPair)
        {
            aParts.emplace_back([&oQueue, &oElement] {
                for (int nElement = 0; nElement < NUM_ELEMENTS; ++nElement)
                    oQueue.Enqueue(oElement);
            });
            aParts.emplace_back([&oQueue] {
                for (int nElement = 0; nElement < NUM_ELEMENTS; ++nElement)
                    Use(oQueue.Dequeue());
            });
        }
        oState.SetIterationTime(RunTogether(aParts));
    }
    oState.SetItemsProcessed(oState.iterations() * nPairs * NUM_ELEMENTS);
}

// Puts one element in and takes it out again, in a single thread.
template<class TQueue, class TElement> void MeasureQueueAlone(benchmark::State& oState, const TElement& oElement)
{
    TQueue oQueue;
    for (auto _ : oState)
    {
        oQueue.Enqueue(oElement);
        Use(oQueue.Dequeue());
    }
}
