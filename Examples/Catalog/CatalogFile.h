// Catalogues on disk.
#pragma once

#include "Catalog.h"

#include <functional>

// Reads a catalogue of this format version or an older one. Throws CCatalogError, naming the cause in one line, for a
// file that is missing, foreign, newer, truncated or damaged.
sCatalog LoadCatalog(const CTOVStringA& oName);

// Reads a catalogue in the same way and hands its records on one by one, in their order, together with a catalogue that
// knows directories and patterns alone. Keeps no record. The first one comes only when the whole file has proved good.
typedef std::function<void(const sCatalog&, const sFileRecord&)> tRecordVisitor;
void VisitCatalog(const CTOVStringA& oName, const tRecordVisitor& fnVisit);

// Writes beside the catalogue first and puts the new file in its place only when it reads back whole: whatever fails
// or interrupts, an existing catalogue stays as it was. Throws CCatalogError.
void SaveCatalog(const CTOVStringA& oName, const sCatalog& oCatalog);
