#include "FileSearch.h"

#include "Console.h"

#include <Path/TOVPath.h>
#include <TOVString/TOVStringStd.h>

void RequireDirectory(const CTOVStringA& oName)
{
    const CTOVPath oDirectory(oName);
    if (!oDirectory.DoesExist() || !oDirectory.IsDirectory())
        throw CCatalogError(std::string(~Printable(oName)) + " is no directory");
}

void ThrowIfInterrupted(const std::atomic<bool>& bStop)
{
    if (bStop)
        throw CCatalogError("interrupted");
}

sFound FindFiles(const sCatalog& oCatalog, const CTOVStringA& oCatalogName, CTOVArray<sFileRecord>& aFiles,
                 const sReadOptions& oOptions, const std::atomic<bool>& bStop)
{
    sFound oFound;
    CProgressLine oLine(oOptions.bQuiet);
    CTreeWalker oWalker(oCatalog.aPatterns, aFiles, *oCatalog.pPaths, oFound.aUnreadable, bStop, oOptions.nThreads);
    oWalker.Exclude(oCatalogName);
    oWalker.SkipMatching(oCatalog.aExcludes);
    if (oCatalog.bTimes)
        oWalker.KeepTimes();
    if (oLine.IsEnabled())
        oWalker.TellProgress([&](const sWalkProgress& oProgress) { oLine.Show(oProgress); });
    for (long i = 0; i < oCatalog.aDirectories.GetSize(); ++i)
    {
        const long lBefore = aFiles.GetSize() + oFound.aUnreadable.GetSize();
        oWalker.Walk(static_cast<int>(i), oCatalog.aDirectories[i]);
        if (aFiles.GetSize() + oFound.aUnreadable.GetSize() == lBefore)
            oFound.aEmptyDirectories.Add(TOVStandard::ViewOf(oCatalog.aDirectories[i]));
    }
    for (long i = 0; i < oCatalog.aPatterns.GetSize(); ++i)
    {
        if (!oWalker.HasMatched(i))
            oFound.aUnmatchedPatterns.Add(TOVStandard::ViewOf(oCatalog.aPatterns[i]));
    }
    ThrowIfInterrupted(bStop);
    return oFound;
}

std::vector<sChecksum> ReadFiles(const sCatalog& oCatalog, const CTOVArray<sFileRecord>& aFiles,
                                 const sReadOptions& oOptions, const std::atomic<bool>& bStop)
{
    std::vector<sChecksum> aResults;
    CProgressLine oLine(oOptions.bQuiet);
    const unsigned long long ullSize = TotalSize(aFiles);
    const auto fnProgress = [&](const sChecksumProgress& oProgress) {
        oLine.Show(oProgress, aFiles.GetSize(), ullSize);
    };
    if (!RunChecksums(oCatalog, aFiles, aResults, oOptions.nThreads, bStop, fnProgress))
    {
        ThrowIfInterrupted(bStop);
        throw CCatalogError("no thread could be started");
    }
    return aResults;
}

unsigned long long TotalSize(const CTOVArray<sFileRecord>& aFiles)
{
    unsigned long long ullSize = 0;
    for (long i = 0; i < aFiles.GetSize(); ++i)
        ullSize += aFiles[i].ullSize;
    return ullSize;
}

unsigned long long TotalRead(const std::vector<sChecksum>& aResults)
{
    unsigned long long ullSize = 0;
    for (const sChecksum& oResult : aResults)
        ullSize += oResult.ullSize;
    return ullSize;
}

void SortFiles(CTOVArray<sFileRecord>& aFiles)
{
    long lSorted = 1;
    while (lSorted < aFiles.GetSize() && CompareRecords(aFiles[lSorted - 1], aFiles[lSorted]) <= 0)
        ++lSorted;
    if (lSorted < aFiles.GetSize())
        aFiles.Sort(&CompareRecords);
}
