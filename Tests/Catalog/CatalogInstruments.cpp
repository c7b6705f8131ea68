#include "Catalog/CatalogInstruments.h"
#include "Catalog/CatalogFiles.h"

#include <Commands.h>

#include <algorithm>
#include <filesystem>
#include <regex>

namespace
{
constexpr std::uint32_t POLYNOMIAL = 0xEDB88320;

// Multiplies polynomials over the field of two elements. The lowest power has the highest bit.
std::uint32_t MultiplyPolynomials(std::uint32_t nLeft, std::uint32_t nRight)
{
    std::uint32_t nProduct = 0;
    for (std::uint32_t nBit = 0x80000000; nBit != 0; nBit >>= 1)
    {
        if ((nLeft & nBit) != 0)
            nProduct ^= nRight;
        nRight = (nRight >> 1) ^ ((nRight & 1) != 0 ? POLYNOMIAL : 0);
    }
    return nProduct;
}

std::uint32_t PowerOfX(unsigned long long ullExponent)
{
    std::uint32_t nPower = 0x80000000;
    std::uint32_t nSquare = 0x40000000;
    for (; ullExponent != 0; ullExponent >>= 1)
    {
        if ((ullExponent & 1) != 0)
            nPower = MultiplyPolynomials(nPower, nSquare);
        nSquare = MultiplyPolynomials(nSquare, nSquare);
    }
    return nPower;
}

std::string FileSections(std::uint32_t nVersion, const std::vector<sCatalogFile>& aFiles)
{
    std::string sBytes = CatalogNumber(static_cast<std::uint32_t>(aFiles.size()));
    for (const sCatalogFile& oFile : aFiles)
    {
        sBytes += CatalogNumber(nVersion);
        if (nVersion == 2)
            sBytes += CatalogNumber(oFile.nDirectory);
        sBytes += CatalogText(oFile.sPath) + CatalogNumber(static_cast<std::uint32_t>(oFile.nSize));
        if (nVersion == 2)
            sBytes += CatalogNumber(static_cast<std::uint32_t>(oFile.nSize >> 32));
        sBytes += CatalogNumber(oFile.nCrc);
    }
    return sBytes;
}

std::string TextList(const std::vector<std::string>& aTexts)
{
    std::string sBytes = CatalogNumber(static_cast<std::uint32_t>(aTexts.size()));
    for (const std::string& sText : aTexts)
        sBytes += CatalogText(sText);
    return sBytes;
}

testing::AssertionResult Unexpected(const sRun& oRun)
{
    return testing::AssertionFailure() << "exit code " << oRun.nExitCode << "\n--- output\n"
                                       << oRun.sOutput << "--- errors\n"
                                       << oRun.sErrors;
}
} // namespace

CReferenceCrc& CReferenceCrc::Add(const std::string& sBytes)
{
    for (const char cByte : sBytes)
    {
        m_nRegister ^= static_cast<unsigned char>(cByte);
        for (int nBit = 0; nBit < 8; ++nBit)
            m_nRegister = (m_nRegister >> 1) ^ ((m_nRegister & 1) != 0 ? POLYNOMIAL : 0);
    }
    return *this;
}

CReferenceCrc& CReferenceCrc::AddZeros(unsigned long long ullCount)
{
    m_nRegister = MultiplyPolynomials(m_nRegister, PowerOfX(8 * ullCount));
    return *this;
}

std::uint32_t CReferenceCrc::Value() const
{
    return ~m_nRegister;
}

std::uint32_t Crc(const std::string& sBytes)
{
    return CReferenceCrc().Add(sBytes).Value();
}

std::string CatalogNumber(std::uint32_t nNumber)
{
    std::string sBytes;
    for (int nShift = 0; nShift < 32; nShift += 8)
        sBytes += static_cast<char>(nNumber >> nShift);
    return sBytes;
}

std::string CatalogText(const std::string& sText)
{
    return CatalogNumber(static_cast<std::uint32_t>(sText.size())) + sText;
}

std::string Sealed(const std::string& sBytes)
{
    return sBytes + CatalogNumber(Crc(sBytes + '\0'));
}

std::string SealedOfVersion2(const std::string& sBytes)
{
    return sBytes + CatalogNumber(Crc(sBytes));
}

std::string CatalogVersion3(const std::vector<std::string>& aDirectories, const std::vector<std::string>& aPatterns,
                            const std::vector<sCatalogFile>& aFiles)
{
    return Sealed("TOVCATLG" + CatalogNumber(3) + CatalogNumber(1) + TextList(aDirectories) + TextList(aPatterns) +
                  FileSections(2, aFiles));
}

std::string CatalogVersion2(const std::vector<std::string>& aDirectories, const std::vector<std::string>& aPatterns,
                            const std::vector<sCatalogFile>& aFiles)
{
    return SealedOfVersion2("TOVCATLG" + CatalogNumber(2) + CatalogNumber(1) + TextList(aDirectories) +
                            TextList(aPatterns) + FileSections(2, aFiles));
}

std::string CatalogVersion1(const std::string& sDirectory, const std::vector<sCatalogFile>& aFiles)
{
    return "TOVCATLG" + CatalogNumber(1) + CatalogText(sDirectory) + FileSections(1, aFiles);
}

std::vector<std::string> Lines(const std::string& sText)
{
    std::vector<std::string> aLines;
    for (std::size_t nStart = 0; nStart < sText.size();)
    {
        const std::size_t nEnd = std::min(sText.find('\n', nStart), sText.size());
        aLines.push_back(sText.substr(nStart, nEnd - nStart));
        nStart = nEnd + 1;
    }
    return aLines;
}

testing::AssertionResult IsRefused(const sRun& oRun, const std::string& sPart)
{
    const bool bRefused = oRun.nExitCode == 2 && oRun.sOutput.empty() && Lines(oRun.sErrors).size() == 1 &&
                          oRun.sErrors.back() == '\n' && oRun.sErrors.rfind("tovcatalog: ", 0) == 0 &&
                          oRun.sErrors.find(sPart) != std::string::npos &&
                          std::count_if(oRun.sErrors.begin(), oRun.sErrors.end(),
                                        [](char c) { return static_cast<unsigned char>(c) < ' '; }) == 1;
    return bRefused ? testing::AssertionSuccess() : Unexpected(oRun);
}

testing::AssertionResult IsWrongUsage(const sRun& oRun)
{
    const bool bRefused = oRun.nExitCode == 2 && oRun.sOutput.empty() && !oRun.sErrors.empty();
    return bRefused ? testing::AssertionSuccess() : Unexpected(oRun);
}

std::vector<std::string> Reports(const sRun& oRun)
{
    std::vector<std::string> aReports;
    const std::regex oReport("(changed|moved|missing|new|unreadable) +(.*)");
    for (const std::string& sLine : Lines(oRun.sOutput))
    {
        std::smatch oMatch;
        aReports.push_back(std::regex_match(sLine, oMatch, oReport) ? oMatch.str(1) + " " + oMatch.str(2) : sLine);
    }
    if (!aReports.empty())
        aReports.pop_back();
    std::sort(aReports.begin(), aReports.end());
    return aReports;
}

std::vector<std::string> Unreadable(const sRun& oRun)
{
    std::vector<std::string> aNames;
    const std::regex oReport("unreadable +(.*)");
    for (const std::string& sLine : Lines(oRun.sErrors))
    {
        std::smatch oMatch;
        aNames.push_back(std::regex_match(sLine, oMatch, oReport) ? oMatch.str(1) : "? " + sLine);
    }
    std::sort(aNames.begin(), aNames.end());
    return aNames;
}

std::string Summary(const sRun& oRun)
{
    const std::vector<std::string> aLines = Lines(oRun.sOutput);
    const std::regex oSummary("([0-9]+ files?, [0-9]+ bytes) in [0-9]+\\.[0-9]+ s \\([0-9]+\\.[0-9]+ MB/s\\) (.*)");
    std::smatch oMatch;
    if (aLines.empty() || !std::regex_match(aLines.back(), oMatch, oSummary))
        return "no summary in: " + oRun.sOutput + oRun.sErrors;
    return oMatch.str(1) + ": " + oMatch.str(2);
}

std::string CatalogTest::Path(const std::string& sName) const
{
    return m_oFolder.File(sName);
}

const std::string& CatalogTest::Folder() const
{
    return m_oFolder.Path();
}

void CatalogTest::Write(const std::string& sName, const std::string& sContents)
{
    const std::size_t nSlash = sName.rfind('/');
    if (nSlash != std::string::npos)
        MakeDirectory(sName.substr(0, nSlash));
    WriteWholeFile(Path(sName), sContents);
}

void CatalogTest::MakeDirectory(const std::string& sName)
{
    for (std::size_t nSlash = 0; nSlash != std::string::npos;)
    {
        nSlash = sName.find('/', nSlash + 1);
        MakeDirectoryOfBytes(Path(sName.substr(0, nSlash)));
    }
}

void CatalogTest::Remove(const std::string& sName)
{
    std::filesystem::remove_all(Path(sName));
}

std::string CatalogTest::Read(const std::string& sName) const
{
    return ReadWholeFile(Path(sName));
}

bool CatalogTest::Exists(const std::string& sName) const
{
    return std::filesystem::exists(std::filesystem::symlink_status(Path(sName)));
}

sProgram CatalogTest::Program(const std::vector<std::string>& aArguments) const
{
    return CatalogProgram(aArguments, Folder());
}

sRun CatalogTest::Run(const std::vector<std::string>& aArguments) const
{
    return RunCatalog(aArguments, Folder());
}

sRun CatalogTest::RunHere(const std::string& sCommand) const
{
    const std::atomic<bool> bNoStop(false);
    const std::filesystem::path oFormer = std::filesystem::current_path();
    std::filesystem::current_path(Folder());
    testing::internal::CaptureStdout();
    sRun oRun;
    try
    {
        sVerifyOptions oVerify;
        oVerify.oName = "c.cat";
        oVerify.nThreads = 2;
        if (sCommand == "list")
            oRun.nExitCode = ListCatalog("c.cat");
        else
            oRun.nExitCode = sCommand == "check" ? CheckList(oVerify, bNoStop) : VerifyCatalog(oVerify, bNoStop);
    }
    catch (const CCatalogError& oError)
    {
        // As the main program reports it.
        oRun.nExitCode = eExitFailure;
        oRun.sErrors = std::string("tovcatalog: ") + oError.what() + "\n";
    }
    oRun.sOutput = testing::internal::GetCapturedStdout();
    std::filesystem::current_path(oFormer);
    return oRun;
}

sRun CatalogTest::RunInSweep(std::size_t nStep, const std::string& sCommand) const
{
    return nStep % 64 == 0 ? Run({sCommand, "c.cat"}) : RunHere(sCommand);
}

std::vector<std::string> CatalogTest::NamesInFolder() const
{
    std::vector<std::string> aNames;
    for (const auto& oEntry : std::filesystem::directory_iterator(Folder()))
        aNames.push_back(oEntry.path().filename().string());
    std::sort(aNames.begin(), aNames.end());
    return aNames;
}

void CatalogTest::Create(const std::vector<std::string>& aArguments)
{
    std::vector<std::string> aAll = {"create"};
    aAll.insert(aAll.end(), aArguments.begin(), aArguments.end());
    const sRun oRun = Run(aAll);
    ASSERT_EQ(0, oRun.nExitCode) << oRun.sOutput << oRun.sErrors;
}

std::vector<std::string> CatalogTest::Listed(const std::string& sCatalog) const
{
    const sRun oRun = Run({"list", sCatalog});
    EXPECT_EQ(0, oRun.nExitCode) << oRun.sErrors;
    std::vector<std::string> aFiles;
    const std::regex oFile("([0-9a-f]{8}) +([0-9]+)  (.*)");
    for (const std::string& sLine : Lines(oRun.sOutput))
    {
        std::smatch oMatch;
        aFiles.push_back(
            std::regex_match(sLine, oMatch, oFile) ? oMatch.str(1) + " " + oMatch.str(2) + " " + oMatch.str(3) : sLine);
    }
    // The last line is the summary.
    if (!aFiles.empty())
        aFiles.pop_back();
    return aFiles;
}
