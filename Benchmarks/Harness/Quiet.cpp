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

template<unsigned... NUMBERS> unsigned AllSteps(std::integer_sequence<unsigned, NUMBERS...>)
{
    unsigned uNumber = Hide(1U);
    ((uNumber = Step<NUMBERS>(uNumber)), ...);
    return uNumber;
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
        Use(AllSteps(std::make_integer_sequence<unsigned, 400>()));
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
