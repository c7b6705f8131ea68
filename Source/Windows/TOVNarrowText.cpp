#include <TOVPlatform/Backend/TOVNarrowText.h>

#include <TOVPlatform/TOVAscii.h>
#include <TOVPlatform/TOVTextSearch.h>

#include <cctype>
#include <clocale>
#include <cstring>
#include <mbctype.h>
#include <mbstring.h>

namespace TOVPlatform
{
namespace Backend
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

int LowerCase(unsigned char cUnit)
{
    if (!TOVAscii::IsAscii(cUnit))
        return std::tolower(cUnit);
    return 'A' <= cUnit && cUnit <= 'Z' ? cUnit - 'A' + 'a' : cUnit;
}
} // namespace

// The emulator's runtime takes bytes from 0x80 up as negative.
int CompareNoCase(const char* szString1, const char* szString2)
{
    for (;; ++szString1, ++szString2)
    {
        const unsigned char cUnit1 = static_cast<unsigned char>(*szString1);
        const unsigned char cUnit2 = static_cast<unsigned char>(*szString2);
        const int nOrder = cUnit1 == cUnit2 ? 0 : LowerCase(cUnit1) - LowerCase(cUnit2);
        if (nOrder != 0 || cUnit1 == 0)
            return nOrder;
    }
}

// The "C" locale orders text by the values of its units.
int CollateNoCase(const char* szString1, const char* szString2)
{
    if (std::strcmp(std::setlocale(LC_COLLATE, nullptr), "C") == 0)
        return CompareNoCase(szString1, szString2);
    return _stricoll(szString1, szString2);
}

void ToLower(char* szString)
{
    _strlwr(szString);
}

void ToUpper(char* szString)
{
    _strupr(szString);
}

// The runtime's search compares the whole part at each place.
char* FindString(char* szString, const char* szSubString)
{
    return const_cast<char*>(FindPart<char>(szString, szSubString));
}

const char* Inc(const char* szString)
{
    // Where the terminator cuts a character off, the runtime would step over it and out of the text.
    if (szString[0] == '\0' || szString[1] == '\0')
        return szString + 1;
    return FromBytes(_mbsinc(ToBytes(szString)));
}

const char* NInc(const char* szString, int nCount)
{
    return FromBytes(_mbsninc(ToBytes(szString), nCount));
}

// Where the code page has characters of two bytes, the runtime may read all bytes in front.
bool IsDecLocal()
{
    return _getmbcp() == 0;
}

const char* Dec(const char* szStart, const char* szCurrent)
{
    return FromBytes(_mbsdec(ToBytes(szStart), ToBytes(szCurrent)));
}
} // namespace Backend
} // namespace TOVPlatform
