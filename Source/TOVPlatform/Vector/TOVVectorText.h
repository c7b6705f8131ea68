// Declares searches in text that look at many units at once. Internal to the text functions.
#pragma once

#include "Debug/TOVCompiler.h"

#include <cstddef>

// The sanitizers report reads after the end of a block, which the vectors make: their builds have the plain loops.
#if defined(__SSE2__) && !TOV_ADDRESS_SANITIZER && !TOV_THREAD_SANITIZER
#define TOV_VECTOR_TEXT 1
#else
#define TOV_VECTOR_TEXT 0
#endif

namespace TOVPlatform
{
// Each function does the same with vector instructions and without them, as TOV_VECTOR_TEXT says.
// Texts are zero-terminated. The vectors may read units that follow a text, but no other page of memory.
namespace Vector
{
// Returns the first unit that is cUnit or the terminator.
const wchar_t* FindUnitOrEnd(const wchar_t* szText, wchar_t cUnit);

// Returns the first occurrence of a text that is not empty, or null. Cost: linear in what is read of the text, which is
// the part up to the end of the occurrence.
const wchar_t* FindText(const wchar_t* szText, const wchar_t* szPart);

// Returns a number of units at the start of both texts that are ASCII characters, none of them the terminator, and
// equal if the case of the letters A to Z is ignored. There may be more such units after them.
std::size_t CountEqualNoCase(const wchar_t* szText1, const wchar_t* szText2);

// Returns the first such unit of a text, or null. The text has nLength units that may be read, though it may end among
// them, and a terminator: after them, if there is none among them.
const char* FindUnit(const char* szText, std::size_t nLength, char cUnit);
const wchar_t* FindUnit(const wchar_t* szText, std::size_t nLength, wchar_t cUnit);

// Whether nCount units are characters of one unit each, in every code page, and none of them is zero: ASCII characters
// in narrow text, and any others in wide text. They need no terminator; no other unit is read.
bool AreSingleUnits(const char* pUnits, std::size_t nCount);
bool AreSingleUnits(const wchar_t* pUnits, std::size_t nCount);

// Determines whether functions of this family may use vectors of 64 bytes, which they do if the processor has them.
// Returns whether they did so before: for tests.
bool UseWideVectors(bool bUse);
} // namespace Vector
} // namespace TOVPlatform
