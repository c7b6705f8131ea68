// Hears of everything that happens in a test run: CTOVTestListener.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVTest
{
class CTOVTestCase;
class CTOVTestSuite;

// Base of all listeners; every operation does nothing, so that a listener overrides what it wants to hear. Texts and
// objects are valid during the call. A listener is owned by whoever made it, and has no virtual destructor. One thread.
//
// One listener is in force in the process. It is kept by the main program, if that exports its own
// (Test/TOVTestHost.h), and otherwise by the library.
class TOV_EXPORT CTOVTestListener
{
public:
    // Virtual operations; their order is part of the exported design. A run, a suite and a case begin and end.
    virtual void EnterEnvironment();
    virtual void LeaveEnvironment();
    virtual void EnterSuite(const CTOVTestSuite& oSuite);
    virtual void LeaveSuite(const CTOVTestSuite& oSuite);
    virtual void EnterTestCase(const CTOVTestCase& oTestCase);
    virtual void LeaveTestCase(const CTOVTestCase& oTestCase);

    // A remark that is no failure.
    virtual void Warning(const char* szFile, long lLine, const char* szMessage);

    // The eight failures, each with the file and line of the check. Expressions come as source text, values as
    // CTOVTestText shows them.
    virtual void FailedTest(const char* szFile, long lLine, const char* szMessage);
    virtual void FailedAssert(const char* szFile, long lLine, const char* szExpression);
    virtual void FailedAssertEquals(const char* szFile, long lLine, const char* szExpression, const char* szExpected,
                                    const char* szActualValue, const char* szExpectedValue);
    virtual void FailedAssertDelta(const char* szFile, long lLine, const char* szExpression, const char* szExpected,
                                   const char* szDelta, const char* szActualValue, const char* szExpectedValue,
                                   const char* szDeltaValue);
    virtual void FailedAssertDiffers(const char* szFile, long lLine, const char* szExpression, const char* szOther,
                                     const char* szValue);
    virtual void FailedAssertLessThan(const char* szFile, long lLine, const char* szExpression, const char* szLimit,
                                      const char* szActualValue, const char* szLimitValue);
    // bOtherException: an exception came, but not the one that was expected.
    virtual void FailedAssertThrows(const char* szFile, long lLine, const char* szExpression, const char* szException,
                                    bool bOtherException);
    virtual void FailedAssertThrowsNot(const char* szFile, long lLine, const char* szExpression);

    TOV_EXPORT_INLINE constexpr CTOVTestListener() {}
    CTOVTestListener(const CTOVTestListener& oOther);
    CTOVTestListener& operator=(const CTOVTestListener& oOther);

    // The listener that hears nothing, and the one in force.
    static CTOVTestListener& Null();
    static CTOVTestListener& Instance();

    // Puts a listener in force; NULL means the null listener. The main program must export "SetListener": there is no
    // fallback, and without it the process ends at the call of a null address.
    static void SetListener(CTOVTestListener* pListener);

    // The argument, or the null listener for NULL.
    static CTOVTestListener* GetSafeListener(CTOVTestListener* pListener);
};
} // namespace TOVTest
