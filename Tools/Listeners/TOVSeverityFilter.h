// Declares CTOVSeverityFilter, which passes only lines of a minimum severity to a listener.
#pragma once

#include <Listeners/TOVListener.h>

#include <atomic>

namespace TOVDebug
{
// Is registered in place of its target, which can be any listener, even one that is not of this library. It passes on
// lines of at least a given severity, and all failed checks and panics. It catches what the target throws.
//
// It does not own the target, which must outlive the filter's registration. The target may be another filter.
class TOV_LISTENER_EXPORT CTOVSeverityFilter final : public CTOVListener
{
public:
    ~CTOVSeverityFilter() override;

    // The target's OnStartup is called when the filter is registered, and its OnClosedown once after that, when the
    // filter is unregistered or the server closes down.
    void OnStartup() override;
    void OnClosedown() override;

    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override;
    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override;
    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override;
    void SetApplicationName(const char* szName) override;

    // Passes on lines of this severity and above.
    CTOVSeverityFilter(ITOVLogListener& oTarget, eTOVDebugSeverity eLeastSeverity);

    // These are thread-safe, even during a call by the server.
    eTOVDebugSeverity GetLeastSeverity() const;
    void SetLeastSeverity(eTOVDebugSeverity eLeastSeverity);

private:
    ITOVLogListener& m_oTarget;
    std::atomic<eTOVDebugSeverity> m_eLeastSeverity;
    bool m_bStarted; // guarded by the server's lock
};
} // namespace TOVDebug
