// Whatever lets in one thread, or a known number of threads, lets in no other.
#include "ThreadScenarios.h"

#include <TOVPlatform/TOVSynchronization.h>

#include <thread>
#include <vector>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

namespace
{
// A thread that stands still inside makes the others come and wait.
void StandStillAtTimes(int nTurn)
{
    if (nTurn % 1024 == 0)
        std::this_thread::yield();
}

// All threads raise a plain number under the lock.
template<class TLock, class TUnlock>
void CountUnder(const sThreadLoad& oLoad, CThreadReport& oReport, TLock fnLock, TUnlock fnUnlock)
{
    long long llCount = 0;
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            oWaits.Measure([&] { fnLock(nTurn + nThread); });
            const long long llBefore = llCount;
            StandStillAtTimes(nTurn);
            llCount = llBefore + 1;
            fnUnlock(nTurn + nThread);
        }
    });
    oReport.ExpectEqual(1LL * oLoad.nThreads * oLoad.nOperations, llCount, "uses counted under the lock");
}

// Takes a mutex in one of the ways in which it can be taken. Whoever only tries, and fails, then waits: one who tried
// for ever would stand in no queue.
void LockSomehow(tHandle hMutex, int nWay)
{
    switch (nWay % 8)
    {
    case 0:
        if (Mutex::IsLocked(hMutex))
            Mutex::Lock(hMutex);
        break;
    case 1:
        if (!Event::TimedWait(hMutex, 1))
            Mutex::Lock(hMutex);
        break;
    case 2:
        Event::MultipleWait(&hMutex, 1, false);
        break;
    case 3:
        Mutex::Lock(hMutex);
        Mutex::Lock(hMutex);
        Mutex::Unlock(hMutex);
        break;
    default:
        Mutex::Lock(hMutex);
        break;
    }
}

// Objects of all kinds of which each lets in one thread.
class CTokens
{
public:
    explicit CTokens(int nTokens)
    {
        for (int nToken = 0; nToken < nTokens; ++nToken)
            m_aTokens.push_back(nToken % 3 == 0   ? Event::Create(false, true, nullptr)
                                : nToken % 3 == 1 ? Mutex::Create(false, nullptr)
                                                  : Semaphore::Create(1, 1, nullptr));
    }
    ~CTokens()
    {
        for (const tHandle hToken : m_aTokens)
            Event::Destroy(hToken);
    }
    CTokens(const CTokens&) = delete;
    CTokens& operator=(const CTokens&) = delete;

    std::vector<tHandle> GetHandles() const { return m_aTokens; }
    tHandle operator[](int nToken) const { return m_aTokens[static_cast<std::size_t>(nToken)]; }

    void PutBack(int nToken, CThreadReport& oReport) const
    {
        const tHandle hToken = (*this)[nToken];
        if (nToken % 3 == 0)
            Event::Signal(hToken);
        else if (nToken % 3 == 1)
            Mutex::Unlock(hToken);
        else
            oReport.ExpectEqual(0, Semaphore::Unlock(hToken, 1), "units of a taken semaphore");
    }

private:
    std::vector<tHandle> m_aTokens;
};
} // namespace

void RunEventAsLock(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    const tHandle hEvent = Event::Create(false, true, nullptr);
    CountUnder(
        oLoad, oReport,
        [hEvent](int nWay) {
            if (nWay % 8 != 0 || !Event::TimedWait(hEvent, nWay % 16 == 0 ? 1 : 0))
                Event::Wait(hEvent);
        },
        [hEvent](int) { Event::Signal(hEvent); });
    oReport.Expect(Event::TimedWait(hEvent, 0) && !Event::TimedWait(hEvent, 0), "one signal is left");
    Event::Destroy(hEvent);
}

void RunMutex(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    tHandle hMutex = Mutex::Create(false, nullptr);
    CountUnder(
        oLoad, oReport, [hMutex](int nWay) { LockSomehow(hMutex, nWay); }, [hMutex](int) { Mutex::Unlock(hMutex); });
    oReport.Expect(Event::MultipleTimedWait(&hMutex, 1, false, 0) == 0, "the mutex is free");
    Mutex::Unlock(hMutex);
    Mutex::Destroy(hMutex);
}

void RunCriticalSection(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    const tHandle hSection = CriticalSection::Create(0);
    const auto fnLevels = [](int nWay) { return nWay % 16 == 0 ? 3 : 1; };
    CountUnder(
        oLoad, oReport,
        [&](int nWay) {
            for (int nLevel = 0; nLevel < fnLevels(nWay); ++nLevel)
                CriticalSection::Enter(hSection);
        },
        [&](int nWay) {
            for (int nLevel = 0; nLevel < fnLevels(nWay); ++nLevel)
                CriticalSection::Leave(hSection);
        });
    CriticalSection::Destroy(hSection);
}

void RunSemaphore(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    constexpr int UNITS = 3;
    const tHandle hSemaphore = Semaphore::Create(UNITS, UNITS, nullptr);
    std::atomic<int> nInside(0);
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            oWaits.Measure([&] {
                if ((nTurn + nThread) % 8 != 0 || !Semaphore::TryLock(hSemaphore, nTurn % 3))
                    Semaphore::Lock(hSemaphore);
            });
            oReport.Expect(++nInside <= UNITS, "more threads inside than the semaphore has units");
            StandStillAtTimes(nTurn);
            --nInside;
            const long lBefore = Semaphore::Unlock(hSemaphore, 1);
            oReport.Expect(lBefore >= 0 && lBefore < UNITS, "a unit too many is in the semaphore");
        }
    });

    int nLeft = 0;
    while (Semaphore::TryLock(hSemaphore, 0))
        ++nLeft;
    oReport.ExpectEqual(UNITS, nLeft, "units in the end");
    Semaphore::Destroy(hSemaphore);
}

void RunWaitForAny(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    constexpr int TOKENS = 4;
    const CTokens oTokens(TOKENS);
    long long allUses[TOKENS] = {}; // each under its token
    RunThreads(oLoad, oReport, [&](int, CWaits& oWaits) {
        std::vector<tHandle> aTokens = oTokens.GetHandles();
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            const int nToken =
                oWaits.Measure([&] { return Event::MultipleTimedWait(aTokens.data(), TOKENS, false, -1); });
            if (nToken < 0 || nToken >= TOKENS)
                return oReport.ExpectEqual(0, nToken, "result of a wait for any");
            const long long llBefore = allUses[nToken];
            StandStillAtTimes(nTurn);
            allUses[nToken] = llBefore + 1;
            oTokens.PutBack(nToken, oReport);
        }
    });

    long long llSum = 0;
    for (const long long llUses : allUses)
        llSum += llUses;
    oReport.ExpectEqual(1LL * oLoad.nThreads * oLoad.nOperations, llSum, "uses of all tokens");
}

// Philosophers round a table, who take the forks at both sides at once.
void RunWaitForAll(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    const int nForks = oLoad.nThreads;
    const CTokens oForks(nForks);
    std::vector<long long> aUses(static_cast<std::size_t>(nForks), 0); // each under its fork
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        const int nOther = (nThread + 1) % nForks;
        tHandle aBoth[2] = {oForks[nThread], oForks[nOther]};
        tHandle aReverse[2] = {aBoth[1], aBoth[0]};
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            const int nResult = oWaits.Measure(
                [&] { return Event::MultipleTimedWait(nTurn % 4 == 0 ? aReverse : aBoth, 2, true, -1); });
            if (nResult < 0 || nResult > 1)
                return oReport.ExpectEqual(0, nResult, "result of a wait for all");
            ++aUses[static_cast<std::size_t>(nThread)];
            StandStillAtTimes(nTurn);
            ++aUses[static_cast<std::size_t>(nOther)];
            oForks.PutBack(nThread, oReport);
            oForks.PutBack(nOther, oReport);
        }
    });

    for (const long long llUses : aUses)
        oReport.ExpectEqual(2LL * oLoad.nOperations, llUses, "uses of a fork");
}
