// Formatted print by the rules of the Windows runtime. Internal to the Posix text functions.
#pragma once

#include <cstdarg>

namespace TOVPlatform
{
// The contracts are those of Print and PrintedLength in TOVPlatform/TOVStringBackend.h. Instantiated for both widths.
//
// %[-+0 #]*[width|*][.precision|.*][h l ll w I32 I64 L F N z t j]type. Where the C standard has another rule or none:
//
// - d i o u x X print 32 bits, unless ll or I64 is given; p prints the low 32 bits as eight capital digits.
// - c and s take text of the format's width, C and S of the other one; h makes it narrow, l and w wide.
// - 0 also pads characters and text. A null text is "(null)".
// - Any other type, a percent sign included, prints itself.
// - A text that has no form in the other width makes the result -1; such a character is left out.
//
// No item needs a block of its own, whatever its precision.
namespace TOVFormat
{
template<class T> int Print(T* szBuffer, int nCapacity, const T* szFormat, va_list pArguments);
template<class T> int PrintedLength(const T* szFormat, va_list pArguments);
} // namespace TOVFormat
} // namespace TOVPlatform
