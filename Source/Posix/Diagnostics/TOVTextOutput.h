// The output of diagnostics as text.
#pragma once

namespace TOVPlatform
{
namespace TOVPosix
{
// Writes all of a text, as far as it can be written. Allocates nothing.
void WriteText(int nDescriptor, const char* szText);

// Whether text for the debugger is shown: a debugger is attached, or the environment asks for it. Asking the system for
// a debugger takes longer than all the rest of a log line. That there is none is therefore remembered for some
// milliseconds; that there is one is asked each time.
bool ShowsDebugText();

// Makes the child of each fork ask anew.
void AskForDebuggerAfterForks();
} // namespace TOVPosix
} // namespace TOVPlatform
