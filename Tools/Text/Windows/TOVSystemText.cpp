#include <Text/TOVShownText.h>

#include <windows.h>

namespace TOVShownText
{
std::size_t ReadCharacter(std::string_view sText, char32_t& cCharacter)
{
    if (::GetACP() == CP_UTF8)
        return ReadUtf8(sText, cCharacter);
    const int nBytes = ::IsDBCSLeadByte(static_cast<BYTE>(sText[0])) && sText.size() > 1 ? 2 : 1;
    wchar_t cWide = 0;
    if (::MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, sText.data(), nBytes, &cWide, 1) != 1)
        return 0;
    cCharacter = cWide;
    return static_cast<std::size_t>(nBytes);
}
} // namespace TOVShownText
