#include "Checksummer.h"

#include "CatalogSystem.h"
#include "Workers.h"

#include <TOVString/TOVCrc.h>
#include <TOVString/TOVStringStd.h>

#include <memory>

namespace
{
constexpr unsigned long READ_SIZE = 256ul * 1024;

// Holds what all workers share. They only read the records and the catalogue.
struct sShared
{
    const sCatalog& oCatalog;
    const CTOVArray<sFileRecord>& aFiles;
    std::vector<sChecksum>& aResults;
    const std::atomic<bool>& bStop;
    CJobCounter oJobs{aFiles.GetSize()};
    std::atomic<long> lFilesDone{0};
    std::atomic<unsigned long long> ullBytesDone{0};
};

// pSha256 is null if only CRC-32 is wanted.
void ReadFile(const std::string& sName, std::vector<tByte>& aBuffer, CSha256* pSha256, sChecksum& oResult,
              sShared& oShared)
{
    // By now, something else may have replaced the file.
    CInputFile oFile(sName.c_str());
    if (!oFile.IsOpen())
        return;

    tDword dwCrc = 0xFFFFFFFF;
    unsigned long ulRead = 0;
    do
    {
        ulRead = oFile.Read(aBuffer.data(), READ_SIZE);
        dwCrc = static_cast<tDword>(CRC32Generate(aBuffer.data(), ulRead, dwCrc));
        if (pSha256 != nullptr)
            pSha256->Add(aBuffer.data(), ulRead);
        oResult.ullSize += ulRead;
        oShared.ullBytesDone += ulRead;
    } while (ulRead == READ_SIZE && !oShared.bStop);

    oResult.dwCrc = ~dwCrc;
    if (pSha256 != nullptr)
        oResult.oSha256.Make() = pSha256->Finish();
    oResult.bRead = !oFile.HasFailed();
}

void ReadFiles(sShared& oShared)
{
    std::vector<tByte> aBuffer(READ_SIZE);
    const std::unique_ptr<CSha256> pSha256(oShared.oCatalog.bSha256 ? new CSha256 : nullptr);
    std::string sName;
    for (long lFile; !oShared.bStop && oShared.oJobs.Take(lFile);)
    {
        const sFileRecord& oRecord = oShared.aFiles[lFile];
        sName =
            TOVStandard::ViewOf(oShared.oCatalog.aDirectories[oRecord.nDirectory]); // empty in other programs' lists
        AppendPath(sName, oRecord.szPath);
        ReadFile(sName, aBuffer, pSha256.get(), oShared.aResults[static_cast<std::size_t>(lFile)], oShared);
        ++oShared.lFilesDone;
    }
}
} // namespace

bool RunChecksums(const sCatalog& oCatalog, const CTOVArray<sFileRecord>& aFiles, std::vector<sChecksum>& aResults,
                  int nThreads, const std::atomic<bool>& bStop,
                  const std::function<void(const sChecksumProgress&)>& fnProgress)
{
    aResults.assign(static_cast<std::size_t>(aFiles.GetSize()), sChecksum());
    if (aFiles.IsEmpty())
        return !bStop;

    if (oCatalog.bSha256)
        CSha256(); // sets it up before the threads use it
    sShared oShared{oCatalog, aFiles, aResults, bStop};
    const bool bStarted = RunWorkers(
        nThreads, [&] { ReadFiles(oShared); },
        [&] {
            fnProgress({oShared.lFilesDone, oShared.ullBytesDone});
        });
    return bStarted && !bStop;
}
