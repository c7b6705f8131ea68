#include "Catalog.h"

#include <Path/TOVPath.h>

#include <system_error>

int CompareRecords(const sFileRecord& oFirst, const sFileRecord& oSecond)
{
    if (oFirst.lDirectory != oSecond.lDirectory)
        return oFirst.lDirectory < oSecond.lDirectory ? -1 : 1;
    return oFirst.oPath.Compare(~oSecond.oPath);
}

CTOVStringA FullName(const sCatalog& oCatalog, const sFileRecord& oRecord)
{
    return JoinPath(oCatalog.aDirectories[oRecord.lDirectory], oRecord.oPath);
}

CTOVStringA JoinPath(const CTOVStringA& oDirectory, const CTOVStringA& oName)
{
    CTOVStringA oJoined(~oDirectory); // made from the text, so that appending does not change a block that is shared
    // A backslash at the end is part of the name on some systems; on the others, a second separator is harmless.
    if (oJoined.IsEmpty() || oJoined.GetAt(oJoined.GetLength() - 1) != '/')
        oJoined += '/';
    oJoined += oName;
    return oJoined;
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
