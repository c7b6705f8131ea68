// The holds that keep this library in memory while threads run in its code.
#pragma once

namespace TOVPlatform
{
namespace TOVPosix
{
// Takes one more reference to this library, so that it stays in memory when the program unloads it. Null if the system
// refuses.
void* HoldLibrary();

// The function that gives a reference back. It is the loader's own and no part of this library, so that a thread can
// call it last, when it must not return here.
typedef void (*tReleaseHold)(void* pHold);
tReleaseHold GetReleaseHold();

// Keeps this library in memory for the rest of the process.
void HoldLibraryForEver();
} // namespace TOVPosix
} // namespace TOVPlatform
