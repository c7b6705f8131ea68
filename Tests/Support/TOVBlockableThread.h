// A thread whose one action may have to wait for another thread.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

//     CBlockableThread oOther([] { TOVDebug::_Log(...); });
//     EXPECT_TRUE(oOther.IsBlocked());
//     ... release the lock ...
//     EXPECT_TRUE(oOther.Finishes());
class CBlockableThread
{
public:
    explicit CBlockableThread(std::function<void()> fnAction)
        : m_bStarted(false), m_bFinished(false), m_oThread([this, fnAction] {
              Set(m_bStarted);
              fnAction();
              Set(m_bFinished);
          })
    {
    }

    // Waits for the end of the action.
    ~CBlockableThread() { m_oThread.join(); }

    CBlockableThread(const CBlockableThread&) = delete;
    CBlockableThread& operator=(const CBlockableThread&) = delete;

    // Whether the action has begun and does not end for a while. A slow machine cannot make this false.
    bool IsBlocked()
    {
        return Await(m_bStarted, std::chrono::seconds(60)) && !Await(m_bFinished, std::chrono::milliseconds(100));
    }

    // Whether the action ends before a generous deadline.
    bool Finishes() { return Await(m_bFinished, std::chrono::seconds(60)); }

private:
    void Set(bool& bFlag)
    {
        const std::lock_guard<std::mutex> oGuard(m_oMutex);
        bFlag = true;
        m_oChanged.notify_all();
    }

    bool Await(const bool& bFlag, std::chrono::milliseconds oTime)
    {
        std::unique_lock<std::mutex> oLock(m_oMutex);
        return m_oChanged.wait_until(oLock, std::chrono::system_clock::now() + oTime, [&bFlag] { return bFlag; });
    }

    std::mutex m_oMutex;
    std::condition_variable m_oChanged;
    bool m_bStarted;
    bool m_bFinished;
    std::thread m_oThread; // last, since it uses the others at once
};
