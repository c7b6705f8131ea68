// What a platform owes to the text functions. Internal: applications use TOVPlatform/TOVString.h.
#pragma once

#include <Debug/TOVBase.h>

#include <cstdarg>

namespace TOVPlatform
{
// One function for each width, and no policy: arguments have been checked, bases of numbers are 0 or 2 to 36. What is
// decided for both platforms, such as exact results of comparisons, stands above.
namespace TOVStringBackend
{
// Order by sign. Compare reads units as unsigned.
int Compare(const char* szString1, const char* szString2);
int Compare(const wchar_t* szString1, const wchar_t* szString2);
int CompareNoCase(const char* szString1, const char* szString2);
int CompareNoCase(const wchar_t* szString1, const wchar_t* szString2);
int Collate(const char* szString1, const char* szString2);
int Collate(const wchar_t* szString1, const wchar_t* szString2);
int CollateNoCase(const char* szString1, const char* szString2);
int CollateNoCase(const wchar_t* szString1, const wchar_t* szString2);

// Units before the terminator.
int Length(const char* szString);
int Length(const wchar_t* szString);

// In place.
void ToLower(char* szString);
void ToLower(wchar_t* szString);
void ToUpper(char* szString);
void ToUpper(wchar_t* szString);
void Reverse(char* szString);
void Reverse(wchar_t* szString);

// First or last occurrence, or null; the terminator can be found, and the text to find is not empty.
const char* FindCharacter(const char* szString, int nCharacter);
const wchar_t* FindCharacter(const wchar_t* szString, int nCharacter);
const char* FindLastCharacter(const char* szString, int nCharacter);
const wchar_t* FindLastCharacter(const wchar_t* szString, int nCharacter);
char* FindString(char* szString, const char* szSubString);
wchar_t* FindString(wchar_t* szString, const wchar_t* szSubString);
const char* FindOneOf(const char* szString, const char* szCharSet);
const wchar_t* FindOneOf(const wchar_t* szString, const wchar_t* szCharSet);

// Writes at most nCapacity units: the text, and a terminator if there is room for it. Returns the length of the text,
// or -1 when it does not fit. INT_MAX as capacity means no bound.
int Print(char* szBuffer, int nCapacity, const char* szFormat, va_list pArguments);
int Print(wchar_t* szBuffer, int nCapacity, const wchar_t* szFormat, va_list pArguments);

// Length of the text that Print would write without a bound, or -1 for a text that has no form in the other width.
int PrintedLength(const char* szFormat, ...);
int PrintedLength(const wchar_t* szFormat, ...);
int VPrintedLength(const char* szFormat, va_list pArguments);
int VPrintedLength(const wchar_t* szFormat, va_list pArguments);

void Copy(char* szDestination, const char* szSource);
void Copy(wchar_t* szDestination, const wchar_t* szSource);
void CopyPadded(char* szDestination, const char* szSource, int nCount);
void CopyPadded(wchar_t* szDestination, const wchar_t* szSource, int nCount);
void Append(char* szDestination, const char* szSource);
void Append(wchar_t* szDestination, const wchar_t* szSource);
void AppendAtMost(char* szDestination, const char* szSource, int nCount);
void AppendAtMost(wchar_t* szDestination, const wchar_t* szSource, int nCount);

// Steps by characters for narrow text and by units for wide text. A step on from anything but the terminator ends at
// the terminator at the latest; a step back is asked for from behind the start only.
const char* Inc(const char* szString);
const wchar_t* Inc(const wchar_t* szString);
const char* NInc(const char* szString, int nCount);
const wchar_t* NInc(const wchar_t* szString, int nCount);
const char* Dec(const char* szStart, const char* szCurrent);
const wchar_t* Dec(const wchar_t* szStart, const wchar_t* szCurrent);

// A decimal digit, and a text that begins with szPrefix of nCount units, as formats are read.
bool IsDigit(char cUnit);
bool IsDigit(wchar_t cUnit);
bool BeginsWith(const char* szString, const char* szPrefix, int nCount);
bool BeginsWith(const wchar_t* szString, const wchar_t* szPrefix, int nCount);

// *pszEnd becomes the first unit behind the number, or szStart if there is none; the pointer is never null here.
// Integers saturate at 32 bits.
long ToLong(const char* szStart, char** pszEnd, int nBase);
long ToLong(const wchar_t* szStart, wchar_t** pszEnd, int nBase);
unsigned long ToUlong(const char* szStart, char** pszEnd, int nBase);
unsigned long ToUlong(const wchar_t* szStart, wchar_t** pszEnd, int nBase);
double ToDouble(const char* szStart, char** pszEnd);
double ToDouble(const wchar_t* szStart, wchar_t** pszEnd);
} // namespace TOVStringBackend
} // namespace TOVPlatform
