#include "TestSuites/TOVRecordedRun.h"

#include "Support/TOVTestSupport.h"

#include <Test/TOVSimpleTestRunner.h>
#include <Test/TOVTestCase.h>
#include <Test/TOVTestHost.h>
#include <Test/TOVTestSuite.h>

#include <sstream>

TOV_TEST_HOST

namespace
{
std::string Quoted(const char* szText)
{
    return '"' + std::string(szText) + '"';
}

// "\"description\" file(line)" of a suite or a case.
template<class T> std::string Described(const T& oThing)
{
    return Quoted(oThing.GetDescription()) + ' ' + oThing.GetFileName() + '(' + std::to_string(oThing.GetLine()) + ')';
}

// A source without its ending, so that sources may be divided and lines may move.
std::string Source(const char* szFile)
{
    const std::string sFile(szFile);
    return sFile.substr(0, sFile.rfind('.'));
}

class CRunRecorder : public TOVTest::CTOVTestListener
{
public:
    explicit CRunRecorder(sRecordedRun& oRun) : m_oRun(oRun) {}

    void EnterEnvironment() override { Tell("enter environment"); }
    void LeaveEnvironment() override { Tell("leave environment"); }

    void EnterSuite(const TOVTest::CTOVTestSuite& oSuite) override
    {
        m_sSuite = oSuite.GetDescription();
        m_nNumAsserted = m_oLog.Checks().size();
        Tell("enter suite " + Described(oSuite));
    }

    void LeaveSuite(const TOVTest::CTOVTestSuite& oSuite) override
    {
        if (m_oLog.Checks().size() > m_nNumAsserted)
            m_oRun.aAsserted.push_back(oSuite.GetDescription());
        Tell("leave suite " + Quoted(oSuite.GetDescription()));
    }

    void EnterTestCase(const TOVTest::CTOVTestCase& oTestCase) override
    {
        m_sCase = oTestCase.GetDescription();
        Tell("  enter case " + Described(oTestCase));
    }

    void LeaveTestCase(const TOVTest::CTOVTestCase& oTestCase) override
    {
        Tell("  leave case " + Quoted(oTestCase.GetDescription()));
    }

    void Warning(const char* szFile, long, const char* szMessage) override
    {
        m_oRun.aWarnings.push_back(szMessage);
        Tell("    warning in " + Source(szFile) + ' ' + Quoted(szMessage));
    }

    void FailedTest(const char* szFile, long lLine, const char* szMessage) override
    {
        Fail("failed", szFile, lLine, {szMessage});
    }

    void FailedAssert(const char* szFile, long lLine, const char* szExpression) override
    {
        Fail("not true", szFile, lLine, {szExpression});
    }

    void FailedAssertEquals(const char* szFile, long lLine, const char* szExpression, const char* szExpected,
                            const char* szActualValue, const char* szExpectedValue) override
    {
        Fail("not equal", szFile, lLine, {szExpression, szExpected, szActualValue, szExpectedValue});
    }

    void FailedAssertDelta(const char* szFile, long lLine, const char* szExpression, const char* szExpected,
                           const char* szDelta, const char* szActualValue, const char* szExpectedValue,
                           const char* szDeltaValue) override
    {
        Fail("not near", szFile, lLine,
             {szExpression, szExpected, szDelta, szActualValue, szExpectedValue, szDeltaValue});
    }

    void FailedAssertDiffers(const char* szFile, long lLine, const char* szExpression, const char* szOther,
                             const char* szValue) override
    {
        Fail("not different", szFile, lLine, {szExpression, szOther, szValue});
    }

    void FailedAssertLessThan(const char* szFile, long lLine, const char* szExpression, const char* szLimit,
                              const char* szActualValue, const char* szLimitValue) override
    {
        Fail("not less", szFile, lLine, {szExpression, szLimit, szActualValue, szLimitValue});
    }

    void FailedAssertThrows(const char* szFile, long lLine, const char* szExpression, const char* szException,
                            bool) override
    {
        Fail("no exception", szFile, lLine, {szExpression, szException});
    }

    void FailedAssertThrowsNot(const char* szFile, long lLine, const char* szExpression) override
    {
        Fail("an exception", szFile, lLine, {szExpression});
    }

private:
    void Tell(const std::string& sEvent) { m_oRun.aEvents.push_back(sEvent); }

    void Fail(const char* szWhat, const char* szFile, long lLine, const std::vector<const char*>& aTexts)
    {
        std::string sTexts;
        for (const char* szText : aTexts)
            sTexts += ' ' + Quoted(szText);
        m_oRun.aFailures.push_back(m_sSuite + '/' + m_sCase + ": " + szWhat + ' ' + szFile + '(' +
                                   std::to_string(lLine) + ')' + sTexts);
        Tell(std::string("    ") + szWhat + " in " + Source(szFile) + sTexts);
    }

    sRecordedRun& m_oRun;
    CLogRecorder m_oLog;
    std::size_t m_nNumAsserted = 0;
    std::string m_sSuite;
    std::string m_sCase;
};
} // namespace

sRecordedRun RecordRun()
{
    sRecordedRun oRun = {};
    CRunRecorder oRecorder(oRun);
    TOVTest::CTOVSimpleTestRunner oRunner;
    oRunner.AddListener(oRecorder);
    oRun.nResult = oRunner.Run();
    return oRun;
}
