// Searches of directories, and their handles.
#pragma once

#include <Posix/Files/TOVFilePattern.h>
#include <TOVPlatform/TOVFile.h>

#include <memory>

#include <dirent.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// One search: `.` and `..` come first, then the other entries in the system's order, if they match. No handle is given
// twice, so that a stale or an invented one is recognised. A search belongs to one thread at a time; the table of
// searches has a lock.
class CFileSearch
{
public:
    // Starts a search and fills the record with its first entry. Stores the handle only if there is one. Throws if
    // memory is exhausted, perhaps with the record filled.
    static TOVFile::eFindResult Begin(const char* szPattern, TOVFile::sTOVFindData& oFindData, tHandle& hFind);

    // The search that a handle names, or null.
    static std::shared_ptr<CFileSearch> Find(tHandle hSearch);

    static void End(tHandle hSearch);

    struct sCloseFolder
    {
        void operator()(DIR* pFolder) const { ::closedir(pFolder); }
    };
    typedef std::unique_ptr<DIR, sCloseFolder> tFolder;

    // pFolder is null for a search that ends after its first entry.
    CFileSearch(tFolder pFolder, const char* szMask);

    // Fills the record with the next entry. An entry that the system cannot look at makes the end of the search a
    // failure.
    TOVFile::eFindResult Next(TOVFile::sTOVFindData& oFindData);

private:
    bool Matches(const char* szName);
    bool Accept(TOVFile::sTOVFindData& oFindData, const char* szName);

    const tFolder m_pFolder;
    CFilePattern m_oPattern;
    int m_nNavigationEntries; // how many of `.` and `..` it has passed
    bool m_bFailed;           // the system could not look at all entries
};
} // namespace TOVPosix
} // namespace TOVPlatform
