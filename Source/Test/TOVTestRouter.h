// Hands the events of a test run on to any number of listeners: CTOVTestRouter.
#pragma once

#include <Test/TOVTestListener.h>

#include <vector>

namespace TOVTest
{
// Each event goes to each listener, in the order of their adding. Listeners are not owned, and must stay until they are
// removed or the router has gone. One thread.
//
// In an event, a listener that is added gets that event too. One that removes itself, or an earlier one, moves the
// later ones down, and the next of them misses that event.
class TOV_EXPORT CTOVTestRouter : public CTOVTestListener
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

    // Further virtual operations; their order is part of the exported design.
    virtual ~CTOVTestRouter();

    // Appends, also what is already there, which then hears everything twice.
    virtual void AddListener(CTOVTestListener& oListener);
    // Removes the first entry of this listener; an unknown one is ignored.
    virtual void RemoveListener(CTOVTestListener& oListener);

    CTOVTestRouter();
    CTOVTestRouter(const CTOVTestRouter& oOther);
    CTOVTestRouter& operator=(const CTOVTestRouter& oOther);

    long GetNumListeners() const;
    bool HasListeners() const;
    // NULL for an index out of range.
    CTOVTestListener* GetListener(long lIndex) const;

private:
    template<class... TParameters, class... TArguments>
    void Forward(void (CTOVTestListener::*pfEvent)(TParameters...), const TArguments&... aArguments);

    std::vector<CTOVTestListener*> m_aListeners;
};
} // namespace TOVTest
