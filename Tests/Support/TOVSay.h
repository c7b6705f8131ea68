// The report of a child process to its parent.
#pragma once

#include <cstdio>
#include <string>

// Says at once: a child may end without flushing.
inline void Say(const std::string& sText)
{
    std::printf("%s; ", sText.c_str());
    std::fflush(stdout);
}
