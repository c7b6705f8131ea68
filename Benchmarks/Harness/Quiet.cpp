#include <Quiet.h>

#include <Bench.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>
#include <utility>

namespace
{
using tClock = std::chrono::steady_clock;

template<unsigned NUMBER> [[gnu::noinline]] unsigned Step(unsigned uNumber)
{
    uNumber = Hide(uNumber);
    return (uNumber & 1U) != 0 ? uNumber * (2 * NUMBER + 1) + NUMBER : (uNumber >> 1) ^ NUMBER;
}

// Two halves, as clang nests 256 steps at most.
template<unsigned FIRST, unsigned... NUMBERS>
unsigned Steps(unsigned uNumber, std::integer_sequence<unsigned, NUMBERS...>)
{
    ((uNumber = Step<FIRST + NUMBERS>(uNumber)), ...);
    return uNumber;
}

unsigned AllSteps()
{
    constexpr unsigned HALF = 200;
    const std::make_integer_sequence<unsigned, HALF> oHalf;
    return Steps<HALF>(Steps<0>(Hide(1U), oHalf), oHalf);
}

// Returns 0 where there is no limit.
double QuietLimit()
{
    const char* const szLimit = std::getenv("TOV_BENCH_QUIET");
    return szLimit != nullptr ? std::atof(szLimit) : 0.0;
}
} // namespace

double ProbeProcessor()
{
    constexpr int NUM_TRIES = 20; // an interrupt spoils a try

    double dLeast = 0;
    for (int nTry = 0; nTry < NUM_TRIES; ++nTry)
    {
        const tClock::time_point oStart = tClock::now();
        Use(AllSteps());
        const double dTime = std::chrono::duration<double, std::nano>(tClock::now() - oStart).count();
        dLeast = nTry == 0 ? dTime : std::min(dLeast, dTime);
    }
    return dLeast;
}

void MeasureQuietly(benchmark::State& oState, void (*fnMeasure)(benchmark::State&))
{
    constexpr auto LONGEST_WAIT = std::chrono::milliseconds(20);

    static const double s_dLimit = QuietLimit();
    bool bQuiet = s_dLimit == 0 || ProbeProcessor() <= s_dLimit;
    const tClock::time_point oEnd = tClock::now() + LONGEST_WAIT;
    while (!bQuiet && tClock::now() < oEnd)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        bQuiet = ProbeProcessor() <= s_dLimit;
    }
    fnMeasure(oState);
    if (!bQuiet || (s_dLimit > 0 && ProbeProcessor() > s_dLimit))
        oState.SetLabel("disturbed");
}
