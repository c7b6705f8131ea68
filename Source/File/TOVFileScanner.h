// Reports the files of a list of directories, each with a pattern of its own, to a callback. Keeps no results.
//
// The platform's directory search does the matching and gives the order. Within one directory the files come first,
// then its subdirectories. Settled: the search in a subdirectory is made below a path that holds "*.*", which the
// platform refuses, so that files below the first level are never reported. Settled: a directory that cannot be read,
// or not to its end, looks the same as one without further files; to tell these apart, search with
// TOVPlatform::TOVFile::FindFirstEntry. No lock: one thread at a time; the callback runs on the thread of Run.
#pragma once

#include <Path/TOVPath.h>
#include <TOVContainers/TOVArray.h>
#include <TOVString/TOVStringA.h>

extern template class TOV_TEMPLATE_DECLARE CTOVArray<CTOVPath>;

class TOV_EXPORT CTOVFileScanner
{
public:
    // What the callback receives. Valid during the call; the same object serves all files of a directory.
    struct sTOVFileDescriptor
    {
        CTOVPath oFileName;   // the bare name of the entry
        CTOVPath oDirectory;  // the directory that is being scanned
        CTOVPath oSearchPath; // the directory with the pattern
    };

    // What the callback returns. A stop leaves the rest of this directory and what lies below it; the other directories
    // are scanned still. Every value but 1 goes on.
    enum eScannerControl : int
    {
        eScannerContinue = 0,
        eScannerStop = 1
    };

    enum eScannerMode : int
    {
        eScannerModeFile = 1 // a file was found
    };

    typedef eScannerControl (*tScannerCallback)(eScannerMode eMode, sTOVFileDescriptor* pDescriptor,
                                                unsigned long long ullUserValue);

    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVFileScanner();

    // Scans all directories in the order in which they were added, and hands each file and the caller's value to the
    // callback. A directory that is missing gives no files; an empty one throws "(0 <= lIndex) && (lIndex <
    // GetLength())", as an empty pattern does behind a directory without a separator at its end. What the callback
    // throws goes through, and leaves the platform's search open. A directory added by the callback is for the next
    // run.
    virtual void Run(tScannerCallback pCallback, unsigned long long ullUserValue);

    // Whether subdirectories are scanned as well, as far as that goes; at first they are.
    virtual void SetIncludeSubDirs(bool bIncludeSubDirs);

    CTOVFileScanner();
    CTOVFileScanner(const CTOVFileScanner& oOther);
    CTOVFileScanner& operator=(const CTOVFileScanner& oOther);

    void AddScanDirectory(const CTOVPath& oDirectory, const CTOVStringA& oPattern);

private:
    void ScanForFiles(const CTOVPath& oDirectory, const CTOVPath& oPattern, bool bIncludeSubDirs,
                      tScannerCallback pCallback, unsigned long long ullUserValue);
    void FetchSubDirectories(const CTOVPath& oSearchPath, CTOVArray<CTOVStringA>& aSubDirectories) const;

    bool m_bIncludeSubDirs;
    CTOVArray<CTOVPath> m_aScanDirectories;
    CTOVArray<CTOVStringA> m_aScanPatterns; // one for each directory, under the same index
};
