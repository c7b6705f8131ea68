// Numbers at the start of a text, in both widths. Internal to the Posix text functions.
#pragma once

namespace TOVPlatform
{
// The rules of the Windows runtime: 32-bit integers that saturate, a hexadecimal prefix that needs a digit, and doubles
// of decimal digits alone, with d as an exponent letter as well. *pszEnd becomes the first unit behind the number, or
// szStart if there is none. Instantiated for both widths.
namespace TOVTextNumber
{
template<class T> long ToLong(const T* szStart, T** pszEnd, int nBase);
template<class T> unsigned long ToUlong(const T* szStart, T** pszEnd, int nBase);
template<class T> double ToDouble(const T* szStart, T** pszEnd);
} // namespace TOVTextNumber
} // namespace TOVPlatform
