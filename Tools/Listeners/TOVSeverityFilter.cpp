#include <Listeners/TOVSeverityFilter.h>

namespace TOVDebug
{
namespace
{
// An exception that leaves a call by the server would leave the server's lock taken.
template<class TCall> void CallSafely(TCall fnCall)
{
    try
    {
        fnCall();
    }
    catch (...)
    {
    }
}
} // namespace

CTOVSeverityFilter::CTOVSeverityFilter(ITOVLogListener& oTarget, eTOVDebugSeverity eLeastSeverity)
    : m_oTarget(oTarget), m_eLeastSeverity(eLeastSeverity), m_bStarted(false)
{
}

CTOVSeverityFilter::~CTOVSeverityFilter()
{
    Unregister();
}

eTOVDebugSeverity CTOVSeverityFilter::GetLeastSeverity() const
{
    return m_eLeastSeverity;
}

void CTOVSeverityFilter::SetLeastSeverity(eTOVDebugSeverity eLeastSeverity)
{
    m_eLeastSeverity = eLeastSeverity;
}

void CTOVSeverityFilter::OnStartup()
{
    CTOVListener::OnStartup();
    m_bStarted = true;
    CallSafely([this] { m_oTarget.OnStartup(); });
}

void CTOVSeverityFilter::OnClosedown()
{
    CTOVListener::OnClosedown();
    // The server calls this at every Unregister, but the target may be gone after the first call.
    if (!m_bStarted)
        return;
    m_bStarted = false;
    CallSafely([this] { m_oTarget.OnClosedown(); });
}

// The operations below do not use the filter after they have called the target, which may have destroyed the filter.

void CTOVSeverityFilter::OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity,
                                const char* szFormat, va_list pArguments)
{
    if (eSeverity < m_eLeastSeverity)
        return;
    va_list pCopy;
    va_copy(pCopy, pArguments);
    CallSafely([&] { m_oTarget.OnLogV(szFile, ulLine, eSeverity, szFormat, pCopy); });
    va_end(pCopy);
}

void CTOVSeverityFilter::OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression)
{
    CallSafely([&] { m_oTarget.OnAssert(szFile, ulLine, szExpression); });
}

void CTOVSeverityFilter::OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments)
{
    va_list pCopy;
    va_copy(pCopy, pArguments);
    CallSafely([&] { m_oTarget.OnPanicV(szFile, ulLine, szFormat, pCopy); });
    va_end(pCopy);
}

void CTOVSeverityFilter::SetApplicationName(const char* szName)
{
    CallSafely([&] { m_oTarget.SetApplicationName(szName); });
}
} // namespace TOVDebug
