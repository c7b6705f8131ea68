// Declares RunChecksums, which computes the checksums of many files in worker threads.
#pragma once

#include "Catalog.h"

#include <atomic>
#include <functional>
#include <vector>

// The result for one file.
struct sChecksum
{
    unsigned long long ullSize = 0;
    tDword dwCrc = 0;
    bool bRead = false;
    CRare<tSha256> oSha256;

    // Returns false if the file could not be read, or became shorter than expected while it was read.
    bool IsWhole(const sFileRecord& oExpected) const { return bRead && ullSize >= oExpected.ullSize; }
};

struct sChecksumProgress
{
    long lFilesDone = 0;
    unsigned long long ullBytesDone = 0;
};

// Reads the files of these records with nThreads threads, and stores a result for each, with SHA-256 if the catalogue
// has it. fnProgress is called about five times a second on the calling thread. Returns false, with some files not
// read, if bStop became true or no thread could be started.
bool RunChecksums(const sCatalog& oCatalog, const CTOVArray<sFileRecord>& aFiles, std::vector<sChecksum>& aResults,
                  int nThreads, const std::atomic<bool>& bStop,
                  const std::function<void(const sChecksumProgress&)>& fnProgress);
