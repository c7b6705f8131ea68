#include <TestHost/TOVTestRun.h>

#include <TestHost/TOVTestEventListener.h>
#include <TestHost/TOVTestException.h>
#include <TestHost/TOVTestSystem.h>

#include <Test/TOVSimpleTestRunner.h>

#include <set>
#include <stdexcept>

namespace TOVTestHost
{
namespace
{
// Describes the exception that is being handled: "threw ...".
std::string DescribeException(const CTOVCheckListener& oChecks)
{
    const std::string sKnown = DescribeHandledException(&oChecks);
    return sKnown.empty() ? "threw past its checks" : "threw past its checks: " + sKnown;
}

void LoadLibraries(const std::vector<std::string>& aLibraries, CTOVTestSelection& oSelection)
{
    std::set<const void*> aLoaded;
    for (const std::string& sLibrary : aLibraries)
    {
        std::string sReason;
        const void* pLibrary = LoadSharedLibrary(sLibrary, sReason);
        if (pLibrary == nullptr)
            throw std::runtime_error("cannot load " + sReason);
        if (aLoaded.insert(pLibrary).second && oSelection.AddGroup() == 0)
            throw std::runtime_error(sLibrary + " holds no test suite");
    }
}
} // namespace

void RunTests(const sTestRun& oRun, ITOVTestEvents& oEvents)
{
    CTOVTestSelection oSelection;
    LoadLibraries(oRun.aLibraries, oSelection);
    oEvents.OnPlan(oSelection.Choose(oRun.oChoice, oEvents));
    if (oRun.bListOnly)
        return;

    const CTOVCheckListener oChecks;
    CTOVTestEventListener oListener(oEvents, &oChecks);
    TOVTest::CTOVSimpleTestRunner oRunner;
    oRunner.AddListener(oListener);
    try
    {
        oSelection.StartAt(oRun.oStart.nSuite, oRun.oStart.nCase);
        for (long lRun = oRun.oStart.lRun; lRun < oRun.oChoice.lRuns && !oSelection.IsStopped(); ++lRun)
        {
            oRunner.Run();
            oSelection.StartAt(0, 0);
        }
    }
    catch (...)
    {
        oEvents.OnEndEarly(DescribeException(oChecks));
    }
    TOVTest::CTOVTestListener::SetListener(nullptr);
}
} // namespace TOVTestHost
