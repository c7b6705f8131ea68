// The porting manual for the source TOVThread.cpp of a backend.
#pragma once

#include <TOVPlatform/TOVThread.h>

namespace TOVPlatform
{
// This header declares what a port owes to the threads of TOVPlatform/TOVThread.h. The waits for a thread's end are
// those of Backend/TOVSynchronization.h.
//
// A using-declaration names a public function that the port defines itself, exactly as the public header describes it.
// The other functions are not exported.
//
// A priority is a number on the scale of Windows, and applies to one thread. Any thread may call any function.
namespace Backend
{
namespace Thread
{
using TOVThread::Create;
using TOVThread::Exit;

// These are the levels for which TOVThread has an enumerator, with the values of the Windows functions. There are other
// levels between them and beyond them: idle -15, below normal -1, above normal 1.
constexpr int LEVEL_LOWEST = -2;
constexpr int LEVEL_NORMAL = 0;
constexpr int LEVEL_HIGHEST = 2;
constexpr int LEVEL_TIME_CRITICAL = 15;

// ReadPriority returns this for a bad handle and for a priority that is not a level.
constexpr int LEVEL_NONE = 0x7FFFFFFF;

int ReadPriority(tHandle hThread);

// Sets one of the four levels. A bad handle is ignored.
void WritePriority(tHandle hThread, int nLevel);

// Calls pfAtEnd on the calling thread when it ends, after the destructors of its thread-local objects, whoever started
// it. There is one such function. Returns false if the end cannot be noticed.
bool CallAtEnd(void (*pfAtEnd)() noexcept);
} // namespace Thread
} // namespace Backend
} // namespace TOVPlatform
