// The seam's two waits, on which all waits of TOVSynchronization and TOVThread stand. Not exported.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
namespace TOVWait
{
constexpr tDword INFINITE_TIMEOUT = 0xFFFFFFFF;
constexpr int MAX_OBJECTS = 64;

// What a wait tells, with the values of the Windows functions.
constexpr tDword RESULT_SIGNALLED = 0;       // plus the index of the object
constexpr tDword RESULT_ABANDONED = 0x80;    // plus the index: a mutex whose owner died, now the caller's
constexpr tDword RESULT_TIMEOUT = 0x102;     // nothing has been taken
constexpr tDword RESULT_FAILED = 0xFFFFFFFF; // a bad handle

// Waits for one object and takes it as its kind demands. A timeout of 0 only looks.
tDword ForOne(tHandle hObject, tDword dwMilliseconds);

// Waits for any or all of 1 to MAX_OBJECTS objects.
tDword ForMany(const tHandle* pHandles, int nCount, bool bWaitForAll, tDword dwMilliseconds);
} // namespace TOVWait
} // namespace TOVPlatform
