#include "Faults/TOVFaultScenario.h"
#include "Faults/TOVFaultProcess.h"
#include "Support/TOVTestSupport.h"
#include "Support/TOVWaitInstruments.h"

#include <atomic>
#include <cstdio>
#include <string>

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

// Neither the places nor what they hold are allocated.
static const char* Kept(const char* szFirst, char cBetween, const char* szSecond)
{
    static char s_aszTexts[8][512];
    static int s_nNext = 0;

    char(&szText)[512] = s_aszTexts[s_nNext++ % 8];
    std::snprintf(szText, sizeof szText, "%s%c%s", szFirst, cBetween, szSecond);
    return szText;
}

const char* FaultFile(const char* szName)
{
    const CFaultPause oPause;
    static const CTempFolder s_oFolder;
    return Kept(s_oFolder.Path().c_str(), '/', szName);
}

const char* FaultName(const char* szName)
{
    const CFaultPause oPause;
    static const std::string s_sOfThisProcess = UniqueName();
    return Kept(szName, ' ', s_sOfThisProcess.c_str());
}
