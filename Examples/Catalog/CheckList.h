// Declares the lists of checksums that other programs write and read: .sfv files with CRC-32, and SHA256SUMS files.
#pragma once

#include "Catalog.h"

// Return a record's line. Throw CCatalogError if such a list cannot hold the name, or the record has no SHA-256.
std::string SfvLine(const CTOVStringA& oName, const sFileRecord& oRecord);
std::string Sha256Line(const CTOVStringA& oName, const sFileRecord& oRecord);

// Reads a list; "-" is standard input. The records have names, as they are written, and checksums of one kind: SHA-256
// if bSha256 of the catalogue is set, and otherwise CRC-32. It has no directory. Throws CCatalogError, with the cause
// in one line, if the file cannot be read, names no file, or has a line that is of neither kind, or not of that of the
// first.
sCatalog ReadCheckList(const CTOVStringA& oName);
