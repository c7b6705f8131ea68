// A group of test cases: CTOVTestSuite.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVTest
{
class CTOVTestCase;

// Base of all suites. A suite is a class derived from it whose cases are member functions, listed in a table;
// Test/TOVTestSuiteDefinition.h has the pattern. A suite object lives while it runs: the runner has it made, and
// deletes it. One thread.
class TOV_EXPORT CTOVTestSuite
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVTestSuite();

    // Called before and after each case. The base does nothing.
    virtual void Startup();
    virtual void Closedown();

    virtual long GetNumTestCases() const;

    // The case at an index, valid until the next call for any suite: there is one such object for all of them. The
    // base, which has no cases, gives one that is named "<invalid test case>" and does nothing.
    virtual CTOVTestCase& GetTestCase(long lIndex) const;

    virtual const char* GetDescription() const;
    virtual const char* GetFileName() const;
    virtual unsigned long GetLine() const;

    TOV_EXPORT_INLINE constexpr CTOVTestSuite() {}
    CTOVTestSuite(const CTOVTestSuite& oOther);
    CTOVTestSuite& operator=(const CTOVTestSuite& oOther);

    // Stands in where there is no suite.
    static CTOVTestSuite& Null();

protected:
    // Fills the one case object with these values. The suite is told of as const and run as it is.
    static CTOVTestCase& SetupTestCase(const CTOVTestSuite* pSuite, void (CTOVTestSuite::*pfTest)(),
                                       const char* szDescription, const char* szFileName, unsigned long ulLine);

private:
    static CTOVTestCase& GetSharedTestCase();

    static CTOVTestSuite m_oNull;
};
} // namespace TOVTest
