#include "TreeWalker.h"

#include "UnfinishedCatalog.h"

#include <Path/TOVPath.h>
#include <TOVPlatform/TOVFile.h>

#include <cstring>
#include <filesystem>
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

    CTOVStringA GetName() const
    {
        // The field has no terminator if the name fills it.
        const void* pEnd = std::memchr(m_oFound.szName, '\0', sizeof(m_oFound.szName));
        const long lLength = pEnd != nullptr ? static_cast<long>(static_cast<const char*>(pEnd) - m_oFound.szName)
                                             : static_cast<long>(sizeof(m_oFound.szName));
        CTOVStringA oName;
        if (lLength > 0)
            oName.Copy(m_oFound.szName, static_cast<int>(lLength));
        return oName;
    }

    unsigned long long GetSize() const { return m_oFound.ullSize; }

    bool IsDirectory() const { return (m_oFound.ulAttributes & TOVFile::eFileAttributeDirectory) != 0; }

    // Devices, pipes and dead links have no attributes.
    bool IsFile() const { return m_oFound.ulAttributes != 0 && !IsDirectory(); }

private:
    TOVFile::sTOVFindData m_oFound;
    tHandle m_hSearch;
    TOVFile::eFindResult m_eResult;
};

CTOVStringA WorkingDirectory()
{
    return CTOVPath::GetWorkingDirectory().AsString();
}

// A search reads '*' and '?' in the directory's own name as wildcards. So this object makes such a directory the
// working directory as long as it exists. GetName returns the directory's name for a search.
class CSearchPlace
{
public:
    explicit CSearchPlace(const CTOVStringA& oDirectory) : m_oName(oDirectory)
    {
        if (oDirectory.FindOneOf("*?") < 0)
            return;
        m_oReturnTo = WorkingDirectory();
        if (TOVDirectory::Change(~oDirectory) == TOVDirectory::eDirectorySuccess)
            m_oName = ".";
        else
            m_oReturnTo = CTOVStringA();
    }

    ~CSearchPlace()
    {
        if (!m_oReturnTo.IsEmpty())
            TOVDirectory::Change(~m_oReturnTo);
    }

    CSearchPlace(const CSearchPlace&) = delete;
    CSearchPlace& operator=(const CSearchPlace&) = delete;

    const CTOVStringA& GetName() const { return m_oName; }

private:
    CTOVStringA m_oName;
    CTOVStringA m_oReturnTo;
};

// Links to directories are skipped: they can lead back to a parent directory, and their targets are found without them.
bool IsLink(const CTOVStringA& oName)
{
    std::error_code oIgnored;
    return std::filesystem::is_symlink(SystemPath(oName), oIgnored);
}

bool EndsWith(const CTOVStringA& oName, const CTOVStringA& oEnd)
{
    const long lStart = oName.GetLength() - oEnd.GetLength();
    return lStart >= 0 && CTOVStringA(~oName + lStart).CompareNoCase(~oEnd) == 0;
}

bool IsNavigation(const CTOVStringA& oName)
{
    return oName.Compare(".") == 0 || oName.Compare("..") == 0;
}
} // namespace

CTreeWalker::CTreeWalker(const CTOVArray<CTOVStringA>& aPatterns, CTOVArray<sFileRecord>& aFiles,
                         tUnreadable& aUnreadable, const std::atomic<bool>& bStop)
    : m_aPatterns(aPatterns), m_aFiles(aFiles), m_aUnreadable(aUnreadable), m_bStop(bStop),
      m_aMatched(static_cast<std::size_t>(aPatterns.GetSize()))
{
}

void CTreeWalker::Exclude(const CTOVStringA& oName)
{
    m_aExcluded.Add(oName);
}

void CTreeWalker::Walk(long lDirectory, const CTOVStringA& oDirectory)
{
    m_lDirectory = lDirectory;
    m_oRoot = oDirectory;
    WalkBelow(CTOVStringA(), 0);
}

void CTreeWalker::WalkBelow(const CTOVStringA& oRelative, int nDepth)
{
    const CTOVStringA oDirectory = oRelative.IsEmpty() ? m_oRoot : JoinPath(m_oRoot, oRelative);
    CTOVArray<CTOVStringA> aSubdirectories;
    std::vector<std::string> aNames; // the names of the files found, in their order
    tMatching aMatching;
    const long lFirstFile = m_aFiles.GetSize();
    {
        const CSearchPlace oPlace(oDirectory);
        CSearch oSearch(JoinPath(oPlace.GetName(), "*.*"));
        if (!oSearch.HasEntry() || nDepth > DEEPEST_LEVEL)
        {
            m_aUnreadable.Add(oDirectory);
            return;
        }

        const bool bMatchingKnown = FindMatching(oPlace.GetName(), aMatching);
        for (; oSearch.HasEntry() && !m_bStop; oSearch.Next())
        {
            const CTOVStringA oName = oSearch.GetName();
            if (oSearch.IsDirectory() && !IsNavigation(oName))
                aSubdirectories.Add(oName);
            else if (oSearch.IsFile() && IsWanted(oName, aMatching))
            {
                sFileRecord oRecord;
                oRecord.lDirectory = m_lDirectory;
                oRecord.oPath = oRelative.IsEmpty() ? oName : JoinPath(oRelative, oName);
                oRecord.ullSize = oSearch.GetSize();
                m_aFiles.Add(oRecord);
                aNames.push_back(~oName);
            }
        }
        if (oSearch.HasFailed() || !bMatchingKnown)
            m_aUnreadable.Add(oDirectory);
    }

    // This is done after the search, which may have changed the working directory, to which names are relative.
    for (long i = m_aFiles.GetSize() - 1; i >= lFirstFile; --i)
    {
        if (IsExcluded(JoinPath(m_oRoot, m_aFiles[i].oPath)))
            m_aFiles.RemoveAt(i);
        else
            NoteMatches(aNames[static_cast<std::size_t>(i - lFirstFile)], aMatching);
    }

    for (long i = 0; i < aSubdirectories.GetSize() && !m_bStop; ++i)
    {
        const CTOVStringA oBelow = oRelative.IsEmpty() ? aSubdirectories[i] : JoinPath(oRelative, aSubdirectories[i]);
        if (!IsLink(JoinPath(m_oRoot, oBelow)))
            WalkBelow(oBelow, nDepth + 1);
    }
}

bool CTreeWalker::IsWanted(const CTOVStringA& oName, const tMatching& aMatching) const
{
    bool bWanted = m_aPatterns.IsEmpty();
    for (const std::set<std::string>& aNames : aMatching)
        bWanted = bWanted || aNames.count(~oName) > 0;
    return bWanted;
}

bool CTreeWalker::IsExcluded(const CTOVStringA& oName) const
{
    for (long i = 0; i < m_aExcluded.GetSize(); ++i)
    {
        // Comparing the names is only a quick first test: one file can have several names, and equal names can belong
        // to two files.
        std::error_code oIgnored;
        if (EndsWith(oName, CTOVPath(m_aExcluded[i]).GetFileName(true)) &&
            std::filesystem::equivalent(SystemPath(oName), SystemPath(m_aExcluded[i]), oIgnored))
            return true;
    }
    return IsUnfinishedCatalog(oName);
}

bool CTreeWalker::FindMatching(const CTOVStringA& oSearchDirectory, tMatching& aMatching) const
{
    bool bKnown = true;
    aMatching.resize(static_cast<std::size_t>(m_aPatterns.GetSize()));
    for (long i = 0; i < m_aPatterns.GetSize(); ++i)
    {
        CSearch oSearch(JoinPath(oSearchDirectory, m_aPatterns[i]));
        for (; oSearch.HasEntry(); oSearch.Next())
            aMatching[static_cast<std::size_t>(i)].insert(~oSearch.GetName());
        bKnown = bKnown && !oSearch.HasFailed();
    }
    return bKnown;
}

void CTreeWalker::NoteMatches(const std::string& sName, const tMatching& aMatching)
{
    for (std::size_t n = 0; n < aMatching.size(); ++n)
        m_aMatched[n] = m_aMatched[n] || aMatching[n].count(sName) > 0;
}
