#include "Module.h"

#include <windows.h>

CModule::CModule(const char* szFile) : m_pModule(::LoadLibraryA(szFile))
{
}

CModule::~CModule()
{
    if (m_pModule != nullptr)
        ::FreeLibrary(static_cast<HMODULE>(m_pModule));
}

void* CModule::Find(const char* szName) const
{
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(m_pModule), szName));
}
