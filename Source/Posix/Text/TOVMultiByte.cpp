#include <Posix/Text/TOVMultiByte.h>

#include <Posix/Text/TOVSurrogate.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <langinfo.h>
#include <uchar.h>

namespace TOVPlatform
{
namespace TOVMultiByte
{
namespace
{
constexpr char32_t LAST_CHARACTER = 0x10FFFF;

bool IsAscii(char cByte)
{
    return static_cast<unsigned char>(cByte) < 0x80;
}

bool HasCharacterSet(const char* szName)
{
    return std::strcmp(nl_langinfo(CODESET), szName) == 0;
}

// The "C" locale's name for its characters.
bool HasPlainBytes()
{
    return HasCharacterSet("ANSI_X3.4-1968");
}

bool IsUtf8Continuation(char cByte)
{
    return (static_cast<unsigned char>(cByte) & 0xC0) == 0x80;
}

// Bytes that a character at the text can have: never past the terminator.
std::size_t AvailableBytes(const char* szText)
{
    return strnlen(szText, MB_CUR_MAX);
}

const char* PreviousUtf8Character(const char* szStart, const char* szCurrent)
{
    const char* szPrevious = szCurrent - 1;
    for (std::size_t nStep = 1; nStep < MB_CUR_MAX && szPrevious > szStart && IsUtf8Continuation(*szPrevious); ++nStep)
        --szPrevious;
    return szPrevious + CharacterSize(szPrevious) == szCurrent ? szPrevious : szCurrent - 1;
}

// Character sets whose second bytes look like first bytes are read from the start.
const char* PreviousCharacterFromStart(const char* szStart, const char* szCurrent)
{
    const char* szPrevious = szStart;
    for (const char* szNext = szStart; szNext < szCurrent; szNext += CharacterSize(szNext))
        szPrevious = szNext;
    return szPrevious;
}
} // namespace

bool HasMultiByteCharacters()
{
    return MB_CUR_MAX > 1;
}

int LongCharacterSize(const char* szText)
{
    if (!HasMultiByteCharacters())
        return 1;

    std::mbstate_t oState = {};
    const std::size_t nAvailable = AvailableBytes(szText);
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the state is this call's own.
    const std::size_t nSize = std::mbrlen(szText, nAvailable, &oState);
    return (1 <= nSize && nSize <= nAvailable) ? static_cast<int>(nSize) : 1;
}

bool IsPreviousLocal()
{
    return !HasMultiByteCharacters() || HasCharacterSet("UTF-8");
}

const char* PreviousCharacter(const char* szStart, const char* szCurrent)
{
    if (!HasMultiByteCharacters())
        return szCurrent - 1;
    return HasCharacterSet("UTF-8") ? PreviousUtf8Character(szStart, szCurrent)
                                    : PreviousCharacterFromStart(szStart, szCurrent);
}

int Convert(const char* szText, sCharacter<wchar_t>& oResult)
{
    oResult.nUnits = 1;
    if (IsAscii(*szText) || HasPlainBytes())
    {
        oResult.szUnits[0] = static_cast<unsigned char>(*szText);
        return 1;
    }

    char32_t cCharacter = 0;
    std::mbstate_t oState = {};
    const std::size_t nAvailable = AvailableBytes(szText);
    const std::size_t nSize = mbrtoc32(&cCharacter, szText, nAvailable, &oState);
    if (nSize < 1 || nSize > nAvailable || cCharacter > LAST_CHARACTER)
        return 0;

    if (cCharacter < TOVSurrogate::FIRST_SUPPLEMENTARY)
    {
        oResult.szUnits[0] = static_cast<wchar_t>(cCharacter);
    }
    else
    {
        oResult.szUnits[0] = TOVSurrogate::HighOf(cCharacter);
        oResult.szUnits[1] = TOVSurrogate::LowOf(cCharacter);
        oResult.nUnits = 2;
    }
    return static_cast<int>(nSize);
}

int Convert(const wchar_t* szText, sCharacter<char>& oResult)
{
    oResult.nUnits = 1;
    char32_t cCharacter = szText[0];
    if (cCharacter < 0x80 || (cCharacter <= UCHAR_MAX && HasPlainBytes()))
    {
        oResult.szUnits[0] = static_cast<char>(cCharacter);
        return 1;
    }

    int nUnits = 1;
    if (TOVSurrogate::IsHigh(cCharacter) && TOVSurrogate::IsLow(szText[1]))
    {
        cCharacter = TOVSurrogate::Join(cCharacter, szText[1]);
        nUnits = 2;
    }

    std::mbstate_t oState = {};
    const std::size_t nSize = c32rtomb(oResult.szUnits, cCharacter, &oState);
    if (nSize > sizeof(oResult.szUnits))
        return 0;
    oResult.nUnits = static_cast<int>(nSize);
    return nUnits;
}

bool HasPlainDecimalPoint()
{
    const char* const szPoint = nl_langinfo(RADIXCHAR);
    return szPoint[0] == '.' && szPoint[1] == '\0';
}

void GetDecimalPoint(sCharacter<char>& oResult)
{
    const char* const szPoint = nl_langinfo(RADIXCHAR);
    oResult.nUnits = 0;
    for (const char* pByte = szPoint; *pByte != '\0' && oResult.nUnits < MB_LEN_MAX; ++pByte)
        oResult.szUnits[oResult.nUnits++] = *pByte;
}

void GetDecimalPoint(sCharacter<wchar_t>& oResult)
{
    if (Convert(nl_langinfo(RADIXCHAR), oResult) == 0)
        oResult = {{L'.'}, 1};
}
} // namespace TOVMultiByte
} // namespace TOVPlatform
