// The porting manual for the source TOVTextNumber.cpp of a backend.
#pragma once

namespace TOVPlatform
{
// This header declares what a port owes to the conversions of TOVPlatform/TOVString.h, which read a number at the start
// of a text. Nothing here is exported. Any thread may call any function.
//
// The rules are those of the Windows runtime. A number may follow white space, and may begin with a sign. *pszEnd is
// set to the first unit after the number; if there is no number, it is set to szStart, and the result is 0. No pointer
// is null.
//
// - nBase is 2 to 36, or 0: then "0x" begins a hexadecimal number and "0" an octal one. "0x" is also read with base 16.
//   A prefix without a digit after it is not a number.
// - Integers have 32 bits and saturate, even if long is wider. After a minus sign, ToUlong returns the saturated value
//   negated.
// - ToDouble reads decimal digits with the locale's decimal point, and an exponent after one of the letters e, E, d and
//   D. It reads neither hexadecimal numbers nor "inf" and "nan".
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
