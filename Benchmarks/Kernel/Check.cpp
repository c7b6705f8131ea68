// Rows of checks.

#include <Bench.h>
#include <Inputs.h>
#include <LogSetup.h>

#include <Debug/TOVBase.h>
#include <Debug/TOVException.h>

namespace
{
constexpr int NUM_CHECKS = 1000;

int GetChecked(const std::vector<int>& aNumbers, int nIndex)
{
    TOV_ASSERT((0 <= nIndex) && (nIndex < NUM_CHECKS));
    return aNumbers[static_cast<std::size_t>(nIndex)];
}

void FailChecks(benchmark::State& oState)
{
    const std::vector<int> aNumbers(NUM_CHECKS);
    for (auto _ : oState)
    {
        try
        {
            Use(GetChecked(aNumbers, Hide(NUM_CHECKS)));
        }
        catch (const TOVDebug::CTOVAssertException&)
        {
        }
    }
}
} // namespace

BENCH("assert/1000 checks that hold", KERNEL)
{
    const std::vector<int> aNumbers = Inputs::RandomNumbers(NUM_CHECKS);
    const std::vector<int> aIndexes = Inputs::RandomIndexes(NUM_CHECKS);
    for (auto _ : oState)
    {
        unsigned int uSum = 0;
        for (const int nIndex : aIndexes)
            uSum += static_cast<unsigned int>(GetChecked(aNumbers, nIndex));
        Use(uSum);
    }
    oState.SetItemsProcessed(oState.iterations() * NUM_CHECKS);
}

BENCH("assert/failed check, thrown and caught (no listener)", KERNEL)
{
    const CWithoutShippedListener oWithout;
    FailChecks(oState);
}

BENCH("assert/failed check, thrown and caught (as shipped)", KERNEL)
{
    FailChecks(oState);
}
