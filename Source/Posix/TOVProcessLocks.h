// The locks that the whole process shares, and what a fork does with them.
#pragma once

#include <Posix/TOVFutex.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// All locks of this backend's process-wide structures stand here, because a fork has to take every one of them. They
// are in the order in which a thread takes them that takes several. Usable before any static has been constructed.
enum eProcessLock
{
    eLockNamedObjects, // the list of open named objects; held while a segment is opened or closed
    eLockWaits,        // all waits of this process (see TOVWaiter.h)
    eLockHandles,      // the table's free records
    eLockTimeEvents,
    eLockFileSearches,
    NUM_PROCESS_LOCKS
};
extern CShortLock s_aProcessLocks[NUM_PROCESS_LOCKS];

// Holds one of them for a scope.
class CProcessLockScope : public CShortLockScope
{
public:
    explicit CProcessLockScope(eProcessLock eLock) : CShortLockScope(s_aProcessLocks[eLock]) {}
};

// Makes each fork of this process take all these locks, so that the child finds them free and what they guard whole.
// The locks of handles are no part of this, since a program can hold them without limit: what other threads own of them
// they leave in the child, as if they had ended there (see TOVObjectEnd.h).
void NoticeForks();
} // namespace TOVPosix
} // namespace TOVPlatform
