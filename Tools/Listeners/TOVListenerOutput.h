// Internal to the folder. Declares how the listeners write to streams, on every system.
#pragma once

#include <Listeners/TOVLogLine.h>

#include <cstdio>
#include <string>

namespace TOVDebug
{
namespace TOVListenerOutput
{
// Writes the text unchanged. Returns false if the stream did not accept all of it.
bool WriteText(std::FILE* pStream, const std::string& sText);

// Returns whether the stream shows colours, and the user wants them: not if the environment variable NO_COLOR is set to
// something.
bool WantsColours(std::FILE* pStream);

// Returns whether the process is ending. On some systems, libraries still run their clean-up code, and log, after the
// streams have been flushed for the last time.
bool IsEnding();

// Returns whether to flush the stream after this line.
inline bool MustFlush(const sTOVLogLine& oLine)
{
    return oLine.IsGrave() || IsEnding();
}
} // namespace TOVListenerOutput
} // namespace TOVDebug
