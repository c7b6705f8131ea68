#include "Support/TOVDirectoryFault.h"
#include "Support/Windows/TOVImportHook.h"

#include <windows.h>

static thread_local unsigned long s_ulGoodEntries = 0;

// The call that begins the search returns the first entry.
static HANDLE WINAPI FindFirstEntry(const char* szPattern, WIN32_FIND_DATAA* pEntry)
{
    if (s_ulGoodEntries == 0)
    {
        ::SetLastError(ERROR_READ_FAULT);
        return INVALID_HANDLE_VALUE;
    }
    --s_ulGoodEntries;
    return ::FindFirstFileA(szPattern, pEntry);
}

static BOOL WINAPI FindNextEntry(HANDLE hFind, WIN32_FIND_DATAA* pEntry)
{
    if (s_ulGoodEntries == 0)
    {
        ::SetLastError(ERROR_READ_FAULT);
        return FALSE;
    }
    --s_ulGoodEntries;
    return ::FindNextFileA(hFind, pEntry);
}

struct CDirectoryFault::sHook
{
    CImportHook oFirst{"FindFirstFileA", &FindFirstEntry};
    CImportHook oNext{"FindNextFileA", &FindNextEntry};
};

CDirectoryFault::CDirectoryFault(unsigned long ulGoodEntries) : m_pHook(new sHook)
{
    s_ulGoodEntries = ulGoodEntries;
}

CDirectoryFault::~CDirectoryFault() = default;
