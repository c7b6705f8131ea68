#include "Support/TOVAllocationCounter.h"
#include "Support/Windows/TOVReplaceImport.h"

#include <psapi.h>

#include <cstdlib>
#include <cstring>

// The counts are kept in a slot of the system's thread-local storage. The compiler's own storage would call malloc, and
// so the hooks, at its first use in a thread.
static DWORD s_dwSlot = TLS_OUT_OF_INDEXES;

// A query must not change the error code that the caller of a hook is about to read.
static sAllocationCounts* FindCounts()
{
    DWORD dwError = GetLastError();
    sAllocationCounts* pCounts = static_cast<sAllocationCounts*>(TlsGetValue(s_dwSlot));
    SetLastError(dwError);
    return pCounts;
}

// A thread that nobody has asked for its counts has none, but its blocks are among those of the process.
static bool Note(std::size_t nSize)
{
    sAllocationCounts* pCounts = FindCounts();
    if (pCounts != nullptr)
        return NoteAllocation(*pCounts, nSize);
    NoteBlocksOfProcess(1);
    return true;
}

static void NoteReleaseOf(void* pBlock)
{
    sAllocationCounts* pCounts = FindCounts();
    if (pBlock == nullptr)
        return;
    if (pCounts != nullptr)
        NoteRelease(*pCounts);
    else
        NoteBlocksOfProcess(-1);
}

typedef void* (*tMalloc)(std::size_t);
typedef void* (*tCalloc)(std::size_t, std::size_t);
typedef void* (*tRealloc)(void*, std::size_t);
typedef void (*tFree)(void*);

static tMalloc s_fnMalloc;
static tCalloc s_fnCalloc;
static tRealloc s_fnRealloc;
static tFree s_fnFree;

static void* HookedMalloc(std::size_t nSize)
{
    return Note(nSize) ? s_fnMalloc(nSize) : nullptr;
}

static void* HookedCalloc(std::size_t nCount, std::size_t nSize)
{
    return Note(nCount * nSize) ? s_fnCalloc(nCount, nSize) : nullptr;
}

static void* HookedRealloc(void* pBlock, std::size_t nSize)
{
    if (!Note(nSize))
        return nullptr;
    NoteReleaseOf(pBlock);
    return s_fnRealloc(pBlock, nSize);
}

static void HookedFree(void* pBlock)
{
    NoteReleaseOf(pBlock);
    s_fnFree(pBlock);
}

// The modules whose allocations must not fail: those of the system, and those that throwing needs, which are the locks
// and the thread-local storage of the compiler's runtime.
static bool IsLeftAlone(HMODULE hModule)
{
    char szSystem[MAX_PATH];
    char szModule[MAX_PATH];
    UINT nLength = GetSystemDirectoryA(szSystem, MAX_PATH);
    GetModuleFileNameA(hModule, szModule, MAX_PATH);
    return _strnicmp(szSystem, szModule, nLength) == 0 || std::strstr(szModule, "libwinpthread") != nullptr ||
           std::strstr(szModule, "libgcc") != nullptr;
}

template<class T> static void FindOriginal(T& fnOriginal, const char* szName)
{
    fnOriginal = reinterpret_cast<T>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("msvcrt.dll"), szName)));
}

static void HookModule(HMODULE hModule)
{
    ReplaceImport(hModule, "malloc", reinterpret_cast<void*>(&HookedMalloc));
    ReplaceImport(hModule, "calloc", reinterpret_cast<void*>(&HookedCalloc));
    ReplaceImport(hModule, "realloc", reinterpret_cast<void*>(&HookedRealloc));
    ReplaceImport(hModule, "free", reinterpret_cast<void*>(&HookedFree));
}

static bool Install()
{
    FindOriginal(s_fnMalloc, "malloc");
    FindOriginal(s_fnCalloc, "calloc");
    FindOriginal(s_fnRealloc, "realloc");
    FindOriginal(s_fnFree, "free");
    s_dwSlot = TlsAlloc();

    HMODULE aModules[256];
    DWORD dwSize = 0;
    EnumProcessModules(GetCurrentProcess(), aModules, sizeof(aModules), &dwSize);
    for (DWORD dwModule = 0; dwModule < dwSize / sizeof(HMODULE); ++dwModule)
    {
        if (!IsLeftAlone(aModules[dwModule]))
            HookModule(aModules[dwModule]);
    }
    return true;
}

sAllocationCounts& AllocationCountsOfThisThread()
{
    static const bool s_bInstalled = Install();
    static_cast<void>(s_bInstalled);

    sAllocationCounts* pCounts = FindCounts();
    if (pCounts == nullptr)
    {
        pCounts =
            static_cast<sAllocationCounts*>(HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, sizeof(sAllocationCounts)));
        TlsSetValue(s_dwSlot, pCounts);
    }
    return *pCounts;
}
