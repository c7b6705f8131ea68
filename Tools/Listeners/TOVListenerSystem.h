// What the listeners ask of the system. The one source behind it has the only conditions of this library.
#pragma once

#include <Listeners/TOVLogLine.h>

#include <cstdio>
#include <ctime>
#include <string>

namespace TOVDebug
{
namespace TOVListenerSystem
{
enum eLineColour
{
    eColourNone,
    eColourGrey,
    eColourYellow,
    eColourRed,
    eColourBrightRed
};

std::tm LocalTime(std::time_t nTime);

// Opens a file for adding, or makes it anew; null if that fails. Line ends stay as they are written, and a program that
// is started does not inherit it.
std::FILE* OpenFile(const std::string& sPath, bool bAppend);

enum ePresence
{
    ePresent,
    eAbsent,
    ePresenceUnknown // the system does not tell
};

// Whether there is anything of this name. It is not opened: whatever cannot be read counts as well.
ePresence PresenceOf(const std::string& sPath);

// Bytes of an open file; 0 where that cannot be told.
unsigned long long SizeOf(std::FILE* pFile);

// Whether the stream is a terminal with colours.
bool ShowsColours(std::FILE* pStream);

// Writes text and line end. Another colour than none needs a stream that shows colours.
bool WriteLine(std::FILE* pStream, eLineColour eColour, const std::string& sText);

// Whether to flush behind this line: it is grave, or the process is ending. Libraries are still cleaned up, and log,
// when some systems have flushed their streams for the last time.
bool MustFlush(const sTOVLogLine& oLine);
} // namespace TOVListenerSystem
} // namespace TOVDebug
