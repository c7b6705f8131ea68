// Declares how a program shows texts that may hold anything, such as names of files, arguments and log lines.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace TOVShownText
{
// Returns whether a terminal shows a character as such. The others control it, change the direction of the text, or are
// not visible at all. Two invisible ones that words need are shown: the joiner and the non-joiner.
bool IsShown(char32_t cCharacter);

// Reads the first character of a text, which is not empty. Returns its length in bytes, or 0 if the bytes are no
// character.
typedef std::size_t (*tReader)(std::string_view sText, char32_t& cCharacter);
std::size_t ReadUtf8(std::string_view sText, char32_t& cCharacter);

// Reads the encoding of the system's names: UTF-8, and on Windows the code page of the system.
std::size_t ReadCharacter(std::string_view sText, char32_t& cCharacter);

// Takes the first character from a text, which is not empty, and appends it to another one: its bytes as \xNN if they
// are no character, or one that is not shown.
void MoveShown(std::string_view& sText, std::string& sTarget, tReader pfRead = &ReadCharacter);

// Returns a text in a form for one line.
std::string Printable(std::string_view sText);
} // namespace TOVShownText
