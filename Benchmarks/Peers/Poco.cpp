// Rows of POCO Foundation.

#include <Bench.h>
#include <Contention.h>
#include <Inputs.h>

#include <Poco/AutoPtr.h>
#include <Poco/Clock.h>
#include <Poco/Event.h>
#include <Poco/Logger.h>
#include <Poco/Mutex.h>
#include <Poco/NullChannel.h>
#include <Poco/Path.h>
#include <Poco/Semaphore.h>
#include <Poco/String.h>
#include <Poco/Thread.h>

#include <cstring>

using namespace Inputs;

namespace
{
struct sRecursiveLock
{
    void Lock() { oMutex.lock(); }
    void Unlock() { oMutex.unlock(); }

    Poco::Mutex oMutex;
};

Poco::Logger& GetLogger()
{
    return Poco::Logger::create("benchmark", new Poco::NullChannel, Poco::Message::PRIO_INFORMATION);
}

void DropLogger()
{
    Poco::Logger::destroy("benchmark");
}

void DoNothing(void*)
{
}
} // namespace

BENCH("string/tolower1K", "Poco::toLowerInPlace")
{
    const std::string sText = MixedText(1024);
    std::string sString = sText;
    for (auto _ : oState)
    {
        std::memcpy(sString.data(), sText.data(), sText.size());
        Poco::toLowerInPlace(sString);
        Touch(sString);
    }
}

BENCH("string/icompare24", "Poco::icompare")
{
    std::string sFirst(TEXT24);
    std::string sSecond(UPPER24);
    for (auto _ : oState)
    {
        Touch(sFirst);
        Use(Poco::icompare(sFirst, sSecond));
    }
}

BENCH("path/append", "Poco::Path")
{
    const Poco::Path oFolder(FOLDER, Poco::Path::PATH_UNIX);
    for (auto _ : oState)
    {
        Poco::Path oPath(oFolder, std::string(FILE_NAME));
        Touch(oPath);
    }
}

BENCH("path/parse+iterate6", "Poco::Path")
{
    const char* const szPath = Hide(PATH6);
    for (auto _ : oState)
    {
        const Poco::Path oPath(szPath, Poco::Path::PATH_UNIX);
        std::size_t nTotal = oPath.getFileName().size();
        for (int nFolder = 0; nFolder < oPath.depth(); ++nFolder)
            nTotal += oPath.directory(nFolder).size();
        Use(nTotal);
    }
}

BENCH("sync/lock+unlock", "Poco::Mutex")
{
    Poco::Mutex oMutex;
    for (auto _ : oState)
    {
        oMutex.lock();
        oMutex.unlock();
    }
}

BENCH("sync/sem post+wait", "Poco::Semaphore")
{
    Poco::Semaphore oSemaphore(0, 1);
    for (auto _ : oState)
    {
        oSemaphore.set();
        oSemaphore.wait();
    }
}

BENCH("sync/event set+wait", "Poco::Event")
{
    Poco::Event oEvent;
    for (auto _ : oState)
    {
        oEvent.set();
        oEvent.wait();
    }
}

BENCH_ONCE("sync/contended lock, 4 threads", "Poco::Mutex")
{
    MeasureContendedLock<sRecursiveLock>(oState);
}

BENCH_WALL("sync/thread create+join", "Poco::Thread")
{
    for (auto _ : oState)
    {
        Poco::Thread oThread;
        oThread.start(&DoNothing);
        oThread.join();
    }
}

BENCH("timer/read", "Poco::Clock")
{
    for (auto _ : oState)
        Use(static_cast<double>(Poco::Clock().microseconds()) * 1e-6);
}

BENCH("log/line", "Poco::Logger")
{
    Poco::Logger& oLogger = GetLogger();
    const std::string sText("the catalogue is complete");
    for (auto _ : oState)
        oLogger.information(sText);
    DropLogger();
}

BENCH("log/formatted", "Poco::Logger")
{
    Poco::Logger& oLogger = GetLogger();
    for (auto _ : oState)
        oLogger.information("%d files in %s", Hide(4711), std::string(Hide("the catalogue")));
    DropLogger();
}

BENCH("log/disabled", "Poco::Logger")
{
    Poco::Logger& oLogger = GetLogger();
    const std::string sText("the catalogue is complete");
    for (auto _ : oState)
    {
        Touch(oLogger);
        if (oLogger.debug())
            oLogger.debug(sText);
    }
    DropLogger();
}
