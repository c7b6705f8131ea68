#include "Catalog.h"

#include "Console.h"

#include <Path/TOVPath.h>
#include <TOVString/TOVStringStd.h>

#include <cstring>
#include <system_error>

int CompareRecords(const sFileRecord& oFirst, const sFileRecord& oSecond)
{
    if (oFirst.nDirectory != oSecond.nDirectory)
        return oFirst.nDirectory < oSecond.nDirectory ? -1 : 1;
    return std::strcmp(oFirst.szPath, oSecond.szPath);
}

std::string HexOf(const tSha256& aValue)
{
    constexpr char DIGITS[] = "0123456789abcdef";
    std::string sHex;
    for (const unsigned char cByte : aValue)
    {
        sHex += DIGITS[cByte >> 4];
        sHex += DIGITS[cByte & 15];
    }
    return sHex;
}

CTOVStringA FullName(const sCatalog& oCatalog, const sFileRecord& oRecord)
{
    return JoinPath(oCatalog.aDirectories[oRecord.nDirectory], oRecord.szPath);
}

CTOVStringA JoinPath(const CTOVStringA& oDirectory, const char* szName)
{
    std::string sJoined(TOVStandard::ViewOf(oDirectory));
    if (sJoined.empty())
        sJoined = '/';
    AppendPath(sJoined, szName);
    return CTOVStringA(sJoined.c_str());
}

CTOVStringA RelativeTo(const CTOVStringA& oBase, const CTOVStringA& oName)
{
    return std::filesystem::path(~oName).has_root_path() ? oName : JoinPath(oBase, ~oName);
}

void AppendPath(std::string& sPath, const char* szName)
{
    // A backslash at the end is part of the name on some systems; on the others, a second separator is harmless.
    if (!sPath.empty() && sPath.back() != '/')
        sPath += '/';
    sPath += szName;
}

CTOVStringA TargetOf(const CTOVStringA& oName)
{
    constexpr int MAX_LINKS = 40; // as many as the systems follow
    std::error_code oError;
    std::filesystem::path oPath = SystemPath(oName);
    if (!std::filesystem::is_symlink(oPath, oError))
        return oName;

    // In a directory that all users can write, a system can refuse to follow the link of another user.
    const bool bRefused = std::filesystem::status(oPath, oError).type() == std::filesystem::file_type::none;
    for (int i = 0; !bRefused && i < MAX_LINKS; ++i)
    {
        if (!std::filesystem::is_symlink(oPath, oError))
            return CTOVStringA(oPath.string().c_str());
        oPath = oPath.parent_path() / std::filesystem::read_symlink(oPath, oError);
    }
    throw CCatalogError(std::string(~Printable(oName)) + " is a link that cannot be followed");
}

std::filesystem::path SystemPath(const CTOVStringA& oName)
{
    std::filesystem::path oAsItStands(~oName);
    std::error_code oIgnored;
    if (std::filesystem::exists(oAsItStands, oIgnored))
        return oAsItStands;
    CTOVPath oPath(~oName);
    oPath.MakeForwardslashes();
    return std::filesystem::path(~oPath);
}

bool IsMissing(const CTOVStringA& oName)
{
    std::error_code oIgnored;
    return std::filesystem::status(SystemPath(oName), oIgnored).type() == std::filesystem::file_type::not_found;
}
