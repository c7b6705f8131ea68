// Declares FindMoved, which recognises files that are in another place than before.
#pragma once

#include "Checksummer.h"

#include <atomic>
#include <vector>

// A file that the catalogue does not have, and what has been read of it.
struct sNewFile
{
    const sFileRecord* pRecord;
    const sChecksum* pResult;
};

// Returns for each of these files the index of the missing file that it is, or -1. The two have the same size and
// checksums, and each missing file is found once at most. One that kept its name comes first; a file without contents
// is the same only then. Throws when interrupted. Cost: n log n comparisons for n files.
std::vector<long> FindMoved(const std::vector<sFileRecord>& aMissing, const std::vector<sNewFile>& aNew,
                            const std::atomic<bool>& bStop);
