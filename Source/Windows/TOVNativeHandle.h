// Handles and addresses of the system in the form that the library passes around.
#pragma once

#include <Debug/TOVBase.h>

#include <windows.h>

namespace TOVPlatform
{
// Widened with sign extension; 0 stays 0.
inline tHandle FromNative(void* pObject)
{
    return static_cast<tHandle>(static_cast<long long>(reinterpret_cast<LONG_PTR>(pObject)));
}

// Only the bits of an address count.
inline void* ToNative(tHandle hObject)
{
    return reinterpret_cast<void*>(static_cast<LONG_PTR>(hObject));
}
} // namespace TOVPlatform
