// Files of the loads: a folder for them, and records that show what has become of them.
#pragma once

#include "ThreadLoad.h"

#include <TOVPlatform/TOVFile.h>

#include <filesystem>
#include <string>
#include <vector>

// Returns a name that no other process and no other call has.
std::string MakeUniqueName();

// A folder, empty at first, that is removed in the end.
class CLoadFolder
{
public:
    CLoadFolder();
    ~CLoadFolder();
    CLoadFolder(const CLoadFolder&) = delete;
    CLoadFolder& operator=(const CLoadFolder&) = delete;

    std::string GetFile(int nFile) const { return (m_oPath / std::to_string(nFile)).string(); }

private:
    const std::filesystem::path m_oPath;
};

// A record shows whether it is whole.
struct sLoadRecord
{
    int nThread;
    int nNumber;
    int nSum;
};

bool WriteRecord(tHandle hFile, int nThread, int nNumber);

// Expects so many records of each thread in the file, in their order.
void ExpectRecords(const std::string& sFile, const std::vector<int>& aWanted, CThreadReport& oReport);
