// Declares CTOVCountingTracker, which counts the failures of a test run and passes them to a listener.
#pragma once

#include <Test/TOVTestListener.h>
#include <Test/TOVTestTracker.h>

namespace TOVTest
{
// This listener passes every event of a run to another listener and counts the failures; as a tracker, it returns the
// counts. A case fails once, however many of its checks fail; a suite fails once, however many of its cases fail. A
// failure between two cases counts for the case before it, and one before a suite's first case counts as a failed case.
//
//   event              before it is passed on                           after that
//   EnterEnvironment   all four counters become 0                       -
//   EnterSuite         the counters of suite and case become 0;         -
//                      the suite becomes the current one, and
//                      there is no current case
//   EnterTestCase      the counter of the case becomes 0;               -
//                      the case becomes the current one
//   a failure          is counted                                       -
//   LeaveTestCase      -                                                there is no current case
//   LeaveSuite         -                                                there is no current suite and no current case
//
// The Leave events clear no counters: the counts of a run can be read until the next run begins. A copy has the same
// counts, current objects and listener. Use it from one thread.
class TOV_EXPORT CTOVCountingTracker : public CTOVTestListener, public CTOVTestTracker
{
public:
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

    // Further virtual operations, whose slots follow those of the listener; their order is part of the exported design.

    // These return the suite and the case that are running, or the null objects if there is none. Settled: they are not
    // const and override nothing. The const operations of CTOVTestTracker, which a const object and every caller of the
    // tracker's interface use, return the null objects.
    using CTOVTestTracker::GetCurrentTestCase;
    using CTOVTestTracker::GetCurrentTestSuite;
    virtual const CTOVTestSuite& GetCurrentTestSuite();
    virtual const CTOVTestCase& GetCurrentTestCase();

    // These override the tracker's operations. They come after the two above, whose slots they would otherwise take.
    long GetNumFailedAsserts() const override;
    long GetNumFailedSuiteTests() const override;
    long GetNumFailedSuites() const override;
    long GetNumTotalFailedTests() const override;

    // Events go to the null listener until SetListener is called. All counters are 0.
    TOV_EXPORT_CONSTEXPR CTOVCountingTracker();
    CTOVCountingTracker(const CTOVCountingTracker& oOther);
    CTOVCountingTracker& operator=(const CTOVCountingTracker& oOther);

    // Sets the listener to which events are passed; null means the null listener. It is not owned.
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
    : m_pListener(nullptr), m_pCurrentSuite(nullptr), m_pCurrentTestCase(nullptr), m_lFailedAsserts(0),
      m_lFailedSuiteTests(0), m_lFailedSuites(0), m_lTotalFailedTests(0)
{
}
} // namespace TOVTest
