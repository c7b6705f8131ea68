// The porting manual for the source TOVNarrowText.cpp of a backend.
#pragma once

namespace TOVPlatform
{
// This header declares what a port owes to the narrow text of TOVPlatform/TOVString.h. Nothing here is exported. No
// port writes the functions that are the same in every C runtime: they are in TOVPlatform/TOVTextRuntime.h.
//
// A text is a sequence of bytes, terminated by zero, in the code page or locale of the process. Pointers are never
// null, and no function fails. Any thread may call any function.
namespace Backend
{
// These return the order without case, as a negative number, 0 or a positive number. CompareNoCase compares the bytes
// as unsigned numbers; CollateNoCase follows the locale's order.
int CompareNoCase(const char* szString1, const char* szString2);
int CollateNoCase(const char* szString1, const char* szString2);

// These change the text in place, byte by byte, as the locale defines letters.
void ToLower(char* szString);
void ToUpper(char* szString);

// Returns the first occurrence of a text that is not empty, or null. Cost: linear in both texts.
char* FindString(char* szString, const char* szSubString);

// These move by characters. A byte that does not begin a whole character counts as one character.
//
// Inc moves one character forward; at the terminator, it moves one byte. From any other place it does not move past the
// terminator. NInc moves nCount >= 0 characters forward, and stops at the terminator.
const char* Inc(const char* szString);
const char* NInc(const char* szString, int nCount);

// Returns whether Dec takes constant time; otherwise it may read the text from its start.
bool IsDecLocal();

// Returns the start of the character that ends before szCurrent, which is after szStart.
const char* Dec(const char* szStart, const char* szCurrent);
} // namespace Backend
} // namespace TOVPlatform
