// What the tests of tovcatalog share.
#pragma once

#include "Catalog/CatalogProcess.h"
#include "Support/TOVTestSupport.h"

#include <cstdint>

// Computes CRC-32 in another way than the program does: bit by bit, and for runs of zero bytes by multiplication.
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

// The bytes with the check value of a catalogue after them: that of version 3, and that of version 2, the plain CRC-32.
std::string Sealed(const std::string& sBytes);
std::string SealedOfVersion2(const std::string& sBytes);

std::string CatalogVersion3(const std::vector<std::string>& aDirectories, const std::vector<std::string>& aPatterns,
                            const std::vector<sCatalogFile>& aFiles);
std::string CatalogVersion2(const std::vector<std::string>& aDirectories, const std::vector<std::string>& aPatterns,
                            const std::vector<sCatalogFile>& aFiles);
std::string CatalogVersion1(const std::string& sDirectory, const std::vector<sCatalogFile>& aFiles);

std::vector<std::string> Lines(const std::string& sText);

// Whether the run has exit status 2 and says one clear line that holds the part, and nothing else.
testing::AssertionResult IsRefused(const sRun& oRun, const std::string& sPart);

// Does the same for a run that may say more than one line, whatever they hold.
testing::AssertionResult IsWrongUsage(const sRun& oRun);

// What verify reported, sorted and without the summary, as "changed tree/a.txt".
std::vector<std::string> Reports(const sRun& oRun);

// The names of files that create could not read, sorted. Any other line of standard error is among them, with a mark.
std::vector<std::string> Unreadable(const sRun& oRun);

// The last line of standard output, without its seconds and speed: "2 files, 10 bytes: catalogued".
std::string Summary(const sRun& oRun);

// What stands where a catalogue is to be written.
constexpr char EXISTING[] = "an existing catalogue\n";

// A folder in which the program is started, with a tree of files.
class CatalogTest : public testing::Test
{
protected:
    // The full name of a file in the folder, and that of the folder.
    std::string Path(const std::string& sName) const;
    const std::string& Folder() const;

    // Names have / between their parts on every system. Write makes the directories that are missing.
    void Write(const std::string& sName, const std::string& sContents);
    void MakeDirectory(const std::string& sName);
    void Remove(const std::string& sName);
    std::string Read(const std::string& sName) const;
    bool Exists(const std::string& sName) const;

    // The program in the folder, and its run to the end.
    sProgram Program(const std::vector<std::string>& aArguments) const;
    sRun Run(const std::vector<std::string>& aArguments) const;

    // Runs list, verify or check of c.cat in the folder, without a process of its own, which takes the most time. A
    // sweep over many broken catalogues uses RunInSweep: every 64th step starts the program, the other steps call its
    // command.
    sRun RunHere(const std::string& sCommand) const;
    sRun RunInSweep(std::size_t nStep, const std::string& sCommand) const;

    // The names of all that stands in the folder, sorted.
    std::vector<std::string> NamesInFolder() const;

    // Runs create, which must succeed.
    void Create(const std::vector<std::string>& aArguments);

    // What list prints for the files, in its order, as "363a3020 6 tree/a.txt". The command must succeed.
    std::vector<std::string> Listed(const std::string& sCatalog = "c.cat") const;

private:
    CTempFolder m_oFolder;
};

typedef std::vector<std::string> tNames;
