#include "CheckList.h"

#include "CatalogSystem.h"
#include "Console.h"

#include <cctype>
#include <cstdio>
#include <vector>

namespace
{
constexpr std::size_t CRC_DIGITS = 8;
constexpr std::size_t SHA256_DIGITS = 64;
constexpr char BSD_BEGIN[] = "SHA256 (";
constexpr char BSD_END[] = ") = ";
constexpr char BLANKS[] = " \t";

CCatalogError CannotBeListed(const CTOVStringA& oName)
{
    return CCatalogError("names " + std::string(~Printable(oName)) + ", which an .sfv file cannot");
}

int DigitOf(char cDigit)
{
    if ('0' <= cDigit && cDigit <= '9')
        return cDigit - '0';
    const int nLetter = std::tolower(static_cast<unsigned char>(cDigit)) - 'a';
    return 0 <= nLetter && nLetter < 6 ? nLetter + 10 : -1;
}

// Reads so many digits at a place. Returns false unless they are there, and another character follows the last one.
bool ReadDigits(const std::string& sLine, std::size_t nBegin, std::size_t nDigits, unsigned char* pBytes)
{
    if (sLine.size() < nBegin + nDigits)
        return false;
    for (std::size_t n = 0; n < nDigits; n += 2)
    {
        const int nHigh = DigitOf(sLine[nBegin + n]);
        const int nLow = DigitOf(sLine[nBegin + n + 1]);
        if (nHigh < 0 || nLow < 0)
            return false;
        pBytes[n / 2] = static_cast<unsigned char>(nHigh << 4 | nLow);
    }
    return true;
}

// Returns false for a backslash that does not begin one of the three escapes.
bool Unescape(std::string& sName)
{
    std::string sPlain;
    for (std::size_t n = 0; n < sName.size(); ++n)
    {
        if (sName[n] != '\\')
        {
            sPlain += sName[n];
            continue;
        }
        const char cNext = ++n < sName.size() ? sName[n] : '\0';
        if (cNext != '\\' && cNext != 'n' && cNext != 'r')
            return false;
        sPlain += cNext == 'n' ? '\n' : cNext == 'r' ? '\r' : '\\';
    }
    sName = sPlain;
    return true;
}

// Reads a name and the CRC-32 at the end of the line.
bool ReadSfvLine(const std::string& sLine, std::string& sName, sFileRecord& oRecord)
{
    const std::size_t nEnd = sLine.find_last_not_of(BLANKS) + 1;
    unsigned char aCrc[CRC_DIGITS / 2];
    if (nEnd <= CRC_DIGITS + 1 || !ReadDigits(sLine.substr(0, nEnd), nEnd - CRC_DIGITS, CRC_DIGITS, aCrc))
        return false;
    const std::size_t nName = sLine.find_last_not_of(BLANKS, nEnd - CRC_DIGITS - 1);
    if (nName == sLine.npos || nName + 1 == nEnd - CRC_DIGITS)
        return false;
    sName = sLine.substr(0, nName + 1);
    for (const unsigned char cByte : aCrc)
        oRecord.dwCrc = oRecord.dwCrc << 8 | cByte;
    return true;
}

// Reads "digits  name" or "digits *name", with a backslash before it if the name has escapes, or "SHA256 (name) =
// digits".
bool ReadSha256Line(const std::string& sLine, std::string& sName, sFileRecord& oRecord)
{
    const std::size_t nEscaped = sLine[0] == '\\' ? 1 : 0;
    const std::size_t nBsdEnd = sLine.rfind(BSD_END);
    tSha256 aValue;
    if (sLine.compare(nEscaped, sizeof(BSD_BEGIN) - 1, BSD_BEGIN) == 0 && nBsdEnd != sLine.npos)
    {
        const std::size_t nBegin = nEscaped + sizeof(BSD_BEGIN) - 1;
        const std::size_t nDigits = nBsdEnd + sizeof(BSD_END) - 1;
        if (sLine.size() != nDigits + SHA256_DIGITS || !ReadDigits(sLine, nDigits, SHA256_DIGITS, aValue.data()))
            return false;
        sName = sLine.substr(nBegin, nBsdEnd - nBegin);
    }
    else
    {
        const std::size_t nSpace = nEscaped + SHA256_DIGITS;
        if (!ReadDigits(sLine, nEscaped, SHA256_DIGITS, aValue.data()) || sLine.size() < nSpace + 3 ||
            sLine[nSpace] != ' ' || (sLine[nSpace + 1] != ' ' && sLine[nSpace + 1] != '*'))
            return false;
        sName = sLine.substr(nSpace + 2);
    }
    oRecord.oDetails.Make().oSha256.Make() = aValue;
    return !sName.empty() && (nEscaped == 0 || Unescape(sName));
}

std::string ReadWhole(const CTOVStringA& oName)
{
    CInputFile oFile(~oName);
    if (!oFile.IsOpen())
        throw CCatalogError("cannot be read");
    std::string sBytes;
    std::vector<char> aBuffer(std::size_t(256) * 1024);
    unsigned long ulRead = 0;
    do
    {
        ulRead = oFile.Read(aBuffer.data(), static_cast<unsigned long>(aBuffer.size()));
        sBytes.append(aBuffer.data(), ulRead);
    } while (ulRead == aBuffer.size());
    if (oFile.HasFailed())
        throw CCatalogError("cannot be read");
    return sBytes;
}

std::string ReadStandardInput()
{
    std::string sBytes;
    std::vector<char> aBuffer(4096);
    while (const std::size_t nRead = std::fread(aBuffer.data(), 1, aBuffer.size(), stdin))
        sBytes.append(aBuffer.data(), nRead);
    if (std::ferror(stdin) != 0)
        throw CCatalogError("cannot be read");
    return sBytes;
}

// Other programs' comments, and empty lines.
bool IsPassedOver(const std::string& sLine)
{
    return sLine.find_first_not_of(BLANKS) == sLine.npos || sLine[0] == ';' || sLine[0] == '#';
}

sCatalog Parse(const std::string& sBytes)
{
    sCatalog oList;
    oList.aDirectories.Add("");
    long lLine = 0;
    for (std::size_t nBegin = 0; nBegin < sBytes.size();)
    {
        const std::size_t nEnd = std::min(sBytes.find('\n', nBegin), sBytes.size());
        std::string sLine = sBytes.substr(nBegin, nEnd - nBegin);
        nBegin = nEnd + 1;
        ++lLine;
        if (!sLine.empty() && sLine.back() == '\r')
            sLine.pop_back();
        if (IsPassedOver(sLine))
            continue;

        sFileRecord oRecord;
        std::string sName;
        const bool bSha256 = ReadSha256Line(sLine, sName, oRecord);
        const bool bRead = bSha256 || ReadSfvLine(sLine, sName, oRecord);
        const bool bFits = oList.aFiles.IsEmpty() || oList.bSha256 == bSha256;
        if (!bRead || !bFits || sName.find('\0') != sName.npos || sName.size() > LONGEST_NAME)
            throw CCatalogError("is no list of checksums: line " + std::to_string(lLine) +
                                " is neither one of an .sfv file nor one of a SHA256SUMS file");
        oList.bSha256 = bSha256;
        oRecord.szPath = oList.pPaths->Add(sName);
        oList.aFiles.Add(oRecord);
    }
    if (oList.aFiles.IsEmpty())
        throw CCatalogError("names no file");
    return oList;
}
} // namespace

std::string SfvLine(const CTOVStringA& oName, const sFileRecord& oRecord)
{
    // A line begins with the name, and a space ends it.
    const std::string sName = ~oName;
    if (sName.find_first_of("\r\n") != sName.npos || sName.back() == ' ' || sName.back() == '\t')
        throw CannotBeListed(oName);
    char szCrc[CRC_DIGITS + 3];
    std::snprintf(szCrc, sizeof(szCrc), " %08X\n", static_cast<unsigned>(oRecord.dwCrc));
    return (sName[0] == ';' || sName[0] == '#' || sName[0] == ' ' ? "./" : "") + sName + szCrc;
}

std::string Sha256Line(const CTOVStringA& oName, const sFileRecord& oRecord)
{
    if (oRecord.GetSha256() == nullptr)
        throw CCatalogError("holds no SHA-256 (create --sha256 adds it)");
    std::string sName;
    for (const char* p = ~oName; *p != '\0'; ++p)
        sName += *p == '\\' ? "\\\\" : *p == '\n' ? "\\n" : *p == '\r' ? "\\r" : std::string(1, *p);
    const bool bEscaped = sName != ~oName;
    return (bEscaped ? "\\" : "") + HexOf(*oRecord.GetSha256()) + "  " + sName + "\n";
}

sCatalog ReadCheckList(const CTOVStringA& oName)
{
    const bool bStandardInput = oName == "-";
    try
    {
        return Parse(bStandardInput ? ReadStandardInput() : ReadWhole(oName));
    }
    catch (const CCatalogError& oError)
    {
        const std::string sWhere = bStandardInput ? "standard input" : ~Printable(oName);
        throw CCatalogError(sWhere + " " + oError.what());
    }
}
