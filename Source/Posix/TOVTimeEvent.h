// What the rest of this backend has to know of the time events.
#pragma once

namespace TOVPlatform
{
namespace TOVPosix
{
// In the child of a fork, under the lock of the time events: their thread stays with the parent, and so do they, as the
// system's own timers do.
void ForgetTimeEvents();
} // namespace TOVPosix
} // namespace TOVPlatform
