// Declares CTOVMSDevLogger, the listener that the library itself registers.
#pragma once

#include <Debug/TOVLogListener.h>
#include <TOVString/TOVStringA.h>

namespace TOVDebug
{
// Writes every log line and failed check to the debugger's output, in the form that a development environment turns
// into a clickable source position, and shows the message box of a panic. One static instance registers itself when the
// library is loaded. The severity is not shown. A line that nobody would see is not formatted; on Linux, a debugger
// that is attached while the program runs is noticed within some milliseconds. A line is written whole, whatever its
// length; one of fewer than 1024 characters needs no allocation. Only the first 1023 characters of a message are
// written if a wide argument cannot be converted to narrow text, or if there is no memory for a longer message. A panic
// is reported even without memory. This class has no lock: the server's lock is held during every call.
class TOV_EXPORT CTOVMSDevLogger : public ITOVLogListener
{
public:
    // These do nothing.
    void OnStartup() override;
    void OnClosedown() override;

    // Writes three pieces: "file(line) : ", the message, and the line end.
    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override;

    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override;

    // Shows the message in a box titled "Critical Application Error" and waits. Settled: the position and the formatted
    // message are also written to the debugger's output, where they are formatted a second time: percent signs in them
    // are read as conversions, whose arguments are zeros. A message with more than 24 conversions, or with one that
    // stores through its argument or has a width or precision of more than 4 digits, is written unchanged.
    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override;

    // Keeps the name; nothing reads it.
    void SetApplicationName(const char* szName) override;

    // Unregisters this listener, even if it was never registered.
    virtual ~CTOVMSDevLogger() noexcept(false);

    // Registers this listener with the current server.
    CTOVMSDevLogger();

    // These copy the name only; a copy is not registered.
    CTOVMSDevLogger(const CTOVMSDevLogger& oOther);
    CTOVMSDevLogger& operator=(const CTOVMSDevLogger& oOther);

    // The library's own instance.
    static const CTOVMSDevLogger _m_this;

private:
    int VPrintf(const char* szFormat, va_list pArguments);
    int Printf(const char* szFormat, ...);

    // This member alone makes the header include the string's header. It lies in the object, whose size is part of the
    // exported design.
    CTOVStringA m_oApplicationName;
};
} // namespace TOVDebug
