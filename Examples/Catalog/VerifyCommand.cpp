#include "Commands.h"

#include "CatalogFile.h"
#include "Console.h"
#include "FileSearch.h"
#include "Findings.h"
#include "Moves.h"

#include <TOVString/TOVStringStd.h>

#include <algorithm>
#include <cstdio>
#include <set>
#include <string>

namespace
{
typedef std::chrono::steady_clock tClock;

// The files that are only in the catalogue, or only in the directories, in their order.
struct sDifferences
{
    std::vector<sFileRecord> aMissing;
    std::vector<sFileRecord> aNew;
    std::vector<std::size_t> anCandidates; // the indices of the new files that may be missing ones
    std::vector<long> alOrigins;           // for each new file the index of the missing one that it is, or -1
};

// Lets relative directories count from a directory instead of the working directory.
void Relocate(sCatalog& oCatalog, const CTOVStringA& oBase)
{
    RequireDirectory(oBase);
    CNameList aRelocated;
    for (long i = 0; i < oCatalog.aDirectories.GetSize(); ++i)
        aRelocated.Add(TOVStandard::ViewOf(RelativeTo(oBase, oCatalog.aDirectories[i])));
    oCatalog.aDirectories = aRelocated;
}

// Removes the files that are in one list only from the lists. What remains has the same indices in both.
sDifferences CompareLists(CTOVArray<sFileRecord>& aThen, CTOVArray<sFileRecord>& aNow)
{
    sDifferences oResult;
    long lCommon = 0;
    long lThen = 0;
    long lNow = 0;
    while (lThen < aThen.GetSize() || lNow < aNow.GetSize())
    {
        int nOrder = lThen == aThen.GetSize() ? 1 : -1;
        if (lThen < aThen.GetSize() && lNow < aNow.GetSize())
            nOrder = CompareRecords(aThen[lThen], aNow[lNow]);

        if (nOrder < 0)
            oResult.aMissing.push_back(aThen[lThen++]);
        else if (nOrder > 0)
            oResult.aNew.push_back(aNow[lNow++]);
        else
        {
            aThen[lCommon] = aThen[lThen++];
            aNow[lCommon++] = aNow[lNow++];
        }
    }
    aThen.Resize(lCommon);
    aNow.Resize(lCommon);
    return oResult;
}

// Adds the new files that have the size of a missing one to those that shall be read.
void AddCandidates(sDifferences& oDifferences, CTOVArray<sFileRecord>& aToRead)
{
    std::set<unsigned long long> aSizes;
    for (const sFileRecord& oMissing : oDifferences.aMissing)
        aSizes.insert(oMissing.ullSize);
    for (std::size_t n = 0; n < oDifferences.aNew.size(); ++n)
    {
        if (aSizes.count(oDifferences.aNew[n].ullSize) == 0)
            continue;
        aToRead.Add(oDifferences.aNew[n]);
        oDifferences.anCandidates.push_back(n);
    }
}

// The results of the candidates begin with this index.
void FindMoves(sDifferences& oDifferences, const std::vector<sChecksum>& aResults, std::size_t nFirst,
               const std::atomic<bool>& bStop)
{
    std::vector<sNewFile> aCandidates;
    for (std::size_t n = 0; n < oDifferences.anCandidates.size(); ++n)
        aCandidates.push_back({&oDifferences.aNew[oDifferences.anCandidates[n]], &aResults[nFirst + n]});
    const std::vector<long> alOrigins = FindMoved(oDifferences.aMissing, aCandidates, bStop);

    oDifferences.alOrigins.assign(oDifferences.aNew.size(), -1);
    for (std::size_t n = 0; n < alOrigins.size(); ++n)
        oDifferences.alOrigins[oDifferences.anCandidates[n]] = alOrigins[n];
}

// Adds the files that are in one list only, in the order of both.
void AddDifferences(const sCatalog& oCatalog, const sDifferences& oDifferences, CFindings& oFindings)
{
    std::vector<bool> abMoved(oDifferences.aMissing.size());
    for (const long lOrigin : oDifferences.alOrigins)
    {
        if (lOrigin >= 0)
            abMoved[static_cast<std::size_t>(lOrigin)] = true;
    }

    std::size_t nMissing = 0;
    const auto fnAddMissingBefore = [&](const sFileRecord* pNext) {
        for (; nMissing < abMoved.size(); ++nMissing)
        {
            const sFileRecord& oMissing = oDifferences.aMissing[nMissing];
            if (pNext != nullptr && CompareRecords(oMissing, *pNext) > 0)
                return;
            if (!abMoved[nMissing])
                oFindings.Add(eFindingMissing, FullName(oCatalog, oMissing));
        }
    };
    for (std::size_t n = 0; n < oDifferences.aNew.size(); ++n)
    {
        fnAddMissingBefore(&oDifferences.aNew[n]);
        const CTOVStringA oName = FullName(oCatalog, oDifferences.aNew[n]);
        const long lOrigin = oDifferences.alOrigins[n];
        if (lOrigin < 0)
            oFindings.Add(eFindingNew, oName);
        else
            oFindings.Add(eFindingMoved, oName,
                          FullName(oCatalog, oDifferences.aMissing[static_cast<std::size_t>(lOrigin)]));
    }
    fnAddMissingBefore(nullptr);
}

bool IsSame(const sFileRecord& oThen, const sChecksum& oNow)
{
    const bool bSameSha256 = oThen.GetSha256() == nullptr || *oThen.GetSha256() == *oNow.oSha256.Get();
    return oThen.ullSize == oNow.ullSize && oThen.dwCrc == oNow.dwCrc && bSameSha256;
}

void AddChanges(const sCatalog& oCatalog, const CTOVArray<sFileRecord>& aNow, const std::vector<sChecksum>& aResults,
                CFindings& oFindings)
{
    for (long i = 0; i < oCatalog.aFiles.GetSize(); ++i)
    {
        const sFileRecord& oNow = aNow[i];
        const sChecksum& oResult = aResults[static_cast<std::size_t>(i)];
        if (!oResult.IsWhole(oNow))
            oFindings.Add(eFindingUnreadable, FullName(oCatalog, oNow));
        else if (!IsSame(oCatalog.aFiles[i], oResult))
            oFindings.Add(eFindingChanged, FullName(oCatalog, oNow));
    }
}
} // namespace

int VerifyCatalog(const sVerifyOptions& oOptions, const std::atomic<bool>& bStop)
{
    const tClock::time_point oStart = tClock::now();
    sCatalog oCatalog = LoadCatalog(oOptions.oName);
    const std::string sName = ~Printable(oOptions.oName);
    if (oCatalog.aFiles.IsEmpty() && !oOptions.bAllowEmpty)
        throw CCatalogError(sName + " holds no file (--allow-empty verifies it all the same)");
    if (oCatalog.bSha256 && !HasSha256())
        throw CCatalogError(sName + " holds SHA-256, and this program was built without it");
    if (!oOptions.oRelativeTo.IsEmpty())
        Relocate(oCatalog, oOptions.oRelativeTo);
    SortFiles(oCatalog.aFiles);

    CFindings oFindings;
    CTOVArray<sFileRecord> aNow;
    const sFound oFound = FindFiles(oCatalog, oOptions.oName, aNow, oOptions, bStop);
    for (long i = 0; i < oFound.aUnreadable.GetSize(); ++i)
        oFindings.Add(eFindingUnreadable, oFound.aUnreadable[i]);

    sDifferences oDifferences = CompareLists(oCatalog.aFiles, aNow);
    AddCandidates(oDifferences, aNow);
    std::vector<sChecksum> aResults = ReadFiles(oCatalog, aNow, oOptions, bStop);
    const std::size_t nCommon = static_cast<std::size_t>(oCatalog.aFiles.GetSize());
    FindMoves(oDifferences, aResults, nCommon, bStop);
    AddDifferences(oCatalog, oDifferences, oFindings);
    AddChanges(oCatalog, aNow, aResults, oFindings);

    aResults.resize(nCommon);
    oFindings.Report(oOptions, "verified", static_cast<long>(nCommon), TotalRead(aResults), tClock::now() - oStart);
    return oFindings.Any() ? eExitDifferences : eExitSame;
}
