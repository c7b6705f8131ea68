// Declares functions for zero-terminated text: narrow (in the multi-byte code page of the process) and wide (UTF-16
// code units).
#pragma once

#include <Debug/TOVBase.h>
#include <Debug/TOVFormatCheck.h>

#include <cstdarg>

namespace TOVPlatform
{
// The two namespaces have the same functions under the same names. The comments on narrow text also apply to wide text,
// except where those on wide text differ. A unit is one char or one wchar_t. Every pointer is checked, in the order of
// the arguments, except for the end pointers of the conversions: a null pointer throws. Letters, order and white space
// depend on the runtime's locale. The functions have no lock, log nothing and keep no state. Numbers have 32 bits on
// every system: results of type long and unsigned long are within that range.
namespace TOVStringA
{
// These return the order of two texts: exactly -1, 0 or 1. Compare compares the units as unsigned numbers, and Collate
// follows the locale's order. CompareNoCase and CollateNoCase do the same and ignore case.
TOV_EXPORT int Compare(const char* szString1, const char* szString2);
TOV_EXPORT int CompareNoCase(const char* szString1, const char* szString2);
TOV_EXPORT int Collate(const char* szString1, const char* szString2);
TOV_EXPORT int CollateNoCase(const char* szString1, const char* szString2);

// Internal: does what CompareNoCase does, but returns any negative number, 0 or any positive number, and does not check
// the pointers. So that what the string classes inline needs no call in between.
TOV_EXPORT TOV_CALLED_OFTEN int OrderNoCase(const char* szString1, const char* szString2);

// Returns the number of units before the terminator: for narrow text bytes, not characters.
TOV_EXPORT int Length(const char* szString);

// These change the text in place and return it. Reverse reverses the units.
TOV_EXPORT char* ToLower(char* szString);
TOV_EXPORT char* ToUpper(char* szString);
TOV_EXPORT char* Reverse(char* szString);

// These return the first or the last occurrence of a unit, or null. The terminator can be searched for.
TOV_EXPORT const char* FindCharacter(const char* szString, int nCharacter);
TOV_EXPORT const char* FindLastCharacter(const char* szString, int nCharacter);

// Returns the first occurrence of the whole text szCharSet, or null.
TOV_EXPORT char* FindString(char* szString, const char* szCharSet);

// FindOneOf returns the first unit that is in the set, FindNotOneOf the first that is not, or null. They do not examine
// the terminator. FindNotOneOf moves from character to character, and examines the first byte of each.
TOV_EXPORT const char* FindOneOf(const char* szString, const char* szCharSet);
TOV_EXPORT const char* FindNotOneOf(const char* szString, const char* szCharSet);

// These return the last unit that is in the set, or that is not, or null. Both move from character to character. They
// never examine the unit at index 0: if only that unit matches, they return null.
TOV_EXPORT const char* ReverseFindOneOf(const char* szString, const char* szCharSet);
TOV_EXPORT const char* ReverseFindNotOneOf(const char* szString, const char* szCharSet);

// These print a formatted text by the rules of the Windows runtime, on every system. They accept I64 and I32 before an
// integer, S and C for text of the other width, and h, l and w for narrow and wide text. A null text is printed as
// "(null)", and %p as eight hexadecimal digits, for the low 32 bits. Integers without I64 have 32 bits. Exponents have
// at least two digits; the Windows runtime writes three. The functions return the number of units without the
// terminator, or -1 if a text of the other width cannot be converted.
//
// The two functions without a count have no limit: the buffer must be large enough for the text and its terminator.
//
// The two functions with a count write at most nCount units, and throw unless nCount > 0. A text that takes exactly
// nCount units has no terminator. A text that does not fit gives -1: the buffer then holds the first nCount units of
// the text, without a terminator.
//
// An argument list is unchanged after the call, so that it can be used for a second call.
TOV_EXPORT int SPrintf(char* szBuffer, const char* szFormat, ...);
TOV_EXPORT int SNPrintf(char* szBuffer, int nCount, const char* szFormat, ...);
TOV_EXPORT int VSPrintf(char* szBuffer, const char* szFormat, va_list pArguments);
TOV_EXPORT int VSNPrintf(char* szBuffer, int nCount, const char* szFormat, va_list pArguments);

// Returns an upper bound of the number of units that the formatted text has, without the terminator. The bound is
// generous: at each position of literal text, the whole rest of the format is counted, so that "Test" gives 10; an
// integer or a pointer counts as 32 or more, and an e or g conversion as 128 or more. If a text could be longer than
// that, its real length counts. If the sum is too large for an int, each literal unit counts as one; if this sum is too
// large as well, the result is -1. Throws "nWidth >= 0" or "nPrecision >= 0" if a width or a precision in the argument
// list is negative. Throws "FALSE" for anything but the flags -+0#space*, one of the modifiers I64 h l F L N, and the
// conversions cCsSdiuoxXpegGfn. Cost: linear. To measure a value that may exceed its usual size, or a very large or
// nearly round one for an f conversion, the value is formatted; that allocates no block.
TOV_EXPORT int VSCPrintf(const char* szFormat, va_list pArguments);

// These overloads are chosen only if an argument is an object, and refuse to compile.
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

// These copy the source with its terminator to the destination, or append it there, and return the destination.
TOV_EXPORT char* Copy(char* szStringDest, const char* szStringSrc);
TOV_EXPORT char* Concat(char* szStringDest, const char* szStringSrc);

// Writes exactly nCount units: a shorter source is padded with zeros, and one of nCount units or more leaves no
// terminator. Throws unless nCount > 0.
TOV_EXPORT char* NCopy(char* szStringDest, const char* szStringSrc, int nCount);

// Appends at most nCount units and always terminates. Throws unless nCount > 0.
TOV_EXPORT char* NConcat(char* szStringDest, const char* szStringSrc, int nCount);

// These move by characters of the code page, or by bytes if it has no multi-byte characters. Inc returns the next
// character, even past the terminator. NInc moves nCount characters forward, but not past the terminator, and throws
// unless nCount >= 0. Dec returns the previous character, or null if the current position is at the start or before it.
// If the terminator cuts a character off, each of its bytes counts as a character.
TOV_EXPORT char* Inc(const char* szString);
TOV_EXPORT char* NInc(const char* szString, int nCount);
TOV_EXPORT char* Dec(const char* szStringStart, const char* szStringCurrent);

// These return the value of the number at the start of the text, after white space, or 0 if there is no number. Unless
// pszEnd is null, *pszEnd is set to the first unit after the number, or to szStart if there is no number.
//
// Integers saturate at 32 bits; after a minus sign, ToUlong returns the negated value. nBase is 2 to 36, or 0, for
// which the prefix of the number determines the base; with any other base there is no number. ToDouble reads decimal
// digits with the locale's decimal point, and an exponent (e, E, d or D).
TOV_EXPORT long ToLong(const char* szStart, char** pszEnd, int nBase);
TOV_EXPORT unsigned long ToUlong(const char* szStart, char** pszEnd, int nBase);
TOV_EXPORT double ToDouble(const char* szStart, char** pszEnd);
} // namespace TOVStringA

namespace TOVStringW
{
// The two comparisons without case return a number of which only the sign is defined.
TOV_EXPORT int Compare(const wchar_t* szString1, const wchar_t* szString2);
TOV_EXPORT int CompareNoCase(const wchar_t* szString1, const wchar_t* szString2);
TOV_EXPORT int Collate(const wchar_t* szString1, const wchar_t* szString2);
TOV_EXPORT int CollateNoCase(const wchar_t* szString1, const wchar_t* szString2);
TOV_EXPORT TOV_CALLED_OFTEN int OrderNoCase(const wchar_t* szString1, const wchar_t* szString2);

// These return the number of units before the terminator, or change the text in place and return it.
TOV_EXPORT int Length(const wchar_t* szString);
TOV_EXPORT wchar_t* ToLower(wchar_t* szString);
TOV_EXPORT wchar_t* ToUpper(wchar_t* szString);
TOV_EXPORT wchar_t* Reverse(wchar_t* szString);

// Only the low 16 bits of nCharacter are used. All searches move from unit to unit.
TOV_EXPORT const wchar_t* FindCharacter(const wchar_t* szString, int nCharacter);
TOV_EXPORT const wchar_t* FindLastCharacter(const wchar_t* szString, int nCharacter);
TOV_EXPORT wchar_t* FindString(wchar_t* szString, const wchar_t* szCharSet);
TOV_EXPORT const wchar_t* FindOneOf(const wchar_t* szString, const wchar_t* szCharSet);
TOV_EXPORT const wchar_t* FindNotOneOf(const wchar_t* szString, const wchar_t* szCharSet);
TOV_EXPORT const wchar_t* ReverseFindOneOf(const wchar_t* szString, const wchar_t* szCharSet);
TOV_EXPORT const wchar_t* ReverseFindNotOneOf(const wchar_t* szString, const wchar_t* szCharSet);

// Counts are in units. The conversions s and c print wide text, S and C narrow text. Settled: VSCPrintf reads the
// arguments as the printing functions do; I64 reads 8 bytes.
TOV_EXPORT int SPrintf(wchar_t* szBuffer, const wchar_t* szFormat, ...);
TOV_EXPORT int SNPrintf(wchar_t* szBuffer, int nCount, const wchar_t* szFormat, ...);
TOV_EXPORT int VSPrintf(wchar_t* szBuffer, const wchar_t* szFormat, va_list pArguments);
TOV_EXPORT int VSNPrintf(wchar_t* szBuffer, int nCount, const wchar_t* szFormat, va_list pArguments);
TOV_EXPORT int VSCPrintf(const wchar_t* szFormat, va_list pArguments);

// These overloads are chosen only if an argument is an object, and refuse to compile.
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

// These copy and append as the functions of TOVStringA do. Counts are in units.
TOV_EXPORT wchar_t* Copy(wchar_t* szStringDest, const wchar_t* szStringSrc);
TOV_EXPORT wchar_t* Concat(wchar_t* szStringDest, const wchar_t* szStringSrc);
TOV_EXPORT wchar_t* NCopy(wchar_t* szStringDest, const wchar_t* szStringSrc, int nCount);
TOV_EXPORT wchar_t* NConcat(wchar_t* szStringDest, const wchar_t* szStringSrc, int nCount);

// These are plain pointer arithmetic. Inc moves one unit forward. NInc moves nCount units forward and does not examine
// the text. Dec moves one unit back, unless the current position is at the start or before it.
TOV_EXPORT wchar_t* Inc(const wchar_t* szString);
TOV_EXPORT wchar_t* NInc(const wchar_t* szString, int nCount);
TOV_EXPORT wchar_t* Dec(const wchar_t* szStringStart, const wchar_t* szStringCurrent);

// These read the number at the start of a text as the functions of TOVStringA do.
TOV_EXPORT long ToLong(const wchar_t* szStart, wchar_t** pszEnd, int nBase);
TOV_EXPORT unsigned long ToUlong(const wchar_t* szStart, wchar_t** pszEnd, int nBase);
TOV_EXPORT double ToDouble(const wchar_t* szStart, wchar_t** pszEnd);
} // namespace TOVStringW

// Check texts name the narrow functions by this namespace.
namespace TOVString = TOVStringA;
} // namespace TOVPlatform

// These functions are exported under plain names. They check nothing.
extern "C"
{
// Copies at most ucCount characters and returns the destination, or null if either pointer is null. If the source has
// ucCount characters or more, no terminator is written. If it is shorter, all following bytes up to and including the
// one at index ucCount are set to 0: ucCount + 1 bytes are written, and the destination must have room for them. A
// count of 0 writes nothing.
TOV_EXPORT char* TOVString_CopyN(char* szDestination, const char* szSource, tUchar ucCount);

// These classify letters and digits, and white space, as the runtime does under the current locale. They return false
// for a value that is not an unsigned character, such as a sign-extended one.
TOV_EXPORT bool IsAlphanumeric(int nCharacter);
TOV_EXPORT bool IsSpace(int nCharacter);
}
