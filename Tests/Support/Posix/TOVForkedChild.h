// Child processes that are copies of this process, with the calling thread alone.
#pragma once

#include "Debug/TOVCompiler.h"

#include <functional>

// In the child, ThreadSanitizer still counts the threads of the parent, and ends the child when it starts a thread that
// takes the place of one of them.
#if TOV_THREAD_SANITIZER
#define TOV_CAN_FORK_AND_THREAD 0
#else
#define TOV_CAN_FORK_AND_THREAD 1
#endif

// If other threads of the parent allocate, the lock of the sanitizers' heap can stay taken in the child for ever.
#if TOV_ADDRESS_SANITIZER || TOV_THREAD_SANITIZER
#define TOV_CAN_FORK_AMID_ALLOCATIONS 0
#else
#define TOV_CAN_FORK_AMID_ALLOCATIONS 1
#endif

// Whether the action returns true in the child of a fork. A child that does not end is killed at a deadline.
bool IsTrueInFork(const std::function<bool()>& fnAction);

// Forks up to so many times, while other threads call fnBusy without pause. Each child calls fnInChild. Returns the
// number of children in which that returned true before the first in which it did not.
int CountForksAmid(int nForks, const std::function<void()>& fnBusy, const std::function<bool()>& fnInChild);
