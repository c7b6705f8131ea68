// Whatever passes from thread to thread arrives once, and in order.
#include "ThreadScenarios.h"

#include <Debug/TOVDebugServer.h>
#include <TOVContainers/TOVSafeQueue.h>
#include <TOVPlatform/TOVSynchronization.h>
#include <TOVPlatform/TOVThread.h>
#include <TOVProcess/TOVEvent.h>
#include <Timer/TOVTimer.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Thread = TOVPlatform::TOVThread;

// Two threads raise a plain number in turns.
void RunEventPairs(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    struct sPair
    {
        CTOVEvent aoTurn[2];
        long long llCount = 0;
    };
    std::vector<sPair> aPairs(static_cast<std::size_t>(oLoad.nThreads / 2));
    for (sPair& oPair : aPairs)
        oPair.aoTurn[0].Signal();
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        sPair& oPair = aPairs[static_cast<std::size_t>(nThread / 2)];
        const int nSide = nThread % 2;
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            oWaits.Measure([&] { oPair.aoTurn[nSide].Wait(); });
            oReport.ExpectEqual(2LL * nTurn + nSide, oPair.llCount, "turns of a pair before this one");
            ++oPair.llCount;
            oPair.aoTurn[1 - nSide].Signal();
        }
    });
    for (const sPair& oPair : aPairs)
        oReport.ExpectEqual(2LL * oLoad.nOperations, oPair.llCount, "turns of a pair");
}

// All threads wait for the last one of each round, which lets them go together.
void RunManualEvent(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    CTOVEvent aoRound[2] = {CTOVEvent(true), CTOVEvent(true)};
    std::atomic<int> nArrived(0);
    std::vector<int> aRounds(static_cast<std::size_t>(oLoad.nThreads), 0);
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        for (int nRound = 0; nRound < oLoad.nOperations; ++nRound)
        {
            aRounds[static_cast<std::size_t>(nThread)] = nRound;
            if (++nArrived % oLoad.nThreads != 0)
            {
                oWaits.Measure([&] { aoRound[nRound % 2].Wait(); });
                continue;
            }
            for (const int nOther : aRounds)
                oReport.ExpectEqual(nRound, nOther, "round of another thread");
            aoRound[1 - nRound % 2].Reset();
            aoRound[nRound % 2].Signal();
        }
    });
    oReport.ExpectEqual(1LL * oLoad.nThreads * oLoad.nOperations, nArrived, "arrivals");
}

void RunSafeQueue(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    struct sElement
    {
        int nProducer;
        int nNumber;
    };
    constexpr long MANY_ELEMENTS = 1000;
    const std::size_t nPairs = static_cast<std::size_t>(oLoad.nThreads / 2);
    CTOVSafeQueue<sElement> oQueue;
    std::vector<std::atomic<long long>> aSums(nPairs);
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        if (nThread % 2 == 0)
        {
            for (int nNumber = 0; nNumber < oLoad.nOperations; ++nNumber)
            {
                oQueue.Enqueue({nThread / 2, nNumber});
                while (nNumber % 64 == 0 && oQueue.GetCount() > MANY_ELEMENTS)
                    std::this_thread::yield();
            }
            return;
        }
        std::vector<int> aLast(nPairs, -1);
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            const sElement oElement = oWaits.Measure([&] { return oQueue.Dequeue(); });
            const std::size_t nProducer = static_cast<std::size_t>(oElement.nProducer);
            oReport.Expect(oElement.nNumber > aLast[nProducer], "an element before an older one of its producer");
            aLast[nProducer] = oElement.nNumber;
            aSums[nProducer] += oElement.nNumber + 1;
        }
    });
    for (const std::atomic<long long>& llSum : aSums)
        oReport.ExpectEqual(1LL * oLoad.nOperations * (oLoad.nOperations + 1) / 2, llSum, "sum of a producer");
    oReport.Expect(oQueue.IsEmpty(), "the queue is empty");
}

namespace
{
// The source that the lines of this load name. All listeners hear the lines of other loads as well, whose arguments may
// be anything.
constexpr const char* SOURCE_OF_LINES = "the log load";

// Hears lines with the number of a thread and the number of the line among that thread's. The server's lock protects
// the plain numbers.
class CLineCounter : public TOVDebug::ITOVLogListener
{
public:
    // Hears one thread alone, or all of them if that is -1.
    CLineCounter(int nThreads, int nOnlyThread, CThreadReport& oReport)
        : m_aNext(static_cast<std::size_t>(nThreads), 0), m_nOnlyThread(nOnlyThread), m_oReport(oReport)
    {
    }
    virtual ~CLineCounter() = default;
    CLineCounter(const CLineCounter&) = delete;
    CLineCounter& operator=(const CLineCounter&) = delete;

    void SetNext(int nThread, int nNext) { m_aNext[static_cast<std::size_t>(nThread)] = nNext; }
    int GetNext(int nThread) const { return m_aNext[static_cast<std::size_t>(nThread)]; }
    int GetNumCalls() const { return m_nCalls; }

    void OnStartup() override { ++m_nCalls; }
    void OnClosedown() override { ++m_nCalls; }
    void OnLogV(const char* szFile, unsigned long, eTOVDebugSeverity, const char*, va_list pArguments) override
    {
        if (std::strcmp(szFile, SOURCE_OF_LINES) != 0)
            return;
        va_list pCopy;
        va_copy(pCopy, pArguments);
        const int nThread = va_arg(pCopy, int);
        const int nNumber = va_arg(pCopy, int);
        va_end(pCopy);
        if (m_nOnlyThread == -1 || m_nOnlyThread == nThread)
            m_oReport.ExpectEqual(m_aNext[static_cast<std::size_t>(nThread)]++, nNumber, "number of a line");
    }
    void OnAssert(const char*, unsigned long, const char*) override {}
    void OnPanicV(const char*, unsigned long, const char*, va_list) override {}
    void SetApplicationName(const char*) override {}

private:
    std::vector<int> m_aNext;
    const int m_nOnlyThread;
    CThreadReport& m_oReport;
    int m_nCalls = 0;
};
} // namespace

// One listener hears all lines. Others come for some lines of their thread, and go.
void RunLog(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    constexpr int TURNS_OF_A_GUEST = 8;
    TOVDebug::CTOVDebugServer& oServer = TOVDebug::CTOVDebugServer::Instance();
    CLineCounter oAll(oLoad.nThreads, -1, oReport);
    oServer.Register(&oAll);
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        std::unique_ptr<CLineCounter> pGuest;
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            const bool bComes = nTurn % (8 * TURNS_OF_A_GUEST) == 0;
            const bool bGoes = pGuest != nullptr && nTurn % TURNS_OF_A_GUEST == 0;
            if (bComes)
            {
                pGuest.reset(new CLineCounter(oLoad.nThreads, nThread, oReport));
                pGuest->SetNext(nThread, nTurn);
                oServer.Register(pGuest.get());
            }
            else if (bGoes)
            {
                oServer.Unregister(pGuest.get());
                oReport.ExpectEqual(nTurn, pGuest->GetNext(nThread), "lines that a guest has heard");
                oReport.ExpectEqual(2, pGuest->GetNumCalls(), "comings and goings of a guest");
                pGuest.reset();
            }
            oWaits.Measure([&] { TOVDebug::_Log(SOURCE_OF_LINES, 1, 0x1, eSeverityTrace, "%d %d", nThread, nTurn); });
        }
        if (pGuest != nullptr)
            oServer.Unregister(pGuest.get());
    });
    oServer.Unregister(&oAll);
    for (int nThread = 0; nThread < oLoad.nThreads; ++nThread)
        oReport.ExpectEqual(oLoad.nOperations, oAll.GetNext(nThread), "lines of a thread");
}

namespace
{
// What the time events of one thread do. It is static, as a call may come until the process ends.
struct sAlarm
{
    CTOVEvent aoCalled[2]; // by single and by periodic events: a periodic one may be late
    std::atomic<long long> llSingleCalls{0};
};

constexpr int MAX_EVENTS = 16;
constexpr unsigned long PERIODIC_BIT = 0x100;

sAlarm& GetAlarm(unsigned long ulUser)
{
    static sAlarm* const s_aAlarms = new sAlarm[MAX_EVENTS];
    return s_aAlarms[ulUser % MAX_EVENTS];
}

void OnTimeEvent(unsigned int, unsigned int, unsigned long ulUser, unsigned long, unsigned long)
{
    sAlarm& oAlarm = GetAlarm(ulUser);
    const bool bPeriodic = (ulUser & PERIODIC_BIT) != 0;
    if (!bPeriodic)
        ++oAlarm.llSingleCalls;
    oAlarm.aoCalled[bPeriodic ? 1 : 0].Signal();
}

// The system may still know a single event during its call, so that there may be no room for another moment.
int InstallSoon(unsigned long ulUser, int nKind)
{
    for (;;)
    {
        try
        {
            return CTOVTimer::InstallTimeEvent(1, 0, &OnTimeEvent, ulUser, nKind);
        }
        catch (const TOVDebug::CTOVAssertException&)
        {
            std::this_thread::yield();
        }
    }
}
} // namespace

// Each thread sets its alarm, once or periodically, and waits for it.
void RunTimeEvents(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    const sThreadLoad oPossible = {std::min(oLoad.nThreads, MAX_EVENTS), oLoad.nOperations};
    std::vector<long long> aBefore;
    for (int nThread = 0; nThread < oPossible.nThreads; ++nThread)
        aBefore.push_back(GetAlarm(static_cast<unsigned long>(nThread)).llSingleCalls);
    RunThreads(oPossible, oReport, [&](int nThread, CWaits& oWaits) {
        const unsigned long ulUser = static_cast<unsigned long>(nThread);
        sAlarm& oAlarm = GetAlarm(ulUser);
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            const bool bPeriodic = nTurn % 4 == 0;
            const int nEvent = InstallSoon(bPeriodic ? ulUser | PERIODIC_BIT : ulUser, bPeriodic ? 1 : 0);
            oWaits.Measure([&] { oAlarm.aoCalled[bPeriodic ? 1 : 0].Wait(); });
            if (!bPeriodic)
                continue;
            oWaits.Measure([&] { oAlarm.aoCalled[1].Wait(); });
            CTOVTimer::UninstallTimeEvent(nEvent, 1);
        }
    });
    const int nSingle = oLoad.nOperations - (oLoad.nOperations + 3) / 4;
    for (int nThread = 0; nThread < oPossible.nThreads; ++nThread)
        oReport.ExpectEqual(aBefore[static_cast<std::size_t>(nThread)] + nSingle,
                            GetAlarm(static_cast<unsigned long>(nThread)).llSingleCalls, "calls of single events");
}

// Each thread starts others, and reads what they have written when they have ended.
void RunThreadStarts(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    std::vector<int> aNumbers(static_cast<std::size_t>(oLoad.nThreads), 0);
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        int& nNumber = aNumbers[static_cast<std::size_t>(nThread)];
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            unsigned long ulId = 0;
            const tHandle hThread = Thread::Create(
                [](unsigned long long ullParam) -> unsigned long {
                    ++*reinterpret_cast<int*>(static_cast<std::uintptr_t>(ullParam));
                    return 0;
                },
                &nNumber, &ulId);
            oReport.Expect(hThread != 0 && ulId != 0, "a thread is started");
            oWaits.Measure([&] { Thread::WaitForExitInfinite(hThread); });
            oReport.ExpectEqual(nTurn + 1, nNumber, "threads that have counted");
        }
    });
}
