// Read-only view of how a test run goes: CTOVTestTracker.
#pragma once

#include <Test/TOVTestCase.h>
#include <Test/TOVTestSuite.h>

namespace TOVTest
{
// The base counts nothing and knows the null case and the null suite. One thread.
class TOV_EXPORT CTOVTestTracker
{
public:
    // Virtual operations; their order is part of the exported design.
    // Whether the current case, the current suite, the run has failed: by the counters below.
    virtual bool HasTestFailed() const;
    virtual bool HasSuiteFailed() const;
    virtual bool HasEnvironmentFailed() const;

    virtual long GetNumFailedAsserts() const;    // in the current case
    virtual long GetNumFailedSuiteTests() const; // cases in the current suite
    virtual long GetNumFailedSuites() const;     // suites in the run
    virtual long GetNumTotalFailedTests() const; // cases in the run

    // Settled: null objects also for a counting tracker, whose own two operations of these names are others.
    virtual CTOVTestCase& GetCurrentTestCase() const;
    virtual CTOVTestSuite& GetCurrentTestSuite() const;

    TOV_EXPORT_INLINE constexpr CTOVTestTracker() {}
    CTOVTestTracker(const CTOVTestTracker& oOther);
    CTOVTestTracker& operator=(const CTOVTestTracker& oOther);

    // The tracker that counts nothing, and the one in force, which is the former until SetTracker was called. Trackers
    // are not owned; NULL means the null tracker.
    static CTOVTestTracker& Null();
    static CTOVTestTracker& Instance();
    static void SetTracker(CTOVTestTracker* pTracker);
    static CTOVTestTracker* GetSafeTracker(CTOVTestTracker* pTracker);

private:
    static CTOVTestTracker m_oNull;
    static CTOVTestTracker* m_pTracker;
};
} // namespace TOVTest
