// Loads the library given by its file name, uses it and unloads it. Prints how often everything was as it should be.
//
//   StartupLoader LIBRARY TIMES     a number of times
//   StartupLoader LIBRARY thread    once, with a thread that used it and ends when it is gone
//   StartupLoader LIBRARY keys      once, with every key for threads' storage taken before (Posix)
#include <Debug/TOVCompiler.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <future>
#include <map>
#include <thread>

#if TOV_SYSTEM_WINDOWS
#include <windows.h>

// What the library needs of the system stays loaded, as it does in other programs: only the library comes and goes.
static void KeepSystemLibraries()
{
    ::LoadLibraryA("winmm.dll");
}

static void* Load(const char* szLibrary)
{
    return ::LoadLibraryA(szLibrary);
}

static void* Find(void* pLibrary, const char* szFunction)
{
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(pLibrary), szFunction));
}

static void Unload(void* pLibrary)
{
    ::FreeLibrary(static_cast<HMODULE>(pLibrary));
}

static bool IsLoaded(const char* szLibrary)
{
    return ::GetModuleHandleA(szLibrary) != nullptr;
}
#else
#include <dlfcn.h>
#include <pthread.h>

static void KeepSystemLibraries()
{
}

static void* Load(const char* szLibrary)
{
    return ::dlopen(szLibrary, RTLD_NOW);
}

static void* Find(void* pLibrary, const char* szFunction)
{
    return ::dlsym(pLibrary, szFunction);
}

static void Unload(void* pLibrary)
{
    ::dlclose(pLibrary);
}

static bool IsLoaded(const char* szLibrary)
{
    void* const pLibrary = ::dlopen(szLibrary, RTLD_NOW | RTLD_NOLOAD);
    if (pLibrary != nullptr)
        ::dlclose(pLibrary);
    return pLibrary != nullptr;
}

// Whether the library, which can get no key, starts no thread.
static bool StartsNoThreadWithoutKeys(const char* szLibrary)
{
    pthread_key_t oKey;
    while (::pthread_key_create(&oKey, nullptr) == 0)
    {
    }
    void* const pLibrary = Load(szLibrary);
    if (pLibrary == nullptr)
        return false;

    typedef unsigned long (*tEntry)(unsigned long long);
    const auto pfCreate = reinterpret_cast<unsigned long long (*)(tEntry, void*, unsigned long*)>(
        Find(pLibrary, "_ZN11TOVPlatform9TOVThread6CreateEPFmyEPvPm"));
    unsigned long ulThreadId = 0;
    const bool bGood = pfCreate != nullptr &&
                       pfCreate([](unsigned long long) -> unsigned long { std::abort(); }, nullptr, &ulThreadId) == 0;
    Unload(pLibrary);
    return bGood;
}
#endif

// The library's map as far as this program looks at it.
typedef std::map<const char*, void*> tCreators;

static bool UseOnce(const char* szLibrary)
{
    void* const pLibrary = Load(szLibrary);
    if (pLibrary == nullptr)
        return false;

    const auto pfCreators = reinterpret_cast<tCreators& (*)()>(Find(pLibrary, "GetCreatorMapDirect"));
    const auto pfEqual =
        reinterpret_cast<bool (*)(const void*, const void*, unsigned short)>(Find(pLibrary, "TOVMemory_Cmp"));
    const bool bGood = pfCreators != nullptr && pfCreators().size() == 12 && pfEqual != nullptr &&
                       pfEqual("text", "text", 4) && !pfEqual("text", "tent", 4);
    Unload(pLibrary);
    return bGood && !IsLoaded(szLibrary);
}

// Whether a thread that made the library take its lock ends in peace when the library is gone.
static bool EndsAThreadLater(const char* szLibrary)
{
    void* const pLibrary = Load(szLibrary);
    if (pLibrary == nullptr)
        return false;

    const auto pfSet = reinterpret_cast<void (*)(void*, int, unsigned short)>(Find(pLibrary, "TOVMemory_Set"));
    std::promise<bool> oUsed;
    std::promise<void> oGone;
    std::thread oThread([&] {
        bool bRaised = false;
        try
        {
            pfSet(nullptr, 0, 0);
        }
        catch (...)
        {
            bRaised = true;
        }
        oUsed.set_value(bRaised);
        oGone.get_future().wait();
    });
    const bool bRaised = oUsed.get_future().get();
    Unload(pLibrary);
    const bool bGone = !IsLoaded(szLibrary);
    oGone.set_value();
    oThread.join();
    return bRaised && bGone;
}

int main(int nArguments, char** aszArguments)
{
    if (nArguments != 3)
        return 2;

    KeepSystemLibraries();
    if (std::strcmp(aszArguments[2], "thread") == 0)
    {
        std::printf("%d\n", EndsAThreadLater(aszArguments[1]) ? 1 : 0);
        return 0;
    }
#if !TOV_SYSTEM_WINDOWS
    if (std::strcmp(aszArguments[2], "keys") == 0)
    {
        std::printf("%d\n", StartsNoThreadWithoutKeys(aszArguments[1]) ? 1 : 0);
        return 0;
    }
#endif

    const int nTimes = std::atoi(aszArguments[2]);
    int nGood = 0;
    for (int nTime = 0; nTime < nTimes; ++nTime)
        nGood += UseOnce(aszArguments[1]) ? 1 : 0;
    std::printf("%d\n", nGood);
    return 0;
}
