#include "WorkerPool.h"

#include <Debug/TOVDebug.h>
#include <TOVProcess/TOVThread.h>

#include <limits>
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

CWorkerPool::CWorkerPool(int nWorkers) : m_oTurns(0, std::numeric_limits<int>::max())
{
    // Everything that needs memory comes before the first thread, which would use what an exception destroys. Start
    // throws nothing.
    for (int i = 0; i < nWorkers; ++i)
        m_aWorkers.push_back(std::make_unique<CWorker>(*this));
    int nStarted = 0;
    for (const std::unique_ptr<CWorker>& pWorker : m_aWorkers)
        nStarted += pWorker->Start(0, TOVPlatform::TOVThread::eThreadPriorityNormal) ? 1 : 0;
    if (nStarted == 0)
        throw std::runtime_error("no thread can be started");
}

CWorkerPool::~CWorkerPool()
{
    m_oTurns.Unlock(static_cast<long>(m_aWorkers.size()));
    for (const std::unique_ptr<CWorker>& pWorker : m_aWorkers)
        pWorker->Stop(true, FOREVER);
}

void CWorkerPool::Add(const tTask& fnTask)
{
    m_oTasks.Enqueue(std::make_shared<const tTask>(fnTask));
    m_oTurns.Unlock(1);
}

void CWorkerPool::Work()
{
    for (tTaskPointer pTask = Take(); pTask != nullptr; pTask = Take())
    {
        if (!m_bCancelled)
            Do(*pTask);
    }
}

// Returns null when the worker has to end: it has a turn, and there is no task.
CWorkerPool::tTaskPointer CWorkerPool::Take()
{
    m_oTurns.Lock();
    const std::lock_guard<std::mutex> oGuard(m_oTaking);
    return m_oTasks.IsEmpty() ? nullptr : m_oTasks.Dequeue();
}
