#include <Test/TOVTestCase.h>

namespace TOVTest
{
CTOVTestCase CTOVTestCase::m_oNull;

CTOVTestCase::CTOVTestCase(const CTOVTestCase& oOther) = default;
CTOVTestCase& CTOVTestCase::operator=(const CTOVTestCase& oOther) = default;

const char* CTOVTestCase::GetDescription() const
{
    return m_szDescription;
}

const char* CTOVTestCase::GetFileName() const
{
    // Settled: the text is spelled like this, and differs from that of a suite.
    return m_szFileName != nullptr ? m_szFileName : "<Unkown filename>";
}

unsigned long CTOVTestCase::GetLine() const
{
    return m_ulLine;
}

void CTOVTestCase::Run() const
{
    if (m_pSuite != nullptr && m_pfTest != nullptr)
        (m_pSuite->*m_pfTest)();
}

CTOVTestCase& CTOVTestCase::Null()
{
    return m_oNull;
}

CTOVTestCase& CTOVTestCase::operator()(CTOVTestSuite* pSuite, void (CTOVTestSuite::*pfTest)(),
                                       const char* szDescription, const char* szFileName, unsigned long ulLine)
{
    m_pSuite = pSuite;
    m_pfTest = pfTest;
    m_szDescription = szDescription;
    m_szFileName = szFileName;
    m_ulLine = ulLine;
    return *this;
}
} // namespace TOVTest
