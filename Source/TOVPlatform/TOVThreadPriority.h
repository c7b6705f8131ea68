// The seam's thread priorities on the platform's own scale, on which TOVThread's four stand. Not exported.
#pragma once

namespace TOVPlatform
{
namespace TOVThreadPriority
{
// The levels that have an enumerator in TOVThread, with the values of the Windows functions. Between and beyond them
// lie others: idle -15, below normal -1, above normal 1.
constexpr int LEVEL_LOWEST = -2;
constexpr int LEVEL_NORMAL = 0;
constexpr int LEVEL_HIGHEST = 2;
constexpr int LEVEL_TIME_CRITICAL = 15;

// What Read gives for a bad handle and for a priority that no level stands for.
constexpr int LEVEL_NONE = 0x7FFFFFFF;

int Read(tHandle hThread);
void Write(tHandle hThread, int nLevel);
} // namespace TOVThreadPriority
} // namespace TOVPlatform
