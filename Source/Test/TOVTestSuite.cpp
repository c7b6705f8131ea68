#include <Test/TOVTestSuite.h>

#include <Test/TOVTestCase.h>

namespace TOVTest
{
CTOVTestSuite::CTOVTestSuite(const CTOVTestSuite& oOther) = default;
CTOVTestSuite& CTOVTestSuite::operator=(const CTOVTestSuite& oOther) = default;

CTOVTestSuite::~CTOVTestSuite()
{
}

void CTOVTestSuite::Startup()
{
}

void CTOVTestSuite::Closedown()
{
}

long CTOVTestSuite::GetNumTestCases() const
{
    return 0;
}

CTOVTestCase& CTOVTestSuite::GetTestCase(long /*lIndex*/) const
{
    return GetSharedTestCase()(nullptr, nullptr, "<invalid test case>", "<invalid file name>", 0);
}

const char* CTOVTestSuite::GetDescription() const
{
    return "<Unkown test suite>";
}

const char* CTOVTestSuite::GetFileName() const
{
    return "<Unkown file name>";
}

unsigned long CTOVTestSuite::GetLine() const
{
    return 0;
}

CTOVTestSuite& CTOVTestSuite::Null()
{
    return m_oNull;
}

CTOVTestCase& CTOVTestSuite::SetupTestCase(const CTOVTestSuite* pSuite, void (CTOVTestSuite::*pfTest)(),
                                           const char* szDescription, const char* szFileName, unsigned long ulLine)
{
    return GetSharedTestCase()(const_cast<CTOVTestSuite*>(pSuite), pfTest, szDescription, szFileName, ulLine);
}

CTOVTestCase& CTOVTestSuite::GetSharedTestCase()
{
    static CTOVTestCase s_oTestCase;
    return s_oTestCase;
}
} // namespace TOVTest
