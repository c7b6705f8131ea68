#include "../LoadedFile.h"

#include <windows.h>

void KeepSystemLibraries()
{
    ::LoadLibraryA("winmm.dll");
}

void* LoadFile(const char* szFile)
{
    return ::LoadLibraryA(szFile);
}

void* FindFunction(void* pLoaded, const char* szName)
{
    if (pLoaded == nullptr)
        return nullptr;
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(pLoaded), szName));
}

void UnloadFile(void* pLoaded)
{
    if (pLoaded != nullptr)
        ::FreeLibrary(static_cast<HMODULE>(pLoaded));
}

bool IsLoaded(const char* szFile)
{
    return ::GetModuleHandleA(szFile) != nullptr;
}
