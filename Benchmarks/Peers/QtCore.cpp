// Rows of containers, locks, threads, files and clocks in Qt Core.

#include <Bench.h>
#include <Contention.h>
#include <Inputs.h>
#include <LockedQueue.h>
#include <NumbersFile.h>

#include <QtCore/QBitArray>
#include <QtCore/QByteArray>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QMutex>
#include <QtCore/QSemaphore>
#include <QtCore/QSharedPointer>
#include <QtCore/QStack>
#include <QtCore/QString>
#include <QtCore/QThread>
#include <QtCore/QVector>
#include <QtCore/QWaitCondition>

using namespace Inputs;

namespace
{
struct sLocking
{
    using tLock = QMutexLocker;

    // Converts to the pointer that the locker wants.
    struct sMutex : QMutex
    {
        operator QMutex*() { return this; }
    };

    template<class TReady> void Wait(QMutexLocker& oLock, TReady fnReady)
    {
        while (!fnReady())
            oCondition.wait(oLock.mutex());
    }
    void Wake() { oCondition.wakeOne(); }

    sMutex oMutex;
    QWaitCondition oCondition;
};
template<class TElement> using tQueue = CLockedQueue<TElement, sLocking>;

struct sLock
{
    void Lock() { oMutex.lock(); }
    void Unlock() { oMutex.unlock(); }

    QMutex oMutex;
};

class CShortThread : public QThread
{
public:
    void run() override {}
};

void FillBits(QBitArray& oBits)
{
    const std::vector<unsigned char> aBytes = RandomBytes(BITS / 8);
    oBits = QBitArray::fromBits(reinterpret_cast<const char*>(aBytes.data()), BITS);
}
} // namespace

BENCH("array/push1M", "QVector")
{
    for (auto _ : oState)
    {
        QVector<int> aNumbers;
        for (int nNumber = 0; nNumber < MILLION; ++nNumber)
            aNumbers.append(nNumber);
        Touch(aNumbers);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("array/stack push+pop", "QStack")
{
    QStack<int> oStack;
    oStack.push(0);
    int nNumber = 0;
    for (auto _ : oState)
    {
        oStack.push(++nNumber);
        Touch(oStack.top());
        oStack.pop();
    }
}

BENCH("bits/and1M", "QBitArray")
{
    QBitArray oFirst;
    QBitArray oSecond;
    FillBits(oFirst);
    FillBits(oSecond);
    for (auto _ : oState)
    {
        oFirst &= oSecond;
        benchmark::ClobberMemory();
    }
    oState.SetBytesProcessed(oState.iterations() * (BITS / 8));
}

BENCH("bits/set+test", "QBitArray")
{
    QBitArray oBits;
    FillBits(oBits);
    int nPosition = 0;
    for (auto _ : oState)
    {
        nPosition = (nPosition + 4099) & (BITS - 1);
        oBits.setBit(nPosition);
        Use(oBits.testBit(nPosition ^ 64));
    }
}

BENCH("queue/1thread int", "QMutex+QWaitCondition")
{
    MeasureQueueAlone<tQueue<int>>(oState, 1);
}

BENCH_ONCE("queue/1P1C int", "QMutex+QWaitCondition")
{
    MeasureQueue<tQueue<int>>(oState, 1, 1);
}

BENCH_ONCE("queue/2P2C int", "QMutex+QWaitCondition")
{
    MeasureQueue<tQueue<int>>(oState, 2, 1);
}

BENCH("sync/lock+unlock", "QRecursiveMutex")
{
    QRecursiveMutex oMutex;
    for (auto _ : oState)
    {
        oMutex.lock();
        oMutex.unlock();
    }
}

BENCH("sync/sem post+wait", "QSemaphore")
{
    QSemaphore oSemaphore;
    for (auto _ : oState)
    {
        oSemaphore.release();
        oSemaphore.acquire();
    }
}

BENCH_ONCE("sync/contended lock, 4 threads", "QMutex")
{
    MeasureContendedLock<sLock>(oState);
}

BENCH_WALL("sync/thread create+join", "QThread")
{
    for (auto _ : oState)
    {
        CShortThread oThread;
        oThread.start();
        oThread.wait();
    }
}

BENCH("timer/read", "QElapsedTimer")
{
    QElapsedTimer oTimer;
    oTimer.start();
    for (auto _ : oState)
        Use(static_cast<double>(oTimer.nsecsElapsed()) * 1e-9);
}

BENCH("file/write1M int", "QFile")
{
    const CNumbersFile oNumbers("qt", 1);
    for (auto _ : oState)
    {
        QFile oFile(QString::fromLatin1(oNumbers.GetName()));
        oFile.open(QIODevice::WriteOnly);
        for (int nNumber = 0; nNumber < MILLION; ++nNumber)
            oFile.write(reinterpret_cast<const char*>(&nNumber), sizeof(nNumber));
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("file/read1M int", "QFile")
{
    const CNumbersFile oNumbers("qt", MILLION);
    for (auto _ : oState)
    {
        QFile oFile(QString::fromLatin1(oNumbers.GetName()));
        oFile.open(QIODevice::ReadOnly);
        for (int nIndex = 0; nIndex < MILLION; ++nIndex)
        {
            int nNumber = 0;
            oFile.read(reinterpret_cast<char*>(&nNumber), sizeof(nNumber));
            Use(nNumber);
        }
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("file/open+close", "QFile")
{
    const CNumbersFile oNumbers("qt", 1000);
    for (auto _ : oState)
    {
        QFile oFile(QString::fromLatin1(oNumbers.GetName()));
        oFile.open(QIODevice::ReadOnly);
        Touch(oFile);
    }
}

BENCH("ptr/copy+destroy", "QSharedPointer")
{
    auto pSource = QSharedPointer<int>::create(1);
    for (auto _ : oState)
    {
        Touch(pSource);
        QSharedPointer<int> pCopy(pSource);
        Touch(pCopy);
    }
}

BENCH("registry/lookup200", "QHash")
{
    const std::vector<std::string> aNames = ClassNames(NUM_CLASSES);
    QHash<QByteArray, const std::string*> oHash;
    for (const std::string& sName : aNames)
        oHash.insert(QByteArray(sName.c_str()), &sName);
    std::size_t nName = 0;
    for (auto _ : oState)
    {
        const char* const szName = aNames[nName].c_str();
        Use(oHash.value(QByteArray::fromRawData(szName, static_cast<int>(qstrlen(szName)))));
        nName = (nName + 1) % NUM_CLASSES;
    }
}
