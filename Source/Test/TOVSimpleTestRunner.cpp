#include <Test/TOVSimpleTestRunner.h>

#include <Debug/TOVCheck.h>
#include <Test/TOVTestRunner.h>

namespace TOVTest
{
CTOVSimpleTestRunner::CTOVSimpleTestRunner() = default;

CTOVSimpleTestRunner::CTOVSimpleTestRunner(const CTOVSimpleTestRunner& oOther) = default;

CTOVSimpleTestRunner& CTOVSimpleTestRunner::operator=(const CTOVSimpleTestRunner& oOther) = default;

CTOVSimpleTestRunner::~CTOVSimpleTestRunner()
{
    TOVDebug::RunInDestructor([this] { CTOVTestRunner::Forget(this); });
}

int CTOVSimpleTestRunner::Run()
{
    CTOVTestRunner(this).RunEnvironment();
    return static_cast<int>(CTOVTestTracker::Instance().GetNumTotalFailedTests());
}
} // namespace TOVTest
