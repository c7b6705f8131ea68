#include "Commands.h"

#include "CatalogFile.h"
#include "Checksummer.h"
#include "Console.h"
#include "TreeWalker.h"

#include <Path/TOVPath.h>

#include <cstdio>
#include <string>
#include <vector>

namespace
{
typedef std::chrono::steady_clock tClock;

constexpr char INTERRUPTED[] = "interrupted";

// Holds what a walk through a catalogue's directories has found besides the files.
struct sFound
{
    tUnreadable aUnreadable;

    // The directories and patterns for which no file was found.
    CNameList aEmptyDirectories;
    CNameList aUnmatchedPatterns;
};

// Finds the present files of a catalogue's directories, sorted by CompareRecords. They have no checksums yet. Throws
// when interrupted.
sFound FindFiles(const sCatalog& oCatalog, const CTOVStringA& oCatalogName, CTOVArray<sFileRecord>& aFiles,
                 int nThreads, const std::atomic<bool>& bStop)
{
    sFound oFound;
    CTreeWalker oWalker(oCatalog.aPatterns, aFiles, oFound.aUnreadable, bStop, nThreads);
    oWalker.Exclude(oCatalogName);
    for (long i = 0; i < oCatalog.aDirectories.GetSize(); ++i)
    {
        const long lBefore = aFiles.GetSize() + oFound.aUnreadable.GetSize();
        oWalker.Walk(static_cast<int>(i), oCatalog.aDirectories[i]);
        if (aFiles.GetSize() + oFound.aUnreadable.GetSize() == lBefore)
            oFound.aEmptyDirectories.Add(oCatalog.aDirectories[i]);
    }
    for (long i = 0; i < oCatalog.aPatterns.GetSize(); ++i)
    {
        if (!oWalker.HasMatched(i))
            oFound.aUnmatchedPatterns.Add(oCatalog.aPatterns[i]);
    }
    if (bStop)
        throw CCatalogError(INTERRUPTED);
    return oFound;
}

unsigned long long TotalSize(const CTOVArray<sFileRecord>& aFiles)
{
    unsigned long long ullSize = 0;
    for (long i = 0; i < aFiles.GetSize(); ++i)
        ullSize += aFiles[i].ullSize;
    return ullSize;
}

// Reads all files, with a progress line. Returns a result for each. Throws when interrupted.
std::vector<sChecksum> ReadFiles(const sCatalog& oCatalog, const CTOVArray<sFileRecord>& aFiles, int nThreads,
                                 const std::atomic<bool>& bStop)
{
    std::vector<sChecksum> aResults;
    CProgressLine oLine(aFiles.GetSize(), TotalSize(aFiles));
    if (!RunChecksums(oCatalog, aFiles, aResults, nThreads, bStop,
                      [&](const sChecksumProgress& oProgress) { oLine.Show(oProgress); }))
        throw CCatalogError(bStop ? INTERRUPTED : "no thread could be started");
    return aResults;
}

void Report(std::FILE* pOutput, const char* szWhat, const CTOVStringA& oName)
{
    std::fprintf(pOutput, "%-10s %s\n", szWhat, ~Printable(oName));
}

void ReportUnreadable(std::FILE* pOutput, const tUnreadable& aUnreadable)
{
    for (long i = 0; i < aUnreadable.GetSize(); ++i)
        Report(pOutput, "unreadable", aUnreadable[i]);
}

// Reports the directories and patterns for which no file was found.
void ReportNothing(const sFound& oFound)
{
    for (long i = 0; i < oFound.aEmptyDirectories.GetSize(); ++i)
        Report(stderr, "empty", oFound.aEmptyDirectories[i]);
    for (long i = 0; i < oFound.aUnmatchedPatterns.GetSize(); ++i)
        Report(stderr, "unmatched", oFound.aUnmatchedPatterns[i]);
}

std::string JoinNames(const CNameList& aNames)
{
    std::string sNames;
    for (long i = 0; i < aNames.GetSize(); ++i)
        sNames += (i > 0 ? ", " : "") + std::string(~Printable(aNames[i]));
    return sNames;
}

// Makes the error for a catalogue without files, which would agree with everything. bFound: there are files, but none
// can be read.
CCatalogError NothingToCatalog(const CTOVStringA& oName, const sCatalog& oCatalog, bool bFound)
{
    std::string sWhy = "no file in " + JoinNames(oCatalog.aDirectories);
    if (bFound)
        sWhy += " can be read";
    else if (!oCatalog.aPatterns.IsEmpty())
        sWhy += " matches " + JoinNames(oCatalog.aPatterns);
    return CCatalogError(sWhy + ": " + ~Printable(oName) + " is not written (--allow-empty does it)");
}

// All catalogues of this program are sorted.
bool IsSorted(const CTOVArray<sFileRecord>& aFiles)
{
    long lSorted = 1;
    while (lSorted < aFiles.GetSize() && CompareRecords(aFiles[lSorted - 1], aFiles[lSorted]) <= 0)
        ++lSorted;
    return lSorted >= aFiles.GetSize();
}

// The counts of a verification.
struct sDifferences
{
    long lChanged = 0;
    long lMissing = 0;
    long lNew = 0;
    long lUnreadable = 0;

    bool Any() const { return lChanged + lMissing + lNew + lUnreadable > 0; }
};

// Reports the files that are only in the catalogue, or only in the directories, and removes them from the lists. What
// remains has the same indices in both.
void CompareLists(sCatalog& oCatalog, CTOVArray<sFileRecord>& aNow, sDifferences& oDifferences)
{
    CTOVArray<sFileRecord>& aThen = oCatalog.aFiles;
    long lCommon = 0;
    long lThen = 0;
    long lNow = 0;
    while (lThen < aThen.GetSize() || lNow < aNow.GetSize())
    {
        int nOrder = lThen == aThen.GetSize() ? 1 : -1;
        if (lThen < aThen.GetSize() && lNow < aNow.GetSize())
            nOrder = CompareRecords(aThen[lThen], aNow[lNow]);

        if (nOrder < 0)
        {
            Report(stdout, "missing", FullName(oCatalog, aThen[lThen++]));
            ++oDifferences.lMissing;
        }
        else if (nOrder > 0)
        {
            Report(stdout, "new", FullName(oCatalog, aNow[lNow++]));
            ++oDifferences.lNew;
        }
        else
        {
            aThen[lCommon] = aThen[lThen++];
            aNow[lCommon++] = aNow[lNow++];
        }
    }
    aThen.Resize(lCommon);
    aNow.Resize(lCommon);
}

void CompareContents(const sCatalog& oCatalog, const CTOVArray<sFileRecord>& aNow,
                     const std::vector<sChecksum>& aResults, sDifferences& oDifferences)
{
    for (long i = 0; i < aNow.GetSize(); ++i)
    {
        const sFileRecord& oThen = oCatalog.aFiles[i];
        const sChecksum& oResult = aResults[static_cast<std::size_t>(i)];
        if (!oResult.IsWhole(aNow[i]))
        {
            Report(stdout, "unreadable", FullName(oCatalog, aNow[i]));
            ++oDifferences.lUnreadable;
        }
        else if (oResult.ullSize != oThen.ullSize || oResult.dwCrc != oThen.dwCrc)
        {
            Report(stdout, "changed", FullName(oCatalog, aNow[i]));
            ++oDifferences.lChanged;
        }
    }
}

// Completes the records by what has been read. Removes those of files that could not be read, and adds their names to
// the unreadable ones.
void TakeResults(sCatalog& oCatalog, const std::vector<sChecksum>& aResults, tUnreadable& aUnreadable)
{
    CTOVArray<sFileRecord>& aFiles = oCatalog.aFiles;
    long lWhole = 0;
    for (long i = 0; i < aFiles.GetSize(); ++i)
    {
        const sChecksum& oResult = aResults[static_cast<std::size_t>(i)];
        if (!oResult.IsWhole(aFiles[i]))
        {
            aUnreadable.Add(FullName(oCatalog, aFiles[i]));
            continue;
        }
        aFiles[i].ullSize = oResult.ullSize;
        aFiles[i].dwCrc = oResult.dwCrc;
        if (lWhole < i)
            aFiles[lWhole] = aFiles[i];
        ++lWhole;
    }
    aFiles.Resize(lWhole);
}

unsigned long long TotalRead(const std::vector<sChecksum>& aResults)
{
    unsigned long long ullSize = 0;
    for (const sChecksum& oResult : aResults)
        ullSize += oResult.ullSize;
    return ullSize;
}
} // namespace

int CreateCatalog(const sCreateOptions& oOptions, const std::atomic<bool>& bStop)
{
    const tClock::time_point oStart = tClock::now();
    sCatalog oCatalog;
    oCatalog.aDirectories = oOptions.aDirectories;
    oCatalog.aPatterns = oOptions.aPatterns;
    for (long i = 0; i < oCatalog.aDirectories.GetSize(); ++i)
    {
        const CTOVPath oDirectory(oCatalog.aDirectories[i]);
        if (!oDirectory.DoesExist() || !oDirectory.IsDirectory())
            throw CCatalogError(std::string(~Printable(oCatalog.aDirectories[i])) + " is no directory");
    }
    RequireReplaceable(oOptions.oCatalog);

    const sFound oFound = FindFiles(oCatalog, oOptions.oCatalog, oCatalog.aFiles, oOptions.nThreads, bStop);
    const bool bFoundFiles = !oCatalog.aFiles.IsEmpty();
    tUnreadable aUnreadable = oFound.aUnreadable;
    const std::vector<sChecksum> aResults = ReadFiles(oCatalog, oCatalog.aFiles, oOptions.nThreads, bStop);
    TakeResults(oCatalog, aResults, aUnreadable);
    const bool bWorthless = oCatalog.aFiles.IsEmpty() && !oOptions.bAllowEmpty;
    if (!bWorthless)
    {
        SaveCatalog(oOptions.oCatalog, oCatalog);
        ReportNothing(oFound);
    }
    ReportUnreadable(stderr, aUnreadable);
    if (bWorthless)
        throw NothingToCatalog(oOptions.oCatalog, oCatalog, bFoundFiles);

    std::printf("%s catalogued", ~DescribeWork(oCatalog.aFiles.GetSize(), TotalRead(aResults), tClock::now() - oStart));
    if (!aUnreadable.IsEmpty())
        std::printf(", %d unreadable", static_cast<int>(aUnreadable.GetSize()));
    std::printf("\n");
    return aUnreadable.IsEmpty() ? eExitSame : eExitDifferences;
}

int VerifyCatalog(const CTOVStringA& oName, int nThreads, bool bAllowEmpty, const std::atomic<bool>& bStop)
{
    const tClock::time_point oStart = tClock::now();
    sCatalog oCatalog = LoadCatalog(oName);
    if (oCatalog.aFiles.IsEmpty() && !bAllowEmpty)
        throw CCatalogError(std::string(~Printable(oName)) + " holds no file (--allow-empty verifies it all the same)");
    if (!IsSorted(oCatalog.aFiles))
        oCatalog.aFiles.Sort(&CompareRecords);

    CTOVArray<sFileRecord> aNow;
    const sFound oFound = FindFiles(oCatalog, oName, aNow, nThreads, bStop);
    sDifferences oDifferences;
    ReportUnreadable(stdout, oFound.aUnreadable);
    oDifferences.lUnreadable = oFound.aUnreadable.GetSize();

    CompareLists(oCatalog, aNow, oDifferences);
    const std::vector<sChecksum> aResults = ReadFiles(oCatalog, aNow, nThreads, bStop);
    CompareContents(oCatalog, aNow, aResults, oDifferences);

    std::printf("%s verified: ", ~DescribeWork(aNow.GetSize(), TotalRead(aResults), tClock::now() - oStart));
    if (!oDifferences.Any())
    {
        std::printf("all unchanged\n");
        return eExitSame;
    }
    std::printf("%d changed, %d missing, %d new, %d unreadable\n", static_cast<int>(oDifferences.lChanged),
                static_cast<int>(oDifferences.lMissing), static_cast<int>(oDifferences.lNew),
                static_cast<int>(oDifferences.lUnreadable));
    return eExitDifferences;
}

int ListCatalog(const CTOVStringA& oName)
{
    long lFiles = 0;
    unsigned long long ullBytes = 0;
    VisitCatalog(oName, [&](const sCatalog& oCatalog, const sFileRecord& oRecord) {
        CTOVStringA oLine;
        oLine.Format("%08x %14I64u  %s", oRecord.dwCrc, oRecord.ullSize, ~Printable(FullName(oCatalog, oRecord)));
        std::printf("%s\n", ~oLine);
        ++lFiles;
        ullBytes += oRecord.ullSize;
    });
    std::printf("%s\n", ~DescribeFiles(lFiles, ullBytes));
    return eExitSame;
}
