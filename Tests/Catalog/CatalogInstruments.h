// What the tests of tovcatalog share.
#pragma once

#include "Catalog/CatalogProcess.h"
#include "Support/TOVTestSupport.h"

#include <cstdint>

// CRC-32 bit by bit, and for runs of zeros by calculation: independent of how the program computes it.
class CReferenceCrc
{
public:
    CReferenceCrc& Add(const std::string& sBytes);
    CReferenceCrc& AddZeros(unsigned long long ullCount);

    std::uint32_t Value() const;

private:
    std::uint32_t m_nRegister = 0xFFFFFFFF;
};

std::uint32_t Crc(const std::string& sBytes);

// The bytes of catalogues, as Documentation/Catalog.md describes them.
struct sCatalogFile
{
    std::uint32_t nDirectory;
    std::string sPath;
    std::uint64_t nSize;
    std::uint32_t nCrc;
};

std::string CatalogNumber(std::uint32_t nNumber);
std::string CatalogText(const std::string& sText);

// The bytes with the check value of a catalogue after them: of version 3, and their plain CRC-32 of version 2.
std::string Sealed(const std::string& sBytes);
std::string SealedOfVersion2(const std::string& sBytes);

std::string CatalogVersion3(const std::vector<std::string>& aDirectories, const std::vector<std::string>& aPatterns,
                            const std::vector<sCatalogFile>& aFiles);
std::string CatalogVersion2(const std::vector<std::string>& aDirectories, const std::vector<std::string>& aPatterns,
                            const std::vector<sCatalogFile>& aFiles);
std::string CatalogVersion1(const std::string& sDirectory, const std::vector<sCatalogFile>& aFiles);

std::vector<std::string> Lines(const std::string& sText);

// Has exit status 2, says one clear line that holds the part, and nothing else.
testing::AssertionResult IsRefused(const sRun& oRun, const std::string& sPart);

// The same, for runs that must not come to anything but may be told in more than one line.
testing::AssertionResult IsWrongUsage(const sRun& oRun);

// What verify reported, as "changed tree/a.txt", sorted: everything but the summary.
std::vector<std::string> Reports(const sRun& oRun);

// The names of files that create could not read, sorted; any other line of standard error is there too, with a mark.
std::vector<std::string> Unreadable(const sRun& oRun);

// The last line of standard output, without its seconds and speed: "2 files, 10 bytes: catalogued".
std::string Summary(const sRun& oRun);

// A folder in which the program is started, with a tree of files.
class CCatalogTest : public testing::Test
{
protected:
    // Full name of a thing in the folder.
    std::string Path(const std::string& sName) const;
    const std::string& Folder() const;

    // Directories on the way are made. / is between them on every system.
    void Write(const std::string& sName, const std::string& sContents);
    void MakeDirectory(const std::string& sName);
    void Remove(const std::string& sName);
    std::string Read(const std::string& sName) const;
    bool Exists(const std::string& sName) const;

    // The program in the folder, and its run to the end.
    sProgram Program(const std::vector<std::string>& aArguments) const;
    sRun Run(const std::vector<std::string>& aArguments) const;

    // Names of what stands in the folder, sorted.
    std::vector<std::string> NamesInFolder() const;

    // Runs create, which must succeed.
    void Create(const std::vector<std::string>& aArguments);

    // What list prints for files, as "363a3020 6 tree/a.txt", in its order. It must succeed.
    std::vector<std::string> Listed(const std::string& sCatalog = "c.cat") const;

private:
    CTempFolder m_oFolder;
};

typedef std::vector<std::string> tNames;
