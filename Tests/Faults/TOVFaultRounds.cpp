#include "Faults/TOVFaultRounds.h"

#include "Faults/TOVFaultProcess.h"

#include <TOVPlatform/TOVMemoryList.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <thread>

namespace
{
// No scenario has as many allocations.
constexpr unsigned long MAX_ROUNDS = 5000;

// So many rounds go by until another thread has to work again.
constexpr unsigned long ROUNDS_PER_WITNESS = 25;

// Only an exception of exhausted memory may leave a scenario.
void RunToItsEnd(const sFaultScenario& oScenario)
{
    try
    {
        oScenario.pfnRun();
    }
    catch (const std::bad_alloc&)
    {
    }
    catch (const CTOVException&)
    {
        NoteCondition(false, "only exhausted memory leaves a scenario", __FILE__, __LINE__);
    }
}

// A thread in its last steps may have something open for a moment.
long CountAtRest(long (*pfnCount)(), long lExpected)
{
    constexpr int MAX_WAITS = 1000; // milliseconds

    long lCount = pfnCount();
    for (int nWait = 0; nWait < MAX_WAITS && lCount != lExpected; ++nWait)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        lCount = pfnCount();
    }
    return lCount;
}
} // namespace

CFaultRounds::CFaultRounds() : m_lHandles(0), m_ulRounds(0), m_nBroken(0), m_nFailedBefore(CountFailedConditions())
{
    Ask();
    CountOpenHandles();
    m_lHandles = CountOpenHandles();
}

bool CFaultRounds::HaveHeld()
{
    Ask();
    return CountFailures() == 0;
}

int CFaultRounds::CountFailures() const
{
    return m_nBroken + CountFailedConditions() - m_nFailedBefore;
}

void CFaultRounds::Ask()
{
    m_nBroken += m_oWitness.CanWork() ? 0 : 1;
}

long CFaultRounds::RunOnce(const sFaultScenario& oScenario, const std::function<void()>& fnBegin,
                           const std::function<void()>& fnEnd, bool bPatient)
{
    {
        const CAllocationCounter oPlain; // gives the blocks of the thread's lists back, here and after the round
    }
    const long lBefore = CountBlocksOfProcess();
    fnBegin();
    RunToItsEnd(oScenario);
    fnEnd();
    {
        const CAllocationCounter oPlain;
    }
    return (bPatient ? CountAtRest(&CountBlocksOfProcess, lBefore) : CountBlocksOfProcess()) - lBefore;
}

void CFaultRounds::Run(const sFaultScenario& oScenario, const std::function<void()>& fnBegin,
                       const std::function<void()>& fnEnd)
{
    // A first round may keep what lasts for the process, and each may leave a thread in its last steps. The next thread
    // then gets a stack of its own, which the C library keeps. Only the second patient round begins when all is at
    // rest.
    long lKept = RunOnce(oScenario, fnBegin, fnEnd, false);
    for (int nMore = 1; nMore <= 4 && lKept != 0; ++nMore)
        lKept = RunOnce(oScenario, fnBegin, fnEnd, nMore >= 3);
    if (lKept != 0)
    {
        std::fprintf(stderr, "%s: a round keeps %ld blocks\n", oScenario.szName, lKept);
        ++m_nBroken;
    }

    const long lHandles = CountAtRest(&CountOpenHandles, m_lHandles);
    if (lHandles != m_lHandles)
    {
        std::fprintf(stderr, "%s: %ld open handles became %ld\n", oScenario.szName, m_lHandles, lHandles);
        m_lHandles = lHandles;
        ++m_nBroken;
    }
    if (++m_ulRounds % ROUNDS_PER_WITNESS == 0)
        Ask();
}

bool RunAllocationRounds(const sFaultScenario& oScenario, eFaultMode eMode, bool bLists, sFaultFigures& oFigures)
{
    namespace MemoryList = TOVPlatform::TOVMemoryList;

    CFaultRounds oRounds;
    sAllocationCounts& oCounts = AllocationCountsOfThisThread();
    const bool bUsedLists = MemoryList::UseLists(bLists);
    for (int nWarm = 0; nWarm < 2; ++nWarm)
        RunToItsEnd(oScenario); // what is made at the first use

    unsigned long ulSuccesses = 0;
    unsigned long ulRefused = 1;
    while (ulRefused != 0 && ulSuccesses < MAX_ROUNDS)
    {
        const int nFailedBefore = oRounds.CountFailures();
        oRounds.Run(
            oScenario,
            [&] {
                MemoryList::UseLists(bLists);
                oCounts.ulSuccessesLeft = ulSuccesses;
                oCounts.ulRefused = 0;
                oCounts.bFailsOnce = eMode == eFaultOnce;
                oCounts.bFailing = true;
            },
            [&] {
                oCounts.bFailing = false;
                ulRefused = oCounts.ulRefused;
                MemoryList::UseLists(false);
            });
        if (oRounds.CountFailures() != nFailedBefore)
            std::fprintf(stderr, "%s: that was allocation %lu, %s\n", oScenario.szName, ulSuccesses + 1,
                         eMode == eFaultOnce ? "once" : "from then on");
        ++oFigures.ulRounds;
        oFigures.ulFaults += ulRefused;
        ++ulSuccesses;
    }
    MemoryList::UseLists(bUsedLists);
    return oRounds.HaveHeld() && ulRefused == 0;
}

void TellFigures(const std::string& sKind, const sFaultScenario& oScenario, const sFaultFigures& oFigures)
{
    const char* const szFile = std::getenv("TOV_FAULT_FIGURES");
    std::FILE* const pFile = szFile != nullptr ? std::fopen(szFile, "ab") : nullptr;
    if (pFile == nullptr)
        return;
    std::fprintf(pFile, "%s|%s|%lu|%lu\n", sKind.c_str(), oScenario.szName, oFigures.ulRounds, oFigures.ulFaults);
    std::fclose(pFile);
}
