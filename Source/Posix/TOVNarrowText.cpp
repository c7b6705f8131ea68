#include <TOVPlatform/Backend/TOVNarrowText.h>

#include <Posix/Text/TOVCollation.h>
#include <Posix/Text/TOVMultiByte.h>
#include <TOVPlatform/TOVAscii.h>
#include <TOVPlatform/Vector/TOVVectorText.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>
#include <strings.h>

namespace TOVPlatform
{
namespace Backend
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

// Some locales have other counterparts of ASCII letters. All of them have them of the letter I.
void LowerUnits(char* pUnits, int nCount)
{
    if (LowerCase('I') == 'i')
        TOVAscii::MapCase(pUnits, nCount, 'A', LowerCase);
    else
        std::transform(pUnits, pUnits + nCount, pUnits, LowerCase);
}

void RaiseUnits(char* pUnits, int nCount)
{
    if (UpperCase('i') == 'I')
        TOVAscii::MapCase(pUnits, nCount, 'a', UpperCase);
    else
        std::transform(pUnits, pUnits + nCount, pUnits, UpperCase);
}

std::string ToLowerText(const char* szString)
{
    std::string sResult(szString);
    LowerUnits(sResult.data(), static_cast<int>(sResult.size()));
    return sResult;
}
} // namespace

int CompareNoCase(const char* szString1, const char* szString2)
{
    return strcasecmp(szString1, szString2);
}

int CollateNoCase(const char* szString1, const char* szString2)
{
    if (TOVCollation::IsByUnits())
        return strcasecmp(szString1, szString2);
    return std::strcoll(ToLowerText(szString1).c_str(), ToLowerText(szString2).c_str());
}

void ToLower(char* szString)
{
    LowerUnits(szString, static_cast<int>(std::strlen(szString)));
}

void ToUpper(char* szString)
{
    RaiseUnits(szString, static_cast<int>(std::strlen(szString)));
}

char* FindString(char* szString, const char* szSubString)
{
    return std::strstr(szString, szSubString);
}

const char* Inc(const char* szString)
{
    return szString + (*szString != '\0' ? TOVMultiByte::CharacterSize(szString) : 1);
}

const char* NInc(const char* szString, int nCount)
{
    const std::size_t nBytes = strnlen(szString, nCount);
    if (!TOVMultiByte::HasMultiByteCharacters() || Vector::AreSingleUnits(szString, nBytes))
        return szString + nBytes;
    for (; nCount > 0 && *szString != '\0'; --nCount)
        szString += TOVMultiByte::CharacterSize(szString);
    return szString;
}

bool IsDecLocal()
{
    return TOVMultiByte::IsPreviousLocal();
}

const char* Dec(const char* szStart, const char* szCurrent)
{
    return TOVMultiByte::PreviousCharacter(szStart, szCurrent);
}
} // namespace Backend
} // namespace TOVPlatform
