// Declares CTOVTestSuite, a group of test cases.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVTest
{
class CTOVTestCase;

// Base of all suites. A suite is a class derived from it whose cases are member functions, listed in a table;
// Test/TOVTestSuiteDefinition.h shows how. A suite object exists while it runs: the runner creates it by the factory
// and deletes it. Use it from one thread.
class TOV_EXPORT CTOVTestSuite
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVTestSuite();

    // Called before and after each case. Those of the base class do nothing.
    virtual void Startup();
    virtual void Closedown();

    // Returns the number of cases. The base class has none.
    virtual long GetNumTestCases() const;

    // Returns the case at an index. It is valid until the next call for any suite, as all suites share one case object.
    // The base class has no cases, and returns one that is named "<invalid test case>" and does nothing.
    virtual CTOVTestCase& GetTestCase(long lIndex) const;

    // These return the name of the suite that reports show, and the place of its table in the sources.
    virtual const char* GetDescription() const;
    virtual const char* GetFileName() const;
    virtual unsigned long GetLine() const;

    TOV_EXPORT_INLINE constexpr CTOVTestSuite() {}
    CTOVTestSuite(const CTOVTestSuite& oOther);
    CTOVTestSuite& operator=(const CTOVTestSuite& oOther);

    // Returns the null object, which is used where there is no suite.
    static CTOVTestSuite& Null();

protected:
    // Fills the shared case object with these values and returns it. The suite is const, as listeners receive it; its
    // case runs on it as a non-const object.
    static CTOVTestCase& SetupTestCase(const CTOVTestSuite* pSuite, void (CTOVTestSuite::*pfTest)(),
                                       const char* szDescription, const char* szFileName, unsigned long ulLine);

private:
    static CTOVTestCase& GetSharedTestCase();

    static CTOVTestSuite m_oNull;
};
} // namespace TOVTest
