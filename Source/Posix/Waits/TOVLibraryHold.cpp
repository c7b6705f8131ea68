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
// The loader finds the library by the name under which it knows it, without a look at any file.
void* OpenThisLibrary(int nFlags)
{
    Dl_info oInfo;
    void* pMap = nullptr;
    if (::dladdr1(reinterpret_cast<void*>(&OpenThisLibrary), &oInfo, &pMap, RTLD_DL_LINKMAP) == 0)
        return nullptr;
    return ::dlopen(static_cast<const link_map*>(pMap)->l_name, RTLD_NOW | RTLD_NOLOAD | nFlags);
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
