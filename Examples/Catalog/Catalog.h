// Declares the data of a catalogue.
#pragma once

#include "Rare.h"
#include "Sha256.h"
#include "TextStore.h"

#include <TOVContainers/TOVArray.h>
#include <TOVString/TOVStringA.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

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

// What only some catalogues have of a file.
struct sFileDetails
{
    unsigned long long ullTime = 0; // of the last change, in 100 ns since 1601 (UTC); 0: unknown
    CRare<tSha256> oSha256;
};

// Records one file. The path is relative to its directory in the catalogue's list, with '/' between the components. A
// record needs no more memory than twice its bytes in a catalogue, since a hostile one can have millions of them.
struct sFileRecord
{
    unsigned long long ullSize = 0;
    const char* szPath = ""; // in the catalogue's store
    int nDirectory = 0;
    tDword dwCrc = 0; // CRC-32, the same as in zip and PNG
    CRare<sFileDetails> oDetails;

    unsigned long long GetTime() const { return oDetails.Get() != nullptr ? oDetails.Get()->ullTime : 0; }

    // Returns null if the value is not known.
    const tSha256* GetSha256() const { return oDetails.Get() != nullptr ? oDetails.Get()->oSha256.Get() : nullptr; }
};

// A list of names or patterns, of which a damaged or hostile catalogue can have millions, too.
class CNameList
{
public:
    // Makes room for a number of names.
    void Reserve(long lCount) { m_aszNames.reserve(static_cast<std::size_t>(lCount)); }

    void Add(std::string_view sName) { m_aszNames.push_back(m_pStore->Add(sName)); }

    CTOVStringA operator[](long lName) const { return CTOVStringA(m_aszNames[static_cast<std::size_t>(lName)]); }
    long GetSize() const { return static_cast<long>(m_aszNames.size()); }
    bool IsEmpty() const { return m_aszNames.empty(); }

private:
    std::shared_ptr<CTextStore> m_pStore = std::make_shared<CTextStore>(); // copies of the list share it
    std::vector<const char*> m_aszNames;
};

struct sCatalog
{
    CNameList aDirectories;        // as given on the command line
    CNameList aPatterns;           // empty: every file
    CNameList aExcludes;           // patterns of what is left out
    bool bTimes = false;           // the records have the times of their files
    bool bSha256 = false;          // they have SHA-256 besides CRC-32
    CTOVArray<sFileRecord> aFiles; // sorted by CompareRecords

    // Has the paths of these records and of those that are compared with them. Copies of the catalogue share it.
    std::shared_ptr<CTextStore> pPaths = std::make_shared<CTextStore>();
};

// Compares the directories, then the paths by their bytes. Returns a number below 0, 0 or a number above 0.
int CompareRecords(const sFileRecord& oFirst, const sFileRecord& oSecond);

// Converts a value to 64 lower-case hexadecimal digits.
std::string HexOf(const tSha256& aValue);

// Returns the name under which a record's file is opened.
CTOVStringA FullName(const sCatalog& oCatalog, const sFileRecord& oRecord);

// Joins the two with '/', which both systems accept, unless the directory already ends in it. AppendPath appends to a
// path, unless it is empty, in the same way.
CTOVStringA JoinPath(const CTOVStringA& oDirectory, const char* szName);
void AppendPath(std::string& sPath, const char* szName);

// Joins the two unless the name is absolute.
CTOVStringA RelativeTo(const CTOVStringA& oBase, const CTOVStringA& oName);

// Returns the name to which a link leads, over any further links, even if nothing has that name. Any other name is
// returned unchanged. Throws CCatalogError for a link that leads to itself, or that the system does not allow to
// follow.
CTOVStringA TargetOf(const CTOVStringA& oName);

// Converts a name for the system's own functions. The library reads a backslash as a separator if no entry has that
// exact name; the system does not.
std::filesystem::path SystemPath(const CTOVStringA& oName);

// Returns whether nothing has this name. Returns false if the system cannot tell, as below a directory that may not be
// searched.
bool IsMissing(const CTOVStringA& oName);
