// What a port owes for numbers at the start of a text: Source/<System>/TOVTextNumber.cpp.
//
// The rules are those of the Windows runtime. White space in front of the number is skipped, and a sign may follow it.
// *pszEnd becomes the first unit after the number, or szStart if there is no number, and then the result is 0. No
// pointer is null. Internal: applications use TOVPlatform/TOVString.h.
//
// - nBase is 2 to 36, or 0: then "0x" begins a hexadecimal number and "0" an octal one. Base 16 takes "0x" as well. A
//   prefix without a digit after it is no number.
// - Integers have 32 bits and saturate, also where long is wider. ToUlong negates after a minus sign what it has
//   saturated.
// - ToDouble takes decimal digits with the locale's point and an exponent of the letter e, E, d or D; neither
// hexadecimal
//   numbers nor "inf" and "nan".
#pragma once

namespace TOVPlatform
{
namespace Backend
{
long ToLong(const char* szStart, char** pszEnd, int nBase);
unsigned long ToUlong(const char* szStart, char** pszEnd, int nBase);
double ToDouble(const char* szStart, char** pszEnd);

long ToLong(const wchar_t* szStart, wchar_t** pszEnd, int nBase);
unsigned long ToUlong(const wchar_t* szStart, wchar_t** pszEnd, int nBase);
double ToDouble(const wchar_t* szStart, wchar_t** pszEnd);
} // namespace Backend
} // namespace TOVPlatform
