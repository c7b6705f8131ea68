#include <Posix/Waits/TOVThreadRecord.h>

#include <Posix/Waits/TOVLibraryHold.h>
#include <Posix/Waits/TOVNamedObject.h>
#include <Posix/Waits/TOVObjectEnd.h>

#include <atomic>
#include <pthread.h>
#include <sys/mman.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
pthread_once_t s_oOnce = PTHREAD_ONCE_INIT;
pthread_key_t s_oEndKey;
pthread_key_t s_oHoldKey; // its destructor gives back a hold on this library
std::atomic<bool> s_bKeys = {false};

tDword KernelId()
{
    return static_cast<tDword>(::syscall(SYS_gettid));
}

// Runs at the thread's end, after the destructors of its thread-local objects.
void OnThreadEnd(void*)
{
    sThreadRecord& oRecord = t_oThread;

    // One round later the destructors of all other keys have run as well; they may have used our locks.
    if (!oRecord.bEndDeferred)
    {
        oRecord.bEndDeferred = true;
        if (::pthread_setspecific(s_oEndKey, &oRecord) == 0)
            return;
    }

    if (oRecord.nOwnedMutexes != 0)
        AbandonMutexes(oRecord.nId);
    CNamedObject::AbandonMutexes(oRecord);
    if (oRecord.pfAtEnd != nullptr)
        oRecord.pfAtEnd();
    if (oRecord.pExitStack != nullptr)
        ::munmap(oRecord.pExitStack, EXIT_STACK_SIZE);

    const tHandle hThread = oRecord.hThread;
    void* const pLibraryHold = oRecord.pLibraryHold;
    oRecord.pfAtEnd = nullptr;
    oRecord.pExitStack = nullptr;
    oRecord.nOwnedMutexes = 0;
    oRecord.hThread = 0;
    oRecord.pLibraryHold = nullptr;
    oRecord.nId = NO_ID; // a key destructor that still runs begins with a new record
    oRecord.bIntroduced = false;
    oRecord.bEndDeferred = false;
    if (hThread != 0)
        EndThread(hThread);

    // A thread that has waited for the handle may unload the library while this thread is still in it. So the C library
    // gives the hold back, when this function has returned to it, and this thread does not enter the library again.
    if (pLibraryHold != nullptr && s_bKeys)
        ::pthread_setspecific(s_oHoldKey, pLibraryHold);
}

// A library that is unloaded deletes its keys, so that no thread that ends later calls it.
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
    if (::pthread_key_create(&s_oEndKey, OnThreadEnd) != 0)
        return;
    if (::pthread_key_create(&s_oHoldKey, GetReleaseHold()) != 0)
    {
        ::pthread_key_delete(s_oEndKey);
        return;
    }
    s_bKeys = true;
    // An object does it, and not a function for the end of the process, because sanitizers detach the latter from the
    // library.
    static const sKeyRelease s_oRelease;
}

} // namespace

void AskThreadId()
{
    t_oThread.nId = KernelId();
}

void IntroduceThread()
{
    ThisThreadId();
    ::pthread_once(&s_oOnce, Prepare);
    // The first value of a key beyond the 32nd takes memory. If there is none, the next call tries again.
    t_oThread.bIntroduced = !s_bKeys || ::pthread_setspecific(s_oEndKey, &t_oThread) == 0;
}

bool CanNoticeEnds()
{
    ThisThread();
    return s_bKeys;
}

void EndUnnoticedThread()
{
    if (ThisThread().bIntroduced)
        return;
    t_oThread.bEndDeferred = true;
    OnThreadEnd(nullptr);
}

void ContinueAlone()
{
    const tDword nFormerId = t_oThread.nId;
    if (nFormerId != NO_ID)
        t_oThread.nId = KernelId();
    t_oThread.pOwnedNamed = nullptr;
    EndOtherThreads(t_oThread, nFormerId);
}
} // namespace TOVPosix
} // namespace TOVPlatform
