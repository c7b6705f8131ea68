// Declares CTOVTestListener, which receives all events of a test run.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVTest
{
class CTOVTestCase;
class CTOVTestSuite;

// Base of all listeners. Its operations do nothing, so that a listener overrides those for the events that it needs.
// Texts and objects are valid during the call. The code that creates a listener owns it; there is no virtual
// destructor. Use it from one thread.
//
// One listener is in force in the process. The main program keeps it, if it exports its own functions for that
// (Test/TOVTestHost.h); otherwise the library does.
class TOV_EXPORT CTOVTestListener
{
public:
    // Virtual operations; their order is part of the exported design.

    // Called when a run, a suite or a case begins and ends.
    virtual void EnterEnvironment();
    virtual void LeaveEnvironment();
    virtual void EnterSuite(const CTOVTestSuite& oSuite);
    virtual void LeaveSuite(const CTOVTestSuite& oSuite);
    virtual void EnterTestCase(const CTOVTestCase& oTestCase);
    virtual void LeaveTestCase(const CTOVTestCase& oTestCase);

    // Called for a remark, which is not a failure.
    virtual void Warning(const char* szFile, long lLine, const char* szMessage);

    // Called for the eight kinds of failures, with the file and line of the check. Expressions are passed as source
    // text, and values as CTOVTestText shows them.
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
    // bOtherException is true if an exception was thrown, but not the expected one.
    virtual void FailedAssertThrows(const char* szFile, long lLine, const char* szExpression, const char* szException,
                                    bool bOtherException);
    virtual void FailedAssertThrowsNot(const char* szFile, long lLine, const char* szExpression);

    TOV_EXPORT_INLINE constexpr CTOVTestListener() {}
    CTOVTestListener(const CTOVTestListener& oOther);
    CTOVTestListener& operator=(const CTOVTestListener& oOther);

    // These return the null listener, which does nothing, and the listener in force.
    static CTOVTestListener& Null();
    static CTOVTestListener& Instance();

    // Sets the listener in force; null means the null listener. The main program must export "SetListener": there is no
    // fallback, and without it the process crashes by calling a null address.
    static void SetListener(CTOVTestListener* pListener);

    // Returns the argument, or the null listener if it is null.
    static CTOVTestListener* GetSafeListener(CTOVTestListener* pListener);
};
} // namespace TOVTest
