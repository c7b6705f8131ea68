// Catalogues of all versions, as Documentation/Catalog.md describes them, and as tovcatalog reads them.
#include "FileFormat.h"
#include "PeakMemory.h"

#include <CatalogFile.h>

#include <Debug/TOVException.h>

#include <algorithm>

namespace
{
constexpr char MAGIC[] = "TOVCATLG";

// What the files of a catalogue have besides size and CRC-32.
constexpr int TIMES = 1;
constexpr int SHA256 = 2;
constexpr std::size_t TIME_SIZE = 8;
constexpr std::size_t SHA256_SIZE = 32;

// The errors that a broken catalogue may give.
constexpr const char* ERRORS[] = {" is truncated", " is damaged", " is no catalogue",
                                  " was written by a newer version of this program"};

struct sRefused
{
};

void Require(bool bHolds)
{
    if (!bHolds)
        throw sRefused();
}

std::string Text(const std::string& sText)
{
    return NumberBytes(static_cast<std::uint32_t>(sText.size())) + sText;
}

std::string Line(int nDirectory, const std::string& sPath, unsigned long long ullSize, std::uint32_t nCrc,
                 unsigned long long ullTime, const std::string& sSha256)
{
    return std::to_string(nDirectory) + " " + sPath + " " + std::to_string(ullSize) + " " + std::to_string(nCrc) + " " +
           std::to_string(ullTime) + " " + sSha256 + "\n";
}

std::string LineOf(const sFileRecord& oRecord)
{
    const tSha256* pSha256 = oRecord.GetSha256();
    return Line(oRecord.nDirectory, oRecord.szPath, oRecord.ullSize, oRecord.dwCrc, oRecord.GetTime(),
                pSha256 != nullptr ? std::string(pSha256->begin(), pSha256->end()) : "");
}

std::string Lines(const CNameList& aTexts)
{
    std::string sLines;
    for (long lText = 0; lText < aTexts.GetSize(); ++lText)
        sLines += std::string(~aTexts[lText]) + "\n";
    return sLines;
}

std::string ModelText(CModelBytes& oBytes)
{
    const int nLength = oBytes.Number();
    Require(0 < nLength && nLength <= LONGEST_NAME);
    const std::string sText = oBytes.Take(static_cast<std::size_t>(nLength));
    Require(sText.find('\0') == sText.npos);
    return sText;
}

// Whether so many elements can follow.
int ModelCount(CModelBytes& oBytes, std::size_t nSmallest)
{
    const int nCount = oBytes.Number();
    Require(nCount >= 0 && static_cast<std::size_t>(nCount) <= oBytes.Rest() / nSmallest);
    return nCount;
}

std::string ModelTexts(CModelBytes& oBytes, int& nCount)
{
    nCount = ModelCount(oBytes, 5);
    std::string sLines;
    for (int nText = 0; nText < nCount; ++nText)
        sLines += ModelText(oBytes) + "\n";
    return sLines;
}

unsigned long long ModelLongNumber(CModelBytes& oBytes)
{
    const unsigned long long ullLow = static_cast<std::uint32_t>(oBytes.Number());
    return ullLow | static_cast<unsigned long long>(static_cast<std::uint32_t>(oBytes.Number())) << 32;
}

// A catalogue of version 1 has records of version 1, with neither a directory, which is then the first, nor a high word
// of their size. All others have records of version 2, or of version 3 if their files have more.
std::string ModelRecord(CModelBytes& oBytes, int nDirectories, int nCatalogVersion, int nKept)
{
    const int nVersion = oBytes.Number();
    Require(nVersion == (nCatalogVersion == 1 ? 1 : nKept == 0 ? 2 : 3));
    const int nDirectory = nVersion >= 2 ? oBytes.Number() : 0;
    const std::string sPath = ModelText(oBytes);
    const unsigned long long ullSize =
        nVersion >= 2 ? ModelLongNumber(oBytes) : static_cast<std::uint32_t>(oBytes.Number());
    const std::uint32_t nCrc = static_cast<std::uint32_t>(oBytes.Number());
    const unsigned long long ullTime = (nKept & TIMES) != 0 ? ModelLongNumber(oBytes) : 0;
    const std::string sSha256 = (nKept & SHA256) != 0 ? oBytes.Take(SHA256_SIZE) : "";
    Require(0 <= nDirectory && nDirectory < nDirectories);
    return Line(nDirectory, sPath, ullSize, nCrc, ullTime, sSha256);
}

class CCatalogFormat : public IFileFormat
{
public:
    CCatalogFormat(int nVersion, eCatalogContents eContents)
        : m_nVersion(nVersion), m_eContents(eContents),
          m_sName("catalogue " + std::to_string(nVersion) +
                  (eContents == eCatalogMixed  ? " with older records"
                   : eContents == eCatalogFull ? " with excludes, times and SHA-256"
                                               : ""))
    {
    }

    const char* GetName() const override { return m_sName.c_str(); }

    std::string MakeBody(int nParts) const override
    {
        std::string sBody = MAGIC + NumberBytes(static_cast<std::uint32_t>(m_nVersion));
        if (m_nVersion >= 2)
            sBody += NumberBytes(m_eContents == eCatalogFull ? 2 : 1) + NumberBytes(2) + Text("first") +
                     Text("the second") + NumberBytes(1) + Text("*.c");
        else
            sBody += Text("first");
        if (m_eContents == eCatalogFull)
            sBody += NumberBytes(1) + Text("*.o") + NumberBytes(TIMES + SHA256);
        sBody += NumberBytes(static_cast<std::uint32_t>(nParts));
        for (int nPart = 0; nPart < nParts; ++nPart)
            sBody += Record(static_cast<std::uint32_t>(nPart));
        return sBody;
    }

    std::string MakeSeal(const std::string& sBody) const override
    {
        if (m_nVersion == 1)
            return "";
        return NumberBytes(CheckValue(m_nVersion >= 3 ? sBody + '\0' : sBody));
    }

    tContents Expect(const std::string& sBytes) const override
    {
        CModelBytes oBytes(sBytes);
        try
        {
            return ExpectContents(oBytes, sBytes);
        }
        catch (const CModelBytes::sEnd&)
        {
            return {};
        }
        catch (const sRefused&)
        {
            return {};
        }
    }

    sReading Read(const std::string& sName) const override
    {
        sReading oReading;
        oReading.oContents = ReadOnce(sName, &Loaded, oReading);
        // The other command reads the file in its own way, and must find the same.
        if (ReadOnce(sName, &Visited, oReading) != oReading.oContents && oReading.sUnexpected.empty())
            oReading.sUnexpected = "list and verify read it differently";
        return oReading;
    }

private:
    static std::string Loaded(const CTOVStringA& oName, sReading& oReading)
    {
        const CPeakMemory oMemory;
        const sCatalog oCatalog = LoadCatalog(oName);
        oReading.nPeakMemory = std::max(oReading.nPeakMemory, oMemory.Peak());

        std::string sContents = Lines(oCatalog.aDirectories) + Lines(oCatalog.aPatterns) + Lines(oCatalog.aExcludes);
        for (long lFile = 0; lFile < oCatalog.aFiles.GetSize(); ++lFile)
            sContents += LineOf(oCatalog.aFiles[lFile]);
        return sContents;
    }

    static std::string Visited(const CTOVStringA& oName, sReading& oReading)
    {
        {
            const CPeakMemory oMemory;
            VisitCatalog(oName, [](const sCatalog&, const sFileRecord&) {});
            oReading.nPeakMemory = std::max(oReading.nPeakMemory, oMemory.Peak());
        }
        std::string sHead;
        std::string sRecords;
        VisitCatalog(oName, [&](const sCatalog& oCatalog, const sFileRecord& oRecord) {
            if (sRecords.empty())
                sHead = Lines(oCatalog.aDirectories) + Lines(oCatalog.aPatterns) + Lines(oCatalog.aExcludes);
            sRecords += LineOf(oRecord);
        });
        // Without a record nothing is passed on.
        return sRecords.empty() ? Loaded(oName, oReading) : sHead + sRecords;
    }

    static tContents ReadOnce(const std::string& sName, std::string (*fnRead)(const CTOVStringA&, sReading&),
                              sReading& oReading)
    {
        const CPeakMemory oMemory;
        try
        {
            return fnRead(sName.c_str(), oReading);
        }
        catch (const CCatalogError& oError)
        {
            oReading.nPeakMemory = std::max(oReading.nPeakMemory, oMemory.Peak());
            const std::string sError = oError.what();
            const auto fnIsError = [&](const char* szEnd) { return sError.rfind(sName + szEnd, 0) == 0; };
            if (std::none_of(std::begin(ERRORS), std::end(ERRORS), fnIsError))
                oReading.sUnexpected = "another error: " + sError;
        }
        catch (const std::exception& oException)
        {
            oReading.sUnexpected = std::string("an exception: ") + oException.what();
        }
        catch (const CTOVException&)
        {
            oReading.sUnexpected = "an exception of the library";
        }
        return {};
    }

    std::string ExpectContents(CModelBytes& oBytes, const std::string& sBytes) const
    {
        Require(oBytes.Take(sizeof(MAGIC) - 1) == MAGIC);
        const int nVersion = oBytes.Number();
        Require(1 <= nVersion && nVersion <= 3);
        int nDirectories = 1;
        int nPatterns = 0;
        int nKept = 0;
        std::string sContents;
        if (nVersion >= 2)
        {
            const int nSelection = oBytes.Number();
            Require(nSelection == 1 || (nSelection == 2 && nVersion == 3));
            sContents = ModelTexts(oBytes, nDirectories);
            sContents += ModelTexts(oBytes, nPatterns);
            if (nSelection == 2)
            {
                sContents += ModelTexts(oBytes, nPatterns);
                nKept = oBytes.Number();
                Require(0 <= nKept && nKept <= TIMES + SHA256);
            }
        }
        else
            sContents = ModelText(oBytes) + "\n";

        const std::size_t nMore = ((nKept & TIMES) != 0 ? TIME_SIZE : 0) + ((nKept & SHA256) != 0 ? SHA256_SIZE : 0);
        const int nFiles = ModelCount(oBytes, nVersion >= 2 ? 25 + nMore : 17);
        for (int nFile = 0; nFile < nFiles; ++nFile)
            sContents += ModelRecord(oBytes, nDirectories, nVersion, nKept);

        if (nVersion >= 2)
        {
            const std::string sBody = sBytes.substr(0, oBytes.Position());
            Require(oBytes.Take(4) == NumberBytes(CheckValue(nVersion == 3 ? sBody + '\0' : sBody)));
        }
        Require(oBytes.Rest() == 0);
        return sContents;
    }

    std::string Record(std::uint32_t nFile) const
    {
        const std::string sPath = Text("folder/file " + std::to_string(nFile));
        if (m_nVersion == 1 || (m_eContents == eCatalogMixed && nFile % 2 != 0))
            return NumberBytes(1) + sPath + NumberBytes(7 * nFile) + NumberBytes(0xC0C0C0C0 + nFile);
        const bool bFull = m_eContents == eCatalogFull;
        const std::string sMore =
            NumberBytes(nFile) + NumberBytes(1) + std::string(SHA256_SIZE, static_cast<char>(nFile));
        return NumberBytes(bFull ? 3 : 2) + NumberBytes(nFile % 2) + sPath + NumberBytes(7 * nFile) +
               NumberBytes(nFile % 3) + NumberBytes(0xC0C0C0C0 + nFile) + (bFull ? sMore : "");
    }

    const int m_nVersion;
    const eCatalogContents m_eContents;
    const std::string m_sName;
};
} // namespace

std::unique_ptr<IFileFormat> MakeCatalogFormat(int nVersion, eCatalogContents eContents)
{
    return std::make_unique<CCatalogFormat>(nVersion, eContents);
}
