// The loads of many threads: each uses one kind of object, and knows exactly what must come of it.
#pragma once

#include "ThreadLoad.h"

struct sThreadScenario
{
    const char* szName;
    int nDivisor; // a whole run has a million operations of each thread, divided by this
    void (*fnRun)(const sThreadLoad& oLoad, CThreadReport& oReport);
};

// Arrays that end with a null name. Each system has its own source for the second one, whose loads the tests leave out.
extern const sThreadScenario THREAD_SCENARIOS[];
extern const sThreadScenario NATIVE_SCENARIOS[];

// Locks: a plain number is raised under them.
void RunEventAsLock(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunMutex(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunCriticalSection(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunSemaphore(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunWaitForAny(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunWaitForAll(const sThreadLoad& oLoad, CThreadReport& oReport);

// Signals and elements, which pass from thread to thread.
void RunEventPairs(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunManualEvent(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunSafeQueue(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunLog(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunTimeEvents(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunThreadStarts(const sThreadLoad& oLoad, CThreadReport& oReport);

// Tables of handles and names.
void RunFileTable(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunFiles(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunObjectHandles(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunNamedObjects(const sThreadLoad& oLoad, CThreadReport& oReport);

// Objects that one thread has had for itself until others come.
void RunMovingObjects(const sThreadLoad& oLoad, CThreadReport& oReport);
void RunMovingFiles(const sThreadLoad& oLoad, CThreadReport& oReport);
