// In every module of the process the program's readdir and statx go before those of the C library.
#include "Support/TOVDirectoryFault.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

static thread_local unsigned long s_ulGoodEntries = ULONG_MAX;
static thread_local std::string* s_pBadName = nullptr;
static thread_local int s_nError = 0;
static thread_local int s_nGoodFlags = 0; // with these, the status can be had

struct CDirectoryFault::sHook
{
};

CDirectoryFault::CDirectoryFault(unsigned long ulGoodEntries)
{
    s_ulGoodEntries = ulGoodEntries;
}

CDirectoryFault::~CDirectoryFault()
{
    s_ulGoodEntries = ULONG_MAX;
}

CStatusFault::CStatusFault(const std::string& sName, int nError, eOf eStatusOf)
{
    s_pBadName = new std::string(sName);
    s_nError = nError;
    s_nGoodFlags = eStatusOf == eTarget ? AT_SYMLINK_NOFOLLOW : 0;
}

CStatusFault::~CStatusFault()
{
    delete s_pBadName;
    s_pBadName = nullptr;
}

extern "C" __attribute__((visibility("default"))) struct dirent* readdir(DIR* pFolder)
{
    typedef struct dirent* (*tRead)(DIR*);
    static const tRead s_fnRead = reinterpret_cast<tRead>(::dlsym(RTLD_NEXT, "readdir"));

    if (s_ulGoodEntries == 0)
    {
        errno = EIO;
        return nullptr;
    }
    if (s_ulGoodEntries != ULONG_MAX)
        --s_ulGoodEntries;
    return s_fnRead(pFolder);
}

extern "C" __attribute__((visibility("default"))) int statx(int nFolder, const char* szName, int nFlags,
                                                            unsigned int nMask, struct statx* pStatus) noexcept
{
    typedef int (*tStatus)(int, const char*, int, unsigned int, struct statx*);
    static const tStatus s_fnStatus = reinterpret_cast<tStatus>(::dlsym(RTLD_NEXT, "statx"));

    const char* szSlash = std::strrchr(szName, '/');
    if (s_pBadName != nullptr && *s_pBadName == (szSlash != nullptr ? szSlash + 1 : szName) &&
        (nFlags & s_nGoodFlags) == 0)
    {
        errno = s_nError;
        return -1;
    }
    return s_fnStatus(nFolder, szName, nFlags, nMask, pStatus);
}
