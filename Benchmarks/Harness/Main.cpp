// The main program of every benchmark program.
//
// It brings the process into the state of an application that has run for a while. The heap has given a large block
// back once, after which the C library keeps such blocks instead of asking the system for each anew. And a thread that
// does nothing stands by while the rows run: some libraries leave their atomic operations out as long as a process has
// a single thread.

#include <Bench.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdio>
#include <cstring>
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

// Prints the least time that the probe takes within some seconds.
int TellProbe()
{
    constexpr int NUM_LOOKS = 400;

    double dLeast = ProbeProcessor();
    for (int nLook = 1; nLook < NUM_LOOKS; ++nLook)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        dLeast = std::min(dLeast, ProbeProcessor());
    }
    std::printf("%.1f\n", dLeast);
    return 0;
}
} // namespace

// --probe tells the time of the probe on a quiet processor; all other arguments are the benchmark library's.
int main(int argc, char** argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--probe") == 0)
        return TellProbe();

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
