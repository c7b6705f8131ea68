// The rest of the namespace Backend for text: functions that are the same on every system, so that no port writes them.
// With them, the functions of both widths have the same names. Internal to the text functions.
#pragma once

#include <TOVPlatform/Backend/TOVNarrowText.h>
#include <TOVPlatform/Backend/TOVWideText.h>

#include <cstring>

namespace TOVPlatform
{
namespace Backend
{
// These are the functions for narrow text, which every C runtime has. They do the same as the wide functions of the
// same names.
inline int Compare(const char* szString1, const char* szString2)
{
    return std::strcmp(szString1, szString2);
}

inline int Collate(const char* szString1, const char* szString2)
{
    return std::strcoll(szString1, szString2);
}

inline int Length(const char* szString)
{
    return static_cast<int>(std::strlen(szString));
}

inline int LengthAtMost(const char* szString, int nCount)
{
    const void* const pEnd = std::memchr(szString, 0, nCount);
    return pEnd != nullptr ? static_cast<int>(static_cast<const char*>(pEnd) - szString) : nCount;
}

inline const char* FindCharacter(const char* szString, int nCharacter)
{
    return std::strchr(szString, nCharacter);
}

inline const char* FindLastCharacter(const char* szString, int nCharacter)
{
    return std::strrchr(szString, nCharacter);
}

inline const char* FindOneOf(const char* szString, const char* szCharSet)
{
    return std::strpbrk(szString, szCharSet);
}

inline void Copy(char* szDestination, const char* szSource)
{
    std::strcpy(szDestination, szSource);
}

inline void CopyPadded(char* szDestination, const char* szSource, int nCount)
{
    std::strncpy(szDestination, szSource, nCount);
}

inline void Append(char* szDestination, const char* szSource)
{
    std::strcat(szDestination, szSource);
}

inline void AppendAtMost(char* szDestination, const char* szSource, int nCount)
{
    std::strncat(szDestination, szSource, nCount);
}

// These are the functions for wide text, which move by units.
inline const wchar_t* Inc(const wchar_t* szString)
{
    return szString + 1;
}

inline const wchar_t* NInc(const wchar_t* szString, int nCount)
{
    return szString + nCount;
}

inline const wchar_t* Dec(const wchar_t*, const wchar_t* szCurrent)
{
    return szCurrent - 1;
}
} // namespace Backend
} // namespace TOVPlatform
