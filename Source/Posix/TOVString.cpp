#include <TOVPlatform/TOVStringBackend.h>

#include <Posix/TOVFormat.h>
#include <Posix/TOVMultiByte.h>
#include <Posix/TOVTextNumber.h>
#include <Posix/TOVWideText.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <clocale>
#include <cstring>
#include <string>
#include <strings.h>

namespace TOVPlatform
{
namespace TOVStringBackend
{
namespace
{
char LowerCase(char cUnit)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(cUnit)));
}

char UpperCase(char cUnit)
{
    return static_cast<char>(std::toupper(static_cast<unsigned char>(cUnit)));
}

// The order of the "C" locale is that of the bytes.
bool CollatesByBytes()
{
    const char* szLocale = std::setlocale(LC_COLLATE, nullptr);
    return std::strcmp(szLocale, "C") == 0 || std::strcmp(szLocale, "POSIX") == 0;
}

std::string ToLowerText(const char* szString)
{
    std::string sResult(szString);
    std::transform(sResult.begin(), sResult.end(), sResult.begin(), LowerCase);
    return sResult;
}
} // namespace

int Compare(const char* szString1, const char* szString2)
{
    return std::strcmp(szString1, szString2);
}

int Compare(const wchar_t* szString1, const wchar_t* szString2)
{
    return TOVWideText::Compare(szString1, szString2);
}

int CompareNoCase(const char* szString1, const char* szString2)
{
    return strcasecmp(szString1, szString2);
}

int CompareNoCase(const wchar_t* szString1, const wchar_t* szString2)
{
    return TOVWideText::CompareNoCase(szString1, szString2);
}

int Collate(const char* szString1, const char* szString2)
{
    return std::strcoll(szString1, szString2);
}

int Collate(const wchar_t* szString1, const wchar_t* szString2)
{
    return TOVWideText::Collate(szString1, szString2);
}

int CollateNoCase(const char* szString1, const char* szString2)
{
    if (CollatesByBytes())
        return strcasecmp(szString1, szString2);
    return std::strcoll(ToLowerText(szString1).c_str(), ToLowerText(szString2).c_str());
}

int CollateNoCase(const wchar_t* szString1, const wchar_t* szString2)
{
    return TOVWideText::CollateNoCase(szString1, szString2);
}

int Length(const char* szString)
{
    return static_cast<int>(std::strlen(szString));
}

int Length(const wchar_t* szString)
{
    return TOVWideText::Length(szString);
}

void ToLower(char* szString)
{
    std::transform(szString, szString + Length(szString), szString, LowerCase);
}

void ToLower(wchar_t* szString)
{
    TOVWideText::ToLower(szString);
}

void ToUpper(char* szString)
{
    std::transform(szString, szString + Length(szString), szString, UpperCase);
}

void ToUpper(wchar_t* szString)
{
    TOVWideText::ToUpper(szString);
}

void Reverse(char* szString)
{
    std::reverse(szString, szString + Length(szString));
}

void Reverse(wchar_t* szString)
{
    std::reverse(szString, szString + Length(szString));
}

const char* FindCharacter(const char* szString, int nCharacter)
{
    return std::strchr(szString, nCharacter);
}

const wchar_t* FindCharacter(const wchar_t* szString, int nCharacter)
{
    return TOVWideText::FindCharacter(szString, static_cast<wchar_t>(nCharacter));
}

const char* FindLastCharacter(const char* szString, int nCharacter)
{
    return std::strrchr(szString, nCharacter);
}

const wchar_t* FindLastCharacter(const wchar_t* szString, int nCharacter)
{
    return TOVWideText::FindLastCharacter(szString, static_cast<wchar_t>(nCharacter));
}

char* FindString(char* szString, const char* szSubString)
{
    return std::strstr(szString, szSubString);
}

wchar_t* FindString(wchar_t* szString, const wchar_t* szSubString)
{
    return TOVWideText::FindString(szString, szSubString);
}

const char* FindOneOf(const char* szString, const char* szCharSet)
{
    return std::strpbrk(szString, szCharSet);
}

const wchar_t* FindOneOf(const wchar_t* szString, const wchar_t* szCharSet)
{
    return TOVWideText::FindOneOf(szString, szCharSet);
}

int Print(char* szBuffer, int nCapacity, const char* szFormat, va_list pArguments)
{
    return TOVFormat::Print(szBuffer, nCapacity, szFormat, pArguments);
}

int Print(wchar_t* szBuffer, int nCapacity, const wchar_t* szFormat, va_list pArguments)
{
    return TOVFormat::Print(szBuffer, nCapacity, szFormat, pArguments);
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
    return TOVFormat::PrintedLength(szFormat, pArguments);
}

int VPrintedLength(const wchar_t* szFormat, va_list pArguments)
{
    return TOVFormat::PrintedLength(szFormat, pArguments);
}

void Copy(char* szDestination, const char* szSource)
{
    std::strcpy(szDestination, szSource);
}

void Copy(wchar_t* szDestination, const wchar_t* szSource)
{
    TOVWideText::Copy(szDestination, szSource);
}

void CopyPadded(char* szDestination, const char* szSource, int nCount)
{
    std::strncpy(szDestination, szSource, nCount);
}

void CopyPadded(wchar_t* szDestination, const wchar_t* szSource, int nCount)
{
    TOVWideText::CopyPadded(szDestination, szSource, nCount);
}

void Append(char* szDestination, const char* szSource)
{
    std::strcat(szDestination, szSource);
}

void Append(wchar_t* szDestination, const wchar_t* szSource)
{
    TOVWideText::Copy(szDestination + Length(szDestination), szSource);
}

void AppendAtMost(char* szDestination, const char* szSource, int nCount)
{
    std::strncat(szDestination, szSource, nCount);
}

void AppendAtMost(wchar_t* szDestination, const wchar_t* szSource, int nCount)
{
    TOVWideText::AppendAtMost(szDestination, szSource, nCount);
}

const char* Inc(const char* szString)
{
    return szString + (*szString != '\0' ? TOVMultiByte::CharacterSize(szString) : 1);
}

const wchar_t* Inc(const wchar_t* szString)
{
    return szString + 1;
}

const char* NInc(const char* szString, int nCount)
{
    for (; nCount > 0 && *szString != '\0'; --nCount)
        szString += TOVMultiByte::CharacterSize(szString);
    return szString;
}

const wchar_t* NInc(const wchar_t* szString, int nCount)
{
    return szString + nCount;
}

const char* Dec(const char* szStart, const char* szCurrent)
{
    return TOVMultiByte::PreviousCharacter(szStart, szCurrent);
}

const wchar_t* Dec(const wchar_t*, const wchar_t* szCurrent)
{
    return szCurrent - 1;
}

bool IsDigit(char cUnit)
{
    return '0' <= cUnit && cUnit <= '9';
}

bool IsDigit(wchar_t cUnit)
{
    return L'0' <= cUnit && cUnit <= L'9';
}

bool BeginsWith(const char* szString, const char* szPrefix, int nCount)
{
    return std::strncmp(szString, szPrefix, nCount) == 0;
}

bool BeginsWith(const wchar_t* szString, const wchar_t* szPrefix, int nCount)
{
    return TOVWideText::BeginsWith(szString, szPrefix, nCount);
}

long ToLong(const char* szStart, char** pszEnd, int nBase)
{
    return TOVTextNumber::ToLong(szStart, pszEnd, nBase);
}

long ToLong(const wchar_t* szStart, wchar_t** pszEnd, int nBase)
{
    return TOVTextNumber::ToLong(szStart, pszEnd, nBase);
}

unsigned long ToUlong(const char* szStart, char** pszEnd, int nBase)
{
    return TOVTextNumber::ToUlong(szStart, pszEnd, nBase);
}

unsigned long ToUlong(const wchar_t* szStart, wchar_t** pszEnd, int nBase)
{
    return TOVTextNumber::ToUlong(szStart, pszEnd, nBase);
}

double ToDouble(const char* szStart, char** pszEnd)
{
    return TOVTextNumber::ToDouble(szStart, pszEnd);
}

double ToDouble(const wchar_t* szStart, wchar_t** pszEnd)
{
    return TOVTextNumber::ToDouble(szStart, pszEnd);
}
} // namespace TOVStringBackend
} // namespace TOVPlatform
