#include "ThreadScenarios.h"

// What reaches the system at each operation takes longer, and does less in a whole run.
const sThreadScenario THREAD_SCENARIOS[] = {
    {"event", 20, &RunEventAsLock},
    {"event-pairs", 1, &RunEventPairs},
    {"manual-event", 10, &RunManualEvent},
    {"mutex", 1, &RunMutex},
    {"critical-section", 1, &RunCriticalSection},
    {"semaphore", 1, &RunSemaphore},
    {"wait-for-any", 1, &RunWaitForAny},
    {"wait-for-all", 1, &RunWaitForAll},
    {"safe-queue", 1, &RunSafeQueue},
    {"log", 1, &RunLog},
    {"file-table", 1, &RunFileTable},
    {"files", 20, &RunFiles},
    {"object-handles", 1, &RunObjectHandles},
    {"named-objects", 20, &RunNamedObjects},
    {"time-events", 200, &RunTimeEvents},
    {"threads", 500, &RunThreadStarts},
    {"moving-objects", 1, &RunMovingObjects},
    {"moving-files", 50, &RunMovingFiles},
    {nullptr, 1, nullptr},
};
