// Runs all suites: CTOVTestRunner.
#pragma once

#include <Test/TOVCountingTracker.h>

namespace TOVTest
{
class CTOVTestCase;
class CTOVTestSuite;

// Walks all registered suites in the factory's order, and in each all cases, and tells a listener. Failed checks are
// counted events. An exception that leaves a case ends the run at once, without the events that were to close it, and
// goes through to the caller. The main program must export "SetListener" (Test/TOVTestHost.h).
//
// Counter, listener in force and case object are the process's only ones: runs must not overlap. One thread.
class TOV_EXPORT CTOVTestRunner
{
public:
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
