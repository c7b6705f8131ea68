#include "CheckList.h"
#include "Commands.h"
#include "FileSearch.h"
#include "Findings.h"

#include <TOVString/TOVStringStd.h>

#include <chrono>
#include <system_error>

namespace
{
typedef std::chrono::steady_clock tClock;

unsigned long long SizeOf(const CTOVStringA& oName)
{
    std::error_code oError;
    const std::uintmax_t nSize = std::filesystem::file_size(SystemPath(oName), oError);
    return oError ? 0 : nSize;
}

// Lets the names count from a directory, if there is one, and finds the files' sizes, which the list does not have.
void Locate(sCatalog& oList, const CTOVStringA& oBase)
{
    for (long i = 0; i < oList.aFiles.GetSize(); ++i)
    {
        sFileRecord& oRecord = oList.aFiles[i];
        if (!oBase.IsEmpty())
            oRecord.szPath = oList.pPaths->Add(TOVStandard::ViewOf(RelativeTo(oBase, oRecord.szPath)));
        oRecord.ullSize = SizeOf(oRecord.szPath);
    }
}

void AddFinding(const sCatalog& oList, const sFileRecord& oRecord, const sChecksum& oResult, CFindings& oFindings)
{
    if (!oResult.IsWhole(oRecord))
        oFindings.Add(IsMissing(oRecord.szPath) ? eFindingMissing : eFindingUnreadable, oRecord.szPath);
    else if (oList.bSha256 ? *oResult.oSha256.Get() != *oRecord.GetSha256() : oResult.dwCrc != oRecord.dwCrc)
        oFindings.Add(eFindingChanged, oRecord.szPath);
}
} // namespace

int CheckList(const sVerifyOptions& oOptions, const std::atomic<bool>& bStop)
{
    const tClock::time_point oStart = tClock::now();
    sCatalog oList = ReadCheckList(oOptions.oName);
    if (oList.bSha256 && !HasSha256())
        throw CCatalogError("this program was built without SHA-256");
    if (!oOptions.oRelativeTo.IsEmpty())
        RequireDirectory(oOptions.oRelativeTo);
    Locate(oList, oOptions.oRelativeTo);

    const std::vector<sChecksum> aResults = ReadFiles(oList, oList.aFiles, oOptions, bStop);
    CFindings oFindings;
    for (long i = 0; i < oList.aFiles.GetSize(); ++i)
        AddFinding(oList, oList.aFiles[i], aResults[static_cast<std::size_t>(i)], oFindings);
    oFindings.Report(oOptions, "checked", oList.aFiles.GetSize(), TotalRead(aResults), tClock::now() - oStart);
    return oFindings.Any() ? eExitDifferences : eExitSame;
}
