// A load of all that the library has, which leaves nothing behind: for a long run, and between loading and unloading.
#pragma once

#include "Threads/ThreadLoad.h"

// Uses texts, paths, containers, files, streams, smart pointers, handles, classes, the timer and log lines with
// listeners, while other threads use events, locks, queues, tables of handles and, if they may, time events: after one
// of those the library stays in memory for the life of the process.
void RunMixedRound(const sThreadLoad& oLoad, bool bTimeEvents, CThreadReport& oReport);

// The same without the threads: each part in turn.
void RunQuietRound(CThreadReport& oReport);

// Starts a thread of the library and ends it. The handle stays open for the rest of the process, as is described.
void StartAndStopThread(CThreadReport& oReport);

// Runs the test suites of the library. The main program must be a host of tests (Test/TOVTestHost.h).
void RunSuites(CThreadReport& oReport);
