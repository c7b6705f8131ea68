#include "Commands.h"

#include "CatalogFile.h"
#include "Checksummer.h"
#include "Console.h"
#include "TreeWalker.h"

#include <Path/TOVPath.h>

#include <cstdio>
#include <string>

namespace
{
typedef std::chrono::steady_clock tClock;

constexpr char INTERRUPTED[] = "interrupted";

// Holds the present contents of a catalogue's directories.
struct sFound
{
    CTOVArray<sFileRecord> aFiles; // sorted, without checksums
    tUnreadable aUnreadable;

    // The directories and patterns for which no file was found.
    CTOVArray<CTOVStringA> aEmptyDirectories;
    CTOVArray<CTOVStringA> aUnmatchedPatterns;
};

// Finds the present files of a catalogue. Throws when interrupted.
sFound FindFiles(const sCatalog& oCatalog, const CTOVStringA& oCatalogName, const std::atomic<bool>& bStop)
{
    sFound oFound;
    CTreeWalker oWalker(oCatalog.aPatterns, oFound.aFiles, oFound.aUnreadable, bStop);
    oWalker.Exclude(oCatalogName);
    for (long i = 0; i < oCatalog.aDirectories.GetSize(); ++i)
    {
        const long lBefore = oFound.aFiles.GetSize() + oFound.aUnreadable.GetSize();
        oWalker.Walk(i, oCatalog.aDirectories[i]);
        if (oFound.aFiles.GetSize() + oFound.aUnreadable.GetSize() == lBefore)
            oFound.aEmptyDirectories.Add(oCatalog.aDirectories[i]);
    }
    for (long i = 0; i < oCatalog.aPatterns.GetSize(); ++i)
    {
        if (!oWalker.HasMatched(i))
            oFound.aUnmatchedPatterns.Add(oCatalog.aPatterns[i]);
    }
    if (bStop)
        throw CCatalogError(INTERRUPTED);
    oFound.aFiles.Sort(&CompareRecords);
    return oFound;
}

CTOVArray<sChecksumJob> MakeJobs(const sCatalog& oCatalog, const CTOVArray<sFileRecord>& aFiles)
{
    CTOVArray<sChecksumJob> aJobs;
    aJobs.Resize(aFiles.GetSize());
    for (long i = 0; i < aFiles.GetSize(); ++i)
    {
        aJobs[i].oName = FullName(oCatalog, aFiles[i]);
        aJobs[i].ullExpectedSize = aFiles[i].ullSize;
    }
    return aJobs;
}

unsigned long long TotalSize(const CTOVArray<sFileRecord>& aFiles)
{
    unsigned long long ullSize = 0;
    for (long i = 0; i < aFiles.GetSize(); ++i)
        ullSize += aFiles[i].ullSize;
    return ullSize;
}

// Reads all files, with a progress line. Throws when interrupted.
CTOVArray<sChecksumJob> ReadFiles(const sCatalog& oCatalog, const CTOVArray<sFileRecord>& aFiles, int nThreads,
                                  const std::atomic<bool>& bStop)
{
    CTOVArray<sChecksumJob> aJobs = MakeJobs(oCatalog, aFiles);
    CProgressLine oLine(aFiles.GetSize(), TotalSize(aFiles));
    if (!RunChecksums(aJobs, nThreads, bStop, [&](const sChecksumProgress& oProgress) { oLine.Show(oProgress); }))
        throw CCatalogError(bStop ? INTERRUPTED : "no thread could be started");
    return aJobs;
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

std::string JoinNames(const CTOVArray<CTOVStringA>& aNames)
{
    std::string sNames;
    for (long i = 0; i < aNames.GetSize(); ++i)
        sNames += (i > 0 ? ", " : "") + std::string(~Printable(aNames[i]));
    return sNames;
}

// Makes the error for a catalogue without files, which would agree with everything.
CCatalogError NothingToCatalog(const CTOVStringA& oName, const sCatalog& oCatalog, const sFound& oFound)
{
    std::string sWhy = "no file in " + JoinNames(oCatalog.aDirectories);
    if (!oFound.aFiles.IsEmpty())
        sWhy += " can be read";
    else if (!oCatalog.aPatterns.IsEmpty())
        sWhy += " matches " + JoinNames(oCatalog.aPatterns);
    return CCatalogError(sWhy + ": " + ~Printable(oName) + " is not written (--allow-empty does it)");
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

// The files that are both in the catalogue and in its directories. The old and the new record have the same index.
struct sCommonFiles
{
    CTOVArray<sFileRecord> aThen;
    CTOVArray<sFileRecord> aNow;
};

// Reports the files that are only in the catalogue, or only in the directories.
void CompareLists(const sCatalog& oCatalog, const CTOVArray<sFileRecord>& aFound, sCommonFiles& oCommon,
                  sDifferences& oDifferences)
{
    long lOld = 0;
    long lNow = 0;
    while (lOld < oCatalog.aFiles.GetSize() || lNow < aFound.GetSize())
    {
        int nOrder = lOld == oCatalog.aFiles.GetSize() ? 1 : -1;
        if (lOld < oCatalog.aFiles.GetSize() && lNow < aFound.GetSize())
            nOrder = CompareRecords(oCatalog.aFiles[lOld], aFound[lNow]);

        if (nOrder < 0)
        {
            Report(stdout, "missing", FullName(oCatalog, oCatalog.aFiles[lOld++]));
            ++oDifferences.lMissing;
        }
        else if (nOrder > 0)
        {
            Report(stdout, "new", FullName(oCatalog, aFound[lNow++]));
            ++oDifferences.lNew;
        }
        else
        {
            oCommon.aThen.Add(oCatalog.aFiles[lOld++]);
            oCommon.aNow.Add(aFound[lNow++]);
        }
    }
}

void CompareContents(const CTOVArray<sFileRecord>& aThen, const CTOVArray<sChecksumJob>& aJobs,
                     sDifferences& oDifferences)
{
    for (long i = 0; i < aThen.GetSize(); ++i)
    {
        if (!aJobs[i].IsWhole())
        {
            Report(stdout, "unreadable", aJobs[i].oName);
            ++oDifferences.lUnreadable;
        }
        else if (aJobs[i].ullSize != aThen[i].ullSize || aJobs[i].dwCrc != aThen[i].dwCrc)
        {
            Report(stdout, "changed", aJobs[i].oName);
            ++oDifferences.lChanged;
        }
    }
}

unsigned long long TotalRead(const CTOVArray<sChecksumJob>& aJobs)
{
    unsigned long long ullSize = 0;
    for (long i = 0; i < aJobs.GetSize(); ++i)
        ullSize += aJobs[i].ullSize;
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

    const sFound oFound = FindFiles(oCatalog, oOptions.oCatalog, bStop);
    tUnreadable aUnreadable = oFound.aUnreadable;
    const CTOVArray<sChecksumJob> aJobs = ReadFiles(oCatalog, oFound.aFiles, oOptions.nThreads, bStop);
    for (long i = 0; i < oFound.aFiles.GetSize(); ++i)
    {
        if (!aJobs[i].IsWhole())
        {
            aUnreadable.Add(aJobs[i].oName);
            continue;
        }
        sFileRecord oRecord = oFound.aFiles[i];
        oRecord.ullSize = aJobs[i].ullSize;
        oRecord.dwCrc = aJobs[i].dwCrc;
        oCatalog.aFiles.Add(oRecord);
    }
    const bool bWorthless = oCatalog.aFiles.IsEmpty() && !oOptions.bAllowEmpty;
    if (!bWorthless)
    {
        SaveCatalog(oOptions.oCatalog, oCatalog);
        ReportNothing(oFound);
    }
    ReportUnreadable(stderr, aUnreadable);
    if (bWorthless)
        throw NothingToCatalog(oOptions.oCatalog, oCatalog, oFound);

    std::printf("%s catalogued", ~DescribeWork(oCatalog.aFiles.GetSize(), TotalRead(aJobs), tClock::now() - oStart));
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
    oCatalog.aFiles.Sort(&CompareRecords);

    const sFound oFound = FindFiles(oCatalog, oName, bStop);
    sDifferences oDifferences;
    ReportUnreadable(stdout, oFound.aUnreadable);
    oDifferences.lUnreadable = oFound.aUnreadable.GetSize();

    sCommonFiles oCommon;
    CompareLists(oCatalog, oFound.aFiles, oCommon, oDifferences);
    const CTOVArray<sChecksumJob> aJobs = ReadFiles(oCatalog, oCommon.aNow, nThreads, bStop);
    CompareContents(oCommon.aThen, aJobs, oDifferences);

    std::printf("%s verified: ", ~DescribeWork(aJobs.GetSize(), TotalRead(aJobs), tClock::now() - oStart));
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
