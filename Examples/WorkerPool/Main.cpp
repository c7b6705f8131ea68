// tovlines counts the lines of files, in several threads. It shows a worker pool over the safe queue, which ends its
// threads without losing a task.
//
//   tovlines FILE...
//
// WorkerPool.cpp is what a program of your own would take over. Exit status: 0 done, 1 a file cannot be read, or the
// result cannot be written, 2 wrong usage.
#include "WorkerPool.h"

#include <TOVPlatform/TOVFile.h>
#include <Text/TOVShownText.h>
#include <Text/TOVStandardOutput.h>

#include <algorithm>
#include <cstdio>
#include <exception>

namespace
{
constexpr int NUM_WORKERS = 4;
constexpr long CANNOT_BE_READ = -1;

long CountLines(const char* szFile)
{
    namespace File = TOVPlatform::TOVFile;

    const tHandle hFile = File::Open(szFile, "rb");
    if (hFile == FILE_INVALID_HANDLE)
        return CANNOT_BE_READ;

    long lLines = 0;
    char aBlock[16384];
    while (const unsigned long ulSize = File::Read(hFile, aBlock, 1, sizeof aBlock))
        lLines += static_cast<long>(std::count(aBlock, aBlock + ulSize, '\n'));
    // Read returns the same at the end of the file and where the system fails to read it.
    const bool bFailed = std::ferror(File::CTOVHandleManager::Instance().GetFile(hFile)) != 0;
    File::Close(hFile);
    return bFailed ? CANNOT_BE_READ : lLines;
}

// Each task writes one element, which nobody reads before the pool has ended.
std::vector<long> CountAll(const std::vector<const char*>& aszFiles)
{
    std::vector<long> aLines(aszFiles.size());
    {
        CWorkerPool oPool(NUM_WORKERS);
        for (std::size_t i = 0; i < aszFiles.size(); ++i)
            oPool.Add([&aLines, &aszFiles, i] { aLines[i] = CountLines(aszFiles[i]); });
    }
    return aLines;
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    const std::vector<const char*> aszFiles(aszArguments + 1, aszArguments + nArguments);
    if (aszFiles.empty())
    {
        std::fputs("usage: tovlines FILE...\n", stderr);
        return 2;
    }
    int nStatus = 0;
    long lSum = 0;
    const std::vector<long> aLines = CountAll(aszFiles);
    for (std::size_t i = 0; i < aszFiles.size(); ++i)
    {
        const std::string sFile = TOVShownText::Printable(aszFiles[i]);
        if (aLines[i] == CANNOT_BE_READ)
        {
            std::fprintf(stderr, "tovlines: %s cannot be read\n", sFile.c_str());
            nStatus = 1;
            continue;
        }
        std::printf("%8ld %s\n", aLines[i], sFile.c_str());
        lSum += aLines[i];
    }
    std::printf("%8ld lines\n", lSum);
    return TOVShownText::FinishProgram("tovlines", nStatus);
}
