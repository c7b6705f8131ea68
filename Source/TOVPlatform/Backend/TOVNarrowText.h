#pragma once

namespace TOVPlatform
{
// What a port owes to the narrow text of TOVPlatform/TOVString.h. Nothing here is exported. What every C runtime has
// alike stands in TOVPlatform/TOVTextRuntime.h, and no port writes it.
//
// Text is zero-terminated bytes in the code page or locale of the process. Pointers are never null, and no function
// fails. Threads: any, for all functions.
namespace Backend
{
// Order without case, as a negative number, 0 or a positive number. CompareNoCase reads bytes as unsigned;
// CollateNoCase follows the locale's order.
int CompareNoCase(const char* szString1, const char* szString2);
int CollateNoCase(const char* szString1, const char* szString2);

// Change the text in place, byte by byte, by the locale's letters.
void ToLower(char* szString);
void ToUpper(char* szString);

// Steps by characters. A byte that begins no whole character counts as one character.
//
// Inc steps one character on, from the terminator one byte on. A step on from anything but the terminator ends at the
// terminator at the latest. NInc steps nCount >= 0 characters on, and stops at the terminator.
const char* Inc(const char* szString);
const char* NInc(const char* szString, int nCount);

// Start of the character that ends in front of szCurrent, which is after szStart.
const char* Dec(const char* szStart, const char* szCurrent);
} // namespace Backend
} // namespace TOVPlatform
