// The monotonic clock of all threads, in a test's hands.
#pragma once

// While it lives, the time that the library reads on the monotonic clock stands still unless it is told to go on. It is
// long past for the kernel, so that a sleep until one of its moments ends at once. What a CFakeClock serves is left
// out.
class CSharedClock
{
public:
    CSharedClock();
    ~CSharedClock();
    CSharedClock(const CSharedClock&) = delete;
    CSharedClock& operator=(const CSharedClock&) = delete;

    // Sets it to milliseconds after the construction.
    void SetMs(long long llMilliseconds);
};
