// How the listeners write to streams, on all systems alike.
#pragma once

#include <Listeners/TOVLogLine.h>

#include <cstdio>
#include <string>

namespace TOVDebug
{
namespace TOVListenerOutput
{
// Writes the text as it is. Returns false if the stream did not take all of it.
bool WriteText(std::FILE* pStream, const std::string& sText);

// Whether the stream has to be flushed after this line: the line is grave, or the process is ending. Libraries are
// still cleaned up, and log, when some systems have flushed their streams for the last time.
bool MustFlush(const sTOVLogLine& oLine);
} // namespace TOVListenerOutput
} // namespace TOVDebug
