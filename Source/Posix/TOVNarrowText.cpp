#include <TOVPlatform/Backend/TOVNarrowText.h>

#include <Posix/Text/TOVCollation.h>
#include <Posix/Text/TOVMultiByte.h>

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

std::string ToLowerText(const char* szString)
{
    std::string sResult(szString);
    std::transform(sResult.begin(), sResult.end(), sResult.begin(), LowerCase);
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
    std::transform(szString, szString + std::strlen(szString), szString, LowerCase);
}

void ToUpper(char* szString)
{
    std::transform(szString, szString + std::strlen(szString), szString, UpperCase);
}

const char* Inc(const char* szString)
{
    return szString + (*szString != '\0' ? TOVMultiByte::CharacterSize(szString) : 1);
}

const char* NInc(const char* szString, int nCount)
{
    for (; nCount > 0 && *szString != '\0'; --nCount)
        szString += TOVMultiByte::CharacterSize(szString);
    return szString;
}

const char* Dec(const char* szStart, const char* szCurrent)
{
    return TOVMultiByte::PreviousCharacter(szStart, szCurrent);
}
} // namespace Backend
} // namespace TOVPlatform
