// Declares where the benchmarks keep their files.
#pragma once

#include <cstdlib>
#include <string>

// Returns the name of a file in the folder of TOV_BENCH_FOLDER, which is in memory when ./bench runs the programs, or
// in the working directory.
inline std::string BenchFile(const char* szName)
{
    const char* const szFolder = std::getenv("TOV_BENCH_FOLDER");
    return std::string(szFolder != nullptr ? szFolder : ".") + "/" + szName;
}
