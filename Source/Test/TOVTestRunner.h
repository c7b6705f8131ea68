// Runs all suites: CTOVTestRunner.
#pragma once

#include <Test/TOVCountingTracker.h>

namespace TOVTest
{
class CTOVTestCase;
class CTOVTestSuite;

// Walks all registered suites in the factory's order, and in each all cases, and tells a listener. Failed checks are
// counted events. The main program must export "SetListener" (Test/TOVTestHost.h).
//
// An exception that leaves a case, or what stands around it, ends the run at once and goes through to the caller. There
// is no LeaveTestCase, Closedown, LeaveSuite or LeaveEnvironment then, and no result of Run. The suite object is
// deleted, and the counter knows no current suite and case any more. The exception itself counts as nothing: the counts
// stay what the failed checks before it made of them, also of the case that threw, until the next run clears them.
//
// Counter, listener in force and case object are the process's only ones: runs must not overlap. One thread.
class TOV_EXPORT CTOVTestRunner
{
public:
    CTOVTestRunner(const CTOVTestRunner& oOther);
    CTOVTestRunner& operator=(const CTOVTestRunner& oOther);

    // Runs everything and tells the listener, which may be NULL. The counting listener and tracker stay in force behind
    // the run, with the counts of it, and go on telling the listener of failed checks: it must outlive them, or the
    // next run.
    static void RunAllTests(CTOVTestListener* pListener);

private:
    friend class CTOVSimpleTestRunner;

    CTOVTestRunner(CTOVTestListener* pListener);

    // Tells this listener nothing more; it is about to end.
    static void Forget(const CTOVTestListener* pListener);

    void RunEnvironment();
    void RunSuite(CTOVTestSuite& oSuite);
    void RunTestCase(CTOVTestCase& oTestCase);

    static CTOVCountingTracker m_oCounter;
};
} // namespace TOVTest
