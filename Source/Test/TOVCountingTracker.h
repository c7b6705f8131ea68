// Counts the failures of a test run on their way to a listener: CTOVCountingTracker.
#pragma once

#include <Test/TOVTestListener.h>
#include <Test/TOVTestTracker.h>

namespace TOVTest
{
// A listener that counts and hands every event on, and the tracker that tells the counts. A case fails once, however
// many of its checks fail; a suite fails once, however many of its cases do. One thread.
class TOV_EXPORT CTOVCountingTracker : public CTOVTestListener, public CTOVTestTracker
{
public:
    // Events go nowhere until SetListener.
    constexpr CTOVCountingTracker();
    CTOVCountingTracker(const CTOVCountingTracker& oOther);
    CTOVCountingTracker& operator=(const CTOVCountingTracker& oOther);

    void EnterEnvironment() override;
    void LeaveEnvironment() override;
    void EnterSuite(const CTOVTestSuite& oSuite) override;
    void LeaveSuite(const CTOVTestSuite& oSuite) override;
    void EnterTestCase(const CTOVTestCase& oTestCase) override;
    void LeaveTestCase(const CTOVTestCase& oTestCase) override;
    void Warning(const char* szFile, long lLine, const char* szMessage) override;
    void FailedTest(const char* szFile, long lLine, const char* szMessage) override;
    void FailedAssert(const char* szFile, long lLine, const char* szExpression) override;
    void FailedAssertEquals(const char* szFile, long lLine, const char* szExpression, const char* szExpected,
                            const char* szActualValue, const char* szExpectedValue) override;
    void FailedAssertDelta(const char* szFile, long lLine, const char* szExpression, const char* szExpected,
                           const char* szDelta, const char* szActualValue, const char* szExpectedValue,
                           const char* szDeltaValue) override;
    void FailedAssertDiffers(const char* szFile, long lLine, const char* szExpression, const char* szOther,
                             const char* szValue) override;
    void FailedAssertLessThan(const char* szFile, long lLine, const char* szExpression, const char* szLimit,
                              const char* szActualValue, const char* szLimitValue) override;
    void FailedAssertThrows(const char* szFile, long lLine, const char* szExpression, const char* szException,
                            bool bOtherException) override;
    void FailedAssertThrowsNot(const char* szFile, long lLine, const char* szExpression) override;

    // Further virtual operations of the listener's side, right behind its own; their order is part of the exported
    // design. The suite and the case that run, or the null objects. Settled: not const, and so beside those of
    // CTOVTestTracker.
    using CTOVTestTracker::GetCurrentTestCase;
    using CTOVTestTracker::GetCurrentTestSuite;
    virtual const CTOVTestSuite& GetCurrentTestSuite();
    virtual const CTOVTestCase& GetCurrentTestCase();

    long GetNumFailedAsserts() const override;
    long GetNumFailedSuiteTests() const override;
    long GetNumFailedSuites() const override;
    long GetNumTotalFailedTests() const override;

    // The tracker's side. They stand behind the two above, whose slots they would otherwise take.
    // Where events go on; NULL means the null listener. Not owned.
    void SetListener(CTOVTestListener* pListener);

private:
    friend class CTOVTestRunner;

    void SetCurrentTestCase(const CTOVTestCase* pTestCase);
    void SetCurrentTestSuite(const CTOVTestSuite* pSuite);
    void CountFailure();
    CTOVTestListener& GetForward() const;

    CTOVTestListener* m_pListener;
    const CTOVTestSuite* m_pCurrentSuite;
    const CTOVTestCase* m_pCurrentTestCase;
    long m_lFailedAsserts;
    long m_lFailedSuiteTests;
    long m_lFailedSuites;
    long m_lTotalFailedTests;
};

TOV_EXPORT_INLINE constexpr CTOVCountingTracker::CTOVCountingTracker()
    : m_pListener(NULL), m_pCurrentSuite(NULL), m_pCurrentTestCase(NULL), m_lFailedAsserts(0), m_lFailedSuiteTests(0),
      m_lFailedSuites(0), m_lTotalFailedTests(0)
{
}
} // namespace TOVTest
