// Rows of spdlog.

#include <Bench.h>

#include <spdlog/sinks/null_sink.h>
#include <spdlog/spdlog.h>

#include <memory>

namespace
{
spdlog::logger NewLogger()
{
    return spdlog::logger("benchmark", std::make_shared<spdlog::sinks::null_sink_mt>());
}
} // namespace

BENCH("log/line", "spdlog null mt")
{
    spdlog::logger oLogger = NewLogger();
    for (auto _ : oState)
        oLogger.info("the catalogue is complete");
}

BENCH("log/formatted", "spdlog null mt")
{
    spdlog::logger oLogger = NewLogger();
    for (auto _ : oState)
        oLogger.info("{} files in {}", Hide(4711), Hide("the catalogue"));
}

BENCH("log/disabled", "spdlog null mt")
{
    spdlog::logger oLogger = NewLogger();
    for (auto _ : oState)
        oLogger.trace("the catalogue is complete");
}
