// Kernel handles in the form that the library passes around.
#pragma once

#include <windows.h>

namespace TOVPlatform
{
// Widened with sign extension; 0 stays 0.
inline unsigned long long FromNative(HANDLE hObject)
{
    return static_cast<unsigned long long>(static_cast<long long>(reinterpret_cast<LONG_PTR>(hObject)));
}

// Only the low 32 bits count: a kernel handle has no more.
inline HANDLE ToNative(unsigned long long hObject)
{
    return reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(static_cast<LONG>(hObject)));
}
} // namespace TOVPlatform
