// Zero-terminated text of 16-bit units. The C library's wide functions read 32-bit units here, so these stand in for
// them. Internal to the Posix text functions; the contracts are those of TOVPlatform/TOVStringBackend.h.
#pragma once

namespace TOVPlatform
{
namespace TOVWideText
{
int Compare(const wchar_t* szString1, const wchar_t* szString2);
int CompareNoCase(const wchar_t* szString1, const wchar_t* szString2);

// By the locale's order, of code points.
int Collate(const wchar_t* szString1, const wchar_t* szString2);
int CollateNoCase(const wchar_t* szString1, const wchar_t* szString2);

int Length(const wchar_t* szString);

// Characters outside the basic plane keep their case.
void ToLower(wchar_t* szString);
void ToUpper(wchar_t* szString);

const wchar_t* FindCharacter(const wchar_t* szString, wchar_t cUnit);
const wchar_t* FindLastCharacter(const wchar_t* szString, wchar_t cUnit);
wchar_t* FindString(wchar_t* szString, const wchar_t* szSubString);
const wchar_t* FindOneOf(const wchar_t* szString, const wchar_t* szCharSet);
bool BeginsWith(const wchar_t* szString, const wchar_t* szPrefix, int nCount);

void Copy(wchar_t* szDestination, const wchar_t* szSource);
void CopyPadded(wchar_t* szDestination, const wchar_t* szSource, int nCount);
void AppendAtMost(wchar_t* szDestination, const wchar_t* szSource, int nCount);
} // namespace TOVWideText
} // namespace TOVPlatform
