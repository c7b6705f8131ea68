// Keeps slight log lines from a listener.
#pragma once

#include <Listeners/TOVListener.h>

#include <atomic>

namespace TOVDebug
{
// Stands in front of any listener, also one that knows nothing of this library, and is registered in its place. Passes
// on lines of a least severity, and failed checks and panics always. What the other throws goes no further.
//
// Does not own the other listener, which must outlive the filter's registration. Filters may stand behind filters.
class CTOVSeverityFilter final : public CTOVListener
{
public:
    ~CTOVSeverityFilter() override;

    // Passed on when the filter is registered, and once when that is over.
    void OnStartup() override;
    void OnClosedown() override;

    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override;
    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override;
    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override;
    void SetApplicationName(const char* szName) override;

    CTOVSeverityFilter(ITOVLogListener& oTarget, eTOVDebugSeverity eLeastSeverity);

    // Thread-safe, also inside a call of the server.
    eTOVDebugSeverity GetLeastSeverity() const;
    void SetLeastSeverity(eTOVDebugSeverity eLeastSeverity);

private:
    ITOVLogListener& m_oTarget;
    std::atomic<eTOVDebugSeverity> m_eLeastSeverity;
    bool m_bStarted; // guarded by the server's lock
};
} // namespace TOVDebug
