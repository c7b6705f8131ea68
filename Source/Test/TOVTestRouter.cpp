#include <Test/TOVTestRouter.h>

#include <algorithm>

namespace TOVTest
{
// The loop reads the size at each step, since a listener may be added or removed during an event.
template<class... TParameters, class... TArguments>
void CTOVTestRouter::Forward(void (CTOVTestListener::*pfEvent)(TParameters...), const TArguments&... aArguments)
{
    for (std::size_t nListener = 0; nListener < m_aListeners.size(); ++nListener)
    {
        if (CTOVTestListener* const pListener = m_aListeners[nListener])
            (pListener->*pfEvent)(aArguments...);
    }
}

CTOVTestRouter::CTOVTestRouter() = default;

CTOVTestRouter::CTOVTestRouter(const CTOVTestRouter& oOther) = default;

CTOVTestRouter& CTOVTestRouter::operator=(const CTOVTestRouter& oOther) = default;

CTOVTestRouter::~CTOVTestRouter()
{
}

void CTOVTestRouter::AddListener(CTOVTestListener& oListener)
{
    m_aListeners.push_back(&oListener);
}

void CTOVTestRouter::RemoveListener(CTOVTestListener& oListener)
{
    const auto pFound = std::find(m_aListeners.begin(), m_aListeners.end(), &oListener);
    if (pFound != m_aListeners.end())
        m_aListeners.erase(pFound);
}

long CTOVTestRouter::GetNumListeners() const
{
    return static_cast<long>(m_aListeners.size());
}

bool CTOVTestRouter::HasListeners() const
{
    return !m_aListeners.empty();
}

CTOVTestListener* CTOVTestRouter::GetListener(long lIndex) const
{
    return 0 <= lIndex && lIndex < GetNumListeners() ? m_aListeners[static_cast<std::size_t>(lIndex)] : nullptr;
}

void CTOVTestRouter::EnterEnvironment()
{
    Forward(&CTOVTestListener::EnterEnvironment);
}

void CTOVTestRouter::LeaveEnvironment()
{
    Forward(&CTOVTestListener::LeaveEnvironment);
}

void CTOVTestRouter::EnterSuite(const CTOVTestSuite& oSuite)
{
    Forward(&CTOVTestListener::EnterSuite, oSuite);
}

void CTOVTestRouter::LeaveSuite(const CTOVTestSuite& oSuite)
{
    Forward(&CTOVTestListener::LeaveSuite, oSuite);
}

void CTOVTestRouter::EnterTestCase(const CTOVTestCase& oTestCase)
{
    Forward(&CTOVTestListener::EnterTestCase, oTestCase);
}

void CTOVTestRouter::LeaveTestCase(const CTOVTestCase& oTestCase)
{
    Forward(&CTOVTestListener::LeaveTestCase, oTestCase);
}

void CTOVTestRouter::Warning(const char* szFile, long lLine, const char* szMessage)
{
    Forward(&CTOVTestListener::Warning, szFile, lLine, szMessage);
}

void CTOVTestRouter::FailedTest(const char* szFile, long lLine, const char* szMessage)
{
    Forward(&CTOVTestListener::FailedTest, szFile, lLine, szMessage);
}

void CTOVTestRouter::FailedAssert(const char* szFile, long lLine, const char* szExpression)
{
    Forward(&CTOVTestListener::FailedAssert, szFile, lLine, szExpression);
}

void CTOVTestRouter::FailedAssertEquals(const char* szFile, long lLine, const char* szExpression,
                                        const char* szExpected, const char* szActualValue, const char* szExpectedValue)
{
    Forward(&CTOVTestListener::FailedAssertEquals, szFile, lLine, szExpression, szExpected, szActualValue,
            szExpectedValue);
}

void CTOVTestRouter::FailedAssertDelta(const char* szFile, long lLine, const char* szExpression, const char* szExpected,
                                       const char* szDelta, const char* szActualValue, const char* szExpectedValue,
                                       const char* szDeltaValue)
{
    Forward(&CTOVTestListener::FailedAssertDelta, szFile, lLine, szExpression, szExpected, szDelta, szActualValue,
            szExpectedValue, szDeltaValue);
}

void CTOVTestRouter::FailedAssertDiffers(const char* szFile, long lLine, const char* szExpression, const char* szOther,
                                         const char* szValue)
{
    Forward(&CTOVTestListener::FailedAssertDiffers, szFile, lLine, szExpression, szOther, szValue);
}

void CTOVTestRouter::FailedAssertLessThan(const char* szFile, long lLine, const char* szExpression, const char* szLimit,
                                          const char* szActualValue, const char* szLimitValue)
{
    Forward(&CTOVTestListener::FailedAssertLessThan, szFile, lLine, szExpression, szLimit, szActualValue, szLimitValue);
}

void CTOVTestRouter::FailedAssertThrows(const char* szFile, long lLine, const char* szExpression,
                                        const char* szException, bool bOtherException)
{
    Forward(&CTOVTestListener::FailedAssertThrows, szFile, lLine, szExpression, szException, bOtherException);
}

void CTOVTestRouter::FailedAssertThrowsNot(const char* szFile, long lLine, const char* szExpression)
{
    Forward(&CTOVTestListener::FailedAssertThrowsNot, szFile, lLine, szExpression);
}
} // namespace TOVTest
