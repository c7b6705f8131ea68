#include "Faults/TOVFaultScenario.h"
#include "Faults/TOVFaultProcess.h"
#include "Support/TOVTestSupport.h"

#include <atomic>
#include <cstdio>

static std::atomic<int> s_nFailed(0);

CFaultPause::CFaultPause() : m_bFailing(AllocationCountsOfThisThread().bFailing), m_bSystemFailing(LetSystemFail(false))
{
    AllocationCountsOfThisThread().bFailing = false;
}

CFaultPause::~CFaultPause()
{
    AllocationCountsOfThisThread().bFailing = m_bFailing;
    LetSystemFail(m_bSystemFailing);
}

void NoteCondition(bool bHolds, const char* szCondition, const char* szFile, int nLine)
{
    if (bHolds)
        return;
    const CFaultPause oPause;
    std::fprintf(stderr, "%s:%d: does not hold: %s\n", szFile, nLine, szCondition);
    ++s_nFailed;
}

int CountFailedConditions()
{
    return s_nFailed;
}

const char* FaultFile(const char* szName)
{
    static char s_aszNames[8][512];
    static int s_nNext = 0;

    const CFaultPause oPause;
    static const CTempFolder s_oFolder;
    char(&szPath)[512] = s_aszNames[s_nNext++ % 8];
    std::snprintf(szPath, sizeof szPath, "%s/%s", s_oFolder.Path().c_str(), szName);
    return szPath;
}
