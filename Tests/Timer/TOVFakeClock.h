// The counter under the timer, in a test's hands.
#pragma once

#include <memory>

constexpr long long TICKS_PER_SECOND = 1000000000;
constexpr long long TICKS_PER_MS = 1000000;

// While it lives, what the library reads on the constructing thread is this counter, on both systems alike: nanoseconds
// for the high-resolution base, their whole milliseconds for the other one. It stands still unless it is told to go on.
class CFakeClock
{
public:
    explicit CFakeClock(long long llTicks = 5 * TICKS_PER_SECOND);
    ~CFakeClock();
    CFakeClock(const CFakeClock&) = delete;
    CFakeClock& operator=(const CFakeClock&) = delete;

    void Set(long long llTicks);
    void Advance(long long llTicks);
    void AdvanceMs(long long llMilliseconds) { Advance(llMilliseconds * TICKS_PER_MS); }

    // Every read finds the counter further on.
    void TickWithEachRead(long long llTicks);

    // The counter, or the question for its frequency, fails.
    void FailCounter(bool bFail = true);
    void FailFrequency(bool bFail = true);

    // How often the library asked since the last call, in vain or not.
    int TakeCounterReads();
    int TakeFrequencyReads();

private:
    struct sHooks;
    const std::unique_ptr<sHooks> m_pHooks;
};

// What the calling thread's counter is set to, for the functions that stand in for the system's.
struct sFakeClockState
{
    bool bArmed;
    long long llTicks;
    long long llTicksPerRead;
    long long llTicksPerSecond; // what the system tells of the counter, where it is the system that tells it
    bool bCounterFails;
    bool bFrequencyFails;
    int nCounterReads;
    int nFrequencyReads;
};
sFakeClockState& FakeClockState();

// Notes a read of the calling thread's counter and takes it to the next tick. False if it fails.
bool ReadFakeCounter(sFakeClockState& oState);
