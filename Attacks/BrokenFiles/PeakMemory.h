// Declares CPeakMemory, which finds out how much memory is in use at most while it exists.
#pragma once

#include <cstddef>

// Counts the blocks of the whole process, and so of the library: use one object at a time, while one thread runs.
class CPeakMemory
{
public:
    CPeakMemory();

    // The most bytes that were in use at a time, without those in use at the construction. Always 0 on Windows.
    std::size_t Peak() const;
};
