// What the system itself knows of threads, for tests that examine the library's threads from outside.
#pragma once

#include <vector>

// A thread as the library names it: its handle, and the system's id.
struct sNativeThread
{
    unsigned long long hThread;
    unsigned long ulId;
};

// The system's id of the calling thread.
unsigned long NativeThreadId();

// The priority on the system's own scale, where more urgent is higher: GetThreadPriority on Windows, the negated nice
// value on Linux.
int NativePriority(const sNativeThread& oThread);

// Returns false if this user may not do it.
bool SetNativePriority(const sNativeThread& oThread, int nPriority);

// Values of that scale. The one above normal comes first on Windows.
std::vector<int> NativePriorities();
