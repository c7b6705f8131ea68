// Declares sTOVLogLine, an event of the debug server in the form in which the listeners print and keep it.
#pragma once

#include <Debug/TOVDebug.h>
#include <Listeners/TOVListenerExport.h>

#include <chrono>
#include <string>

namespace TOVDebug
{
// What the debug server was called for.
enum eTOVLogKind
{
    eLogMessage, // a log line
    eLogCheck,   // a failed check
    eLogPanic
};

// Describes one event.
struct TOV_LISTENER_EXPORT sTOVLogLine
{
    eTOVLogKind eKind;                           // a message, a failed check or a panic
    std::chrono::system_clock::time_point oTime; // when the listener received the event
    std::string sFile;                           // the source that reported it
    unsigned long ulLine;                        // in that source
    eTOVDebugSeverity eSeverity;                 // error for a failed check, fatal for a panic
    std::string sText;                           // formatted message, or the check's expression
    unsigned long ulThread = 0; // the system's number for the thread that logged, or 0 if it is not known

    // Returns whether this is a failed check, a panic, or a message of severity 500 or above, which must not be lost.
    bool IsGrave() const;

    // Returns the printed form, without a line end:
    //
    //     Path/Cities.cpp(148) : warning: 2026-11-21 19:28:24.123 [4711] 2 cities have no name
    //     Path/Cities.cpp(150) : error: 2026-11-21 19:28:24.123 [4711] check failed: nCount > 0
    //     Path/Cities.cpp(151) : fatal error: 2026-11-21 19:28:24.123 [4711] panic: no cities
    //
    // Position and severity come first, as compilers print them, so that editors find the place. The severities are
    // "trace", "info", "warning", "error" and "fatal error"; one without a name is printed as "severity 300". The time
    // is local, and the number in brackets, which is left out if it is 0, is the thread's.
    //
    // A text with line ends takes several lines, each of which begins in this way, so that no text can pass for the
    // line of another. A line end after the last line adds none. Other control characters, except the tab, direction
    // marks, characters that cannot be seen, and bytes that are no character in UTF-8 or in the system's encoding, are
    // printed as \x1b, so that no text gives orders to a terminal or hides a part of itself.
    std::string Print() const;
};
} // namespace TOVDebug
