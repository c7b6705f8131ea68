// Declares what every benchmark program shares: how a row is registered, and how the compiler is kept from knowing an
// input.
#pragma once

#include <Quiet.h>

#include <benchmark/benchmark.h>

// Defines and registers a benchmark. Its name says which row it belongs to, and who is measured: BENCH("string/copy24",
// "std::string"). A variant of a row stands in parentheses after it. The body measures with a loop over oState.
#define BENCH_JOIN_NAMES(first, second) first##second
#define BENCH_JOIN(first, second) BENCH_JOIN_NAMES(first, second)
#define BENCH(szRow, szWho) BENCH_DEFINE(szRow, szWho, BENCH_JOIN(Run, __LINE__), BENCH_JOIN(s_pRun, __LINE__), )
#define BENCH_DEFINE(szRow, szWho, function, registration, options)                                                    \
    static void function(benchmark::State& oState);                                                                    \
    [[maybe_unused]] static auto* const registration = benchmark::RegisterBenchmark(                                   \
        szRow "|" szWho, [](benchmark::State& oMeasured) { MeasureQuietly(oMeasured, function); }) options;            \
    static void function(benchmark::State& oState)

// Measures wall time instead of the calling thread's processor time: for work that other threads do, or that waits.
#define BENCH_WALL(szRow, szWho)                                                                                       \
    BENCH_DEFINE(szRow, szWho, BENCH_JOIN(Run, __LINE__), BENCH_JOIN(s_pRun, __LINE__), ->UseRealTime())

// Measures once per run, by the time that the body itself reports with SetIterationTime: for work whose preparation is
// not to be counted and that is long enough.
#define BENCH_ONCE(szRow, szWho)                                                                                       \
    BENCH_DEFINE(szRow, szWho, BENCH_JOIN(Run, __LINE__),                                                              \
                 BENCH_JOIN(s_pRun, __LINE__), ->Iterations(1)->UseManualTime())

// What the library itself is called among its peers.
#define KERNEL "TOVKernel"

// The compiler takes the value as used, so that it computes it.
template<class T> void Use(const T& value)
{
    benchmark::DoNotOptimize(value);
}

// The compiler takes the object as read and changed by somebody else, so that it knows nothing of its contents.
template<class T> void Touch(T& object)
{
    // The benchmark library's own way offers the compiler a register as well, and with it GCC 12 can take the value
    // that comes out from another place than it stored the one that went in.
    asm volatile("" : "+m"(object) : : "memory");
}

// Returns the value, about which the compiler then knows nothing.
template<class T> T Hide(T value)
{
    Touch(value);
    return value;
}
