#include <Posix/TOVThreadRecord.h>

#include <Posix/TOVHandleTable.h>
#include <Posix/TOVNamedObject.h>
#include <Posix/TOVObjectEnd.h>
#include <Posix/TOVWaiter.h>

#include <atomic>
#include <pthread.h>
#include <sys/mman.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
thread_local sThreadRecord t_oRecord = {};

pthread_once_t s_oOnce = PTHREAD_ONCE_INIT;
pthread_key_t s_oEndKey;
std::atomic<bool> s_bEndKey = {false};

tDword KernelId()
{
    return static_cast<tDword>(::syscall(SYS_gettid));
}

// Runs at the thread's end, behind the destructors of its thread-local objects.
void OnThreadEnd(void*)
{
    sThreadRecord& oRecord = t_oRecord;

    // One round later the destructors of all other keys have run as well; they may have used our locks.
    if (!oRecord.bEndDeferred)
    {
        oRecord.bEndDeferred = true;
        ::pthread_setspecific(s_oEndKey, &oRecord);
        return;
    }

    if (oRecord.nOwnedMutexes != 0)
        AbandonMutexes(oRecord.nId);
    CNamedObject::AbandonMutexes(oRecord);
    if (oRecord.pExitStack != nullptr)
        ::munmap(oRecord.pExitStack, EXIT_STACK_SIZE);

    const unsigned long long hThread = oRecord.hThread;
    oRecord.pExitStack = nullptr;
    oRecord.nOwnedMutexes = 0;
    oRecord.hThread = 0;
    oRecord.nId = 0; // a key destructor that still comes starts anew
    oRecord.bEndDeferred = false;
    if (hThread != 0)
        EndThread(hThread);
}

// A lock of ours that another thread holds during a fork would stay locked in the child for ever.
void BeforeFork()
{
    CNamedObject::LockRegistry();
    LockWaits();
    CHandleTable::Lock();
}

void AfterFork()
{
    CHandleTable::Unlock();
    UnlockWaits();
    CNamedObject::UnlockRegistry();
}

// The child is a new thread for the kernel and owns none of the parent's shared mutexes; what its one thread owned of
// the others it goes on owning.
void AfterForkInChild()
{
    AfterFork();
    if (t_oRecord.nId != 0)
        t_oRecord.nKernelId = KernelId();
    t_oRecord.pOwnedNamed = nullptr;
}

// A library that is unloaded leaves no key behind, and no thread that ends later comes back to it.
struct sEndKeyRelease
{
    ~sEndKeyRelease()
    {
        if (s_bEndKey.exchange(false))
            ::pthread_key_delete(s_oEndKey);
    }
};

void Prepare()
{
    s_bEndKey = ::pthread_key_create(&s_oEndKey, OnThreadEnd) == 0;
    // An object, and not a function for the end of the process: sanitizers take the latter away from the library.
    static const sEndKeyRelease s_oRelease;
    ::pthread_atfork(BeforeFork, AfterFork, AfterForkInChild);
}

void Introduce(sThreadRecord& oRecord)
{
    ::pthread_once(&s_oOnce, Prepare);
    oRecord.nKernelId = KernelId();
    oRecord.nId = oRecord.nKernelId;
    if (s_bEndKey)
        ::pthread_setspecific(s_oEndKey, &oRecord);
}
} // namespace

sThreadRecord& ThisThread()
{
    sThreadRecord& oRecord = t_oRecord;
    if (oRecord.nId == 0)
        Introduce(oRecord);
    return oRecord;
}

bool CanNoticeEnds()
{
    ThisThread();
    return s_bEndKey;
}
} // namespace TOVPosix
} // namespace TOVPlatform
