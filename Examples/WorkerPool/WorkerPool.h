// Declares CWorkerPool, threads that work off one queue of tasks.
#pragma once

#include <TOVContainers/TOVSafeQueue.h>

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

// Begins the tasks in the order in which they were added, each in one of several threads. Any thread may add tasks, a
// task too. The queue copies tasks: let them hold references or values, but no CTOVStringA, whose copies share memory
// that is not guarded.
//
// A task that throws is logged, and the next one begins.
class CWorkerPool
{
public:
    typedef std::function<void()> tTask;

    // Throws std::runtime_error if not even one thread can be started.
    explicit CWorkerPool(int nWorkers);

    // Returns when all tasks are done that were added before, and the threads have ended.
    ~CWorkerPool();
    CWorkerPool(const CWorkerPool&) = delete;
    CWorkerPool& operator=(const CWorkerPool&) = delete;

    void Add(const tTask& fnTask) { m_oTasks.Enqueue(fnTask); }

    // Drops the tasks that have not begun.
    void Cancel() { m_bCancelled = true; }

private:
    class CWorker;

    void Work();

    CTOVSafeQueue<tTask> m_oTasks; // an empty task ends the worker that takes it
    std::atomic<bool> m_bCancelled{false};
    std::vector<std::unique_ptr<CWorker>> m_aWorkers;
};
