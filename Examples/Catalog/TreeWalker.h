// Finds the files of a catalogue's directories.
#pragma once

#include "Catalog.h"

// A file or directory that could not be read, by name.
typedef CTOVArray<CTOVStringA> tUnreadable;

// Walks one directory with all its subdirectories. Collects a record with path and size, and no checksum yet, for each
// file that matches one of the patterns (none: every file), in no particular order. What is neither file nor directory
// is passed over, and so is a link to a directory. A directory that cannot be listed goes to the unreadable ones, and
// the walk goes on.
class CTreeWalker
{
public:
    CTreeWalker(const CTOVArray<CTOVStringA>& aPatterns, CTOVArray<sFileRecord>& aFiles, tUnreadable& aUnreadable);

    // Names a file that the walk is to pass over: the catalogue itself.
    void Exclude(const CTOVStringA& oName);

    void Walk(long lDirectory, const CTOVStringA& oDirectory);

private:
    void WalkBelow(const CTOVStringA& oRelative, int nDepth);
    bool IsWanted(const CTOVStringA& oName, const CTOVArray<CTOVStringA>& aMatching) const;
    bool IsExcluded(const CTOVStringA& oName) const;
    CTOVArray<CTOVStringA> FindMatching(const CTOVStringA& oSearchDirectory) const;

    const CTOVArray<CTOVStringA>& m_aPatterns;
    CTOVArray<sFileRecord>& m_aFiles;
    tUnreadable& m_aUnreadable;
    CTOVArray<CTOVStringA> m_aExcluded;
    CTOVStringA m_oRoot;
    long m_lDirectory = 0;
};
