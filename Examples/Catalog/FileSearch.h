// Declares how the commands find the files of a catalogue's directories, and read them.
#pragma once

#include "Checksummer.h"
#include "Commands.h"
#include "TreeWalker.h"

// Holds what a walk through a catalogue's directories has found besides the files.
struct sFound
{
    tUnreadable aUnreadable;

    // The directories and patterns for which no file was found.
    CNameList aEmptyDirectories;
    CNameList aUnmatchedPatterns;
};

// Throws CCatalogError unless a directory has this name.
void RequireDirectory(const CTOVStringA& oName);

// Throws CCatalogError if the user or the system has asked the work to end.
void ThrowIfInterrupted(const std::atomic<bool>& bStop);

// Finds the present files of a catalogue's directories, sorted by CompareRecords. They have no checksums yet, and the
// catalogue's store has their paths. Throws when interrupted.
sFound FindFiles(const sCatalog& oCatalog, const CTOVStringA& oCatalogName, CTOVArray<sFileRecord>& aFiles,
                 const sReadOptions& oOptions, const std::atomic<bool>& bStop);

// Reads all files, with a progress line. Returns a result for each. Throws when interrupted.
std::vector<sChecksum> ReadFiles(const sCatalog& oCatalog, const CTOVArray<sFileRecord>& aFiles,
                                 const sReadOptions& oOptions, const std::atomic<bool>& bStop);

unsigned long long TotalSize(const CTOVArray<sFileRecord>& aFiles);
unsigned long long TotalRead(const std::vector<sChecksum>& aResults);

// Sorts records by CompareRecords. All catalogues of this program are sorted, but a catalogue can have another author.
void SortFiles(CTOVArray<sFileRecord>& aFiles);
