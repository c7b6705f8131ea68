#include "PeakMemory.h"

CPeakMemory::CPeakMemory() = default;

std::size_t CPeakMemory::Peak() const
{
    return 0;
}
