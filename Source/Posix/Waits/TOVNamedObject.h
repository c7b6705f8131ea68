// Events, mutexes and semaphores with a name, shared between the processes of one user.
#pragma once

#include <Posix/Waits/TOVSharedSegment.h>
#include <Posix/Waits/TOVThreadRecord.h>

namespace TOVPlatform
{
namespace TOVPosix
{
struct sSharedState;

enum eNamedKind : tDword
{
    eNamedEvent = 1,
    eNamedMutex,
    eNamedSemaphore
};

// This process's way to one named object, whatever the number of its handles here.
//
// A mutex is owned through a robust mutex of the C library: the kernel marks and wakes it when its owner dies, and the
// waiters sleep on its word. Events and semaphores have a word of their own, which counts the changes that could
// release a wait.
class CNamedObject
{
public:
    struct sInitial
    {
        eNamedKind eObject;
        tDword nValue;     // event: signalled; mutex: owned by the calling thread; semaphore: count
        tDword nMaximum;   // semaphore
        bool bManualReset; // event
    };

    // Opens the object of that name, made with these values if there is none, and returns a handle; 0 if the name is
    // too long (259 characters) or has a backslash, if another kind of object has it, if the system has no room, or if
    // the lock of the segments cannot be had.
    static tHandle OpenHandle(const char* szName, const sInitial& oInitial);
    static bool CloseHandle(tHandle hObject);

    // The object that a handle names, of this kind or of any, kept open until Release; null if there is none.
    static CNamedObject* FromHandle(tHandle hObject, eNamedKind eObject);
    static CNamedObject* FromHandle(tHandle hObject);
    void Release();

    // Each of these is one complete step.
    void SetSignalled();
    void ClearSignal();
    void LeaveMutex(sThreadRecord& oThread);
    bool ReleaseSemaphore(tDword nCount, tDword& nPrevious);

    // The steps of a wait. Several objects are locked in rising order; CanTake to Disarm need the lock.
    bool IsLockedBefore(const CNamedObject& oOther) const;
    void Lock();
    void Unlock();
    bool CanTake(const sThreadRecord& oThread) const;
    bool Take(sThreadRecord& oThread); // true: a mutex whose owner died

    // Registers a sleeper and returns the value on which it is to sleep at GetWord(). HasPulsed says afterwards
    // whether a manual event has been signalled since, though it may have been reset again.
    tDword Arm();
    void Disarm();
    const void* GetWord() const;
    bool HasPulsed(tDword nSeen) const;

    // The step of a thread's end: the next wait for each mutex that it owns gets it as abandoned.
    static void AbandonMutexes(sThreadRecord& oThread);

private:
    explicit CNamedObject(const CSharedSegment& oSegment);

    static void RemoveNames();
    static CNamedObject* Open(const char* szName, const sInitial& oInitial);
    static CNamedObject* FindOpen(const char* szName);
    static CNamedObject* OpenSegment(const char* szName, const sInitial& oInitial, sThreadRecord& oThread);
    bool TakeMutex(sThreadRecord& oThread);
    void FreeMutex(sThreadRecord& oThread);
    void WakeSleepers();
    void LoseName();
    void Unlist();

    CSharedSegment m_oSegment;
    sSharedState& m_oState;
    std::atomic<tDword> m_nReferences; // handles, waits, an ownership; the last is released under the registry's lock
    tDword m_nHandles;                 // under the registry's lock
    CNamedObject* m_pNext;             // in the registry
    CNamedObject* m_pNextOwned;        // in the owning thread's list
};
} // namespace TOVPosix
} // namespace TOVPlatform
