// The locks that the whole process shares.
#pragma once

#include <Posix/Base/TOVFutex.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// All locks of this backend's process-wide structures stand here, because a fork has to take every one of them (see
// Waits/TOVFork.h). A thread that takes several takes them in this order. They are usable before any static has been
// constructed.
enum eProcessLock
{
    eLockNamedObjects, // the list of open named objects; held while a segment is opened or closed
    eLockWaits,        // all waits of this process
    eLockHandles,      // the table's free records
    eLockTimeEvents,
    eLockFileSearches,
    eLockStreamStages, // which stages are in use
    NUM_PROCESS_LOCKS
};
extern CShortLock s_aProcessLocks[NUM_PROCESS_LOCKS];

// Holds one of these locks for a scope.
class CProcessLockScope : public CShortLockScope
{
public:
    explicit CProcessLockScope(eProcessLock eLock) : CShortLockScope(s_aProcessLocks[eLock]) {}
};
} // namespace TOVPosix
} // namespace TOVPlatform
