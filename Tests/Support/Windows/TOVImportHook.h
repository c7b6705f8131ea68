// Puts a function of the test in the place of one that the library imports from the system.
#pragma once

// While it lives, the library's calls of the function, given by its exported name, reach the replacement.
class CImportHook
{
public:
    template<class TFunction>
    CImportHook(const char* szFunction, TFunction* pReplacement)
        : CImportHook(szFunction, reinterpret_cast<void*>(pReplacement))
    {
    }
    CImportHook(const char* szFunction, void* pReplacement);
    ~CImportHook();
    CImportHook(const CImportHook&) = delete;
    CImportHook& operator=(const CImportHook&) = delete;

private:
    void** const m_pEntry;
    void* const m_pOriginal;
};
