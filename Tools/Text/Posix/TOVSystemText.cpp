#include <Text/TOVShownText.h>

namespace TOVShownText
{
std::size_t ReadCharacter(std::string_view sText, char32_t& cCharacter)
{
    return ReadUtf8(sText, cCharacter);
}
} // namespace TOVShownText
