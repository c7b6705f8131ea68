// The seam's small internal family: what diagnostics, the timer and the test framework ask of the system. Not exported.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
namespace TOVSystem
{
// Button that ended a question, with the values of the Windows dialogs.
enum eAnswer
{
    eAnswerNone = -1, // the question could not be asked
    eAnswerCancel = 2,
    eAnswerYes = 6,
    eAnswerNo = 7
};

// Called once, when the library is loaded, before anything else: what the backend has to register with the system.
void PrepareProcess();

// Hands a finished text to the debugger, if there is one; otherwise nobody sees it. Where the system has no debugger's
// output, it goes to standard error, and there without a debugger as well if the environment variable TOVKERNEL_LOG is
// set and not empty when the library first asks. Allocates nothing.
void OutputDebugText(const char* szText);

// Throws the exception of a failed check that no listener of the application has heard of. If nobody catches it, so
// that the process ends by it, a system without a debugger's output shows the check on standard error first. One that
// was caught and is thrown again is not shown. Nothing but the exception is allocated.
[[noreturn]] void ThrowUnheardCheck(const char* szExpression, const char* szFile, tDword dwLine);

// True if a debugger is attached to this process.
bool IsDebuggerAttached();

// Asks a question with the buttons Yes, No and Cancel above all other windows, and waits for the answer.
eAnswer AskYesNoCancel(const char* szText, const char* szCaption);

// Shows an error text with one button and waits until it has been read.
void ShowError(const char* szText, const char* szCaption);

// Ends the process at once: no static clean-up, no exit handlers.
[[noreturn]] void EndProcess(int nExitCode);

// The address of a function that the main program of this process exports under this plain name; NULL if it does not.
// What a library exports that the program merely links does not count.
void* FindInMainProgram(const char* szFunction);

// The high-resolution counter: its ticks, and how many of them make a second. False if the system does not tell.
// Monotonic; the frequency does not change.
bool ReadPerformanceCounter(long long& nTicks);
bool ReadPerformanceFrequency(long long& nTicksPerSecond);

// The millisecond counter; it starts again at 0 after 2^32.
tDword ReadMilliseconds();

// A time event's callback, in a plain form and in the system's; these differ by the calling convention where the system
// has one of its own. It runs on a thread of the system's timer service with the event's identifier, a message, the
// caller's value and two values without meaning.
typedef void (*tTimeEvent)(unsigned int nEvent, unsigned int nMessage, unsigned long ulUser, unsigned long ulReserved1,
                           unsigned long ulReserved2);
typedef void(TOV_CALLBACK* tSystemTimeEvent)(unsigned int nEvent, unsigned int nMessage, unsigned long ulUser,
                                             unsigned long ulReserved1, unsigned long ulReserved2);

// Ask for timers as fine as 1 to 65535 milliseconds, and no longer. 0, or the reason of a refusal: a period out of
// range, or one to end that was not begun.
unsigned int BeginTimerPeriod(unsigned int nMilliseconds);
unsigned int EndTimerPeriod(unsigned int nMilliseconds);

// Calls back after 1 to 65535 milliseconds, once or again and again at this period, which does not drift. The
// resolution is a wish. The event's identifier; 0 for a delay out of range, more than 16 events, or no memory. All
// callbacks share one thread; calls that one of them holds up follow without pause, at least the latest of them. NULL
// is called by nobody.
unsigned int SetTimeEvent(unsigned int nDelay, unsigned int nResolution, tTimeEvent pCallback, unsigned long ulUser,
                          bool bPeriodic);
unsigned int SetSystemTimeEvent(unsigned int nDelay, unsigned int nResolution, tSystemTimeEvent pCallback,
                                unsigned long ulUser, bool bPeriodic);

// Ends an event; a call that has begun goes on. 0, or the reason of a refusal: there is no such event, or it was to
// call once and has begun to.
unsigned int KillTimeEvent(unsigned int nEvent);
} // namespace TOVSystem
} // namespace TOVPlatform
