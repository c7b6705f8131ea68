// Declares CTOVTestEventListener, which turns the calls to a test listener into events that can be kept.
#pragma once

#include <Test/TOVTestListener.h>
#include <TestHost/TOVTestEvents.h>

namespace TOVTestHost
{
class CTOVCheckListener;

// Pass it to CTOVSimpleTestRunner::AddListener. It does not own the receiver. It never sends a plan or an early end, as
// the framework has no such events.
class CTOVTestEventListener : public TOVTest::CTOVTestListener
{
public:
    void EnterEnvironment() override;
    void LeaveEnvironment() override;
    void EnterSuite(const TOVTest::CTOVTestSuite& oSuite) override;
    void LeaveSuite(const TOVTest::CTOVTestSuite& oSuite) override;
    void EnterTestCase(const TOVTest::CTOVTestCase& oTestCase) override;
    void LeaveTestCase(const TOVTest::CTOVTestCase& oTestCase) override;
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

    // If pChecks is not null, it tells of failed checks that were thrown. It is not owned.
    explicit CTOVTestEventListener(ITOVTestEvents& oEvents, const CTOVCheckListener* pChecks = nullptr);

private:
    std::string Thrown(const char* szAny) const;

    ITOVTestEvents& m_oEvents;
    const CTOVCheckListener* m_pChecks;
};

// These return the name and the place of a suite or a case.
sTestPlace PlaceOf(const TOVTest::CTOVTestSuite& oSuite);
sTestPlace PlaceOf(const TOVTest::CTOVTestCase& oTestCase);
} // namespace TOVTestHost
