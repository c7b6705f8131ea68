#include <Posix/Base/TOVProcessLocks.h>

namespace TOVPlatform
{
namespace TOVPosix
{
CShortLock s_aProcessLocks[NUM_PROCESS_LOCKS];
} // namespace TOVPosix
} // namespace TOVPlatform
