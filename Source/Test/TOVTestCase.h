// One case of a test suite: CTOVTestCase.
#pragma once

#include <Test/TOVTestSuite.h>

namespace TOVTest
{
// Names a member function of a suite, with the place where it stands. Owns nothing: suite and texts must outlive it.
// One thread.
class TOV_EXPORT CTOVTestCase
{
public:
    // No suite, no function, no texts.
    constexpr CTOVTestCase();
    CTOVTestCase(const CTOVTestCase& oOther);
    CTOVTestCase& operator=(const CTOVTestCase& oOther);

    // The case's name; NULL for a default case.
    const char* GetDescription() const;
    // The source file; "<Unkown filename>" where none was set.
    const char* GetFileName() const;
    unsigned long GetLine() const;

    // Calls the function on its suite; without one of the two, does nothing. What the function throws goes through.
    void Run() const;

    // Stands in where there is no case.
    static CTOVTestCase& Null();

protected:
    CTOVTestCase& operator()(CTOVTestSuite* pSuite, void (CTOVTestSuite::*pfTest)(), const char* szDescription,
                             const char* szFileName, unsigned long ulLine);

private:
    friend class CTOVTestSuite;

    const char* m_szFileName;
    unsigned long m_ulLine;
    const char* m_szDescription;
    void (CTOVTestSuite::*m_pfTest)();
    CTOVTestSuite* m_pSuite;

    static CTOVTestCase m_oNull;
};

TOV_EXPORT_INLINE constexpr CTOVTestCase::CTOVTestCase()
    : m_szFileName(nullptr), m_ulLine(0), m_szDescription(nullptr), m_pfTest(nullptr), m_pSuite(nullptr)
{
}
} // namespace TOVTest
