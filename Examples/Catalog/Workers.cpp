#include "Workers.h"

#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVThread.h>

#include <exception>
#include <memory>
#include <vector>

namespace
{
constexpr long PROGRESS_INTERVAL = 200; // milliseconds
constexpr unsigned long FOREVER = 0xFFFFFFFFul;

// What the workers share.
struct sShared
{
    const std::function<void()>& fnWork;
    std::atomic<int> nRunning{0};
    CTOVEvent oAllDone{true};

    explicit sShared(const std::function<void()>& fnWorkOfAll) : fnWork(fnWorkOfAll) {}

    void FinishOne()
    {
        if (--nRunning == 0)
            oAllDone.Signal();
    }
};

class CWorker : public CTOVThread
{
public:
    // Waits for the thread, which uses this object and what is shared. So nothing of it is lost when an exception ends
    // RunWorkers.
    ~CWorker() override { Wait(); }

    explicit CWorker(sShared& oShared) : m_oShared(oShared) {}

    void Wait() { CTOVThread::Stop(true, FOREVER); }

    void ThrowIfFailed() const
    {
        if (m_pFailure != nullptr)
            std::rethrow_exception(m_pFailure);
    }

protected:
    unsigned long Run() override
    {
        try
        {
            m_oShared.fnWork();
        }
        catch (...)
        {
            m_pFailure = std::current_exception();
        }
        m_oShared.FinishOne();
        return 0;
    }

private:
    sShared& m_oShared;
    std::exception_ptr m_pFailure;
};
} // namespace

bool RunWorkers(int nThreads, const std::function<void()>& fnWork, const std::function<void()>& fnProgress)
{
    sShared oShared(fnWork);
    std::vector<std::unique_ptr<CWorker>> aWorkers;
    for (int i = 0; i < nThreads; ++i)
        aWorkers.push_back(std::make_unique<CWorker>(oShared));

    // From the first start on, the workers are only waited for: what can fail has been done, except fnProgress.
    oShared.nRunning = nThreads + 1; // with this thread, so that a worker that is early does not seem to be the last
    bool bStarted = false;
    for (const std::unique_ptr<CWorker>& pWorker : aWorkers)
    {
        if (pWorker->Start(0, TOVPlatform::TOVThread::eThreadPriorityNormal))
            bStarted = true;
        else
            oShared.FinishOne();
    }
    oShared.FinishOne();
    if (!bStarted)
        return false;

    while (!oShared.oAllDone.TimedWait(PROGRESS_INTERVAL))
        fnProgress();
    for (const std::unique_ptr<CWorker>& pWorker : aWorkers)
        pWorker->Wait();
    for (const std::unique_ptr<CWorker>& pWorker : aWorkers)
        pWorker->ThrowIfFailed();
    return true;
}
