// Rows of log lines.

#include <Bench.h>
#include <LogSetup.h>

#include <Debug/TOVDebug.h>

using namespace TOVDebug;

namespace
{
void LogLines(benchmark::State& oState)
{
    for (auto _ : oState)
        _Log(__FILE__, __LINE__, 0x1, eSeverityInfo, "the catalogue is complete");
}

void LogNumbers(benchmark::State& oState)
{
    for (auto _ : oState)
        _Log(__FILE__, __LINE__, 0x1, eSeverityInfo, "%d files in %s", Hide(4711), Hide("the catalogue"));
}

void LogTraces(benchmark::State& oState)
{
    for (auto _ : oState)
        _Log(__FILE__, __LINE__, 0x1, eSeverityTrace, "the catalogue is complete");
}
} // namespace

// "As shipped" means that the library's own listener, which hands lines to a debugger, is the only one, and that there
// is no debugger. In the other rows the named listener is the only one.

BENCH("log/line", KERNEL)
{
    const CWithoutShippedListener oWithout;
    const CWithListener<CSilentListener> oListener;
    LogLines(oState);
}

BENCH("log/line (formatting listener)", KERNEL)
{
    const CWithoutShippedListener oWithout;
    const CWithListener<CFormattingListener> oListener;
    LogLines(oState);
}

BENCH("log/line (as shipped)", KERNEL)
{
    LogLines(oState);
}

BENCH("log/formatted", KERNEL)
{
    const CWithoutShippedListener oWithout;
    const CWithListener<CFormattingListener> oListener;
    LogNumbers(oState);
}

BENCH("log/formatted (as shipped)", KERNEL)
{
    LogNumbers(oState);
}

BENCH("log/disabled", KERNEL)
{
    const CWithoutShippedListener oWithout;
    const CWithListener<CSilentListener> oListener;
    LogTraces(oState);
}

BENCH("log/disabled (no listener)", KERNEL)
{
    const CWithoutShippedListener oWithout;
    LogTraces(oState);
}
