#include "SystemHandles.h"

#include <windows.h>

// Each value is asked for: the count that the system itself gives is always 0 under Wine.
long CountSystemHandles()
{
    constexpr ULONG_PTR MAX_HANDLE = 4 * 16384; // far more than this program has
    long lCount = 0;
    for (ULONG_PTR ulHandle = 4; ulHandle <= MAX_HANDLE; ulHandle += 4)
    {
        DWORD dwFlags;
        lCount += GetHandleInformation(reinterpret_cast<HANDLE>(ulHandle), &dwFlags) != FALSE ? 1 : 0;
    }
    return lCount;
}
