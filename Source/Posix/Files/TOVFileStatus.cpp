#include <Posix/Files/TOVFileStatus.h>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
constexpr long long SECONDS_FROM_1601_TO_1970 = 11644473600;
constexpr long long TICKS_PER_SECOND = 10000000;
constexpr int NANOSECONDS_PER_TICK = 100;

unsigned long long ToTicks(const struct statx_timestamp& oTime)
{
    const long long llSeconds = oTime.tv_sec + SECONDS_FROM_1601_TO_1970;
    if (llSeconds < 0)
        return 0;

    return static_cast<unsigned long long>(llSeconds) * TICKS_PER_SECOND + oTime.tv_nsec / NANOSECONDS_PER_TICK;
}

// Whether the last failed call tells that no file can be where a name or a link leads. After any other error there may
// be one.
bool LeadsNowhere()
{
    return errno == ENOENT || errno == ENOTDIR || errno == ELOOP || errno == ENAMETOOLONG;
}
} // namespace

bool FillStatus(TOVFile::sTOVFindData& oFindData, int nFolder, const char* szName)
{
    constexpr unsigned int WANTED = STATX_BASIC_STATS | STATX_BTIME;

    struct statx oStatus;
    if (::statx(nFolder, szName, 0, WANTED, &oStatus) != 0 &&
        !(LeadsNowhere() && ::statx(nFolder, szName, AT_SYMLINK_NOFOLLOW, WANTED, &oStatus) == 0))
        return false;

    oFindData.ulAttributes = ToAttributes(oStatus.stx_mode);
    oFindData.ullLastAccessTime = ToTicks(oStatus.stx_atime);
    oFindData.ullLastWriteTime = ToTicks(oStatus.stx_mtime);

    // Not every file system knows when a file was created. The earliest time that is known of it stands in.
    if ((oStatus.stx_mask & STATX_BTIME) != 0)
        oFindData.ullCreationTime = ToTicks(oStatus.stx_btime);
    else
        oFindData.ullCreationTime =
            std::min({oFindData.ullLastAccessTime, oFindData.ullLastWriteTime, ToTicks(oStatus.stx_ctime)});

    oFindData.ullSize = S_ISDIR(oStatus.stx_mode) ? 0 : oStatus.stx_size;
    return true;
}
} // namespace TOVPosix
} // namespace TOVPlatform
