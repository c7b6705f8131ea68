// Declares the data of a catalogue.
#pragma once

#include <TOVContainers/TOVArray.h>
#include <TOVString/TOVStringA.h>

#include <filesystem>
#include <stdexcept>
#include <string>

// Each catalogue begins with these bytes.
constexpr char CATALOG_MAGIC[] = {'T', 'O', 'V', 'C', 'A', 'T', 'L', 'G'};

// None of the systems accepts a longer name in one call.
constexpr int LONGEST_NAME = 4096;

// Reports an error that ends a command. Its text is one line for the user.
class CCatalogError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Records one file. The path is relative to its directory in the catalogue's list, with '/' between the components.
struct sFileRecord
{
    CTOVStringA oPath;
    unsigned long long ullSize = 0;
    int nDirectory = 0;
    tDword dwCrc = 0; // CRC-32, the same as in zip and PNG
};

struct sCatalog
{
    CTOVArray<CTOVStringA> aDirectories; // as given on the command line
    CTOVArray<CTOVStringA> aPatterns;    // empty: every file
    CTOVArray<sFileRecord> aFiles;       // sorted by CompareRecords
};

// Compares the directories, then the paths by their bytes. Returns a number below 0, 0 or a number above 0.
int CompareRecords(const sFileRecord& oFirst, const sFileRecord& oSecond);

// Returns the name under which a record's file is opened.
CTOVStringA FullName(const sCatalog& oCatalog, const sFileRecord& oRecord);

// Joins the two with '/', which both systems accept, unless the directory already ends in it. AppendPath appends to a
// path, unless it is empty, in the same way.
CTOVStringA JoinPath(const CTOVStringA& oDirectory, const CTOVStringA& oName);
void AppendPath(std::string& sPath, const char* szName);

// Converts a name for the system's own functions. The library reads a backslash as a separator if no entry has that
// exact name; the system does not.
std::filesystem::path SystemPath(const CTOVStringA& oName);
