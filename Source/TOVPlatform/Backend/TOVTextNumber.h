#pragma once

namespace TOVPlatform
{
// What a port owes to the conversions of TOVPlatform/TOVString.h, which read a number at the start of a text. Nothing
// here is exported. Threads: any, for all functions.
//
// The rules are those of the Windows runtime. White space in front of the number is skipped, and a sign may follow it.
// *pszEnd becomes the first unit after the number. If there is no number, it becomes szStart, and the result is 0. No
// pointer is null.
//
// - nBase is 2 to 36, or 0: then "0x" begins a hexadecimal number and "0" an octal one. Base 16 takes "0x" as well. A
//   prefix without a digit after it is no number.
// - Integers have 32 bits and saturate, also where long is wider. After a minus sign, ToUlong negates the saturated
//   value.
// - ToDouble takes decimal digits with the locale's point, and an exponent after one of the letters e, E, d and D. It
//   takes neither hexadecimal numbers nor "inf" and "nan".
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
