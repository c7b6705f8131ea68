// Waiting for one or several objects.
#pragma once

#include <Posix/Waits/TOVWakeList.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// A thread's wait. It stands on the thread's stack and is used once.
class CWaiter
{
public:
    CWaiter(sThreadRecord& oThread, bool bAll);
    ~CWaiter();

    CWaiter(const CWaiter&) = delete;
    CWaiter& operator=(const CWaiter&) = delete;

    // False if the handle cannot be waited for.
    bool Add(tHandle hObject);

    // Returns one of the results of Backend::Wait.
    tDword Wait(tDword dwMilliseconds);

private:
    friend class CWakeList;

    static constexpr int MAX_OBJECTS = 64;
    static constexpr tDword MAX_LOST_ROUNDS = 8;

    void AddNamed(CNamedObject& oNamed);
    bool HasTwins() const;
    void LockObjects();
    void UnlockObjects();
    bool HoldObjects();
    void ReleaseObjects(int nHeld);
    bool IsCompeting() const;
    void Link();
    void Unlink();
    void Leave();

    tDword TakeNow(bool bNamedToo);
    tDword TakeAgain(eSleepResult eSleep);
    tDword TakeAll();
    bool CanTake(const sWaitNode& oNode) const;
    bool Take(const sWaitNode& oNode);

    tDword SleepAndTake(const CDeadline& oDeadline);
    eSleepResult Sleep(const CDeadline& oDeadline);
    eSleepResult SleepOnOwnWord(const CDeadline& oDeadline);
    void Arm();
    void Disarm();
    void ForgetWake();

    sThreadRecord& m_oThread;
    const bool m_bAll;
    int m_nCount;       // of m_aNodes
    int m_nUnnamed;     // among them
    int m_nNamed;       // of m_apNamed
    bool m_bDone;       // the wait is over, with m_dwResult; set by the thread that ended it
    bool m_bWakeComing; // another thread is about to set this thread's word to m_nWake
    tDword m_nWake;
    tDword m_nLostRounds;
    long long m_llImpatient; // the time from which a further lost round is one too many
    tDword m_dwResult;
    CWaiter* m_pNextToWake;
    sWaitNode m_aNodes[MAX_OBJECTS];
    CNamedObject* m_apNamed[MAX_OBJECTS]; // each once, in the order in which they are locked
};
} // namespace TOVPosix
} // namespace TOVPlatform
