#include "ThreadLoad.h"

#include <algorithm>
#include <condition_variable>
#include <thread>
#include <vector>

namespace
{
constexpr std::size_t MAX_TEXT = 2000;
constexpr std::chrono::milliseconds TIME_BETWEEN_LOOKS(10);

// Notes how long the object has been on the move. A look that comes late counts for little, as
// nobody knows when the object moved.
class CObserver
{
public:
    explicit CObserver(sThreadTraffic& oTraffic) : m_oTraffic(oTraffic), m_oThread([this] { Observe(); }) {}
    ~CObserver()
    {
        {
            const std::lock_guard<std::mutex> oGuard(m_oMutex);
            m_bOver = true;
        }
        m_oChanged.notify_one();
        m_oThread.join();
    }
    CObserver(const CObserver&) = delete;
    CObserver& operator=(const CObserver&) = delete;

private:
    void Observe()
    {
        constexpr std::chrono::nanoseconds MAX_TIME = 2 * TIME_BETWEEN_LOOKS;
        std::unique_lock<std::mutex> oLock(m_oMutex);
        std::uint64_t nBefore = m_oTraffic.nGiven;
        auto oBefore = std::chrono::steady_clock::now();
        while (!m_bOver)
        {
            m_oChanged.wait_until(oLock, std::chrono::system_clock::now() + TIME_BETWEEN_LOOKS);
            const std::uint64_t nNow = m_oTraffic.nGiven;
            const auto oNow = std::chrono::steady_clock::now();
            if (nNow != nBefore)
                m_oTraffic.nMovingNanoseconds += std::min<std::chrono::nanoseconds>(oNow - oBefore, MAX_TIME).count();
            nBefore = nNow;
            oBefore = oNow;
        }
    }

    sThreadTraffic& m_oTraffic;
    std::mutex m_oMutex;
    std::condition_variable m_oChanged;
    bool m_bOver = false;
    std::thread m_oThread; // last, since it uses the others at once
};
} // namespace

void CThreadReport::Expect(bool bRight, const char* szWhat)
{
    if (!bRight)
        NoteWrong(szWhat);
}

void CThreadReport::ExpectEqual(long long llWanted, long long llFound, const char* szWhat)
{
    if (llWanted != llFound)
        NoteWrong(std::string(szWhat) + ": " + std::to_string(llFound) + " instead of " + std::to_string(llWanted));
}

void CThreadReport::NoteWait(std::chrono::nanoseconds oLongest, long lStarved)
{
    m_lStarved += lStarved;
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    m_oLongest = std::max(m_oLongest, oLongest);
}

std::string CThreadReport::GetTexts() const
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    return m_sTexts;
}

double CThreadReport::GetLongestWaitMs() const
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    return std::chrono::duration<double, std::milli>(m_oLongest).count();
}

void CThreadReport::NoteWrong(const std::string& sText)
{
    ++m_lWrong;
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    if (m_sTexts.size() < MAX_TEXT)
        m_sTexts += sText + '\n';
}

void RunThreads(const sThreadLoad& oLoad, CThreadReport& oReport,
                const std::function<void(int nThread, CWaits& oWaits)>& fnAction)
{
    std::atomic<int> nReady(0);
    sThreadTraffic oTraffic;
    const CObserver oObserver(oTraffic);
    std::vector<std::thread> aThreads;
    for (int nThread = 0; nThread < oLoad.nThreads; ++nThread)
        aThreads.emplace_back([&, nThread] {
            ++nReady;
            while (nReady < oLoad.nThreads)
                std::this_thread::yield();
            CWaits oWaits(oReport, oTraffic);
            fnAction(nThread, oWaits);
        });
    for (std::thread& oThread : aThreads)
        oThread.join();
}
