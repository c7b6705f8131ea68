#pragma once

namespace TOVPlatform
{
// What a port owes to the wide text of TOVPlatform/TOVString.h. Nothing here is exported.
//
// Text is zero-terminated 16-bit units of UTF-16, also where the C runtime's wide functions read wider units. Counts
// are units. Pointers are never null, and no function fails. Threads: any, for all functions.
namespace Backend
{
// Order as a negative number, 0 or a positive number. The first two compare units as unsigned, the other two follow the
// locale's order.
int Compare(const wchar_t* szString1, const wchar_t* szString2);
int CompareNoCase(const wchar_t* szString1, const wchar_t* szString2);
int Collate(const wchar_t* szString1, const wchar_t* szString2);
int CollateNoCase(const wchar_t* szString1, const wchar_t* szString2);

// Units before the terminator.
int Length(const wchar_t* szString);

// Change the text in place, unit by unit, by the locale's letters. Characters of two units keep their case.
void ToLower(wchar_t* szString);
void ToUpper(wchar_t* szString);

// First or last occurrence of the low 16 bits of nCharacter, or null. The terminator can be found.
const wchar_t* FindCharacter(const wchar_t* szString, int nCharacter);
const wchar_t* FindLastCharacter(const wchar_t* szString, int nCharacter);

// First occurrence of a text that is not empty, or null. Cost: the text is read up to the end of the occurrence only.
wchar_t* FindString(wchar_t* szString, const wchar_t* szSubString);

// First unit that is in the set, or null. The terminator is not a candidate.
const wchar_t* FindOneOf(const wchar_t* szString, const wchar_t* szCharSet);

// Copy up to and including the terminator. CopyPadded writes exactly nCount units: a shorter source is padded with
// zeros, and one of nCount units or more leaves no terminator.
void Copy(wchar_t* szDestination, const wchar_t* szSource);
void CopyPadded(wchar_t* szDestination, const wchar_t* szSource, int nCount);

// Append the source, or at most nCount units of it, and terminate.
void Append(wchar_t* szDestination, const wchar_t* szSource);
void AppendAtMost(wchar_t* szDestination, const wchar_t* szSource, int nCount);
} // namespace Backend
} // namespace TOVPlatform
