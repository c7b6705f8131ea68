#include "../LoadedFile.h"

#include <dlfcn.h>

void KeepSystemLibraries()
{
}

void* LoadFile(const char* szFile)
{
    return ::dlopen(szFile, RTLD_NOW);
}

void* FindFunction(void* pLoaded, const char* szName)
{
    return pLoaded != nullptr ? ::dlsym(pLoaded, szName) : nullptr;
}

void UnloadFile(void* pLoaded)
{
    if (pLoaded != nullptr)
        ::dlclose(pLoaded);
}

bool IsLoaded(const char* szFile)
{
    void* const pLoaded = ::dlopen(szFile, RTLD_NOW | RTLD_NOLOAD);
    UnloadFile(pLoaded);
    return pLoaded != nullptr;
}
