// Declares CUnfinishedCatalog, the file to which a new catalogue is written before it replaces the old one.
#pragma once

#include "CatalogSystem.h"

#include <memory>

// The file is in the directory of the catalogue. Its name is "tovcatalog-N.new", with the first N for which no file
// exists, so that the files of other runs, and any other files, are left alone. A file that an interrupted run has left
// under such a name is removed first.
class CUnfinishedCatalog
{
public:
    // Throws CCatalogError if no such file can be created. The destructor removes the file unless it has been put in
    // place.
    explicit CUnfinishedCatalog(const CTOVStringA& oCatalog);

    const CTOVStringA& GetName() const { return m_oName; }

    // Replaces the catalogue by the file, in one step. Throws CCatalogError.
    void PutInPlace();

private:
    CTOVStringA m_oName;
    std::unique_ptr<CNewFile> m_pFile;
};

// Returns whether a file is an unfinished catalogue of this or any other run. This depends on its name and on its first
// bytes, as far as it has any.
bool IsUnfinishedCatalog(const CTOVStringA& oName);

// Returns the part of this answer that the name alone gives: false if it cannot be the name of such a file.
bool HasNameOfUnfinishedCatalog(const char* szName);
