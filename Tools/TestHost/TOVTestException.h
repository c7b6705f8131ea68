// Declares how an exception is described.
#pragma once

#include <Debug/TOVLogListener.h>

#include <string>

namespace TOVTestHost
{
// Keeps the last failed check, as its exception does not contain it. It is registered as long as it exists.
class CTOVCheckListener : public TOVDebug::ITOVLogListener
{
public:
    void OnStartup() override;
    void OnClosedown() override;
    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override;
    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override;
    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override;
    void SetApplicationName(const char* szName) override;

    virtual ~CTOVCheckListener();

    CTOVCheckListener();
    CTOVCheckListener(const CTOVCheckListener&) = delete;
    CTOVCheckListener& operator=(const CTOVCheckListener&) = delete;

    const std::string& GetLastCheck() const { return m_sCheck; }

private:
    std::string m_sCheck;
};

// Describes the exception that is being handled: "failed check x > 0 (File.cpp:12)", or what it says of itself. Returns
// an empty text if none is handled, or nothing is known of it. pChecks may be null.
std::string DescribeHandledException(const CTOVCheckListener* pChecks);
} // namespace TOVTestHost
