// The main program of every benchmark program.
//
// A thread that does nothing stands by while the rows run: some libraries leave their atomic operations out as long as
// a process has a single thread, and an application has more than one.

#include <benchmark/benchmark.h>

#include <condition_variable>
#include <mutex>
#include <thread>

namespace
{
class CParkedThread
{
public:
    CParkedThread() : m_oThread([this] { Wait(); }) {}
    ~CParkedThread()
    {
        {
            const std::lock_guard<std::mutex> oLock(m_oMutex);
            m_bEnd = true;
        }
        m_oEnd.notify_one();
        m_oThread.join();
    }
    CParkedThread(const CParkedThread&) = delete;
    CParkedThread& operator=(const CParkedThread&) = delete;

private:
    void Wait()
    {
        std::unique_lock<std::mutex> oLock(m_oMutex);
        m_oEnd.wait(oLock, [this] { return m_bEnd; });
    }

    std::mutex m_oMutex;
    std::condition_variable m_oEnd;
    bool m_bEnd = false;
    std::thread m_oThread; // the last member: the others are there when it starts
};
} // namespace

int main(int argc, char** argv)
{
    const CParkedThread oParkedThread;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
