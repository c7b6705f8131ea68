#include <Test/TOVSimpleTestRunner.h>

#include <Test/TOVTestRunner.h>

namespace TOVTest
{
CTOVSimpleTestRunner::CTOVSimpleTestRunner() = default;

CTOVSimpleTestRunner::CTOVSimpleTestRunner(const CTOVSimpleTestRunner& oOther) = default;

CTOVSimpleTestRunner& CTOVSimpleTestRunner::operator=(const CTOVSimpleTestRunner& oOther) = default;

CTOVSimpleTestRunner::~CTOVSimpleTestRunner() noexcept(false)
{
    CTOVTestRunner::Forget(this);
}

int CTOVSimpleTestRunner::Run()
{
    CTOVTestRunner(this).RunEnvironment();
    return static_cast<int>(CTOVTestTracker::Instance().GetNumTotalFailedTests());
}
} // namespace TOVTest
