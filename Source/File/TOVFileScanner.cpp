#include <File/TOVFileScanner.h>

#include <File/TOVOwnPath.h>
#include <TOVPlatform/TOVFile.h>

#include <algorithm>

template class TOV_TEMPLATE_DEFINE CTOVArray<CTOVPath>;

namespace
{
constexpr char EVERYTHING[] = "*.*";

// A directory search that its destructor closes. HasBegun and Next return whether there is an entry.
class CSearch
{
public:
    explicit CSearch(const CTOVPath& oPattern)
        : m_hFind(TOVPlatform::TOVFile::FindFirst(~oPattern, &m_oFindData)), m_bForeign(false)
    {
    }

    ~CSearch()
    {
        if (!m_bForeign)
            TOVPlatform::TOVFile::FindClose(m_hFind);
    }

    CSearch(const CSearch&) = delete;
    CSearch& operator=(const CSearch&) = delete;

    bool HasBegun() const { return m_hFind != FILE_INVALID_HANDLE; }

    bool Next() { return TOVPlatform::TOVFile::FindNext(m_hFind, &m_oFindData); }

    const TOVPlatform::TOVFile::sTOVFindData& Entry() const { return m_oFindData; }

    // While the callback runs, the search is foreign: if the callback throws, the destructor leaves it open.
    void SetForeign(bool bForeign) { m_bForeign = bForeign; }

private:
    TOVPlatform::TOVFile::sTOVFindData m_oFindData;
    const tHandle m_hFind;
    bool m_bForeign;
};

bool IsDirectory(const TOVPlatform::TOVFile::sTOVFindData& oFindData)
{
    return (oFindData.ulAttributes & TOVPlatform::TOVFile::eFileAttributeDirectory) != 0;
}

// Returns how many directories have a pattern.
long CountWhole(const CTOVArray<CTOVPath>& aDirectories, const CTOVArray<CTOVStringA>& aPatterns)
{
    return std::min(aDirectories.GetSize(), aPatterns.GetSize());
}
} // namespace

CTOVFileScanner::CTOVFileScanner() : m_bIncludeSubDirs(true)
{
}

CTOVFileScanner::CTOVFileScanner(const CTOVFileScanner& oOther) = default;

CTOVFileScanner& CTOVFileScanner::operator=(const CTOVFileScanner& oOther) = default;

CTOVFileScanner::~CTOVFileScanner() = default;

void CTOVFileScanner::AddScanDirectory(const CTOVPath& oDirectory, const CTOVStringA& oPattern)
{
    // An attempt without memory may have left a directory without its pattern.
    const long lNumDirectories = CountWhole(m_aScanDirectories, m_aScanPatterns);
    m_aScanDirectories.Resize(lNumDirectories);
    m_aScanPatterns.Resize(lNumDirectories);
    m_aScanDirectories.Add(oDirectory);
    m_aScanPatterns.Add(oPattern);
}

void CTOVFileScanner::SetIncludeSubDirs(bool bIncludeSubDirs)
{
    m_bIncludeSubDirs = bIncludeSubDirs;
}

void CTOVFileScanner::Run(tScannerCallback pCallback, unsigned long long ullUserValue)
{
    // The next run scans what the callback adds.
    const long lNumDirectories = CountWhole(m_aScanDirectories, m_aScanPatterns);
    for (long i = 0; i < lNumDirectories; ++i)
    {
        const CTOVPath oDirectory(m_aScanDirectories.GetAt(i)); // an added directory can move the array's elements
        const CTOVPath oPattern(m_aScanPatterns.GetAt(i));
        ScanForFiles(oDirectory, oPattern, m_bIncludeSubDirs, pCallback, ullUserValue);
    }
}

// Settled: a stop ends the scan of this directory, and is not reported to the caller. If the callback throws, the
// search stays open.
void CTOVFileScanner::ScanForFiles(const CTOVPath& oDirectory, const CTOVPath& oPattern, bool bIncludeSubDirs,
                                   tScannerCallback pCallback, unsigned long long ullUserValue)
{
    sTOVFileDescriptor oDescriptor;
    oDescriptor.oDirectory = oDirectory;
    oDescriptor.oSearchPath = MakeOwnPath(oDirectory);
    oDescriptor.oSearchPath.Append(CTOVPath(EVERYTHING));

    CTOVArray<CTOVStringA> aSubDirectories;
    FetchSubDirectories(CTOVPath(oDescriptor.oSearchPath.AsString()), aSubDirectories);

    oDescriptor.oSearchPath = MakeOwnPath(oDirectory);
    oDescriptor.oSearchPath.Append(oPattern);

    bool bStopped = false;
    {
        CSearch oSearch(oDescriptor.oSearchPath);
        for (bool bFound = oSearch.HasBegun(); bFound && !bStopped;)
        {
            if (!IsDirectory(oSearch.Entry()))
            {
                oDescriptor.oFileName = oSearch.Entry().szName;
                oSearch.SetForeign(true);
                bStopped = pCallback(eScannerModeFile, &oDescriptor, ullUserValue) == eScannerStop;
                oSearch.SetForeign(false);
            }
            if (!bStopped)
                bFound = oSearch.Next();
        }
    }
    if (bStopped || !bIncludeSubDirs)
        return;

    for (long i = 0; i < aSubDirectories.GetSize(); ++i)
        ScanForFiles(CTOVPath(aSubDirectories.GetAt(i)), oPattern, true, pCallback, ullUserValue);
}

// Settled: the first entry is skipped whatever it is, and so is every directory whose name begins with a full stop. The
// paths that are added still contain the "*.*" of the search path.
void CTOVFileScanner::FetchSubDirectories(const CTOVPath& oSearchPath, CTOVArray<CTOVStringA>& aSubDirectories) const
{
    CSearch oSearch(oSearchPath);
    while (oSearch.Next())
    {
        if (IsDirectory(oSearch.Entry()) && oSearch.Entry().szName[0] != '.')
        {
            CTOVPath oSubDirectory(oSearchPath);
            oSubDirectory.Append(CTOVPath(oSearch.Entry().szName));
            aSubDirectories.Add(oSubDirectory.AsString());
        }
    }
}
