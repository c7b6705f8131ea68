// Declares who may notice an event of the current debug server. This header is internal.
#pragma once

#include <atomic>

namespace TOVDebug
{
enum eAudience
{
    eAudienceNobody,
    eAudienceDebugger, // whoever reads the output of the library's own listener
    eAudienceListeners
};

// The debug server keeps it up to date; it can be read without the server's lock.
extern std::atomic<eAudience> s_eAudience;

// Returns false if nobody would notice an event: then it need not be passed on.
bool IsHeard();
} // namespace TOVDebug
