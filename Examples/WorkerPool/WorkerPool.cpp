#include "WorkerPool.h"

#include <Debug/TOVDebug.h>
#include <TOVProcess/TOVThread.h>

#include <stdexcept>

namespace
{
constexpr unsigned long FOREVER = 0xFFFFFFFFul;

// An exception that left the thread's function would end the process.
void Do(const CWorkerPool::tTask& fnTask)
{
    try
    {
        fnTask();
    }
    catch (const std::exception& oError)
    {
        TOVDebug::_Log(__FILE__, __LINE__, 0x11, eSeverityError, "a task has failed: %s", oError.what());
    }
    catch (...)
    {
        TOVDebug::_Log(__FILE__, __LINE__, 0x11, eSeverityError, "a task has failed");
    }
}
} // namespace

class CWorkerPool::CWorker : public CTOVThread
{
public:
    explicit CWorker(CWorkerPool& oPool) : m_oPool(oPool) {}

protected:
    unsigned long Run() override
    {
        m_oPool.Work();
        return 0;
    }

private:
    CWorkerPool& m_oPool;
};

CWorkerPool::CWorkerPool(int nWorkers)
{
    for (int i = 0; i < nWorkers; ++i)
    {
        auto pWorker = std::make_unique<CWorker>(*this);
        if (pWorker->Start(0, TOVPlatform::TOVThread::eThreadPriorityNormal))
            m_aWorkers.push_back(std::move(pWorker));
    }
    if (m_aWorkers.empty())
        throw std::runtime_error("no thread can be started");
}

CWorkerPool::~CWorkerPool()
{
    for (std::size_t i = 0; i < m_aWorkers.size(); ++i)
        m_oTasks.Enqueue(nullptr);
    for (const std::unique_ptr<CWorker>& pWorker : m_aWorkers)
        pWorker->Stop(true, FOREVER);
}

void CWorkerPool::Work()
{
    for (tTask fnTask = m_oTasks.Dequeue(); fnTask != nullptr; fnTask = m_oTasks.Dequeue())
    {
        if (!m_bCancelled)
            Do(fnTask);
    }
}
