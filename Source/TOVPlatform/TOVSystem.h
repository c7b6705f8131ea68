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

// Hands a finished text to the debugger, if there is one; otherwise nobody sees it. Allocates nothing.
void OutputDebugText(const char* szText);

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
} // namespace TOVSystem
} // namespace TOVPlatform
