// The porting manual for the source TOVFormat.cpp of a backend.
#pragma once

#include <cstdarg>

namespace TOVPlatform
{
// This header declares what a port owes to the formatted text of TOVPlatform/TOVString.h. Nothing here is exported. Any
// thread may call any function.
//
// The rules are those of the Windows runtime; a system that has this runtime calls its printing functions:
//
//   %[-+0 #]*[width|*][.precision|.*][h l ll w I32 I64 I L F N j t z]*type
//
// Another port has its own implementation, which reads such items with TOVPlatform/TOVFormatItem.h. These rules differ
// from those of the C standard, or are missing there:
//
// - d i o u x X print 32 bits, unless ll or I64 is given; p prints the low 32 bits as eight capital digits.
// - c and s print text of the format's width, C and S text of the other width; h selects narrow, l and w wide text.
// - 0 also pads characters and text. A null text is printed as "(null)".
// - Any other type, a percent sign included, prints itself. A conversion that the end of the format cuts off prints
//   nothing.
// - A character that cannot be converted to the format's width is omitted. A text that cannot be converted makes the
//   result -1.
// - Exponents have at least two digits; the Windows runtime writes three.
//
// Formats and argument lists are never null, and a list is unchanged after the call. No conversion allocates a block,
// whatever its precision.
namespace Backend
{
// The units of the decimal point in printed text of the parameter's type, which tells the width and is not read.
int DecimalPointLength(const char* szWidth);
int DecimalPointLength(const wchar_t* szWidth);

// Whether a number of an f conversion is printed with all its digits, is rounded half away from zero, and has a full
// stop as its decimal point. Such numbers are then printed above the backend as well.
bool ArePlainReals();

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
