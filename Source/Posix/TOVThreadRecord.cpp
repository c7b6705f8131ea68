#include <Posix/TOVThreadRecord.h>

#include <Posix/TOVHandleTable.h>
#include <Posix/TOVLibraryHold.h>
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
pthread_key_t s_oHoldKey; // its destructor gives back a hold on this library
std::atomic<bool> s_bKeys = {false};

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
    void* const pLibraryHold = oRecord.pLibraryHold;
    oRecord.pExitStack = nullptr;
    oRecord.nOwnedMutexes = 0;
    oRecord.hThread = 0;
    oRecord.pLibraryHold = nullptr;
    oRecord.nId = 0; // a key destructor that still comes starts anew
    oRecord.bEndDeferred = false;
    if (hThread != 0)
        EndThread(hThread);

    // Who waited for the handle may unload the library while this thread is still here. So the C library gives the hold
    // back, when this function has returned to it, and the thread does not come here again.
    if (pLibraryHold != nullptr && s_bKeys)
        ::pthread_setspecific(s_oHoldKey, pLibraryHold);
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

// A library that is unloaded leaves no keys behind, and no thread that ends later comes back to it.
struct sKeyRelease
{
    ~sKeyRelease()
    {
        if (!s_bKeys.exchange(false))
            return;
        ::pthread_key_delete(s_oEndKey);
        ::pthread_key_delete(s_oHoldKey);
    }
};

void Prepare()
{
    ::pthread_atfork(BeforeFork, AfterFork, AfterForkInChild);
    if (::pthread_key_create(&s_oEndKey, OnThreadEnd) != 0)
        return;
    if (::pthread_key_create(&s_oHoldKey, GetReleaseHold()) != 0)
    {
        ::pthread_key_delete(s_oEndKey);
        return;
    }
    s_bKeys = true;
    // An object, and not a function for the end of the process: sanitizers take the latter away from the library.
    static const sKeyRelease s_oRelease;
}

void Introduce(sThreadRecord& oRecord)
{
    ::pthread_once(&s_oOnce, Prepare);
    oRecord.nKernelId = KernelId();
    oRecord.nId = oRecord.nKernelId;
    if (s_bKeys)
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
    return s_bKeys;
}
} // namespace TOVPosix
} // namespace TOVPlatform
