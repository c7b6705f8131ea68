// Declares the part of the benchmark library's interface that the rows use, for Windows, where no package brings that
// library. What the names mean is in its own documentation; the programs take the same options and print the same
// report.
//
// Everything is wall time: the processor time of a thread advances in steps of many milliseconds there.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace benchmark
{
using IterationCount = std::int64_t;

template<class T> inline void DoNotOptimize(const T& value)
{
    asm volatile("" : : "m"(value) : "memory");
}

inline void ClobberMemory()
{
    asm volatile("" : : : "memory");
}

class State
{
    using tClock = std::chrono::steady_clock;

    // What a loop over the state gives: nothing.
    struct [[maybe_unused]] sNothing
    {
    };

    class CIterator
    {
    public:
        explicit CIterator(State* pState) : m_pState(pState), m_nLeft(pState != nullptr ? pState->m_nIterations : 0) {}

        sNothing operator*() const { return sNothing(); }
        CIterator& operator++()
        {
            --m_nLeft;
            return *this;
        }
        bool operator!=(const CIterator&) const
        {
            if (m_nLeft != 0)
                return true;
            m_pState->m_oEnd = tClock::now();
            return false;
        }

    private:
        State* m_pState;
        IterationCount m_nLeft;
    };

public:
    explicit State(IterationCount nIterations) : m_nIterations(nIterations) {}

    CIterator begin()
    {
        const CIterator oBegin(this);
        m_oStart = tClock::now();
        return oBegin;
    }
    CIterator end() { return CIterator(nullptr); }

    IterationCount iterations() const { return m_nIterations; }
    void SetItemsProcessed(std::int64_t nItems) { m_nItems = nItems; }
    void SetBytesProcessed(std::int64_t nBytes) { m_nBytes = nBytes; }
    void SetIterationTime(double dSeconds) { m_dManualSeconds += dSeconds; }
    void SetLabel(const char*) {} // the report has none
    void SkipWithError(const char* szError) { m_sError = szError; }

private:
    friend class Benchmark;

    double GetSeconds() const
    {
        return m_dManualSeconds > 0 ? m_dManualSeconds : std::chrono::duration<double>(m_oEnd - m_oStart).count();
    }

    IterationCount m_nIterations;
    std::int64_t m_nItems = 0;
    std::int64_t m_nBytes = 0;
    double m_dManualSeconds = 0;
    std::string m_sError;
    tClock::time_point m_oStart;
    tClock::time_point m_oEnd;
};

class Benchmark
{
public:
    Benchmark(const char* szName, std::function<void(State&)> fnRun) : m_sName(szName), m_fnRun(std::move(fnRun)) {}

    Benchmark* UseRealTime() { return this; }
    Benchmark* UseManualTime() { return this; }
    Benchmark* Iterations(IterationCount nIterations)
    {
        m_nIterations = nIterations;
        return this;
    }

    const std::string& GetName() const { return m_sName; }

    // Runs it until it has taken that long, and prints its entry of the report.
    void Run(double dMinSeconds, bool bFirst) const;

private:
    std::string m_sName;
    std::function<void(State&)> m_fnRun;
    IterationCount m_nIterations = 0; // 0: as many as the time asks for
};

Benchmark* RegisterBenchmark(const char* szName, std::function<void(State&)> fnRun);

void Initialize(int* pnArguments, char** pArguments);
bool ReportUnrecognizedArguments(int nArguments, char** pArguments);
void RunSpecifiedBenchmarks();
void Shutdown();
} // namespace benchmark
