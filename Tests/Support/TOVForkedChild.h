// Children that are copies of this process, with the calling thread alone. Posix.
#pragma once

#include <functional>

// Whether the action gives true in the child of a fork. A child that does not come to its end is killed at a deadline.
bool IsTrueInFork(const std::function<bool()>& fnAction);

// Forks again and again, while other threads do the one thing without pause, and has each child do the other: the
// number of children that gave true before the first that did not.
int CountForksAmid(int nForks, const std::function<void()>& fnBusy, const std::function<bool()>& fnInChild);
