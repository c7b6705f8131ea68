// Implements the part of the benchmark library's interface that benchmark/benchmark.h declares.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <regex>
#include <vector>

namespace benchmark
{
namespace
{
struct sOptions
{
    std::string sFilter = ".";
    double dMinSeconds = 0.02;
    bool bList = false;
};

sOptions s_oOptions;

// The first row creates the list, as rows of other sources are registered before this file's objects come to life.
std::vector<std::unique_ptr<Benchmark>>& GetBenchmarks()
{
    static std::vector<std::unique_ptr<Benchmark>> s_aBenchmarks;
    return s_aBenchmarks;
}

// Returns the rest of an argument that begins with the name of the option and '=', or null.
const char* ValueOf(const char* szArgument, const char* szOption)
{
    const std::size_t nLength = std::strlen(szOption);
    return std::strncmp(szArgument, szOption, nLength) == 0 && szArgument[nLength] == '=' ? szArgument + nLength + 1
                                                                                          : nullptr;
}
} // namespace

void Benchmark::Run(double dMinSeconds, bool bFirst) const
{
    constexpr IterationCount MAX_ITERATIONS = 1000000000;

    IterationCount nIterations = m_nIterations > 0 ? m_nIterations : 1;
    for (;;)
    {
        State oState(nIterations);
        m_fnRun(oState);
        const double dSeconds = oState.GetSeconds();
        const bool bFailed = !oState.m_sError.empty();
        if (!bFailed && m_nIterations == 0 && dSeconds < dMinSeconds && nIterations < MAX_ITERATIONS)
        {
            // By the speed so far, and at most tenfold, as the first iterations are slow.
            const double dFactor = dSeconds > 0 ? 1.4 * dMinSeconds / dSeconds : 10.0;
            nIterations =
                static_cast<IterationCount>(static_cast<double>(nIterations) * (dFactor < 10.0 ? dFactor : 10.0) + 1.0);
            continue;
        }

        std::printf("%s    {\"name\": \"%s\", ", bFirst ? "" : ",\n", m_sName.c_str());
        if (bFailed)
        {
            std::printf("\"error_occurred\": true, \"error_message\": \"%s\"}", oState.m_sError.c_str());
            return;
        }
        if (oState.m_nItems > 0)
            std::printf("\"items_per_second\": %.9e, ", static_cast<double>(oState.m_nItems) / dSeconds);
        if (oState.m_nBytes > 0)
            std::printf("\"bytes_per_second\": %.9e, ", static_cast<double>(oState.m_nBytes) / dSeconds);
        const double dNanoseconds = dSeconds * 1e9 / static_cast<double>(nIterations);
        std::printf("\"real_time\": %.9e, \"cpu_time\": %.9e, \"time_unit\": \"ns\"}", dNanoseconds, dNanoseconds);
        return;
    }
}

Benchmark* RegisterBenchmark(const char* szName, std::function<void(State&)> fnRun)
{
    GetBenchmarks().push_back(std::make_unique<Benchmark>(szName, std::move(fnRun)));
    return GetBenchmarks().back().get();
}

void Initialize(int* pnArguments, char** pArguments)
{
    int nOthers = 1;
    for (int nArgument = 1; nArgument < *pnArguments; ++nArgument)
    {
        const char* const szArgument = pArguments[nArgument];
        if (const char* szFilter = ValueOf(szArgument, "--benchmark_filter"))
            s_oOptions.sFilter = szFilter;
        else if (const char* szSeconds = ValueOf(szArgument, "--benchmark_min_time"))
            s_oOptions.dMinSeconds = std::atof(szSeconds);
        else if (ValueOf(szArgument, "--benchmark_list_tests") != nullptr)
            s_oOptions.bList = true;
        else if (ValueOf(szArgument, "--benchmark_format") == nullptr) // there is only one form of report
            pArguments[nOthers++] = pArguments[nArgument];
    }
    *pnArguments = nOthers;
}

bool ReportUnrecognizedArguments(int nArguments, char** pArguments)
{
    for (int nArgument = 1; nArgument < nArguments; ++nArgument)
        std::fprintf(stderr, "unknown argument %s\n", pArguments[nArgument]);
    return nArguments > 1;
}

void RunSpecifiedBenchmarks()
{
    if (s_oOptions.bList)
    {
        for (const auto& pBenchmark : GetBenchmarks())
            std::printf("%s\n", pBenchmark->GetName().c_str());
        return;
    }

    const std::regex oFilter(s_oOptions.sFilter);
    std::printf("{\n  \"benchmarks\": [\n");
    bool bFirst = true;
    for (const auto& pBenchmark : GetBenchmarks())
    {
        if (std::regex_search(pBenchmark->GetName(), oFilter))
        {
            pBenchmark->Run(s_oOptions.dMinSeconds, bFirst);
            bFirst = false;
        }
    }
    std::printf("\n  ]\n}\n");
}

void Shutdown()
{
}
} // namespace benchmark
