#include "SettingsSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace SettingsSystem
{
bool IsAbsent(const char* szFile)
{
    struct stat oStatus;
    return ::stat(szFile, &oStatus) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

std::string TargetOf(const std::string& sFile)
{
    // The library takes a backslash for a separator unless there is a file of that name.
    std::string sName = sFile;
    if (IsAbsent(sName.c_str()))
        std::replace(sName.begin(), sName.end(), '\\', '/');
    const std::unique_ptr<char, decltype(&std::free)> pTarget(::realpath(sName.c_str(), nullptr), &std::free);
    return pTarget != nullptr ? pTarget.get() : sName;
}

eCreation Create(const char* szFile, const char* szOther)
{
    constexpr mode_t PERMISSIONS = 0777;
    constexpr mode_t NEW_FILE_PERMISSIONS = 0666;

    struct stat oOther;
    const bool bReplaces = ::stat(szOther, &oOther) == 0;
    const mode_t ulMode = bReplaces ? oOther.st_mode & PERMISSIONS : NEW_FILE_PERMISSIONS;
    const int nFile = ::open(szFile, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, ulMode);
    if (nFile < 0)
        return errno == EEXIST ? eTaken : eRefused;

    // The system takes the user's mask away from the permissions of a new file.
    const bool bPermitted = !bReplaces || ::fchmod(nFile, ulMode) == 0;
    ::close(nFile);
    if (!bPermitted)
        ::unlink(szFile);
    return bPermitted ? eCreated : eRefused;
}

bool Replace(const char* szFile, const char* szOther)
{
    return ::rename(szFile, szOther) == 0;
}
} // namespace SettingsSystem
