#include <Test/TOVTestTracker.h>

namespace TOVTest
{
CTOVTestTracker CTOVTestTracker::m_oNull;
CTOVTestTracker* CTOVTestTracker::m_pTracker = nullptr;

CTOVTestTracker::CTOVTestTracker(const CTOVTestTracker& oOther) = default;
CTOVTestTracker& CTOVTestTracker::operator=(const CTOVTestTracker& oOther) = default;

bool CTOVTestTracker::HasTestFailed() const
{
    return GetNumFailedAsserts() > 0;
}

bool CTOVTestTracker::HasSuiteFailed() const
{
    return GetNumFailedSuiteTests() > 0;
}

bool CTOVTestTracker::HasEnvironmentFailed() const
{
    return GetNumFailedSuites() > 0;
}

long CTOVTestTracker::GetNumFailedAsserts() const
{
    return 0;
}

long CTOVTestTracker::GetNumFailedSuiteTests() const
{
    return 0;
}

long CTOVTestTracker::GetNumFailedSuites() const
{
    return 0;
}

long CTOVTestTracker::GetNumTotalFailedTests() const
{
    return 0;
}

CTOVTestCase& CTOVTestTracker::GetCurrentTestCase() const
{
    return CTOVTestCase::Null();
}

CTOVTestSuite& CTOVTestTracker::GetCurrentTestSuite() const
{
    return CTOVTestSuite::Null();
}

CTOVTestTracker& CTOVTestTracker::Null()
{
    return m_oNull;
}

CTOVTestTracker& CTOVTestTracker::Instance()
{
    return *GetSafeTracker(m_pTracker);
}

void CTOVTestTracker::SetTracker(CTOVTestTracker* pTracker)
{
    m_pTracker = GetSafeTracker(pTracker);
}

CTOVTestTracker* CTOVTestTracker::GetSafeTracker(CTOVTestTracker* pTracker)
{
    return pTracker != nullptr ? pTracker : &m_oNull;
}
} // namespace TOVTest
