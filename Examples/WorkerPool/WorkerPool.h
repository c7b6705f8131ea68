// Declares CWorkerPool, threads that work off one queue of tasks.
#pragma once

#include <TOVContainers/TOVSafeQueue.h>
#include <TOVProcess/TOVSemaphore.h>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

// Begins the tasks in the order in which they were added, each in one of several threads. Any thread may add tasks, a
// task too. The pool copies tasks: let them hold references or values, but no CTOVStringA, whose copies share memory
// that is not guarded.
//
// A task that throws is logged, and the next one begins.
class CWorkerPool
{
public:
    typedef std::function<void()> tTask;

    // Throws std::runtime_error if not even one thread can be started.
    explicit CWorkerPool(int nWorkers);

    // Returns when all tasks are done, and the threads have ended. It needs no memory, so that it also works while
    // std::bad_alloc is on its way.
    ~CWorkerPool();
    CWorkerPool(const CWorkerPool&) = delete;
    CWorkerPool& operator=(const CWorkerPool&) = delete;

    void Add(const tTask& fnTask);

    // Drops the tasks that have not begun.
    void Cancel() { m_bCancelled = true; }

private:
    class CWorker;

    // The queue copies a pointer without memory, and not what a task holds.
    typedef std::shared_ptr<const tTask> tTaskPointer;

    void Work();
    tTaskPointer Take();

    CTOVSafeQueue<tTaskPointer> m_oTasks;
    CTOVSemaphore m_oTurns; // one for each task, and in the end one for each worker
    std::mutex m_oTaking;   // between the turn of a worker and its task
    std::atomic<bool> m_bCancelled{false};
    std::vector<std::unique_ptr<CWorker>> m_aWorkers;
};
