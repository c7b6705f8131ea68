#include <Test/TOVCountingTracker.h>

namespace TOVTest
{
CTOVCountingTracker::CTOVCountingTracker(const CTOVCountingTracker& oOther) = default;
CTOVCountingTracker& CTOVCountingTracker::operator=(const CTOVCountingTracker& oOther) = default;

void CTOVCountingTracker::EnterEnvironment()
{
    m_lFailedAsserts = 0;
    m_lFailedSuiteTests = 0;
    m_lFailedSuites = 0;
    m_lTotalFailedTests = 0;
    GetForward().EnterEnvironment();
}

void CTOVCountingTracker::LeaveEnvironment()
{
    GetForward().LeaveEnvironment();
}

void CTOVCountingTracker::EnterSuite(const CTOVTestSuite& oSuite)
{
    SetCurrentTestSuite(&oSuite);
    m_lFailedAsserts = 0;
    m_lFailedSuiteTests = 0;
    GetForward().EnterSuite(oSuite);
}

void CTOVCountingTracker::LeaveSuite(const CTOVTestSuite& oSuite)
{
    GetForward().LeaveSuite(oSuite);
    SetCurrentTestSuite(nullptr);
}

void CTOVCountingTracker::EnterTestCase(const CTOVTestCase& oTestCase)
{
    SetCurrentTestCase(&oTestCase);
    m_lFailedAsserts = 0;
    GetForward().EnterTestCase(oTestCase);
}

void CTOVCountingTracker::LeaveTestCase(const CTOVTestCase& oTestCase)
{
    GetForward().LeaveTestCase(oTestCase);
    SetCurrentTestCase(nullptr);
}

void CTOVCountingTracker::Warning(const char* szFile, long lLine, const char* szMessage)
{
    GetForward().Warning(szFile, lLine, szMessage);
}

void CTOVCountingTracker::FailedTest(const char* szFile, long lLine, const char* szMessage)
{
    CountFailure();
    GetForward().FailedTest(szFile, lLine, szMessage);
}

void CTOVCountingTracker::FailedAssert(const char* szFile, long lLine, const char* szExpression)
{
    CountFailure();
    GetForward().FailedAssert(szFile, lLine, szExpression);
}

void CTOVCountingTracker::FailedAssertEquals(const char* szFile, long lLine, const char* szExpression,
                                             const char* szExpected, const char* szActualValue,
                                             const char* szExpectedValue)
{
    CountFailure();
    GetForward().FailedAssertEquals(szFile, lLine, szExpression, szExpected, szActualValue, szExpectedValue);
}

void CTOVCountingTracker::FailedAssertDelta(const char* szFile, long lLine, const char* szExpression,
                                            const char* szExpected, const char* szDelta, const char* szActualValue,
                                            const char* szExpectedValue, const char* szDeltaValue)
{
    CountFailure();
    GetForward().FailedAssertDelta(szFile, lLine, szExpression, szExpected, szDelta, szActualValue, szExpectedValue,
                                   szDeltaValue);
}

void CTOVCountingTracker::FailedAssertDiffers(const char* szFile, long lLine, const char* szExpression,
                                              const char* szOther, const char* szValue)
{
    CountFailure();
    GetForward().FailedAssertDiffers(szFile, lLine, szExpression, szOther, szValue);
}

void CTOVCountingTracker::FailedAssertLessThan(const char* szFile, long lLine, const char* szExpression,
                                               const char* szLimit, const char* szActualValue, const char* szLimitValue)
{
    CountFailure();
    GetForward().FailedAssertLessThan(szFile, lLine, szExpression, szLimit, szActualValue, szLimitValue);
}

void CTOVCountingTracker::FailedAssertThrows(const char* szFile, long lLine, const char* szExpression,
                                             const char* szException, bool bOtherException)
{
    CountFailure();
    GetForward().FailedAssertThrows(szFile, lLine, szExpression, szException, bOtherException);
}

void CTOVCountingTracker::FailedAssertThrowsNot(const char* szFile, long lLine, const char* szExpression)
{
    CountFailure();
    GetForward().FailedAssertThrowsNot(szFile, lLine, szExpression);
}

long CTOVCountingTracker::GetNumFailedAsserts() const
{
    return m_lFailedAsserts;
}

long CTOVCountingTracker::GetNumFailedSuiteTests() const
{
    return m_lFailedSuiteTests;
}

long CTOVCountingTracker::GetNumFailedSuites() const
{
    return m_lFailedSuites;
}

long CTOVCountingTracker::GetNumTotalFailedTests() const
{
    return m_lTotalFailedTests;
}

const CTOVTestSuite& CTOVCountingTracker::GetCurrentTestSuite()
{
    return m_pCurrentSuite != nullptr ? *m_pCurrentSuite : CTOVTestSuite::Null();
}

const CTOVTestCase& CTOVCountingTracker::GetCurrentTestCase()
{
    return m_pCurrentTestCase != nullptr ? *m_pCurrentTestCase : CTOVTestCase::Null();
}

void CTOVCountingTracker::SetListener(CTOVTestListener* pListener)
{
    m_pListener = CTOVTestListener::GetSafeListener(pListener);
}

void CTOVCountingTracker::SetCurrentTestCase(const CTOVTestCase* pTestCase)
{
    m_pCurrentTestCase = pTestCase != nullptr ? pTestCase : &CTOVTestCase::Null();
}

void CTOVCountingTracker::SetCurrentTestSuite(const CTOVTestSuite* pSuite)
{
    m_pCurrentSuite = pSuite != nullptr ? pSuite : &CTOVTestSuite::Null();
    SetCurrentTestCase(nullptr);
}

void CTOVCountingTracker::CountFailure()
{
    if (++m_lFailedAsserts != 1)
        return;

    ++m_lTotalFailedTests;
    if (++m_lFailedSuiteTests == 1)
        ++m_lFailedSuites;
}

CTOVTestListener& CTOVCountingTracker::GetForward() const
{
    return *CTOVTestListener::GetSafeListener(m_pListener);
}
} // namespace TOVTest
