// Loads the library given by its file name, uses it and unloads it, a number of times: StartupLoader LIBRARY TIMES.
// Prints how often everything was as it should be.
#include <Debug/TOVCompiler.h>

#include <cstdio>
#include <cstdlib>
#include <map>

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

int main(int nArguments, char** aszArguments)
{
    if (nArguments != 3)
        return 2;

    KeepSystemLibraries();
    const int nTimes = std::atoi(aszArguments[2]);
    int nGood = 0;
    for (int nTime = 0; nTime < nTimes; ++nTime)
        nGood += UseOnce(aszArguments[1]) ? 1 : 0;
    std::printf("%d\n", nGood);
    return 0;
}
