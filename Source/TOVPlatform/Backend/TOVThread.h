#pragma once

#include <TOVPlatform/TOVThread.h>

namespace TOVPlatform
{
// What a port owes to the threads of TOVPlatform/TOVThread.h. The waits for a thread's end are those of
// Backend/TOVSynchronization.h.
//
// A using-declaration names a public function that the port defines itself, exactly as the public header describes it.
// The other functions are not exported.
//
// A priority is a level on the scale of Windows, and belongs to one thread. Threads: any, for all functions.
namespace Backend
{
namespace Thread
{
using TOVThread::Create;
using TOVThread::Exit;

// The levels that TOVThread has an enumerator for, with the values of the Windows functions. Others lie between and
// beyond them: idle -15, below normal -1, above normal 1.
constexpr int LEVEL_LOWEST = -2;
constexpr int LEVEL_NORMAL = 0;
constexpr int LEVEL_HIGHEST = 2;
constexpr int LEVEL_TIME_CRITICAL = 15;

// The result for a bad handle and for a priority that no level stands for.
constexpr int LEVEL_NONE = 0x7FFFFFFF;

int ReadPriority(tHandle hThread);

// Sets one of the four levels. A bad handle is passed over.
void WritePriority(tHandle hThread, int nLevel);
} // namespace Thread
} // namespace Backend
} // namespace TOVPlatform
