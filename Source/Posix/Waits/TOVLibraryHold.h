// What keeps this library in memory while threads run in its code.
#pragma once

namespace TOVPlatform
{
namespace TOVPosix
{
// One more reference to this library, by which the program's own unloading leaves it in memory. Null if the system
// refuses.
void* HoldLibrary();

// Gives a reference back. It is the loader's own function and nothing of this library, so that a thread can be sent
// there which must not come back.
typedef void (*tReleaseHold)(void* pHold);
tReleaseHold GetReleaseHold();

// No unloading takes this library out of memory any more.
void HoldLibraryForEver();
} // namespace TOVPosix
} // namespace TOVPlatform
