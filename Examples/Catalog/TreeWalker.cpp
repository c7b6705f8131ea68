#include "TreeWalker.h"

#include "CatalogSystem.h"
#include "UnfinishedCatalog.h"
#include "Workers.h"

#include <Path/TOVPath.h>
#include <TOVPlatform/TOVFile.h>
#include <TOVPlatform/TOVString.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <numeric>
#include <system_error>

namespace TOVFile = TOVPlatform::TOVFile;
namespace TOVDirectory = TOVPlatform::TOVDirectory;

namespace
{
// A mount can lead back to a parent directory, so that the depth is limited. No real tree is deeper than this.
constexpr int DEEPEST_LEVEL = 200;

// A directory search that its destructor closes.
class CSearch
{
public:
    explicit CSearch(const CTOVStringA& oPattern)
        : m_hSearch(FILE_INVALID_HANDLE), m_eResult(TOVFile::FindFirstEntry(~oPattern, &m_oFound, &m_hSearch))
    {
    }

    ~CSearch() { TOVFile::FindClose(m_hSearch); }

    CSearch(const CSearch&) = delete;
    CSearch& operator=(const CSearch&) = delete;

    // Returns whether there is a current entry. Next moves to the following one.
    bool HasEntry() const { return m_eResult == TOVFile::eFindEntry; }

    // If there is no entry, returns whether the search ended because the system could not read further ones.
    bool HasFailed() const { return m_eResult == TOVFile::eFindFailure; }

    void Next() { m_eResult = TOVFile::FindNextEntry(m_hSearch, &m_oFound); }

    void GetName(std::string& sName) const
    {
        // The field has no terminator if the name fills it.
        const void* pEnd = std::memchr(m_oFound.szName, '\0', sizeof(m_oFound.szName));
        sName.assign(m_oFound.szName, pEnd != nullptr ? static_cast<const char*>(pEnd) : std::end(m_oFound.szName));
    }

    unsigned long long GetSize() const { return m_oFound.ullSize; }

    unsigned long long GetTime() const { return m_oFound.ullLastWriteTime; }

    bool IsDirectory() const { return (m_oFound.ulAttributes & TOVFile::eFileAttributeDirectory) != 0; }

    // Devices, pipes and dead links have no attributes.
    bool IsFile() const { return m_oFound.ulAttributes != 0 && !IsDirectory(); }

private:
    TOVFile::sTOVFindData m_oFound;
    tHandle m_hSearch;
    TOVFile::eFindResult m_eResult;
};

// A search reads '*' and '?' in the directory's own name as wildcards. So this object makes such a directory the
// working directory until Leave is called. If the way back from there is not known, it does not: a search then finds
// nothing on a system whose names can have these characters.
class CSearchPlace
{
public:
    explicit CSearchPlace(const CTOVStringA& oDirectory) : m_oDirectory(oDirectory)
    {
        if (oDirectory.FindOneOf("*?") < 0)
            return;
        m_fnReturn = WayBackHere();
        m_bAway = m_fnReturn() && TOVDirectory::Change(~oDirectory) == TOVDirectory::eDirectorySuccess;
    }

    // Without Leave, an exception is ending the run.
    ~CSearchPlace()
    {
        if (m_bAway)
            m_fnReturn();
    }

    CSearchPlace(const CSearchPlace&) = delete;
    CSearchPlace& operator=(const CSearchPlace&) = delete;

    // Returns the directory's name for a search.
    CTOVStringA GetName() const { return m_bAway ? CTOVStringA(".") : m_oDirectory; }

    // Returns to the former working directory. Throws CCatalogError if that fails, since all relative names, that of
    // the catalogue among them, would lead elsewhere.
    void Leave()
    {
        if (m_bAway && !m_fnReturn())
            throw CCatalogError("the working directory can no longer be entered");
        m_bAway = false;
    }

private:
    const CTOVStringA m_oDirectory;
    tWayBack m_fnReturn;
    bool m_bAway = false;
};

// Links to directories are skipped: they can lead back to a parent directory, and their targets are found without them.
bool IsLink(const std::string& sName)
{
    std::error_code oIgnored;
    return std::filesystem::is_symlink(SystemPath(sName.c_str()), oIgnored);
}

bool EndsWith(const std::string& sName, const std::string& sEnd)
{
    return sName.size() >= sEnd.size() &&
           TOVPlatform::TOVStringA::CompareNoCase(sName.c_str() + (sName.size() - sEnd.size()), sEnd.c_str()) == 0;
}

bool IsNavigation(const std::string& sName)
{
    return sName == "." || sName == "..";
}

bool HasWildcard(const std::string& sName)
{
    return sName.find_first_of("*?") != sName.npos;
}
} // namespace

CTreeWalker::CTreeWalker(const CNameList& aPatterns, CTOVArray<sFileRecord>& aFiles, CTextStore& oPaths,
                         tUnreadable& aUnreadable, const std::atomic<bool>& bStop, int nThreads)
    : m_aPatterns(aPatterns), m_aFiles(aFiles), m_oPaths(oPaths), m_aUnreadable(aUnreadable), m_bStop(bStop),
      m_nThreads(nThreads), m_aMatched(static_cast<std::size_t>(aPatterns.GetSize()))
{
}

void CTreeWalker::Exclude(const CTOVStringA& oName)
{
    m_aExcluded.push_back({~oName, ~CTOVPath(oName).GetFileName(true)});
    if (TargetOf(oName) != oName)
        Exclude(TargetOf(oName));
}

void CTreeWalker::Walk(int nDirectory, const CTOVStringA& oDirectory)
{
    m_nDirectory = nDirectory;
    m_sRoot = ~oDirectory;
    m_aTree.assign(1, sDirectory());

    for (std::size_t nBegin = 0; nBegin < m_aTree.size();)
    {
        const std::size_t nEnd = m_aTree.size();
        ReadLevel(nBegin, nEnd);
        if (!m_bStop)
            AddLevel(nBegin, nEnd);
        nBegin = nEnd;
    }
    if (!m_bStop)
    {
        CollectFiles(m_aTree.front());
        CollectUnreadable(m_aTree.front());
    }
    m_aTree.clear();
}

std::string CTreeWalker::FullPath(const std::string& sRelative) const
{
    std::string sPath = m_sRoot;
    if (!sRelative.empty())
        AppendPath(sPath, sRelative.c_str());
    return sPath;
}

// Reads the directories from nBegin to nEnd.
void CTreeWalker::ReadLevel(std::size_t nBegin, std::size_t nEnd)
{
    // The search in a directory whose name has a wildcard changes the working directory, so that no other thread may
    // run meanwhile.
    CJobCounter oJobs(static_cast<long>(nEnd - nBegin));
    const auto fnRead = [&] {
        for (long lJob; !m_bStop && oJobs.Take(lJob);)
        {
            sDirectory& oDirectory = m_aTree[nBegin + static_cast<std::size_t>(lJob)];
            if (!HasWildcard(FullPath(oDirectory.sRelative)))
                Read(oDirectory);
        }
    };
    const auto fnTell = [&] {
        if (m_fnProgress)
            m_fnProgress({m_lFilesFound, m_lDirectoriesFound});
    };
    // A single thread is worth its start only where this one has to tell of it.
    const int nThreads = nEnd - nBegin == 1 ? 1 : m_nThreads;
    if ((nThreads == 1 && !m_fnProgress) || !RunWorkers(nThreads, fnRead, fnTell))
        fnRead();
    fnTell();
    for (std::size_t n = nBegin; n < nEnd && !m_bStop; ++n)
    {
        if (HasWildcard(FullPath(m_aTree[n].sRelative)))
            Read(m_aTree[n]);
    }
}

// Adds the subdirectories of these directories to the tree.
void CTreeWalker::AddLevel(std::size_t nBegin, std::size_t nEnd)
{
    for (std::size_t n = nBegin; n < nEnd; ++n)
    {
        m_aTree[n].nFirstChild = m_aTree.size();
        for (std::size_t nName = 0; nName < m_aTree[n].aSubdirectories.size(); ++nName)
        {
            sDirectory oBelow;
            oBelow.sRelative = m_aTree[n].sRelative;
            oBelow.nDepth = m_aTree[n].nDepth + 1;
            AppendPath(oBelow.sRelative, m_aTree[n].aSubdirectories[nName].c_str());
            m_aTree.push_back(std::move(oBelow));
        }
    }
}

void CTreeWalker::Read(sDirectory& oDirectory)
{
    const std::string sFullPath = FullPath(oDirectory.sRelative);
    std::vector<std::string> aNames; // of the files found, in their order
    tMatching aMatching;
    CSearchPlace oPlace(sFullPath.c_str());
    ReadEntries(oDirectory, oPlace.GetName(), aMatching, aNames);
    oPlace.Leave(); // what follows uses names that are relative to the working directory
    if (m_bStop)
        return;

    oDirectory.aMatched.resize(aMatching.size());
    std::size_t nKept = 0;
    for (std::size_t n = 0; n < aNames.size() && !m_bStop; ++n)
    {
        if (IsExcluded(sFullPath, aNames[n]))
            continue;
        for (std::size_t nPattern = 0; nPattern < aMatching.size(); ++nPattern)
            oDirectory.aMatched[nPattern] = oDirectory.aMatched[nPattern] || aMatching[nPattern].count(aNames[n]) > 0;
        if (nKept < n)
        {
            oDirectory.aFiles[nKept] = oDirectory.aFiles[n];
            aNames[nKept].swap(aNames[n]);
        }
        ++nKept;
    }
    oDirectory.aFiles.resize(nKept);
    AddPaths(oDirectory, aNames);
    std::sort(
        oDirectory.aFiles.begin(), oDirectory.aFiles.end(),
        [](const sFileRecord& oFirst, const sFileRecord& oSecond) { return CompareRecords(oFirst, oSecond) < 0; });

    std::vector<std::string>& aBelow = oDirectory.aSubdirectories;
    const auto fnIsLink = [&](const std::string& sName) {
        std::string sPath = sFullPath;
        AppendPath(sPath, sName.c_str());
        return IsLink(sPath);
    };
    aBelow.erase(std::remove_if(aBelow.begin(), aBelow.end(), fnIsLink), aBelow.end());
}

void CTreeWalker::ReadEntries(sDirectory& oDirectory, const CTOVStringA& oSearchDirectory, tMatching& aMatching,
                              std::vector<std::string>& aNames)
{
    CSearch oSearch(JoinPath(oSearchDirectory, "*.*"));
    oDirectory.bUnreadable = !oSearch.HasEntry() || oDirectory.nDepth > DEEPEST_LEVEL;
    if (oDirectory.bUnreadable)
        return;

    tMatching aExcluded;
    const bool bExcludedKnown = FindMatching(oSearchDirectory, m_aExcludes, aExcluded);
    const bool bMatchingKnown = FindMatching(oSearchDirectory, m_aPatterns, aMatching);
    std::string sName;
    for (; oSearch.HasEntry() && !m_bStop; oSearch.Next())
    {
        oSearch.GetName(sName);
        if (IsAmong(sName, aExcluded))
            continue;
        if (oSearch.IsDirectory() && !IsNavigation(sName))
            oDirectory.aSubdirectories.push_back(sName);
        else if (oSearch.IsFile() && IsWanted(sName, aMatching))
        {
            sFileRecord oRecord;
            oRecord.ullSize = oSearch.GetSize();
            if (m_bTimes)
                oRecord.oDetails.Make().ullTime = oSearch.GetTime();
            oRecord.nDirectory = m_nDirectory;
            oDirectory.aFiles.push_back(oRecord);
            aNames.push_back(sName);
            if (m_fnProgress)
                ++m_lFilesFound;
        }
    }
    if (m_fnProgress)
        ++m_lDirectoriesFound;
    oDirectory.bUnreadable = oSearch.HasFailed() || !bMatchingKnown || !bExcludedKnown;
}

bool CTreeWalker::IsWanted(const std::string& sName, const tMatching& aMatching) const
{
    return m_aPatterns.IsEmpty() || IsAmong(sName, aMatching);
}

bool CTreeWalker::IsAmong(const std::string& sName, const tMatching& aMatching)
{
    return std::any_of(aMatching.begin(), aMatching.end(),
                       [&](const std::set<std::string>& aNames) { return aNames.count(sName) > 0; });
}

bool CTreeWalker::IsExcluded(const std::string& sFullPath, const std::string& sName) const
{
    const auto fnPath = [&] {
        std::string sPath = sFullPath;
        AppendPath(sPath, sName.c_str());
        return CTOVStringA(sPath.c_str());
    };
    for (const sExcluded& oExcluded : m_aExcluded)
    {
        // Comparing the names is only a quick first test: one file can have several names, and equal names can belong
        // to two files.
        std::error_code oIgnored;
        if (EndsWith(sName, oExcluded.sFileName) &&
            std::filesystem::equivalent(SystemPath(fnPath()), SystemPath(oExcluded.sName.c_str()), oIgnored))
            return true;
    }
    return HasNameOfUnfinishedCatalog(sName.c_str()) && IsUnfinishedCatalog(fnPath());
}

bool CTreeWalker::FindMatching(const CTOVStringA& oSearchDirectory, const CNameList& aPatterns,
                               tMatching& aMatching) const
{
    bool bKnown = true;
    std::string sName;
    aMatching.resize(static_cast<std::size_t>(aPatterns.GetSize()));
    for (long i = 0; i < aPatterns.GetSize() && !m_bStop; ++i)
    {
        CSearch oSearch(JoinPath(oSearchDirectory, aPatterns[i]));
        for (; oSearch.HasEntry() && !m_bStop; oSearch.Next())
        {
            oSearch.GetName(sName);
            aMatching[static_cast<std::size_t>(i)].insert(sName);
        }
        bKnown = bKnown && !oSearch.HasFailed();
    }
    return bKnown;
}

// Gives the files of a directory their paths. They have these names.
void CTreeWalker::AddPaths(sDirectory& oDirectory, const std::vector<std::string>& aNames)
{
    std::string sPath;
    const std::lock_guard<std::mutex> oGuard(m_oPathsMutex);
    for (std::size_t n = 0; n < oDirectory.aFiles.size(); ++n)
    {
        sPath = oDirectory.sRelative;
        AppendPath(sPath, aNames[n].c_str());
        oDirectory.aFiles[n].szPath = m_oPaths.Add(sPath);
    }
}

// Adds the files of a directory and of those below it in the order of their paths, and frees them here. A subdirectory
// has its place where a file would be whose name is that of the subdirectory and a '/'.
void CTreeWalker::CollectFiles(sDirectory& oDirectory)
{
    std::vector<std::size_t> aBelow(oDirectory.nFirstChild > 0 ? oDirectory.aSubdirectories.size() : 0);
    std::iota(aBelow.begin(), aBelow.end(), oDirectory.nFirstChild);
    const auto fnKey = [&](std::size_t nChild) { return m_aTree[nChild].sRelative + '/'; };
    std::sort(aBelow.begin(), aBelow.end(),
              [&](std::size_t nFirst, std::size_t nSecond) { return fnKey(nFirst) < fnKey(nSecond); });

    std::size_t nFile = 0;
    const auto fnAddFilesBefore = [&](const char* szPath) {
        for (; nFile < oDirectory.aFiles.size(); ++nFile)
        {
            if (szPath != nullptr && std::strcmp(oDirectory.aFiles[nFile].szPath, szPath) > 0)
                return;
            m_aFiles.Add(oDirectory.aFiles[nFile]);
        }
    };
    for (const std::size_t nChild : aBelow)
    {
        fnAddFilesBefore(fnKey(nChild).c_str());
        CollectFiles(m_aTree[nChild]);
    }
    fnAddFilesBefore(nullptr);
    std::vector<sFileRecord>().swap(oDirectory.aFiles);
    for (std::size_t n = 0; n < oDirectory.aMatched.size(); ++n)
        m_aMatched[n] = m_aMatched[n] || oDirectory.aMatched[n];
}

// Adds the unreadable directories in the order in which the searches have found them.
void CTreeWalker::CollectUnreadable(const sDirectory& oDirectory)
{
    if (oDirectory.bUnreadable)
        m_aUnreadable.Add(FullPath(oDirectory.sRelative));
    for (std::size_t n = 0; oDirectory.nFirstChild > 0 && n < oDirectory.aSubdirectories.size(); ++n)
        CollectUnreadable(m_aTree[oDirectory.nFirstChild + n]);
}
