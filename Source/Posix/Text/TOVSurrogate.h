// The pairs of UTF-16 units that stand for characters outside the basic plane. Internal to the Posix text functions.
#pragma once

namespace TOVPlatform
{
namespace TOVSurrogate
{
constexpr char32_t FIRST_HIGH = 0xD800;
constexpr char32_t FIRST_LOW = 0xDC00;
constexpr char32_t LAST_LOW = 0xDFFF;
constexpr char32_t FIRST_SUPPLEMENTARY = 0x10000; // the first character that takes a pair

constexpr bool IsHigh(char32_t cUnit)
{
    return FIRST_HIGH <= cUnit && cUnit < FIRST_LOW;
}

constexpr bool IsLow(char32_t cUnit)
{
    return FIRST_LOW <= cUnit && cUnit <= LAST_LOW;
}

// The pair of a character from FIRST_SUPPLEMENTARY on, and the character of a pair.
constexpr wchar_t HighOf(char32_t cCharacter)
{
    return static_cast<wchar_t>(FIRST_HIGH + ((cCharacter - FIRST_SUPPLEMENTARY) >> 10));
}

constexpr wchar_t LowOf(char32_t cCharacter)
{
    return static_cast<wchar_t>(FIRST_LOW + (cCharacter & 0x3FF));
}

constexpr char32_t Join(char32_t cHigh, char32_t cLow)
{
    return FIRST_SUPPLEMENTARY + ((cHigh - FIRST_HIGH) << 10) + (cLow - FIRST_LOW);
}
} // namespace TOVSurrogate
} // namespace TOVPlatform
