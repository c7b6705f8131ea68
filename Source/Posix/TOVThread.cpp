#include <TOVPlatform/Backend/TOVThread.h>

#include <Posix/Waits/TOVLibraryHold.h>
#include <Posix/Waits/TOVObjectEnd.h>
#include <Posix/Waits/TOVWakeList.h>

#include <algorithm>
#include <csetjmp>
#include <cstdlib>
#include <new>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <ucontext.h>

namespace TOVPlatform
{
using namespace TOVPosix;
using TOVThread::tThreadEntry;

namespace
{
constexpr tDword START_BEGUN = 0;
constexpr tDword START_AWAITED = 1; // the new thread sleeps until the start is done
constexpr tDword START_DONE = 2;

void CallEntry(tThreadEntry pEntry, void* pParam)
{
    sThreadRecord& oThread = ThisThread();
    std::jmp_buf oExit;
    oThread.pExit = &oExit;
    if (_setjmp(oExit) == 0)
        pEntry(reinterpret_cast<std::uintptr_t>(pParam));
    ThisThread().pExit = nullptr;
}

// The creator stores the id before the entry function can see, or release, the place for it.
void AwaitStart(tFutex& nStep)
{
    tDword nSeen = START_BEGUN;
    if (!nStep.compare_exchange_strong(nSeen, START_AWAITED, std::memory_order_acquire, std::memory_order_acquire))
        return;
    while (nStep.load(std::memory_order_acquire) == START_AWAITED)
        FutexSleep(&nStep, START_AWAITED, eFutexPrivate, CDeadline::Never());
}

void FinishStart(tFutex& nStep)
{
    if (nStep.exchange(START_DONE, std::memory_order_acq_rel) == START_AWAITED)
        FutexWake(&nStep, 1, eFutexPrivate);
}

// Allocates nothing, so that the C library need not prepare the heap for a thread that does not use it.
void* EnterThread(void* pParam)
{
    CWaitable& oRecord = *static_cast<CWaitable*>(pParam);
    AwaitStart(oRecord.m_oStart.nStep);

    t_oThread.nId = oRecord.m_nSystemId.load(std::memory_order_relaxed);
    sThreadRecord& oThread = ThisThread();
    oThread.hThread = oRecord.GetHandle();
    oThread.pLibraryHold = oRecord.m_oStart.pLibraryHold;
    CallEntry(oRecord.m_oStart.pEntry, oRecord.m_oStart.pParam);
    EndUnnoticedThread();
    return nullptr;
}

// Starts a thread that is never joined: its handle reports its end.
bool StartThread(CWaitable& oRecord, pthread_t& oThread)
{
    void* const pLibraryHold = HoldLibrary();
    if (pLibraryHold == nullptr)
        return false;
    oRecord.m_oStart.pLibraryHold = pLibraryHold;
    if (::pthread_create(&oThread, nullptr, EnterThread, &oRecord) != 0)
    {
        GetReleaseHold()(pLibraryHold); // this is never the last hold: the caller has its own
        return false;
    }
    ::pthread_detach(oThread);
    return true;
}

// The kernel derives the number of a thread's clock from the thread's id: it is the inverted id, followed by three bits
// for the kind of clock. So the creator learns the id without waiting for the thread, which has not even begun.
tDword IdOf(pthread_t oThread)
{
    clockid_t nClock = 0;
    ::pthread_getcpuclockid(oThread, &nClock);
    return static_cast<tDword>(~(nClock >> 3));
}

void EndOnThisStack()
{
    ::pthread_exit(nullptr);
}

// pthread_exit unwinds the stack that it is called on, so a thread whose root frame is not ours calls it on an empty
// stack. The C library then goes back to the thread's own root and releases its storage there.
[[noreturn]] void ExitForeignThread(sThreadRecord& oThread)
{
    void* const pMemory = ::mmap(nullptr, EXIT_STACK_SIZE, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pMemory == MAP_FAILED)
        ::pthread_exit(nullptr); // it is better to run destructors than not to end at all

    oThread.pExitStack = pMemory;
    ucontext_t& oContext = *new (pMemory) ucontext_t();
    ::getcontext(&oContext);
    oContext.uc_stack.ss_sp = &oContext + 1;
    oContext.uc_stack.ss_size = EXIT_STACK_SIZE - sizeof oContext;
    oContext.uc_link = nullptr;
    ::makecontext(&oContext, EndOnThisStack, 0);
    ::setcontext(&oContext);
    std::abort(); // never reached: a context that was just made can be entered
}

// A level of priority is a nice value relative to that of the process.
struct sNiceLevel
{
    int nLevel;
    int nOffset;
};

constexpr sNiceLevel NICE_LEVELS[] = {
    {Backend::Thread::LEVEL_LOWEST, 10},
    {Backend::Thread::LEVEL_NORMAL, 0},
    {Backend::Thread::LEVEL_HIGHEST, -10},
    {Backend::Thread::LEVEL_TIME_CRITICAL, -20},
};

int ToNice(const sNiceLevel& oLevel)
{
    const int nBase = ::getpriority(PRIO_PROCESS, static_cast<id_t>(::getpid()));
    return std::clamp(nBase + oLevel.nOffset, -20, 19);
}

int ReadNice(const CWaitable& oThread)
{
    return ::getpriority(PRIO_PROCESS, oThread.m_nSystemId.load(std::memory_order_relaxed));
}
} // namespace

tHandle TOVThread::Create(tThreadEntry pEntry, void* pParam, unsigned long* pulThreadId)
{
    // A thread is not started if its end could not be noticed.
    CWaitable* const pThread = CanNoticeEnds() ? CHandleTable::Allocate() : nullptr;
    if (pThread == nullptr)
        return 0;

    pThread->m_oStart.pEntry = pEntry;
    pThread->m_oStart.pParam = pParam;
    pThread->m_oStart.nStep.store(START_BEGUN, std::memory_order_relaxed);
    const tHandle hThread = CHandleTable::Publish(pThread, eKindThread, 0);
    pthread_t oThread;
    if (!StartThread(*pThread, oThread))
    {
        CloseObject(hThread);
        return 0;
    }

    const tDword nId = IdOf(oThread);
    pThread->m_nSystemId.store(nId, std::memory_order_relaxed);
    pThread->m_nPriorityLevel.store(Backend::Thread::LEVEL_NORMAL, std::memory_order_relaxed);
    pThread->m_nNice.store(ReadNice(*pThread), std::memory_order_relaxed);
    if (pulThreadId != nullptr)
        __atomic_store_n(pulThreadId, nId, __ATOMIC_RELAXED); // another thread of the same object may write there too

    FinishStart(pThread->m_oStart.nStep);
    return hThread;
}

// Jumps back to the thread's first frame, which returns: no destructor in between runs, and the C library releases the
// thread's storage as at any other end. pthread_exit unwinds, which would run the destructors and end the process at a
// noexcept frame.
void TOVThread::Exit(int)
{
    sThreadRecord& oThread = ThisThread();
    if (oThread.pExit != nullptr)
        std::longjmp(*oThread.pExit, 1);
    ExitForeignThread(oThread);
}

namespace Backend
{
// The lock of the waits keeps the thread from ending here, so that its id cannot become another thread's meanwhile.
int Thread::ReadPriority(tHandle hThread)
{
    const CWaitScope oScope;
    CWaitable* const pThread = CHandleTable::Find(hThread, eKindThread);
    if (pThread == nullptr)
        return LEVEL_NONE;

    const int nSetLevel = pThread->m_nPriorityLevel.load(std::memory_order_relaxed);
    if (pThread->IsSignalled())
        return nSetLevel;
    const int nNice = ReadNice(*pThread);
    if (nNice == pThread->m_nNice.load(std::memory_order_relaxed))
        return nSetLevel;
    for (const sNiceLevel& oLevel : NICE_LEVELS) // the value was set by other means
    {
        if (ToNice(oLevel) == nNice)
            return oLevel.nLevel;
    }
    return LEVEL_NONE;
}

void Thread::WritePriority(tHandle hThread, int nLevel)
{
    const CWaitScope oScope;
    CWaitable* const pThread = CHandleTable::Find(hThread, eKindThread);
    if (pThread == nullptr)
        return;

    pThread->m_nPriorityLevel.store(nLevel, std::memory_order_relaxed);
    if (pThread->IsSignalled())
        return;
    int nNice = ReadNice(*pThread);
    for (const sNiceLevel& oLevel : NICE_LEVELS)
    {
        if (oLevel.nLevel != nLevel || ToNice(oLevel) == nNice)
            continue;
        ::setpriority(PRIO_PROCESS, pThread->m_nSystemId.load(std::memory_order_relaxed), ToNice(oLevel));
        nNice = ReadNice(*pThread); // the system may have refused the new value
    }
    pThread->m_nNice.store(nNice, std::memory_order_relaxed);
}

bool Thread::CallAtEnd(void (*pfAtEnd)() noexcept)
{
    ThisThread().pfAtEnd = pfAtEnd;
    return CanNoticeEnds();
}
} // namespace Backend
} // namespace TOVPlatform
