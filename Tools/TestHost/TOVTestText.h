// Declares functions that convert text to the forms that reports need.
#pragma once

#include <string>
#include <vector>

namespace TOVTestHost
{
struct sTestNote;
struct sTestRecord;

// Returns the text for one line of a terminal or a file: control characters, direction marks, characters that cannot be
// seen, and bytes that are not valid UTF-8, become \n, \t or \xNN.
std::string OneLine(const std::string& sText);

// Returns the text as the content of an XML or HTML element, or of an attribute between double quotes. Line
// ends and tabs keep their meaning; of the other characters, those that OneLine escapes become \xNN, and with them all
// that XML does not allow.
std::string Markup(const std::string& sText);

// Returns the text in the same way, but with its lines as they are. It is of use in an element only.
std::string MarkupOfLines(const std::string& sText);

// Returns at most nCharacters characters. If some are omitted, the last three are full stops.
std::string Shortened(const std::string& sText, std::size_t nCharacters);

// Returns a text such as "0.012".
std::string SecondsText(double dSeconds);

// Returns a text such as "1 case" or "2 cases".
std::string CountText(long lCount, const char* szThing);

// Returns a line such as "File.cpp:12: a == b", and a line such as "    actual:   1" for each value.
std::vector<std::string> Describe(const sTestNote& oNote);

// Returns a heading and a line such as "    0.012 s Suite.Case" for each of the lCases slowest cases; nothing for 0.
std::vector<std::string> DescribeSlowest(const sTestRecord& oRecord, long lCases);
} // namespace TOVTestHost
