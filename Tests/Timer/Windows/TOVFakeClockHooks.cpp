// The library's own imports lead here; what else reads the clock in the process is not concerned.
#include "Support/Windows/TOVImportHook.h"
#include "Timer/TOVFakeClock.h"

#include <windows.h>

#include <mmsystem.h>

static BOOL WINAPI ReadCounter(LARGE_INTEGER* pTicks)
{
    sFakeClockState& oState = FakeClockState();
    if (!oState.bArmed)
        return ::QueryPerformanceCounter(pTicks);

    if (!ReadFakeCounter(oState))
        return FALSE;
    pTicks->QuadPart = oState.llTicks;
    return TRUE;
}

static BOOL WINAPI ReadFrequency(LARGE_INTEGER* pFrequency)
{
    sFakeClockState& oState = FakeClockState();
    if (!oState.bArmed)
        return ::QueryPerformanceFrequency(pFrequency);

    ++oState.nFrequencyReads;
    if (oState.bFrequencyFails)
        return FALSE;
    pFrequency->QuadPart = oState.llTicksPerSecond;
    return TRUE;
}

static DWORD WINAPI ReadMilliseconds()
{
    sFakeClockState& oState = FakeClockState();
    if (!oState.bArmed)
        return ::timeGetTime();

    ReadFakeCounter(oState);
    return static_cast<DWORD>(oState.llTicks / TICKS_PER_MS);
}

struct CFakeClock::sHooks
{
    CImportHook m_oCounter = {"QueryPerformanceCounter", &ReadCounter};
    CImportHook m_oFrequency = {"QueryPerformanceFrequency", &ReadFrequency};
    CImportHook m_oMilliseconds = {"timeGetTime", &ReadMilliseconds};
};

CFakeClock::CFakeClock(long long llTicks) : m_pHooks(new sHooks)
{
    FakeClockState() = {true, llTicks, 0, TICKS_PER_SECOND, false, false, 0, 0};
}

CFakeClock::~CFakeClock()
{
    FakeClockState().bArmed = false;
}
