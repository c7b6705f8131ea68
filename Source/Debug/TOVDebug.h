// The entrances to the debug server: logging, failed checks and panic.
//
// An application sees what is logged through a listener (Debug/TOVLogListener.h), and the library has ready-made ones
// beside it: TOVDebug::CTOVConsoleListener (Listeners/TOVConsoleListener.h) prints all of it. On Linux, the environment
// variable TOVKERNEL_LOG, if it is set and not empty when the library is loaded, sends all lines and failed checks to
// standard error.
#pragma once

#include <Debug/TOVBase.h>
#include <Debug/TOVException.h>
#include <Debug/TOVFormatCheck.h>

// How grave a log line is. Nothing in the library filters by it: a listener drops what it does not want.
enum eTOVDebugSeverity
{
    eSeverityTrace = 100,   // remark for developers
    eSeverityInfo = 200,    // normal event
    eSeverityWarning = 400, // something unexpected that the code works around
    eSeverityError = 500,   // an operation has failed
    eSeverityFatal = 600    // a resource at the base of the process is missing
};

namespace TOVDebug
{
// Hands one line to every listener (ITOVLogListener::OnLogV). Returns true. Thread-safe; allocates nothing.
// ulFlags goes with the severity by convention (0x1 up to 400, 0x11 at 500, 0x8011 at 600) and reaches no listener.
// A plain message goes through the format "%s".
TOV_EXPORT bool _Log(const char* szFile, unsigned long ulLine, unsigned long ulFlags, eTOVDebugSeverity eSeverity,
                     const char* szFormat, ...);

// Does not compile: an object among the arguments.
template<class... TArguments, tRefusal<TArguments...> = 0>
inline bool _Log(const char*, unsigned long, unsigned long, eTOVDebugSeverity, const char*, const TArguments&...)
{
    TOV_REFUSE_OBJECTS(TArguments);
    return false;
}

// Interactive variant of Assert, for applications: tells the listeners, then asks the user in a box of three buttons.
// Yes: returns true if a debugger is attached (break into it), else false. No: exit(0). Cancel: the process ends at
// once, without static clean-up. Any other answer, or no place to ask: returns false, "go on past the check".
// The question is appended to one static text of 1024 characters at each call, and stops growing when that is full.
TOV_EXPORT bool Alternate_Assert(const char* szExpression, const char* szFile, int nLine);
} // namespace TOVDebug

// Hands the message to every listener (ITOVLogListener::OnPanicV), then ends the process with exit(-1).
extern "C" [[noreturn]] TOV_EXPORT void TOVPanic(const char* szFile, unsigned long ulLine, const char* szFormat, ...);

// Does not compile: an object among the arguments.
template<class... TArguments, TOVDebug::tRefusal<TArguments...> = 0>
inline void TOVPanic(const char*, unsigned long, const char*, const TArguments&...)
{
    TOV_REFUSE_OBJECTS(TArguments);
}
