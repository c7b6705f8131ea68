// Rows of paths, files, clocks, locks and threads in the standard library.

#include <Bench.h>
#include <Contention.h>
#include <Inputs.h>
#include <LockedQueue.h>
#include <NumbersFile.h>

#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <mutex>

using namespace Inputs;

namespace
{
using tPath = std::filesystem::path;

std::size_t CountComponents(const tPath& oPath)
{
    std::size_t nTotal = 0;
    for (const tPath& oComponent : oPath)
        nTotal += oComponent.native().size();
    return nTotal;
}

// A lock and a condition as the queue of LockedQueue.h uses them.
struct sLocking
{
    using tLock = std::unique_lock<std::mutex>;

    template<class TReady> void Wait(tLock& oLock, TReady fnReady) { oCondition.wait(oLock, fnReady); }
    void Wake() { oCondition.notify_one(); }

    std::mutex oMutex;
    std::condition_variable oCondition;
};
template<class TElement> using tQueue = CLockedQueue<TElement, sLocking>;

// An event that one waiting thread resets.
class CEvent
{
public:
    void Signal()
    {
        {
            const std::lock_guard<std::mutex> oLock(m_oMutex);
            m_bSignalled = true;
        }
        m_oCondition.notify_one();
    }
    void Wait()
    {
        std::unique_lock<std::mutex> oLock(m_oMutex);
        m_oCondition.wait(oLock, [this] { return m_bSignalled; });
        m_bSignalled = false;
    }

private:
    std::mutex m_oMutex;
    std::condition_variable m_oCondition;
    bool m_bSignalled = false;
};

template<class TMutex> struct sLock
{
    void Lock() { oMutex.lock(); }
    void Unlock() { oMutex.unlock(); }

    TMutex oMutex;
};
} // namespace

BENCH("path/append", "std::filesystem")
{
    const tPath oFolder(FOLDER);
    const char* const szName = Hide(FILE_NAME);
    for (auto _ : oState)
    {
        tPath oPath(oFolder);
        oPath /= szName;
        Touch(oPath);
    }
}

BENCH("path/parent", "std::filesystem")
{
    tPath oPath(PATH6);
    for (auto _ : oState)
    {
        Touch(oPath);
        tPath oParent = oPath.parent_path();
        Touch(oParent);
    }
}

BENCH("path/extension", "std::filesystem")
{
    tPath oPath(PATH6);
    for (auto _ : oState)
    {
        Touch(oPath);
        tPath oExtension = oPath.extension();
        Touch(oExtension);
    }
}

BENCH("path/iterate6", "std::filesystem")
{
    tPath oPath(PATH6);
    for (auto _ : oState)
    {
        Touch(oPath);
        Use(CountComponents(oPath));
    }
}

BENCH("path/parse+iterate6", "std::filesystem")
{
    const char* const szPath = Hide(PATH6);
    for (auto _ : oState)
    {
        const tPath oPath(szPath);
        Use(CountComponents(oPath));
    }
}

BENCH("path/parse", "std::filesystem")
{
    std::string sText(PATH6);
    for (auto _ : oState)
    {
        Touch(sText);
        tPath oPath(sText);
        Touch(oPath);
    }
}

BENCH("path/compare", "std::filesystem")
{
    tPath oFirst(PATH6);
    tPath oSecond(PATH6);
    for (auto _ : oState)
    {
        Touch(oFirst);
        Touch(oSecond);
        Use(oFirst == oSecond);
    }
}

BENCH("queue/1thread int", "std mutex+condvar")
{
    MeasureQueueAlone<tQueue<int>>(oState, 1);
}

BENCH("queue/1thread string", "std mutex+condvar")
{
    MeasureQueueAlone<tQueue<std::string>>(oState, std::string(TEXT24));
}

BENCH_ONCE("queue/1P1C int", "std mutex+condvar")
{
    MeasureQueue<tQueue<int>>(oState, 1, 1);
}

BENCH_ONCE("queue/1P1C string", "std mutex+condvar")
{
    MeasureQueue<tQueue<std::string>>(oState, 1, std::string(TEXT24));
}

BENCH_ONCE("queue/2P2C int", "std mutex+condvar")
{
    MeasureQueue<tQueue<int>>(oState, 2, 1);
}

BENCH("sync/lock+unlock", "std::recursive_mutex")
{
    std::recursive_mutex oMutex;
    for (auto _ : oState)
    {
        oMutex.lock();
        oMutex.unlock();
    }
}

BENCH("sync/event set+wait", "std mutex+condvar")
{
    CEvent oEvent;
    for (auto _ : oState)
    {
        oEvent.Signal();
        oEvent.Wait();
    }
}

BENCH_ONCE("sync/contended lock, 4 threads", "std::mutex")
{
    MeasureContendedLock<sLock<std::mutex>>(oState);
}

BENCH_ONCE("sync/contended lock, 4 threads", "std::recursive_mutex")
{
    MeasureContendedLock<sLock<std::recursive_mutex>>(oState);
}

BENCH_WALL("sync/thread create+join", "std::thread")
{
    for (auto _ : oState)
        std::thread([] {}).join();
}

BENCH("machine/atomic increment", "std::atomic")
{
    std::atomic<long> lCounter(0);
    for (auto _ : oState)
        Use(++lCounter);
}

BENCH("timer/read", "std::chrono::steady_clock")
{
    for (auto _ : oState)
        Use(std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count());
}

BENCH("file/write1M int", "std::ofstream")
{
    const CNumbersFile oNumbers("std", 1);
    for (auto _ : oState)
    {
        std::ofstream oFile(oNumbers.GetName(), std::ios::binary);
        for (int nNumber = 0; nNumber < MILLION; ++nNumber)
            oFile.write(reinterpret_cast<const char*>(&nNumber), sizeof(nNumber));
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("file/read1M int", "std::ifstream")
{
    const CNumbersFile oNumbers("std", MILLION);
    for (auto _ : oState)
    {
        std::ifstream oFile(oNumbers.GetName(), std::ios::binary);
        for (int nIndex = 0; nIndex < MILLION; ++nIndex)
        {
            int nNumber = 0;
            oFile.read(reinterpret_cast<char*>(&nNumber), sizeof(nNumber));
            Use(nNumber);
        }
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("file/open+close", "std::ifstream")
{
    const CNumbersFile oNumbers("std", 1000);
    for (auto _ : oState)
    {
        std::ifstream oFile(oNumbers.GetName(), std::ios::binary);
        Touch(oFile);
    }
}
