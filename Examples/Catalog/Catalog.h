// What a catalogue knows.
#pragma once

#include <TOVContainers/TOVArray.h>
#include <TOVString/TOVStringA.h>

#include <filesystem>
#include <stdexcept>

// How each catalogue begins.
constexpr char CATALOG_MAGIC[] = {'T', 'O', 'V', 'C', 'A', 'T', 'L', 'G'};

// No system that the program knows takes a longer name in one call.
constexpr int LONGEST_NAME = 4096;

// An error that ends a command; its text is one line for the user.
class CCatalogError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// One file. The path is relative to its directory in the catalogue's list, with '/' between the components.
struct sFileRecord
{
    long lDirectory = 0;
    CTOVStringA oPath;
    unsigned long long ullSize = 0;
    tDword dwCrc = 0; // CRC-32 as zip and PNG have it
};

struct sCatalog
{
    CTOVArray<CTOVStringA> aDirectories; // as given on the command line
    CTOVArray<CTOVStringA> aPatterns;    // none: every file
    CTOVArray<sFileRecord> aFiles;       // sorted by CompareRecords
};

// Order by directory, then by path in bytes: below 0, 0 or above 0.
int CompareRecords(const sFileRecord& oFirst, const sFileRecord& oSecond);

// The name under which a record's file is opened.
CTOVStringA FullName(const sCatalog& oCatalog, const sFileRecord& oRecord);

// Joins with '/', which both systems take, unless the directory already ends in it.
CTOVStringA JoinPath(const CTOVStringA& oDirectory, const CTOVStringA& oName);

// A name for the system's own functions. The library reads a backslash as a separator where nothing bears the name as
// it stands; the system does not.
std::filesystem::path SystemPath(const CTOVStringA& oName);
