// Searches of directories, and the handles by which callers name them.
#pragma once

#include <Posix/Files/TOVFilePattern.h>
#include <TOVPlatform/TOVFile.h>

#include <memory>

#include <dirent.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// One search: `.` and `..` come first, then the other entries in the system's order, each as far as it matches. Handles
// are given once and never again, so that a stale or an invented one is recognised. A search belongs to one thread at a
// time; the table of searches, which has a lock, belongs to all.
class CFileSearch
{
public:
    // Starts a search and fills the record with its first entry. Stores the handle only if there is one.
    static TOVFile::eFindResult Begin(const char* szPattern, TOVFile::sTOVFindData& oFindData, tHandle& hFind);

    // The search behind a handle, null if there is none.
    static std::shared_ptr<CFileSearch> Find(tHandle hSearch);

    static void End(tHandle hSearch);

    struct sCloseFolder
    {
        void operator()(DIR* pFolder) const { ::closedir(pFolder); }
    };
    typedef std::unique_ptr<DIR, sCloseFolder> tFolder;

    // pFolder is null for a search that ends after its first entry.
    CFileSearch(tFolder pFolder, const char* szMask);

    // Fills the record with the next entry. An entry that the system cannot look at is remembered for the end.
    TOVFile::eFindResult Next(TOVFile::sTOVFindData& oFindData);

private:
    bool Accept(TOVFile::sTOVFindData& oFindData, const char* szName);

    const tFolder m_pFolder;
    CFilePattern m_oPattern;
    int m_nNavigationEntries; // how many of `.` and `..` are behind it
    bool m_bFailed;           // not all entries were seen
};
} // namespace TOVPosix
} // namespace TOVPlatform
