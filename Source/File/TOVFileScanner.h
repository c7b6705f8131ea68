// Declares CTOVFileScanner, which reports the files of a list of directories to a callback.
#pragma once

#include <Path/TOVPath.h>
#include <TOVContainers/TOVArray.h>
#include <TOVString/TOVStringA.h>

extern template class TOV_TEMPLATE_DECLARE CTOVArray<CTOVPath>;

// Reports the files of a list of directories to a callback. Each directory has its own pattern. No results are kept.
//
// The platform's directory search matches the names and determines their order. Within one directory, the files are
// reported before its subdirectories are scanned. Settled: the path of a subdirectory contains the "*.*" of the search
// that found it, and the platform refuses such a path, so that files below the first level are never reported. Settled:
// a directory that cannot be read, or not to its end, looks like one without further files; to distinguish them, search
// with TOVPlatform::TOVFile::FindFirstEntry. The scanner has no lock: use it from one thread at a time. The callback is
// called on the thread of Run.
class TOV_EXPORT CTOVFileScanner
{
public:
    // Describes a file to the callback. It is valid during the call; the same object serves all files of a directory.
    struct sTOVFileDescriptor
    {
        CTOVPath oFileName;   // the bare name of the entry
        CTOVPath oDirectory;  // the directory that is being scanned
        CTOVPath oSearchPath; // the directory with the pattern
    };

    // The results of the callback. A stop skips the rest of this directory and everything below it; the other
    // directories are still scanned. Every value except 1 continues the scan.
    enum eScannerControl : int
    {
        eScannerContinue = 0,
        eScannerStop = 1
    };

    // Says what the callback is called for.
    enum eScannerMode : int
    {
        eScannerModeFile = 1 // a file was found
    };

    // The callback. It receives the value that was passed to Run.
    typedef eScannerControl (*tScannerCallback)(eScannerMode eMode, sTOVFileDescriptor* pDescriptor,
                                                unsigned long long ullUserValue);

    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVFileScanner();

    // Scans all directories in the order in which they were added, and passes each file and ullUserValue to the
    // callback. A missing directory yields no files. Throws "(0 <= lIndex) && (lIndex < GetLength())" for an empty
    // directory path, and for an empty pattern unless the directory ends in a separator. An exception of the callback
    // reaches the caller and leaves the platform's search open. A directory that the callback adds is scanned by the
    // next run.
    virtual void Run(tScannerCallback pCallback, unsigned long long ullUserValue);

    // Sets whether subdirectories are scanned as well, within the limits above. Initially they are.
    virtual void SetIncludeSubDirs(bool bIncludeSubDirs);

    // Has no directories, and scans subdirectories as well.
    CTOVFileScanner();
    CTOVFileScanner(const CTOVFileScanner& oOther);
    CTOVFileScanner& operator=(const CTOVFileScanner& oOther);

    // Adds a directory, with a pattern such as "*.txt" for the names of its files.
    void AddScanDirectory(const CTOVPath& oDirectory, const CTOVStringA& oPattern);

private:
    void ScanForFiles(const CTOVPath& oDirectory, const CTOVPath& oPattern, bool bIncludeSubDirs,
                      tScannerCallback pCallback, unsigned long long ullUserValue);
    void FetchSubDirectories(const CTOVPath& oSearchPath, CTOVArray<CTOVStringA>& aSubDirectories) const;

    bool m_bIncludeSubDirs;
    CTOVArray<CTOVPath> m_aScanDirectories;
    CTOVArray<CTOVStringA> m_aScanPatterns; // one for each directory, under the same index
};
