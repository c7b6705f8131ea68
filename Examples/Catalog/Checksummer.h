// Declares RunChecksums, which computes the checksums of many files in worker threads.
#pragma once

#include <Debug/TOVBase.h>
#include <TOVContainers/TOVArray.h>
#include <TOVString/TOVStringA.h>

#include <atomic>
#include <functional>

// Describes one file to read. The name and the expected size are the input; the other members are the result.
struct sChecksumJob
{
    CTOVStringA oName;
    unsigned long long ullExpectedSize = 0;

    unsigned long long ullSize = 0;
    tDword dwCrc = 0;
    bool bRead = false;

    // Returns false if the file could not be read, or became shorter than expected while it was read.
    bool IsWhole() const { return bRead && ullSize >= ullExpectedSize; }
};

struct sChecksumProgress
{
    long lFilesDone = 0;
    unsigned long long ullBytesDone = 0;
};

// Reads all files with nThreads threads. fnProgress is called about five times a second on the calling thread. Returns
// false, with some jobs not done, if bStop became true.
bool RunChecksums(CTOVArray<sChecksumJob>& aJobs, int nThreads, const std::atomic<bool>& bStop,
                  const std::function<void(const sChecksumProgress&)>& fnProgress);
