#pragma once

#include <cstdarg>

namespace TOVPlatform
{
// What a port owes to the formatted text of TOVPlatform/TOVString.h. Nothing here is exported. Threads: any, for all
// functions.
//
// The rules are those of the Windows runtime, and a system that has this runtime calls its print:
//
//   %[-+0 #]*[width|*][.precision|.*][h l ll w I32 I64 I L F N j t z]*type
//
// Another port prints by itself, and reads this with TOVPlatform/TOVFormatItem.h. Where the C standard has another rule
// or none:
//
// - d i o u x X print 32 bits, unless ll or I64 is given; p prints the low 32 bits as eight capital digits.
// - c and s take text of the format's width, C and S text of the other width; h makes it narrow, l and w wide.
// - 0 also pads characters and text. A null text is "(null)".
// - Any other type, a percent sign included, prints itself. A conversion that the format's end cuts off prints nothing.
// - A character that has no form in the other width is left out. A text that has none makes the result -1.
// - Exponents have at least two digits; the Windows runtime writes three.
//
// Formats and lists are never null, and a list stands unchanged after the call. No conversion needs a block of its own,
// whatever its precision.
namespace Backend
{
// Print writes at most nCapacity units: the text, and a terminator if there is room for it. Returns the length of the
// text, or -1 when it does not fit. A capacity of INT_MAX means no bound.
//
// PrintedLength returns the length that Print would return without a bound, and writes nothing.
int Print(char* szBuffer, int nCapacity, const char* szFormat, va_list pArguments);
int PrintedLength(const char* szFormat, va_list pArguments);

int Print(wchar_t* szBuffer, int nCapacity, const wchar_t* szFormat, va_list pArguments);
int PrintedLength(const wchar_t* szFormat, va_list pArguments);
} // namespace Backend
} // namespace TOVPlatform
