#include "TreeWalker.h"

#include <Path/TOVPath.h>
#include <TOVPlatform/TOVFile.h>

#include <cstring>
#include <filesystem>
#include <system_error>

namespace TOVFile = TOVPlatform::TOVFile;
namespace TOVDirectory = TOVPlatform::TOVDirectory;

namespace
{
// A mount can lead back up: deeper than this nobody keeps files.
const int DEEPEST_LEVEL = 200;

const unsigned long long NOTHING_FOUND = static_cast<unsigned long long>(-1);

// A directory search that closes itself.
class CSearch
{
public:
    explicit CSearch(const CTOVStringA& oPattern) : m_hSearch(TOVFile::FindFirst(~oPattern, &m_oFound))
    {
        m_bFound = m_hSearch != NOTHING_FOUND;
    }

    ~CSearch()
    {
        if (m_hSearch != NOTHING_FOUND)
            TOVFile::FindClose(m_hSearch);
    }

    CSearch(const CSearch&) = delete;
    CSearch& operator=(const CSearch&) = delete;

    // True while an entry stands; Next moves on.
    bool HasEntry() const { return m_bFound; }

    void Next() { m_bFound = TOVFile::FindNext(m_hSearch, &m_oFound); }

    CTOVStringA GetName() const
    {
        // The field holds no terminator when the name fills it.
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

    // Devices, pipes and dead links come without any attribute.
    bool IsFile() const { return m_oFound.ulAttributes != 0 && !IsDirectory(); }

private:
    TOVFile::sTOVFindData m_oFound;
    unsigned long long m_hSearch;
    bool m_bFound;
};

CTOVStringA WorkingDirectory()
{
    return CTOVPath::GetWorkingDirectory().AsString();
}

// A search reads '*' and '?' in the directory's own name as wildcards: such a directory is searched from inside.
// While this lives, the name to search below is GetName.
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

// A link to a directory can lead back up, and what it leads to is found at its own place.
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

bool Contains(const CTOVArray<CTOVStringA>& aNames, const CTOVStringA& oName)
{
    for (long i = 0; i < aNames.GetSize(); ++i)
    {
        if (aNames[i].Compare(~oName) == 0)
            return true;
    }
    return false;
}
} // namespace

CTreeWalker::CTreeWalker(const CTOVArray<CTOVStringA>& aPatterns, CTOVArray<sFileRecord>& aFiles,
                         tUnreadable& aUnreadable)
    : m_aPatterns(aPatterns), m_aFiles(aFiles), m_aUnreadable(aUnreadable)
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
    const long lFirstFile = m_aFiles.GetSize();
    {
        const CSearchPlace oPlace(oDirectory);
        CSearch oSearch(JoinPath(oPlace.GetName(), "*.*"));
        if (!oSearch.HasEntry() || nDepth > DEEPEST_LEVEL)
        {
            m_aUnreadable.Add(oDirectory);
            return;
        }

        const CTOVArray<CTOVStringA> aMatching = FindMatching(oPlace.GetName());
        for (; oSearch.HasEntry(); oSearch.Next())
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
            }
        }
    }

    // Only now: names count from the working directory, and the search may have been inside another.
    for (long i = m_aFiles.GetSize() - 1; i >= lFirstFile; --i)
    {
        if (IsExcluded(JoinPath(m_oRoot, m_aFiles[i].oPath)))
            m_aFiles.RemoveAt(i);
    }

    for (long i = 0; i < aSubdirectories.GetSize(); ++i)
    {
        const CTOVStringA oBelow = oRelative.IsEmpty() ? aSubdirectories[i] : JoinPath(oRelative, aSubdirectories[i]);
        if (!IsLink(JoinPath(m_oRoot, oBelow)))
            WalkBelow(oBelow, nDepth + 1);
    }
}

bool CTreeWalker::IsWanted(const CTOVStringA& oName, const CTOVArray<CTOVStringA>& aMatching) const
{
    return m_aPatterns.IsEmpty() || Contains(aMatching, oName);
}

bool CTreeWalker::IsExcluded(const CTOVStringA& oName) const
{
    for (long i = 0; i < m_aExcluded.GetSize(); ++i)
    {
        // The name is only the quick part: one file has many spellings, and names that are alike can be two files.
        std::error_code oIgnored;
        if (EndsWith(oName, CTOVPath(m_aExcluded[i]).GetFileName(true)) &&
            std::filesystem::equivalent(SystemPath(oName), SystemPath(m_aExcluded[i]), oIgnored))
            return true;
    }
    return false;
}

CTOVArray<CTOVStringA> CTreeWalker::FindMatching(const CTOVStringA& oSearchDirectory) const
{
    CTOVArray<CTOVStringA> aMatching;
    for (long i = 0; i < m_aPatterns.GetSize(); ++i)
    {
        for (CSearch oSearch(JoinPath(oSearchDirectory, m_aPatterns[i])); oSearch.HasEntry(); oSearch.Next())
            aMatching.Add(oSearch.GetName());
    }
    return aMatching;
}
