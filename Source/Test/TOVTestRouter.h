// Declares CTOVTestRouter, which passes the events of a test run to any number of listeners.
#pragma once

#include <Test/TOVTestListener.h>

#include <vector>

namespace TOVTest
{
// Passes each event to each listener, in the order in which they were added. The router does not own the listeners;
// they must exist until they are removed or the router is destroyed. Use it from one thread.
//
// A listener that is added during an event receives that event too. If a listener removes itself, or an earlier one,
// during an event, the later ones move down and the next of them misses that event.
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

    // Appends a listener. One that is added twice receives every event twice.
    virtual void AddListener(CTOVTestListener& oListener);
    // Removes the first entry of this listener; an unknown one is ignored.
    virtual void RemoveListener(CTOVTestListener& oListener);

    CTOVTestRouter();
    CTOVTestRouter(const CTOVTestRouter& oOther);
    CTOVTestRouter& operator=(const CTOVTestRouter& oOther);

    // These return how many listeners there are, counting one that was added twice as two, and whether there is any.
    long GetNumListeners() const;
    bool HasListeners() const;
    // Returns null if the index is out of range.
    CTOVTestListener* GetListener(long lIndex) const;

private:
    template<class... TParameters, class... TArguments>
    void Forward(void (CTOVTestListener::*pfEvent)(TParameters...), const TArguments&... aArguments);

    std::vector<CTOVTestListener*> m_aListeners;
};
} // namespace TOVTest
