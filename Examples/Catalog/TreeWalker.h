// Declares CTreeWalker, which finds the files of a catalogue's directories.
#pragma once

#include "Catalog.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <vector>

// The names of the files and directories that could not be read.
typedef CNameList tUnreadable;

struct sWalkProgress
{
    long lFiles = 0;
    long lDirectories = 0;
};

typedef std::function<void(const sWalkProgress&)> tWalkTeller;

// Walks one directory with all its subdirectories. It adds a record with path and size, and no checksum yet, for each
// file that matches one of the patterns; without patterns, every file matches. The store gets the paths. The records of
// a walk are sorted by CompareRecords. It skips whatever is neither a file nor a directory, links to directories, and
// files that interrupted runs have left. A directory that cannot be listed, or not to its end, is added to the
// unreadable ones, and the walk continues.
class CTreeWalker
{
public:
    // Ends early when bStop becomes true. With more than one thread, the directories of a level are read side by side.
    CTreeWalker(const CNameList& aPatterns, CTOVArray<sFileRecord>& aFiles, CTextStore& oPaths,
                tUnreadable& aUnreadable, const std::atomic<bool>& bStop, int nThreads = 1);

    // Adds a file that the walk shall skip: the catalogue itself.
    void Exclude(const CTOVStringA& oName);

    // Sets patterns for the names of files and directories that the walk shall skip, a directory with all that is in
    // it.
    void SkipMatching(const CNameList& aExcludes) { m_aExcludes = aExcludes; }

    // Lets the records have the times of their files.
    void KeepTimes() { m_bTimes = true; }

    // Sets a function that is called about five times a second, and after each level, on the calling thread.
    void TellProgress(const tWalkTeller& fnProgress) { m_fnProgress = fnProgress; }

    void Walk(int nDirectory, const CTOVStringA& oDirectory);

    // Returns whether any file so far has matched the pattern with this index.
    bool HasMatched(long lPattern) const { return m_aMatched[static_cast<std::size_t>(lPattern)]; }

private:
    // A directory of the tree, and what was found in it. One thread reads it.
    struct sDirectory
    {
        std::string sRelative; // to the root, which has an empty name
        int nDepth = 0;

        bool bUnreadable = false;
        std::vector<sFileRecord> aFiles;          // sorted by CompareRecords
        std::vector<std::string> aSubdirectories; // names, without links
        std::vector<bool> aMatched;               // for each pattern
        std::size_t nFirstChild = 0;              // the index of the first subdirectory; the others follow
    };

    // For each pattern, the names in one directory that match it.
    typedef std::vector<std::set<std::string>> tMatching;

    std::string FullPath(const std::string& sRelative) const;
    void ReadLevel(std::size_t nBegin, std::size_t nEnd);
    void AddLevel(std::size_t nBegin, std::size_t nEnd);
    void Read(sDirectory& oDirectory);
    void ReadEntries(sDirectory& oDirectory, const CTOVStringA& oSearchDirectory, tMatching& aMatching,
                     std::vector<std::string>& aNames);
    bool IsWanted(const std::string& sName, const tMatching& aMatching) const;
    static bool IsAmong(const std::string& sName, const tMatching& aMatching);
    bool IsExcluded(const std::string& sFullPath, const std::string& sName) const;
    void AddPaths(sDirectory& oDirectory, const std::vector<std::string>& aNames);
    void CollectFiles(sDirectory& oDirectory);
    void CollectUnreadable(const sDirectory& oDirectory);

    // Returns false if a search failed. Ends early when the walk shall.
    bool FindMatching(const CTOVStringA& oSearchDirectory, const CNameList& aPatterns, tMatching& aMatching) const;

    struct sExcluded
    {
        std::string sName;
        std::string sFileName;
    };

    const CNameList& m_aPatterns;
    CTOVArray<sFileRecord>& m_aFiles;
    CTextStore& m_oPaths;
    std::mutex m_oPathsMutex; // only one thread at a time may add paths
    tUnreadable& m_aUnreadable;
    const std::atomic<bool>& m_bStop;
    const int m_nThreads;
    std::vector<sExcluded> m_aExcluded;
    std::vector<bool> m_aMatched;
    CNameList m_aExcludes;
    bool m_bTimes = false;
    tWalkTeller m_fnProgress;
    std::atomic<long> m_lFilesFound{0}; // counted only if they are told
    std::atomic<long> m_lDirectoriesFound{0};
    std::string m_sRoot;
    int m_nDirectory = 0;
    std::vector<sDirectory> m_aTree; // of the walk, level by level
};
