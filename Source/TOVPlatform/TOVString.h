// Zero-terminated text: narrow (multi-byte code page of the process) and wide (UTF-16 code units).
#pragma once

#include <Debug/TOVBase.h>
#include <Debug/TOVFormatCheck.h>

#include <cstdarg>

namespace TOVPlatform
{
// The two namespaces have the same functions under the same names. What the comments of narrow text say holds for wide
// text as well, unless the comments there say otherwise. Null pointers are refused: every pointer but the end pointers
// of the conversions is checked, in argument order, and a failed check throws. Letters, order and white space depend on
// the runtime's locale. Nothing here locks, logs or keeps state. Numbers have 32 bits on every system: long and
// unsigned long results are within that range.
namespace TOVStringA
{
// Order of two texts: exactly -1, 0 or 1. Compare reads code units as unsigned; Collate follows the locale's order.
TOV_EXPORT int Compare(const char* szString1, const char* szString2);
TOV_EXPORT int CompareNoCase(const char* szString1, const char* szString2);
TOV_EXPORT int Collate(const char* szString1, const char* szString2);
TOV_EXPORT int CollateNoCase(const char* szString1, const char* szString2);

// Units before the terminator: bytes for narrow text, not characters.
TOV_EXPORT int Length(const char* szString);

// Change the text in place and return it. Reverse works by units.
TOV_EXPORT char* ToLower(char* szString);
TOV_EXPORT char* ToUpper(char* szString);
TOV_EXPORT char* Reverse(char* szString);

// First or last occurrence of a unit, or null. The terminator can be searched for.
TOV_EXPORT const char* FindCharacter(const char* szString, int nCharacter);
TOV_EXPORT const char* FindLastCharacter(const char* szString, int nCharacter);

// First occurrence of the text szCharSet as a whole, or null.
TOV_EXPORT char* FindString(char* szString, const char* szCharSet);

// First unit that is in the set, or that is not in it; or null. The terminator is not a candidate. FindNotOneOf walks
// by characters and looks at the first byte of each.
TOV_EXPORT const char* FindOneOf(const char* szString, const char* szCharSet);
TOV_EXPORT const char* FindNotOneOf(const char* szString, const char* szCharSet);

// Last such unit, or null; both walk by characters. The unit at index 0 is never examined, so that a match there gives
// null.
TOV_EXPORT const char* ReverseFindOneOf(const char* szString, const char* szCharSet);
TOV_EXPORT const char* ReverseFindNotOneOf(const char* szString, const char* szCharSet);

// Formatted print, with the rules of the Windows runtime on every system: I64 and I32 before an integer, S and C for
// text of the other width, h, l and w for narrow and wide text, "(null)" for a null text, %p as eight hexadecimal
// digits (low 32 bits), integers without I64 at 32 bits. Exponents have at least two digits; the Windows runtime writes
// three. The result is the count of units without the terminator, or -1 if a text has no form in the other width.
//
// The two functions without a count have no bound: the buffer must be large enough for text and terminator.
//
// The two functions with a count write at most nCount units, and throw unless nCount > 0. A text that takes exactly
// nCount units has no terminator. A text that does not fit gives -1: the buffer then holds the first nCount units of
// the text, without a terminator.
//
// An argument list stands unchanged after the call, so that it can be used for a second call.
TOV_EXPORT int SPrintf(char* szBuffer, const char* szFormat, ...);
TOV_EXPORT int SNPrintf(char* szBuffer, int nCount, const char* szFormat, ...);
TOV_EXPORT int VSPrintf(char* szBuffer, const char* szFormat, va_list pArguments);
TOV_EXPORT int VSNPrintf(char* szBuffer, int nCount, const char* szFormat, va_list pArguments);

// Upper bound for the units that the formatted text takes, without the terminator. The bound is generous: every
// position of literal text counts the whole rest of the format, so that "Test" gives 10; integers and pointers count 32
// or more, e and g 128 or more. Where such a size would be less than the text, the text's real length counts instead.
// If the sum is too large for an int, each literal unit counts once; if that sum is too large as well, the result is
// -1. Throws for a negative width or precision from the list ("nWidth >= 0", "nPrecision >= 0") and, with "FALSE", for
// anything but the flags -+0#space*, the modifiers I64 h l F L N (one of them) and the conversions cCsSdiuoxXpegGfn.
// Cost: linear. An f is formatted, and so is whatever may exceed its usual size; no block is allocated for this.
TOV_EXPORT int VSCPrintf(const char* szFormat, va_list pArguments);

// Calls with an object among the arguments do not compile.
template<class... TArguments, TOVDebug::tRefusal<TArguments...> = 0>
inline int SPrintf(char*, const char*, const TArguments&...)
{
    TOV_REFUSE_OBJECTS(TArguments);
    return 0;
}
template<class... TArguments, TOVDebug::tRefusal<TArguments...> = 0>
inline int SNPrintf(char*, int, const char*, const TArguments&...)
{
    TOV_REFUSE_OBJECTS(TArguments);
    return 0;
}

// Copy up to and including the terminator, or append; return the destination.
TOV_EXPORT char* Copy(char* szStringDest, const char* szStringSrc);
TOV_EXPORT char* Concat(char* szStringDest, const char* szStringSrc);

// Writes exactly nCount units: a shorter source is padded with zeros, and one of nCount units or more leaves no
// terminator. Throws unless nCount > 0.
TOV_EXPORT char* NCopy(char* szStringDest, const char* szStringSrc, int nCount);

// Appends at most nCount units and always terminates. Throws unless nCount > 0.
TOV_EXPORT char* NConcat(char* szStringDest, const char* szStringSrc, int nCount);

// Steps by characters of the code page, or by bytes if it has none. Inc steps one on, also over the terminator; NInc
// steps nCount on but not past the terminator, and throws unless nCount >= 0; Dec steps one back, and gives null when
// the current position is at or before the start. A character that the terminator cuts off counts as single bytes.
TOV_EXPORT char* Inc(const char* szString);
TOV_EXPORT char* NInc(const char* szString, int nCount);
TOV_EXPORT char* Dec(const char* szStringStart, const char* szStringCurrent);

// The value of the number at the start of the text, after white space; 0 if there is no number. *pszEnd, unless the
// pointer is null, becomes the first unit after the number, or szStart if there is no number.
//
// Integers saturate at 32 bits, and ToUlong negates after a minus sign. nBase is 2 to 36, or 0 to let a prefix decide;
// any other base finds no number. ToDouble takes decimal digits with the locale's point and an exponent (e, E, d or D).
TOV_EXPORT long ToLong(const char* szStart, char** pszEnd, int nBase);
TOV_EXPORT unsigned long ToUlong(const char* szStart, char** pszEnd, int nBase);
TOV_EXPORT double ToDouble(const char* szStart, char** pszEnd);
} // namespace TOVStringA

namespace TOVStringW
{
// The two comparisons without case promise only the sign of their results.
TOV_EXPORT int Compare(const wchar_t* szString1, const wchar_t* szString2);
TOV_EXPORT int CompareNoCase(const wchar_t* szString1, const wchar_t* szString2);
TOV_EXPORT int Collate(const wchar_t* szString1, const wchar_t* szString2);
TOV_EXPORT int CollateNoCase(const wchar_t* szString1, const wchar_t* szString2);

TOV_EXPORT int Length(const wchar_t* szString);
TOV_EXPORT wchar_t* ToLower(wchar_t* szString);
TOV_EXPORT wchar_t* ToUpper(wchar_t* szString);
TOV_EXPORT wchar_t* Reverse(wchar_t* szString);

// Only the low 16 bits of nCharacter count. All searches walk by units.
TOV_EXPORT const wchar_t* FindCharacter(const wchar_t* szString, int nCharacter);
TOV_EXPORT const wchar_t* FindLastCharacter(const wchar_t* szString, int nCharacter);
TOV_EXPORT wchar_t* FindString(wchar_t* szString, const wchar_t* szCharSet);
TOV_EXPORT const wchar_t* FindOneOf(const wchar_t* szString, const wchar_t* szCharSet);
TOV_EXPORT const wchar_t* FindNotOneOf(const wchar_t* szString, const wchar_t* szCharSet);
TOV_EXPORT const wchar_t* ReverseFindOneOf(const wchar_t* szString, const wchar_t* szCharSet);
TOV_EXPORT const wchar_t* ReverseFindNotOneOf(const wchar_t* szString, const wchar_t* szCharSet);

// Counts are units. s and c take wide text, S and C narrow text. Settled: VSCPrintf reads arguments as the print does,
// and takes 8 bytes for I64.
TOV_EXPORT int SPrintf(wchar_t* szBuffer, const wchar_t* szFormat, ...);
TOV_EXPORT int SNPrintf(wchar_t* szBuffer, int nCount, const wchar_t* szFormat, ...);
TOV_EXPORT int VSPrintf(wchar_t* szBuffer, const wchar_t* szFormat, va_list pArguments);
TOV_EXPORT int VSNPrintf(wchar_t* szBuffer, int nCount, const wchar_t* szFormat, va_list pArguments);
TOV_EXPORT int VSCPrintf(const wchar_t* szFormat, va_list pArguments);

// Calls with an object among the arguments do not compile.
template<class... TArguments, TOVDebug::tRefusal<TArguments...> = 0>
inline int SPrintf(wchar_t*, const wchar_t*, const TArguments&...)
{
    TOV_REFUSE_OBJECTS(TArguments);
    return 0;
}
template<class... TArguments, TOVDebug::tRefusal<TArguments...> = 0>
inline int SNPrintf(wchar_t*, int, const wchar_t*, const TArguments&...)
{
    TOV_REFUSE_OBJECTS(TArguments);
    return 0;
}

TOV_EXPORT wchar_t* Copy(wchar_t* szStringDest, const wchar_t* szStringSrc);
TOV_EXPORT wchar_t* Concat(wchar_t* szStringDest, const wchar_t* szStringSrc);
TOV_EXPORT wchar_t* NCopy(wchar_t* szStringDest, const wchar_t* szStringSrc, int nCount);
TOV_EXPORT wchar_t* NConcat(wchar_t* szStringDest, const wchar_t* szStringSrc, int nCount);

// Plain pointer arithmetic: Inc steps one unit on, NInc nCount units on without a look at the text, and Dec one unit
// back after the comparison with the start.
TOV_EXPORT wchar_t* Inc(const wchar_t* szString);
TOV_EXPORT wchar_t* NInc(const wchar_t* szString, int nCount);
TOV_EXPORT wchar_t* Dec(const wchar_t* szStringStart, const wchar_t* szStringCurrent);

TOV_EXPORT long ToLong(const wchar_t* szStart, wchar_t** pszEnd, int nBase);
TOV_EXPORT unsigned long ToUlong(const wchar_t* szStart, wchar_t** pszEnd, int nBase);
TOV_EXPORT double ToDouble(const wchar_t* szStart, wchar_t** pszEnd);
} // namespace TOVStringW

// The narrow functions under the name by which they stand in check texts.
namespace TOVString = TOVStringA;
} // namespace TOVPlatform

// The plain functions, exported under these names. They check nothing.
extern "C"
{
// Copies at most ucCount characters and returns the destination; null if either pointer is null. A source of ucCount
// characters or more leaves no terminator. After a shorter source the rest is cleared, through the byte at index
// ucCount: ucCount + 1 bytes are written in all, and the destination must have room for them. A count of 0 writes
// nothing.
TOV_EXPORT char* TOVString_CopyN(char* szDestination, const char* szSource, tUchar ucCount);

// The runtime's classification of letters and digits, and of white space, under the current locale. A value that is not
// an unsigned character, such as a sign-extended one, is neither.
TOV_EXPORT bool IsAlphanumeric(int nCharacter);
TOV_EXPORT bool IsSpace(int nCharacter);
}
