#include <TestHost/TOVTestEventListener.h>

#include <TestHost/TOVTestException.h>

#include <Test/TOVTestCase.h>
#include <Test/TOVTestSuite.h>

namespace TOVTestHost
{
namespace
{
// Code that raises an event itself may pass null for a text.
std::string TextOf(const char* szText)
{
    return szText != nullptr ? szText : "";
}

sTestNote Failure(const char* szType, const char* szFile, long lLine, const std::string& sMessage)
{
    return {eNoteFailure, szType, TextOf(szFile), lLine, sMessage, {}};
}
} // namespace

sTestPlace PlaceOf(const TOVTest::CTOVTestSuite& oSuite)
{
    return {TextOf(oSuite.GetDescription()), TextOf(oSuite.GetFileName()), oSuite.GetLine()};
}

sTestPlace PlaceOf(const TOVTest::CTOVTestCase& oTestCase)
{
    return {TextOf(oTestCase.GetDescription()), TextOf(oTestCase.GetFileName()), oTestCase.GetLine()};
}

CTOVTestEventListener::CTOVTestEventListener(ITOVTestEvents& oEvents, const CTOVCheckListener* pChecks)
    : m_oEvents(oEvents), m_pChecks(pChecks)
{
}

// Returns a text such as "an exception: no such city".
std::string CTOVTestEventListener::Thrown(const char* szAny) const
{
    const std::string sKnown = DescribeHandledException(m_pChecks);
    return sKnown.empty() ? szAny : std::string(szAny) + ": " + sKnown;
}

void CTOVTestEventListener::EnterEnvironment()
{
    m_oEvents.OnEnterRun();
}

void CTOVTestEventListener::LeaveEnvironment()
{
    m_oEvents.OnLeaveRun();
}

void CTOVTestEventListener::EnterSuite(const TOVTest::CTOVTestSuite& oSuite)
{
    m_oEvents.OnEnterSuite(PlaceOf(oSuite));
}

void CTOVTestEventListener::LeaveSuite(const TOVTest::CTOVTestSuite& /*oSuite*/)
{
    m_oEvents.OnLeaveSuite();
}

void CTOVTestEventListener::EnterTestCase(const TOVTest::CTOVTestCase& oTestCase)
{
    m_oEvents.OnEnterCase(PlaceOf(oTestCase));
}

void CTOVTestEventListener::LeaveTestCase(const TOVTest::CTOVTestCase& /*oTestCase*/)
{
    m_oEvents.OnLeaveCase();
}

void CTOVTestEventListener::Warning(const char* szFile, long lLine, const char* szMessage)
{
    m_oEvents.OnNote({eNoteWarning, "Warning", TextOf(szFile), lLine, TextOf(szMessage), {}});
}

void CTOVTestEventListener::FailedTest(const char* szFile, long lLine, const char* szMessage)
{
    m_oEvents.OnNote(Failure("FailedTest", szFile, lLine, TextOf(szMessage)));
}

void CTOVTestEventListener::FailedAssert(const char* szFile, long lLine, const char* szExpression)
{
    m_oEvents.OnNote(Failure("FailedAssert", szFile, lLine, TextOf(szExpression)));
}

void CTOVTestEventListener::FailedAssertEquals(const char* szFile, long lLine, const char* szExpression,
                                               const char* szExpected, const char* szActualValue,
                                               const char* szExpectedValue)
{
    sTestNote oNote = Failure("FailedAssertEquals", szFile, lLine, TextOf(szExpression) + " == " + TextOf(szExpected));
    oNote.aValues = {{"actual", TextOf(szActualValue)}, {"expected", TextOf(szExpectedValue)}};
    m_oEvents.OnNote(oNote);
}

void CTOVTestEventListener::FailedAssertDelta(const char* szFile, long lLine, const char* szExpression,
                                              const char* szExpected, const char* szDelta, const char* szActualValue,
                                              const char* szExpectedValue, const char* szDeltaValue)
{
    sTestNote oNote = Failure("FailedAssertDelta", szFile, lLine,
                              TextOf(szExpression) + " within " + TextOf(szDelta) + " of " + TextOf(szExpected));
    oNote.aValues = {
        {"actual", TextOf(szActualValue)}, {"expected", TextOf(szExpectedValue)}, {"delta", TextOf(szDeltaValue)}};
    m_oEvents.OnNote(oNote);
}

void CTOVTestEventListener::FailedAssertDiffers(const char* szFile, long lLine, const char* szExpression,
                                                const char* szOther, const char* szValue)
{
    sTestNote oNote = Failure("FailedAssertDiffers", szFile, lLine, TextOf(szExpression) + " != " + TextOf(szOther));
    oNote.aValues = {{"both", TextOf(szValue)}};
    m_oEvents.OnNote(oNote);
}

void CTOVTestEventListener::FailedAssertLessThan(const char* szFile, long lLine, const char* szExpression,
                                                 const char* szLimit, const char* szActualValue,
                                                 const char* szLimitValue)
{
    sTestNote oNote = Failure("FailedAssertLessThan", szFile, lLine, TextOf(szExpression) + " < " + TextOf(szLimit));
    oNote.aValues = {{"actual", TextOf(szActualValue)}, {"limit", TextOf(szLimitValue)}};
    m_oEvents.OnNote(oNote);
}

void CTOVTestEventListener::FailedAssertThrows(const char* szFile, long lLine, const char* szExpression,
                                               const char* szException, bool bOtherException)
{
    sTestNote oNote =
        Failure("FailedAssertThrows", szFile, lLine, TextOf(szExpression) + " throws " + TextOf(szException));
    oNote.aValues = {{"thrown", bOtherException ? Thrown("another exception") : "nothing"}};
    m_oEvents.OnNote(oNote);
}

void CTOVTestEventListener::FailedAssertThrowsNot(const char* szFile, long lLine, const char* szExpression)
{
    sTestNote oNote = Failure("FailedAssertThrowsNot", szFile, lLine, TextOf(szExpression) + " throws nothing");
    oNote.aValues = {{"thrown", Thrown("an exception")}};
    m_oEvents.OnNote(oNote);
}
} // namespace TOVTestHost
