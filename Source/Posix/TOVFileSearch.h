// Searches of directories, and the handles by which callers name them.
#pragma once

#include <Posix/TOVFilePattern.h>
#include <TOVPlatform/TOVFile.h>

#include <memory>

#include <dirent.h>

namespace TOVPlatform
{
namespace TOVFile
{
namespace Backend
{
// One search: `.` and `..` come first, then the other entries in the system's order, each as far as it matches. Handles
// are given once and never again, so that a stale or an invented one is recognised. A search belongs to one thread at a
// time; the table of searches, which has a lock, belongs to all.
class CFileSearch
{
public:
    // Starts a search and fills the record with its first entry. FILE_INVALID_HANDLE if there is none.
    static unsigned long long Begin(const char* szPattern, sTOVFindData& oFindData);

    // The search behind a handle, null if there is none.
    static std::shared_ptr<CFileSearch> Find(unsigned long long hSearch);

    static void End(unsigned long long hSearch);

    // pFolder is null for a search that ends behind its first entry; otherwise it is owned.
    CFileSearch(DIR* pFolder, const char* szMask);
    ~CFileSearch();

    CFileSearch(const CFileSearch&) = delete;
    CFileSearch& operator=(const CFileSearch&) = delete;

    // Fills the record with the next entry; false at the end.
    bool Next(sTOVFindData& oFindData);

private:
    bool Accept(sTOVFindData& oFindData, const char* szName);

    DIR* m_pFolder;
    CFilePattern m_oPattern;
    int m_nNavigationEntries; // how many of `.` and `..` are behind it
};
} // namespace Backend
} // namespace TOVFile
} // namespace TOVPlatform
