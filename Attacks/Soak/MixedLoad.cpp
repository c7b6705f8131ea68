#include "MixedLoad.h"

#include "LoadParts.h"
#include "Threads/ThreadScenarios.h"

#include <TOVProcess/TOVThread.h>

#include <cstring>
#include <thread>

namespace
{
void RunThreadScenarios(const sThreadLoad& oLoad, bool bTimeEvents, CThreadReport& oReport)
{
    for (const sThreadScenario* pScenario = THREAD_SCENARIOS; pScenario->szName != nullptr; ++pScenario)
    {
        // A handle of a thread stays open, and has a part of its own.
        const bool bThreads = std::strcmp(pScenario->szName, "threads") == 0;
        if (!bThreads && (bTimeEvents || std::strcmp(pScenario->szName, "time-events") != 0))
            pScenario->fnRun(oLoad, oReport);
    }
}

class CPollingThread : public CTOVThread
{
public:
    CPollingThread() = default;
    CPollingThread(const CPollingThread&) = delete;
    CPollingThread& operator=(const CPollingThread&) = delete;

    bool InitInstance() override
    {
        m_bInitialised = true;
        return true;
    }
    void ExitInstance() override { m_bExited = true; }
    unsigned long Run() override
    {
        while (!IsStopPending())
            std::this_thread::yield();
        return 0;
    }

    std::atomic<bool> m_bInitialised{false};
    std::atomic<bool> m_bExited{false};
};
} // namespace

void RunQuietRound(CThreadReport& oReport)
{
    for (const sLoadPart* pPart = LOAD_PARTS; pPart->szName != nullptr; ++pPart)
    {
        try
        {
            pPart->fnRun(oReport);
        }
        catch (...)
        {
            oReport.Expect(false, pPart->szName);
        }
    }
}

void RunMixedRound(const sThreadLoad& oLoad, bool bTimeEvents, CThreadReport& oReport)
{
    std::thread oThreads([&] { RunThreadScenarios(oLoad, bTimeEvents, oReport); });
    RunQuietRound(oReport);
    oThreads.join();
}

void StartAndStopThread(CThreadReport& oReport)
{
    CPollingThread oThread;
    oReport.Expect(oThread.Start(1, TOVPlatform::TOVThread::eThreadPriorityNormal), "a thread starts");
    oReport.Expect(oThread.Stop(true, 0xFFFFFFFF), "a thread stops");
    oReport.Expect(oThread.m_bInitialised && oThread.m_bExited, "a thread begins and ends");
}
