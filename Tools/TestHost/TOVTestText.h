// Text in the forms that reports need.
#pragma once

#include <string>
#include <vector>

namespace TOVTestHost
{
struct sTestNote;

// On one line of a terminal or a file: control characters, and bytes that are no UTF-8, as \n, \t or \xNN.
std::string OneLine(const std::string& sText);

// As the content of an XML or HTML element, or of an attribute between double quotes. Characters that XML does not
// know, and bytes that are no UTF-8, become \xNN.
std::string Markup(const std::string& sText);

// At most so many characters, the last three of which are points where something was left out.
std::string Shortened(const std::string& sText, std::size_t nCharacters);

// "0.012"
std::string SecondsText(double dSeconds);

// "1 case", "2 cases"
std::string CountText(long lCount, const char* szThing);

// "File.cpp:12: a == b", and a line for each value, as "    actual:   1".
std::vector<std::string> Describe(const sTestNote& oNote);
} // namespace TOVTestHost
