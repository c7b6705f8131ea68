// Declares CTOVTestRunner, which runs all suites.
#pragma once

#include <Test/TOVCountingTracker.h>

namespace TOVTest
{
class CTOVTestCase;
class CTOVTestSuite;

// Runs all registered suites in the factory's order, and all cases of each, and notifies a listener. Failed checks are
// events that are counted. The main program must export "SetListener" (Test/TOVTestHost.h).
//
// An exception that leaves a case, its Startup, its Closedown or a listener ends the run at once and reaches the
// caller. LeaveTestCase, Closedown, LeaveSuite and LeaveEnvironment are not called then, and Run
// has no result. The suite object is deleted, and the counter no longer has a current suite and case. The exception
// itself is not counted: until the next run, the counts are those of the failed checks before it, including those of
// the case that threw.
//
// The process has only one counter, one listener in force and one case object: runs must not overlap. Use one thread.
class TOV_EXPORT CTOVTestRunner
{
public:
    CTOVTestRunner(const CTOVTestRunner& oOther);
    CTOVTestRunner& operator=(const CTOVTestRunner& oOther);

    // Runs everything and notifies the listener, which may be null. The counting listener and tracker stay installed
    // after the run, keep its counts, and still forward failed checks: pListener must exist until the next run begins,
    // or until the library is unloaded.
    static void RunAllTests(CTOVTestListener* pListener);

private:
    friend class CTOVSimpleTestRunner;

    CTOVTestRunner(CTOVTestListener* pListener);

    // Stops notifying this listener, which is about to be destroyed.
    static void Forget(const CTOVTestListener* pListener);

    void RunEnvironment();
    void RunSuite(CTOVTestSuite& oSuite);
    void RunTestCase(CTOVTestCase& oTestCase);

    static CTOVCountingTracker m_oCounter;
};
} // namespace TOVTest
