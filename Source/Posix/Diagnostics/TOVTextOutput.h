// The output of diagnostics as text.
#pragma once

namespace TOVPlatform
{
namespace TOVPosix
{
// Writes all of a text, as far as it can be written. Allocates nothing.
void WriteText(int nDescriptor, const char* szText);

// False if the process certainly has no debugger. A debugger stops whom it attaches to, and a stop counts as giving the
// processor up. A process that has never done so has none, which spares the start of a program its first look into
// /proc: a quarter of what the library adds.
bool CanHaveDebugger();

// Whether text for the debugger is shown: a debugger is attached, or the environment asks for it. Asking the system for
// a debugger takes longer than all the rest of a log line. That there is none is therefore remembered for some
// milliseconds; that there is one is asked each time.
bool ShowsDebugText();

// Forgets that there is no debugger. Called in the child of a fork.
void AskForDebuggerAgain();
} // namespace TOVPosix
} // namespace TOVPlatform
