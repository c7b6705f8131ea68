// Declares RunWorkers, which does the same work in several threads, and CJobCounter, which divides the work.
#pragma once

#include <atomic>
#include <functional>

// Calls fnWork in nThreads threads, as often as there are threads, and returns when all calls have returned. While they
// run, fnProgress is called about five times a second on the calling thread. An exception of fnWork reaches the caller
// after that. Returns false, without a call, if no thread could be started.
bool RunWorkers(int nThreads, const std::function<void()>& fnWork, const std::function<void()>& fnProgress);

// Gives each of the jobs 0 to lCount - 1 to one thread.
class CJobCounter
{
public:
    explicit CJobCounter(long lCount) : m_lCount(lCount) {}

    // Returns false if all jobs are taken.
    bool Take(long& lJob)
    {
        lJob = m_lNext++;
        return lJob < m_lCount;
    }

private:
    const long m_lCount;
    std::atomic<long> m_lNext{0};
};
