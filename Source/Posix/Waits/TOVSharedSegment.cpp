#include <Posix/Waits/TOVSharedSegment.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
// Longer encoded names are cut to this length, and told apart by a sum over the whole name.
constexpr int WHOLE_NAME = 160;

// Where the C library keeps the segments, and how the paths of all segments of one user begin.
constexpr char FOLDER[] = "/dev/shm";
constexpr char PATH_BEGIN[] = "/TOVKernel-%u-";

// How long a process may hold the lock of all segments, which takes microseconds, before the others do without it, and
// how long they wait between two attempts.
constexpr int LOCK_PATIENCE_MS = 10000;
constexpr int LOCK_RETRY_US = 200;

bool LockFile(int nFile, int nOperation)
{
    int nResult;
    do
        nResult = ::flock(nFile, nOperation);
    while (nResult != 0 && errno == EINTR);
    return nResult == 0;
}

// A process that has been stopped keeps its locks, so that the wait has an end.
bool LockFileSoon(int nFile)
{
    for (long lTries = LOCK_PATIENCE_MS * 1000L / LOCK_RETRY_US; lTries > 0; --lTries)
    {
        if (LockFile(nFile, LOCK_EX | LOCK_NB))
            return true;
        if (errno != EWOULDBLOCK)
            return false;
        ::usleep(LOCK_RETRY_US);
    }
    return false;
}

// Only a plain file of this user is trusted, since the folder of segments is open to all.
int OpenOwnFile(const char* szPath, int nCreate = O_CREAT)
{
    const int nFile = ::shm_open(szPath, O_RDWR | nCreate, S_IRUSR | S_IWUSR);
    if (nFile < 0)
        return -1;

    struct stat oStatus;
    if (::fstat(nFile, &oStatus) == 0 && oStatus.st_uid == ::geteuid() && S_ISREG(oStatus.st_mode))
        return nFile;
    ::close(nFile);
    return -1;
}

// FNV-1a, 64 bits.
std::uint64_t Sum(const char* szText, std::uint64_t nStart)
{
    std::uint64_t nSum = nStart;
    for (; *szText != '\0'; ++szText)
        nSum = (nSum ^ static_cast<unsigned char>(*szText)) * 0x100000001b3u;
    return nSum;
}

// Letters, digits and a few signs stand for themselves; every other character becomes a percent sign and two
// hexadecimal digits.
void MakePath(char* szPath, std::size_t nSize, const char* szName)
{
    char szEncoded[CSharedSegment::MAX_NAME * 3 + 1];
    int nLength = 0;
    for (const char* szRead = szName; *szRead != '\0'; ++szRead)
    {
        const unsigned char cRead = static_cast<unsigned char>(*szRead);
        const bool bPlain = cRead < 0x80 && (std::isalnum(cRead) != 0 || cRead == '-' || cRead == '_');
        nLength += std::snprintf(szEncoded + nLength, 4, bPlain ? "%c" : "%%%02X", cRead);
    }

    const unsigned uUser = ::geteuid();
    int nStem = std::snprintf(szPath, nSize, PATH_BEGIN, uUser);
    nStem += std::snprintf(szPath + nStem, nSize - static_cast<std::size_t>(nStem), "%.*s", WHOLE_NAME, szEncoded);
    if (nLength > WHOLE_NAME)
        std::snprintf(szPath + nStem, nSize - static_cast<std::size_t>(nStem), "~%016llx%016llx",
                      static_cast<unsigned long long>(Sum(szName, 0xcbf29ce484222325u)),
                      static_cast<unsigned long long>(Sum(szName, 0x84222325cbf29ce4u)));
}
} // namespace

CSegmentLock::CSegmentLock()
{
    char szPath[64];
    std::snprintf(szPath, sizeof szPath, "/TOVKernel-%u~lock", static_cast<unsigned>(::geteuid()));
    m_nFile = OpenOwnFile(szPath);
    if (m_nFile >= 0 && !LockFileSoon(m_nFile))
    {
        ::close(m_nFile);
        m_nFile = -1;
    }
}

CSegmentLock::~CSegmentLock()
{
    if (m_nFile >= 0)
        ::close(m_nFile);
}

CSharedSegment::CSharedSegment()
    : m_nFile(-1), m_nProcess(::getpid()), m_pMemory(nullptr), m_nSize(0), m_nNumber(0), m_bNew(false), m_szPath()
{
}

bool CSharedSegment::Open(const CSegmentLock& oLock, const char* szName, std::size_t nSize)
{
    if (!oLock.IsHeld() || std::strlen(szName) > MAX_NAME)
        return false;

    MakePath(m_szPath, sizeof m_szPath, szName);
    m_nFile = OpenOwnFile(m_szPath);
    if (m_nFile < 0)
        return false;
    if (Attach(nSize))
        return true;
    Close(oLock);
    return false;
}

void CSharedSegment::RemoveDead(const CSegmentLock& oLock)
{
    DIR* const pFolder = oLock.IsHeld() ? ::opendir(FOLDER) : nullptr;
    if (pFolder == nullptr)
        return;

    char szBegin[32];
    const int nBegin = std::snprintf(szBegin, sizeof szBegin, PATH_BEGIN, static_cast<unsigned>(::geteuid()));
    while (const dirent* const pEntry = ::readdir(pFolder))
    {
        if (std::strncmp(pEntry->d_name, szBegin + 1, static_cast<std::size_t>(nBegin - 1)) != 0)
            continue;
        const int nFile = OpenOwnFile(pEntry->d_name, 0);
        if (nFile >= 0 && LockFile(nFile, LOCK_EX | LOCK_NB))
            ::shm_unlink(pEntry->d_name);
        if (nFile >= 0)
            ::close(nFile);
    }
    ::closedir(pFolder);
}

bool CSharedSegment::Attach(std::size_t nSize)
{
    // A segment that nobody has open is new, or its users died.
    m_bNew = LockFile(m_nFile, LOCK_EX | LOCK_NB);
    if (m_bNew && (::ftruncate(m_nFile, 0) != 0 || ::posix_fallocate(m_nFile, 0, static_cast<off_t>(nSize)) != 0))
        return false;
    if (!LockFile(m_nFile, LOCK_SH))
        return false;

    struct stat oStatus;
    if (::fstat(m_nFile, &oStatus) != 0 || oStatus.st_size != static_cast<off_t>(nSize))
        return false;
    void* const pMemory = ::mmap(nullptr, nSize, PROT_READ | PROT_WRITE, MAP_SHARED, m_nFile, 0);
    if (pMemory == MAP_FAILED)
        return false;

    m_pMemory = pMemory;
    m_nSize = nSize;
    m_nNumber = oStatus.st_ino;
    return true;
}

void CSharedSegment::Close(const CSegmentLock& oLock)
{
    RemoveName(oLock);
    if (m_pMemory != nullptr)
        ::munmap(m_pMemory, m_nSize);
    ::close(m_nFile);
    m_pMemory = nullptr;
    m_nFile = -1;
}

bool CSharedSegment::RemoveName(const CSegmentLock& oLock)
{
    if (!oLock.IsHeld() || m_nProcess != ::getpid())
        return false;
    if (!LockFile(m_nFile, LOCK_EX | LOCK_NB))
    {
        LockFile(m_nFile, LOCK_SH | LOCK_NB); // the attempt has given up the shared lock
        return false;
    }
    ::shm_unlink(m_szPath);
    m_nProcess = 0; // the name may soon belong to another segment
    return true;
}
} // namespace TOVPosix
} // namespace TOVPlatform
