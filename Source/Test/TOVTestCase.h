// Declares CTOVTestCase, one case of a test suite.
#pragma once

#include <Test/TOVTestSuite.h>

namespace TOVTest
{
// Refers to a member function of a suite, with its place in the source. A case owns nothing: the suite and the texts
// must outlive it. Use it from one thread.
class TOV_EXPORT CTOVTestCase
{
public:
    // Makes a case without a suite, a function and texts.
    TOV_EXPORT_CONSTEXPR CTOVTestCase();
    CTOVTestCase(const CTOVTestCase& oOther);
    CTOVTestCase& operator=(const CTOVTestCase& oOther);

    // Returns the case's name, or null for a default case.
    const char* GetDescription() const;
    // Returns the source file, or "<Unkown filename>" if it was not set.
    const char* GetFileName() const;
    unsigned long GetLine() const;

    // Calls the function of the suite. Does nothing if one of the two is missing. An exception of the function reaches
    // the caller.
    void Run() const;

    // Returns the null object, which is used where there is no case.
    static CTOVTestCase& Null();

protected:
    // Sets all members. The suite calls it for the case object that all suites share.
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
