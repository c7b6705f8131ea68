#include "SystemHandles.h"

#include <filesystem>

long CountSystemHandles()
{
    // One of them is that of the folder itself.
    const std::filesystem::directory_iterator oDescriptors("/proc/self/fd");
    return static_cast<long>(std::distance(begin(oDescriptors), end(oDescriptors))) - 1;
}
