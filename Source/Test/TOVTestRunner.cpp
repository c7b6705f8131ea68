#include <Test/TOVTestRunner.h>

#include <Test/TOVTestSuiteFactory.h>

#include <memory>

namespace TOVTest
{
CTOVCountingTracker CTOVTestRunner::m_oCounter;

CTOVTestRunner::CTOVTestRunner(CTOVTestListener* pListener)
{
    m_oCounter.SetListener(pListener);
    CTOVTestListener::SetListener(&m_oCounter);
    CTOVTestTracker::SetTracker(&m_oCounter);
}

CTOVTestRunner::CTOVTestRunner(const CTOVTestRunner& oOther) = default;
CTOVTestRunner& CTOVTestRunner::operator=(const CTOVTestRunner& oOther) = default;

void CTOVTestRunner::RunAllTests(CTOVTestListener* pListener)
{
    CTOVTestRunner(pListener).RunEnvironment();
}

void CTOVTestRunner::Forget(const CTOVTestListener* pListener)
{
    if (m_oCounter.m_pListener == pListener)
        m_oCounter.SetListener(nullptr);
}

void CTOVTestRunner::RunEnvironment()
{
    m_oCounter.EnterEnvironment();

    const char* szName = nullptr;
    for (bool bFound = CTOVTestSuiteFactory::GetFirst(szName); bFound;
         bFound = CTOVTestSuiteFactory::GetNext(szName, szName))
    {
        std::unique_ptr<CTOVTestSuite> pSuite(CTOVTestSuiteFactory::New(szName));
        if (pSuite != nullptr)
        {
            try
            {
                RunSuite(*pSuite);
            }
            catch (...)
            {
                m_oCounter.SetCurrentTestSuite(nullptr); // the suite is about to be deleted
                throw;
            }
        }
    }

    m_oCounter.LeaveEnvironment();
}

void CTOVTestRunner::RunSuite(CTOVTestSuite& oSuite)
{
    m_oCounter.EnterSuite(oSuite);
    for (long lIndex = 0; lIndex < oSuite.GetNumTestCases(); ++lIndex)
    {
        oSuite.Startup();
        RunTestCase(oSuite.GetTestCase(lIndex));
        oSuite.Closedown();
    }
    m_oCounter.LeaveSuite(oSuite);
}

void CTOVTestRunner::RunTestCase(CTOVTestCase& oTestCase)
{
    m_oCounter.EnterTestCase(oTestCase);
    oTestCase.Run();
    m_oCounter.LeaveTestCase(oTestCase);
}
} // namespace TOVTest
