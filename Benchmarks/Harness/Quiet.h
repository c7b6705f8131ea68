// Declares how a measurement waits for a quiet processor. Where the machine is a virtual one, a neighbour may run on
// the other thread of the same core; code with many branches and calls then takes up to twice as long, and the system's
// own figures show nothing of it.
#pragma once

#include <benchmark/benchmark.h>

// Returns the nanoseconds that a fixed piece of code takes at this moment. Its parts lie far apart, so that it is
// sensitive to a neighbour.
double ProbeProcessor();

// Measures when the processor is quiet, which it waits for only shortly, and labels the run "disturbed" if it was not
// before or is no longer afterwards. The environment variable TOV_BENCH_QUIET tells up to which time of the probe the
// processor counts as quiet; without it, nothing is waited for.
void MeasureQuietly(benchmark::State& oState, void (*fnMeasure)(benchmark::State&));
