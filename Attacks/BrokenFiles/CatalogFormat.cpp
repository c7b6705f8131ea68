// Catalogues of all versions, as Documentation/Catalog.md describes them, and as tovcatalog reads them.
#include "FileFormat.h"
#include "PeakMemory.h"

#include <CatalogFile.h>

#include <Debug/TOVException.h>

#include <algorithm>

namespace
{
constexpr char MAGIC[] = "TOVCATLG";

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

std::string Line(int nDirectory, const std::string& sPath, unsigned long long ullSize, std::uint32_t nCrc)
{
    return std::to_string(nDirectory) + " " + sPath + " " + std::to_string(ullSize) + " " + std::to_string(nCrc) + "\n";
}

std::string LineOf(const sFileRecord& oRecord)
{
    return Line(oRecord.nDirectory, ~oRecord.oPath, oRecord.ullSize, oRecord.dwCrc);
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

// A catalogue of version 1 has records of version 1, with neither a directory, which is then the first, nor a high word
// of their size. All others have records of version 2.
std::string ModelRecord(CModelBytes& oBytes, int nDirectories, int nCatalogVersion)
{
    const int nVersion = oBytes.Number();
    Require(nVersion == (nCatalogVersion == 1 ? 1 : 2));
    const int nDirectory = nVersion == 2 ? oBytes.Number() : 0;
    const std::string sPath = ModelText(oBytes);
    unsigned long long ullSize = static_cast<std::uint32_t>(oBytes.Number());
    if (nVersion == 2)
        ullSize |= static_cast<unsigned long long>(static_cast<std::uint32_t>(oBytes.Number())) << 32;
    const std::uint32_t nCrc = static_cast<std::uint32_t>(oBytes.Number());
    Require(0 <= nDirectory && nDirectory < nDirectories);
    return Line(nDirectory, sPath, ullSize, nCrc);
}

class CCatalogFormat : public IFileFormat
{
public:
    CCatalogFormat(int nVersion, bool bMixed)
        : m_nVersion(nVersion), m_bMixed(bMixed),
          m_sName("catalogue " + std::to_string(nVersion) + (bMixed ? " with older records" : ""))
    {
    }

    const char* GetName() const override { return m_sName.c_str(); }

    std::string MakeBody(int nParts) const override
    {
        std::string sBody = MAGIC + NumberBytes(static_cast<std::uint32_t>(m_nVersion));
        if (m_nVersion >= 2)
            sBody +=
                NumberBytes(1) + NumberBytes(2) + Text("first") + Text("the second") + NumberBytes(1) + Text("*.c");
        else
            sBody += Text("first");
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

        std::string sContents = Lines(oCatalog.aDirectories) + Lines(oCatalog.aPatterns);
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
                sHead = Lines(oCatalog.aDirectories) + Lines(oCatalog.aPatterns);
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
        std::string sContents;
        if (nVersion >= 2)
        {
            Require(oBytes.Number() == 1);
            sContents = ModelTexts(oBytes, nDirectories);
            sContents += ModelTexts(oBytes, nPatterns);
        }
        else
            sContents = ModelText(oBytes) + "\n";

        const int nFiles = ModelCount(oBytes, nVersion >= 2 ? 25 : 17);
        for (int nFile = 0; nFile < nFiles; ++nFile)
            sContents += ModelRecord(oBytes, nDirectories, nVersion);

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
        if (m_nVersion == 1 || (m_bMixed && nFile % 2 != 0))
            return NumberBytes(1) + sPath + NumberBytes(7 * nFile) + NumberBytes(0xC0C0C0C0 + nFile);
        return NumberBytes(2) + NumberBytes(nFile % 2) + sPath + NumberBytes(7 * nFile) + NumberBytes(nFile % 3) +
               NumberBytes(0xC0C0C0C0 + nFile);
    }

    const int m_nVersion;
    const bool m_bMixed; // every second record has the older version
    const std::string m_sName;
};
} // namespace

std::unique_ptr<IFileFormat> MakeCatalogFormat(int nVersion, bool bMixed)
{
    return std::make_unique<CCatalogFormat>(nVersion, bMixed);
}
