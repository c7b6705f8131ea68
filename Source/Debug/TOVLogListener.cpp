#include <Debug/TOVLogListener.h>

namespace TOVDebug
{
ITOVLogListener::ITOVLogListener() = default;
ITOVLogListener::ITOVLogListener(const ITOVLogListener&) = default;
ITOVLogListener& ITOVLogListener::operator=(const ITOVLogListener&) = default;

void ITOVLogListener::OnLog(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                            ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    OnLogV(szFile, ulLine, eSeverity, szFormat, pArguments);
    va_end(pArguments);
}

void ITOVLogListener::OnPanic(const char* szFile, unsigned long ulLine, eTOVDebugSeverity /*eSeverity*/,
                              const char* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    OnPanicV(szFile, ulLine, szFormat, pArguments);
    va_end(pArguments);
}
} // namespace TOVDebug
