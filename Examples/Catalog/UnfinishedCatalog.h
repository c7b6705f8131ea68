// The file in which a new catalogue is written before it takes its place.
#pragma once

#include "CatalogSystem.h"

#include <memory>

// Stands beside the catalogue as "tovcatalog-N.new", with the first N whose name is free, so that neither another run
// nor anybody's file is touched. A file that an interrupted run has left under such a name is removed on the way.
class CUnfinishedCatalog
{
public:
    // Throws CCatalogError if no such file can be made. The file is removed at the end, unless it has taken its place.
    explicit CUnfinishedCatalog(const CTOVStringA& oCatalog);

    const CTOVStringA& GetName() const { return m_oName; }

    // Puts the file in the place of the catalogue, in one step. Throws CCatalogError.
    void PutInPlace();

private:
    CTOVStringA m_oName;
    std::unique_ptr<CNewFile> m_pFile;
};

// Whether a file is such a one, of this or any other run: by its name, and by its first bytes, as far as it has any.
bool IsUnfinishedCatalog(const CTOVStringA& oName);
