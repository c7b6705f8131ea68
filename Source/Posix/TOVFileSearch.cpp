#include <Posix/TOVFileSearch.h>

#include <Posix/TOVFileName.h>
#include <Posix/TOVFileStatus.h>
#include <Posix/TOVProcessLocks.h>
#include <TOVPlatform/TOVFileBackend.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include <fcntl.h>

namespace TOVPlatform
{
namespace TOVFile
{
namespace Backend
{
namespace
{
using namespace TOVPosix;

const char* const NAVIGATION_ENTRIES[] = {".", ".."};
const int NUM_NAVIGATION_ENTRIES = 2;

bool IsNavigationEntry(const char* szName)
{
    return std::strcmp(szName, ".") == 0 || std::strcmp(szName, "..") == 0;
}

// The searches at work; few at a time, under the lock of the file searches. Nothing here needs to be constructed or
// destroyed with the library.
struct sSearch
{
    unsigned long long hSearch;
    std::shared_ptr<CFileSearch> pSearch;
    sSearch* pNext;
};

sSearch* s_pSearches = NULL;
unsigned long long s_hLast = 0;

unsigned long long Register(std::shared_ptr<CFileSearch> pSearch)
{
    sSearch* pNew = new sSearch{0, std::move(pSearch), NULL};

    const CProcessLockScope oScope(eLockFileSearches);
    pNew->hSearch = ++s_hLast;
    pNew->pNext = s_pSearches;
    s_pSearches = pNew;
    return pNew->hSearch;
}

// Where the last component of a name begins.
const char* FindLastComponent(const char* szName)
{
    const char* pBackslash = std::strrchr(szName, '\\');
    const char* pSlash = std::strrchr(szName, '/');
    const char* pLast = pSlash == NULL || (pBackslash != NULL && pBackslash > pSlash) ? pBackslash : pSlash;
    return pLast != NULL ? pLast + 1 : szName;
}

// Fills the record for a name without wildcards.
bool FillExact(sTOVFindData& oFindData, const char* szName)
{
    const CFileName oName(szName);
    const char* pSlash = std::strrchr(oName, '/');
    const char* szEntry = pSlash != NULL ? pSlash + 1 : static_cast<const char*>(oName);

    if (!IsNavigationEntry(szEntry))
    {
        if (!FillStatus(oFindData, AT_FDCWD, oName))
            return false;

        SetName(oFindData, szEntry);
        return true;
    }

    // A directory that is named by its place is found under its own name; the root has none.
    char* szReal = ::realpath(oName, NULL);
    const bool bFound = szReal != NULL && szReal[1] != 0 && FillStatus(oFindData, AT_FDCWD, szReal);
    if (bFound)
        SetName(oFindData, std::strrchr(szReal, '/') + 1);
    std::free(szReal);
    return bFound;
}
} // namespace

unsigned long long CFileSearch::Begin(const char* szPattern, sTOVFindData& oFindData)
{
    const char* szMask = FindLastComponent(szPattern);
    const std::size_t ulFolderLength = szMask - szPattern;
    if (*szMask == 0 || CFilePattern::HasWildcard(szPattern, ulFolderLength))
        return FILE_INVALID_HANDLE;

    // The very name goes before one that differs in case alone. A place has no such other.
    const bool bWildcard = CFilePattern::HasWildcard(szMask, std::strlen(szMask));
    if (!bWildcard && FillExact(oFindData, szPattern))
        return Register(std::make_shared<CFileSearch>(static_cast<DIR*>(NULL), szMask));
    if (!bWildcard && IsNavigationEntry(szMask))
        return FILE_INVALID_HANDLE;

    // The separator before the mask belongs to the directory only where it is all that there is.
    const std::string oFolder = ulFolderLength == 0   ? "."
                                : ulFolderLength == 1 ? "/"
                                                      : std::string(szPattern, ulFolderLength - 1);
    DIR* pFolder = ::opendir(CFileName(oFolder.c_str()));
    if (pFolder == NULL)
        return FILE_INVALID_HANDLE;

    std::shared_ptr<CFileSearch> pSearch = std::make_shared<CFileSearch>(pFolder, szMask);
    return pSearch->Next(oFindData) ? Register(std::move(pSearch)) : FILE_INVALID_HANDLE;
}

std::shared_ptr<CFileSearch> CFileSearch::Find(unsigned long long hSearch)
{
    const CProcessLockScope oScope(eLockFileSearches);
    for (sSearch* pSearch = s_pSearches; pSearch != NULL; pSearch = pSearch->pNext)
    {
        if (pSearch->hSearch == hSearch)
            return pSearch->pSearch;
    }
    return NULL;
}

void CFileSearch::End(unsigned long long hSearch)
{
    sSearch* pFound = NULL;
    {
        const CProcessLockScope oScope(eLockFileSearches);
        sSearch** ppSearch = &s_pSearches;
        while (*ppSearch != NULL && (*ppSearch)->hSearch != hSearch)
            ppSearch = &(*ppSearch)->pNext;

        pFound = *ppSearch;
        if (pFound != NULL)
            *ppSearch = pFound->pNext;
    }
    delete pFound; // closes the directory, unless another thread is still at work with it
}

CFileSearch::CFileSearch(DIR* pFolder, const char* szMask)
    : m_pFolder(pFolder), m_oPattern(szMask), m_nNavigationEntries(0)
{
}

CFileSearch::~CFileSearch()
{
    if (m_pFolder != NULL)
        ::closedir(m_pFolder);
}

bool CFileSearch::Next(sTOVFindData& oFindData)
{
    if (m_pFolder == NULL)
        return false;

    while (m_nNavigationEntries < NUM_NAVIGATION_ENTRIES)
    {
        if (Accept(oFindData, NAVIGATION_ENTRIES[m_nNavigationEntries++]))
            return true;
    }

    while (const struct dirent* pEntry = ::readdir(m_pFolder))
    {
        if (!IsNavigationEntry(pEntry->d_name) && Accept(oFindData, pEntry->d_name))
            return true;
    }
    return false;
}

// An entry that is gone by now is no entry.
bool CFileSearch::Accept(sTOVFindData& oFindData, const char* szName)
{
    if (!m_oPattern.Matches(szName) || !FillStatus(oFindData, ::dirfd(m_pFolder), szName))
        return false;

    SetName(oFindData, szName);
    return true;
}
} // namespace Backend
} // namespace TOVFile
} // namespace TOVPlatform
