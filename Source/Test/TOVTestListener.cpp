#include <Test/TOVTestListener.h>

#include <Test/TOVMainProgram.h>
#include <Test/TOVTestHooks.h>

namespace TOVTest
{
CTOVTestListener::CTOVTestListener(const CTOVTestListener& oOther) = default;
CTOVTestListener& CTOVTestListener::operator=(const CTOVTestListener& oOther) = default;

void CTOVTestListener::EnterEnvironment()
{
}

void CTOVTestListener::LeaveEnvironment()
{
}

void CTOVTestListener::EnterSuite(const CTOVTestSuite& /*oSuite*/)
{
}

void CTOVTestListener::LeaveSuite(const CTOVTestSuite& /*oSuite*/)
{
}

void CTOVTestListener::EnterTestCase(const CTOVTestCase& /*oTestCase*/)
{
}

void CTOVTestListener::LeaveTestCase(const CTOVTestCase& /*oTestCase*/)
{
}

void CTOVTestListener::Warning(const char* /*szFile*/, long /*lLine*/, const char* /*szMessage*/)
{
}

void CTOVTestListener::FailedTest(const char* /*szFile*/, long /*lLine*/, const char* /*szMessage*/)
{
}

void CTOVTestListener::FailedAssert(const char* /*szFile*/, long /*lLine*/, const char* /*szExpression*/)
{
}

void CTOVTestListener::FailedAssertEquals(const char* /*szFile*/, long /*lLine*/, const char* /*szExpression*/,
                                          const char* /*szExpected*/, const char* /*szActualValue*/,
                                          const char* /*szExpectedValue*/)
{
}

void CTOVTestListener::FailedAssertDelta(const char* /*szFile*/, long /*lLine*/, const char* /*szExpression*/,
                                         const char* /*szExpected*/, const char* /*szDelta*/,
                                         const char* /*szActualValue*/, const char* /*szExpectedValue*/,
                                         const char* /*szDeltaValue*/)
{
}

void CTOVTestListener::FailedAssertDiffers(const char* /*szFile*/, long /*lLine*/, const char* /*szExpression*/,
                                           const char* /*szOther*/, const char* /*szValue*/)
{
}

void CTOVTestListener::FailedAssertLessThan(const char* /*szFile*/, long /*lLine*/, const char* /*szExpression*/,
                                            const char* /*szLimit*/, const char* /*szActualValue*/,
                                            const char* /*szLimitValue*/)
{
}

void CTOVTestListener::FailedAssertThrows(const char* /*szFile*/, long /*lLine*/, const char* /*szExpression*/,
                                          const char* /*szException*/, bool /*bOtherException*/)
{
}

void CTOVTestListener::FailedAssertThrowsNot(const char* /*szFile*/, long /*lLine*/, const char* /*szExpression*/)
{
}

CTOVTestListener& CTOVTestListener::Null()
{
    static const auto pfOfProgram = FindProgramFunction<&GetNull>("GetNull");
    return pfOfProgram != nullptr ? pfOfProgram() : GetOwnNull();
}

CTOVTestListener& CTOVTestListener::Instance()
{
    static const auto pfOfProgram = FindProgramFunction<&GetListener>("GetListener");
    return pfOfProgram != nullptr ? pfOfProgram() : GetOwnListener();
}

void CTOVTestListener::SetListener(CTOVTestListener* pListener)
{
    // Settled: the function is called unchecked, so that a host without it crashes here and does not lose its events.
    FindProgramFunction<&::SetListener>("SetListener")(pListener);
}

CTOVTestListener* CTOVTestListener::GetSafeListener(CTOVTestListener* pListener)
{
    return pListener != nullptr ? pListener : &Null();
}
} // namespace TOVTest
