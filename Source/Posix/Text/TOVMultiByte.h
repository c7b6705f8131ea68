// Characters of the process's locale in narrow text, and their UTF-16 form. Internal to the Posix text functions.
#pragma once

#include <climits>

namespace TOVPlatform
{
// Where the locale names no character set of its own, as in the "C" locale, a byte is a character and becomes the wide
// unit of the same value, as it does in the Windows runtime.
namespace TOVMultiByte
{
// Whether a character can have more than one byte.
bool HasMultiByteCharacters();

// Bytes of the character at the text, which must not be at its terminator. A byte that begins no whole character
// counts as one.
int LongCharacterSize(const char* szText);
inline int CharacterSize(const char* szText)
{
    constexpr unsigned char LAST_ASCII = 0x7F;
    return static_cast<unsigned char>(*szText) <= LAST_ASCII ? 1 : LongCharacterSize(szText);
}

// Whether PreviousCharacter takes constant time. With other character sets, it reads the text from the start.
bool IsPreviousLocal();

// Start of the character that ends in front of szCurrent, which must be after szStart.
const char* PreviousCharacter(const char* szStart, const char* szCurrent);

// One character in units of the other width.
template<class tUnit> struct sCharacter
{
    tUnit szUnits[MB_LEN_MAX];
    int nUnits;
};

// Converts the character at the text. Returns how many units of the text it takes; 0 if the units there are no
// character, or one that has no form in the other width.
int Convert(const char* szText, sCharacter<wchar_t>& oResult);
int Convert(const wchar_t* szText, sCharacter<char>& oResult);

// Whether the locale's decimal point is a full stop.
bool HasPlainDecimalPoint();

// The locale's decimal point.
void GetDecimalPoint(sCharacter<char>& oResult);
void GetDecimalPoint(sCharacter<wchar_t>& oResult);
} // namespace TOVMultiByte
} // namespace TOVPlatform
