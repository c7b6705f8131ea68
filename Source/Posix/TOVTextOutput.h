// Where the system's part of diagnostics writes. Internal to the Posix backend.
#pragma once

namespace TOVPlatform
{
namespace TOVTextOutput
{
// Writes all of a text, as far as it can be written. Allocates nothing.
void Write(int nDescriptor, const char* szText);

// Whether what is meant for a debugger is shown: one looks on, or the environment asks for it.
bool ShowsDebugText();
} // namespace TOVTextOutput
} // namespace TOVPlatform
