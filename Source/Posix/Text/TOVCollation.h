// How the process's locale orders text. Internal to the Posix text functions.
#pragma once

#include <clocale>
#include <cstring>

namespace TOVPlatform
{
namespace TOVCollation
{
// Whether text is ordered by the values of its units, as the "C" locale orders it.
inline bool IsByUnits()
{
    // NOLINTNEXTLINE(concurrency-mt-unsafe): it only asks, and no program may change the locale beside its threads.
    const char* szLocale = std::setlocale(LC_COLLATE, nullptr);
    return std::strcmp(szLocale, "C") == 0 || std::strcmp(szLocale, "POSIX") == 0;
}
} // namespace TOVCollation
} // namespace TOVPlatform
