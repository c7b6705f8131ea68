#include "Catalog.h"

#include <Path/TOVPath.h>

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
    CTOVStringA oJoined(~oDirectory); // a block of its own: appending must not reach the directory's
    if (!CTOVPath(oDirectory).HasTrailingSlash())
        oJoined += '/';
    oJoined += oName;
    return oJoined;
}
