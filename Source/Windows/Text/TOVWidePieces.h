// Declares a print of wide formats that spares the runtime their long integers. Internal to the Windows backend.
#pragma once

#include <cstdarg>

namespace TOVPlatform
{
// The emulator's runtime takes as many bytes for an integer of a wide format as the integer has units, so that one with
// many digits is written past the end of a block on the heap. The same integer in a narrow format is printed correctly.
namespace TOVWidePieces
{
// Whether the runtime may write past a block.
bool AreNeeded(const wchar_t* szFormat, va_list pArguments);

// This does the work of Print (TOVPlatform/Backend/TOVFormat.h), one conversion after the other. Without a buffer, it
// does the work of PrintedLength.
int Print(wchar_t* szBuffer, int nCapacity, const wchar_t* szFormat, va_list pArguments);
} // namespace TOVWidePieces
} // namespace TOVPlatform
