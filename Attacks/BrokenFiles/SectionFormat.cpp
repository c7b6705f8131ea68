// Files of versioned sections, as an application writes and reads them with the library's streams: a reader that checks
// each length, and a blind one that checks nothing.
#include "FileFormat.h"
#include "PeakMemory.h"

#include <TOVContainers/TOVArray.h>
#include <TOVContainers/TOVBuffer.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVWriteFileStream.h>
#include <TOVString/TOVStringA.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>

// The file of the careful reader:
//
//   section, version 3:  number of parts, and for each a section, version 2:
//       name (length, bytes), numbers (count, each 4 bytes), block (length, bytes; not in version 1)
//   CRC-32 of all bytes before it
//
// A part's section encloses one for its block, so that versions come back.

namespace
{
constexpr int FILE_VERSION = 3;
constexpr int PART_VERSION = 2;

struct sRefused
{
};

void Require(bool bHolds)
{
    if (!bHolds)
        throw sRefused();
}

std::string Hex(const std::string& sBytes)
{
    std::string sHex;
    for (const char cByte : sBytes)
    {
        const unsigned int nByte = static_cast<unsigned char>(cByte);
        sHex += "0123456789abcdef"[nByte / 16];
        sHex += "0123456789abcdef"[nByte % 16];
    }
    return sHex;
}

// What a writer makes of a file that it opens by name.
std::string Written(const std::function<void(ITOVStream&)>& fnWrite)
{
    static const std::string s_sName = (std::filesystem::temp_directory_path() / "tov-broken-sample").string();
    {
        CTOVWriteFileStream oStream(s_sName.c_str());
        fnWrite(oStream);
    }
    std::ifstream oFile(s_sName, std::ios::binary);
    const std::string sBytes{std::istreambuf_iterator<char>(oFile), {}};
    oFile.close();
    std::filesystem::remove(s_sName);
    return sBytes;
}

void WriteText(ITOVStream& oStream, const std::string& sText)
{
    oStream << static_cast<int>(sText.size());
    oStream.Write(sText.data(), sText.size());
}

// What has been read of a file.
struct sPart
{
    CTOVStringA oName;
    CTOVArray<int> aNumbers;
    CTOVBuffer<char> oBlock;
};

typedef std::function<void(const sPart&)> tPartVisitor;

// Reads with the checks that a stream leaves to its user, as it does not report the end of its file.
class CCarefulReader
{
public:
    CCarefulReader(ITOVStream& oStream, unsigned long long ullSize) : m_oStream(oStream), m_ullSize(ullSize) {}

    // Passes the parts on one by one, and keeps none.
    void Read(const tPartVisitor& fnVisit)
    {
        Begin(1, FILE_VERSION);
        const int nParts = Length(20);
        for (int nPart = 0; nPart < nParts; ++nPart)
        {
            sPart oPart;
            ReadPart(oPart);
            fnVisit(oPart);
        }
        m_oStream.SerializeEnd();
        Require(m_oStream.GetVersion() == -1);
        Require(m_oStream.Tell() == m_ullSize);
    }

private:
    int Begin(int nOldest, int nNewest)
    {
        Require(Rest() >= sizeof(int));
        m_oStream.SerializeBegin(-1);
        const int nVersion = m_oStream.GetVersion();
        Require(nOldest <= nVersion && nVersion <= nNewest);
        return nVersion;
    }

    int Length(unsigned long long ullEach)
    {
        Require(Rest() >= sizeof(int));
        int nLength = 0;
        m_oStream >> nLength;
        Require(nLength >= 0 && static_cast<unsigned long long>(nLength) <= Rest() / ullEach);
        return nLength;
    }

    void ReadPart(sPart& oPart)
    {
        const int nVersion = Begin(1, PART_VERSION);
        const int nLength = Length(1);
        oPart.oName = CTOVStringA(' ', nLength);
        if (nLength > 0)
            m_oStream.Read(oPart.oName.GetString(), static_cast<unsigned long long>(nLength));
        oPart.aNumbers.Resize(Length(sizeof(int)));
        for (long lNumber = 0; lNumber < oPart.aNumbers.GetSize(); ++lNumber)
            m_oStream >> oPart.aNumbers[lNumber];

        Begin(1, 0x7FFFFFFF);
        if (nVersion >= 2)
        {
            const int nSize = Length(1);
            oPart.oBlock.Resize(nSize, false);
            m_oStream.Read(oPart.oBlock.GetBuffer(), static_cast<unsigned long long>(nSize));
        }
        m_oStream.SerializeEnd();
        Require(m_oStream.GetVersion() == nVersion);
        m_oStream.SerializeEnd();
        Require(1 <= m_oStream.GetVersion() && m_oStream.GetVersion() <= FILE_VERSION);
    }

    unsigned long long Rest() const { return m_ullSize - m_oStream.Tell(); }

    ITOVStream& m_oStream;
    const unsigned long long m_ullSize; // without the check value
};

std::string Line(const sPart& oPart)
{
    std::string sLine = Hex(std::string(oPart.oName.GetString() != nullptr ? ~oPart.oName : "",
                                        static_cast<std::size_t>(oPart.oName.GetLength())));
    for (long lNumber = 0; lNumber < oPart.aNumbers.GetSize(); ++lNumber)
        sLine += " " + std::to_string(oPart.aNumbers[lNumber]);
    return sLine + " " +
           Hex(std::string(oPart.oBlock.GetBuffer() != nullptr ? oPart.oBlock.GetBuffer() : "",
                           static_cast<std::size_t>(oPart.oBlock.GetSize()))) +
           "\n";
}

// Whether the last four bytes of a file of this size are its check value.
bool HasItsCheckValue(const std::string& sName, unsigned long long ullSize)
{
    CTOVReadFileStream oStream(sName.c_str());
    std::string sBody(static_cast<std::size_t>(ullSize - sizeof(int)), '\0');
    oStream.Read(&sBody[0], sBody.size());
    int nValue = 0;
    oStream >> nValue;
    return NumberBytes(static_cast<std::uint32_t>(nValue)) == NumberBytes(CheckValue(sBody));
}

void ReadParts(const std::string& sName, bool bByName, const tPartVisitor& fnVisit)
{
    CTOVFile oFile;
    oFile.Open(sName.c_str(), ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);
    const unsigned long long ullSize = oFile.GetSize();
    Require(ullSize >= sizeof(int) && HasItsCheckValue(sName, ullSize));
    if (bByName)
    {
        CTOVReadFileStream oStream(sName.c_str());
        CCarefulReader(oStream, ullSize - sizeof(int)).Read(fnVisit);
    }
    else
    {
        CTOVFileStream oStream(&oFile, ITOVStream::eStreamModeLoading);
        CCarefulReader(oStream, ullSize - sizeof(int)).Read(fnVisit);
    }
}

tContents ReadCarefully(const std::string& sName, bool bByName, std::size_t& nPeakMemory)
{
    const CPeakMemory oMemory;
    try
    {
        ReadParts(sName, bByName, [](const sPart&) {});
    }
    catch (const sRefused&)
    {
        nPeakMemory = std::max(nPeakMemory, oMemory.Peak());
        return {};
    }
    nPeakMemory = std::max(nPeakMemory, oMemory.Peak());

    std::string sLines;
    ReadParts(sName, bByName, [&](const sPart& oPart) { sLines += Line(oPart); });
    return sLines;
}

// Calls the reader twice: for a stream that opens the file by its name, and for one on an open file.
sReading ReadTwice(const std::function<tContents(bool, std::size_t&)>& fnRead)
{
    sReading oReading;
    try
    {
        oReading.oContents = fnRead(true, oReading.nPeakMemory);
        if (fnRead(false, oReading.nPeakMemory) != oReading.oContents)
            oReading.sUnexpected = "the two streams read it differently";
    }
    catch (const std::exception& oException)
    {
        oReading.sUnexpected = std::string("an exception: ") + oException.what();
    }
    catch (const CTOVException&)
    {
        oReading.sUnexpected = "an exception of the library";
    }
    return oReading;
}

class CSectionFormat : public IFileFormat
{
public:
    const char* GetName() const override { return "careful sections"; }

    std::string MakeBody(int nParts) const override
    {
        return Written([nParts](ITOVStream& oStream) {
            oStream.SerializeBegin(FILE_VERSION);
            oStream << nParts;
            for (int nPart = 0; nPart < nParts; ++nPart)
                WritePart(oStream, nPart);
            oStream.SerializeEnd();
        });
    }

    std::string MakeSeal(const std::string& sBody) const override { return NumberBytes(CheckValue(sBody)); }

    tContents Expect(const std::string& sBytes) const override
    {
        const std::string sBody = sBytes.substr(0, sBytes.size() - std::min<std::size_t>(sBytes.size(), 4));
        if (sBytes != sBody + MakeSeal(sBody))
            return {};
        CModelBytes oBytes(sBody);
        try
        {
            return ExpectParts(oBytes);
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
        return ReadTwice(
            [&](bool bByName, std::size_t& nPeakMemory) { return ReadCarefully(sName, bByName, nPeakMemory); });
    }

private:
    static void WritePart(ITOVStream& oStream, int nPart)
    {
        oStream.SerializeBegin(PART_VERSION);
        WriteText(oStream, "part " + std::to_string(nPart));
        oStream << nPart % 3;
        for (int nNumber = 0; nNumber < nPart % 3; ++nNumber)
            oStream << nPart * nNumber;
        oStream.SerializeBegin(nPart + 1);
        WriteText(oStream, std::string(static_cast<std::size_t>(nPart % 9), '\xB5'));
        oStream.SerializeEnd();
        oStream.SerializeEnd();
    }

    static std::size_t ExpectLength(CModelBytes& oBytes, std::size_t nEach)
    {
        const int nLength = oBytes.Number();
        Require(nLength >= 0 && static_cast<std::size_t>(nLength) <= oBytes.Rest() / nEach);
        return static_cast<std::size_t>(nLength);
    }

    static std::string ExpectParts(CModelBytes& oBytes)
    {
        const int nFileVersion = oBytes.Number();
        Require(1 <= nFileVersion && nFileVersion <= FILE_VERSION);
        std::string sLines;
        for (std::size_t nParts = ExpectLength(oBytes, 20); nParts > 0; --nParts)
        {
            const int nVersion = oBytes.Number();
            Require(1 <= nVersion && nVersion <= PART_VERSION);
            sLines += Hex(oBytes.Take(ExpectLength(oBytes, 1)));
            for (std::size_t nNumbers = ExpectLength(oBytes, 4); nNumbers > 0; --nNumbers)
                sLines += " " + std::to_string(oBytes.Number());
            Require(oBytes.Number() >= 1);
            sLines += " " + (nVersion >= 2 ? Hex(oBytes.Take(ExpectLength(oBytes, 1))) : "") + "\n";
        }
        Require(oBytes.Rest() == 0);
        return sLines;
    }
};

// The blind reader makes the same calls whatever the file holds: so many times a section with a number, two bytes and a
// section inside. What the file does not hold leaves a value as it was, as far as bytes are missing.
constexpr int BLIND_PARTS = 200;

class CBlindFormat : public IFileFormat
{
public:
    const char* GetName() const override { return "blind sections"; }

    std::string MakeBody(int nParts) const override
    {
        return Written([nParts](ITOVStream& oStream) {
            for (int nPart = 0; nPart < std::min(nParts, BLIND_PARTS); ++nPart)
            {
                oStream.SerializeBegin(nPart);
                oStream << -nPart;
                oStream.SerializeBegin(7);
                oStream.Write("ab", 2);
                oStream.SerializeEnd();
                oStream.SerializeEnd();
            }
        });
    }

    std::string MakeSeal(const std::string&) const override { return ""; }

    tContents Expect(const std::string& sBytes) const override
    {
        std::string sLines;
        std::size_t nPosition = 0;
        const auto fnOverwrite = [&](void* pValue, std::size_t nSize) {
            nPosition += sBytes.copy(static_cast<char*>(pValue), nSize, nPosition);
        };
        int nNumber = 0x55555555;
        char szBytes[2] = {'.', '.'};
        for (int nPart = 0; nPart < BLIND_PARTS; ++nPart)
        {
            // A section begins with the version of the enclosing one, and overwrites it.
            int nOuter = -1;
            fnOverwrite(&nOuter, sizeof(nOuter));
            fnOverwrite(&nNumber, sizeof(nNumber));
            int nInner = nOuter;
            fnOverwrite(&nInner, sizeof(nInner));
            fnOverwrite(szBytes, sizeof(szBytes));
            sLines += Line(nOuter, nNumber, nInner, szBytes, nPosition);
        }
        return sLines;
    }

    sReading Read(const std::string& sName) const override
    {
        return ReadTwice([&](bool bByName, std::size_t& nPeakMemory) {
            const CPeakMemory oMemory;
            CTOVFile oFile;
            oFile.Open(sName.c_str(), ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);
            std::string sLines;
            if (bByName)
            {
                CTOVReadFileStream oStream(sName.c_str());
                sLines = ReadBlindly(oStream);
            }
            else
            {
                CTOVFileStream oStream(&oFile, ITOVStream::eStreamModeLoading);
                sLines = ReadBlindly(oStream);
            }
            nPeakMemory = std::max(nPeakMemory, oMemory.Peak());
            return sLines;
        });
    }

private:
    static std::string Line(int nOuter, int nNumber, int nInner, const char (&szBytes)[2], unsigned long long ullPlace)
    {
        return std::to_string(nOuter) + " " + std::to_string(nNumber) + " " + std::to_string(nInner) + " " +
               Hex(std::string(szBytes, 2)) + " " + std::to_string(ullPlace) + "\n";
    }

    static std::string ReadBlindly(ITOVStream& oStream)
    {
        std::string sLines;
        int nNumber = 0x55555555;
        char szBytes[2] = {'.', '.'};
        for (int nPart = 0; nPart < BLIND_PARTS; ++nPart)
        {
            oStream.SerializeBegin(-1);
            const int nOuter = oStream.GetVersion();
            oStream >> nNumber;
            oStream.SerializeBegin(-1);
            const int nInner = oStream.GetVersion();
            oStream.Read(szBytes, sizeof(szBytes));
            oStream.SerializeEnd();
            const bool bBack = oStream.GetVersion() == nOuter;
            oStream.SerializeEnd();
            sLines += Line(nOuter, nNumber, nInner, szBytes, oStream.Tell());
            if (!bBack || oStream.GetVersion() != -1)
                sLines += "a version did not come back\n";
        }
        return sLines;
    }
};
} // namespace

std::unique_ptr<IFileFormat> MakeSectionFormat()
{
    return std::make_unique<CSectionFormat>();
}

std::unique_ptr<IFileFormat> MakeBlindFormat()
{
    return std::make_unique<CBlindFormat>();
}
