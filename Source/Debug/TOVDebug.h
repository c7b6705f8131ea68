// Declares the functions that report to the debug server: logging, failed checks and panic.
//
// An application receives log lines through a listener (Debug/TOVLogListener.h). Ready-made listeners are shipped
// with the library; TOVDebug::CTOVConsoleListener (Listeners/TOVConsoleListener.h) prints every line. On Linux, the
// environment variable TOVKERNEL_LOG, if it is set and not empty when the library is loaded, sends all lines and failed
// checks to standard error.
#pragma once

#include <Debug/TOVBase.h>
#include <Debug/TOVException.h>
#include <Debug/TOVFormatCheck.h>

// Says how severe a log line is. Nothing in the library filters by it: each listener drops the lines that it does not
// want.
enum eTOVDebugSeverity
{
    eSeverityTrace = 100,   // remark for developers
    eSeverityInfo = 200,    // normal event
    eSeverityWarning = 400, // something unexpected that the code works around
    eSeverityError = 500,   // an operation has failed
    eSeverityFatal = 600    // a resource that the process cannot do without is missing
};

namespace TOVDebug
{
// Passes one line to every listener (ITOVLogListener::OnLogV). Returns true. It is thread-safe and allocates nothing
// itself; the listeners may allocate.
// By convention ulFlags depends on the severity (0x1 up to 400, 0x11 at 500, 0x8011 at 600); no listener receives it.
// Pass a text that is not a format through the format "%s".
TOV_EXPORT bool _Log(const char* szFile, unsigned long ulLine, unsigned long ulFlags, eTOVDebugSeverity eSeverity,
                     const char* szFormat, ...);

// This overload is chosen only if an argument is an object, and refuses to compile.
template<class... TArguments, tRefusal<TArguments...> = 0>
inline bool _Log(const char*, unsigned long, unsigned long, eTOVDebugSeverity, const char*, const TArguments&...)
{
    TOV_REFUSE_OBJECTS(TArguments);
    return false;
}

// Interactive variant of Assert, for applications: it notifies the listeners, then asks the user in a message box of
// three buttons.
//   Yes                            returns true if a debugger is attached: the caller then breaks into it; else false
//   No                             calls exit(0)
//   Cancel                         ends the process at once, without static clean-up
//   any other answer, or no box    returns false: the caller continues after the check
// The questions of all calls are collected in one static text of 1024 characters. When it is full, nothing more is
// added.
TOV_EXPORT bool Alternate_Assert(const char* szExpression, const char* szFile, int nLine);
} // namespace TOVDebug

// Passes the message to every listener (ITOVLogListener::OnPanicV), then ends the process with exit(-1).
extern "C" [[noreturn]] TOV_EXPORT void TOVPanic(const char* szFile, unsigned long ulLine, const char* szFormat, ...);

// This overload is chosen only if an argument is an object, and refuses to compile.
template<class... TArguments, TOVDebug::tRefusal<TArguments...> = 0>
inline void TOVPanic(const char*, unsigned long, const char*, const TArguments&...)
{
    TOV_REFUSE_OBJECTS(TArguments);
}
