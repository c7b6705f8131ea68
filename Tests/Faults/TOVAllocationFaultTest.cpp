// Allocation 1, 2, 3 ... of each scenario fails, once or from then on.
#include "Faults/TOVAllocationScenarios.h"
#include "Faults/TOVFaultProcess.h"
#include "Faults/TOVFaultRounds.h"
#include "Support/TOVRowName.h"

#include <iterator>

namespace
{
tFaultScenarios AllScenarios()
{
    tFaultScenarios aAll;
    for (const auto& pfnFamily :
         {NarrowStringScenarios, WideStringScenarios, ArrayScenarios, ContainerScenarios, PatternScenarios,
          PathScenarios, FileScenarios, StreamScenarios, RttiScenarios, DebugScenarios, ListenerScenarios,
          FrameworkScenarios, HostScenarios, ProcessScenarios, TimerScenarios})
    {
        const tFaultScenarios aFamily = pfnFamily();
        std::copy(aFamily.begin(), aFamily.end(), std::back_inserter(aAll));
    }
    return aAll;
}

class TOVAllocationFaultTest : public testing::TestWithParam<sFaultScenario>
{
protected:
    static void SetUpTestSuite() { FaultFile("made in this process"); }

    static bool Holds(const std::string& sKind, eFaultMode eMode, bool bLists)
    {
        return ReturnsTrueApart([&] {
            sFaultFigures oFigures = {0, 0};
            const bool bHolds = RunAllocationRounds(GetParam(), eMode, bLists, oFigures);
            TellFigures(sKind, GetParam(), oFigures);
            return bHolds;
        });
    }
};
} // namespace

TEST_P(TOVAllocationFaultTest, LeavesEverythingWholeOnce)
{
    EXPECT_TRUE(Holds("allocation once", eFaultOnce, false));
}

TEST_P(TOVAllocationFaultTest, LeavesEverythingWholeFromThenOn)
{
    EXPECT_TRUE(Holds("allocation from then on", eFaultFromThenOn, false));
}

TEST_P(TOVAllocationFaultTest, LeavesEverythingWholeWithLists)
{
    EXPECT_TRUE(Holds("allocation once, with lists", eFaultOnce, true));
    EXPECT_TRUE(Holds("allocation from then on, with lists", eFaultFromThenOn, true));
}

INSTANTIATE_TEST_SUITE_P(Scenarios, TOVAllocationFaultTest, testing::ValuesIn(AllScenarios()), sRowName());
