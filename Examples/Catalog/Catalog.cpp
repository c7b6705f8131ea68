#include "Catalog.h"

#include <Path/TOVPath.h>

#include <system_error>

int CompareRecords(const sFileRecord& oFirst, const sFileRecord& oSecond)
{
    if (oFirst.nDirectory != oSecond.nDirectory)
        return oFirst.nDirectory < oSecond.nDirectory ? -1 : 1;
    return oFirst.oPath.Compare(~oSecond.oPath);
}

CTOVStringA FullName(const sCatalog& oCatalog, const sFileRecord& oRecord)
{
    return JoinPath(oCatalog.aDirectories[oRecord.nDirectory], oRecord.oPath);
}

CTOVStringA JoinPath(const CTOVStringA& oDirectory, const CTOVStringA& oName)
{
    std::string sJoined(~oDirectory);
    if (sJoined.empty())
        sJoined = '/';
    AppendPath(sJoined, ~oName);
    return CTOVStringA(sJoined.c_str());
}

void AppendPath(std::string& sPath, const char* szName)
{
    // A backslash at the end is part of the name on some systems; on the others, a second separator is harmless.
    if (!sPath.empty() && sPath.back() != '/')
        sPath += '/';
    sPath += szName;
}

std::filesystem::path SystemPath(const CTOVStringA& oName)
{
    const std::filesystem::path oAsItStands(~oName);
    std::error_code oIgnored;
    if (std::filesystem::exists(oAsItStands, oIgnored))
        return oAsItStands;
    CTOVPath oPath(~oName);
    oPath.MakeForwardslashes();
    return std::filesystem::path(~oPath);
}
