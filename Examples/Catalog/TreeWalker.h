// Finds the files of a catalogue's directories.
#pragma once

#include "Catalog.h"

#include <atomic>
#include <set>
#include <string>
#include <vector>

// A file or directory that could not be read, by name.
typedef CTOVArray<CTOVStringA> tUnreadable;

// Walks one directory with all its subdirectories. Collects a record with path and size, and no checksum yet, for each
// file that matches one of the patterns (none: every file), in no particular order. What is neither file nor directory
// is passed over, and so are a link to a directory and what interrupted runs have left behind. A directory that cannot
// be listed, or not to its end, goes to the unreadable ones, and the walk goes on.
class CTreeWalker
{
public:
    // Ends early when bStop becomes true.
    CTreeWalker(const CTOVArray<CTOVStringA>& aPatterns, CTOVArray<sFileRecord>& aFiles, tUnreadable& aUnreadable,
                const std::atomic<bool>& bStop);

    // Names a file that the walk is to pass over: the catalogue itself.
    void Exclude(const CTOVStringA& oName);

    void Walk(long lDirectory, const CTOVStringA& oDirectory);

    // Whether any file so far has matched a pattern, by its index.
    bool HasMatched(long lPattern) const { return m_aMatched[static_cast<std::size_t>(lPattern)]; }

private:
    // The names in one directory that match a pattern, for each of them.
    typedef std::vector<std::set<std::string>> tMatching;

    void WalkBelow(const CTOVStringA& oRelative, int nDepth);
    bool IsWanted(const CTOVStringA& oName, const tMatching& aMatching) const;
    bool IsExcluded(const CTOVStringA& oName) const;

    // False if a search failed.
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
