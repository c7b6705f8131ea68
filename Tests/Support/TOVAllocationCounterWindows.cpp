#include "Support/TOVAllocationCounter.h"

#include <windows.h>

#include <psapi.h>

#include <cstdlib>
#include <cstring>

// The counts hang on a slot of the system's thread-local storage: the compiler's own would call malloc, and so the hooks,
// at its first use in a thread.
static DWORD s_dwSlot = TLS_OUT_OF_INDEXES;

// A query must not disturb the error code that the hooked caller is about to read.
static sAllocationCounts* FindCounts()
{
    DWORD dwError = GetLastError();
    sAllocationCounts* pCounts = static_cast<sAllocationCounts*>(TlsGetValue(s_dwSlot));
    SetLastError(dwError);
    return pCounts;
}

static bool Note(std::size_t nSize)
{
    sAllocationCounts* pCounts = FindCounts();
    return pCounts == nullptr || NoteAllocation(*pCounts, nSize);
}

static void NoteReleaseOf(void* pBlock)
{
    sAllocationCounts* pCounts = FindCounts();
    if (pBlock != nullptr && pCounts != nullptr)
        NoteRelease(*pCounts);
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

static void* HookOf(const char* szName)
{
    if (std::strcmp(szName, "malloc") == 0)
        return reinterpret_cast<void*>(&HookedMalloc);
    if (std::strcmp(szName, "calloc") == 0)
        return reinterpret_cast<void*>(&HookedCalloc);
    if (std::strcmp(szName, "realloc") == 0)
        return reinterpret_cast<void*>(&HookedRealloc);
    if (std::strcmp(szName, "free") == 0)
        return reinterpret_cast<void*>(&HookedFree);
    return nullptr;
}

static void Replace(IMAGE_THUNK_DATA* pEntry, void* pHook)
{
    DWORD dwProtection = 0;
    VirtualProtect(pEntry, sizeof(*pEntry), PAGE_READWRITE, &dwProtection);
    pEntry->u1.Function = reinterpret_cast<ULONG_PTR>(pHook);
    VirtualProtect(pEntry, sizeof(*pEntry), dwProtection, &dwProtection);
}

// Redirects what a module imports from the runtime's heap.
static void HookModule(HMODULE hModule)
{
    char* pBase = reinterpret_cast<char*>(hModule);
    IMAGE_NT_HEADERS* pHeaders =
        reinterpret_cast<IMAGE_NT_HEADERS*>(pBase + reinterpret_cast<IMAGE_DOS_HEADER*>(pBase)->e_lfanew);
    const IMAGE_DATA_DIRECTORY& oImports = pHeaders->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (oImports.VirtualAddress == 0)
        return;

    IMAGE_IMPORT_DESCRIPTOR* pImport = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(pBase + oImports.VirtualAddress);
    for (; pImport->Name != 0; ++pImport)
    {
        if (_stricmp(pBase + pImport->Name, "msvcrt.dll") != 0)
            continue;
        IMAGE_THUNK_DATA* pName = reinterpret_cast<IMAGE_THUNK_DATA*>(pBase + pImport->OriginalFirstThunk);
        IMAGE_THUNK_DATA* pEntry = reinterpret_cast<IMAGE_THUNK_DATA*>(pBase + pImport->FirstThunk);
        for (; pName->u1.AddressOfData != 0; ++pName, ++pEntry)
        {
            if (IMAGE_SNAP_BY_ORDINAL(pName->u1.Ordinal))
                continue;
            IMAGE_IMPORT_BY_NAME* pFunction =
                reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(pBase + pName->u1.AddressOfData);
            if (void* pHook = HookOf(reinterpret_cast<const char*>(pFunction->Name)))
                Replace(pEntry, pHook);
        }
    }
}

// The system's modules, and what throwing needs: the locks and the thread-local storage of the compiler's runtime. Their
// memory must not fail.
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
        pCounts = static_cast<sAllocationCounts*>(
            HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, sizeof(sAllocationCounts)));
        TlsSetValue(s_dwSlot, pCounts);
    }
    return *pCounts;
}
