#include "LoadFiles.h"

#include <chrono>
#include <fstream>

std::string MakeUniqueName()
{
    static std::atomic<int> s_nCalls(0);
    const auto nTime = std::chrono::system_clock::now().time_since_epoch().count();
    return "tov-load-" + std::to_string(nTime) + '-' + std::to_string(++s_nCalls);
}

CLoadFolder::CLoadFolder() : m_oPath(std::filesystem::temp_directory_path() / MakeUniqueName())
{
    std::filesystem::create_directory(m_oPath);
}

CLoadFolder::~CLoadFolder()
{
    std::error_code oIgnored;
    std::filesystem::remove_all(m_oPath, oIgnored);
}

bool WriteRecord(tHandle hFile, int nThread, int nNumber)
{
    const sLoadRecord oRecord = {nThread, nNumber, nThread ^ nNumber};
    return TOVPlatform::TOVFile::Write(hFile, &oRecord, sizeof oRecord, 1) == 1;
}

// Expects the records of each thread in their order, none lost and none doubled.
void ExpectRecords(const std::string& sFile, const std::vector<int>& aWanted, CThreadReport& oReport)
{
    std::vector<int> aNext(aWanted.size(), 0);
    std::ifstream oFile(sFile, std::ios::binary);
    sLoadRecord oRecord = {};
    while (oFile.read(reinterpret_cast<char*>(&oRecord), sizeof oRecord))
    {
        const std::size_t nThread = static_cast<std::size_t>(oRecord.nThread);
        if (nThread >= aNext.size() || (oRecord.nThread ^ oRecord.nNumber) != oRecord.nSum)
            return oReport.Expect(false, "a record is whole");
        oReport.ExpectEqual(aNext[nThread]++, oRecord.nNumber, "number of a record");
    }
    oReport.ExpectEqual(0, oFile.gcount(), "bytes after the last record");
    for (std::size_t nThread = 0; nThread < aWanted.size(); ++nThread)
        oReport.ExpectEqual(aWanted[nThread], aNext[nThread], "records of a thread");
}
