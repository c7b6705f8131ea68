// Declares CTreeWalker, which finds the files of a catalogue's directories.
#pragma once

#include "Catalog.h"

#include <atomic>
#include <set>
#include <string>
#include <vector>

// The names of the files and directories that could not be read.
typedef CTOVArray<CTOVStringA> tUnreadable;

// Walks one directory with all its subdirectories. It adds a record with path and size, and no checksum yet, for each
// file that matches one of the patterns, in no particular order; without patterns, every file matches. It skips
// whatever is neither a file nor a directory, links to directories, and files that interrupted runs have left. A
// directory that cannot be listed, or not to its end, is added to the unreadable ones, and the walk continues.
class CTreeWalker
{
public:
    // Ends early when bStop becomes true.
    CTreeWalker(const CTOVArray<CTOVStringA>& aPatterns, CTOVArray<sFileRecord>& aFiles, tUnreadable& aUnreadable,
                const std::atomic<bool>& bStop);

    // Adds a file that the walk shall skip: the catalogue itself.
    void Exclude(const CTOVStringA& oName);

    void Walk(long lDirectory, const CTOVStringA& oDirectory);

    // Returns whether any file so far has matched the pattern with this index.
    bool HasMatched(long lPattern) const { return m_aMatched[static_cast<std::size_t>(lPattern)]; }

private:
    // For each pattern, the names in one directory that match it.
    typedef std::vector<std::set<std::string>> tMatching;

    void WalkBelow(const CTOVStringA& oRelative, int nDepth);
    bool IsWanted(const CTOVStringA& oName, const tMatching& aMatching) const;
    bool IsExcluded(const CTOVStringA& oName) const;

    // Returns false if a search failed.
    bool FindMatching(const CTOVStringA& oSearchDirectory, tMatching& aMatching) const;
    void NoteMatches(const std::string& sName, const tMatching& aMatching);

    const CTOVArray<CTOVStringA>& m_aPatterns;
    CTOVArray<sFileRecord>& m_aFiles;
    tUnreadable& m_aUnreadable;
    const std::atomic<bool>& m_bStop;
    CTOVArray<CTOVStringA> m_aExcluded;
    std::vector<bool> m_aMatched;
    CTOVStringA m_oRoot;
    long m_lDirectory = 0;
};
