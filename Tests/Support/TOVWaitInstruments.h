// What tests of events, mutexes, semaphores and threads share. All waits here have a deadline.
#pragma once

#include "Support/TOVTestSupport.h"

#include <TOVPlatform/TOVSynchronization.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// In milliseconds; far more than any wait here needs.
constexpr long DEADLINE = 60000;

typedef std::vector<unsigned long long> tHandles;

inline int WaitForAny(tHandles aHandles, long lMilliseconds = DEADLINE)
{
    return TOVPlatform::TOVSynchronization::Event::MultipleTimedWait(aHandles.data(), static_cast<int>(aHandles.size()),
                                                                     false, lMilliseconds);
}

inline int WaitForAll(tHandles aHandles, long lMilliseconds = DEADLINE)
{
    return TOVPlatform::TOVSynchronization::Event::MultipleTimedWait(aHandles.data(), static_cast<int>(aHandles.size()),
                                                                     true, lMilliseconds);
}

// Takes the object if that is possible without waiting, and returns whether it was.
inline bool TakesNow(unsigned long long hObject)
{
    return TOVPlatform::TOVSynchronization::Event::TimedWait(hObject, 0);
}

// An event, a mutex or a semaphore that is destroyed at the end.
class COwnHandle
{
public:
    explicit COwnHandle(unsigned long long hObject) : m_hObject(hObject) {}

    ~COwnHandle() { TOVPlatform::TOVSynchronization::Event::Destroy(m_hObject); }

    COwnHandle(const COwnHandle&) = delete;
    COwnHandle& operator=(const COwnHandle&) = delete;

    operator unsigned long long() const { return m_hObject; }

private:
    const unsigned long long m_hObject;
};

// Runs an action on a thread of its own and waits for the thread's end.
inline void OnAnotherThread(const std::function<void()>& fnAction)
{
    std::thread(fnAction).join();
}

// Whether another thread cannot take the mutex now. Afterwards the mutex is in the same state, but an abandoned mutex
// is free.
inline bool IsLockedForOthers(unsigned long long hMutex)
{
    bool bHad = false;
    OnAnotherThread([&] {
        bHad = TakesNow(hMutex);
        if (bHad)
            TOVPlatform::TOVSynchronization::Mutex::Unlock(hMutex);
    });
    return !bHad;
}

// A thread that does one action after the other, while the caller waits.
//
//     CWorker oOwner;
//     oOwner.Do([&] { Mutex::Lock(hMutex); });
//     ...
//     oOwner.End();
class CWorker
{
public:
    CWorker() : m_bEnding(false), m_oThread([this] { Work(); }) {}

    ~CWorker() { End(); }

    CWorker(const CWorker&) = delete;
    CWorker& operator=(const CWorker&) = delete;

    void Do(const std::function<void()>& fnAction)
    {
        std::unique_lock<std::mutex> oLock(m_oMutex);
        m_fnAction = fnAction;
        m_oChanged.notify_all();
        m_oChanged.wait(oLock, [this] { return !m_fnAction; });
    }

    // Ends the thread.
    void End()
    {
        {
            const std::lock_guard<std::mutex> oGuard(m_oMutex);
            m_bEnding = true;
            m_oChanged.notify_all();
        }
        if (m_oThread.joinable())
            m_oThread.join();
    }

private:
    void Work()
    {
        std::unique_lock<std::mutex> oLock(m_oMutex);
        for (;;)
        {
            m_oChanged.wait(oLock, [this] { return m_fnAction || m_bEnding; });
            if (!m_fnAction)
                return;
            m_fnAction();
            m_fnAction = nullptr;
            m_oChanged.notify_all();
        }
    }

    std::mutex m_oMutex;
    std::condition_variable m_oChanged;
    std::function<void()> m_fnAction;
    bool m_bEnding;
    std::thread m_oThread; // last, since it uses the others at once
};

// A count that threads raise and that others wait for.
class CTally
{
public:
    void Add()
    {
        const std::lock_guard<std::mutex> oGuard(m_oMutex);
        ++m_nCount;
        m_oChanged.notify_all();
    }

    int Count() const
    {
        const std::lock_guard<std::mutex> oGuard(m_oMutex);
        return m_nCount;
    }

    // Waits for the count. Returns false if it is still lower at the deadline.
    bool Reaches(int nCount) { return Await(nCount, std::chrono::milliseconds(DEADLINE)); }

    // Whether the count does not change for a while. A slow machine cannot make this false.
    bool Stays(int nCount) { return !Await(nCount + 1, std::chrono::milliseconds(100)) && Count() == nCount; }

private:
    bool Await(int nCount, std::chrono::milliseconds oTime)
    {
        std::unique_lock<std::mutex> oLock(m_oMutex);
        return m_oChanged.wait_until(oLock, std::chrono::system_clock::now() + oTime,
                                     [&] { return m_nCount >= nCount; });
    }

    mutable std::mutex m_oMutex;
    std::condition_variable m_oChanged;
    int m_nCount = 0;
};

// Threads that are joined at the end.
class CThreadGroup
{
public:
    CThreadGroup() = default;

    ~CThreadGroup() { Join(); }

    CThreadGroup(const CThreadGroup&) = delete;
    CThreadGroup& operator=(const CThreadGroup&) = delete;

    // No thread begins its action before all threads exist.
    void Start(int nThreads, const std::function<void(int nThread)>& fnAction)
    {
        const auto pAllExist = std::make_shared<CGate>();
        for (int nThread = 0; nThread < nThreads; ++nThread)
            m_aThreads.emplace_back([=] {
                pAllExist->Wait();
                fnAction(nThread);
            });
        pAllExist->Open();
    }

    void Join()
    {
        for (std::thread& oThread : m_aThreads)
            oThread.join();
        m_aThreads.clear();
    }

private:
    std::vector<std::thread> m_aThreads;
};

// A name that no other test has, in this or another process.
std::string UniqueName();

// Values that name no object. None of them is one of the values that Windows reserves, such as -1.
struct sBadHandle
{
    const char* szWhat;
    unsigned long long hObject;
};
std::vector<sBadHandle> BadHandles();
