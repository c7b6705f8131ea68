// The record that this backend keeps of each thread that uses it, including threads that the library did not start.
#pragma once

#include <Posix/Base/TOVFutex.h>

#include <csetjmp>

namespace TOVPlatform
{
namespace TOVPosix
{
class CNamedObject;

// What a thread sleeps on in a wait.
constexpr tDword ASLEEP = 0;
constexpr tDword WOKEN = 1;      // the wait is over and unlinked
constexpr tDword LOOK_AGAIN = 2; // the thread has to look under the lock of the waits

// The id of a thread that has not been seen yet. No thread has it, and no object holds it.
constexpr tDword NO_ID = 0x3FFFFFFF;

// The record stands in the thread's own storage, so that it costs no allocation. Its address may be woken after the
// thread's end, which is harmless (see FutexWake).
struct sThreadRecord
{
    tFutex nWake;              // ASLEEP, WOKEN, LOOK_AGAIN
    tDword nId = NO_ID;        // the kernel's id, the owner's mark in locks
    tDword nOwnedMutexes;      // mutexes without name that the thread owns
    CNamedObject* pOwnedNamed; // list of mutexes with name that the thread owns
    tHandle hThread;           // the thread's handle if TOVThread::Create started it, else 0
    void* pLibraryHold;        // the thread's hold on this library if TOVThread::Create started it, else null
    std::jmp_buf* pExit;       // the frame to which TOVThread::Exit goes back; null in threads that it did not start
    void* pExitStack;          // memory to release at the thread's end; see TOVThread::Exit
    void (*pfAtEnd)();         // called at the thread's end; null for nothing
    bool bIntroduced;          // the thread's end will be noticed
    bool bEndDeferred;         // the thread's end has been noticed and waits for the destructors of other keys
};

inline TOV_FAST_THREAD_LOCAL sThreadRecord t_oThread = {};

// Gives the calling thread's record its id, for which the kernel is asked.
void AskThreadId();

// Takes care that the calling thread's end is noticed. Gives its record the id as well, unless it has one.
void IntroduceThread();

// The calling thread's record. From the first call on, the thread's end is noticed: its mutexes are then abandoned and
// its handle is signalled, after its thread-local objects have been destroyed, however the thread ends.
inline sThreadRecord& ThisThread()
{
    if (!t_oThread.bIntroduced)
        IntroduceThread();
    return t_oThread;
}

// The calling thread's id. For what needs no notice of the thread's end.
inline tDword ThisThreadId()
{
    if (t_oThread.nId == NO_ID)
        AskThreadId();
    return t_oThread.nId;
}

// False if the process has no keys left, without which no thread's end can be noticed.
bool CanNoticeEnds();

// Called by a thread that TOVThread::Create started, as its last step: ends it here if its end will not be noticed,
// since there was no memory for that.
void EndUnnoticedThread();

// Called in the child of a fork, under all locks of the process: the calling thread is the only one, and the kernel
// gives it a new id. It owns none of the parent's named mutexes, and still owns what it owned of all other objects.
void ContinueAlone();

constexpr std::size_t EXIT_STACK_SIZE = 0x40000;
} // namespace TOVPosix
} // namespace TOVPlatform
