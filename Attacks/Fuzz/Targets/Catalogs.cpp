// The catalogue reader: success or the described error, for any file. Half of the files have the right check value, so
// that the parser before it is reached.
#include "Fuzz.h"

#include <Catalog.h>
#include <CatalogFile.h>
#include <Console.h>
#include <TOVString/TOVCrc.h>

#include <filesystem>
#include <fstream>
#include <random>

namespace
{
// A file of this process, where temporary files are: /dev/shm, if TMPDIR says so.
class CTestFile
{
public:
    CTestFile()
        : m_oPath(std::filesystem::temp_directory_path() /
                  ("tov-fuzz-" + std::to_string(std::random_device()()) + ".cat"))
    {
    }

    ~CTestFile()
    {
        std::error_code oIgnored;
        std::filesystem::remove(m_oPath, oIgnored);
    }

    CTOVStringA Write(const std::string& sBytes) const
    {
        std::ofstream(m_oPath, std::ios::binary) << sBytes;
        return CTOVStringA(m_oPath.string().c_str());
    }

private:
    const std::filesystem::path m_oPath;
};

std::string BytesOf(tDword dwNumber)
{
    return std::string(reinterpret_cast<const char*>(&dwNumber), sizeof(dwNumber));
}

// The rest of a catalogue of a version, with its right check value.
std::string Seal(int nVersion, const std::string& sRest)
{
    const std::string sBytes =
        std::string(CATALOG_MAGIC, sizeof(CATALOG_MAGIC)) + BytesOf(static_cast<tDword>(nVersion)) + sRest;
    // Version 3 takes a zero byte into its check value; version 1 has none.
    const std::string sSummed = nVersion == 3 ? sBytes + '\0' : sBytes;
    return nVersion == 1 ? sBytes : sBytes + BytesOf(~CRC32Generate(sSummed.data(), sSummed.size(), 0xFFFFFFFF));
}

void CheckName(const CTOVStringA& oName)
{
    FUZZ_EXPECT(0 < oName.GetLength() && oName.GetLength() <= LONGEST_NAME);
    const CTOVStringA oShown = Printable(oName);
    for (long l = 0; l < oShown.GetLength(); ++l)
        FUZZ_EXPECT(oShown.GetAt(l) >= 0x20 && oShown.GetAt(l) != 0x7F);
}
} // namespace

FUZZ_TARGET(Catalogs)
{
    static const CTestFile s_oFile;
    const int nVersion = oInput.Below(4);
    const std::string sRest = oInput.Rest();
    const CTOVStringA oName = s_oFile.Write(nVersion == 0 ? sRest : Seal(nVersion, sRest));
    try
    {
        const sCatalog oCatalog = LoadCatalog(oName);
        for (long l = 0; l < oCatalog.aDirectories.GetSize(); ++l)
            CheckName(oCatalog.aDirectories[l]);
        for (long l = 0; l < oCatalog.aPatterns.GetSize(); ++l)
            CheckName(oCatalog.aPatterns[l]);
        for (long l = 0; l < oCatalog.aExcludes.GetSize(); ++l)
            CheckName(oCatalog.aExcludes[l]);
        for (long l = 0; l < oCatalog.aFiles.GetSize(); ++l)
        {
            FUZZ_EXPECT_EQ(oCatalog.bSha256, oCatalog.aFiles[l].GetSha256() != nullptr);
            CheckName(oCatalog.aFiles[l].szPath);
            FUZZ_EXPECT(0 <= oCatalog.aFiles[l].nDirectory);
            FUZZ_EXPECT(oCatalog.aFiles[l].nDirectory < oCatalog.aDirectories.GetSize());
        }
    }
    catch (const CCatalogError& oError)
    {
        FUZZ_EXPECT(std::string(oError.what()).find(~oName) == 0);
    }
}
