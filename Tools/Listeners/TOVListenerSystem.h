// Internal to the folder. Declares what the listeners need from the system. Each system has its own source with these
// functions, in the same order.
#pragma once

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

// Returns the number by which the system, its debuggers and its tools know the calling thread.
unsigned long CurrentThread();

// Returns the time in the time zone of this computer. All members are 0 if the system cannot convert it.
std::tm LocalTime(std::time_t nTime);

// Opens a file to append to it, or creates or truncates it. Returns null if that fails. Line ends are written
// unchanged, and child processes do not inherit the file.
std::FILE* OpenFile(const std::string& sPath, bool bAppend);

enum ePresence
{
    ePresent,
    eAbsent,
    ePresenceUnknown // the system reports another error
};

// Returns whether an entry with this name exists. The entry is not opened, so that one that cannot be read is present
// as well.
ePresence PresenceOf(const std::string& sPath);

// Returns the size of an open file in bytes, or 0 if it cannot be determined.
unsigned long long SizeOf(std::FILE* pFile);

// Returns whether the stream is a terminal with colours.
bool ShowsColours(std::FILE* pStream);

// Writes the text and a line end. Returns false if that fails. A colour other than eColourNone needs a stream that
// shows colours.
bool WriteLine(std::FILE* pStream, eLineColour eColour, const std::string& sText);
} // namespace TOVListenerSystem
} // namespace TOVDebug
