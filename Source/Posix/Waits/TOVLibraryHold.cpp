#include <Posix/Waits/TOVLibraryHold.h>

#include <atomic>
#include <dlfcn.h>
#include <link.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
// The name under which the loader knows this library, or null. The loader walks through all symbols of the library for
// it, so it is asked once.
const char* GetLibraryName()
{
    static std::atomic<const char*> s_szName;
    const char* szName = s_szName.load(std::memory_order_acquire);
    if (szName != nullptr)
        return szName;

    Dl_info oInfo;
    void* pMap = nullptr;
    if (::dladdr1(reinterpret_cast<void*>(&GetLibraryName), &oInfo, &pMap, RTLD_DL_LINKMAP) == 0)
        return nullptr;
    szName = static_cast<const link_map*>(pMap)->l_name;
    s_szName.store(szName, std::memory_order_release);
    return szName;
}

// The loader finds the library by its name without a look at any file.
void* OpenThisLibrary(int nFlags)
{
    const char* const szName = GetLibraryName();
    return szName != nullptr ? ::dlopen(szName, RTLD_NOW | RTLD_NOLOAD | nFlags) : nullptr;
}
} // namespace

void* HoldLibrary()
{
    return OpenThisLibrary(0);
}

tReleaseHold GetReleaseHold()
{
    // The calling convention lets a caller ignore an integer result.
    return reinterpret_cast<tReleaseHold>(reinterpret_cast<void (*)()>(&::dlclose));
}

void HoldLibraryForEver()
{
    static std::atomic<bool> s_bHeld;
    if (!s_bHeld.load(std::memory_order_relaxed))
        s_bHeld.store(OpenThisLibrary(RTLD_NODELETE) != nullptr, std::memory_order_relaxed);
}
} // namespace TOVPosix
} // namespace TOVPlatform
