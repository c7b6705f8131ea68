// Kernel handles in the form that the library passes around.
#pragma once

#include <windows.h>

namespace TOVPlatform
{
// Widened with sign extension; 0 stays 0.
inline tHandle FromNative(HANDLE hObject)
{
    return static_cast<tHandle>(static_cast<long long>(reinterpret_cast<LONG_PTR>(hObject)));
}

// Only the low 32 bits count: a kernel handle has no more.
inline HANDLE ToNative(tHandle hObject)
{
    return reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(static_cast<LONG>(hObject)));
}
} // namespace TOVPlatform
