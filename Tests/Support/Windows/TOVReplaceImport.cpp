#include "Support/Windows/TOVReplaceImport.h"

#include <cstring>

void** FindImport(HMODULE hModule, const char* szFunction)
{
    char* pBase = reinterpret_cast<char*>(hModule);
    const IMAGE_NT_HEADERS* pHeaders =
        reinterpret_cast<IMAGE_NT_HEADERS*>(pBase + reinterpret_cast<IMAGE_DOS_HEADER*>(pBase)->e_lfanew);
    const IMAGE_DATA_DIRECTORY& oImports = pHeaders->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (oImports.VirtualAddress == 0)
        return nullptr;

    IMAGE_IMPORT_DESCRIPTOR* pImport = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(pBase + oImports.VirtualAddress);
    for (; pImport->Name != 0; ++pImport)
    {
        const IMAGE_THUNK_DATA* pName = reinterpret_cast<IMAGE_THUNK_DATA*>(pBase + pImport->OriginalFirstThunk);
        IMAGE_THUNK_DATA* pEntry = reinterpret_cast<IMAGE_THUNK_DATA*>(pBase + pImport->FirstThunk);
        for (; pName->u1.AddressOfData != 0; ++pName, ++pEntry)
        {
            if (IMAGE_SNAP_BY_ORDINAL(pName->u1.Ordinal))
                continue;
            const IMAGE_IMPORT_BY_NAME* pFunction =
                reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(pBase + pName->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(pFunction->Name), szFunction) == 0)
                return reinterpret_cast<void**>(&pEntry->u1.Function);
        }
    }
    return nullptr;
}

void* WriteImport(void** pEntry, void* pFunction)
{
    void* const pOld = *pEntry;
    DWORD dwProtection = 0;
    VirtualProtect(pEntry, sizeof(*pEntry), PAGE_READWRITE, &dwProtection);
    *pEntry = pFunction;
    VirtualProtect(pEntry, sizeof(*pEntry), dwProtection, &dwProtection);
    return pOld;
}

void ReplaceImport(HMODULE hModule, const char* szFunction, void* pReplacement)
{
    if (void** pEntry = FindImport(hModule, szFunction))
        WriteImport(pEntry, pReplacement);
}
