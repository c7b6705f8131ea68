#include "Timer/TOVFakeClock.h"

#include <utility>

sFakeClockState& FakeClockState()
{
    static thread_local sFakeClockState s_oState = {};
    return s_oState;
}

bool ReadFakeCounter(sFakeClockState& oState)
{
    ++oState.nCounterReads;
    oState.llTicks += oState.llTicksPerRead;
    return !oState.bCounterFails;
}

void CFakeClock::Set(long long llTicks)
{
    FakeClockState().llTicks = llTicks;
}

void CFakeClock::Advance(long long llTicks)
{
    FakeClockState().llTicks += llTicks;
}

void CFakeClock::TickWithEachRead(long long llTicks)
{
    FakeClockState().llTicksPerRead = llTicks;
}

void CFakeClock::FailCounter(bool bFail)
{
    FakeClockState().bCounterFails = bFail;
}

void CFakeClock::FailFrequency(bool bFail)
{
    FakeClockState().bFrequencyFails = bFail;
}

int CFakeClock::TakeCounterReads()
{
    return std::exchange(FakeClockState().nCounterReads, 0);
}

int CFakeClock::TakeFrequencyReads()
{
    return std::exchange(FakeClockState().nFrequencyReads, 0);
}
