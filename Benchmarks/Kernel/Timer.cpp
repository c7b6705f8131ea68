// Rows of the clock.

#include <Bench.h>

#include <Timer/TOVTimer.h>

BENCH("timer/read (GetTimeDirect)", KERNEL)
{
    const CTOVTimer oTimer;
    for (auto _ : oState)
        Use(oTimer.GetTimeDirect());
}

BENCH("timer/read", KERNEL)
{
    CTOVTimer oTimer;
    oTimer.DefineChannel(0, "benchmark");
    oTimer.Start(0);
    for (auto _ : oState)
        Use(oTimer.GetTime(0));
}

BENCH("timer/read (GetTimeInMsDirect)", KERNEL)
{
    const CTOVTimer oTimer;
    for (auto _ : oState)
        Use(oTimer.GetTimeInMsDirect());
}
