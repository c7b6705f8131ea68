// Catalogues on disk.
#pragma once

#include "Catalog.h"

// Reads a catalogue of this format version or an older one. Throws CCatalogError, naming the cause in one line, for a
// file that is missing, foreign, newer, truncated or damaged.
sCatalog LoadCatalog(const CTOVStringA& oName);

// Writes beside the catalogue first and puts the new file in its place only when it reads back whole: whatever fails
// or interrupts, an existing catalogue stays as it was. Throws CCatalogError.
void SaveCatalog(const CTOVStringA& oName, const sCatalog& oCatalog);
