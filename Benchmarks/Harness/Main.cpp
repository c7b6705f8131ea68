// The main program of every benchmark program.
//
// It brings the process into the state of an application that has run for a while. The heap has given a large block
// back once, after which the C library keeps such blocks instead of asking the system for each anew. And a thread that
// does nothing stands by while the rows run: some libraries leave their atomic operations out as long as a process has
// a single thread.

#include <Bench.h>

#include <condition_variable>
#include <cstddef>
#include <memory>
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
    constexpr std::size_t LARGE_BLOCK = 31U << 20; // the largest size that counts for the C library on Linux is 32 MB
    Use(std::make_unique<char[]>(LARGE_BLOCK));

    const CParkedThread oParkedThread;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
