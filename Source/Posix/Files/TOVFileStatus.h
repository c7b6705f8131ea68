// A file's status in the terms of TOVPlatform::TOVFile.
#pragma once

#include <TOVPlatform/TOVFile.h>

#include <sys/stat.h>

namespace TOVPlatform
{
namespace TOVPosix
{
constexpr mode_t WRITE_PERMISSIONS = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t ALL_PERMISSIONS = 07777;

// A file is read-only if its permission bits let nobody write it. A user to whom permissions do not apply gets the same
// answer.
inline bool IsReadOnly(mode_t ulMode)
{
    return (ulMode & WRITE_PERMISSIONS) == 0;
}

inline bool IsReadOnlyFile(mode_t ulMode)
{
    return S_ISREG(ulMode) && IsReadOnly(ulMode);
}

// A name that is neither file nor directory (device, pipe, socket, a link to nothing) has no attribute at all, not even
// the normal one, so that a caller who walks a directory can skip it.
inline unsigned long ToAttributes(mode_t ulMode)
{
    if (!S_ISREG(ulMode) && !S_ISDIR(ulMode))
        return 0;

    unsigned long ulAttributes = 0;
    if (S_ISDIR(ulMode))
        ulAttributes |= TOVFile::eFileAttributeDirectory;
    if (IsReadOnly(ulMode))
        ulAttributes |= TOVFile::eFileAttributeReadOnly;
    if (ulAttributes == 0)
        ulAttributes = TOVFile::eFileAttributeNormal;
    return ulAttributes;
}

inline mode_t ApplyAttributes(mode_t ulMode, unsigned long ulAttributes)
{
    if ((ulAttributes & TOVFile::eFileAttributeReadOnly) != 0)
        return ulMode & ~WRITE_PERMISSIONS;

    return IsReadOnly(ulMode) ? ulMode | S_IWUSR : ulMode;
}

// Fills all of a record but its name and guard. The name is relative to the directory nFolder, or to the working
// directory for AT_FDCWD. A link has the status of its target, or its own if the target cannot exist. False, with the
// record unchanged and the cause in errno, if there is no such file, or if the system could not look at it.
bool FillStatus(TOVFile::sTOVFindData& oFindData, int nFolder, const char* szName);
} // namespace TOVPosix
} // namespace TOVPlatform
