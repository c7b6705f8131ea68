// Call 1, 2, 3 ... of each scenario to each function of the system fails, once or from then on.
#include "Faults/Posix/TOVFaultySystem.h"
#include "Faults/Posix/TOVSystemScenarios.h"
#include "Faults/TOVFaultProcess.h"
#include "Faults/TOVFaultRounds.h"
#include "Support/TOVRowName.h"

#include <cstring>

namespace
{
// More calls of one function are alike.
constexpr unsigned long MAX_CALLS = 40;

int s_nChosen = -1;

void Choose(int nFault, unsigned long ulSuccesses, eFaultMode eMode)
{
    s_nChosen = nFault;
    ChooseSystemFault(nFault, ulSuccesses, eMode == eFaultOnce);
}

// How many calls of each kind the scenario makes when nothing fails.
std::vector<unsigned long> CountCalls(CFaultRounds& oRounds, const sFaultScenario& oScenario)
{
    Choose(-1, 0, eFaultOnce);
    oRounds.Run(
        oScenario, [] {}, [] {}); // what is made at the first use
    std::vector<unsigned long> aulCalls;
    oRounds.Run(
        oScenario,
        [] {
            Choose(-1, 0, eFaultOnce);
            ArmSystemFault(true);
        },
        [&] {
            ArmSystemFault(false);
            aulCalls.clear();
            for (int nFault = 0; nFault < CountSystemFaults(); ++nFault)
                aulCalls.push_back(CountSystemCalls(nFault));
        });
    return aulCalls;
}

void RunFault(CFaultRounds& oRounds, const sFaultScenario& oScenario, eFaultMode eMode, sFaultFigures& oFigures)
{
    const int nFault = s_nChosen;
    unsigned long ulStruck = 1;
    for (unsigned long ulSuccesses = 0; ulStruck != 0 && ulSuccesses < MAX_CALLS; ++ulSuccesses)
    {
        const int nFailedBefore = oRounds.CountFailures();
        oRounds.Run(
            oScenario,
            [&] {
                Choose(nFault, ulSuccesses, eMode);
                ArmSystemFault(true);
            },
            [&] {
                ArmSystemFault(false);
                ulStruck = CountFailedCalls();
            });
        if (oRounds.CountFailures() != nFailedBefore)
            std::fprintf(stderr, "%s: that was call %lu of %s, %s\n", oScenario.szName, ulSuccesses + 1,
                         GetSystemFault(nFault).szName, eMode == eFaultOnce ? "once" : "from then on");
        ++oFigures.ulRounds;
        oFigures.ulFaults += ulStruck;
    }
}

bool RunSystemRounds(const sFaultScenario& oScenario, eFaultMode eMode)
{
    CFaultRounds oRounds;
    sFaultFigures oAll = {0, 0};
    const std::vector<unsigned long> aulCalls = CountCalls(oRounds, oScenario);
    for (int nFault = 0; nFault < CountSystemFaults(); ++nFault)
    {
        if (aulCalls[static_cast<std::size_t>(nFault)] == 0 ||
            (eMode == eFaultFromThenOn && GetSystemFault(nFault).bOnceOnly))
            continue;
        sFaultFigures oFigures = {0, 0};
        Choose(nFault, 0, eMode);
        RunFault(oRounds, oScenario, eMode, oFigures);
        TellFigures(std::string("kind ") + GetSystemFault(nFault).szName, oScenario, oFigures);
        oAll.ulRounds += oFigures.ulRounds;
        oAll.ulFaults += oFigures.ulFaults;
    }
    TellFigures(eMode == eFaultOnce ? "system once" : "system from then on", oScenario, oAll);
    return oRounds.HaveHeld();
}

tFaultScenarios AllScenarios()
{
    tFaultScenarios aAll;
    for (const auto& pfnFamily :
         {SystemFileScenarios, SystemFolderScenarios, SystemFileObjectScenarios, SystemThreadScenarios,
          SystemLockScenarios, SystemNameScenarios, SystemToolScenarios, SystemProgramScenarios})
    {
        const tFaultScenarios aFamily = pfnFamily();
        aAll.insert(aAll.end(), aFamily.begin(), aFamily.end());
    }
    return aAll;
}

class TOVSystemFaultTest : public testing::TestWithParam<sFaultScenario>
{
protected:
    static void SetUpTestSuite() { FaultFile("made in this process"); }
};
} // namespace

CStrikes::CStrikes() : m_ulBefore(CountFailedCalls())
{
}

unsigned long CStrikes::Count() const
{
    return CountFailedCalls() - m_ulBefore;
}

bool CStrikes::Of(std::initializer_list<const char*> aszNames) const
{
    if (!Any())
        return false;
    for (const char* szName : aszNames)
    {
        if (std::strcmp(szName, GetSystemFault(s_nChosen).szName) == 0)
            return true;
    }
    return false;
}

TEST_P(TOVSystemFaultTest, ArrivesAsTheHeaderSaysOnce)
{
    EXPECT_TRUE(ReturnsTrueApart([] { return RunSystemRounds(GetParam(), eFaultOnce); }));
}

TEST_P(TOVSystemFaultTest, ArrivesAsTheHeaderSaysFromThenOn)
{
    EXPECT_TRUE(ReturnsTrueApart([] { return RunSystemRounds(GetParam(), eFaultFromThenOn); }));
}

INSTANTIATE_TEST_SUITE_P(Scenarios, TOVSystemFaultTest, testing::ValuesIn(AllScenarios()), sRowName());
