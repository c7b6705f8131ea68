// Rows of locks, events and threads.

#include <Bench.h>
#include <Contention.h>

#include <TOVPlatform/TOVSynchronization.h>
#include <TOVPlatform/TOVThread.h>
#include <TOVProcess/TOVCriticalSection.h>
#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVMutex.h>
#include <TOVProcess/TOVSemaphore.h>
#include <TOVProcess/TOVThread.h>

namespace
{
class CShortThread : public CTOVThread
{
public:
    unsigned long Run() override { return 0; }
};

unsigned long RunShortThread(unsigned long long)
{
    return 0;
}

struct sSemaphoreAsLock
{
    CTOVSemaphore oSemaphore;

    void Lock() { oSemaphore.Lock(); }
    void Unlock() { oSemaphore.Unlock(1); }
};

struct sCriticalSection
{
    CTOVCriticalSection oSection;

    void Lock() { oSection.Enter(); }
    void Unlock() { oSection.Leave(); }
};
} // namespace

BENCH("sync/lock+unlock", KERNEL)
{
    CTOVCriticalSection oSection;
    for (auto _ : oState)
    {
        oSection.Enter();
        oSection.Leave();
    }
}

BENCH("sync/lock+unlock (CTOVMutex)", KERNEL)
{
    CTOVMutex oMutex;
    for (auto _ : oState)
    {
        oMutex.Lock();
        oMutex.Unlock();
    }
}

BENCH("sync/sem post+wait", KERNEL)
{
    CTOVSemaphore oSemaphore(0, 1);
    for (auto _ : oState)
    {
        oSemaphore.Unlock(1);
        oSemaphore.Lock();
    }
}

BENCH("sync/event set+wait", KERNEL)
{
    CTOVEvent oEvent;
    for (auto _ : oState)
    {
        oEvent.Signal();
        oEvent.Wait();
    }
}

BENCH_ONCE("sync/contended lock, 4 threads", KERNEL)
{
    MeasureContendedLock<sCriticalSection>(oState);
}

BENCH_ONCE("sync/contended lock, 4 threads (CTOVMutex)", KERNEL)
{
    MeasureContendedLock<CTOVMutex>(oState);
}

BENCH_ONCE("sync/contended lock, 4 threads (CTOVSemaphore)", KERNEL)
{
    MeasureContendedLock<sSemaphoreAsLock>(oState);
}

BENCH_WALL("sync/thread create+join", KERNEL)
{
    for (auto _ : oState)
    {
        unsigned long ulId = 0;
        const tHandle hThread = TOVPlatform::TOVThread::Create(&RunShortThread, nullptr, &ulId);
        TOVPlatform::TOVThread::WaitForExitInfinite(hThread);
    }
}

BENCH_WALL("sync/thread create+join (CTOVThread)", KERNEL)
{
    for (auto _ : oState)
    {
        CShortThread oThread;
        oThread.Start(0, TOVPlatform::TOVThread::eThreadPriorityNormal);
        oThread.Stop(true, 10000);
    }
}

BENCH("machine/atomic increment", KERNEL)
{
    long lCounter = 0;
    for (auto _ : oState)
        Use(TOVPlatform::TOVSynchronization::Variable::InterlockedIncrement(lCounter));
}
