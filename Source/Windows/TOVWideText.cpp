#include <TOVPlatform/Backend/TOVWideText.h>

#include <TOVPlatform/Vector/TOVVectorText.h>

#include <cwchar>

namespace TOVPlatform
{
namespace Backend
{
int Compare(const wchar_t* szString1, const wchar_t* szString2)
{
    return std::wcscmp(szString1, szString2);
}

int CompareNoCase(const wchar_t* szString1, const wchar_t* szString2)
{
    return _wcsicmp(szString1, szString2);
}

int Collate(const wchar_t* szString1, const wchar_t* szString2)
{
    return std::wcscoll(szString1, szString2);
}

int CollateNoCase(const wchar_t* szString1, const wchar_t* szString2)
{
    return _wcsicoll(szString1, szString2);
}

int Length(const wchar_t* szString)
{
    return static_cast<int>(std::wcslen(szString));
}

int LengthAtMost(const wchar_t* szString, int nCount)
{
    return static_cast<int>(wcsnlen(szString, nCount));
}

void ToLower(wchar_t* szString)
{
    _wcslwr(szString);
}

void ToUpper(wchar_t* szString)
{
    _wcsupr(szString);
}

const wchar_t* FindCharacter(const wchar_t* szString, int nCharacter)
{
    return std::wcschr(szString, static_cast<wchar_t>(nCharacter));
}

const wchar_t* FindLastCharacter(const wchar_t* szString, int nCharacter)
{
    return std::wcsrchr(szString, static_cast<wchar_t>(nCharacter));
}

wchar_t* FindString(wchar_t* szString, const wchar_t* szSubString)
{
    return const_cast<wchar_t*>(Vector::FindText(szString, szSubString));
}

const wchar_t* FindOneOf(const wchar_t* szString, const wchar_t* szCharSet)
{
    return std::wcspbrk(szString, szCharSet);
}

void Copy(wchar_t* szDestination, const wchar_t* szSource)
{
    std::wcscpy(szDestination, szSource);
}

void CopyPadded(wchar_t* szDestination, const wchar_t* szSource, int nCount)
{
    std::wcsncpy(szDestination, szSource, nCount);
}

void Append(wchar_t* szDestination, const wchar_t* szSource)
{
    std::wcscat(szDestination, szSource);
}

void AppendAtMost(wchar_t* szDestination, const wchar_t* szSource, int nCount)
{
    std::wcsncat(szDestination, szSource, nCount);
}
} // namespace Backend
} // namespace TOVPlatform
