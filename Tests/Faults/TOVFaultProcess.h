// What the scenarios of faults need from the system. Each system has its own source.
#pragma once

#include <functional>

// Returns whether the action returns true, in a process of its own where the system can copy this one.
bool ReturnsTrueApart(const std::function<bool()>& fnAction);

// The number of descriptors, or of the system's handles, that the process has open.
long CountOpenHandles();

// Lets the chosen call to the system fail, or keeps it from failing. Returns what was set before.
bool LetSystemFail(bool bFail);
