// What all loads of many threads are made of: threads that begin together, their waits, and what they find wrong.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

// How much a scenario does.
struct sThreadLoad
{
    int nThreads;    // an even number
    int nOperations; // of each thread
};

// Collects what a scenario finds out. Any thread may use it.
class CThreadReport
{
public:
    // Notes that something is wrong, unless bRight. The first texts are kept.
    void Expect(bool bRight, const char* szWhat);
    void ExpectEqual(long long llWanted, long long llFound, const char* szWhat);

    // Notes a wait, and whether the object went to others for more than a second meanwhile.
    void NoteWait(std::chrono::nanoseconds oLongest, long lStarved);

    long GetNumWrong() const { return m_lWrong; }
    std::string GetTexts() const;
    double GetLongestWaitMs() const;
    long GetNumStarved() const { return m_lStarved; }

private:
    void NoteWrong(const std::string& sText);

    std::atomic<long> m_lWrong{0};
    std::atomic<long> m_lStarved{0};
    mutable std::mutex m_oMutex;
    std::string m_sTexts;
    std::chrono::nanoseconds m_oLongest{0};
};

// How what all threads of a load wait for has gone from thread to thread.
struct sThreadTraffic
{
    std::atomic<std::uint64_t> nGiven{0};            // how often a thread was given it
    std::atomic<std::int64_t> nMovingNanoseconds{0}; // how long it has been on the move, looked at each 10 ms
};

// Measures the waits of one thread.
//
// A wait that takes long is no fault in itself: of many threads on few processors, each is stopped now and then, and so
// is the one that has the object. A wait starves if the object goes to others for more than a second meanwhile.
class CWaits
{
public:
    CWaits(CThreadReport& oReport, sThreadTraffic& oTraffic) : m_oReport(oReport), m_oTraffic(oTraffic) {}
    ~CWaits() { m_oReport.NoteWait(m_oLongest, m_lStarved); }
    CWaits(const CWaits&) = delete;
    CWaits& operator=(const CWaits&) = delete;

    // Runs a wait, which ends when the calling thread is given the object.
    template<class TWait> auto Measure(TWait fnWait)
    {
        const sEnd oEnd = {*this, m_oTraffic.nMovingNanoseconds.load(std::memory_order_relaxed),
                           std::chrono::steady_clock::now()};
        return fnWait();
    }

private:
    struct sEnd
    {
        CWaits& oWaits;
        const std::int64_t nMovingBefore;
        const std::chrono::steady_clock::time_point oStart;

        ~sEnd() { oWaits.Note(nMovingBefore, std::chrono::steady_clock::now() - oStart); }
    };

    void Note(std::int64_t nMovingBefore, std::chrono::nanoseconds oTime)
    {
        constexpr std::chrono::seconds LONG_TIME(1);
        m_oTraffic.nGiven.fetch_add(1, std::memory_order_relaxed);
        m_oLongest = oTime > m_oLongest ? oTime : m_oLongest;
        if (oTime > LONG_TIME && std::chrono::nanoseconds(m_oTraffic.nMovingNanoseconds - nMovingBefore) > LONG_TIME)
            ++m_lStarved;
    }

    CThreadReport& m_oReport;
    sThreadTraffic& m_oTraffic;
    std::chrono::nanoseconds m_oLongest{0};
    long m_lStarved = 0;
};

// Runs the action on threads of the load's number, which begin together, and waits for their end.
void RunThreads(const sThreadLoad& oLoad, CThreadReport& oReport,
                const std::function<void(int nThread, CWaits& oWaits)>& fnAction);
