// Many threads on one kind of object each: a short share of what Attacks/Threads does for long.
#include "Threads/ThreadScenarios.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace
{
constexpr int THREADS = 8;
constexpr int OPERATIONS = TOV_SYSTEM_WINDOWS ? 200 : 2000; // of each thread, divided as for a whole run

class TOVThreadLoadTest : public testing::TestWithParam<sThreadScenario>
{
};

std::vector<sThreadScenario> AllScenarios()
{
    const sThreadScenario* pEnd = THREAD_SCENARIOS;
    while (pEnd->szName != nullptr)
        ++pEnd;
    return {THREAD_SCENARIOS, pEnd};
}

std::string NameOf(const testing::TestParamInfo<sThreadScenario>& oInfo)
{
    std::string sName = oInfo.param.szName;
    std::replace(sName.begin(), sName.end(), '-', '_');
    return sName;
}

INSTANTIATE_TEST_SUITE_P(Load, TOVThreadLoadTest, testing::ValuesIn(AllScenarios()), NameOf);
} // namespace

TEST_P(TOVThreadLoadTest, EndsWithNothingLostAndNothingDoubled)
{
    CThreadReport oReport;
    GetParam().fnRun({THREADS, std::max(OPERATIONS / GetParam().nDivisor, 10)}, oReport);

    EXPECT_EQ(0, oReport.GetNumWrong()) << oReport.GetTexts();
}
