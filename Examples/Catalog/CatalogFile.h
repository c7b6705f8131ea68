// Declares the functions that read and write catalogues on disk.
#pragma once

#include "Catalog.h"

#include <functional>

// Reads a catalogue of this format version or an older one. Throws CCatalogError, with the cause in one line, if the
// file is missing, truncated, damaged, newer, or not a catalogue.
sCatalog LoadCatalog(const CTOVStringA& oName);

// Reads a catalogue in the same way and passes its records to fnVisit one by one, in their order, together with a
// catalogue that has everything but the records, and is returned at the end. Keeps no records. The first call is made
// only after the whole file has been checked.
typedef std::function<void(const sCatalog&, const sFileRecord&)> tRecordVisitor;
sCatalog VisitCatalog(const CTOVStringA& oName, const tRecordVisitor& fnVisit);

// Throws CCatalogError if something has this name that SaveCatalog does not replace: anything that is not a file, and a
// read-only file.
void RequireReplaceable(const CTOVStringA& oName);

// Writes a new file beside the catalogue, and replaces the catalogue by it only after the new file has been read back
// and checked: after a failure or an interrupt, an existing catalogue is unchanged. The catalogue in memory is not
// changed either; it is no constant because writing and reading are one sequence of calls. If the name is that of a
// link, the file that it leads to is replaced or created, and the link is kept. Throws CCatalogError.
void SaveCatalog(const CTOVStringA& oName, sCatalog& oCatalog);
