// The output of diagnostics as text.
#pragma once

namespace TOVPlatform
{
namespace TOVPosix
{
// Writes all of a text, as far as it can be written. Allocates nothing.
void WriteText(int nDescriptor, const char* szText);

// Whether text for the debugger is shown: a debugger is attached, or the environment asks for it.
bool ShowsDebugText();
} // namespace TOVPosix
} // namespace TOVPlatform
