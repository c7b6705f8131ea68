#include "CatalogSystem.h"

#include "Catalog.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <memory>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr std::intptr_t NO_FILE = -1;
constexpr mode_t PERMISSIONS = 0777;
constexpr mode_t NEW_FILE_PERMISSIONS = 0666;

int ToNative(std::intptr_t hFile)
{
    return static_cast<int>(hFile);
}

// O_NONBLOCK has no effect on a file. It prevents open from waiting if the name belongs to a pipe.
int OpenFile(const char* szName, int nFlags, struct stat& oStatus)
{
    const int nAllFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | nFlags;
    int nFile = ::open(szName, nAllFlags);
    if (nFile < 0 && std::strchr(szName, '\\') != nullptr)
        nFile = ::open(SystemPath(szName).c_str(), nAllFlags);
    if (nFile >= 0 && (::fstat(nFile, &oStatus) != 0 || !S_ISREG(oStatus.st_mode)))
    {
        ::close(nFile);
        return -1;
    }
    return nFile;
}

// Returns whether the name still belongs to the open file: another process may have removed or replaced it before the
// file was locked.
bool IsStillNamed(int nFile, const std::string& sSystemName)
{
    struct stat oOpen;
    struct stat oNamed;
    return ::fstat(nFile, &oOpen) == 0 && ::lstat(sSystemName.c_str(), &oNamed) == 0 && oOpen.st_dev == oNamed.st_dev &&
           oOpen.st_ino == oNamed.st_ino;
}

// Gets the status of the file that a new one shall replace. Returns false if there is none; bKnown is then false if
// that is not sure.
bool GetStatusOfReplaced(const std::string& sSystemName, struct stat& oStatus, bool& bKnown)
{
    const bool bReplaces = ::stat(sSystemName.c_str(), &oStatus) == 0;
    bKnown = bReplaces || errno == ENOENT || errno == ENOTDIR;
    return bReplaces;
}
} // namespace

CInputFile::CInputFile(const char* szName) : m_hFile(NO_FILE)
{
    struct stat oStatus = {};
    m_hFile = OpenFile(szName, 0, oStatus);
    if (IsOpen())
        m_ullSize = static_cast<unsigned long long>(oStatus.st_size);
}

CInputFile::~CInputFile()
{
    if (IsOpen())
        ::close(ToNative(m_hFile));
}

bool CInputFile::IsOpen() const
{
    return m_hFile != NO_FILE;
}

unsigned long CInputFile::Read(void* pBuffer, unsigned long ulSize)
{
    unsigned long ulRead = 0;
    while (ulRead < ulSize)
    {
        const ssize_t nPart = ::read(ToNative(m_hFile), static_cast<char*>(pBuffer) + ulRead, ulSize - ulRead);
        if (nPart < 0 && errno == EINTR)
            continue;
        m_bFailed = m_bFailed || nPart < 0;
        if (nPart <= 0)
            break;
        ulRead += static_cast<unsigned long>(nPart);
        m_ullRead += static_cast<unsigned long long>(nPart);
        // Asking for more would only confirm the end. The size of some files is wrong: they have less, or more.
        if (m_ullRead == m_ullSize)
            break;
    }
    return ulRead;
}

CNewFile::CNewFile(const CTOVStringA& oName, const CTOVStringA& oTarget)
    : m_sName(SystemPath(oName).native()), m_sTarget(SystemPath(oTarget).native()), m_hFile(NO_FILE)
{
    struct stat oStatus;
    bool bKnown = false;
    const bool bReplaces = GetStatusOfReplaced(m_sTarget, oStatus, bKnown);
    if (!bKnown)
        return;
    // Until the file is complete, the owner must be able to write it.
    const mode_t ulMode = bReplaces ? (oStatus.st_mode & PERMISSIONS) | S_IWUSR : NEW_FILE_PERMISSIONS;

    const int nFile = ::open(m_sName.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, ulMode);
    if (nFile < 0)
        return;

    // On a file system without locks, the file is used unlocked. Before it is locked, another run may take the file for
    // an abandoned one and remove it.
    const bool bLocked = ::flock(nFile, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    if (bLocked && IsStillNamed(nFile, m_sName))
        m_hFile = nFile;
    else
        ::close(nFile);
}

CNewFile::~CNewFile()
{
    if (!IsOpen())
        return;
    if (!m_bInPlace && IsStillNamed(ToNative(m_hFile), m_sName))
        ::unlink(m_sName.c_str());
    ::close(ToNative(m_hFile)); // last, since the lock protects the file's name
}

bool CNewFile::IsOpen() const
{
    return m_hFile != NO_FILE;
}

bool CNewFile::PutInPlace()
{
    struct stat oStatus;
    bool bKnown = false;
    const bool bReplaces = GetStatusOfReplaced(m_sTarget, oStatus, bKnown);
    if (!bKnown || (bReplaces && ::fchmod(ToNative(m_hFile), oStatus.st_mode & PERMISSIONS) != 0))
        return false;
    m_bInPlace = ::fsync(ToNative(m_hFile)) == 0 && IsStillNamed(ToNative(m_hFile), m_sName) &&
                 ::rename(m_sName.c_str(), m_sTarget.c_str()) == 0;
    return m_bInPlace;
}

bool RemoveAbandonedFile(const CTOVStringA& oName)
{
    const std::string sName = SystemPath(oName).native();
    struct stat oStatus;
    const int nFile = OpenFile(sName.c_str(), O_NOFOLLOW, oStatus);
    if (nFile < 0)
        return false;
    const bool bRemoved =
        ::flock(nFile, LOCK_EX | LOCK_NB) == 0 && IsStillNamed(nFile, sName) && ::unlink(sName.c_str()) == 0;
    ::close(nFile);
    return bRemoved;
}

void CatchEndSignals(void (*pfHandler)(int))
{
    for (const int nSignal : {SIGINT, SIGTERM, SIGHUP})
    {
        if (std::signal(nSignal, pfHandler) == SIG_IGN)
            std::signal(nSignal, SIG_IGN);
    }
}

void IgnoreClosedPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}

void KeepLineEnds(std::FILE*)
{
}

bool IsTerminal(std::FILE* pFile)
{
    return ::isatty(::fileno(pFile)) != 0;
}

// A name could be too long for the system, and lead elsewhere after a directory above has been renamed.
tWayBack WayBackHere()
{
    const int nHere = ::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC);
    const std::shared_ptr<void> pOpen(nullptr, [nHere](void*) { ::close(nHere); });
    return [nHere, pOpen] { return ::fchdir(nHere) == 0; };
}
