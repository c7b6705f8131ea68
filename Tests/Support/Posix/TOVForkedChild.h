// Children that are copies of this process, with the calling thread alone. Posix.
#pragma once

#include <functional>

// ThreadSanitizer knows the parent's threads in the child as well, and ends it when one of theirs comes to life again.
#if defined(__SANITIZE_THREAD__)
#define TOV_CAN_FORK_AND_THREAD 0
#else
#define TOV_CAN_FORK_AND_THREAD 1
#endif

// The sanitizers' memory can be locked for ever in the child of a process whose other threads allocate.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define TOV_CAN_FORK_AMID_ALLOCATIONS 0
#else
#define TOV_CAN_FORK_AMID_ALLOCATIONS 1
#endif

// Whether the action gives true in the child of a fork. A child that does not come to its end is killed at a deadline.
bool IsTrueInFork(const std::function<bool()>& fnAction);

// Forks again and again, while other threads do the one thing without pause, and has each child do the other: the
// number of children that gave true before the first that did not.
int CountForksAmid(int nForks, const std::function<void()>& fnBusy, const std::function<bool()>& fnInChild);
