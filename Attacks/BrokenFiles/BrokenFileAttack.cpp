// Breaks files in many ways and reads them: BrokenFileAttack PARTS STEP RECORDS
//
// Each sample has so many parts, and each STEPth broken file of each kind is read. The large catalogues have so many
// records. The exit status is 1 unless all files give what the model of their format says, and none takes too much
// memory to be refused.
#include "FileFormat.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

namespace
{
constexpr std::size_t MAX_FLIPPED = 4096;
constexpr std::size_t MEBIBYTE = 1024 * 1024;
constexpr std::uint32_t HOSTILE_NUMBERS[] = {0, 1, 0x7FFFFFFF, 0xFFFFFFFF};

// What became of all files of a format.
class CFigures
{
public:
    explicit CFigures(const std::string& sName) : m_sName(sName) {}

    void Add(const std::string& sBytes, const sReading& oReading, const tContents& oExpected, const std::string& sHow)
    {
        ++m_lFiles;
        m_lRead += oReading.oContents ? 1 : 0;
        std::string sDeviation = oReading.sUnexpected;
        if (sDeviation.empty() && oReading.oContents.has_value() != oExpected.has_value())
            sDeviation = oExpected ? "a whole file is refused" : "a broken file is not refused";
        if (sDeviation.empty() && oReading.oContents != oExpected)
            sDeviation = "the contents are others";
        if (!sDeviation.empty() && m_lDeviations++ < 5)
            std::printf("not as described: %s, %s: %s\n", m_sName.c_str(), sHow.c_str(), sDeviation.c_str());

        const bool bTooMuch = oReading.nPeakMemory > 2 * sBytes.size() + MEBIBYTE;
        long& lTooMuch = oReading.oContents ? m_lTooMuchToRead : m_lTooMuchToRefuse;
        if (bTooMuch && lTooMuch++ < 2)
            std::printf("too much memory: %s, %s: %zu bytes for a file of %zu\n", m_sName.c_str(), sHow.c_str(),
                        oReading.nPeakMemory, sBytes.size());
        m_nMostMemory = std::max(m_nMostMemory, oReading.nPeakMemory);
    }

    // Returns whether all was as described.
    bool Tell() const
    {
        std::printf("%s: %ld files, %ld refused, %ld read, %ld deviations, too much memory to refuse %ld, to read %ld, "
                    "at most %zu KiB\n",
                    m_sName.c_str(), m_lFiles, m_lFiles - m_lRead, m_lRead, m_lDeviations, m_lTooMuchToRefuse,
                    m_lTooMuchToRead, m_nMostMemory / 1024);
        std::fflush(stdout);
        return m_lDeviations == 0 && m_lTooMuchToRefuse == 0;
    }

private:
    const std::string m_sName;
    long m_lFiles = 0;
    long m_lRead = 0;
    long m_lDeviations = 0;
    long m_lTooMuchToRefuse = 0;
    long m_lTooMuchToRead = 0;
    std::size_t m_nMostMemory = 0;
};

class CBreaker
{
public:
    CBreaker(const IFileFormat& oFormat, const std::string& sName, std::size_t nStep)
        : m_oFormat(oFormat), m_sName(sName), m_nStep(nStep), m_oFigures(oFormat.GetName())
    {
    }

    // The file is broken at every byte, bit and number, each time with the check value that it had and, unless the
    // format has none, with one made anew.
    bool BreakEverywhere(int nParts)
    {
        const std::string sBody = m_oFormat.MakeBody(nParts);
        const std::string sWhole = sBody + m_oFormat.MakeSeal(sBody);
        Read(sWhole, "whole");
        Cut(sWhole, sBody);
        Flip(sWhole, sBody);
        ReplaceNumbers(sWhole, sBody);
        return m_oFigures.Tell();
    }

    // The numbers at the beginning of a large file are replaced, among others by what the file could just hold.
    bool BreakTheHead(int nParts)
    {
        const std::string sBody = m_oFormat.MakeBody(nParts);
        ReadSealed(sBody, "whole");
        constexpr std::size_t HEAD = 80;
        std::vector<std::uint32_t> aNumbers(std::begin(HOSTILE_NUMBERS), std::end(HOSTILE_NUMBERS));
        for (const std::size_t nEach : {1u, 4u, 5u, 17u, 25u})
            aNumbers.push_back(static_cast<std::uint32_t>(sBody.size() / nEach - HEAD));
        for (std::size_t nPlace = 0; nPlace < HEAD && nPlace + 4 <= sBody.size(); nPlace += m_nStep)
        {
            for (const std::uint32_t nNumber : aNumbers)
                ReadSealed(Replaced(sBody, nPlace, NumberBytes(nNumber)), Place("number", nPlace));
        }
        return m_oFigures.Tell();
    }

private:
    static std::string Replaced(std::string sBytes, std::size_t nPlace, const std::string& sNew)
    {
        return sBytes.replace(nPlace, sNew.size(), sNew);
    }

    static std::string Place(const char* szWhat, std::size_t nPlace)
    {
        return std::string(szWhat) + " " + std::to_string(nPlace);
    }

    void Cut(const std::string& sWhole, const std::string& sBody)
    {
        for (std::size_t nLength = 0; nLength < sWhole.size(); nLength += m_nStep)
            Read(sWhole.substr(0, nLength), Place("cut at", nLength));
        for (std::size_t nLength = 0; nLength < sBody.size() && m_oFormat.HasSeal(); nLength += m_nStep)
            ReadSealed(sBody.substr(0, nLength), Place("cut and sealed at", nLength));
    }

    void Flip(const std::string& sWhole, const std::string& sBody)
    {
        for (std::size_t nBit = 0; nBit < 8 * std::min(sWhole.size(), MAX_FLIPPED); nBit += m_nStep)
            Read(Flipped(sWhole, nBit), Place("bit", nBit));
        for (std::size_t nBit = 0; nBit < 8 * std::min(sBody.size(), MAX_FLIPPED) && m_oFormat.HasSeal();
             nBit += m_nStep)
            ReadSealed(Flipped(sBody, nBit), Place("sealed bit", nBit));
    }

    static std::string Flipped(std::string sBytes, std::size_t nBit)
    {
        sBytes[nBit / 8] = static_cast<char>(sBytes[nBit / 8] ^ (1 << nBit % 8));
        return sBytes;
    }

    // Every place may hold a length or a count.
    void ReplaceNumbers(const std::string& sWhole, const std::string& sBody)
    {
        for (const std::uint32_t nNumber : HOSTILE_NUMBERS)
        {
            for (std::size_t nPlace = 0; nPlace + 4 <= sWhole.size(); nPlace += m_nStep)
                Read(Replaced(sWhole, nPlace, NumberBytes(nNumber)), Place("number", nPlace));
            for (std::size_t nPlace = 0; nPlace + 4 <= sBody.size() && m_oFormat.HasSeal(); nPlace += m_nStep)
                ReadSealed(Replaced(sBody, nPlace, NumberBytes(nNumber)), Place("sealed number", nPlace));
        }
    }

    void ReadSealed(const std::string& sBody, const std::string& sHow)
    {
        Read(sBody + m_oFormat.MakeSeal(sBody), sHow);
    }

    void Read(const std::string& sBytes, const std::string& sHow)
    {
        std::filesystem::remove(m_sName); // some file systems write an emptied file to the disk at once
        {
            std::ofstream oFile(m_sName, std::ios::binary);
            oFile.write(sBytes.data(), static_cast<std::streamsize>(sBytes.size()));
        }
        m_oFigures.Add(sBytes, m_oFormat.Read(m_sName), m_oFormat.Expect(sBytes), sHow);
    }

    const IFileFormat& m_oFormat;
    const std::string m_sName;
    const std::size_t m_nStep;
    CFigures m_oFigures;
};

// A new folder for the file of this run.
std::filesystem::path MakeFolder()
{
    std::random_device oChance;
    const std::filesystem::path oFolder =
        std::filesystem::temp_directory_path() / ("tov-broken-" + std::to_string(oChance()));
    std::filesystem::create_directory(oFolder);
    return oFolder;
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    if (nArguments != 4)
        return 2;
    const int nParts = std::atoi(aszArguments[1]);
    const std::size_t nStep = static_cast<std::size_t>(std::atoi(aszArguments[2]));
    const int nRecords = std::atoi(aszArguments[3]);

    const std::filesystem::path oFolder = MakeFolder();
    const std::string sName = (oFolder / "broken").string();
    bool bAll = true;
    for (const std::unique_ptr<IFileFormat>& pFormat : MakeFormats())
        bAll = CBreaker(*pFormat, sName, nStep).BreakEverywhere(nParts) && bAll;
    std::printf("with %d records:\n", nRecords);
    for (const std::unique_ptr<IFileFormat>& pFormat : MakeFormats())
        bAll = CBreaker(*pFormat, sName, nStep).BreakTheHead(nRecords) && bAll;
    std::filesystem::remove_all(oFolder);
    return bAll ? 0 : 1;
}
