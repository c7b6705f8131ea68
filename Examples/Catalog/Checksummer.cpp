#include "Checksummer.h"

#include "CatalogSystem.h"

#include <TOVContainers/TOVSafeQueue.h>
#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVThread.h>
#include <TOVString/TOVCrc.h>

#include <memory>
#include <vector>

namespace
{
constexpr long NO_MORE_JOBS = -1;
constexpr unsigned long READ_SIZE = 256 * 1024;
constexpr long PROGRESS_INTERVAL = 200; // milliseconds
constexpr unsigned long FOREVER = 0xFFFFFFFFul;

// Holds what all workers share. Strings must not be shared between threads: the queue contains indices of jobs, and a
// worker only reads the text of its own job.
struct sShared
{
    CTOVArray<sChecksumJob>& aJobs;
    const std::atomic<bool>& bStop;
    CTOVSafeQueue<long> oQueue;
    CTOVEvent oAllDone{true};
    std::atomic<long> lFilesDone{0};
    std::atomic<unsigned long long> ullBytesDone{0};

    sShared(CTOVArray<sChecksumJob>& aAllJobs, const std::atomic<bool>& bStopWanted)
        : aJobs(aAllJobs), bStop(bStopWanted)
    {
    }

    void FinishOne()
    {
        if (++lFilesDone == aJobs.GetSize())
            oAllDone.Signal();
    }
};

class CWorker : public CTOVThread
{
public:
    explicit CWorker(sShared& oShared) : m_oShared(oShared), m_aBuffer(READ_SIZE) {}

protected:
    unsigned long Run() override
    {
        for (long lJob = m_oShared.oQueue.Dequeue(); lJob != NO_MORE_JOBS; lJob = m_oShared.oQueue.Dequeue())
        {
            if (!m_oShared.bStop)
                Read(m_oShared.aJobs[lJob]);
            m_oShared.FinishOne();
        }
        return 0;
    }

private:
    void Read(sChecksumJob& oJob)
    {
        // By now, something else may have replaced the file.
        CInputFile oFile(oJob.oName);
        if (!oFile.IsOpen())
            return;

        tDword dwCrc = 0xFFFFFFFF;
        unsigned long ulRead = 0;
        do
        {
            ulRead = oFile.Read(m_aBuffer.data(), READ_SIZE);
            dwCrc = static_cast<tDword>(CRC32Generate(m_aBuffer.data(), ulRead, dwCrc));
            oJob.ullSize += ulRead;
            m_oShared.ullBytesDone += ulRead;
        } while (ulRead == READ_SIZE && !m_oShared.bStop);

        oJob.dwCrc = ~dwCrc;
        oJob.bRead = !oFile.HasFailed();
    }

    sShared& m_oShared;
    std::vector<tByte> m_aBuffer;
};
} // namespace

bool RunChecksums(CTOVArray<sChecksumJob>& aJobs, int nThreads, const std::atomic<bool>& bStop,
                  const std::function<void(const sChecksumProgress&)>& fnProgress)
{
    if (aJobs.IsEmpty())
        return !bStop;

    sShared oShared(aJobs, bStop);
    std::vector<std::unique_ptr<CWorker>> aWorkers;
    for (int i = 0; i < nThreads; ++i)
    {
        std::unique_ptr<CWorker> pWorker(new CWorker(oShared));
        if (pWorker->Start(0, TOVPlatform::TOVThread::eThreadPriorityNormal))
            aWorkers.push_back(std::move(pWorker));
    }
    if (aWorkers.empty())
        return false;

    for (long i = 0; i < aJobs.GetSize(); ++i)
        oShared.oQueue.Enqueue(i);
    for (std::size_t i = 0; i < aWorkers.size(); ++i)
        oShared.oQueue.Enqueue(NO_MORE_JOBS);

    while (!oShared.oAllDone.TimedWait(PROGRESS_INTERVAL))
        fnProgress({oShared.lFilesDone, oShared.ullBytesDone});
    for (const std::unique_ptr<CWorker>& pWorker : aWorkers)
        pWorker->Stop(true, FOREVER);
    return !bStop;
}
