// The porting manual for the source TOVSystem.cpp of a backend.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
// This header declares what a port owes to diagnostics, to the timer's clocks and to the test framework. Nothing here
// is exported.
//
// Texts are never null. Any thread may call any function.
namespace Backend
{
// The button with which the user answered a question, with the values of the Windows dialogs.
enum eAnswer
{
    eAnswerNone = -1, // the question could not be asked
    eAnswerCancel = 2,
    eAnswerYes = 6,
    eAnswerNo = 7
};

// Registers with the system what the port needs, such as handlers for forks. It is called once, before anything else,
// when the library is loaded.
void PrepareProcess();

// Writes a text to the debugger's output; without a debugger, the text is lost. A system without such an output writes
// it to standard error instead: while HasDebugOutput notices a debugger, and always if the environment variable
// TOVKERNEL_LOG was set and not empty at the library's first use of it. Allocates nothing.
void OutputDebugText(const char* szText);

// Returns whether OutputDebugText reaches anybody, so that a text that would be lost need not be made. It is asked for
// each log line, and may need some milliseconds to notice that a debugger has been attached; the system's own output
// is always reached.
bool HasDebugOutput();

// Throws the exception of a failed check of which no listener of the application has been notified. If the exception is
// not caught and ends the process, a system without an output for debuggers first shows the check on standard error. An
// exception that was caught and is thrown again is not shown. Only the exception itself is allocated.
[[noreturn]] void ThrowUnheardCheck(const char* szExpression, const char* szFile, tDword dwLine);

// Returns whether a debugger is attached to this process.
bool IsDebuggerAttached();

// Asks a question with the buttons Yes, No and Cancel above all other windows, and waits for the answer.
eAnswer AskYesNoCancel(const char* szText, const char* szCaption);

// Shows an error text with one button, and waits until the user closes it.
void ShowError(const char* szText, const char* szCaption);

// Ends the process at once: no static is destroyed, and no exit handler runs.
[[noreturn]] void EndProcess(int nExitCode);

// Returns the address of a function that the main program of this process exports under this plain name, or null. A
// function of a library that the program links does not count.
void* FindInMainProgram(const char* szFunction);

// A value that the system gave, or none. It is returned in registers, where std::optional would be written and read.
struct sReading
{
    bool bRead;
    long long nValue;
};

// These read the high-resolution counter: its ticks, and the number of ticks in a second. They return no value if the
// system has no such counter. The counter is monotonic, and its frequency does not change.
sReading ReadPerformanceCounter();
sReading ReadPerformanceFrequency();

// Returns the millisecond counter, which starts again at 0 after 2^32.
tDword ReadMilliseconds();
} // namespace Backend
} // namespace TOVPlatform
