#include <TOVPlatform/TOVStringBackend.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <mbstring.h>

namespace TOVPlatform
{
namespace TOVStringBackend
{
namespace
{
// The multi-byte functions see their text as unsigned bytes.
const unsigned char* ToBytes(const char* szString)
{
    return reinterpret_cast<const unsigned char*>(szString);
}

const char* FromBytes(const unsigned char* pBytes)
{
    return reinterpret_cast<const char*>(pBytes);
}
} // namespace

int Compare(const char* szString1, const char* szString2)
{
    return std::strcmp(szString1, szString2);
}

int Compare(const wchar_t* szString1, const wchar_t* szString2)
{
    return std::wcscmp(szString1, szString2);
}

int CompareNoCase(const char* szString1, const char* szString2)
{
    return _stricmp(szString1, szString2);
}

int CompareNoCase(const wchar_t* szString1, const wchar_t* szString2)
{
    return _wcsicmp(szString1, szString2);
}

int Collate(const char* szString1, const char* szString2)
{
    return std::strcoll(szString1, szString2);
}

int Collate(const wchar_t* szString1, const wchar_t* szString2)
{
    return std::wcscoll(szString1, szString2);
}

int CollateNoCase(const char* szString1, const char* szString2)
{
    return _stricoll(szString1, szString2);
}

int CollateNoCase(const wchar_t* szString1, const wchar_t* szString2)
{
    return _wcsicoll(szString1, szString2);
}

int Length(const char* szString)
{
    return static_cast<int>(std::strlen(szString));
}

int Length(const wchar_t* szString)
{
    return static_cast<int>(std::wcslen(szString));
}

void ToLower(char* szString)
{
    _strlwr(szString);
}

void ToLower(wchar_t* szString)
{
    _wcslwr(szString);
}

void ToUpper(char* szString)
{
    _strupr(szString);
}

void ToUpper(wchar_t* szString)
{
    _wcsupr(szString);
}

void Reverse(char* szString)
{
    _strrev(szString);
}

void Reverse(wchar_t* szString)
{
    _wcsrev(szString);
}

const char* FindCharacter(const char* szString, int nCharacter)
{
    return std::strchr(szString, nCharacter);
}

const wchar_t* FindCharacter(const wchar_t* szString, int nCharacter)
{
    return std::wcschr(szString, static_cast<wchar_t>(nCharacter));
}

const char* FindLastCharacter(const char* szString, int nCharacter)
{
    return std::strrchr(szString, nCharacter);
}

const wchar_t* FindLastCharacter(const wchar_t* szString, int nCharacter)
{
    return std::wcsrchr(szString, static_cast<wchar_t>(nCharacter));
}

char* FindString(char* szString, const char* szSubString)
{
    return std::strstr(szString, szSubString);
}

wchar_t* FindString(wchar_t* szString, const wchar_t* szSubString)
{
    return std::wcsstr(szString, szSubString);
}

const char* FindOneOf(const char* szString, const char* szCharSet)
{
    return std::strpbrk(szString, szCharSet);
}

const wchar_t* FindOneOf(const wchar_t* szString, const wchar_t* szCharSet)
{
    return std::wcspbrk(szString, szCharSet);
}

// The runtime's own print, by the names that no compiler replaces with a print of its own.
int Print(char* szBuffer, int nCapacity, const char* szFormat, va_list pArguments)
{
    return _vsnprintf(szBuffer, nCapacity, szFormat, pArguments);
}

int Print(wchar_t* szBuffer, int nCapacity, const wchar_t* szFormat, va_list pArguments)
{
    // Some runtimes count the bytes in an int.
    constexpr int MAX_UNITS = INT_MAX / static_cast<int>(sizeof(wchar_t));
    return _vsnwprintf(szBuffer, std::min(nCapacity, MAX_UNITS), szFormat, pArguments);
}

int PrintedLength(const char* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nLength = VPrintedLength(szFormat, pArguments);
    va_end(pArguments);
    return nLength;
}

int PrintedLength(const wchar_t* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nLength = VPrintedLength(szFormat, pArguments);
    va_end(pArguments);
    return nLength;
}

int VPrintedLength(const char* szFormat, va_list pArguments)
{
    return _vscprintf(szFormat, pArguments);
}

int VPrintedLength(const wchar_t* szFormat, va_list pArguments)
{
    return _vscwprintf(szFormat, pArguments);
}

void Copy(char* szDestination, const char* szSource)
{
    std::strcpy(szDestination, szSource);
}

void Copy(wchar_t* szDestination, const wchar_t* szSource)
{
    std::wcscpy(szDestination, szSource);
}

void CopyPadded(char* szDestination, const char* szSource, int nCount)
{
    std::strncpy(szDestination, szSource, nCount);
}

void CopyPadded(wchar_t* szDestination, const wchar_t* szSource, int nCount)
{
    std::wcsncpy(szDestination, szSource, nCount);
}

void Append(char* szDestination, const char* szSource)
{
    std::strcat(szDestination, szSource);
}

void Append(wchar_t* szDestination, const wchar_t* szSource)
{
    std::wcscat(szDestination, szSource);
}

void AppendAtMost(char* szDestination, const char* szSource, int nCount)
{
    std::strncat(szDestination, szSource, nCount);
}

void AppendAtMost(wchar_t* szDestination, const wchar_t* szSource, int nCount)
{
    std::wcsncat(szDestination, szSource, nCount);
}

const char* Inc(const char* szString)
{
    // Where the terminator cuts a character off, the runtime would step over it and out of the text.
    if (szString[0] == '\0' || szString[1] == '\0')
        return szString + 1;
    return FromBytes(_mbsinc(ToBytes(szString)));
}

const wchar_t* Inc(const wchar_t* szString)
{
    return szString + 1;
}

const char* NInc(const char* szString, int nCount)
{
    return FromBytes(_mbsninc(ToBytes(szString), nCount));
}

const wchar_t* NInc(const wchar_t* szString, int nCount)
{
    return szString + nCount;
}

const char* Dec(const char* szStart, const char* szCurrent)
{
    return FromBytes(_mbsdec(ToBytes(szStart), ToBytes(szCurrent)));
}

const wchar_t* Dec(const wchar_t*, const wchar_t* szCurrent)
{
    return szCurrent - 1;
}

bool IsDigit(char cUnit)
{
    return _ismbcdigit(static_cast<unsigned char>(cUnit)) != 0;
}

bool IsDigit(wchar_t cUnit)
{
    return L'0' <= cUnit && cUnit <= L'9';
}

bool BeginsWith(const char* szString, const char* szPrefix, int nCount)
{
    return _mbsnbcmp(ToBytes(szString), ToBytes(szPrefix), nCount) == 0;
}

bool BeginsWith(const wchar_t* szString, const wchar_t* szPrefix, int nCount)
{
    return std::wcsncmp(szString, szPrefix, nCount) == 0;
}

long ToLong(const char* szStart, char** pszEnd, int nBase)
{
    return std::strtol(szStart, pszEnd, nBase);
}

long ToLong(const wchar_t* szStart, wchar_t** pszEnd, int nBase)
{
    return std::wcstol(szStart, pszEnd, nBase);
}

unsigned long ToUlong(const char* szStart, char** pszEnd, int nBase)
{
    return std::strtoul(szStart, pszEnd, nBase);
}

unsigned long ToUlong(const wchar_t* szStart, wchar_t** pszEnd, int nBase)
{
    return std::wcstoul(szStart, pszEnd, nBase);
}
} // namespace TOVStringBackend
} // namespace TOVPlatform
