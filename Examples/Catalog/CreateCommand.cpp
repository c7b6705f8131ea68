#include "Commands.h"

#include "CatalogFile.h"
#include "Console.h"
#include "FileSearch.h"

#include <Path/TOVPath.h>
#include <TOVString/TOVStringStd.h>

#include <cstdio>
#include <string>
#include <vector>

namespace
{
typedef std::chrono::steady_clock tClock;

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
    if (!bFound && !oCatalog.aExcludes.IsEmpty())
        sWhy += " without " + JoinNames(oCatalog.aExcludes);
    return CCatalogError(sWhy + ": " + ~Printable(oName) + " is not written (--allow-empty does it)");
}

// Returns the time from which on a file's time says nothing: a file that has just changed may change again without
// another time, as times are counted in steps of up to two seconds.
unsigned long long TimeOfDoubt()
{
    constexpr unsigned long long TICKS_PER_SECOND = 10000000;
    constexpr unsigned long long SECONDS_FROM_1601_TO_1970 = 11644473600;
    constexpr unsigned long long MARGIN = 3 * TICKS_PER_SECOND;
    const auto oSince1970 = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<unsigned long long>(std::chrono::nanoseconds(oSince1970).count()) / 100 +
           SECONDS_FROM_1601_TO_1970 * TICKS_PER_SECOND - MARGIN;
}

// Finds the records of an older catalogue, which is sorted.
class CKnownFiles
{
public:
    // oNew has the directories that the records to be looked up have.
    CKnownFiles(const sCatalog& oOld, const sCatalog& oNew) : m_oOld(oOld), m_bSha256(oNew.bSha256)
    {
        for (long i = 0; i < oNew.aDirectories.GetSize(); ++i)
        {
            int nOld = static_cast<int>(oOld.aDirectories.GetSize()) - 1;
            while (nOld >= 0 && oOld.aDirectories[nOld] != oNew.aDirectories[i])
                --nOld;
            m_anOldDirectories.push_back(nOld);
        }
    }

    // Returns the older record if it is of a file with the same name, size and time, and has all checksums; otherwise
    // null.
    const sFileRecord* Find(const sFileRecord& oNow) const
    {
        sFileRecord oWanted;
        oWanted.szPath = oNow.szPath;
        oWanted.nDirectory = m_anOldDirectories[static_cast<std::size_t>(oNow.nDirectory)];
        long lFirst = 0;
        for (long lCount = m_oOld.aFiles.GetSize(); lCount > 0;)
        {
            const long lHalf = lCount / 2;
            const bool bBefore = CompareRecords(m_oOld.aFiles[lFirst + lHalf], oWanted) < 0;
            lFirst = bBefore ? lFirst + lHalf + 1 : lFirst;
            lCount = bBefore ? lCount - lHalf - 1 : lHalf;
        }
        if (lFirst == m_oOld.aFiles.GetSize())
            return nullptr;
        const sFileRecord& oFound = m_oOld.aFiles[lFirst];
        const bool bSame = CompareRecords(oFound, oWanted) == 0 && oFound.ullSize == oNow.ullSize &&
                           oFound.GetTime() == oNow.GetTime() && oFound.GetTime() != 0;
        return bSame && (oFound.GetSha256() != nullptr || !m_bSha256) ? &oFound : nullptr;
    }

private:
    const sCatalog& m_oOld;
    const bool m_bSha256;
    std::vector<int> m_anOldDirectories; // for each new one: its number in the old catalogue, or -1
};

void TakeOver(const sFileRecord& oOld, bool bSha256, sChecksum& oResult)
{
    oResult.ullSize = oOld.ullSize;
    oResult.dwCrc = oOld.dwCrc;
    oResult.bRead = true;
    if (bSha256)
        oResult.oSha256.Make() = *oOld.GetSha256();
}

// Takes over what an existing catalogue knows of files that have not changed, and reads the others. Returns a result
// for each file, as ReadFiles does; lKnown is the number of those that were not read, and ullRead that of the bytes
// read.
std::vector<sChecksum> ReadChangedFiles(const sCatalog& oCatalog, const sCreateOptions& oOptions,
                                        const std::atomic<bool>& bStop, long& lKnown, unsigned long long& ullRead)
{
    sCatalog oOld;
    if (CTOVPath(oOptions.oCatalog).DoesExist())
        oOld = LoadCatalog(oOptions.oCatalog);
    SortFiles(oOld.aFiles);
    const CKnownFiles oKnown(oOld, oCatalog);

    const CTOVArray<sFileRecord>& aFiles = oCatalog.aFiles;
    std::vector<sChecksum> aResults(static_cast<std::size_t>(aFiles.GetSize()));
    CTOVArray<sFileRecord> aToRead;
    std::vector<std::size_t> anPlaces; // of their results
    for (long i = 0; i < aFiles.GetSize(); ++i)
    {
        if (const sFileRecord* pOld = oKnown.Find(aFiles[i]))
        {
            TakeOver(*pOld, oCatalog.bSha256, aResults[static_cast<std::size_t>(i)]);
            continue;
        }
        aToRead.Add(aFiles[i]);
        anPlaces.push_back(static_cast<std::size_t>(i));
    }
    const std::vector<sChecksum> aRead = ReadFiles(oCatalog, aToRead, oOptions, bStop);
    for (std::size_t n = 0; n < aRead.size(); ++n)
        aResults[anPlaces[n]] = aRead[n];
    lKnown = aFiles.GetSize() - aToRead.GetSize();
    ullRead = TotalRead(aRead);
    return aResults;
}

// Completes the records by what has been read. Removes those of files that could not be read, and adds their names to
// the unreadable ones.
void TakeResults(sCatalog& oCatalog, const std::vector<sChecksum>& aResults, unsigned long long ullTimeOfDoubt,
                 tUnreadable& aUnreadable)
{
    CTOVArray<sFileRecord>& aFiles = oCatalog.aFiles;
    long lWhole = 0;
    for (long i = 0; i < aFiles.GetSize(); ++i)
    {
        const sChecksum& oResult = aResults[static_cast<std::size_t>(i)];
        if (!oResult.IsWhole(aFiles[i]))
        {
            aUnreadable.Add(TOVStandard::ViewOf(FullName(oCatalog, aFiles[i])));
            continue;
        }
        aFiles[i].ullSize = oResult.ullSize;
        aFiles[i].dwCrc = oResult.dwCrc;
        if (oCatalog.bSha256)
            aFiles[i].oDetails.Make().oSha256 = oResult.oSha256;
        if (aFiles[i].GetTime() >= ullTimeOfDoubt)
            aFiles[i].oDetails.Make().ullTime = 0;
        if (lWhole < i)
            aFiles[lWhole] = aFiles[i];
        ++lWhole;
    }
    aFiles.Resize(lWhole);
}
} // namespace

int CreateCatalog(const sCreateOptions& oOptions, const std::atomic<bool>& bStop)
{
    const tClock::time_point oStart = tClock::now();
    sCatalog oCatalog;
    oCatalog.aDirectories = oOptions.aDirectories;
    oCatalog.aPatterns = oOptions.aPatterns;
    oCatalog.aExcludes = oOptions.aExcludes;
    oCatalog.bTimes = oOptions.bUpdate;
    oCatalog.bSha256 = oOptions.bSha256;
    if (oOptions.bSha256 && !HasSha256())
        throw CCatalogError("this program was built without SHA-256");
    for (long i = 0; i < oCatalog.aDirectories.GetSize(); ++i)
        RequireDirectory(oCatalog.aDirectories[i]);
    RequireReplaceable(oOptions.oCatalog);

    const unsigned long long ullTimeOfDoubt = TimeOfDoubt();
    const sFound oFound = FindFiles(oCatalog, oOptions.oCatalog, oCatalog.aFiles, oOptions, bStop);
    const bool bFoundFiles = !oCatalog.aFiles.IsEmpty();
    tUnreadable aUnreadable = oFound.aUnreadable;
    long lKnown = 0;
    unsigned long long ullRead = 0;
    if (oOptions.bUpdate)
    {
        const std::vector<sChecksum> aResults = ReadChangedFiles(oCatalog, oOptions, bStop, lKnown, ullRead);
        TakeResults(oCatalog, aResults, ullTimeOfDoubt, aUnreadable);
    }
    else
    {
        const std::vector<sChecksum> aResults = ReadFiles(oCatalog, oCatalog.aFiles, oOptions, bStop);
        TakeResults(oCatalog, aResults, ullTimeOfDoubt, aUnreadable);
        ullRead = TotalRead(aResults);
    }
    const bool bWorthless = oCatalog.aFiles.IsEmpty() && !oOptions.bAllowEmpty;
    if (!bWorthless)
    {
        SaveCatalog(oOptions.oCatalog, oCatalog);
        ReportNothing(oFound);
    }
    ReportUnreadable(stderr, aUnreadable);
    if (bWorthless)
        throw NothingToCatalog(oOptions.oCatalog, oCatalog, bFoundFiles);

    if (!oOptions.bQuiet)
    {
        std::printf("%s catalogued", ~DescribeWork(oCatalog.aFiles.GetSize(), ullRead, tClock::now() - oStart));
        if (oOptions.bUpdate)
            std::printf(", %ld known", lKnown);
        if (!aUnreadable.IsEmpty())
            std::printf(", %d unreadable", static_cast<int>(aUnreadable.GetSize()));
        std::printf("\n");
    }
    return aUnreadable.IsEmpty() ? eExitSame : eExitDifferences;
}
