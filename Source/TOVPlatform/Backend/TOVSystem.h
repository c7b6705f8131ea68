#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
// What a port owes to diagnostics, to the timer's clocks and to the test framework. Nothing here is exported.
//
// Texts are never null. Threads: any, for all functions.
namespace Backend
{
// The button that ended a question, with the values of the Windows dialogs.
enum eAnswer
{
    eAnswerNone = -1, // the question could not be asked
    eAnswerCancel = 2,
    eAnswerYes = 6,
    eAnswerNo = 7
};

// Registers with the system whatever the port has to. It is called once, before anything else, when the library is
// loaded.
void PrepareProcess();

// Hands a finished text to the debugger, if there is one; otherwise nobody sees it. A system without an output for
// debuggers writes it to standard error, and does so without a debugger as well if the environment variable
// TOVKERNEL_LOG is set and not empty when the library first asks. Allocates nothing.
void OutputDebugText(const char* szText);

// Throws the exception of a failed check that no listener of the application has heard of. If nobody catches it, so
// that it ends the process, a system without an output for debuggers shows the check on standard error first. An
// exception that was caught and is thrown again is not shown. Nothing but the exception is allocated.
[[noreturn]] void ThrowUnheardCheck(const char* szExpression, const char* szFile, tDword dwLine);

// True if a debugger is attached to this process.
bool IsDebuggerAttached();

// Asks a question with the buttons Yes, No and Cancel above all other windows, and waits for the answer.
eAnswer AskYesNoCancel(const char* szText, const char* szCaption);

// Shows an error text with one button and waits until it has been read.
void ShowError(const char* szText, const char* szCaption);

// Ends the process at once: no static is destroyed, and no exit handler runs.
[[noreturn]] void EndProcess(int nExitCode);

// The address of a function that the main program of this process exports under this plain name, or null. A function
// does not count if the program merely links the library that exports it.
void* FindInMainProgram(const char* szFunction);

// The high-resolution counter: its ticks, and how many of them make a second. Both return false, and store nothing, if
// the system has no such counter. It is monotonic, and its frequency does not change.
bool ReadPerformanceCounter(long long& nTicks);
bool ReadPerformanceFrequency(long long& nTicksPerSecond);

// The millisecond counter; it starts again at 0 after 2^32.
tDword ReadMilliseconds();
} // namespace Backend
} // namespace TOVPlatform
