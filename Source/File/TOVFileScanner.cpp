#include <File/TOVFileScanner.h>

#include <File/TOVOwnPath.h>
#include <TOVPlatform/TOVFile.h>

template class TOV_TEMPLATE_DEFINE CTOVArray<CTOVPath>;

namespace
{
const char EVERYTHING[] = "*.*";

bool IsDirectory(const TOVPlatform::TOVFile::sTOVFindData& oFindData)
{
    return (oFindData.ulAttributes & TOVPlatform::TOVFile::eFileAttributeDirectory) != 0;
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
    m_aScanDirectories.Add(oDirectory);
    m_aScanPatterns.Add(oPattern);
}

void CTOVFileScanner::SetIncludeSubDirs(bool bIncludeSubDirs)
{
    m_bIncludeSubDirs = bIncludeSubDirs;
}

void CTOVFileScanner::Run(tScannerCallback pCallback, unsigned long long ullUserValue)
{
    const long lNumDirectories = m_aScanDirectories.GetSize(); // what the callback adds is for the next run
    for (long i = 0; i < lNumDirectories; ++i)
    {
        const CTOVPath oDirectory(m_aScanDirectories.GetAt(i)); // an added directory can move the array's elements
        const CTOVPath oPattern(m_aScanPatterns.GetAt(i));
        ScanForFiles(oDirectory, oPattern, m_bIncludeSubDirs, pCallback, ullUserValue);
    }
}

// Settled: a stop ends the scan of this directory, and nobody above learns of it. A search that a throwing callback
// leaves stays open.
void CTOVFileScanner::ScanForFiles(const CTOVPath& oDirectory, const CTOVPath& oPattern, bool bIncludeSubDirs,
                                   tScannerCallback pCallback, unsigned long long ullUserValue)
{
    using namespace TOVPlatform;

    sTOVFileDescriptor oDescriptor;
    oDescriptor.oDirectory = oDirectory;
    oDescriptor.oSearchPath = MakeOwnPath(oDirectory);
    oDescriptor.oSearchPath.Append(CTOVPath(EVERYTHING));

    CTOVArray<CTOVStringA> aSubDirectories;
    FetchSubDirectories(CTOVPath(oDescriptor.oSearchPath.AsString()), aSubDirectories);

    oDescriptor.oSearchPath = MakeOwnPath(oDirectory);
    oDescriptor.oSearchPath.Append(oPattern);

    bool bStopped = false;
    TOVFile::sTOVFindData oFindData;
    const unsigned long long hFind = TOVFile::FindFirst(~oDescriptor.oSearchPath, &oFindData);
    for (bool bFound = hFind != FILE_INVALID_HANDLE; bFound && !bStopped;)
    {
        if (!IsDirectory(oFindData))
        {
            oDescriptor.oFileName = oFindData.szName;
            bStopped = pCallback(eScannerModeFile, &oDescriptor, ullUserValue) == eScannerStop;
        }
        if (!bStopped)
            bFound = TOVFile::FindNext(hFind, &oFindData);
    }
    TOVFile::FindClose(hFind);

    if (bStopped || !bIncludeSubDirs)
        return;

    for (long i = 0; i < aSubDirectories.GetSize(); ++i)
        ScanForFiles(CTOVPath(aSubDirectories.GetAt(i)), oPattern, true, pCallback, ullUserValue);
}

// Settled: the first entry is dropped whatever it is, and so is every directory whose name begins with a full stop; the
// search path's own "*.*" stays inside the paths that come out.
void CTOVFileScanner::FetchSubDirectories(const CTOVPath& oSearchPath, CTOVArray<CTOVStringA>& aSubDirectories) const
{
    using namespace TOVPlatform;

    TOVFile::sTOVFindData oFindData;
    const unsigned long long hFind = TOVFile::FindFirst(~oSearchPath, &oFindData);
    while (TOVFile::FindNext(hFind, &oFindData))
    {
        if (IsDirectory(oFindData) && oFindData.szName[0] != '.')
        {
            CTOVPath oSubDirectory(oSearchPath);
            oSubDirectory.Append(CTOVPath(oFindData.szName));
            aSubDirectories.Add(oSubDirectory.AsString());
        }
    }
    TOVFile::FindClose(hFind);
}
