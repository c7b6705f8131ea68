// Declares CTOVTestTracker, a read-only view of the state of a test run.
#pragma once

#include <Test/TOVTestCase.h>
#include <Test/TOVTestSuite.h>

namespace TOVTest
{
// The base class counts nothing, and returns the null case and the null suite. Use it from one thread.
class TOV_EXPORT CTOVTestTracker
{
public:
    // Virtual operations; their order is part of the exported design.

    // These return whether the current case, the current suite, or the run has failed, according to the counters below.
    virtual bool HasTestFailed() const;
    virtual bool HasSuiteFailed() const;
    virtual bool HasEnvironmentFailed() const;

    virtual long GetNumFailedAsserts() const;    // checks in the current case
    virtual long GetNumFailedSuiteTests() const; // cases in the current suite
    virtual long GetNumFailedSuites() const;     // suites in the run
    virtual long GetNumTotalFailedTests() const; // cases in the run

    // Settled: these also return the null objects for a counting tracker, whose operations of the same names do not
    // override them.
    virtual CTOVTestCase& GetCurrentTestCase() const;
    virtual CTOVTestSuite& GetCurrentTestSuite() const;

    TOV_EXPORT_INLINE constexpr CTOVTestTracker() {}
    CTOVTestTracker(const CTOVTestTracker& oOther);
    CTOVTestTracker& operator=(const CTOVTestTracker& oOther);

    // Null is the tracker that counts nothing. Instance is the tracker in force, which is Null until SetTracker is
    // called. Trackers are not owned. A null argument means the null tracker.
    static CTOVTestTracker& Null();
    static CTOVTestTracker& Instance();
    static void SetTracker(CTOVTestTracker* pTracker);
    static CTOVTestTracker* GetSafeTracker(CTOVTestTracker* pTracker);

private:
    static CTOVTestTracker m_oNull;
    static CTOVTestTracker* m_pTracker;
};
} // namespace TOVTest
