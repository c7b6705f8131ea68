#include <Posix/Files/TOVFileSearch.h>

#include <Posix/Base/TOVProcessLocks.h>
#include <Posix/Files/TOVFileName.h>
#include <Posix/Files/TOVFileStatus.h>
#include <TOVPlatform/TOVString.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include <fcntl.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
using namespace TOVFile;

constexpr const char* NAVIGATION_ENTRIES[] = {".", ".."};
constexpr int NUM_NAVIGATION_ENTRIES = 2;

bool IsNavigationEntry(const char* szName)
{
    return std::strcmp(szName, ".") == 0 || std::strcmp(szName, "..") == 0;
}

// The open searches: few at a time, guarded by the lock of the file searches. Nothing here needs to be constructed or
// destroyed with the library.
struct sSearch
{
    tHandle hSearch;
    std::shared_ptr<CFileSearch> pSearch;
    sSearch* pNext;
};

sSearch* s_pSearches = nullptr;
tHandle s_hLast = 0;

tHandle Register(std::shared_ptr<CFileSearch> pSearch)
{
    sSearch* pNew = new sSearch{0, std::move(pSearch), nullptr};

    const CProcessLockScope oScope(eLockFileSearches);
    pNew->hSearch = ++s_hLast;
    pNew->pNext = s_pSearches;
    s_pSearches = pNew;
    return pNew->hSearch;
}

// After a failed call: whether it failed because there is no such file.
bool IsNothingThere()
{
    return errno == ENOENT || errno == ENOTDIR;
}

// Where the last component of a name begins.
const char* FindLastComponent(const char* szName)
{
    const char* pBackslash = std::strrchr(szName, '\\');
    const char* pSlash = std::strrchr(szName, '/');
    if (pBackslash == nullptr && pSlash == nullptr)
        return szName;
    if (pSlash == nullptr || (pBackslash != nullptr && pBackslash > pSlash))
        return pBackslash + 1;
    return pSlash + 1;
}

// The directory of a pattern, which ends at the mask. Its last separator belongs to it only if there is nothing else.
std::string FolderOf(const char* szPattern, std::size_t ulFolderLength)
{
    if (ulFolderLength == 0)
        return ".";
    if (ulFolderLength == 1)
        return "/";
    return std::string(szPattern, ulFolderLength - 1);
}

void SetName(sTOVFindData& oFindData, const char* szName)
{
    TOVStringA::NCopy(oFindData.szName, szName, static_cast<int>(sizeof oFindData.szName));
}

// Whether there was memory for the translation of a name to search for, which is not empty. Sets errno if not.
bool IsTranslated(const CFileName& oName)
{
    if (*oName != '\0')
        return true;
    errno = ENOMEM;
    return false;
}

// Fills the record for a name without wildcards. Sets errno on failure.
bool FillExact(sTOVFindData& oFindData, const char* szName)
{
    const CFileName oName(szName);
    if (!IsTranslated(oName))
        return false;
    const char* pSlash = std::strrchr(oName, '/');
    const char* szEntry = pSlash != nullptr ? pSlash + 1 : static_cast<const char*>(oName);

    if (!IsNavigationEntry(szEntry))
    {
        if (!FillStatus(oFindData, AT_FDCWD, oName))
            return false;

        SetName(oFindData, szEntry);
        return true;
    }

    // `.` and `..` are found under the directory's own name; the root has none.
    char* szReal = ::realpath(oName, nullptr);
    if (szReal == nullptr)
        return false;

    errno = ENOENT;
    const bool bFound = szReal[1] != 0 && FillStatus(oFindData, AT_FDCWD, szReal);
    if (bFound)
        SetName(oFindData, std::strrchr(szReal, '/') + 1);
    std::free(szReal);
    return bFound;
}
} // namespace

eFindResult CFileSearch::Begin(const char* szPattern, sTOVFindData& oFindData, tHandle& hFind)
{
    const char* szMask = FindLastComponent(szPattern);
    const std::size_t ulFolderLength = szMask - szPattern;
    if (*szMask == 0 || CFilePattern::HasWildcard(szPattern, ulFolderLength))
        return eFindEnd;

    // The exact name takes precedence over one that differs only in case. `.` and `..` have no such variant.
    const bool bWildcard = CFilePattern::HasWildcard(szMask, std::strlen(szMask));
    if (!bWildcard && FillExact(oFindData, szPattern))
    {
        hFind = Register(std::make_shared<CFileSearch>(tFolder(), szMask));
        return eFindEntry;
    }
    if (!bWildcard && IsNavigationEntry(szMask))
        return IsNothingThere() ? eFindEnd : eFindFailure;

    const std::string sFolder = FolderOf(szPattern, ulFolderLength);
    const CFileName oFolder(sFolder.c_str());
    tFolder pFolder(IsTranslated(oFolder) ? ::opendir(oFolder) : nullptr);
    if (pFolder == nullptr)
        return IsNothingThere() ? eFindEnd : eFindFailure;

    std::shared_ptr<CFileSearch> pSearch = std::make_shared<CFileSearch>(std::move(pFolder), szMask);
    const eFindResult eResult = pSearch->Next(oFindData);
    if (eResult == eFindEntry)
        hFind = Register(std::move(pSearch));
    return eResult;
}

std::shared_ptr<CFileSearch> CFileSearch::Find(tHandle hSearch)
{
    const CProcessLockScope oScope(eLockFileSearches);
    for (sSearch* pSearch = s_pSearches; pSearch != nullptr; pSearch = pSearch->pNext)
    {
        if (pSearch->hSearch == hSearch)
            return pSearch->pSearch;
    }
    return nullptr;
}

void CFileSearch::End(tHandle hSearch)
{
    sSearch* pFound = nullptr;
    {
        const CProcessLockScope oScope(eLockFileSearches);
        sSearch** ppSearch = &s_pSearches;
        while (*ppSearch != nullptr && (*ppSearch)->hSearch != hSearch)
            ppSearch = &(*ppSearch)->pNext;

        pFound = *ppSearch;
        if (pFound != nullptr)
            *ppSearch = pFound->pNext;
    }
    delete pFound; // closes the directory, unless another thread still reads it
}

CFileSearch::CFileSearch(tFolder pFolder, const char* szMask)
    : m_pFolder(std::move(pFolder)), m_oPattern(szMask), m_nNavigationEntries(0), m_bFailed(false)
{
}

eFindResult CFileSearch::Next(sTOVFindData& oFindData)
{
    if (m_pFolder == nullptr)
        return eFindEnd;

    while (m_nNavigationEntries < NUM_NAVIGATION_ENTRIES)
    {
        if (Accept(oFindData, NAVIGATION_ENTRIES[m_nNavigationEntries++]))
            return eFindEntry;
    }

    errno = 0; // the end of the directory does not change it
    while (const struct dirent* pEntry = ::readdir(m_pFolder.get()))
    {
        if (!IsNavigationEntry(pEntry->d_name) && Accept(oFindData, pEntry->d_name))
            return eFindEntry;
        errno = 0;
    }
    m_bFailed = m_bFailed || errno != 0;
    return m_bFailed ? eFindFailure : eFindEnd;
}

// An entry for whose name there is no memory cannot be looked at.
bool CFileSearch::Matches(const char* szName)
{
    try
    {
        return m_oPattern.Matches(szName);
    }
    catch (const std::bad_alloc&)
    {
        m_bFailed = true;
        return false;
    }
}

// An entry that has been removed meanwhile does not count.
bool CFileSearch::Accept(sTOVFindData& oFindData, const char* szName)
{
    if (!Matches(szName))
        return false;
    if (!FillStatus(oFindData, ::dirfd(m_pFolder.get()), szName))
    {
        m_bFailed = m_bFailed || errno != ENOENT;
        return false;
    }

    SetName(oFindData, szName);
    return true;
}
} // namespace TOVPosix
} // namespace TOVPlatform
