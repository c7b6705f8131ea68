#include "Support/Windows/TOVImportHook.h"

#include "Support/Windows/TOVReplaceImport.h"

#include <stdexcept>
#include <string>

static void** FindInLibrary(const char* szFunction)
{
    void** pEntry = FindImport(GetModuleHandleA("TOVKernel.dll"), szFunction);
    if (pEntry == nullptr)
        throw std::runtime_error(std::string("the library does not import ") + szFunction);
    return pEntry;
}

CImportHook::CImportHook(const char* szFunction, void* pReplacement)
    : m_pEntry(FindInLibrary(szFunction)), m_pOriginal(WriteImport(m_pEntry, pReplacement))
{
}

CImportHook::~CImportHook()
{
    WriteImport(m_pEntry, m_pOriginal);
}
