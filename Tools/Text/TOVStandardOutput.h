// Declares how a program ends whose result is what it has printed.
#pragma once

#include <cstdio>

namespace TOVShownText
{
// Returns whether everything that was printed has arrived. A part may still have been in the buffer.
inline bool FinishOutput()
{
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

// Returns the exit status of a program. If not everything that it printed has arrived, the program complains and has
// failed, with 1 instead of 0.
inline int FinishProgram(const char* szProgram, int nStatus)
{
    if (FinishOutput())
        return nStatus;
    std::fprintf(stderr, "%s: standard output cannot be written\n", szProgram);
    return nStatus != 0 ? nStatus : 1;
}
} // namespace TOVShownText
