#include <Text/TOVShownText.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace TOVShownText
{
namespace
{
void AppendEscaped(char cByte, std::string& sTarget)
{
    char szEscaped[8];
    std::snprintf(szEscaped, sizeof(szEscaped), "\\x%02x", static_cast<unsigned char>(cByte));
    sTarget += szEscaped;
}
} // namespace

bool IsShown(char32_t cCharacter)
{
    constexpr struct
    {
        char32_t cFirst;
        char32_t cLast;
    } HIDDEN[] = {
        {0x0000, 0x001f}, {0x007f, 0x009f}, {0x00ad, 0x00ad},   {0x061c, 0x061c}, {0x180e, 0x180e},
        {0x200b, 0x200b}, {0x200e, 0x200f}, {0x2028, 0x202e},   {0x2060, 0x206f}, {0xfeff, 0xfeff},
        {0xfff0, 0xfffb}, {0xfffe, 0xffff}, {0xe0000, 0xe0fff},
    };
    return std::none_of(std::begin(HIDDEN), std::end(HIDDEN),
                        [&](const auto& oRange) { return oRange.cFirst <= cCharacter && cCharacter <= oRange.cLast; });
}

std::size_t ReadUtf8(std::string_view sText, char32_t& cCharacter)
{
    const unsigned char cFirst = static_cast<unsigned char>(sText[0]);
    const std::size_t nBytes = cFirst < 0x80 ? 1 : cFirst < 0xc2 ? 0 : cFirst < 0xe0 ? 2 : cFirst < 0xf0 ? 3 : 4;
    if (nBytes > sText.size())
        return 0;
    cCharacter = nBytes > 1 ? cFirst & (0x7fu >> nBytes) : cFirst;
    for (std::size_t i = 1; i < nBytes; ++i)
    {
        const unsigned char cNext = static_cast<unsigned char>(sText[i]);
        if ((cNext & 0xc0) != 0x80)
            return 0;
        cCharacter = cCharacter << 6 | (cNext & 0x3f);
    }
    // Longer forms than needed, halves of surrogate pairs, and what is beyond the last character are not valid.
    const char32_t aSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool bSurrogate = 0xd800 <= cCharacter && cCharacter <= 0xdfff;
    return cFirst < 0xf5 && cCharacter >= aSmallest[nBytes] && !bSurrogate && cCharacter <= 0x10ffff ? nBytes : 0;
}

void MoveShown(std::string_view& sText, std::string& sTarget, tReader pfRead)
{
    char32_t cCharacter = 0;
    const std::size_t nBytes = pfRead(sText, cCharacter);
    const std::string_view sBytes = sText.substr(0, std::max<std::size_t>(nBytes, 1));
    sText.remove_prefix(sBytes.size());
    if (nBytes > 0 && IsShown(cCharacter))
        sTarget += sBytes;
    else
        for (const char cByte : sBytes)
            AppendEscaped(cByte, sTarget);
}

std::string Printable(std::string_view sText)
{
    std::string sShown;
    while (!sText.empty())
        MoveShown(sText, sShown);
    return sShown;
}
} // namespace TOVShownText
