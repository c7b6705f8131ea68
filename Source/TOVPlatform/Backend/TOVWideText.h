// The porting manual for the source TOVWideText.cpp of a backend.
#pragma once

namespace TOVPlatform
{
// This header declares what a port owes to the wide text of TOVPlatform/TOVString.h. Nothing here is exported.
//
// A text is a sequence of 16-bit units of UTF-16, terminated by zero, even if the C runtime's wide functions read wider
// units. Counts are in units. Pointers are never null, and no function fails. Any thread may call any function.
namespace Backend
{
// These return the order as a negative number, 0 or a positive number. The first two compare units as unsigned numbers,
// the other two follow the locale's order.
int Compare(const wchar_t* szString1, const wchar_t* szString2);
int CompareNoCase(const wchar_t* szString1, const wchar_t* szString2);
int Collate(const wchar_t* szString1, const wchar_t* szString2);
int CollateNoCase(const wchar_t* szString1, const wchar_t* szString2);

// These return the number of units before the terminator. LengthAtMost returns nCount if there is none among so many
// units, and reads no others.
int Length(const wchar_t* szString);
int LengthAtMost(const wchar_t* szString, int nCount);

// These change the text in place, unit by unit, as the locale defines letters. Characters of two units keep their case.
void ToLower(wchar_t* szString);
void ToUpper(wchar_t* szString);

// These return the first or last occurrence of the low 16 bits of nCharacter, or null. The terminator can be found.
const wchar_t* FindCharacter(const wchar_t* szString, int nCharacter);
const wchar_t* FindLastCharacter(const wchar_t* szString, int nCharacter);

// Returns the first occurrence of a text that is not empty, or null. Cost: linear in szSubString and in what is read of
// the text, which is the units up to the end of the occurrence.
wchar_t* FindString(wchar_t* szString, const wchar_t* szSubString);

// Returns the first unit that is in the set, or null. It does not examine the terminator.
const wchar_t* FindOneOf(const wchar_t* szString, const wchar_t* szCharSet);

// Copy copies the source with its terminator. CopyPadded writes exactly nCount units: a shorter source is padded with
// zeros, and one of nCount units or more leaves no terminator.
void Copy(wchar_t* szDestination, const wchar_t* szSource);
void CopyPadded(wchar_t* szDestination, const wchar_t* szSource, int nCount);

// These append the source, or at most nCount units of it, and a terminator.
void Append(wchar_t* szDestination, const wchar_t* szSource);
void AppendAtMost(wchar_t* szDestination, const wchar_t* szSource, int nCount);
} // namespace Backend
} // namespace TOVPlatform
