// The listener that the library brings along.
#pragma once

#include <Debug/TOVLogListener.h>
#include <TOVString/TOVStringA.h>

namespace TOVDebug
{
// Writes every log line and failed check to the debugger's output, in the form that a development environment turns
// into a clickable source position, and shows the box of a panic. One static instance registers itself at load.
// The severity is not shown. Below 1024 characters a line allocates nothing; a longer one comes out whole. Of a message
// that has no narrow form, and of a longer one when memory is exhausted, at most 1023 characters come out. A panic
// comes to its end without memory as well. No lock of its own: it relies on the server's, which is held over every
// call.
class TOV_EXPORT CTOVMSDevLogger : public ITOVLogListener
{
public:
    // Both empty.
    void OnStartup() override;
    void OnClosedown() override;

    // Three pieces of output: "file(line) : ", the message, the line end.
    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override;

    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override;

    // Shows the message in a box "Critical Application Error" and waits. Settled: position and message go to the
    // debugger's output as a format of their own, so that percent signs in the message are read as conversions there.
    // There are no arguments for them: they read zeros. A message that asks for more than 24, or stores through one,
    // stands as it is.
    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override;

    // Keeps the name; nothing reads it.
    void SetApplicationName(const char* szName) override;

    // Unregisters itself, also if it never was registered.
    virtual ~CTOVMSDevLogger() noexcept(false);

    // Registers itself with the current server.
    CTOVMSDevLogger();

    // Copies the name only; the copy is not registered.
    CTOVMSDevLogger(const CTOVMSDevLogger& oOther);
    CTOVMSDevLogger& operator=(const CTOVMSDevLogger& oOther);

    // The one instance of the library.
    static const CTOVMSDevLogger _m_this;

private:
    int VPrintf(const char* szFormat, va_list pArguments);
    int Printf(const char* szFormat, ...);

    CTOVStringA m_oApplicationName;
};
} // namespace TOVDebug
